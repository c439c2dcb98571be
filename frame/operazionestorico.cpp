#include "frame/operazionestorico.h"

#include "frame/formframe.h"
#include "framework/globalservices.h"
#include "framework/workflowstateservice.h"
#include "platform/db/connection.h"
#include "platform/os/systeminfo.h"

#include <QHash>
#include <QSet>

namespace {

// Per database (its connection string): whether it keeps the journal, and whether the user was
// told it does not.
QHash<QString, bool> &journalByDatabase()
{
    static QHash<QString, bool> known;
    return known;
}

QSet<QString> &toldWithoutJournal()
{
    static QSet<QString> told;
    return told;
}

// The connections an operation is running on: a write inside it (a row saved by a frame the
// action drives) belongs to it, and begins nothing of its own.
QSet<const db::Connection *> &connectionsInOperation()
{
    static QSet<const db::Connection *> running;
    return running;
}

// A journal whose rows' table was dropped by hand would make every write fail deep in its
// triggers (on SQLite, after a long compile of the trigger programs): it is found before the
// first write, and said plainly.
void probeJournal(db::Connection &connection)
{
    try {
        connection.openRecordset(storicostatements::journalProbeQuery());
    } catch (const db::DatabaseError &error) {
        QList<db::DbError> errors = error.errors();
        errors.prepend(
            {QStringLiteral("Lo storico delle modifiche è incompleto (manca la tabella GD91_RIGHESTORICO): "
                            "la modifica non è stata salvata. L'amministratore deve reinstallare lo storico."),
             QStringLiteral("Distinta"),
             {},
             0});
        throw db::DatabaseError(errors, error.statement());
    }
}

} // namespace

OperazioneStorico::OperazioneStorico(FormFrame &form, QString procedure, QString name, std::optional<qint64> typeId,
                                     QString description)
    : m_form(form)
    , m_procedure(std::move(procedure))
{
    m_operation.company = form.companyCode();
    m_operation.typeId = typeId;
    m_operation.name = std::move(name);
    m_operation.description = std::move(description);
    if (const fw::GlobalServices *services = form.globals()) {
        m_operation.user = services->user();
        m_operation.userGroup = services->userGroup();
    }
    m_operation.computer = os::computerName();
}

OperazioneStorico::~OperazioneStorico()
{
    fine();
}

void OperazioneStorico::setReverses(storicostatements::TipoOperazione kind, qint64 operationId)
{
    m_operation.kind = kind;
    m_operation.reverses = operationId;
}

bool OperazioneStorico::storicoInstallato(FormFrame &form)
{
    const db::ConnectionPtr connection = form.connection();
    if (!connection || connection->isReadOnly())
        return false;
    const QString database = connection->connectionString();
    auto known = journalByDatabase().constFind(database);
    const bool installed = known != journalByDatabase().cend()
        ? *known
        : *journalByDatabase().insert(database,
                                      connection->hasTable(QString::fromLatin1(storicostatements::OperationsTable)));
    if (!installed && !toldWithoutJournal().contains(database)) {
        toldWithoutJournal().insert(database);
        form.notifica(QStringLiteral("Lo storico delle modifiche non è installato in questo database: le modifiche "
                                     "vengono salvate senza storico e non si possono annullare."));
    }
    return installed;
}

bool OperazioneStorico::inizia()
{
    if (m_active || !storicoInstallato(m_form))
        return true;
    const db::ConnectionPtr connection = m_form.connection();
    if (connectionsInOperation().contains(connection.get()))
        return true;
    const bool serverSession = !connection->translatesTsql();
    m_operation.open = !serverSession;
    return m_form.step(m_procedure, [&] {
        connection->beginTransaction();
        try {
            probeJournal(*connection);
            connection->execute(storicostatements::insertOperationStatement(m_operation));
            m_id = connection->lastInsertedKey().toLongLong();
            if (serverSession)
                connection->execute(storicostatements::sessionOperationStatement(m_id));
        } catch (...) {
            connection->rollbackTransaction();
            m_id.reset();
            throw;
        }
        m_active = true;
        connectionsInOperation().insert(connection.get());
    });
}

bool OperazioneStorico::iniziaPerStati()
{
    const std::shared_ptr<fw::WorkflowStateService> states = m_form.statiDelFlusso();
    const db::ConnectionPtr connection = m_form.connection();
    if (!states || !connection || !states->writesThrough(*connection))
        return true;
    return inizia();
}

bool OperazioneStorico::fine()
{
    if (!m_active)
        return true;
    m_active = false;
    const db::ConnectionPtr connection = m_form.connection();
    connectionsInOperation().remove(connection.get());
    bool committed = false;
    m_form.step(m_procedure, [&] {
        if (!connection->translatesTsql())
            connection->execute(storicostatements::sessionOperationStatement(std::nullopt));
        connection->execute(storicostatements::closeOperationStatement(*m_id));
        connection->execute(storicostatements::dropEmptyOperationStatement(*m_id));
        connection->commitTransaction();
        committed = true;
    });
    // Given up on (or ignored): the transaction is not left holding the write lock.
    if (!committed)
        connection->rollbackTransaction();
    else
        emit m_form.operazioneConclusa();
    return committed;
}

void OperazioneStorico::annulla()
{
    if (!m_active)
        return;
    m_active = false;
    if (const db::ConnectionPtr connection = m_form.connection()) {
        connectionsInOperation().remove(connection.get());
        if (!connection->translatesTsql())
            FormFrame::quietly(
                [&] { connection->execute(storicostatements::sessionOperationStatement(std::nullopt)); });
        connection->rollbackTransaction();
    }
}
