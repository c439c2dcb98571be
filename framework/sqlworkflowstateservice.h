#pragma once

#include "framework/workflowstateservice.h"
#include "platform/db/connection.h"

namespace fw {

// Row states kept in the host's tables: the states of each workflow in WF01_STATI (one of them
// flagged as the default) and the current state of each row guid in WF02_STATORIGA, stamped
// with who changed it. Database failures are raised as db::DatabaseError. The user and group are
// written into columns 20 characters wide: the shell hands them over already fitted
// (columnwidths::fitToColumn), as SQL Server would refuse a longer name.
class SqlWorkflowStateService : public WorkflowStateService
{
public:
    SqlWorkflowStateService(db::ConnectionPtr connection, const QString &user, const QString &userGroup);

    QString GetDescrizioneStatoFromGUID(const QString &rowGuid) override;
    int GetDefaultFlussoStato(const QString &workflow) override;
    void ConfermaStato(const QString &rowGuid, int state) override;
    void DuplicaStato(const QString &fromGuid, const QString &toGuid) override;
    QList<WorkflowState> GetStatiFlusso(const QString &workflow) override;
    std::optional<int> GetStatoFromGUID(const QString &rowGuid) override;
    bool writesThrough(const db::Connection &connection) const override;
    std::shared_ptr<WorkflowStateService> throughConnection(db::ConnectionPtr connection) const override;

private:
    db::ConnectionPtr m_connection;
    QString m_user;
    QString m_userGroup;
};

} // namespace fw
