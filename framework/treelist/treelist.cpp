#include "framework/treelist/treelist.h"

#include "framework/treelist/treelistbuttondelegate.h"
#include "framework/treelist/treelistcombodelegate.h"
#include "framework/treelist/treelistdatedelegate.h"
#include "framework/treelist/treelistheader.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelisttextdelegate.h"
#include "framework/treelist/treelistview.h"

#include <QDateTime>
#include <QScopedValueRollback>
#include <QSet>
#include <QToolTip>
#include <QVBoxLayout>

namespace fw {

TreeList::TreeList(QWidget *parent)
    : QWidget(parent)
    , m_model(new TreeListModel(this))
    , m_view(new TreeListView(this))
    , m_plainDelegate(new TreeListDelegate(m_model, this, this))
    , m_textDelegate(new TreeListTextDelegate(m_model, this, this))
    , m_dateDelegate(new TreeListDateDelegate(m_model, this, this))
    , m_comboDelegate(new TreeListComboDelegate(m_model, this, this))
    , m_buttonDelegate(new TreeListButtonDelegate(m_model, this, this))
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
    connect(m_view, &TreeListView::resized, this, &TreeList::applyColumnWidths);
    connect(m_view->header(), &QHeaderView::sectionResized, this, &TreeList::onSectionResized);
    connect(m_model, &TreeListModel::aboutToRebuild, this, &TreeList::rememberExpandedNodes);
    connect(m_model, &TreeListModel::rebuilt, this, &TreeList::restoreAfterRebuild);
    connect(m_model, &TreeListModel::writeFailed, this, &TreeList::writeFailed);
}

TreeList::~TreeList()
{
    disconnect(m_rowConnection);
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
    m_view->setColumnHidden(index, !column.visible);
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
    switch (column.kind) {
    case TreeListColumnKind::Text:
        return m_textDelegate;
    case TreeListColumnKind::Date:
        return m_dateDelegate;
    case TreeListColumnKind::ImageCombo:
        return m_comboDelegate;
    case TreeListColumnKind::ButtonEdit:
        return m_buttonDelegate;
    case TreeListColumnKind::Unbound:
        break;
    }
    return m_plainDelegate;
}

void TreeList::updateColumn(const QString &name, const std::function<void(TreeListColumn &)> &change)
{
    const int index = columnIndex(name);
    if (index < 0)
        return;
    TreeListColumn column = m_model->column(index);
    change(column);
    m_model->setColumn(index, column);
    m_view->setColumnHidden(index, !column.visible);
    applyColumnWidths();
    m_view->viewport()->update();
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
    m_fillWidth = fill;
    m_view->setHorizontalScrollBarPolicy(fill ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    applyColumnWidths();
}

void TreeList::applyColumnWidths()
{
    QScopedValueRollback guard(m_applyingWidths, true);
    const int dpi = logicalDpiX();
    QList<int> visible;
    qint64 totalTwips = 0;
    for (int i = 0; i < columnCount(); ++i) {
        if (m_view->isColumnHidden(i))
            continue;
        visible.append(i);
        totalTwips += qMax(1, column(i).designWidth);
    }
    if (!m_fillWidth || visible.isEmpty()) {
        for (int i : std::as_const(visible))
            m_view->setColumnWidth(i, twipsToPixels(column(i).designWidth, dpi));
        return;
    }
    const int available = m_view->viewport()->width();
    int used = 0;
    for (int n = 0; n < visible.size(); ++n) {
        const int i = visible.at(n);
        const bool last = n == visible.size() - 1;
        const int width = last ? available - used : int(available * qMax(1, column(i).designWidth) / totalTwips);
        m_view->setColumnWidth(i, qMax(1, width));
        used += width;
    }
}

// Dragging a column edge: without fill width the column keeps its new width; with fill width
// the next visible column gives or takes the difference, and the new widths become the
// proportions.
void TreeList::onSectionResized(int logicalIndex, int oldSize, int newSize)
{
    if (m_applyingWidths || logicalIndex < 0 || logicalIndex >= columnCount())
        return;
    const int dpi = logicalDpiX();
    QList<TreeListColumn> columns = m_model->columns();
    if (m_fillWidth) {
        int next = logicalIndex + 1;
        while (next < columnCount() && m_view->isColumnHidden(next))
            ++next;
        if (next < columnCount()) {
            QScopedValueRollback guard(m_applyingWidths, true);
            m_view->setColumnWidth(next, qMax(8, m_view->columnWidth(next) - (newSize - oldSize)));
        }
        for (int i = 0; i < columns.size(); ++i) {
            if (!m_view->isColumnHidden(i))
                columns[i].designWidth = qMax(1, pixelsToTwips(m_view->columnWidth(i), dpi));
        }
    } else {
        columns[logicalIndex].designWidth = qMax(1, pixelsToTwips(newSize, dpi));
    }
    for (int i = 0; i < columns.size(); ++i)
        m_model->setColumn(i, columns.at(i));
    if (m_fillWidth)
        applyColumnWidths();
}

// --- looks

void TreeList::setColors(const TreeListColors &colors)
{
    m_colors = colors;
    QPalette palette = m_view->palette();
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        if (colors.text.isValid())
            palette.setColor(group, QPalette::Text, colors.text);
    }
    if (colors.highlight.isValid())
        palette.setColor(QPalette::Active, QPalette::Highlight, colors.highlight);
    if (colors.highlightText.isValid())
        palette.setColor(QPalette::Active, QPalette::HighlightedText, colors.highlightText);
    if (colors.hideSelection.isValid()) {
        palette.setColor(QPalette::Inactive, QPalette::Highlight, colors.hideSelection);
        if (colors.text.isValid())
            palette.setColor(QPalette::Inactive, QPalette::HighlightedText, colors.text);
    }
    m_view->setPalette(palette);
    m_view->bandHeader()->setColors(colors.header, colors.headerText, colors.gridLines);
    m_view->setHierarchyLineColor(colors.gridLines);
    for (TreeListDelegate *delegate : {m_plainDelegate, m_textDelegate, m_dateDelegate, m_comboDelegate, m_buttonDelegate})
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
    m_model->setKeyField(name);
}

QString TreeList::keyField() const
{
    return m_model->keyField();
}

void TreeList::setParentField(const QString &name)
{
    m_model->setParentField(name);
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

// --- nodes

TreeListNode TreeList::handle(int node) const
{
    if (!m_model->structure().contains(node))
        return {};
    return TreeListNode(const_cast<TreeList *>(this), node, m_model->generation());
}

int TreeList::nodeId(const TreeListNode &node) const
{
    if (node.m_tree != this || node.m_generation != m_model->generation())
        return -1;
    return m_model->structure().contains(node.m_id) ? node.m_id : -1;
}

int TreeList::count() const
{
    return m_model->structure().count();
}

TreeListNode TreeList::firstNode() const
{
    return handle(0);
}

TreeListNode TreeList::nodeAt(int absoluteIndex) const
{
    return handle(absoluteIndex);
}

TreeListNode TreeList::nodeOfRow(int row) const
{
    return handle(m_model->structure().nodeOfRow(row));
}

TreeListNode TreeList::focusedNode() const
{
    return nodeId(m_focused) >= 0 ? m_focused : TreeListNode();
}

void TreeList::setFocusedNode(const TreeListNode &node)
{
    const int id = nodeId(node);
    if (id >= 0)
        focusNode(id);
}

void TreeList::setFocusedAbsoluteIndex(int absoluteIndex)
{
    setFocusedNode(nodeAt(absoluteIndex));
}

QString TreeList::focusedColumn() const
{
    const QModelIndex current = m_view->currentIndex();
    return current.isValid() ? column(current.column()).name : QString();
}

void TreeList::setFocusedColumn(const QString &name)
{
    const int columnIndex = this->columnIndex(name);
    const int node = nodeId(m_focused);
    if (columnIndex >= 0 && node >= 0)
        m_view->selectionModel()->setCurrentIndex(m_model->indexOfNode(node, columnIndex),
                                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TreeList::expand(const TreeListNode &node)
{
    const int id = nodeId(node);
    if (id < 0 || m_model->structure().childCount(id) == 0)
        return;
    m_view->deferLayout();
    m_view->expand(m_model->indexOfNode(id));
}

void TreeList::collapse(const TreeListNode &node)
{
    const int id = nodeId(node);
    if (id < 0 || m_model->structure().childCount(id) == 0)
        return;
    m_view->deferLayout();
    m_view->collapse(m_model->indexOfNode(id));
}

bool TreeList::isExpanded(const TreeListNode &node) const
{
    const int id = nodeId(node);
    return id >= 0 && m_view->isExpanded(m_model->indexOfNode(id));
}

void TreeList::expandAll()
{
    m_view->expandAll();
}

void TreeList::collapseAll()
{
    m_view->collapseAll();
    int root = nodeId(m_focused);
    if (root < 0)
        return;
    while (m_model->structure().parent(root) >= 0)
        root = m_model->structure().parent(root);
    focusNode(root);
}

void TreeList::beginUpdate()
{
    if (m_updateDepth++ == 0)
        m_view->setUpdatesEnabled(false);
    m_view->deferLayout();
}

void TreeList::endUpdate()
{
    if (m_updateDepth == 0 || --m_updateDepth > 0)
        return;
    m_view->layoutNow();
    if (m_focusPending)
        showFocusInView();
    m_view->setUpdatesEnabled(true);
}

// --- focus, in step with the recordset

void TreeList::focusNode(int node)
{
    revealNode(node);
    if (m_updateDepth > 0) {
        recordFocus(node);
        m_focusPending = true;
        return;
    }
    recordFocus(node);
    showFocusInView();
}

// Expands the collapsed ancestors, with the layout deferred so that it is redone once.
void TreeList::revealNode(int node)
{
    const TreeListStructure &structure = m_model->structure();
    for (int up = structure.parent(node); up >= 0; up = structure.parent(up)) {
        const QModelIndex index = m_model->indexOfNode(up);
        if (!m_view->isExpanded(index)) {
            m_view->deferLayout();
            m_view->expand(index);
        }
    }
}

void TreeList::showFocusInView()
{
    m_focusPending = false;
    const int node = nodeId(m_focused);
    if (node < 0)
        return;
    const int column = qMax(0, m_view->currentIndex().column());
    const QModelIndex index = m_model->indexOfNode(node, column);
    if (m_view->currentIndex() != index)
        m_view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_view->scrollTo(index);
}

// The one place where the focus changes: the recordset follows and the change is announced.
void TreeList::recordFocus(int node)
{
    if (node == nodeId(m_focused))
        return;
    if (!moveRecordsetTo(node)) {
        // The recordset could not write the row it stands on and stayed there; so does the
        // focus, once the view has finished its own change.
        QMetaObject::invokeMethod(this, &TreeList::showFocusInView, Qt::QueuedConnection);
        return;
    }
    const TreeListNode previous = m_focused;
    m_focused = handle(node);
    emit focusedNodeChanged(previous, m_focused);
}

bool TreeList::moveRecordsetTo(int node)
{
    const db::RecordsetPtr &recordset = m_model->recordset();
    const int row = m_model->structure().row(node);
    if (!recordset || recordset->currentRow() == row)
        return true;
    QScopedValueRollback guard(m_movingRecordset, true);
    try {
        recordset->setCurrentRow(row);
    } catch (const db::DatabaseError &error) {
        emit writeFailed(error);
        return false;
    }
    return true;
}

void TreeList::onCurrentChanged(const QModelIndex &current)
{
    const int node = m_model->nodeOf(current);
    if (node >= 0)
        recordFocus(node);
}

void TreeList::onRecordsetRowChanged(int row)
{
    const int node = m_model->structure().nodeOfRow(row);
    if (m_movingRecordset || node < 0)
        return;
    focusNode(node);
}

void TreeList::onCollapsed(const QModelIndex &index)
{
    const int node = m_model->nodeOf(index);
    if (node >= 0 && m_model->structure().isAncestor(node, nodeId(m_focused)))
        focusNode(node);
}

void TreeList::rememberExpandedNodes()
{
    m_expandedKeys.clear();
    const TreeListStructure &structure = m_model->structure();
    for (int node = 0; node < structure.count(); ++node) {
        if (structure.childCount(node) > 0 && m_view->isExpanded(m_model->indexOfNode(node)))
            m_expandedKeys.append(m_model->keyCode(node));
    }
}

// The recordset changed its rows: nodes that were expanded stay so, and the focus goes to
// the node of the recordset's current row.
void TreeList::restoreAfterRebuild()
{
    const TreeListStructure &structure = m_model->structure();
    if (!m_expandedKeys.isEmpty()) {
        const QSet<quint64> expanded(m_expandedKeys.cbegin(), m_expandedKeys.cend());
        m_expandedKeys.clear();
        m_view->deferLayout();
        for (int node = 0; node < structure.count(); ++node) {
            if (structure.childCount(node) > 0 && expanded.contains(m_model->keyCode(node)))
                m_view->expand(m_model->indexOfNode(node));
        }
    }
    focusCurrentRow();
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

// --- TreeListHooks: the delegates' calls become the public signals

bool TreeList::startEditing(const QModelIndex &index)
{
    bool allow = true;
    emit editingStarted(handle(m_model->nodeOf(index)), columnNameOf(index), allow);
    return allow;
}

void TreeList::closeUp(const QModelIndex &index, const QVariant &value)
{
    emit editCloseUp(handle(m_model->nodeOf(index)), columnNameOf(index), value);
}

namespace {

bool sameValue(const QVariant &stored, const QVariant &edited, TreeListColumnKind kind)
{
    if (stored.isNull() || edited.isNull())
        return stored.isNull() && edited.isNull();
    if (kind == TreeListColumnKind::Date)
        return stored.toDateTime().date() == edited.toDate();
    if (kind == TreeListColumnKind::ImageCombo) {
        bool okStored = false;
        bool okEdited = false;
        const qint64 a = stored.toLongLong(&okStored);
        const qint64 b = edited.toLongLong(&okEdited);
        if (okStored && okEdited)
            return a == b;
    }
    return stored.toString() == edited.toString();
}

} // namespace

void TreeList::commitEdit(const QModelIndex &index, const QVariant &value, bool valid)
{
    const int node = m_model->nodeOf(index);
    if (node < 0)
        return;
    const TreeListColumn &target = column(index.column());
    if (sameValue(m_model->value(node, index.column()), value, target.kind))
        return;
    const TreeListNode editedNode = handle(node);
    QVariant accepted = value;
    bool accept = valid;
    QString error = valid ? QString() : tr("Valore non valido");
    emit validateEdit(editedNode, target.name, accepted, accept, error);
    if (!accept) {
        if (!error.isEmpty())
            QToolTip::showText(m_view->viewport()->mapToGlobal(m_view->visualRect(index).bottomLeft()), error, m_view);
        return;
    }
    if (m_model->writeValue(node, index.column(), accepted))
        emit edited(editedNode, target.name);
}

QString TreeList::drawText(const QModelIndex &index, const QString &text)
{
    QString shown = text;
    emit customDrawCell(handle(m_model->nodeOf(index)), columnNameOf(index), shown);
    return shown;
}

void TreeList::buttonClicked(const QModelIndex &index)
{
    emit editButtonClicked(handle(m_model->nodeOf(index)), columnNameOf(index));
}

} // namespace fw
