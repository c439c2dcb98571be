#include "framework/recordsetgridfiltermodel.h"

#include "framework/recordsetgridmodel.h"

#include <QHash>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace fw {

namespace {

// Equal numbers give equal bits, and the bits keep the numbers' order.
quint64 orderedBits(double number)
{
    if (number == 0)
        number = 0; // -0 equals +0
    quint64 bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    constexpr quint64 sign = quint64(1) << 63;
    return (bits & sign) ? ~bits : bits | sign;
}

// The first four units of a text in one word, in the order of a comparison unit by unit: units
// past the end count as 0, so a text that ends first is smaller, and a tie with a text that goes
// on with a 0 unit is left to the whole comparison.
quint64 firstUnits(const QString &text)
{
    quint64 head = 0;
    for (qsizetype i = 0; i < 4; ++i)
        head = head << 16 | (i < text.size() ? text.at(i).unicode() : 0u);
    return head;
}

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Bool: return true;
    default: return false;
    }
}

// Case-folded as QString::toCaseFolded() folds, and as fast as a copy for plain ASCII (most
// names and cities), which needs no Unicode table.
QString folded(QString text)
{
    char16_t *units = reinterpret_cast<char16_t *>(text.data());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (units[i] >= 0x80)
            return std::move(text).toCaseFolded();
        if (units[i] >= u'A' && units[i] <= u'Z')
            units[i] = char16_t(units[i] + (u'a' - u'A'));
    }
    return text;
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
        forgetRanks();
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
    return folded(std::move(text));
}

void RecordsetGridFilterModel::applyOrderAndFilter()
{
    const int rows = sourceModel() ? sourceModel()->rowCount() : 0;
    m_order.resize(size_t(rows));
    std::iota(m_order.begin(), m_order.end(), 0);

    const int field = m_grid && m_grid->recordset() && m_sortColumn >= 0 && m_sortColumn < m_grid->columnCount()
        ? m_grid->recordset()->fieldIndex(m_grid->column(m_sortColumn).key)
        : -1;
    if (field >= 0)
        order(field);

    m_rows.clear();
    m_rowOfSource.assign(size_t(rows), -1);
    const QString needle = folded(m_filterText);
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

// Each ordering is one pass over the rows by the rank of their values, which keeps the
// recordset's order among equal values whichever the direction; the ranks of a column are
// worked out once per list, so that ordering the other way or again reads no value.
void RecordsetGridFilterModel::order(int field)
{
    if (m_rankField != field)
        rankValues(field);
    const bool descending = m_sortOrder == Qt::DescendingOrder;
    const auto place = [&](int rank) { return size_t(descending ? m_rankCount - 1 - rank : rank); };
    std::vector<int> next(size_t(m_rankCount) + 1, 0);
    for (int rank : m_ranks)
        ++next[place(rank) + 1];
    std::partial_sum(next.begin(), next.end(), next.begin());
    for (int row = 0; row < int(m_ranks.size()); ++row)
        m_order[size_t(next[place(m_ranks[size_t(row)])]++)] = row;
}

// Empty values first, then numbers, then texts without regard to case (folded, then compared
// unit by unit); each distinct value is compared with the others once, however many rows hold it.
void RecordsetGridFilterModel::rankValues(int field)
{
    const db::Recordset &recordset = *m_grid->recordset();
    const int rows = int(m_order.size());
    m_rankField = field;
    m_ranks.assign(size_t(rows), 0);

    bool anyEmpty = false;
    std::vector<std::pair<quint64, int>> numbers; // bits, row
    QHash<QString, int> textIds;
    std::vector<QString> texts;                   // by id
    std::vector<int> textOfRow(size_t(rows), -1); // id
    for (int row = 0; row < rows; ++row) {
        QVariant value = recordset.valueAt(row, field);
        if (value.isNull() || !value.isValid()) {
            anyEmpty = true;
        } else if (isNumber(value)) {
            numbers.emplace_back(orderedBits(value.toDouble()), row);
        } else {
            QString text = value.toString();
            value.clear(); // the text is no longer shared: it is folded where it is
            text = folded(std::move(text));
            if (text.isEmpty()) {
                anyEmpty = true;
                continue;
            }
            const auto found = textIds.constFind(text);
            if (found != textIds.constEnd()) {
                textOfRow[size_t(row)] = found.value();
                continue;
            }
            textOfRow[size_t(row)] = int(texts.size());
            textIds.insert(text, int(texts.size()));
            texts.push_back(std::move(text));
        }
    }

    int rank = anyEmpty ? 1 : 0; // the empty values' rank is 0
    std::sort(numbers.begin(), numbers.end());
    for (size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && numbers[i].first != numbers[i - 1].first)
            ++rank;
        m_ranks[size_t(numbers[i].second)] = rank;
    }
    if (!numbers.empty())
        ++rank;
    std::vector<int> byText(texts.size());
    std::iota(byText.begin(), byText.end(), 0);
    // Most comparisons are settled by the first units, kept side by side.
    std::vector<quint64> heads(texts.size());
    for (size_t i = 0; i < texts.size(); ++i)
        heads[i] = firstUnits(texts[i]);
    std::sort(byText.begin(), byText.end(), [&](int a, int b) {
        if (heads[size_t(a)] != heads[size_t(b)])
            return heads[size_t(a)] < heads[size_t(b)];
        return texts[size_t(a)].compare(texts[size_t(b)]) < 0;
    });
    std::vector<int> rankOfText(texts.size());
    for (size_t i = 0; i < byText.size(); ++i)
        rankOfText[size_t(byText[i])] = rank + int(i);
    for (int row = 0; row < rows; ++row) {
        if (textOfRow[size_t(row)] >= 0)
            m_ranks[size_t(row)] = rankOfText[size_t(textOfRow[size_t(row)])];
    }
    m_rankCount = rank + int(texts.size());
}

void RecordsetGridFilterModel::forgetRanks()
{
    m_rankField = -1;
    m_ranks = {};
    m_rankCount = 0;
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
        if (m_rankField >= 0)
            forgetRanks(); // a value may have changed
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
