#include "shell/listoptions.h"

#include "data/sqltext.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace listoptions {

namespace {

const QString levelOption = QStringLiteral("level");
const QString dateOption = QStringLiteral("date");

bool readLevel(const QCommandLineParser &parser, QTextStream &err, std::optional<int> &level)
{
    if (!parser.isSet(levelOption))
        return true;
    bool numeric = false;
    const int value = parser.value(levelOption).trimmed().toInt(&numeric);
    if (!numeric || value < 0 || value > 32766) {
        err << QStringLiteral("Livello non valido: %1 (un numero da 0 in su).").arg(parser.value(levelOption))
            << Qt::endl;
        return false;
    }
    level = value;
    return true;
}

bool readDate(const QCommandLineParser &parser, QTextStream &err, std::optional<QDate> &date)
{
    if (!parser.isSet(dateOption))
        return true;
    const QString text = parser.value(dateOption).trimmed();
    if (!sqltext::isWrittenAsDayMonthYear(text)) {
        err << QStringLiteral("Data non valida: %1 (scrivere gg/mm/aaaa).").arg(text) << Qt::endl;
        return false;
    }
    const QDate day = sqltext::parseDayMonthYear(text);
    if (!day.isValid()) {
        err << QStringLiteral("La data %1 non esiste.").arg(text) << Qt::endl;
        return false;
    }
    // The range of SQL Server's datetime.
    if (day.year() < 1753) {
        err << QStringLiteral("Data non valida: %1 (dal 1753 in poi).").arg(text) << Qt::endl;
        return false;
    }
    date = day;
    return true;
}

} // namespace

QList<QCommandLineOption> options()
{
    return {
        {levelOption,
         QStringLiteral("Con --print o --export: fino a quale livello (0: solo i capostipiti; senza: tutta la "
                        "distinta)."),
         QStringLiteral("N")},
        {dateOption, QStringLiteral("Con --print o --export: la distinta com'era in quel giorno."),
         QStringLiteral("gg/mm/aaaa")},
    };
}

bool read(const QCommandLineParser &parser, QTextStream &err, std::optional<int> &level, std::optional<QDate> &date)
{
    return readLevel(parser, err, level) && readDate(parser, err, date);
}

bool readAlone(const QCommandLineParser &parser, QTextStream &err)
{
    for (const QString &option : {levelOption, dateOption}) {
        if (parser.isSet(option)) {
            err << QStringLiteral("L'opzione --%1 vale solo con --print o con --export.").arg(option) << Qt::endl;
            return false;
        }
    }
    return true;
}

} // namespace listoptions
