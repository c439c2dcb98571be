#include "tsqldates.h"

namespace db {

namespace {

struct DateParts
{
    int year = 1900, month = 1, day = 1;
    int hour = 0, minute = 0, second = 0, msec = 0;
};

// Reads 'min'..'max' digits at 'pos'; moves 'pos' past them.
bool readNumber(QStringView s, qsizetype &pos, int minDigits, int maxDigits, int &value)
{
    int digits = 0;
    value = 0;
    while (pos < s.size() && digits < maxDigits && s[pos] >= u'0' && s[pos] <= u'9') {
        value = value * 10 + (s[pos].unicode() - u'0');
        ++pos;
        ++digits;
    }
    return digits >= minDigits && (pos >= s.size() || s[pos] < u'0' || s[pos] > u'9');
}

bool readChar(QStringView s, qsizetype &pos, QChar c)
{
    if (pos < s.size() && s[pos] == c) {
        ++pos;
        return true;
    }
    return false;
}

bool isLeapYear(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

bool isValid(const DateParts &d)
{
    static const int monthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (d.year < 1753 || d.year > 9999 || d.month < 1 || d.month > 12 || d.day < 1)
        return false;
    const int days = monthDays[d.month - 1] + (d.month == 2 && isLeapYear(d.year) ? 1 : 0);
    return d.day <= days && d.hour <= 23 && d.minute <= 59 && d.second <= 59 && d.msec <= 999;
}

// ' hh:mi[:ss[.mmm]]' after a date, or nothing.
bool readTime(QStringView s, qsizetype &pos, DateParts &d, bool allowT)
{
    if (pos >= s.size())
        return true;
    if (!(s[pos] == u' ' || (allowT && s[pos] == u'T')))
        return false;
    while (pos < s.size() && s[pos] == u' ')
        ++pos;
    if (allowT && pos < s.size() && s[pos] == u'T')
        ++pos;
    if (!readNumber(s, pos, 1, 2, d.hour) || !readChar(s, pos, u':') || !readNumber(s, pos, 1, 2, d.minute))
        return false;
    if (readChar(s, pos, u':')) {
        if (!readNumber(s, pos, 1, 2, d.second))
            return false;
        if (readChar(s, pos, u'.')) {
            const qsizetype start = pos;
            if (!readNumber(s, pos, 1, 3, d.msec))
                return false;
            for (qsizetype digits = pos - start; digits < 3; ++digits)
                d.msec *= 10;
        }
    }
    return pos == s.size();
}

bool readStored(QStringView s, DateParts &d)
{
    qsizetype pos = 0;
    return readNumber(s, pos, 4, 4, d.year) && readChar(s, pos, u'-') && readNumber(s, pos, 2, 2, d.month)
        && readChar(s, pos, u'-') && readNumber(s, pos, 2, 2, d.day) && readTime(s, pos, d, true) && isValid(d);
}

QString twoDigits(int value)
{
    return QString::number(value).rightJustified(2, u'0');
}

// Written digit by digit: this runs for every date of every statement.
QString storedText(const DateParts &d)
{
    char16_t text[23];
    const auto digits = [&text](int at, int value, int count) {
        for (int k = count - 1; k >= 0; --k) {
            text[at + k] = char16_t(u'0' + value % 10);
            value /= 10;
        }
    };
    digits(0, d.year, 4);
    text[4] = u'-';
    digits(5, d.month, 2);
    text[7] = u'-';
    digits(8, d.day, 2);
    text[10] = u' ';
    digits(11, d.hour, 2);
    text[13] = u':';
    digits(14, d.minute, 2);
    text[16] = u':';
    digits(17, d.second, 2);
    qsizetype length = 19;
    if (d.msec != 0) {
        text[19] = u'.';
        digits(20, d.msec, 3);
        length = 23;
    }
    return QString(reinterpret_cast<const QChar *>(text), length);
}

} // namespace

std::optional<QString> tsqlTextToStoredDate(QStringView text, int style)
{
    if (!isKnownDateStyle(style))
        return std::nullopt;
    const QStringView s = text.trimmed();
    DateParts d;
    if (s.isEmpty())
        return storedText(d);
    if (readStored(s, d))
        return storedText(d);

    d = DateParts();
    qsizetype pos = 0;
    int first = 0, second = 0;
    if (!readNumber(s, pos, 1, 2, first) || pos >= s.size())
        return std::nullopt;
    const QChar separator = s[pos];
    if (separator != u'/' && separator != u'-' && separator != u'.')
        return std::nullopt;
    ++pos;
    if (!readNumber(s, pos, 1, 2, second) || !readChar(s, pos, separator) || !readNumber(s, pos, 4, 4, d.year)
        || !readTime(s, pos, d, false))
        return std::nullopt;
    d.day = style == 103 ? first : second;
    d.month = style == 103 ? second : first;
    if (!isValid(d))
        return std::nullopt;
    return storedText(d);
}

std::optional<QString> storedDateToTsqlText(QStringView stored, int style)
{
    DateParts d;
    if (!isKnownDateStyle(style) || !readStored(stored.trimmed(), d))
        return std::nullopt;
    const QString year = QString::number(d.year).rightJustified(4, u'0');
    if (style == 103)
        return twoDigits(d.day) + u'/' + twoDigits(d.month) + u'/' + year;
    return twoDigits(d.month) + u'/' + twoDigits(d.day) + u'/' + year;
}

} // namespace db
