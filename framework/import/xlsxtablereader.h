#pragma once

#include "framework/import/importedtable.h"

#include <QString>

namespace fw {

// The first visible sheet of an XLSX workbook as a table, its XML streamed row by row. Numbers
// in a date style are dates; a boolean is the text Excel shows in Italian (VERO, FALSO); a
// formula gives its last computed value. Refused, with ImportFileError: a formula never computed,
// an error value, cells merged where the table lies.
class XlsxTableReader
{
public:
    static ImportedTable read(const QString &path);

    // "A1" as column 0 and row 1; false for a reference that is not a cell of a sheet.
    static bool parseReference(QStringView reference, int &column, int &row);
    static QString reference(int column, int row);
};

} // namespace fw
