#pragma once

#include <QString>
#include <stdexcept>

namespace fw {

// Why a file cannot be imported, worded for the user. The factories name the file without its
// folder, as the user chose it.
class ImportFileError : public std::runtime_error
{
public:
    explicit ImportFileError(const QString &message)
        : std::runtime_error(message.toStdString())
        , m_message(message)
    { }

    const QString &message() const { return m_message; }

    static ImportFileError cannotOpen(const QString &path, const QString &reason);
    static ImportFileError tooLarge(const QString &path, qint64 bytes);
    static ImportFileError notATable(const QString &path);
    static ImportFileError passwordProtected(const QString &path);
    static ImportFileError damagedWorkbook(const QString &path);
    static ImportFileError noVisibleSheet(const QString &path);
    static ImportFileError mergedCells(const QString &sheet, const QString &range);
    static ImportFileError formulaWithoutValue(const QString &sheet, const QString &cell);
    static ImportFileError errorCell(const QString &sheet, const QString &cell, const QString &error);
    static ImportFileError noRows(const QString &path);

private:
    QString m_message;
};

} // namespace fw
