#include "cellstore.h"

#include <cstring>

namespace db {

namespace {

// A text's slot: its page (0 for the first), its offset in the page, its length.
constexpr int TextBits = 21;
constexpr qsizetype PageBytes = qsizetype(1) << TextBits;
static_assert(PageBytes == qsizetype(os::LargePage::Bytes));
constexpr quint64 TextMask = quint64(PageBytes) - 1;
constexpr qsizetype LongestText = 65535; // longer ones are kept as values, not to waste pages
constexpr qint64 MsecsPerDay = 86400000;

// Dates kept by their local date and time; others (UTC, an offset, a time zone) as values.
bool isLocalDate(const QDateTime &value)
{
    return value.isValid() && value.timeSpec() == Qt::LocalTime;
}

} // namespace

QVariant CellStore::value(int row, int column) const
{
    const qsizetype index = at(row, column);
    const quint64 slot = m_values[index];
    switch (m_tags[index]) {
    case Tag::Null: return QVariant();
    case Tag::Int32: return QVariant(int(qint32(slot)));
    case Tag::Int64: return QVariant(qlonglong(slot));
    case Tag::Double: {
        double value;
        std::memcpy(&value, &slot, sizeof value);
        return QVariant(value);
    }
    case Tag::Bool: return QVariant(slot != 0);
    case Tag::Text: {
        if ((slot & TextMask) == 0)
            return QVariant(QStringLiteral("")); // empty, not null
        const quint64 page = slot >> (2 * TextBits);
        const char *start = page == 0 ? m_firstText.data() : static_cast<const char *>(m_textPages[page - 1].get());
        return QVariant(QString::fromUtf8(start + ((slot >> TextBits) & TextMask), qsizetype(slot & TextMask)));
    }
    case Tag::DateTime: return QVariant(m_dates.at(qsizetype(slot)));
    case Tag::Other: return m_others.at(qsizetype(slot));
    }
    return QVariant();
}

void CellStore::setValue(int row, int column, const QVariant &value)
{
    // The previous text or value stays in its buffer until the store goes: edits are few.
    const qsizetype index = at(row, column);
    Tag tag;
    quint64 slot;
    if (!encode(value, &tag, &slot)) {
        tag = Tag::Other;
        slot = quint64(m_others.size());
        m_others.append(value);
    }
    m_tags[index] = tag;
    m_values[index] = slot;
}

std::vector<QVariant> CellStore::rowValues(int row) const
{
    std::vector<QVariant> values;
    values.reserve(size_t(m_columns));
    for (int column = 0; column < m_columns; ++column)
        values.push_back(value(row, column));
    return values;
}

void CellStore::appendNullRow()
{
    for (int column = 0; column < m_columns; ++column)
        appendNull();
}

void CellStore::appendDouble(double value)
{
    quint64 slot;
    std::memcpy(&slot, &value, sizeof slot);
    push(Tag::Double, slot);
}

void CellStore::appendText(const char *utf8, qsizetype bytes)
{
    if (bytes > LongestText) {
        append(QVariant(QString::fromUtf8(utf8, bytes)));
        return;
    }
    push(Tag::Text, textSlot(utf8, bytes));
}

void CellStore::appendDateTime(const QDateTime &value)
{
    if (isLocalDate(value))
        push(Tag::DateTime, dateSlot(value));
    else
        append(QVariant(value));
}

void CellStore::append(const QVariant &value)
{
    Tag tag;
    quint64 slot;
    if (encode(value, &tag, &slot)) {
        push(tag, slot);
    } else {
        push(Tag::Other, quint64(m_others.size()));
        m_others.append(value);
    }
}

bool CellStore::encode(const QVariant &value, Tag *tag, quint64 *slot)
{
    if (!value.isValid()) {
        *tag = Tag::Null;
        *slot = 0;
        return true;
    }
    switch (value.metaType().id()) {
    case QMetaType::Int:
        *tag = Tag::Int32;
        *slot = quint64(quint32(value.toInt()));
        return true;
    case QMetaType::LongLong:
        *tag = Tag::Int64;
        *slot = quint64(value.toLongLong());
        return true;
    case QMetaType::Double: {
        const double number = value.toDouble();
        *tag = Tag::Double;
        std::memcpy(slot, &number, sizeof number);
        return true;
    }
    case QMetaType::Bool:
        *tag = Tag::Bool;
        *slot = value.toBool() ? 1 : 0;
        return true;
    case QMetaType::QString: {
        const QString *text = static_cast<const QString *>(value.constData());
        // A null text and one with lone surrogates would not come back from UTF-8 as they were.
        if (text->isNull() || text->size() * 3 > LongestText)
            return false;
        const QByteArray utf8 = text->toUtf8();
        if (QString::fromUtf8(utf8) != *text)
            return false;
        *tag = Tag::Text;
        *slot = textSlot(utf8.constData(), utf8.size());
        return true;
    }
    case QMetaType::QDateTime: {
        const QDateTime *date = static_cast<const QDateTime *>(value.constData());
        if (!isLocalDate(*date))
            return false;
        *tag = Tag::DateTime;
        *slot = dateSlot(*date);
        return true;
    }
    default: return false;
    }
}

quint64 CellStore::textSlot(const char *utf8, qsizetype bytes)
{
    quint64 page = 0;
    qsizetype offset = qsizetype(m_firstText.size());
    if (m_textPages.empty() && offset + bytes <= PageBytes) {
        m_firstText.insert(m_firstText.end(), utf8, utf8 + bytes);
    } else {
        if (m_textPages.empty() || m_textUsed + bytes > PageBytes) {
            m_textPages.emplace_back(os::LargePage::allocate());
            m_textUsed = 0;
        }
        page = quint64(m_textPages.size());
        offset = m_textUsed;
        std::memcpy(static_cast<char *>(m_textPages.back().get()) + offset, utf8, size_t(bytes));
        m_textUsed += bytes;
    }
    return (page << (2 * TextBits)) | (quint64(offset) << TextBits) | quint64(bytes);
}

quint64 CellStore::dateSlot(const QDateTime &value)
{
    // Date and time of day, not the instant: the same instant can be two local times.
    const qint64 key = value.date().toJulianDay() * MsecsPerDay + value.time().msecsSinceStartOfDay();
    const auto found = m_dateIndex.constFind(key);
    if (found != m_dateIndex.constEnd())
        return *found;
    const quint32 index = quint32(m_dates.size());
    m_dates.append(value);
    m_dateIndex.insert(key, index);
    return index;
}

} // namespace db
