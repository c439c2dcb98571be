#include "framework/recordsetgridfiltermodel.h"

#include "framework/recordsetgridmodel.h"

#include <algorithm>

namespace fw {

namespace {

// One value as the ordering compares it.
struct SortKey
{
    enum Kind : unsigned char { Empty, Number, Text } kind = Empty;
    double number = 0;
    QString text;
};

SortKey sortKeyOf(const QVariant &value)
{
    SortKey key;
    if (value.isNull() || !value.isValid())
        return key;
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Bool:
        key.kind = SortKey::Number;
        key.number = value.toDouble();
        return key;
    default:
        // Folded once here, so that each of the many comparisons is a plain one.
        key.text = value.toString().toCaseFolded();
        key.kind = key.text.isEmpty() ? SortKey::Empty : SortKey::Text;
        return key;
    }
}

int compareKeys(const SortKey &a, const SortKey &b)
{
    if (a.kind != b.kind)
        return a.kind < b.kind ? -1 : 1;
    if (a.kind == SortKey::Number)
        return a.number < b.number ? -1 : (b.number < a.number ? 1 : 0);
    if (a.kind == SortKey::Text)
        return a.text.compare(b.text);
    return 0;
}

} // namespace

RecordsetGridFilterModel::RecordsetGridFilterModel(QObject *parent)
    : QAbstractProxyModel(parent)
{ }

void RecordsetGridFilterModel::setSourceModel(QAbstractItemModel *source)
{
    if (sourceModel())
        disconnect(sourceModel(), nullptr, this, nullptr);
    beginResetModel();
    QAbstractProxyModel::setSourceModel(source);
    m_grid = qobject_cast<RecordsetGridModel *>(source);
    forgetTexts();
    applyOrderAndFilter();
    endResetModel();
    if (!source)
        return;
    // Whatever changes the rows or their order is taken as a new set of rows.
    const auto begin = [this] { beginResetModel(); };
    const auto end = [this] {
        forgetTexts();
        applyOrderAndFilter();
        endResetModel();
    };
    connect(source, &QAbstractItemModel::modelAboutToBeReset, this, begin);
    connect(source, &QAbstractItemModel::modelReset, this, end);
    connect(source, &QAbstractItemModel::layoutAboutToBeChanged, this, begin);
    connect(source, &QAbstractItemModel::layoutChanged, this, end);
    connect(source, &QAbstractItemModel::rowsAboutToBeInserted, this, begin);
    connect(source, &QAbstractItemModel::rowsInserted, this, end);
    connect(source, &QAbstractItemModel::rowsAboutToBeRemoved, this, begin);
    connect(source, &QAbstractItemModel::rowsRemoved, this, end);
    connect(source, &QAbstractItemModel::columnsAboutToBeInserted, this, begin);
    connect(source, &QAbstractItemModel::columnsInserted, this, end);
    connect(source, &QAbstractItemModel::columnsAboutToBeRemoved, this, begin);
    connect(source, &QAbstractItemModel::columnsRemoved, this, end);
    connect(source, &QAbstractItemModel::dataChanged, this, &RecordsetGridFilterModel::onSourceDataChanged);
    connect(source, &QAbstractItemModel::headerDataChanged, this, &QAbstractItemModel::headerDataChanged);
}

void RecordsetGridFilterModel::setFilterKeys(const QStringList &keys)
{
    m_filterKeys = keys;
    forgetTexts();
    if (!m_filterText.isEmpty())
        rebuild();
}

void RecordsetGridFilterModel::setFilterText(const QString &text)
{
    if (text == m_filterText)
        return;
    m_filterText = text;
    rebuild();
}

void RecordsetGridFilterModel::sort(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    rebuild();
}

int RecordsetGridFilterModel::sourceRow(int row) const
{
    return row >= 0 && row < int(m_rows.size()) ? m_rows[row] : -1;
}

int RecordsetGridFilterModel::rowOf(int sourceRow) const
{
    return sourceRow >= 0 && sourceRow < int(m_rowOfSource.size()) ? m_rowOfSource[sourceRow] : -1;
}

void RecordsetGridFilterModel::rebuild()
{
    beginResetModel();
    applyOrderAndFilter();
    endResetModel();
}

void RecordsetGridFilterModel::forgetTexts()
{
    m_texts.clear();
    m_texts.shrink_to_fit();
    m_textsValid = false;
}

// Filter columns joined by a line feed, which no typed text holds, so that a match never spans
// two columns.
void RecordsetGridFilterModel::collectTexts()
{
    m_textsValid = true;
    const int rows = sourceModel() ? sourceModel()->rowCount() : 0;
    m_texts.assign(size_t(rows), QString());
    m_textFields.clear();
    if (!m_grid || !m_grid->recordset())
        return;
    for (const QString &key : std::as_const(m_filterKeys)) {
        const int field = m_grid->recordset()->fieldIndex(key);
        if (field >= 0)
            m_textFields.append(field);
    }
    for (int row = 0; row < rows; ++row)
        m_texts[size_t(row)] = textOf(row);
}

QString RecordsetGridFilterModel::textOf(int sourceRow) const
{
    const db::Recordset &recordset = *m_grid->recordset();
    QString text;
    for (int field : std::as_const(m_textFields)) {
        if (!text.isEmpty())
            text += u'\n';
        text += recordset.valueAt(sourceRow, field).toString();
    }
    return text.toCaseFolded();
}

void RecordsetGridFilterModel::applyOrderAndFilter()
{
    const int rows = sourceModel() ? sourceModel()->rowCount() : 0;
    m_order.resize(size_t(rows));
    for (int row = 0; row < rows; ++row)
        m_order[size_t(row)] = row;

    const int field = m_grid && m_grid->recordset() && m_sortColumn >= 0 && m_sortColumn < m_grid->columnCount()
        ? m_grid->recordset()->fieldIndex(m_grid->column(m_sortColumn).key)
        : -1;
    if (field >= 0) {
        const db::Recordset &recordset = *m_grid->recordset();
        std::vector<SortKey> keys(static_cast<size_t>(rows));
        for (int row = 0; row < rows; ++row)
            keys[size_t(row)] = sortKeyOf(recordset.valueAt(row, field));
        const bool descending = m_sortOrder == Qt::DescendingOrder;
        std::stable_sort(m_order.begin(), m_order.end(), [&](int a, int b) {
            const int c = compareKeys(keys[size_t(a)], keys[size_t(b)]);
            return descending ? c > 0 : c < 0;
        });
    }

    m_rows.clear();
    m_rowOfSource.assign(size_t(rows), -1);
    const QString needle = m_filterText.toCaseFolded();
    if (!needle.isEmpty() && !m_textsValid)
        collectTexts();
    m_rows.reserve(size_t(rows));
    for (int row : m_order) {
        if (!needle.isEmpty() && !m_texts[size_t(row)].contains(needle))
            continue;
        m_rowOfSource[size_t(row)] = int(m_rows.size());
        m_rows.push_back(row);
    }
}

// A change of values (a tick) reaches the rows shown; the filter is not applied again, so that
// a row does not vanish under the user's hands.
void RecordsetGridFilterModel::onSourceDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    if (!topLeft.isValid() || !bottomRight.isValid())
        return;
    for (int source = topLeft.row(); source <= bottomRight.row(); ++source) {
        if (m_textsValid && source < int(m_texts.size()))
            m_texts[size_t(source)] = textOf(source);
        const int row = rowOf(source);
        if (row >= 0)
            emit dataChanged(index(row, topLeft.column()), index(row, bottomRight.column()));
    }
}

QModelIndex RecordsetGridFilterModel::mapToSource(const QModelIndex &proxyIndex) const
{
    if (!proxyIndex.isValid() || !sourceModel())
        return {};
    const int source = sourceRow(proxyIndex.row());
    return source < 0 ? QModelIndex() : sourceModel()->index(source, proxyIndex.column());
}

QModelIndex RecordsetGridFilterModel::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!sourceIndex.isValid())
        return {};
    const int row = rowOf(sourceIndex.row());
    return row < 0 ? QModelIndex() : index(row, sourceIndex.column());
}

QModelIndex RecordsetGridFilterModel::index(int row, int column, const QModelIndex &parent) const
{
    if (parent.isValid() || row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return {};
    return createIndex(row, column);
}

QModelIndex RecordsetGridFilterModel::parent(const QModelIndex &) const
{
    return {};
}

int RecordsetGridFilterModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int RecordsetGridFilterModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() || !sourceModel() ? 0 : sourceModel()->columnCount();
}

QVariant RecordsetGridFilterModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!sourceModel())
        return {};
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    return sourceModel()->headerData(section, orientation, role);
}

} // namespace fw
