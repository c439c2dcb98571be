#include "framework/sqlworkflowstateservice.h"

#include "platform/db/recordset.h"

#include <QDateTime>

namespace fw {

namespace {

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\'');
}

QString now()
{
    return QStringLiteral("CONVERT(DateTime,'%1',103)")
        .arg(QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")));
}

} // namespace

SqlWorkflowStateService::SqlWorkflowStateService(db::ConnectionPtr connection, const QString &user,
                                                 const QString &userGroup)
    : m_connection(std::move(connection))
    , m_user(user)
    , m_userGroup(userGroup)
{
}

QList<WorkflowStateService::Stato> SqlWorkflowStateService::StatiFlusso(const QString &workflow)
{
    const auto rs = m_connection->openRecordset(
        QStringLiteral("SELECT WF01_ID, WF01_DESCR FROM WF01_STATI WHERE WF01_FLUSSO = %1 ORDER BY WF01_ORDINE")
            .arg(quoted(workflow)));
    QList<Stato> states;
    for (int row = 0; row < rs->recordCount(); ++row)
        states.append({rs->valueAt(row, 0).toInt(), rs->valueAt(row, 1).toString().trimmed()});
    return states;
}

QString SqlWorkflowStateService::GetDescrizioneStatoFromGUID(const QString &rowGuid)
{
    const auto rs = m_connection->openRecordset(
        QStringLiteral("SELECT WF01_DESCR FROM WF02_STATORIGA INNER JOIN WF01_STATI ON WF02_ID_WF01 = WF01_ID"
                       " WHERE WF02_GUID = %1").arg(quoted(rowGuid)));
    return rs->isEmpty() ? QString() : rs->value(0).toString().trimmed();
}

int SqlWorkflowStateService::GetDefaultFlussoStato(const QString &workflow)
{
    const auto rs = m_connection->openRecordset(
        QStringLiteral("SELECT TOP 1 WF01_ID FROM WF01_STATI WHERE WF01_FLUSSO = %1 AND WF01_FLGDEFAULT = 1"
                       " ORDER BY WF01_ORDINE").arg(quoted(workflow)));
    return rs->isEmpty() ? 0 : rs->value(0).toInt();
}

void SqlWorkflowStateService::ConfermaStato(const QString &rowGuid, int state)
{
    const int changed = m_connection->execute(
        QStringLiteral("UPDATE WF02_STATORIGA SET WF02_ID_WF01 = %1, WF02_DATAVAR = %2,"
                       " WF02_GRUPPOVAR = %3, WF02_UTENTEVAR = %4 WHERE WF02_GUID = %5")
            .arg(QString::number(state), now(), quoted(m_userGroup), quoted(m_user), quoted(rowGuid)));
    if (changed > 0)
        return;
    m_connection->execute(
        QStringLiteral("INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_ID_WF01, WF02_DATACRE, WF02_GRUPPOCRE,"
                       " WF02_UTENTECRE, WF02_DATAVAR, WF02_GRUPPOVAR, WF02_UTENTEVAR)"
                       " VALUES (%1, %2, %3, %4, %5, %3, %4, %5)")
            .arg(quoted(rowGuid), QString::number(state), now(), quoted(m_userGroup), quoted(m_user)));
}

void SqlWorkflowStateService::DuplicaStato(const QString &fromGuid, const QString &toGuid)
{
    const int state = currentState(fromGuid);
    if (state != 0)
        ConfermaStato(toGuid, state);
}

int SqlWorkflowStateService::currentState(const QString &rowGuid)
{
    const auto rs = m_connection->openRecordset(
        QStringLiteral("SELECT WF02_ID_WF01 FROM WF02_STATORIGA WHERE WF02_GUID = %1").arg(quoted(rowGuid)));
    return rs->isEmpty() ? 0 : rs->value(0).toInt();
}

} // namespace fw
