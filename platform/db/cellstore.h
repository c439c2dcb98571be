#pragma once

#include "pagedarray.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QVariant>
#include <memory>
#include <vector>

namespace db {

// The cells of a recordset's rows, row after row, kept compact: one tag byte and eight bytes per
// cell, texts as UTF-8 one after another, equal dates once. A read of a large result costs no
// allocation per cell and never moves what it has read, and a value becomes a QVariant only when
// it is asked for. Every value comes back exactly as it was stored, type included; those
// without a compact form are kept as they are. Internal to platform/db.
class CellStore
{
public:
    explicit CellStore(int columns = 0)
        : m_columns(columns)
    { }

    int columnCount() const { return m_columns; }
    int rowCount() const { return m_columns > 0 ? int(m_tags.size() / m_columns) : 0; }

    QVariant value(int row, int column) const;
    void setValue(int row, int column, const QVariant &value);
    std::vector<QVariant> rowValues(int row) const;
    void appendNullRow();

    // A read appends its cells left to right, row after row.
    void appendNull() { push(Tag::Null, 0); }
    void appendInteger(qint64 value) { push(Tag::Int64, quint64(value)); }
    void appendDouble(double value);
    void appendBoolean(bool value) { push(Tag::Bool, value ? 1 : 0); }
    void appendText(const char *utf8, qsizetype bytes);
    void appendDateTime(const QDateTime &value);
    void append(const QVariant &value);

private:
    enum class Tag : quint8 { Null, Int32, Int64, Double, Bool, Text, DateTime, Other };

    void push(Tag tag, quint64 slot)
    {
        m_tags.push_back(tag);
        m_values.push_back(slot);
    }
    // The compact form of a value: false when it has none.
    bool encode(const QVariant &value, Tag *tag, quint64 *slot);
    quint64 textSlot(const char *utf8, qsizetype bytes);
    quint64 dateSlot(const QDateTime &value);
    qsizetype at(int row, int column) const { return qsizetype(row) * m_columns + column; }

    int m_columns;
    PagedArray<Tag> m_tags;
    PagedArray<quint64> m_values;              // the value, or where it is kept
    std::vector<char> m_firstText;             // texts one after another: the first page's worth,
    std::vector<os::LargePagePtr> m_textPages; // then pages of their own
    qsizetype m_textUsed = 0;                  // bytes used in the last text page
    QList<QDateTime> m_dates;                  // each date once
    QHash<qint64, quint32> m_dateIndex;        // local date and time as one number -> its index
    QList<QVariant> m_others;                  // values without a compact form
};

} // namespace db
