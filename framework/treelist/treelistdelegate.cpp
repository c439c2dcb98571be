#include "framework/treelist/treelistdelegate.h"

#include "framework/treelist/treelistcelleditor.h"
#include "framework/treelist/treelisthooks.h"
#include "framework/treelist/treelistmodel.h"

#include <QPainter>
#include <QPersistentModelIndex>

namespace fw {

TreeListDelegate::TreeListDelegate(TreeListModel *model, TreeListHooks *hooks, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_model(model)
    , m_hooks(hooks)
{ }

const TreeListColumn &TreeListDelegate::columnOf(const QModelIndex &index) const
{
    return m_model->column(index.column());
}

QWidget *TreeListDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const
{
    if (!m_hooks->startEditing(index) || !columnOf(index).inPlaceEditor)
        return nullptr;
    const QPersistentModelIndex cell(index);
    return treelistcelleditor::create(parent, columnOf(index), [this, cell](QWidget *editor, const QVariant &choice) {
        if (cell.isValid())
            finishOnChoice(editor, cell, choice);
    });
}

namespace {

// Set while an editor stores the choice made in its drop-down.
constexpr char choiceMade[] = "fwTreeListChoiceMade";

} // namespace

// An editor whose choice is being stored keeps it: a close-up handler that writes another field
// of the row makes the view refresh the row's editors before the choice is read.
void TreeListDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    if (editor->property(choiceMade).toBool())
        return;
    treelistcelleditor::setValue(editor, columnOf(index), index.data(Qt::EditRole));
}

void TreeListDelegate::setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &index) const
{
    bool valid = true;
    const QVariant value = treelistcelleditor::value(editor, columnOf(index), &valid);
    m_hooks->commitEdit(index, value, valid);
}

void TreeListDelegate::finishOnChoice(QWidget *editor, const QModelIndex &index, const QVariant &choice) const
{
    editor->setProperty(choiceMade, true);
    m_hooks->closeUp(index, choice);
    auto *self = const_cast<TreeListDelegate *>(this);
    emit self->commitData(editor);
    emit self->closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void TreeListDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = m_hooks->drawText(index, option->text);
    // The selection takes its "no focus" colour whenever the tree itself has lost the focus.
    if (option->widget && !option->widget->hasFocus())
        option->state &= ~QStyle::State_Active;
}

void TreeListDelegate::paintCell(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
}

void TreeListDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    paintCell(painter, option, index);
    painter->save();
    painter->setPen(m_gridLines.isValid() ? m_gridLines : option.palette.color(QPalette::Midlight));
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter->restore();
}

} // namespace fw
