#include "framework/treelist/treelist.h"

#include "framework/treelist/treelistbuttondelegate.h"
#include "framework/columnfit.h"
#include "framework/treelist/treelistheader.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QVBoxLayout>

// The tree list's set-up: columns, widths, looks, binding and cell access. Node navigation
// and focus are in treelistnavigation.cpp, editing in treelistediting.cpp.

namespace fw {

TreeList::TreeList(QWidget *parent)
    : QWidget(parent)
    , m_model(new TreeListModel(this))
    , m_view(new TreeListView(this))
    , m_cellDelegate(new TreeListDelegate(m_model, this, this))
    , m_buttonDelegate(new TreeListButtonDelegate(m_model, this, this))
    , m_widths(new ColumnFit(m_view, m_view->header(),
                             {.designTwips = [this](int index) { return column(index).designWidth; },
                              .minimumWidth = [this](int index) { return minimumColumnWidth(index); },
                              .setDesignTwips =
                                  [this](int index, int twips) {
                                      TreeListColumn changed = column(index);
                                      changed.designWidth = twips;
                                      m_model->setColumn(index, changed);
                                  }}))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    setFocusProxy(m_view);
    m_view->setModel(m_model);

    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) { onCurrentChanged(current); });
    connect(m_view, &QTreeView::collapsed, this, &TreeList::onCollapsed);
    connect(m_view, &TreeListView::mousePressed, this, &TreeList::onMousePressed);
    connect(m_model, &TreeListModel::aboutToRebuild, this, &TreeList::rememberExpandedNodes);
    connect(m_model, &TreeListModel::rebuilt, this, &TreeList::restoreAfterRebuild);
    connect(m_model, &QAbstractItemModel::modelReset, this, &TreeList::measureDeepestLevel);
    connect(m_view->header(), &QHeaderView::sectionHandleDoubleClicked, this, &TreeList::fitColumnToContents);
    connect(m_model, &TreeListModel::writeFailed, this, &TreeList::writeFailed);
    // The mouse's menu is the owner's, at mouseDown(); the keyboard's comes here.
    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
}

bool TreeList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip && watched == m_view->viewport())
        return showCutText(static_cast<QHelpEvent *>(event));
    if (event->type() != QEvent::ContextMenu || (watched != m_view && watched != m_view->viewport()))
        return QWidget::eventFilter(watched, event);
    const auto *menu = static_cast<QContextMenuEvent *>(event);
    if (menu->reason() == QContextMenuEvent::Keyboard) {
        const TreeListNode node = focusedNode();
        const QModelIndex cell = m_view->currentIndex();
        const QPoint at = cell.isValid() ? m_view->visualRect(cell).center() : QPoint();
        emit contextMenuRequested(node, m_view->viewport()->mapToGlobal(at));
    }
    return true;
}

TreeList::~TreeList()
{
    disconnect(m_rowConnection);
    // Hiding a tree lays out a pending change of its rows, which asks this object for the cells'
    // texts: a tree still shown (a window of its own) hides while it is whole.
    hide();
}

// --- band and columns

void TreeList::setBandCaption(const QString &caption)
{
    m_view->bandHeader()->setBandCaption(caption);
}

QString TreeList::bandCaption() const
{
    return m_view->bandHeader()->bandCaption();
}

void TreeList::setBandVisible(bool visible)
{
    m_view->bandHeader()->setBandVisible(visible);
}

int TreeList::addColumn(const TreeListColumn &column)
{
    const int index = m_model->addColumn(column);
    m_view->setItemDelegateForColumn(index, delegateFor(column));
    showColumn(index, column.visible);
    applyColumnWidths();
    return index;
}

int TreeList::columnCount() const
{
    return m_model->columnCount();
}

int TreeList::columnIndex(const QString &name) const
{
    return m_model->columnIndex(name);
}

const TreeListColumn &TreeList::column(int index) const
{
    return m_model->column(index);
}

TreeListDelegate *TreeList::delegateFor(const TreeListColumn &column) const
{
    return column.kind == TreeListColumnKind::ButtonEdit ? m_buttonDelegate : m_cellDelegate;
}

void TreeList::updateColumn(const QString &name, const std::function<void(TreeListColumn &)> &change)
{
    const int index = columnIndex(name);
    if (index < 0)
        return;
    TreeListColumn column = m_model->column(index);
    change(column);
    m_model->setColumn(index, column);
    showColumn(index, column.visible);
    applyColumnWidths();
    m_view->viewport()->update();
}

void TreeList::showColumn(int index, bool visible)
{
    m_widths->setColumnHidden(index, !visible);
}

void TreeList::setColumnCaption(const QString &name, const QString &caption)
{
    updateColumn(name, [&](TreeListColumn &column) { column.caption = caption; });
}

void TreeList::setColumnVisible(const QString &name, bool visible)
{
    updateColumn(name, [&](TreeListColumn &column) { column.visible = visible; });
}

void TreeList::setColumnReadOnly(const QString &name, bool readOnly)
{
    updateColumn(name, [&](TreeListColumn &column) { column.readOnly = readOnly; });
}

void TreeList::setColumnInPlaceEditor(const QString &name, bool enabled)
{
    updateColumn(name, [&](TreeListColumn &column) { column.inPlaceEditor = enabled; });
}

void TreeList::setColumnAlignment(const QString &name, Qt::Alignment alignment)
{
    updateColumn(name, [&](TreeListColumn &column) { column.alignment = alignment; });
}

void TreeList::setColumnDesignWidth(const QString &name, int twips)
{
    updateColumn(name, [&](TreeListColumn &column) { column.designWidth = qMax(1, twips); });
}

void TreeList::setFillWidth(bool fill)
{
    m_widths->setFillWidth(fill);
}

bool TreeList::fillWidth() const
{
    return m_widths->fillWidth();
}

void TreeList::setFrozenColumnCount(int count)
{
    m_view->setFrozenColumnCount(count);
}

int TreeList::frozenColumnCount() const
{
    return m_view->bandHeader()->frozenSectionCount();
}

void TreeList::applyColumnWidths()
{
    m_widths->apply();
}

// --- looks

void TreeList::setColors(const GridColors &colors)
{
    m_colors = colors;
    applyGridPalette(m_view, colors);
    m_view->bandHeader()->setColors(colors.header, colors.headerText, colors.gridLines);
    m_view->setHierarchyLineColor(colors.gridLines);
    for (TreeListDelegate *delegate : {m_cellDelegate, m_buttonDelegate})
        delegate->setGridLineColor(colors.gridLines);
    m_view->viewport()->update();
}

void TreeList::setHeaderFont(const QFont &font)
{
    m_view->header()->setFont(font);
}

// --- binding

void TreeList::setKeyField(const QString &name)
{
    if (name == keyField())
        return;
    m_model->setKeyField(name);
    if (recordset())
        focusCurrentRow();
}

QString TreeList::keyField() const
{
    return m_model->keyField();
}

void TreeList::setParentField(const QString &name)
{
    if (name == parentField())
        return;
    m_model->setParentField(name);
    if (recordset())
        focusCurrentRow();
}

QString TreeList::parentField() const
{
    return m_model->parentField();
}

void TreeList::setRecordset(db::RecordsetPtr recordset)
{
    disconnect(m_rowConnection);
    m_focusPending = false;
    m_model->setRecordset(std::move(recordset));
    if (const db::RecordsetPtr &bound = m_model->recordset()) {
        m_rowConnection = connect(bound.get(), &db::Recordset::currentRowChanged, this,
                                  &TreeList::onRecordsetRowChanged);
    }
    focusCurrentRow();
}

// After a new hierarchy: the node of the recordset's current row, or none, takes the focus.
void TreeList::focusCurrentRow()
{
    const db::RecordsetPtr &recordset = m_model->recordset();
    const int node = recordset ? m_model->structure().nodeOfRow(recordset->currentRow()) : -1;
    if (node >= 0) {
        focusNode(node);
        return;
    }
    const TreeListNode previous = m_focused;
    m_focused = {};
    if (previous.id() >= 0)
        emit focusedNodeChanged(previous, m_focused);
}

db::RecordsetPtr TreeList::recordset() const
{
    return m_model->recordset();
}

// --- values and cells

QVariant TreeList::value(const TreeListNode &node, const QString &column) const
{
    return m_model->value(nodeId(node), columnIndex(column));
}

bool TreeList::setValue(const TreeListNode &node, const QString &column, const QVariant &value)
{
    return m_model->writeValue(nodeId(node), columnIndex(column), value);
}

QString TreeList::displayText(const TreeListNode &node, const QString &column)
{
    const QModelIndex index = m_model->indexOfNode(nodeId(node), columnIndex(column));
    return index.isValid() ? drawText(index, m_model->text(nodeId(node), index.column())) : QString();
}

QRect TreeList::cellRect(const TreeListNode &node, const QString &column) const
{
    const QModelIndex index = m_model->indexOfNode(nodeId(node), columnIndex(column));
    const QRect rect = m_view->visualRect(index);
    return rect.isValid() ? rect.translated(m_view->viewport()->mapTo(this, QPoint(0, 0))) : QRect();
}

void TreeList::editCell(const TreeListNode &node, const QString &column)
{
    const int id = nodeId(node);
    const int columnIndex = this->columnIndex(column);
    if (id < 0 || columnIndex < 0)
        return;
    focusNode(id);
    const QModelIndex index = m_model->indexOfNode(id, columnIndex);
    m_view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->edit(index);
}

void TreeList::refresh()
{
    m_view->viewport()->update();
}

QString TreeList::columnNameOf(const QModelIndex &index) const
{
    return index.isValid() ? column(index.column()).name : QString();
}

void TreeList::onMousePressed(const QModelIndex &index, Qt::MouseButton button, const QPoint &viewportPos)
{
    emit mouseDown(handle(m_model->nodeOf(index)), columnNameOf(index), button,
                   m_view->viewport()->mapTo(this, viewportPos));
}

} // namespace fw

namespace fw {

void TreeList::setLockedCells(const TreeListNode &node, const QStringList &columns)
{
    QSet<int> indexes;
    for (const QString &name : columns) {
        if (const int index = columnIndex(name); index >= 0)
            indexes.insert(index);
    }
    m_model->setLockedCells(nodeId(node), indexes);
}

bool TreeList::isLocked(const TreeListNode &node, const QString &column) const
{
    const int index = columnIndex(column);
    return index >= 0 && m_model->isLocked(nodeId(node), index);
}

} // namespace fw
