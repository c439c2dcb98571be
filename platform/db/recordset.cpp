#include "recordset.h"

#include "backend.h"
#include "connection.h"
#include "recordsetcriteria.h"
#include "recordsetdata.h"
#include "storedvalues.h"
#include "writeback.h"

#include <algorithm>

namespace db {

namespace {

const QString recordsetSource = QStringLiteral("Recordset");

DatabaseError noCurrentRecord()
{
    return makeError(QStringLiteral("BOF o EOF è True, oppure il record corrente è stato eliminato. "
                                    "L'operazione richiesta richiede un record corrente."),
                     recordsetSource);
}

DatabaseError unknownField(const QString &name)
{
    return makeError(QStringLiteral("Impossibile trovare l'elemento nell'insieme corrispondente al nome "
                                    "o al numero ordinale richiesto: %1")
                         .arg(name),
                     recordsetSource);
}

} // namespace

struct Recordset::Private
{
    Recordset *q;
    std::shared_ptr<RecordsetData> data;
    std::shared_ptr<Connection> connection;
    std::vector<int> rows;     // stored rows that pass the filter, ascending
    int position = 0;          // index into rows; -1 is BOF, rows.size() is EOF
    bool onDeletedRow = false; // sits where the row it deleted was
    int rowBeforeAddNew = -1;  // stored row to go back to when an added row is cancelled
    QString filterText;
    std::unique_ptr<RecordsetCriteria> filter;

    int size() const { return int(rows.size()); }
    bool hasCurrent() const { return !onDeletedRow && position >= 0 && position < size(); }
    int currentStored() const { return hasCurrent() ? rows[size_t(position)] : -1; }

    int indexOfStored(int stored) const
    {
        const auto found = std::lower_bound(rows.begin(), rows.end(), stored);
        return found != rows.end() && *found == stored ? int(found - rows.begin()) : -1;
    }

    [[noreturn]] void raise(const DatabaseError &error) const
    {
        if (connection)
            connection->fail(error);
        throw error;
    }

    int checkedField(int index) const
    {
        if (index < 0 || index >= data->columnCount())
            raise(unknownField(QString::number(index)));
        return index;
    }

    int checkedField(const QString &name) const
    {
        const int index = data->fieldByName.value(name.toLower(), -1);
        if (index < 0)
            raise(unknownField(name));
        return index;
    }

    void rebuildRows()
    {
        rows.clear();
        const int stored = data->storedRowCount();
        rows.reserve(size_t(stored));
        for (int row = 0; row < stored; ++row) {
            if (!data->deleted[size_t(row)] && (!filter || filter->matches(*data, row)))
                rows.push_back(row);
        }
    }

    void moved() { emit q->currentRowChanged(q->currentRow()); }

    void notifyCellChanged(int stored, int field)
    {
        for (Recordset *sibling : data->siblings) {
            const int index = sibling->d->indexOfStored(stored);
            if (index >= 0) {
                const QModelIndex cell = sibling->index(index, field);
                emit sibling->dataChanged(cell, cell, {Qt::DisplayRole, Qt::EditRole});
            }
        }
    }

    void setCell(int stored, int field, const QVariant &value)
    {
        const FieldInfo &info = data->fields.at(field);
        bool ok = true;
        QVariant converted = storedvalues::coerce(value, info.type, &ok);
        if (!ok)
            raise(makeError(QStringLiteral("Valore non valido per il campo %1: %2").arg(info.name, value.toString()),
                            recordsetSource));
        // Kept as the database stores it, so that the next update's check of the original
        // value compares like with like.
        if (info.type == FieldType::Decimal && !converted.isNull())
            converted = storedvalues::roundToScale(converted.toDouble(), info.numericScale);
        const QVariant cell = data->cell(stored, field);
        const bool pending = data->pending.count(stored) > 0;
        if (!pending && storedvalues::sameValue(cell, converted) && cell.metaType() == converted.metaType())
            return;
        if (!pending) {
            PendingRow row;
            row.original = data->cells.rowValues(stored);
            data->pending.emplace(stored, std::move(row));
        }
        data->setCell(stored, field, converted);
        notifyCellChanged(stored, field);
    }

    // Writes a pending row to the base table (in-memory recordsets just keep the values).
    void commitRow(int stored)
    {
        const auto found = data->pending.find(stored);
        if (found == data->pending.end())
            return;
        if (data->isWritable()) {
            try {
                if (found->second.isNew) {
                    if (WriteBack::insertRow(*connection, *data, stored))
                        notifyCellChanged(stored, data->keyFields.first());
                } else {
                    WriteBack::updateRow(*connection, *data, stored, found->second);
                }
            } catch (const DatabaseError &error) {
                raise(error);
            }
        }
        data->pending.erase(stored);
    }

    void restoreOriginals(int stored)
    {
        const auto found = data->pending.find(stored);
        if (found == data->pending.end())
            return;
        const std::vector<QVariant> original = std::move(found->second.original);
        data->pending.erase(found);
        for (int field = 0; field < data->columnCount(); ++field) {
            if (!storedvalues::sameValue(data->cell(stored, field), original[size_t(field)])) {
                data->setCell(stored, field, original[size_t(field)]);
                notifyCellChanged(stored, field);
            }
        }
    }

    // Before leaving the current row, its pending changes are written (ADO does the same).
    void leaveRow()
    {
        const int stored = currentStored();
        if (stored >= 0)
            commitRow(stored);
    }

    // Takes a stored row out of every recordset sharing the data.
    void removeStoredRow(int stored)
    {
        data->deleted[size_t(stored)] = 1;
        data->pending.erase(stored);
        for (Recordset *sibling : data->siblings) {
            Private &other = *sibling->d;
            const int index = other.indexOfStored(stored);
            if (index < 0)
                continue;
            sibling->beginRemoveRows(QModelIndex(), index, index);
            other.rows.erase(other.rows.begin() + index);
            if (other.position > index)
                --other.position;
            else if (other.position == index && sibling == q)
                other.onDeletedRow = true;
            sibling->endRemoveRows();
        }
    }
};

Recordset::Recordset(std::shared_ptr<RecordsetData> data, std::shared_ptr<Connection> connection)
    : d(std::make_unique<Private>())
{
    d->q = this;
    d->data = std::move(data);
    d->connection = std::move(connection);
    d->rebuildRows();
    d->data->siblings.push_back(this);
}

Recordset::~Recordset()
{
    auto &siblings = d->data->siblings;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
}

// --- fields

int Recordset::fieldCount() const
{
    return d->data->columnCount();
}

const FieldInfo &Recordset::field(int index) const
{
    return d->data->fields.at(d->checkedField(index));
}

int Recordset::fieldIndex(const QString &name) const
{
    return d->data->fieldByName.value(name.toLower(), -1);
}

QString Recordset::sourceStatement() const
{
    return d->data->statement;
}

QString Recordset::baseTable() const
{
    return d->data->baseTable;
}

std::shared_ptr<Connection> Recordset::connection() const
{
    return d->connection;
}

// --- position

bool Recordset::bof() const
{
    if (d->onDeletedRow)
        return false;
    return d->rows.empty() || d->position < 0;
}

bool Recordset::eof() const
{
    if (d->onDeletedRow)
        return false;
    return d->rows.empty() || d->position >= d->size();
}

int Recordset::recordCount() const
{
    return d->size();
}

int Recordset::currentRow() const
{
    return d->hasCurrent() ? d->position : -1;
}

void Recordset::setCurrentRow(int row)
{
    d->leaveRow();
    d->onDeletedRow = false;
    d->position = row >= 0 && row < d->size() ? row : d->size();
    d->moved();
}

int Recordset::absolutePosition() const
{
    return currentRow() + 1;
}

void Recordset::setAbsolutePosition(int position)
{
    setCurrentRow(position - 1);
}

void Recordset::moveFirst()
{
    d->leaveRow();
    d->onDeletedRow = false;
    d->position = 0;
    d->moved();
}

void Recordset::moveLast()
{
    d->leaveRow();
    d->onDeletedRow = false;
    d->position = d->rows.empty() ? 0 : d->size() - 1;
    d->moved();
}

void Recordset::moveNext()
{
    d->leaveRow();
    if (d->onDeletedRow)
        d->onDeletedRow = false; // the following row has taken the deleted row's place
    else if (d->position < d->size())
        ++d->position;
    d->position = std::min(d->position, d->size());
    d->moved();
}

void Recordset::movePrevious()
{
    d->leaveRow();
    d->onDeletedRow = false;
    if (d->position >= 0)
        --d->position;
    d->position = std::min(d->position, d->size() - 1);
    d->moved();
}

// --- values

QVariant Recordset::value(const QString &fieldName) const
{
    return value(d->checkedField(fieldName));
}

QVariant Recordset::value(int fieldIndex) const
{
    d->checkedField(fieldIndex);
    if (!d->hasCurrent())
        d->raise(noCurrentRecord());
    return d->data->cell(d->currentStored(), fieldIndex);
}

void Recordset::setValue(const QString &fieldName, const QVariant &value)
{
    setValue(d->checkedField(fieldName), value);
}

void Recordset::setValue(int fieldIndex, const QVariant &value)
{
    d->checkedField(fieldIndex);
    if (!d->hasCurrent())
        d->raise(noCurrentRecord());
    d->setCell(d->currentStored(), fieldIndex, value);
}

QVariant Recordset::valueAt(int row, int fieldIndex) const
{
    if (row < 0 || row >= d->size() || fieldIndex < 0 || fieldIndex >= d->data->columnCount())
        return QVariant();
    return d->data->cell(d->rows[size_t(row)], fieldIndex);
}

// --- filter and find

void Recordset::setFilter(const QString &criteria)
{
    std::unique_ptr<RecordsetCriteria> parsed;
    if (!criteria.trimmed().isEmpty()) {
        try {
            parsed = RecordsetCriteria::parse(criteria, *d->data);
        } catch (const DatabaseError &error) {
            d->raise(error);
        }
    }
    d->leaveRow();
    beginResetModel();
    d->filter = std::move(parsed);
    d->filterText = d->filter ? criteria : QString();
    d->rebuildRows();
    d->position = 0;
    d->onDeletedRow = false;
    endResetModel();
    d->moved();
}

QString Recordset::filter() const
{
    return d->filterText;
}

bool Recordset::find(const QString &criteria)
{
    std::unique_ptr<RecordsetCriteria> parsed;
    try {
        parsed = RecordsetCriteria::parse(criteria, *d->data);
    } catch (const DatabaseError &error) {
        d->raise(error);
    }
    d->leaveRow();
    const int start = std::max(d->position, 0); // a deleted row's place holds the row after it
    d->onDeletedRow = false;
    for (int row = start; row < d->size(); ++row) {
        if (parsed->matches(*d->data, d->rows[size_t(row)])) {
            d->position = row;
            d->moved();
            return true;
        }
    }
    d->position = d->size();
    d->moved();
    return false;
}

std::shared_ptr<Recordset> Recordset::clone() const
{
    return std::shared_ptr<Recordset>(new Recordset(d->data, d->connection));
}

// --- editing

bool Recordset::isEditing() const
{
    const int stored = d->currentStored();
    return stored >= 0 && d->data->pending.count(stored) > 0;
}

void Recordset::addNew()
{
    d->leaveRow();
    d->rowBeforeAddNew = d->currentStored();
    const int stored = d->data->appendRow();
    PendingRow pending;
    pending.original.resize(size_t(d->data->columnCount()));
    pending.isNew = true;
    d->data->pending.emplace(stored, std::move(pending));

    for (Recordset *sibling : d->data->siblings) {
        Private &other = *sibling->d;
        if (sibling != this && other.filter && !other.filter->matches(*d->data, stored))
            continue;
        const int index = other.size();
        sibling->beginInsertRows(QModelIndex(), index, index);
        other.rows.push_back(stored);
        if (other.position >= index) // EOF stays EOF
            other.position = index + 1;
        sibling->endInsertRows();
    }
    d->onDeletedRow = false;
    d->position = d->size() - 1;
    d->moved();
}

void Recordset::update()
{
    const int stored = d->currentStored();
    if (stored >= 0)
        d->commitRow(stored);
}

void Recordset::cancelUpdate()
{
    const int stored = d->currentStored();
    if (stored < 0)
        return;
    const auto found = d->data->pending.find(stored);
    if (found == d->data->pending.end())
        return;
    if (!found->second.isNew) {
        d->restoreOriginals(stored);
        return;
    }
    d->removeStoredRow(stored);
    d->onDeletedRow = false;
    const int back = d->rowBeforeAddNew >= 0 ? d->indexOfStored(d->rowBeforeAddNew) : -1;
    d->position = back >= 0 ? back : d->size();
    d->moved();
}

void Recordset::deleteCurrent()
{
    const int stored = d->currentStored();
    if (stored < 0)
        d->raise(noCurrentRecord());
    const auto found = d->data->pending.find(stored);
    const bool isNew = found != d->data->pending.end() && found->second.isNew;
    if (!isNew) {
        d->restoreOriginals(stored); // the key to delete by is the one read
        if (d->data->isWritable()) {
            try {
                WriteBack::deleteRow(*d->connection, *d->data, stored);
            } catch (const DatabaseError &error) {
                d->raise(error);
            }
        }
    }
    d->removeStoredRow(stored);
}

Recordset::RowState Recordset::resync()
{
    const int stored = d->currentStored();
    if (stored < 0)
        d->raise(noCurrentRecord());
    if (!d->data->isWritable())
        return RowState::Unchanged;
    d->restoreOriginals(stored);
    const std::vector<QVariant> before = d->data->cells.rowValues(stored);
    bool found = false;
    try {
        found = WriteBack::rereadRow(*d->connection, *d->data, stored);
    } catch (const DatabaseError &error) {
        d->raise(error);
    }
    if (!found)
        return RowState::Gone;
    bool changed = false;
    for (int field = 0; field < d->data->columnCount(); ++field) {
        if (!storedvalues::sameValue(before[size_t(field)], d->data->cell(stored, field))) {
            changed = true;
            d->notifyCellChanged(stored, field);
        }
    }
    return changed ? RowState::Changed : RowState::Unchanged;
}

void Recordset::forgetRows(const QList<int> &rows)
{
    QList<int> stored;
    for (int row : rows) {
        if (row >= 0 && row < d->size())
            stored << d->rows[size_t(row)];
    }
    if (stored.isEmpty())
        return;
    for (int gone : std::as_const(stored)) {
        d->data->deleted[size_t(gone)] = 1;
        d->data->pending.erase(gone);
    }
    for (Recordset *sibling : d->data->siblings) {
        Private &other = *sibling->d;
        const int current = other.currentStored();
        sibling->beginResetModel();
        other.rebuildRows();
        if (current >= 0 && other.data->deleted[size_t(current)]) {
            // Where the row was: the first remaining row after it, as after deleteCurrent().
            other.position = int(std::lower_bound(other.rows.begin(), other.rows.end(), current) - other.rows.begin());
            other.onDeletedRow = true;
        } else if (current >= 0) {
            other.position = other.indexOfStored(current);
        } else {
            other.position = std::min(other.position, other.size());
        }
        sibling->endResetModel();
        other.moved();
    }
}

void Recordset::setUpdateStamp(UpdateStamp stamp)
{
    d->data->updateStamp = std::move(stamp);
}

// --- model

int Recordset::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : d->size();
}

int Recordset::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : d->data->columnCount();
}

QVariant Recordset::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    return valueAt(index.row(), index.column());
}

bool Recordset::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || index.row() >= d->size() || !(flags(index) & Qt::ItemIsEditable))
        return false;
    const int stored = d->rows[size_t(index.row())];
    try {
        if (d->currentStored() != stored)
            d->leaveRow();
        d->setCell(stored, index.column(), value);
        d->commitRow(stored);
    } catch (const DatabaseError &error) {
        emit writeBackFailed(error);
        return false;
    }
    return true;
}

Qt::ItemFlags Recordset::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags result = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (!d->data->isWritable() || d->data->fields.at(index.column()).writable)
        result |= Qt::ItemIsEditable;
    return result;
}

QVariant Recordset::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < 0 || section >= d->data->columnCount())
        return QVariant();
    return d->data->fields.at(section).name;
}

} // namespace db
