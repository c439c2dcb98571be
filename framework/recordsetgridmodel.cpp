#include "framework/recordsetgridmodel.h"

#include <QBrush>

namespace fw {

RecordsetGridModel::RecordsetGridModel(QObject *parent)
    : QAbstractTableModel(parent)
{ }

RecordsetGridModel::~RecordsetGridModel()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
}

void RecordsetGridModel::setColumns(const QList<RecordsetGridColumn> &columns)
{
    beginResetModel();
    m_columns = columns;
    resolveFields();
    endResetModel();
}

RecordsetGridColumn RecordsetGridModel::column(int index) const
{
    if (!m_columns.isEmpty())
        return m_columns.value(index);
    if (!m_recordset || index < 0 || index >= m_recordset->fieldCount())
        return {};
    return {.key = m_recordset->field(index).name};
}

void RecordsetGridModel::setRecordset(db::RecordsetPtr recordset)
{
    beginResetModel();
    m_recordset = std::move(recordset);
    resolveFields();
    watchRecordset();
    endResetModel();
}

int RecordsetGridModel::columnOf(const QString &key) const
{
    for (int i = 0; i < columnCount(); ++i) {
        if (column(i).key.compare(key, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

void RecordsetGridModel::resolveFields()
{
    m_fieldOfColumn.clear();
    for (int i = 0; i < columnCount(); ++i) {
        const RecordsetGridColumn c = column(i);
        const bool bound = m_recordset && c.kind != RecordsetGridColumn::Kind::Button;
        m_fieldOfColumn.append(bound ? m_recordset->fieldIndex(c.key) : -1);
    }
}

// The recordset's own changes (edits through a clone, rows added or removed, a new filter)
// reach the views of this model.
void RecordsetGridModel::watchRecordset()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    db::Recordset *source = m_recordset.get();
    if (!source)
        return;
    m_connections << connect(source, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beginResetModel(); })
                  << connect(source, &QAbstractItemModel::modelReset, this, [this] { endResetModel(); })
                  << connect(source, &QAbstractItemModel::layoutAboutToBeChanged, this, [this] { beginResetModel(); })
                  << connect(source, &QAbstractItemModel::layoutChanged, this, [this] { endResetModel(); })
                  << connect(source, &QAbstractItemModel::rowsAboutToBeInserted, this,
                             [this](const QModelIndex &, int first, int last) { beginInsertRows({}, first, last); })
                  << connect(source, &QAbstractItemModel::rowsInserted, this, [this] { endInsertRows(); })
                  << connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                             [this](const QModelIndex &, int first, int last) { beginRemoveRows({}, first, last); })
                  << connect(source, &QAbstractItemModel::rowsRemoved, this, [this] { endRemoveRows(); })
                  << connect(source, &QAbstractItemModel::dataChanged, this,
                             [this](const QModelIndex &topLeft, const QModelIndex &bottomRight) {
                                 if (columnCount() > 0)
                                     emit dataChanged(index(topLeft.row(), 0),
                                                      index(bottomRight.row(), columnCount() - 1));
                             });
}

int RecordsetGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() || !m_recordset ? 0 : m_recordset->rowCount();
}

int RecordsetGridModel::columnCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    if (!m_columns.isEmpty())
        return int(m_columns.size());
    return m_recordset ? m_recordset->fieldCount() : 0;
}

QVariant RecordsetGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || !m_recordset)
        return {};
    const RecordsetGridColumn c = column(index.column());
    if (role == Qt::BackgroundRole)
        return c.background.isValid() ? QVariant(QBrush(c.background)) : QVariant();
    const int field = fieldOf(index.column());
    switch (c.kind) {
    case RecordsetGridColumn::Kind::Button: return role == Qt::DisplayRole ? QVariant(c.heading()) : QVariant();
    case RecordsetGridColumn::Kind::Check:
        if (role != Qt::CheckStateRole || field < 0)
            return {};
        return m_recordset->valueAt(index.row(), field).toInt() == 1 ? Qt::Checked : Qt::Unchecked;
    case RecordsetGridColumn::Kind::Mark:
        if (role == Qt::TextAlignmentRole)
            return QVariant(Qt::AlignCenter);
        if (role != Qt::DisplayRole || field < 0)
            return {};
        return m_recordset->valueAt(index.row(), field).toInt() == 1 ? QStringLiteral("\u2713") : QString();
    case RecordsetGridColumn::Kind::Text:
        if ((role != Qt::DisplayRole && role != Qt::EditRole) || field < 0)
            return {};
        if (role == Qt::DisplayRole && c.displayText)
            return c.displayText(m_recordset->valueAt(index.row(), field));
        return m_recordset->valueAt(index.row(), field);
    }
    return {};
}

// A check box writes the integers 1 and 0 into its field.
bool RecordsetGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int field = index.isValid() ? fieldOf(index.column()) : -1;
    if (field < 0 || !(flags(index) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
        return false;
    const RecordsetGridColumn c = column(index.column());
    QVariant stored = value;
    if (c.kind == RecordsetGridColumn::Kind::Check) {
        if (role != Qt::CheckStateRole)
            return false;
        stored = value.toInt() == Qt::Checked ? 1 : 0;
    } else if (role != Qt::EditRole) {
        return false;
    }
    if (m_editGuard && !m_editGuard(index.row(), c.key, m_recordset->valueAt(index.row(), field), stored))
        return false;
    return m_recordset->setData(m_recordset->index(index.row(), field), stored, Qt::EditRole);
}

Qt::ItemFlags RecordsetGridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    const RecordsetGridColumn c = column(index.column());
    const int field = fieldOf(index.column());
    if (c.readOnly || field < 0)
        return result;
    const bool writable = m_recordset->flags(m_recordset->index(index.row(), field)) & Qt::ItemIsEditable;
    if (!writable)
        return result;
    return result | (c.kind == RecordsetGridColumn::Kind::Check ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

void RecordsetGridModel::setHeadingToolTips(const QHash<QString, QString> &byKey)
{
    m_headingToolTips = byKey;
    if (columnCount() > 0)
        emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

QVariant RecordsetGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::ToolTipRole && orientation == Qt::Horizontal)
        return m_headingToolTips.value(column(section).key);
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Vertical)
        return section + 1;
    return column(section).heading();
}

} // namespace fw
