#include "storedvalues.h"

#include "dayformat.h"

#include <QRegularExpression>
#include <array>
#include <cmath>

namespace db::storedvalues {

ColumnType columnTypeFromDeclaration(const QString &declaration)
{
    const QString decl = declaration.trimmed().toUpper();
    if (decl.isEmpty() || decl == QLatin1String("NUM"))
        return {};
    auto has = [&decl](const char *part) { return decl.contains(QLatin1String(part)); };

    if (decl == QLatin1String("BIT") || has("BOOL"))
        return {FieldType::Boolean, 0};
    if (has("DATE") || has("TIME"))
        return {FieldType::DateTime, 0};
    if (has("INT"))
        return {FieldType::Integer, 0};
    if (has("CHAR") || has("CLOB") || has("TEXT") || has("UNIQUEIDENTIFIER"))
        return {FieldType::Text, 0};
    if (has("BLOB") || has("BINARY") || has("IMAGE"))
        return {FieldType::Blob, 0};
    if (has("REAL") || has("FLOA") || has("DOUB"))
        return {FieldType::Double, 0};
    if (has("MONEY"))
        return {FieldType::Decimal, 4};
    if (has("DEC") || has("NUMERIC")) {
        static const QRegularExpression precisionAndScale(QStringLiteral("\\(\\s*\\d+\\s*,\\s*(\\d+)\\s*\\)"));
        const QRegularExpressionMatch match = precisionAndScale.match(decl);
        return {FieldType::Decimal, match.hasMatch() ? match.captured(1).toInt() : 0};
    }
    return {};
}

namespace {

bool digits(const char *p, int count, int *out)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const char c = p[i];
        if (c < '0' || c > '9')
            return false;
        value = value * 10 + (c - '0');
    }
    *out = value;
    return true;
}

// Building a local QDateTime asks the time-zone database; the same few dates come back on
// every row of a large read, so a small direct-mapped cache keeps loads fast.
struct CacheSlot
{
    qint64 key = -1;
    QDateTime value;
};

QDateTime cachedLocalDateTime(int y, int mo, int d, int h, int mi, int s, int ms)
{
    static thread_local std::array<CacheSlot, 512> cache;
    const qint64 key = ((((((qint64(y) * 13 + mo) * 32 + d) * 24 + h) * 60 + mi) * 60 + s) * 1000) + ms;
    CacheSlot &slot = cache[size_t((key ^ (key >> 17)) & 511)];
    if (slot.key != key) {
        const QDate date(y, mo, d);
        const QTime time(h, mi, s, ms);
        if (!date.isValid() || !time.isValid())
            return {};
        slot.value = QDateTime(date, time);
        slot.key = key;
    }
    return slot.value;
}

} // namespace

QDateTime parseDateTime(const char *text, int length)
{
    int y, mo, d, h = 0, mi = 0, s = 0, ms = 0;
    if (length < 10 || text[4] != '-' || text[7] != '-')
        return {};
    if (!digits(text, 4, &y) || !digits(text + 5, 2, &mo) || !digits(text + 8, 2, &d))
        return {};
    if (length > 10) {
        if (length < 16 || (text[10] != ' ' && text[10] != 'T') || text[13] != ':')
            return {};
        if (!digits(text + 11, 2, &h) || !digits(text + 14, 2, &mi))
            return {};
        int end = 16;
        if (length > 16) {
            if (length < 19 || text[16] != ':' || !digits(text + 17, 2, &s))
                return {};
            end = 19;
            if (length > 19) {
                if (text[19] != '.')
                    return {};
                int fraction = 0, scale = 1000;
                for (int i = 20; i < length; ++i) {
                    if (text[i] < '0' || text[i] > '9')
                        return {};
                    if (scale > 1) {
                        scale /= 10;
                        fraction += (text[i] - '0') * scale;
                    }
                }
                ms = fraction;
                end = length;
            }
        }
        if (end != length)
            return {};
    }
    return cachedLocalDateTime(y, mo, d, h, mi, s, ms);
}

QDateTime parseDateTime(const QString &text)
{
    const QByteArray latin = text.trimmed().toLatin1();
    return parseDateTime(latin.constData(), int(latin.size()));
}

QString formatDateTime(const QDateTime &value)
{
    return value.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

bool isWholeNumberType(int metaTypeId)
{
    switch (metaTypeId) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar: return true;
    default: return false;
    }
}

double roundToScale(double value, int scale)
{
    const double factor = std::pow(10.0, scale);
    return std::round(value * factor) / factor;
}

QVariant coerce(const QVariant &value, FieldType type, bool *ok)
{
    *ok = true;
    if (!value.isValid() || value.isNull())
        return QVariant();
    const int id = value.metaType().id();
    switch (type) {
    case FieldType::Integer: {
        if (id == QMetaType::Double || id == QMetaType::Float) {
            const double number = value.toDouble();
            return QVariant(qlonglong(number < 0 ? number - 0.5 : number + 0.5));
        }
        const qlonglong number = value.toLongLong(ok);
        return *ok ? QVariant(number) : QVariant();
    }
    case FieldType::Double:
    case FieldType::Decimal: {
        const double number = value.toDouble(ok);
        return *ok ? QVariant(number) : QVariant();
    }
    case FieldType::Boolean:
        if (id == QMetaType::QString) {
            const QString text = value.toString().trimmed().toLower();
            if (text == QLatin1String("true") || text == QLatin1String("1"))
                return QVariant(true);
            if (text == QLatin1String("false") || text == QLatin1String("0"))
                return QVariant(false);
            *ok = false;
            return QVariant();
        }
        return QVariant(value.toBool());
    case FieldType::DateTime: {
        if (id == QMetaType::QDateTime)
            return value;
        if (id == QMetaType::QDate)
            return QVariant(value.toDate().startOfDay());
        if (id == QMetaType::QString) {
            const QString text = value.toString();
            if (text.trimmed().isEmpty())
                return QVariant();
            QDateTime parsed = parseDateTime(text);
            if (!parsed.isValid()) // the way dates are typed by the user
                parsed = QDateTime(QDate::fromString(text.trimmed(), dayFormat), QTime(0, 0));
            if (parsed.isValid())
                return QVariant(parsed);
        }
        *ok = false;
        return QVariant();
    }
    case FieldType::Text:
        if (id == QMetaType::QDateTime)
            return QVariant(formatDateTime(value.toDateTime()));
        return QVariant(value.toString());
    case FieldType::Blob: return QVariant(value.toByteArray());
    case FieldType::Unknown: break;
    }
    return value;
}

bool sameValue(const QVariant &a, const QVariant &b)
{
    const bool aNull = !a.isValid() || a.isNull();
    const bool bNull = !b.isValid() || b.isNull();
    if (aNull || bNull)
        return aNull == bNull;
    if (a.metaType() == b.metaType())
        return a == b;
    return QVariant::compare(a, b) == QPartialOrdering::Equivalent;
}

} // namespace db::storedvalues
