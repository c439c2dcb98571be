#include "framework/sqlworkflowstateservice.h"

#include "framework/workflowstatements.h"
#include "platform/db/recordset.h"

#include <QDateTime>

namespace fw {

SqlWorkflowStateService::SqlWorkflowStateService(db::ConnectionPtr connection, const QString &user,
                                                 const QString &userGroup)
    : m_connection(std::move(connection))
    , m_user(user)
    , m_userGroup(userGroup)
{ }

QString SqlWorkflowStateService::GetDescrizioneStatoFromGUID(const QString &rowGuid)
{
    const auto rs = m_connection->openRecordset(workflowstatements::stateDescriptionQuery(rowGuid));
    return rs->isEmpty() ? QString() : rs->value(0).toString().trimmed();
}

int SqlWorkflowStateService::GetDefaultFlussoStato(const QString &workflow)
{
    const auto rs = m_connection->openRecordset(workflowstatements::defaultStateQuery(workflow));
    return rs->isEmpty() ? 0 : rs->value(0).toInt();
}

void SqlWorkflowStateService::ConfermaStato(const QString &rowGuid, int state)
{
    const int changed = m_connection->execute(
        workflowstatements::changeStateStatement(rowGuid, state, QDateTime::currentDateTime(), m_userGroup, m_user));
    if (changed > 0)
        return;
    m_connection->execute(
        workflowstatements::insertStateStatement(rowGuid, state, QDateTime::currentDateTime(), m_userGroup, m_user));
}

void SqlWorkflowStateService::DuplicaStato(const QString &fromGuid, const QString &toGuid)
{
    // A state numbered 0 is a state like any other: only a row without a record has none.
    if (const std::optional<int> state = GetStatoFromGUID(fromGuid))
        ConfermaStato(toGuid, *state);
}

QList<WorkflowState> SqlWorkflowStateService::GetStatiFlusso(const QString &workflow)
{
    const auto rs = m_connection->openRecordset(workflowstatements::workflowStatesQuery(workflow));
    QList<WorkflowState> states;
    for (int row = 0; row < rs->recordCount(); ++row) {
        states.append({rs->valueAt(row, 0).toInt(), rs->valueAt(row, 1).toString().trimmed(),
                       rs->valueAt(row, 2).toString().trimmed(), rs->valueAt(row, 3).toInt() != 0});
    }
    return states;
}

std::optional<int> SqlWorkflowStateService::GetStatoFromGUID(const QString &rowGuid)
{
    const auto rs = m_connection->openRecordset(workflowstatements::rowStateQuery(rowGuid));
    if (rs->isEmpty())
        return std::nullopt;
    return rs->valueAt(0, 0).toInt();
}

bool SqlWorkflowStateService::writesThrough(const db::Connection &connection) const
{
    return m_connection.get() == &connection;
}

std::shared_ptr<WorkflowStateService> SqlWorkflowStateService::throughConnection(db::ConnectionPtr connection) const
{
    return std::make_shared<SqlWorkflowStateService>(std::move(connection), m_user, m_userGroup);
}

} // namespace fw
