#include "shell/exportrequest.h"

#include "shell/listoptions.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace {

const QString exportOption = QStringLiteral("export");
const QString xlsxOption = QStringLiteral("xlsx");
const QString csvOption = QStringLiteral("csv");

} // namespace

QList<QCommandLineOption> ExportRequest::options()
{
    return {
        {exportOption,
         QStringLiteral("Esporta senza finestre la distinta del tipo indicato nel file di --xlsx o di --csv."),
         QStringLiteral("codice")},
        {xlsxOption,
         QStringLiteral("Con --export, --history, --compare o --check: la cartella di lavoro Excel da scrivere."),
         QStringLiteral("file.xlsx")},
        {csvOption,
         QStringLiteral("Con --export, --history, --compare o --check: il file CSV (separato da punto e virgola) da "
                        "scrivere."),
         QStringLiteral("file.csv")},
    };
}

bool ExportRequest::read(const QCommandLineParser &parser, QTextStream &err)
{
    if (!parser.isSet(exportOption)) {
        // --history, --compare and --check read the file options themselves.
        if (parser.isSet(QStringLiteral("history")) || parser.isSet(QStringLiteral("compare"))
            || parser.isSet(QStringLiteral("check")))
            return true;
        for (const QString &option : {xlsxOption, csvOption}) {
            if (parser.isSet(option)) {
                err << QStringLiteral("L'opzione --%1 vale solo con --export, --history o --compare.").arg(option)
                    << Qt::endl;
                return false;
            }
        }
        return true;
    }
    if (parser.isSet(QStringLiteral("print"))) {
        err << QStringLiteral("Indicare --print oppure --export, non entrambi.") << Qt::endl;
        return false;
    }
    typeCode = parser.value(exportOption).trimmed();
    if (typeCode.isEmpty()) {
        err << QStringLiteral("Indicare con --export il codice del tipo di distinta da esportare.") << Qt::endl;
        return false;
    }
    if (parser.isSet(xlsxOption) == parser.isSet(csvOption)) {
        err << QStringLiteral("Con --export indicare il file da scrivere con --xlsx oppure con --csv (uno solo).")
            << Qt::endl;
        return false;
    }
    format = parser.isSet(xlsxOption) ? fw::ExportFile::Format::Xlsx : fw::ExportFile::Format::Csv;
    path = parser.value(format == fw::ExportFile::Format::Xlsx ? xlsxOption : csvOption).trimmed();
    if (path.isEmpty()) {
        err << QStringLiteral("Con --export indicare il nome del file da scrivere.") << Qt::endl;
        return false;
    }
    return listoptions::read(parser, err, level, date);
}
