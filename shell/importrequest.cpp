#include "shell/importrequest.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QTextStream>

namespace {

const QString importOption = QStringLiteral("import");
const QString dryRunOption = QStringLiteral("dry-run");
const QString reportOption = QStringLiteral("report");

} // namespace

// --type is HistoryRequest's: --check reads it too.
QList<QCommandLineOption> ImportRequest::options()
{
    return {
        {importOption,
         QStringLiteral("Importa senza finestre il file Excel o CSV indicato nella distinta di --type, scrivendo "
                        "l'esito di ogni riga nel file di --report."),
         QStringLiteral("file")},
        {dryRunOption, QStringLiteral("Con --import: solo la prova, senza scrivere nella distinta.")},
        {reportOption, QStringLiteral("Con --import: il file .csv o .xlsx dell'esito di ogni riga."),
         QStringLiteral("file")},
    };
}

bool ImportRequest::read(const QCommandLineParser &parser, QTextStream &err)
{
    if (!parser.isSet(importOption)) {
        for (const QString &option : {dryRunOption, reportOption}) {
            if (parser.isSet(option)) {
                err << QStringLiteral("L'opzione --%1 vale solo con --import.").arg(option) << Qt::endl;
                return false;
            }
        }
        return true;
    }
    for (const QString &other : {QStringLiteral("print"), QStringLiteral("export"), QStringLiteral("history"),
                                 QStringLiteral("compare"), QStringLiteral("check")}) {
        if (parser.isSet(other)) {
            err << QStringLiteral("Indicare una sola tra --print, --export, --history, --compare, --check e --import.")
                << Qt::endl;
            return false;
        }
    }
    for (const QString &other : {QStringLiteral("xlsx"), QStringLiteral("csv"), QStringLiteral("level"),
                                 QStringLiteral("date"), QStringLiteral("from"), QStringLiteral("to")}) {
        if (parser.isSet(other)) {
            err << QStringLiteral("L'opzione --%1 non vale con --import.").arg(other) << Qt::endl;
            return false;
        }
    }
    file = parser.value(importOption).trimmed();
    typeCode = parser.value(QStringLiteral("type")).trimmed();
    reportPath = parser.value(reportOption).trimmed();
    dryRun = parser.isSet(dryRunOption);
    if (file.isEmpty()) {
        err << QStringLiteral("Indicare con --import il file da importare.") << Qt::endl;
        return false;
    }
    if (typeCode.isEmpty()) {
        err << QStringLiteral("Con --import indicare con --type il codice del tipo di distinta.") << Qt::endl;
        return false;
    }
    const QString suffix = QFileInfo(reportPath).suffix().toLower();
    if (suffix != QLatin1String("csv") && suffix != QLatin1String("xlsx")) {
        err << QStringLiteral("Con --import indicare con --report il file .csv o .xlsx dell'esito.") << Qt::endl;
        return false;
    }
    reportFormat = suffix == QLatin1String("xlsx") ? fw::ExportFile::Format::Xlsx : fw::ExportFile::Format::Csv;
    return true;
}
