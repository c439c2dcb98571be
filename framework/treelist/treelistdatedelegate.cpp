#include "framework/treelist/treelistdatedelegate.h"

#include "framework/treelist/treelistcolumn.h"
#include "framework/treelist/treelistdateeditor.h"

#include <QPersistentModelIndex>

namespace fw {

QWidget *TreeListDateDelegate::createKindEditor(QWidget *parent, const QModelIndex &index) const
{
    auto *editor = new TreeListDateEditor(parent);
    editor->setAlignment(columnOf(index).alignment);
    const QPersistentModelIndex cell(index);
    connect(editor, &TreeListDateEditor::closedUp, this, [this, editor, cell](const QVariant &value) {
        if (cell.isValid())
            finishOnChoice(editor, cell, value);
    });
    return editor;
}

void TreeListDateDelegate::setEditorValue(QWidget *editor, const QModelIndex &index) const
{
    static_cast<TreeListDateEditor *>(editor)->setValue(index.data(Qt::EditRole));
}

QVariant TreeListDateDelegate::editorValue(QWidget *editor, bool *valid) const
{
    const auto *dateEditor = static_cast<TreeListDateEditor *>(editor);
    *valid = dateEditor->isValidInput();
    return dateEditor->value();
}

} // namespace fw
