#pragma once

#include "framework/treelist/treelistdelegate.h"

namespace fw {

// Image combo cells: a drop-down of the column's values, shown by description and icon.
// Choosing an item announces the close-up and stores the value at once.
class TreeListComboDelegate : public TreeListDelegate
{
    Q_OBJECT

public:
    using TreeListDelegate::TreeListDelegate;

protected:
    QWidget *createKindEditor(QWidget *parent, const QModelIndex &index) const override;
    void setEditorValue(QWidget *editor, const QModelIndex &index) const override;
    QVariant editorValue(QWidget *editor, bool *valid) const override;
};

} // namespace fw
