#include "framework/recordsetgroupmodel.h"

#include <QBrush>
#include <QCollator>
#include <QFont>
#include <QHash>
#include <algorithm>

namespace fw {

namespace {

// Headings carry 0 as internal id; a row of group g carries g + 1.
constexpr quintptr headingId = 0;

} // namespace

RecordsetGroupModel::RecordsetGroupModel(QObject *parent)
    : QAbstractItemModel(parent)
{ }

RecordsetGroupModel::~RecordsetGroupModel() = default;

void RecordsetGroupModel::setColumns(const QList<RecordsetGridColumn> &columns)
{
    beginResetModel();
    m_columns = columns;
    rebuild();
    endResetModel();
}

void RecordsetGroupModel::setGroupField(const QString &field)
{
    beginResetModel();
    m_groupField = field;
    rebuild();
    endResetModel();
}

void RecordsetGroupModel::setRecordset(db::RecordsetPtr recordset)
{
    beginResetModel();
    m_recordset = std::move(recordset);
    rebuild();
    endResetModel();
}

void RecordsetGroupModel::rebuild()
{
    m_groups.clear();
    m_groupOfRow.clear();
    m_positionOfRow.clear();
    m_fieldOfColumn.clear();
    for (const RecordsetGridColumn &column : std::as_const(m_columns))
        m_fieldOfColumn.append(m_recordset ? m_recordset->fieldIndex(column.key) : -1);
    if (!m_recordset)
        return;

    const int groupField = m_recordset->fieldIndex(m_groupField);
    const int rows = m_recordset->recordCount();
    QHash<QString, int> groupOfText;
    for (int row = 0; row < rows; ++row) {
        const QString text = groupField < 0 ? QString() : m_recordset->valueAt(row, groupField).toString().trimmed();
        auto found = groupOfText.constFind(text);
        if (found == groupOfText.constEnd()) {
            found = groupOfText.insert(text, int(m_groups.size()));
            m_groups.append({text, {}});
        }
        m_groups[*found].rows.append(row);
    }

    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(m_groups.begin(), m_groups.end(),
                     [&collator](const Group &a, const Group &b) { return collator.compare(a.text, b.text) < 0; });
    m_groupOfRow = QList<int>(rows, -1);
    m_positionOfRow = QList<int>(rows, -1);
    for (int group = 0; group < m_groups.size(); ++group) {
        const QList<int> &members = m_groups.at(group).rows;
        for (int position = 0; position < members.size(); ++position) {
            m_groupOfRow[members.at(position)] = group;
            m_positionOfRow[members.at(position)] = position;
        }
    }
}

QString RecordsetGroupModel::groupText(int group) const
{
    return group >= 0 && group < m_groups.size() ? m_groups.at(group).text : QString();
}

bool RecordsetGroupModel::isGroup(const QModelIndex &index) const
{
    return index.isValid() && index.internalId() == headingId;
}

int RecordsetGroupModel::recordsetRow(const QModelIndex &index) const
{
    if (!index.isValid())
        return -1;
    if (isGroup(index)) {
        const QList<int> &rows = m_groups.at(index.row()).rows;
        return rows.isEmpty() ? -1 : rows.first();
    }
    return m_groups.at(int(index.internalId() - 1)).rows.at(index.row());
}

QModelIndex RecordsetGroupModel::indexOfRow(int recordsetRow, int column) const
{
    if (recordsetRow < 0 || recordsetRow >= m_groupOfRow.size())
        return {};
    return createIndex(m_positionOfRow.at(recordsetRow), column, quintptr(m_groupOfRow.at(recordsetRow) + 1));
}

int RecordsetGroupModel::columnOf(const QString &key) const
{
    for (int i = 0; i < m_columns.size(); ++i) {
        if (m_columns.at(i).key.compare(key, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QModelIndex RecordsetGroupModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column < 0 || column >= columnCount())
        return {};
    if (!parent.isValid())
        return row < m_groups.size() ? createIndex(row, column, headingId) : QModelIndex();
    if (!isGroup(parent) || parent.column() != 0 || row >= m_groups.at(parent.row()).rows.size())
        return {};
    return createIndex(row, column, quintptr(parent.row() + 1));
}

QModelIndex RecordsetGroupModel::parent(const QModelIndex &child) const
{
    if (!child.isValid() || isGroup(child))
        return {};
    return createIndex(int(child.internalId() - 1), 0, headingId);
}

int RecordsetGroupModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return int(m_groups.size());
    if (isGroup(parent) && parent.column() == 0)
        return int(m_groups.at(parent.row()).rows.size());
    return 0;
}

int RecordsetGroupModel::columnCount(const QModelIndex &) const
{
    return int(m_columns.size());
}

QVariant RecordsetGroupModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || !m_recordset)
        return {};
    const RecordsetGridColumn &column = m_columns.at(index.column());
    const bool groupingColumn = column.key.compare(m_groupField, Qt::CaseInsensitive) == 0;
    if (isGroup(index)) {
        if (role == Qt::FontRole) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return role == Qt::DisplayRole && groupingColumn ? QVariant(m_groups.at(index.row()).text) : QVariant();
    }
    if (role == Qt::BackgroundRole)
        return column.background.isValid() ? QVariant(QBrush(column.background)) : QVariant();
    if (role != Qt::DisplayRole || groupingColumn)
        return {};
    const int field = m_fieldOfColumn.at(index.column());
    if (field < 0)
        return {};
    const QVariant value = m_recordset->valueAt(recordsetRow(index), field);
    return column.displayText ? QVariant(column.displayText(value)) : value;
}

Qt::ItemFlags RecordsetGroupModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (!isGroup(index))
        result |= Qt::ItemNeverHasChildren;
    return result;
}

QVariant RecordsetGroupModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return {};
    // A column captioned empty on purpose (the group headings say what it holds) still names
    // itself in its tooltip.
    if (role == Qt::ToolTipRole)
        return m_columns.at(section).heading();
    return role == Qt::DisplayRole ? QVariant(m_columns.at(section).caption) : QVariant();
}

} // namespace fw
