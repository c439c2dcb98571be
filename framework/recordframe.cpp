#include "framework/recordframe.h"

#include <limits>

#include "framework/controlvalue.h"
#include "framework/logservice.h"

#include <QScopedValueRollback>
#include <QWidget>

namespace fw {

namespace {

const QString pendingChangesQuestion = QStringLiteral("I dati sono stati modificati. Salvare le modifiche?");

} // namespace

RecordFrame::RecordFrame(db::ConnectionPtr connection, QObject *parent)
    : QObject(parent)
    , m_connection(std::move(connection))
{ }

RecordFrame::~RecordFrame()
{
    for (const auto &connection : std::as_const(m_recordsetConnections))
        disconnect(connection);
}

void RecordFrame::setLogService(LogService *log, const QString &title)
{
    m_log = log;
    m_title = title;
}

void RecordFrame::open(const QString &sql, const QString &keyField)
{
    attach(m_connection->openRecordset(sql), sql, keyField);
}

void RecordFrame::attach(db::RecordsetPtr recordset, const QString &sql, const QString &keyField)
{
    m_sql = sql;
    m_keyField = keyField;
    setRecordset(std::move(recordset));
    if (m_recordset && !m_recordset->isEmpty())
        m_recordset->moveFirst();
    refreshControls();
    setState(Browse);
    announceRow();
}

void RecordFrame::requery()
{
    QVariant key;
    if (!m_keyField.isEmpty() && m_recordset && m_recordset->currentRow() >= 0)
        key = m_recordset->value(m_keyField);
    db::RecordsetPtr fresh = m_connection->openRecordset(m_sql);
    if (!fresh->isEmpty())
        fresh->moveFirst();
    if (!key.isNull()) {
        const int keyIndex = fresh->fieldIndex(m_keyField);
        for (int row = 0; keyIndex >= 0 && row < fresh->recordCount(); ++row) {
            if (fresh->valueAt(row, keyIndex) == key) {
                fresh->setCurrentRow(row);
                break;
            }
        }
    }
    setRecordset(fresh);
    refreshControls();
    setState(Browse);
    emit recordsetReplaced(m_recordset);
    announceRow();
}

void RecordFrame::bind(QWidget *control, const QString &fieldName)
{
    m_bindings.append({control, fieldName});
    controlvalue::onChange(control, this, [this, control] { controlEdited(control); });
    refreshControls();
}

void RecordFrame::watch(QWidget *control)
{
    m_bindings.append({control, QString()});
    controlvalue::onChange(control, this, [this, control] { controlEdited(control); });
}

void RecordFrame::refreshControls()
{
    m_unconverted.clear();
    refreshFields(0, std::numeric_limits<int>::max());
}

// The controls bound to the fields firstField..lastField show the current row again.
void RecordFrame::refreshFields(int firstField, int lastField)
{
    const bool onRow = m_recordset && m_recordset->currentRow() >= 0;
    m_filling = true;
    for (const Binding &binding : std::as_const(m_bindings)) {
        if (!binding.control || binding.fieldName.isEmpty())
            continue;
        const int field = m_recordset ? m_recordset->fieldIndex(binding.fieldName) : -1;
        if (field >= 0 && (field < firstField || field > lastField))
            continue;
        controlvalue::write(binding.control, onRow && field >= 0 ? m_recordset->value(field) : QVariant());
    }
    m_filling = false;
}

bool RecordFrame::execute(bool refresh, bool moveToResult)
{
    if (m_state != Insert || !m_recordset || m_recordset->currentRow() < 0)
        return false;
    const int newRow = m_recordset->currentRow();

    if (refresh) {
        db::RecordsetPtr fresh = m_connection->openRecordset(m_sql);
        const int match = findMatch(*fresh, -1);
        if (match < 0)
            return false;
        if (moveToResult) {
            m_recordset->cancelUpdate();
            setRecordset(fresh);
            m_recordset->setCurrentRow(match);
            refreshControls();
            setState(Browse);
            emit recordsetReplaced(m_recordset);
            announceRow();
            emit existingRowFound();
        }
        return true;
    }

    const int match = findMatch(*m_recordset, newRow);
    if (match < 0)
        return false;
    if (moveToResult) {
        m_recordset->cancelUpdate();
        m_recordset->setCurrentRow(match);
        refreshControls();
        setState(Browse);
        announceRow();
        emit existingRowFound();
    }
    return true;
}

void RecordFrame::addNew()
{
    m_recordset->addNew();
    m_typed = false;
    refreshControls();
    setState(Insert);
    announceRow();
    emit AfterAddNew();
}

bool RecordFrame::update()
{
    // A change typed only in a watched control leaves the row itself untouched until the
    // handlers write it.
    if (!m_recordset || m_recordset->currentRow() < 0 || (!m_recordset->isEditing() && m_state != Edit))
        return true;
    bool cancel = false;
    emit ValidateRecord(cancel);
    if (cancel)
        return false;
    emit BeforeUpdate(cancel);
    if (cancel)
        return false;
    if (!m_unconverted.isEmpty())
        throw db::DatabaseError(
            {{.description = m_unconverted.cbegin().value(), .source = QStringLiteral("Recordset")}});
    write(m_state == Insert ? QStringLiteral("Inserimento") : QStringLiteral("Modifica"),
          [this] { m_recordset->update(); });
    m_typed = false;
    refreshControls();
    setState(Browse);
    return true;
}

void RecordFrame::undo()
{
    if (m_recordset && m_recordset->currentRow() >= 0 && m_recordset->isEditing())
        m_recordset->cancelUpdate();
    m_typed = false;
    refreshControls();
    setState(Browse);
    announceRow();
    emit AfterUndo();
}

bool RecordFrame::leaveRow()
{
    if (m_state == Insert && !m_typed) {
        undo();
        return true;
    }
    return update();
}

bool RecordFrame::deleteCurrent()
{
    if (!m_recordset || m_recordset->currentRow() < 0)
        return false;
    bool cancel = false;
    emit BeforeDelete(cancel);
    if (cancel)
        return false;
    write(QStringLiteral("Eliminazione"), [this] { m_recordset->deleteCurrent(); });
    refreshControls();
    setState(Browse);
    announceRow();
    return true;
}

void RecordFrame::write(const QString &kind, const std::function<void()> &statement)
{
    if (m_writeScope)
        m_writeScope(kind, statement);
    else
        statement();
}

bool RecordFrame::mayClose()
{
    if (!hasPendingChanges()) {
        if (m_state == Insert)
            undo();
        return true;
    }
    const int answer = m_log
        ? m_log->showMessage(pendingChangesQuestion, m_title,
                             MessageStyle::YesNoCancel + MessageStyle::Question + MessageStyle::DefaultButton3)
        : int(Answer::No);
    switch (answer) {
    case Answer::Yes: return update();
    case Answer::No: undo(); return true;
    default: return false;
    }
}

void RecordFrame::setRecordset(db::RecordsetPtr recordset)
{
    for (const auto &connection : std::as_const(m_recordsetConnections))
        disconnect(connection);
    m_recordsetConnections.clear();
    m_recordset = std::move(recordset);
    m_typed = false;
    if (!m_recordset)
        return;
    auto showRow = [this] {
        if (m_filling)
            return;
        refreshControls();
        announceRow();
    };
    // A change of cells touches the controls only when it is on the current row and in the
    // fields they show: writing other rows (a whole branch at a time) leaves them alone.
    auto followCells = [this](const QModelIndex &topLeft, const QModelIndex &bottomRight) {
        const int row = m_recordset->currentRow();
        if (!m_filling && row >= topLeft.row() && row <= bottomRight.row())
            refreshFields(topLeft.column(), bottomRight.column());
    };
    m_recordsetConnections << connect(m_recordset.get(), &db::Recordset::currentRowChanged, this, showRow)
                           << connect(m_recordset.get(), &QAbstractItemModel::dataChanged, this, followCells)
                           << connect(m_recordset.get(), &QAbstractItemModel::modelReset, this, showRow);
}

// The handlers fill watched controls: what they write is no change of the row.
void RecordFrame::announceRow()
{
    QScopedValueRollback filling(m_filling, true);
    emit rowShown();
}

void RecordFrame::setState(int state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit ChangeStatus(state);
}

void RecordFrame::controlEdited(QWidget *control)
{
    if (m_filling || !m_recordset || m_recordset->currentRow() < 0)
        return;
    for (const Binding &binding : std::as_const(m_bindings)) {
        if (binding.control != control)
            continue;
        const int index = m_recordset->fieldIndex(binding.fieldName);
        if (index < 0)
            continue;
        const QVariant value = controlvalue::toFieldValue(controlvalue::read(control), m_recordset->field(index).type);
        m_filling = true; // the row change must not echo back into the control being typed in
        try {
            m_recordset->setValue(index, value);
            m_unconverted.remove(control);
        } catch (const db::DatabaseError &error) {
            // Half-typed text (a date being written) is not a value yet.
            m_unconverted.insert(control, error.message());
        }
        m_filling = false;
    }
    if (m_state == Insert)
        m_typed = true;
    else
        setState(Edit);
}

bool RecordFrame::hasPendingChanges() const
{
    return m_state == Edit || (m_state == Insert && m_typed);
}

int RecordFrame::findMatch(const db::Recordset &candidates, int skipRow) const
{
    struct Criterion
    {
        int candidateField;
        db::FieldType type;
        QVariant value;
    };
    QList<Criterion> criteria;
    for (int i = 0; i < m_recordset->fieldCount(); ++i) {
        const QVariant value = m_recordset->value(i);
        if (value.isNull() || (value.typeId() == QMetaType::QString && value.toString().trimmed().isEmpty()))
            continue;
        const int candidateField = candidates.fieldIndex(m_recordset->field(i).name);
        if (candidateField < 0)
            return -1;
        criteria.append({candidateField, m_recordset->field(i).type, value});
    }
    if (criteria.isEmpty())
        return -1;
    for (int row = 0; row < candidates.recordCount(); ++row) {
        if (row == skipRow)
            continue;
        bool all = true;
        for (const Criterion &c : std::as_const(criteria)) {
            if (!controlvalue::sameValue(c.value, candidates.valueAt(row, c.candidateField), c.type)) {
                all = false;
                break;
            }
        }
        if (all)
            return row;
    }
    return -1;
}

} // namespace fw
