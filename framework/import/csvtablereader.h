#pragma once

#include "framework/import/importedtable.h"

#include <QByteArray>
#include <QString>

namespace fw {

// The CSV dialect our export writes and Italian spreadsheets save: fields separated by
// semicolons (by commas when the heading line has no semicolon but a comma), quoted when they
// hold a separator, a quote or a line break, quotes doubled; CR LF or LF line ends; UTF-8 with or
// without a byte-order mark, Latin-1 when the bytes are not UTF-8. Every cell is text, as
// written. A row's line is its record's number, as a spreadsheet numbers it.
class CsvTableReader
{
public:
    // Throws ImportFileError naming path: bytes that are not text, or no row with a value.
    static ImportedTable read(const QByteArray &bytes, const QString &path);

    static bool looksLikeText(QByteArrayView bytes);
    static bool isUtf8(QByteArrayView bytes);
    static char separatorOf(QByteArrayView bytes);
};

} // namespace fw
