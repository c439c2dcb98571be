#include "framework/export/exportfile.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

namespace fw {

QString ExportFile::cannotWrite(const QString &path, const QString &reason)
{
    return QStringLiteral("Impossibile scrivere il file \"%1\": %2").arg(QDir::toNativeSeparators(path), reason);
}

// A file is tried in the target's folder, as the writers will create theirs, so that the
// answer holds for a folder that exists but may not be written and for a full disk alike.
QString ExportFile::problem(const QString &path)
{
    if (path.trimmed().isEmpty())
        return QStringLiteral("Non è stato indicato il file da scrivere.");
    const QFileInfo target(path);
    if (target.isDir())
        return cannotWrite(path, QStringLiteral("è una cartella."));
    if (!target.dir().exists())
        return cannotWrite(path, QStringLiteral("la cartella non esiste."));
    if (target.exists() && !target.isWritable())
        return cannotWrite(path, QStringLiteral("il file è di sola lettura."));
    QTemporaryFile probe(target.dir().filePath(QStringLiteral(".esportazione-XXXXXX")));
    if (!probe.open())
        return cannotWrite(path, probe.errorString());
    return {};
}

QString ExportFile::extension(Format format)
{
    return format == Format::Xlsx ? QStringLiteral("xlsx") : QStringLiteral("csv");
}

QString ExportFile::fileNameFor(const QString &title)
{
    static const QRegularExpression refused(QStringLiteral("[\\\\/:*?\"<>|]"));
    QString name = title;
    name.replace(refused, QStringLiteral("_"));
    while (!name.isEmpty() && (name.endsWith(QLatin1Char('.')) || name.back().isSpace()))
        name.chop(1);
    return name.trimmed();
}

QString ExportFile::choose(QWidget *parent, Format format, const QString &proposed)
{
    const QString filter = format == Format::Xlsx ? QStringLiteral("Cartella di lavoro Excel (*.xlsx)")
                                                  : QStringLiteral("Testo separato da punto e virgola (*.csv)");
    QString path = QFileDialog::getSaveFileName(parent, QStringLiteral("Esporta la distinta"), proposed, filter);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty())
        path += QLatin1Char('.') + extension(format);
    return path;
}

} // namespace fw
