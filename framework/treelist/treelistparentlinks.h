#pragma once

#include <QtGlobal>
#include <vector>

class QVariant;
namespace db {
class Recordset;
}

namespace fw {

// How the rows of a recordset hang together by key and parent field.
struct TreeListLinks
{
    std::vector<int> parents;      // parent row of each row, -1 when it has none in the set
    std::vector<quint64> keyCodes; // key and parent values as read, to notice later changes
    std::vector<quint64> parentCodes;
};

// Links every row to the row holding its parent key: a null parent, or one naming no loaded
// row, gives -1. When two rows share a key the first one is the parent. Linear: one hash of
// the keys, one lookup per row.
TreeListLinks linkRowsByKey(const db::Recordset &recordset, int keyField, int parentField);

// A compact stand-in for a key value: integers as themselves, other values by their text's
// hash, null as a marker of its own.
quint64 treeListKeyCode(const QVariant &value);

} // namespace fw
