#include "framework/treelist/treelistcelleditor.h"

#include "framework/treelist/treelistcolumn.h"
#include "framework/treelist/treelistdateeditor.h"

#include <QComboBox>
#include <QLineEdit>

namespace fw::treelistcelleditor {

QWidget *create(QWidget *parent, const TreeListColumn &column,
                const std::function<void(QWidget *editor, const QVariant &choice)> &chosen)
{
    switch (column.kind) {
    case TreeListColumnKind::Text: {
        auto *editor = new QLineEdit(parent);
        editor->setFrame(false);
        editor->setAlignment(column.alignment);
        if (!column.editMask.isEmpty())
            editor->setInputMask(column.editMask);
        return editor;
    }
    case TreeListColumnKind::Date: {
        auto *editor = new TreeListDateEditor(parent);
        editor->setAlignment(column.alignment);
        QObject::connect(editor, &TreeListDateEditor::closedUp, editor,
                         [editor, chosen](const QVariant &value) { chosen(editor, value); });
        return editor;
    }
    case TreeListColumnKind::ImageCombo: {
        auto *editor = new QComboBox(parent);
        editor->setFrame(false);
        for (const TreeListComboItem &item : column.comboItems)
            editor->addItem(item.icon, item.description, item.value);
        QObject::connect(editor, &QComboBox::activated, editor,
                         [editor, chosen](int item) { chosen(editor, editor->itemData(item)); });
        return editor;
    }
    case TreeListColumnKind::ButtonEdit:
    case TreeListColumnKind::Unbound: break;
    }
    return nullptr;
}

void setValue(QWidget *editor, const TreeListColumn &column, const QVariant &value)
{
    switch (column.kind) {
    case TreeListColumnKind::Text: static_cast<QLineEdit *>(editor)->setText(value.toString()); break;
    case TreeListColumnKind::Date: static_cast<TreeListDateEditor *>(editor)->setValue(value); break;
    case TreeListColumnKind::ImageCombo:
        static_cast<QComboBox *>(editor)->setCurrentIndex(column.comboIndexOf(value));
        break;
    case TreeListColumnKind::ButtonEdit:
    case TreeListColumnKind::Unbound: break;
    }
}

QVariant value(QWidget *editor, const TreeListColumn &column, bool *valid)
{
    switch (column.kind) {
    case TreeListColumnKind::Text: {
        const auto *lineEdit = static_cast<QLineEdit *>(editor);
        *valid = lineEdit->hasAcceptableInput();
        return lineEdit->text();
    }
    case TreeListColumnKind::Date: {
        const auto *dateEditor = static_cast<TreeListDateEditor *>(editor);
        *valid = dateEditor->isValidInput();
        return dateEditor->value();
    }
    case TreeListColumnKind::ImageCombo: {
        const auto *combo = static_cast<QComboBox *>(editor);
        *valid = combo->currentIndex() >= 0;
        return combo->currentData();
    }
    case TreeListColumnKind::ButtonEdit:
    case TreeListColumnKind::Unbound: break;
    }
    *valid = false;
    return {};
}

} // namespace fw::treelistcelleditor
