#include "framework/treelist/treelisttextdelegate.h"

#include "framework/treelist/treelistcolumn.h"

#include <QLineEdit>

namespace fw {

QWidget *TreeListTextDelegate::createKindEditor(QWidget *parent, const QModelIndex &index) const
{
    const TreeListColumn &column = columnOf(index);
    auto *editor = new QLineEdit(parent);
    editor->setFrame(false);
    editor->setAlignment(column.alignment);
    if (!column.editMask.isEmpty())
        editor->setInputMask(column.editMask);
    return editor;
}

void TreeListTextDelegate::setEditorValue(QWidget *editor, const QModelIndex &index) const
{
    static_cast<QLineEdit *>(editor)->setText(index.data(Qt::EditRole).toString());
}

QVariant TreeListTextDelegate::editorValue(QWidget *editor, bool *valid) const
{
    const auto *lineEdit = static_cast<QLineEdit *>(editor);
    *valid = lineEdit->hasAcceptableInput();
    return lineEdit->text();
}

} // namespace fw
