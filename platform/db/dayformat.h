#pragma once

#include <QStringView>

namespace db {

// A day as the module's users read and type it, as its lists, exports and reports show it, and
// as its statements write it for CONVERT(DateTime,…,103).
inline constexpr QStringView dayFormat = u"dd/MM/yyyy";

// The same day followed by the time, to the second.
inline constexpr QStringView dayTimeFormat = u"dd/MM/yyyy HH:mm:ss";

// Month first, as statements write a day for CONVERT(DateTime,…,101).
inline constexpr QStringView monthDayFormat = u"MM/dd/yyyy";

} // namespace db
