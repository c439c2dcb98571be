#include "framework/recordsetgrid.h"

#include "framework/recordsetgridbuttondelegate.h"
#include "framework/recordsetgridmodel.h"
#include "framework/treelist/treelistcolumn.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace fw {

RecordsetGrid::RecordsetGrid(QWidget *parent)
    : QTableView(parent)
    , m_model(new RecordsetGridModel(this))
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

    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        emit headerClicked(m_model->column(section).key);
    });
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { onCurrentRowChanged(current); });
    connect(m_model, &QAbstractItemModel::modelReset, this, &RecordsetGrid::applyWidths);
    connect(this, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex &index) {
        if (index.isValid() && !(m_model->flags(index) & Qt::ItemIsEditable))
            emit rowChosen(index.row());
    });
}

void RecordsetGrid::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != QAbstractItemView::EditingState && currentIndex().isValid()) {
        emit rowChosen(currentIndex().row());
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
    for (int i = 0; i < m_model->columnCount(); ++i)
        setItemDelegateForColumn(i, nullptr);
    m_model->setColumns(columns);
    for (int i = 0; i < columns.size(); ++i) {
        if (columns.at(i).kind != RecordsetGridColumn::Kind::Button)
            continue;
        auto *delegate = new RecordsetGridButtonDelegate(this);
        connect(delegate, &RecordsetGridButtonDelegate::pressed, this, [this](const QModelIndex &index) {
            setCurrentIndex(index);
            emit buttonClicked(index.row(), m_model->column(index.column()).key);
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

void RecordsetGrid::applyWidths()
{
    const int dpi = logicalDpiX();
    for (int i = 0; i < m_model->columnCount(); ++i) {
        setColumnWidth(i, twipsToPixels(m_model->column(i).width, dpi));
        setColumnHidden(i, !m_model->column(i).visible);
    }
}

void RecordsetGrid::onCurrentRowChanged(const QModelIndex &current)
{
    const db::RecordsetPtr &recordset = m_model->recordset();
    if (m_following || !recordset || !current.isValid() || recordset->currentRow() == current.row())
        return;
    QScopedValueRollback guard(m_following, true);
    if (m_rowChangeGuard && !m_rowChangeGuard()) {
        setCurrentIndex(m_model->index(recordset->currentRow(), current.column()));
        return;
    }
    try {
        recordset->setCurrentRow(current.row());
    } catch (const db::DatabaseError &) {
        // The row's pending change could not be written: the recordset stays where it was.
        setCurrentIndex(m_model->index(recordset->currentRow(), current.column()));
    }
}

void RecordsetGrid::onRecordsetRowChanged(int row)
{
    if (m_following)
        return;
    QScopedValueRollback guard(m_following, true);
    const int column = qMax(0, currentIndex().column());
    if (row < 0)
        selectionModel()->clearCurrentIndex();
    else
        selectionModel()->setCurrentIndex(m_model->index(row, column),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

} // namespace fw
