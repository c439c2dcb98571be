#pragma once

#include <QColor>
#include <QStyledItemDelegate>

namespace fw {

class TreeListHooks;
class TreeListModel;
struct TreeListColumn;

// The cells of a tree list: grid lines, the draw-time text hook, the selection colour that
// follows the tree's focus, and the editing protocol shared by every editor kind (announce the
// start, let the owner validate and store the value) around the editor of the column's kind
// (treelistcelleditor). Button cells subclass it.
class TreeListDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    TreeListDelegate(TreeListModel *model, TreeListHooks *hooks, QObject *parent = nullptr);

    void setGridLineColor(const QColor &color) { m_gridLines = color; }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const final;
    void setEditorData(QWidget *editor, const QModelIndex &index) const final;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const final;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const final;

protected:
    // The cell without its grid lines.
    virtual void paintCell(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

    const TreeListColumn &columnOf(const QModelIndex &index) const;
    TreeListHooks *hooks() const { return m_hooks; }

private:
    // For editors that finish on a choice in their drop-down: announce it, store, close.
    void finishOnChoice(QWidget *editor, const QModelIndex &index, const QVariant &choice) const;

    TreeListModel *m_model;
    TreeListHooks *m_hooks;
    QColor m_gridLines;
};

} // namespace fw
