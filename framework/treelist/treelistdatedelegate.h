#pragma once

#include "framework/treelist/treelistdelegate.h"

namespace fw {

// Date cells, edited with TreeListDateEditor. A text that is no date is refused.
class TreeListDateDelegate : public TreeListDelegate
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
