#include "framework/treelist/treelistparentlinks.h"

#include "platform/db/recordset.h"

#include <QHash>
#include <QString>
#include <limits>
#include <optional>

namespace fw {

namespace {

// Keys are integers in practice; any other kind of key goes through its text.
struct IntegerKeys
{
    using Key = qint64;
    static std::optional<qint64> key(const QVariant &value)
    {
        bool ok = false;
        const qint64 key = value.toLongLong(&ok);
        return ok ? std::optional<qint64>(key) : std::nullopt;
    }
};

struct TextKeys
{
    using Key = QString;
    static std::optional<QString> key(const QVariant &value) { return value.toString(); }
};

template<typename Keys>
bool linkRows(const db::Recordset &recordset, int keyField, int parentField, std::vector<int> &parents)
{
    const int rows = int(parents.size());
    QHash<typename Keys::Key, int> rowByKey;
    rowByKey.reserve(rows);
    // Backwards, so that the first of equal keys is the one kept.
    for (int row = rows - 1; row >= 0; --row) {
        const QVariant value = recordset.valueAt(row, keyField);
        if (value.isNull())
            continue;
        const auto key = Keys::key(value);
        if (!key)
            return false;
        rowByKey.insert(*key, row);
    }
    for (int row = 0; row < rows; ++row) {
        const QVariant value = recordset.valueAt(row, parentField);
        if (value.isNull())
            continue;
        if (const auto key = Keys::key(value))
            parents[row] = rowByKey.value(*key, -1);
    }
    return true;
}

} // namespace

quint64 treeListKeyCode(const QVariant &value)
{
    if (value.isNull())
        return quint64(std::numeric_limits<qint64>::min());
    if (const auto number = IntegerKeys::key(value))
        return quint64(*number);
    return quint64(qHash(value.toString(), 0x5eed));
}

TreeListLinks linkRowsByKey(const db::Recordset &recordset, int keyField, int parentField)
{
    const size_t rows = size_t(recordset.recordCount());
    TreeListLinks links;
    links.parents.assign(rows, -1);
    if (keyField < 0 || parentField < 0)
        return links;
    if (!linkRows<IntegerKeys>(recordset, keyField, parentField, links.parents))
        linkRows<TextKeys>(recordset, keyField, parentField, links.parents);
    links.keyCodes.resize(rows);
    links.parentCodes.resize(rows);
    for (size_t row = 0; row < rows; ++row) {
        links.keyCodes[row] = treeListKeyCode(recordset.valueAt(int(row), keyField));
        links.parentCodes[row] = treeListKeyCode(recordset.valueAt(int(row), parentField));
    }
    return links;
}

} // namespace fw
