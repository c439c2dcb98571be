#include "framework/recordsetgrid.h"

#include "framework/columnfit.h"
#include "framework/recordsetgridbuttondelegate.h"
#include "framework/recordsetgridfiltermodel.h"
#include "framework/recordsetgridmodel.h"
#include "framework/waitcursor.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStyle>
#include <optional>

namespace fw {

namespace {

constexpr int ManyRowsToOrder = 100000;

} // namespace

RecordsetGrid::RecordsetGrid(QWidget *parent)
    : QTableView(parent)
    , m_model(new RecordsetGridModel(this))
    , m_widths(new ColumnFit(this, horizontalHeader(), ColumnFit::designList(m_designTwips, [this](int column) {
                                 return minimumColumnWidth(column);
                             })))
{
    setModel(m_model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSortingEnabled(false);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    verticalHeader()->setVisible(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);

    connect(horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { emit headerClicked(m_model->column(section).key); });
    followSelection();
    connect(m_model, &QAbstractItemModel::modelReset, this, &RecordsetGrid::applyColumns);
    // Behind a row filter the header takes new columns after the grid model's reset, not at it.
    connect(horizontalHeader(), &QHeaderView::sectionCountChanged, this, &RecordsetGrid::applyColumns);
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex &index) {
        if (index.isValid() && !(model()->flags(index) & Qt::ItemIsEditable))
            emit rowChosen(recordsetRow(index));
    });
}

void RecordsetGrid::followSelection()
{
    disconnect(m_selectionConnection);
    m_selectionConnection = connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                                    [this](const QModelIndex &current) { onCurrentRowChanged(current); });
}

RecordsetGridFilterModel *RecordsetGrid::enableRowFilter(const QStringList &filterKeys, const QStringList &unsortedKeys)
{
    if (!m_filter) {
        m_filter = new RecordsetGridFilterModel(this);
        m_filter->setSourceModel(m_model);
        setModel(m_filter);
        followSelection();
        // After a new filter or order the recordset's current row is shown again, if it is shown.
        connect(m_filter, &QAbstractItemModel::modelReset, this, [this] {
            if (const db::RecordsetPtr &recordset = m_model->recordset())
                onRecordsetRowChanged(recordset->currentRow());
        });
        connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &RecordsetGrid::sortByHeading);
    }
    m_filter->setFilterKeys(filterKeys);
    m_unsortedKeys = unsortedKeys;
    return m_filter;
}

void RecordsetGrid::sortByHeading(int section)
{
    const QString key = m_model->column(section).key;
    if (m_unsortedKeys.contains(key, Qt::CaseInsensitive)
        || m_model->column(section).kind == RecordsetGridColumn::Kind::Button)
        return;
    const Qt::SortOrder order = m_filter->sortColumn() == section && m_filter->sortOrder() == Qt::AscendingOrder
        ? Qt::DescendingOrder
        : Qt::AscendingOrder;
    horizontalHeader()->setSortIndicatorShown(true);
    horizontalHeader()->setSortIndicator(section, order);
    // Ordering hundreds of thousands of rows takes a moment: the pointer says so meanwhile.
    std::optional<WaitCursor> wait;
    if (m_model->rowCount() >= ManyRowsToOrder)
        wait.emplace(this);
    m_filter->sort(section, order);
}

int RecordsetGrid::recordsetRow(const QModelIndex &index) const
{
    if (!index.isValid())
        return -1;
    return m_filter ? m_filter->sourceRow(index.row()) : index.row();
}

QModelIndex RecordsetGrid::viewIndex(int row, int column) const
{
    return model()->index(m_filter ? m_filter->rowOf(row) : row, column);
}

void RecordsetGrid::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != QAbstractItemView::EditingState && currentIndex().isValid()) {
        emit rowChosen(recordsetRow(currentIndex()));
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

RecordsetGrid::~RecordsetGrid()
{
    disconnect(m_rowConnection);
}

void RecordsetGrid::setColumns(const QList<RecordsetGridColumn> &columns)
{
    m_designTwips.clear();
    for (int i = 0; i < m_model->columnCount(); ++i)
        setItemDelegateForColumn(i, nullptr);
    m_model->setColumns(columns);
    for (int i = 0; i < columns.size(); ++i) {
        if (columns.at(i).kind != RecordsetGridColumn::Kind::Button)
            continue;
        auto *delegate = new RecordsetGridButtonDelegate(this);
        connect(delegate, &RecordsetGridButtonDelegate::pressed, this, [this](const QModelIndex &index) {
            setCurrentIndex(index);
            emit buttonClicked(recordsetRow(index), m_model->column(index.column()).key);
        });
        setItemDelegateForColumn(i, delegate);
    }
}

void RecordsetGrid::setRecordset(db::RecordsetPtr recordset)
{
    disconnect(m_rowConnection);
    m_model->setRecordset(recordset);
    if (recordset) {
        m_rowConnection = connect(recordset.get(), &db::Recordset::currentRowChanged, this,
                                  &RecordsetGrid::onRecordsetRowChanged);
        onRecordsetRowChanged(recordset->currentRow());
    }
}

db::RecordsetPtr RecordsetGrid::recordset() const
{
    return m_model->recordset();
}

int RecordsetGrid::columnOf(const QString &key) const
{
    return m_model->columnOf(key);
}

void RecordsetGrid::setFillWidth(bool fill)
{
    m_widths->setFillWidth(fill);
}

int RecordsetGrid::minimumColumnWidth(int column) const
{
    const RecordsetGridColumn &declared = m_model->column(column);
    return m_minimumWidths.width(font(), declaredWidthKey(declared), [&] {
        return fw::minimumColumnWidth(declared, fontMetrics(), horizontalHeader()->fontMetrics(),
                                      style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this));
    });
}

// A new set of columns (or, without declared columns, of fields) starts from the declared widths.
void RecordsetGrid::applyColumns()
{
    if (m_designTwips.size() != m_model->columnCount()) {
        m_designTwips.clear();
        for (int i = 0; i < m_model->columnCount(); ++i)
            m_designTwips.append(m_model->column(i).width);
    }
    for (int i = 0; i < m_model->columnCount(); ++i)
        m_widths->setColumnHidden(i, !m_model->column(i).visible);
    m_widths->apply();
}

void RecordsetGrid::onCurrentRowChanged(const QModelIndex &current)
{
    const db::RecordsetPtr &recordset = m_model->recordset();
    const int row = recordsetRow(current);
    if (m_following || !recordset || row < 0 || recordset->currentRow() == row)
        return;
    QScopedValueRollback guard(m_following, true);
    if (m_rowChangeGuard && !m_rowChangeGuard()) {
        setCurrentIndex(viewIndex(recordset->currentRow(), current.column()));
        return;
    }
    try {
        recordset->setCurrentRow(row);
    } catch (const db::DatabaseError &) {
        // The row's pending change could not be written: the recordset stays where it was.
        setCurrentIndex(viewIndex(recordset->currentRow(), current.column()));
    }
}

void RecordsetGrid::onRecordsetRowChanged(int row)
{
    if (m_following)
        return;
    QScopedValueRollback guard(m_following, true);
    const int column = qMax(0, currentIndex().column());
    const QModelIndex shown = row < 0 ? QModelIndex() : viewIndex(row, column);
    if (!shown.isValid())
        selectionModel()->clearCurrentIndex();
    else
        selectionModel()->setCurrentIndex(shown, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace fw
