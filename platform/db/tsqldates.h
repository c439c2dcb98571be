#pragma once

#include <QString>
#include <QStringView>
#include <optional>

namespace db {

// Dates live in SQLite as 'YYYY-MM-DD HH:MM:SS' text (with '.mmm' only when the milliseconds
// are not zero), so that text comparisons order them as dates.

// CONVERT(DateTime, text, style): style 103 reads 'dd/mm/yyyy', style 101 'mm/dd/yyyy', each
// with an optional time 'hh:mi[:ss[.mmm]]'; '-' and '.' are accepted as date separators and an
// empty text is 1 January 1900, as on the server. Text already in the stored form is taken as
// it is. Returns nothing for a text that is not such a date or names a day that does not exist.
std::optional<QString> tsqlTextToStoredDate(QStringView text, int style);

// CONVERT(VarChar, date, style): the stored form back to 'dd/mm/yyyy' (103) or 'mm/dd/yyyy'
// (101). Returns nothing when the value is not in the stored form.
std::optional<QString> storedDateToTsqlText(QStringView stored, int style);

// The styles of CONVERT that the compatibility layer knows.
inline bool isKnownDateStyle(int style)
{
    return style == 101 || style == 103;
}

} // namespace db
