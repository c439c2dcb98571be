#pragma once

#include "databaseerror.h"
#include "field.h"

#include <QAbstractTableModel>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <utility>

namespace db {

class Connection;
struct RecordsetData;

// A client-side recordset: every row is read at open, navigation happens in memory.
//
// Positions: currentRow() is the 0-based index among the rows that pass the filter, or -1
// at BOF/EOF. absolutePosition() is 1-based as in ADO (0 when there is no current row).
//
// A recordset opened on one base table whose primary key is in the select list writes its
// changes back through its connection (UPDATE/INSERT/DELETE with bound values). An UPDATE also
// checks the original values of the changed columns; when the row was changed meanwhile by
// someone else, update() throws DatabaseError and the row keeps the user's values, pending.
// Any other recordset (joins, temporary tables, no key) is edited in memory only.
//
// Clones share rows with their original: a change made through one shows in the other and in
// every view bound to either. Each clone has its own position and filter.
//
// Moving off a row with pending changes writes them first (a failure throws and the recordset
// stays on the row). After deleteCurrent() the recordset sits on the removed row, as ADO does:
// currentRow() is -1, value() throws, moveNext() goes to the row that followed it.
//
// Null database values are null QVariants. Dates are QDateTime (local time).
class Recordset : public QAbstractTableModel
{
    Q_OBJECT

public:
    ~Recordset() override;

    // --- fields
    int fieldCount() const;
    const FieldInfo &field(int index) const;
    int fieldIndex(const QString &name) const; // case-insensitive; -1 when absent
    QString sourceStatement() const;
    QString baseTable() const; // empty when not writable
    bool isWritable() const { return !baseTable().isEmpty(); }
    std::shared_ptr<Connection> connection() const;

    // --- position
    bool bof() const;
    bool eof() const;
    bool isEmpty() const { return recordCount() == 0; }
    int recordCount() const;     // rows passing the filter
    int currentRow() const;      // -1 at BOF/EOF
    void setCurrentRow(int row); // -1 leaves the row (EOF)
    int absolutePosition() const;
    void setAbsolutePosition(int position); // 1-based
    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();

    // --- values of the current row; throw DatabaseError at BOF/EOF or for an unknown field
    QVariant value(const QString &fieldName) const;
    QVariant value(int fieldIndex) const;
    void setValue(const QString &fieldName, const QVariant &value); // starts editing the row
    void setValue(int fieldIndex, const QVariant &value);

    // --- values by row without moving (row among the filtered rows)
    QVariant valueAt(int row, int fieldIndex) const;

    // --- filter: "" clears it; otherwise simple comparisons joined by AND/OR:
    //     COL = n, COL <> n, COL = 'text', COL like '%x%'. Moves to the first row.
    void setFilter(const QString &criteria);
    QString filter() const;

    // --- ADO Find: searches forward from the current row (inclusive) for "COL like '%x%'",
    //     "COL = n" or "COL = 'text'"; lands on the match, or EOF when none. Returns true on match.
    bool find(const QString &criteria);

    std::shared_ptr<Recordset> clone() const;

    // --- editing
    bool isEditing() const; // current row has pending changes or is a new row
    void addNew();          // appends a new row and makes it current
    void update();          // writes pending changes (no-op when none); throws
    void cancelUpdate();
    void deleteCurrent(); // deletes the current row (and its base-table row); throws
    // Reads the current row again from its base table, dropping pending changes: after another
    // user's change was refused, the row shows what the database holds. Says whether the row
    // was changed meanwhile or is gone (then nothing changes). Recordsets that are not writable
    // answer Unchanged.
    enum class RowState { Unchanged, Changed, Gone };
    RowState resync();
    // Takes rows (among the filtered rows) out of the client-side set without writing anything:
    // rows that the database has already removed, by a statement or by a trigger. A current row
    // that goes leaves the recordset where the row was, as deleteCurrent() does.
    void forgetRows(const QList<int> &rows);

    // Columns of the base table that every UPDATE of a row also sets, whether or not the
    // recordset reads them: the change stamp (date, group, user), asked for at each update.
    using UpdateStamp = std::function<QList<std::pair<QString, QVariant>>()>;
    void setUpdateStamp(UpdateStamp stamp);

    // --- QAbstractTableModel: one row per filtered row, one column per field.
    // setData() writes the cell and updates at once, like a grid edit.
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    void currentRowChanged(int row);
    // A write made through setData() failed (views cannot take exceptions); the row stays
    // pending and the error is also on the connection's error list.
    void writeBackFailed(const db::DatabaseError &error);

private:
    friend class Connection;
    Recordset(std::shared_ptr<RecordsetData> data, std::shared_ptr<Connection> connection);

    struct Private;
    std::unique_ptr<Private> d;
};

using RecordsetPtr = std::shared_ptr<Recordset>;

} // namespace db
