#include "framework/import/importfile.h"

#include "framework/import/csvtablereader.h"
#include "framework/import/xlsxtablereader.h"

#include <QFile>

namespace fw {

namespace {

constexpr qint64 MaxBytes = 50LL * 1024 * 1024;

// A workbook saved with a password is no zip but an OLE compound file, as old .xls files are.
constexpr QByteArrayView OleSignature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";

bool isZip(QByteArrayView head)
{
    return head.startsWith("PK\x03\x04") || head.startsWith("PK\x05\x06");
}

} // namespace

ImportedTable readImportFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ImportFileError::cannotOpen(path, file.errorString());
    if (file.size() > MaxBytes)
        throw ImportFileError::tooLarge(path, file.size());
    const QByteArray head = file.peek(OleSignature.size());
    if (head.startsWith(OleSignature))
        throw ImportFileError::passwordProtected(path);
    if (isZip(head))
        return XlsxTableReader::read(path);
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw ImportFileError::cannotOpen(path, file.errorString());
    return CsvTableReader::read(bytes, path);
}

} // namespace fw
