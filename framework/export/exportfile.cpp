#include "framework/export/exportfile.h"

#include "framework/export/csvtablewriter.h"
#include "framework/export/xlsxtablewriter.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QToolButton>

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

QString ExportFile::chooseInDocuments(QWidget *parent, Format format, const QString &title)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return choose(parent, format, QDir(folder).filePath(fileNameFor(title) + QLatin1Char('.') + extension(format)));
}

std::unique_ptr<TableWriter> ExportFile::writer(Format format, TableShape shape)
{
    if (format == Format::Xlsx)
        return std::make_unique<XlsxTableWriter>(shape);
    return std::make_unique<CsvTableWriter>(shape);
}

QToolButton *ExportFile::menuButton(const QString &objectName, const QString &text, const QString &toolTip,
                                    QObject *receiver, const std::function<void(Format)> &chosen)
{
    auto *button = new QToolButton;
    button->setObjectName(objectName);
    button->setText(text);
    button->setToolTip(toolTip);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto *menu = new QMenu(button);
    menu->addAction(QStringLiteral("Cartella di lavoro &Excel (XLSX)..."), receiver,
                    [chosen] { chosen(Format::Xlsx); });
    menu->addAction(QStringLiteral("Testo &CSV (separato da punto e virgola)..."), receiver,
                    [chosen] { chosen(Format::Csv); });
    button->setMenu(menu);
    return button;
}

} // namespace fw
