#include "framework/import/importfileerror.h"

#include <QFileInfo>
#include <QLocale>
#include <cmath>

namespace fw {

namespace {

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

} // namespace

ImportFileError ImportFileError::cannotOpen(const QString &path, const QString &reason)
{
    return ImportFileError(QStringLiteral("Impossibile aprire il file %1: %2").arg(nameOf(path), reason));
}

// Rounded up to a tenth, so that a file just over the limit never reads as "50,0 MB".
ImportFileError ImportFileError::tooLarge(const QString &path, qint64 bytes)
{
    const double megabytes = std::ceil(double(bytes) / (1024.0 * 1024.0) * 10.0) / 10.0;
    const QString size = QLocale(QLocale::Italian, QLocale::Italy).toString(megabytes, 'f', 1);
    return ImportFileError(
        QStringLiteral("Il file %1 è troppo grande (%2 MB): il massimo è 50 MB.").arg(nameOf(path), size));
}

ImportFileError ImportFileError::notATable(const QString &path)
{
    return ImportFileError(QStringLiteral("Il file %1 non è un file XLSX né CSV.").arg(nameOf(path)));
}

ImportFileError ImportFileError::passwordProtected(const QString &path)
{
    return ImportFileError(
        QStringLiteral("La cartella di lavoro %1 è protetta da password: salvarla senza password e riprovare.")
            .arg(nameOf(path)));
}

ImportFileError ImportFileError::damagedWorkbook(const QString &path)
{
    return ImportFileError(
        QStringLiteral("La cartella di lavoro %1 è danneggiata o non è un file XLSX.").arg(nameOf(path)));
}

ImportFileError ImportFileError::noVisibleSheet(const QString &path)
{
    return ImportFileError(QStringLiteral("La cartella di lavoro %1 non ha fogli visibili.").arg(nameOf(path)));
}

ImportFileError ImportFileError::mergedCells(const QString &sheet, const QString &range)
{
    return ImportFileError(
        QStringLiteral("Il foglio %1 ha celle unite (%2): separarle e riprovare.").arg(sheet, range));
}

ImportFileError ImportFileError::formulaWithoutValue(const QString &sheet, const QString &cell)
{
    return ImportFileError(QStringLiteral("Il foglio %1, cella %2: la formula non ha un valore calcolato; aprire e "
                                          "salvare il file con il foglio di calcolo.")
                               .arg(sheet, cell));
}

ImportFileError ImportFileError::errorCell(const QString &sheet, const QString &cell, const QString &error)
{
    return ImportFileError(
        QStringLiteral("Il foglio %1, cella %2: la cella contiene un errore (%3).").arg(sheet, cell, error));
}

ImportFileError ImportFileError::noRows(const QString &path)
{
    return ImportFileError(QStringLiteral("Il file %1 non contiene righe.").arg(nameOf(path)));
}

} // namespace fw
