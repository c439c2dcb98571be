#include "framework/treelist/treelistmodel.h"

#include "framework/controlvalue.h"

#include <QColor>
#include <QFont>
#include <QTimer>

namespace fw {

TreeListModel::TreeListModel(QObject *parent)
    : QAbstractItemModel(parent)
{ }

TreeListModel::~TreeListModel()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
}

// --- columns

int TreeListModel::addColumn(const TreeListColumn &column)
{
    const int index = int(m_columns.size());
    beginInsertColumns({}, index, index);
    m_columns.append(column);
    m_fieldOfColumn.append(m_recordset && column.isBound() ? m_recordset->fieldIndex(column.fieldName) : -1);
    endInsertColumns();
    return index;
}

void TreeListModel::setColumn(int index, const TreeListColumn &column)
{
    m_columns[index] = column;
    m_fieldOfColumn[index] = m_recordset && column.isBound() ? m_recordset->fieldIndex(column.fieldName) : -1;
    emit headerDataChanged(Qt::Horizontal, index, index);
}

int TreeListModel::columnIndex(const QString &name) const
{
    for (int i = 0; i < m_columns.size(); ++i) {
        if (m_columns.at(i).name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void TreeListModel::resolveFields()
{
    for (int i = 0; i < m_columns.size(); ++i) {
        const TreeListColumn &column = m_columns.at(i);
        m_fieldOfColumn[i] = m_recordset && column.isBound() ? m_recordset->fieldIndex(column.fieldName) : -1;
    }
    m_keyFieldIndex = m_recordset ? m_recordset->fieldIndex(m_keyField) : -1;
    m_parentFieldIndex = m_recordset ? m_recordset->fieldIndex(m_parentField) : -1;
}

// --- binding

void TreeListModel::setKeyField(const QString &name)
{
    if (m_keyField == name)
        return;
    m_keyField = name;
    if (m_recordset)
        setRecordset(m_recordset);
}

void TreeListModel::setParentField(const QString &name)
{
    if (m_parentField == name)
        return;
    m_parentField = name;
    if (m_recordset)
        setRecordset(m_recordset);
}

void TreeListModel::setRecordset(db::RecordsetPtr recordset)
{
    beginResetModel();
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_recordset = std::move(recordset);
    resolveFields();
    buildStructure();
    connectRecordset();
    m_rebuilding = false;
    endResetModel();
}

void TreeListModel::buildStructure()
{
    ++m_generation;
    if (!m_recordset) {
        m_structure.clear();
        m_keyCodes.clear();
        m_parentCodes.clear();
        return;
    }
    TreeListLinks links = linkRowsByKey(*m_recordset, m_keyFieldIndex, m_parentFieldIndex);
    m_keyCodes = std::move(links.keyCodes);
    m_parentCodes = std::move(links.parentCodes);
    m_structure.build(std::move(links.parents));
}

void TreeListModel::connectRecordset()
{
    if (!m_recordset)
        return;
    db::Recordset *source = m_recordset.get();
    const auto start = [this] { startRebuild(); };
    const auto finish = [this] { finishRebuild(); };
    m_connections = {
        connect(source, &QAbstractItemModel::modelAboutToBeReset, this, start),
        connect(source, &QAbstractItemModel::modelReset, this, finish),
        connect(source, &QAbstractItemModel::rowsAboutToBeInserted, this, start),
        connect(source, &QAbstractItemModel::rowsInserted, this, finish),
        connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this, start),
        connect(source, &QAbstractItemModel::rowsRemoved, this, finish),
        connect(source, &QAbstractItemModel::rowsAboutToBeMoved, this, start),
        connect(source, &QAbstractItemModel::rowsMoved, this, finish),
        connect(source, &QAbstractItemModel::layoutAboutToBeChanged, this, start),
        connect(source, &QAbstractItemModel::layoutChanged, this, finish),
        connect(source, &QAbstractItemModel::dataChanged, this, &TreeListModel::onRecordsetDataChanged),
    };
}

void TreeListModel::startRebuild()
{
    if (m_rebuilding)
        return;
    m_rebuilding = true;
    emit aboutToRebuild();
    beginResetModel();
}

void TreeListModel::finishRebuild()
{
    startRebuild();
    resolveFields();
    buildStructure();
    m_rebuilding = false;
    endResetModel();
    emit rebuilt();
}

// A rebuild asked for while an edit is being stored would reset the view under its editor.
void TreeListModel::rebuildLater()
{
    if (m_rebuildQueued)
        return;
    m_rebuildQueued = true;
    QTimer::singleShot(0, this, [this] {
        m_rebuildQueued = false;
        finishRebuild();
    });
}

bool TreeListModel::linksChanged(int firstRow, int lastRow) const
{
    if (size_t(lastRow) >= m_keyCodes.size())
        return true;
    for (int row = firstRow; row <= lastRow; ++row) {
        if (treeListKeyCode(m_recordset->valueAt(row, m_keyFieldIndex)) != m_keyCodes[size_t(row)]
            || treeListKeyCode(m_recordset->valueAt(row, m_parentFieldIndex)) != m_parentCodes[size_t(row)])
            return true;
    }
    return false;
}

void TreeListModel::onRecordsetDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    if (m_rebuilding || !topLeft.isValid() || !bottomRight.isValid())
        return;
    const int firstRow = topLeft.row();
    const int lastRow = qMin(bottomRight.row(), m_structure.count() - 1);
    const auto inRange = [&](int field) {
        return field >= 0 && field >= topLeft.column() && field <= bottomRight.column();
    };
    if ((inRange(m_keyFieldIndex) || inRange(m_parentFieldIndex)) && linksChanged(firstRow, bottomRight.row())) {
        if (m_writing)
            rebuildLater();
        else
            finishRebuild();
        return;
    }
    if (m_columns.isEmpty())
        return;
    // Whole rows: unbound and button cells may draw texts that depend on any field.
    for (int row = firstRow; row <= lastRow; ++row) {
        const int node = m_structure.nodeOfRow(row);
        emit dataChanged(indexOfNode(node, 0), indexOfNode(node, int(m_columns.size()) - 1));
    }
}

// --- nodes

QModelIndex TreeListModel::indexOfNode(int node, int column) const
{
    if (!m_structure.contains(node) || column < 0 || column >= m_columns.size())
        return {};
    return createIndex(m_structure.indexInParent(node), column, quintptr(node));
}

int TreeListModel::nodeOf(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this)
        return -1;
    const int node = int(index.internalId());
    return m_structure.contains(node) ? node : -1;
}

QVariant TreeListModel::value(int node, int column) const
{
    const int field = fieldOf(column);
    if (!m_recordset || field < 0 || !m_structure.contains(node))
        return {};
    return m_recordset->valueAt(m_structure.row(node), field);
}

quint64 TreeListModel::keyCode(int node) const
{
    return m_structure.contains(node) ? m_keyCodes[size_t(m_structure.row(node))] : 0;
}

QString TreeListModel::text(int node, int column) const
{
    if (column < 0 || column >= m_columns.size())
        return {};
    return m_columns.at(column).displayText(value(node, column));
}

// A typed cell converts as a bound control's text does; blank text clears a field that is not text.
QVariant TreeListModel::toFieldValue(int field, const QVariant &value) const
{
    const db::FieldType type = m_recordset->field(field).type;
    if (value.metaType().id() == QMetaType::QString && type != db::FieldType::Text
        && value.toString().trimmed().isEmpty())
        return {};
    return controlvalue::toFieldValue(value, type);
}

bool TreeListModel::writeValue(int node, int column, const QVariant &value)
{
    const int field = fieldOf(column);
    if (!m_recordset || field < 0 || !m_structure.contains(node))
        return false;
    m_writing = true;
    try {
        const auto write = [&] {
            const int row = m_structure.row(node);
            if (m_recordset->currentRow() != row)
                m_recordset->setCurrentRow(row);
            m_recordset->setValue(field, toFieldValue(field, value));
            m_recordset->update();
        };
        if (m_writeScope)
            m_writeScope(write);
        else
            write();
    } catch (const db::DatabaseError &error) {
        if (m_recordset->isEditing())
            m_recordset->cancelUpdate();
        m_writing = false;
        emit dataChanged(indexOfNode(node, 0), indexOfNode(node, int(m_columns.size()) - 1));
        emit writeFailed(error);
        return false;
    }
    m_writing = false;
    return true;
}

// --- QAbstractItemModel

QModelIndex TreeListModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column < 0 || column >= m_columns.size() || (parent.isValid() && parent.column() != 0))
        return {};
    const int parentNode = parent.isValid() ? nodeOf(parent) : -1;
    if (parent.isValid() && parentNode < 0)
        return {};
    if (row >= m_structure.childCount(parentNode))
        return {};
    return createIndex(row, column, quintptr(m_structure.child(parentNode, row)));
}

QModelIndex TreeListModel::parent(const QModelIndex &child) const
{
    const int node = nodeOf(child);
    if (node < 0)
        return {};
    const int parentNode = m_structure.parent(node);
    if (parentNode < 0)
        return {};
    return createIndex(m_structure.indexInParent(parentNode), 0, quintptr(parentNode));
}

QModelIndex TreeListModel::sibling(int row, int column, const QModelIndex &index) const
{
    if (index.isValid() && row == index.row() && column >= 0 && column < m_columns.size())
        return createIndex(row, column, index.internalId());
    return QAbstractItemModel::sibling(row, column, index);
}

int TreeListModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return m_structure.childCount(-1);
    const int node = nodeOf(parent);
    return node >= 0 && parent.column() == 0 ? m_structure.childCount(node) : 0;
}

int TreeListModel::columnCount(const QModelIndex &) const
{
    return int(m_columns.size());
}

bool TreeListModel::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0;
}

QVariant TreeListModel::data(const QModelIndex &index, int role) const
{
    const int node = nodeOf(index);
    if (node < 0)
        return {};
    const TreeListColumn &column = m_columns.at(index.column());
    switch (role) {
    case Qt::DisplayRole: return text(node, index.column());
    case Qt::EditRole: return value(node, index.column());
    case Qt::TextAlignmentRole: {
        Qt::Alignment alignment = column.alignment;
        if (!(alignment & Qt::AlignVertical_Mask))
            alignment |= Qt::AlignVCenter;
        return int(alignment);
    }
    case Qt::FontRole:
        if (isLocked(node, index.column())) {
            QFont font;
            font.setItalic(true);
            return font;
        }
        return {};
    case Qt::ForegroundRole:
        if (isLocked(node, index.column()))
            return QColor(Qt::darkGray);
        if (m_rowForeground) {
            const QColor color = m_rowForeground(m_structure.row(node));
            if (color.isValid())
                return color;
        }
        return {};
    case Qt::DecorationRole:
        if (column.kind == TreeListColumnKind::ImageCombo) {
            const TreeListComboItem *item = column.comboItemFor(value(node, index.column()));
            if (item && !item->icon.isNull())
                return item->icon;
        }
        return {};
    default: return {};
    }
}

bool TreeListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int node = nodeOf(index);
    if (node < 0 || role != Qt::EditRole || !m_columns.at(index.column()).isEditable()
        || isLocked(node, index.column()))
        return false;
    return writeValue(node, index.column(), value);
}

Qt::ItemFlags TreeListModel::flags(const QModelIndex &index) const
{
    const int node = nodeOf(index);
    if (node < 0)
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    // Columns without an in-place editor stay editable so that starting an edit is announced.
    if (m_columns.at(index.column()).isEditable() && !isLocked(node, index.column()))
        flags |= Qt::ItemIsEditable;
    if (m_structure.childCount(node) == 0)
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

void TreeListModel::setLockedCells(int node, const QSet<int> &columns)
{
    const quint64 key = columns.isEmpty() ? 0 : keyCode(node);
    if (key == m_lockedKey && columns == m_lockedColumns)
        return;
    const int before = m_lockedGeneration == m_generation ? m_lockedNode : -1;
    m_lockedKey = key;
    m_lockedColumns = columns;
    m_lockedNode = node;
    m_lockedGeneration = m_generation;
    for (int changed : {before, node}) {
        if (m_structure.contains(changed) && columnCount() > 0)
            emit dataChanged(indexOfNode(changed, 0), indexOfNode(changed, columnCount() - 1));
    }
}

bool TreeListModel::isLocked(int node, int column) const
{
    return !m_lockedColumns.isEmpty() && m_lockedColumns.contains(column) && keyCode(node) == m_lockedKey;
}

QVariant TreeListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return m_columns.at(section).caption;
    return {};
}

} // namespace fw
