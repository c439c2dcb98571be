#pragma once

#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

class QWidget;

namespace fw {

class LogService;

// Binds a recordset to edit controls by field name: the controls show the current row and
// write what the user types back into it.
//
// States: Browse (0) on a saved row, Edit (1) once a bound control changed it, Insert (2) on a
// new row. In Insert the typed values are also the criteria of a query by example (execute).
//
// The frame runs its own query (open, requery, execute) and writes rows through the recordset;
// database failures are raised as db::DatabaseError to the caller, whose error handler reports
// them. The six events are the forms' hooks; a handler sets cancel to refuse the operation.
class RecordFrame : public QObject
{
    Q_OBJECT

public:
    enum State : int { Browse = 0, Edit = 1, Insert = 2 };

    explicit RecordFrame(db::ConnectionPtr connection, QObject *parent = nullptr);
    ~RecordFrame() override;

    // The service that asks about pending changes before closing, and the title it uses.
    void setLogService(LogService *log, const QString &title);

    // Runs sql and shows its first row. keyField identifies rows across reloads.
    void open(const QString &sql, const QString &keyField = {});
    // Takes a recordset already opened on sql.
    void attach(db::RecordsetPtr recordset, const QString &sql, const QString &keyField = {});
    // Runs the query again and stays on the same key when it is still there.
    void requery();

    db::RecordsetPtr recordset() const { return m_recordset; }
    db::ConnectionPtr connection() const { return m_connection; }
    QString sql() const { return m_sql; }
    QString keyField() const { return m_keyField; }
    int state() const { return m_state; }

    // Supported: line edits, combo boxes (by item data when the items carry it, else by text),
    // check boxes, spin boxes, date edits, plain text edits and labels (display only).
    void bind(QWidget *control, const QString &fieldName);
    // A control the form fills and reads itself (a code shown in place of a stored identifier):
    // the frame never writes it, but what the user types in it is a change of the current row.
    void watch(QWidget *control);
    void refreshControls();

    // Query by example, from Insert: looks for the first row whose fields equal every value of
    // the new row (text compared trimmed and case-insensitive). refresh reads the query again
    // from the database before looking, instead of searching the rows already read; moveToResult
    // drops the new row and shows the row found, in Browse. Returns whether a row was found;
    // when none is, the new row and its values stay.
    bool execute(bool refresh, bool moveToResult);

    void addNew();
    // Saves the pending changes of the current row; false when a handler refused them.
    bool update();
    // Makes the current row ready to be left for another: a new row nothing was typed in is
    // dropped, pending changes are saved through the events; false when a handler refused them.
    bool leaveRow();
    void undo();
    // Deletes the current row; false when a handler refused it.
    bool deleteCurrent();

    // Whether the form may close: pending changes are saved, discarded or kept as the user
    // answers the question; without pending changes the answer is yes.
    bool mayClose();

signals:
    void BeforeUpdate(bool &cancel);
    void ValidateRecord(bool &cancel);
    void ChangeStatus(int state);
    void AfterUndo();
    void BeforeDelete(bool &cancel);
    void AfterAddNew();
    // The frame now works on another recordset (after execute or requery); views rebind.
    void recordsetReplaced(const db::RecordsetPtr &recordset);
    // The controls show another row, or the current row afresh (after an undo, a new row, a
    // query): watched controls are filled again. Not emitted for changes within the row.
    void rowShown();
    // A query by example from a new row found a saved row and now shows it in place of the new
    // one: what the user types next changes that row.
    void existingRowFound();

public:
    // What each write of the row runs inside (the owner's transaction, say): kind is
    // "Inserimento", "Modifica" or "Eliminazione"; the scope calls write once and lets its
    // exceptions through. None: the write runs as it is.
    using WriteScope = std::function<void(const QString &kind, const std::function<void()> &write)>;
    void setWriteScope(WriteScope scope) { m_writeScope = std::move(scope); }

private:
    void write(const QString &kind, const std::function<void()> &statement);

    WriteScope m_writeScope;
    struct Binding
    {
        QPointer<QWidget> control;
        QString fieldName;
    };

    void setRecordset(db::RecordsetPtr recordset);
    void refreshFields(int firstField, int lastField);
    void setState(int state);
    void announceRow();
    void controlEdited(QWidget *control);
    bool hasPendingChanges() const;
    int findMatch(const db::Recordset &candidates, int skipRow) const;

    db::ConnectionPtr m_connection;
    db::RecordsetPtr m_recordset;
    QString m_sql;
    QString m_keyField;
    int m_state = Browse;
    bool m_typed = false;   // a control changed the new row
    bool m_filling = false; // controls are being filled from the row
    // Controls whose text does not convert to their field's type, with the reason: the row
    // keeps its value and a save is refused while any is left.
    QHash<QWidget *, QString> m_unconverted;
    QList<Binding> m_bindings;
    LogService *m_log = nullptr;
    QString m_title;
    QList<QMetaObject::Connection> m_recordsetConnections;
};

} // namespace fw
