#include "framework/treelist/treelistparentlinks.h"

#include "platform/db/recordset.h"

#include <QHash>
#include <QString>
#include <limits>

namespace fw {

namespace {

constexpr quint64 NullCode = quint64(std::numeric_limits<qint64>::min());

bool integerOf(const QVariant &value, qint64 *number)
{
    bool ok = false;
    *number = value.toLongLong(&ok);
    return ok;
}

// Integer keys, the usual case: the codes are the keys themselves. Keys from a counter are
// dense, and a plain table beats a hash by far on a million rows.
void linkByIntegers(TreeListLinks &links, const std::vector<bool> &parentIsInteger)
{
    const size_t rows = links.keyCodes.size();
    qint64 low = std::numeric_limits<qint64>::max();
    qint64 high = std::numeric_limits<qint64>::min();
    for (quint64 code : links.keyCodes) {
        if (code == NullCode)
            continue;
        low = std::min(low, qint64(code));
        high = std::max(high, qint64(code));
    }
    if (low > high)
        return;
    const auto parentOf = [&](auto &&rowOfKey) {
        for (size_t row = 0; row < rows; ++row) {
            if (links.parentCodes[row] != NullCode && parentIsInteger[row])
                links.parents[row] = rowOfKey(qint64(links.parentCodes[row]));
        }
    };
    if (quint64(high - low) <= 2 * rows + 1024) {
        std::vector<int> table(size_t(high - low) + 1, -1);
        for (size_t row = rows; row-- > 0;) { // backwards: the first of equal keys wins
            if (links.keyCodes[row] != NullCode)
                table[size_t(qint64(links.keyCodes[row]) - low)] = int(row);
        }
        parentOf([&](qint64 key) { return key < low || key > high ? -1 : table[size_t(key - low)]; });
        return;
    }
    QHash<qint64, int> rowByKey;
    rowByKey.reserve(qsizetype(rows));
    for (size_t row = rows; row-- > 0;) {
        if (links.keyCodes[row] != NullCode)
            rowByKey.insert(qint64(links.keyCodes[row]), int(row));
    }
    parentOf([&](qint64 key) { return rowByKey.value(key, -1); });
}

// Any other key is compared by its text.
void linkByText(TreeListLinks &links, const db::Recordset &recordset, int keyField, int parentField)
{
    const int rows = int(links.parents.size());
    QHash<QString, int> rowByKey;
    rowByKey.reserve(rows);
    for (int row = rows - 1; row >= 0; --row) {
        const QVariant key = recordset.valueAt(row, keyField);
        if (!key.isNull())
            rowByKey.insert(key.toString(), row);
    }
    for (int row = 0; row < rows; ++row) {
        const QVariant parent = recordset.valueAt(row, parentField);
        if (!parent.isNull())
            links.parents[size_t(row)] = rowByKey.value(parent.toString(), -1);
    }
}

} // namespace

quint64 treeListKeyCode(const QVariant &value)
{
    if (value.isNull())
        return NullCode;
    qint64 number = 0;
    if (integerOf(value, &number))
        return quint64(number);
    return quint64(qHash(value.toString(), 0x5eed));
}

TreeListLinks linkRowsByKey(const db::Recordset &recordset, int keyField, int parentField)
{
    const size_t rows = size_t(recordset.recordCount());
    TreeListLinks links;
    links.parents.assign(rows, -1);
    if (keyField < 0 || parentField < 0)
        return links;
    links.keyCodes.resize(rows);
    links.parentCodes.resize(rows);
    std::vector<bool> parentIsInteger(rows, false);
    bool integerKeys = true;
    qint64 number = 0;
    for (size_t row = 0; row < rows; ++row) {
        const QVariant key = recordset.valueAt(int(row), keyField);
        const QVariant parent = recordset.valueAt(int(row), parentField);
        if (!key.isNull() && !integerOf(key, &number))
            integerKeys = false;
        parentIsInteger[row] = !parent.isNull() && integerOf(parent, &number);
        links.keyCodes[row] = treeListKeyCode(key);
        links.parentCodes[row] = treeListKeyCode(parent);
    }
    if (integerKeys)
        linkByIntegers(links, parentIsInteger);
    else
        linkByText(links, recordset, keyField, parentField);
    return links;
}

} // namespace fw
