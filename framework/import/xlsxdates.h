#pragma once

#include <QDate>
#include <QStringView>

namespace fw::xlsxdates {

// A workbook keeps a date as a number of days whose style's number format shows it as a date:
// one of the built-in formats 14-22 and 45-47, or a format of its own whose code shows a day,
// a month or a year (d, m, y outside quotes, brackets and escapes).
bool isDateFormat(int numberFormatId, QStringView code);

// The day of a serial number in the 1900 system (day 1 is 1 January 1900, and day 60 the
// 29 February 1900 that never was, read as the 28th) or the 1904 system (day 0 is 1 January 1904); the time of
// day is dropped. Invalid for a negative serial or one past the year 9999.
QDate dateOfSerial(double serial, bool date1904);

} // namespace fw::xlsxdates
