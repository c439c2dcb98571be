#pragma once

#include <QVariant>
#include <functional>

class QWidget;

namespace fw {

struct TreeListColumn;

// The in-place editors of the column kinds edited in the cell: a line edit that keeps the
// column's alignment and edit mask for text, TreeListDateEditor for dates (a text that is no
// date is refused), a drop-down of the column's values shown by description and icon for image
// combos. Other kinds have none.
namespace treelistcelleditor {

// The editor of the column's kind, or null. chosen is called when the user picks a value in
// the editor's drop-down (calendar or list): such a choice is stored at once.
QWidget *create(QWidget *parent, const TreeListColumn &column,
                const std::function<void(QWidget *editor, const QVariant &choice)> &chosen);

void setValue(QWidget *editor, const TreeListColumn &column, const QVariant &value);

// The value in the editor; valid is false when it cannot be stored as it is.
QVariant value(QWidget *editor, const TreeListColumn &column, bool *valid);

} // namespace treelistcelleditor

} // namespace fw
