#include "sqlliterals.h"

#include "dayformat.h"

namespace db {

namespace {

QString convert(const QString &text, int style)
{
    return QStringLiteral("CONVERT(DateTime,'") + text + QStringLiteral("',") + QString::number(style)
        + QLatin1Char(')');
}

} // namespace

QString doubleQuotes(const QString &text)
{
    QString result = text;
    return result.replace(QLatin1Char('\''), QLatin1String("''"));
}

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + doubleQuotes(text) + QLatin1Char('\'');
}

QString convertDate103(const QDate &date)
{
    return convert(date.toString(dayFormat), 103);
}

QString convertDate101(const QDate &date)
{
    return convert(date.toString(monthDayFormat), 101);
}

QString convertDateTime103(const QDateTime &at)
{
    return convert(at.toString(dayTimeFormat), 103);
}

} // namespace db
