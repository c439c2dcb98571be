#include "framework/treelist/treelistcombodelegate.h"

#include "framework/treelist/treelistcolumn.h"

#include <QComboBox>
#include <QPersistentModelIndex>

namespace fw {

QWidget *TreeListComboDelegate::createKindEditor(QWidget *parent, const QModelIndex &index) const
{
    auto *editor = new QComboBox(parent);
    editor->setFrame(false);
    for (const TreeListComboItem &item : columnOf(index).comboItems)
        editor->addItem(item.icon, item.description, item.value);
    const QPersistentModelIndex cell(index);
    connect(editor, &QComboBox::activated, this, [this, editor, cell](int item) {
        if (cell.isValid())
            finishOnChoice(editor, cell, editor->itemData(item));
    });
    return editor;
}

void TreeListComboDelegate::setEditorValue(QWidget *editor, const QModelIndex &index) const
{
    static_cast<QComboBox *>(editor)->setCurrentIndex(columnOf(index).comboIndexOf(index.data(Qt::EditRole)));
}

QVariant TreeListComboDelegate::editorValue(QWidget *editor, bool *valid) const
{
    const auto *combo = static_cast<QComboBox *>(editor);
    *valid = combo->currentIndex() >= 0;
    return combo->currentData();
}

} // namespace fw
