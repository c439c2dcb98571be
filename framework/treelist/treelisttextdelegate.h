#pragma once

#include "framework/treelist/treelistdelegate.h"

namespace fw {

// Text cells, edited in a line edit that keeps the column's alignment and edit mask.
class TreeListTextDelegate : public TreeListDelegate
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
