#pragma once

#include <QAbstractProxyModel>
#include <QStringList>
#include <vector>

namespace fw {

class RecordsetGridModel;

// The rows of a RecordsetGridModel narrowed by a typed text and ordered by one column, without
// touching the recordset: its rows, current row and values (ticks included) stay as they are,
// hidden rows too. The text matches literally and without regard to case the columns named by
// setFilterKeys(); its quotes, % and _ are plain characters. Texts are read from the recordset
// once per load, so that each keystroke is one pass over them.
class RecordsetGridFilterModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit RecordsetGridFilterModel(QObject *parent = nullptr);

    void setSourceModel(QAbstractItemModel *source) override; // a RecordsetGridModel
    void setFilterKeys(const QStringList &keys);
    void setFilterText(const QString &text);
    QString filterText() const { return m_filterText; }
    // Orders the rows by the column's values (numbers as numbers, empty values first); a
    // column of -1 gives back the recordset's order. Rows with equal values keep that order.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    int sourceRow(int row) const;   // -1 when out of range
    int rowOf(int sourceRow) const; // -1 when the row is filtered out

    QModelIndex mapToSource(const QModelIndex &proxyIndex) const override;
    QModelIndex mapFromSource(const QModelIndex &sourceIndex) const override;
    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    void rebuild(); // order and filter again, as one reset
    void applyOrderAndFilter();
    void forgetTexts();
    void collectTexts();
    QString textOf(int sourceRow) const;
    void onSourceDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    void order(int field);
    void rankValues(int field);
    void forgetRanks();

    RecordsetGridModel *m_grid = nullptr;
    QStringList m_filterKeys;
    QString m_filterText;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    std::vector<QString> m_texts; // per source row: the filter columns' texts, case-folded
    bool m_textsValid = false;
    QList<int> m_textFields;        // recordset fields of the filter columns
    std::vector<int> m_order;       // source rows in the chosen order
    int m_rankField = -1;           // the recordset field m_ranks were worked out for
    std::vector<int> m_ranks;       // per source row: the place of its value among the field's values
    int m_rankCount = 0;            // distinct values
    std::vector<int> m_rows;        // shown rows: source row of each
    std::vector<int> m_rowOfSource; // source row -> shown row, -1 when hidden
};

} // namespace fw
