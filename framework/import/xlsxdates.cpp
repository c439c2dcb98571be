#include "framework/import/xlsxdates.h"

#include <cmath>

namespace fw::xlsxdates {

bool isDateFormat(int numberFormatId, QStringView code)
{
    if ((numberFormatId >= 14 && numberFormatId <= 22) || (numberFormatId >= 45 && numberFormatId <= 47))
        return true;
    if (numberFormatId < 164)
        return false; // the other built-in formats are numbers and text
    bool quoted = false;
    bool bracketed = false;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code.at(i);
        if (quoted) {
            quoted = c != u'"';
        } else if (bracketed) {
            bracketed = c != u']';
        } else if (c == u'"') {
            quoted = true;
        } else if (c == u'[') {
            bracketed = true;
        } else if (c == u'\\' || c == u'_' || c == u'*') {
            ++i; // the next character is shown as it is, or fills
        } else if (c == u';') {
            return false; // a number's sections: the first one decides
        } else {
            const QChar lower = c.toLower();
            if (lower == u'd' || lower == u'm' || lower == u'y')
                return true;
        }
    }
    return false;
}

QDate dateOfSerial(double serial, bool date1904)
{
    if (!std::isfinite(serial) || serial < 0 || serial > 2958465.0)
        return {};
    const auto days = static_cast<qint64>(std::floor(serial));
    if (date1904)
        return QDate(1904, 1, 1).addDays(days);
    // Before the phantom 29 February the serials run one day ahead of the calendar.
    return days < 60 ? QDate(1899, 12, 31).addDays(days) : QDate(1899, 12, 30).addDays(days);
}

} // namespace fw::xlsxdates
