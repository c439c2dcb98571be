#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

// How values are written into the text of a T-SQL statement: the one place that quotes text
// and writes days and stamps. Pure functions.
namespace db {

// Every single quote doubled: the only way user-typed text reaches a statement.
QString doubleQuotes(const QString &text);

// '…' with the quotes inside doubled.
QString quoted(const QString &text);

// CONVERT(DateTime,'dd/mm/yyyy',103) and CONVERT(DateTime,'mm/dd/yyyy',101).
QString convertDate103(const QDate &date);
QString convertDate101(const QDate &date);

// CONVERT(DateTime,'dd/mm/yyyy hh:mm:ss',103): a stamp, to the second.
QString convertDateTime103(const QDateTime &at);

} // namespace db
