#include "shell/historyrequest.h"

#include "data/sqltext.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace {

const QString historyOption = QStringLiteral("history");
const QString compareOption = QStringLiteral("compare");
const QString fromOption = QStringLiteral("from");
const QString toOption = QStringLiteral("to");
const QString checkOption = QStringLiteral("check");
const QString typeOption = QStringLiteral("type");

// A day typed as dd/mm/yyyy; false after saying what is wrong.
bool readDay(const QCommandLineParser &parser, const QString &option, QTextStream &err, std::optional<QDate> &day)
{
    if (!parser.isSet(option))
        return true;
    const QDate parsed = sqltext::parseDayMonthYear(parser.value(option).trimmed());
    if (!parsed.isValid()) {
        err << QStringLiteral("Data non valida per --%1: %2 (scrivere gg/mm/aaaa).").arg(option, parser.value(option))
            << Qt::endl;
        return false;
    }
    day = parsed;
    return true;
}

} // namespace

QList<QCommandLineOption> HistoryRequest::options()
{
    return {
        {historyOption,
         QStringLiteral("Scrive senza finestre lo storico delle modifiche della distinta del tipo indicato nel file "
                        "di --xlsx o di --csv (con --user: solo le modifiche di quell'utente)."),
         QStringLiteral("codice")},
        {compareOption,
         QStringLiteral("Scrive senza finestre le differenze della distinta del tipo indicato tra il giorno di "
                        "--from e quello di --to nel file di --xlsx o di --csv."),
         QStringLiteral("codice")},
        {fromOption, QStringLiteral("Con --history: il primo giorno; con --compare: il giorno A."),
         QStringLiteral("gg/mm/aaaa")},
        {toOption, QStringLiteral("Con --history: l'ultimo giorno; con --compare: il giorno B."),
         QStringLiteral("gg/mm/aaaa")},
        {checkOption,
         QStringLiteral("Scrive senza finestre i problemi delle distinte della ditta (soggetti senza distinta, legami "
                        "sovrapposti, periodi fuori dal padre, righe senza nodo) nel file di --xlsx o di --csv.")},
        {typeOption,
         QStringLiteral("Con --check: solo i problemi della distinta del tipo indicato; con --import: la distinta "
                        "in cui importare."),
         QStringLiteral("codice")},
    };
}

bool HistoryRequest::read(const QCommandLineParser &parser, QTextStream &err)
{
    const bool history = parser.isSet(historyOption);
    const bool compare = parser.isSet(compareOption);
    if (parser.isSet(checkOption))
        return readCheck(parser, err, history || compare);
    if (parser.isSet(typeOption)) {
        err << QStringLiteral("L'opzione --type vale solo con --check.") << Qt::endl;
        return false;
    }
    if (!history && !compare) {
        for (const QString &option : {fromOption, toOption}) {
            if (parser.isSet(option)) {
                err << QStringLiteral("L'opzione --%1 vale solo con --history o con --compare.").arg(option)
                    << Qt::endl;
                return false;
            }
        }
        return true;
    }
    const QString option = history ? historyOption : compareOption;
    if ((history && compare) || parser.isSet(QStringLiteral("print")) || parser.isSet(QStringLiteral("export"))) {
        err << QStringLiteral("Indicare una sola tra --print, --export, --history e --compare.") << Qt::endl;
        return false;
    }
    for (const QString &list : {QStringLiteral("level"), QStringLiteral("date")}) {
        if (parser.isSet(list)) {
            err << QStringLiteral("L'opzione --%1 non vale con --%2.").arg(list, option) << Qt::endl;
            return false;
        }
    }
    kind = history ? Kind::History : Kind::Compare;
    typeCode = parser.value(option).trimmed();
    if (typeCode.isEmpty()) {
        err << QStringLiteral("Indicare con --%1 il codice del tipo di distinta.").arg(option) << Qt::endl;
        return false;
    }
    if (!readFile(parser, err, option))
        return false;
    if (!readDay(parser, fromOption, err, from) || !readDay(parser, toOption, err, to))
        return false;
    if (compare && (!from || !to)) {
        err << QStringLiteral("Con --compare indicare i due giorni con --from e --to.") << Qt::endl;
        return false;
    }
    if (from && to && *from > *to) {
        err << QStringLiteral("Il giorno di --from (%1) è successivo a quello di --to (%2).")
                   .arg(sqltext::dayMonthYear(*from), sqltext::dayMonthYear(*to))
            << Qt::endl;
        return false;
    }
    if (history && parser.isSet(QStringLiteral("user")))
        user = parser.value(QStringLiteral("user")).trimmed();
    return true;
}

bool HistoryRequest::readFile(const QCommandLineParser &parser, QTextStream &err, const QString &option)
{
    const bool xlsx = parser.isSet(QStringLiteral("xlsx"));
    if (xlsx == parser.isSet(QStringLiteral("csv"))) {
        err << QStringLiteral("Con --%1 indicare il file da scrivere con --xlsx oppure con --csv (uno solo).")
                   .arg(option)
            << Qt::endl;
        return false;
    }
    format = xlsx ? fw::ExportFile::Format::Xlsx : fw::ExportFile::Format::Csv;
    path = parser.value(xlsx ? QStringLiteral("xlsx") : QStringLiteral("csv")).trimmed();
    if (path.isEmpty()) {
        err << QStringLiteral("Con --%1 indicare il nome del file da scrivere.").arg(option) << Qt::endl;
        return false;
    }
    return true;
}

bool HistoryRequest::readCheck(const QCommandLineParser &parser, QTextStream &err, bool withHistory)
{
    if (withHistory || parser.isSet(QStringLiteral("print")) || parser.isSet(QStringLiteral("export"))) {
        err << QStringLiteral("Indicare una sola tra --print, --export, --history, --compare e --check.") << Qt::endl;
        return false;
    }
    for (const QString &option : {QStringLiteral("level"), QStringLiteral("date"), fromOption, toOption}) {
        if (parser.isSet(option)) {
            err << QStringLiteral("L'opzione --%1 non vale con --check.").arg(option) << Qt::endl;
            return false;
        }
    }
    kind = Kind::Check;
    if (parser.isSet(typeOption)) {
        typeCode = parser.value(typeOption).trimmed();
        if (typeCode.isEmpty()) {
            err << QStringLiteral("Indicare con --type il codice del tipo di distinta.") << Qt::endl;
            return false;
        }
    }
    return readFile(parser, err, checkOption);
}
