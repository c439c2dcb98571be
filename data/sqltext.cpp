#include "sqltext.h"

#include "platform/db/dayformat.h"

#include <QRegularExpression>

namespace sqltext {

QString dayMonthYear(const QDate &date)
{
    return date.toString(db::dayFormat);
}

QString dayMonthYear(const QDateTime &dateTime)
{
    return dayMonthYear(dateTime.date());
}

QString monthDayYear(const QDate &date)
{
    return date.toString(db::monthDayFormat);
}

QString monthDayYear(const QDateTime &dateTime)
{
    return monthDayYear(dateTime.date());
}

namespace {

const QRegularExpression &dayMonthYearPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*(\\d{1,2})/(\\d{1,2})/(\\d{4})\\s*$"));
    return pattern;
}

} // namespace

bool isWrittenAsDayMonthYear(const QString &text)
{
    return dayMonthYearPattern().match(text).hasMatch();
}

QDate parseDayMonthYear(const QString &text)
{
    const QRegularExpressionMatch match = dayMonthYearPattern().match(text);
    if (!match.hasMatch())
        return {};
    return QDate(match.captured(3).toInt(), match.captured(2).toInt(), match.captured(1).toInt());
}

bool isDayMonthYear(const QString &text)
{
    return parseDayMonthYear(text).isValid();
}

QString dropTempTableStatement(const QString &table)
{
    return QStringLiteral("IF OBJECT_ID('tempdb..") + table + QStringLiteral("') IS NOT NULL ")
        + QStringLiteral("DROP TABLE ") + table;
}

QString intoTempTable(const QString &table)
{
    return QStringLiteral(" INTO ") + table;
}

QString selectAllFrom(const QString &table)
{
    return QStringLiteral("SELECT * FROM ") + table;
}

QString number(qint64 value)
{
    return QString::number(value);
}

} // namespace sqltext
