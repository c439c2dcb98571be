#pragma once

#include "platform/db/sqlliterals.h"

#include <QDate>
#include <QDateTime>
#include <QString>

// Pieces of the suite's T-SQL that every statement builder shares: quoting, dates in the two
// styles the module writes, and the temporary-table idiom. Pure functions, text in, text out.
namespace sqltext {

// Quotes and CONVERT literals are written by the platform's one function for each.
using db::convertDate101;
using db::convertDate103;
using db::convertDateTime103;
using db::doubleQuotes;
using db::quoted;

// A key or a code as statements write it: plain digits.
QString number(qint64 value);

// "dd/mm/yyyy" (style 103) and "mm/dd/yyyy" (style 101). The time of a QDateTime is dropped.
QString dayMonthYear(const QDate &date);
QString dayMonthYear(const QDateTime &dateTime);
QString monthDayYear(const QDate &date);
QString monthDayYear(const QDateTime &dateTime);

// A date as the user types it ("dd/mm/yyyy", also "d/m/yyyy"); an invalid QDate when the text is
// empty, malformed or names no real day (31/02/2024).
QDate parseDayMonthYear(const QString &text);
// Written as d/m/yyyy, whether or not such a day exists.
bool isWrittenAsDayMonthYear(const QString &text);
bool isDayMonthYear(const QString &text);

// "IF OBJECT_ID('tempdb.." + name + "') IS NOT NULL " + "DROP TABLE " + name
QString dropTempTableStatement(const QString &table);

// " INTO " + name, placed after a select list.
QString intoTempTable(const QString &table);

// "SELECT * FROM " + name
QString selectAllFrom(const QString &table);

} // namespace sqltext
