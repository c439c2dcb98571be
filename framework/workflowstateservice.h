#pragma once

#include <QList>
#include <QString>
#include <memory>
#include <optional>

namespace db {
class Connection;
}

namespace fw {

// One state of a workflow, as the state control lists it.
struct WorkflowState
{
    int id = 0;
    QString code;
    QString description;
    bool isDefault = false;
};

// The host's state management of rows, keyed by the row's guid: each row of a workflow-managed
// table is in one state of its workflow at a time.
class WorkflowStateService
{
public:
    virtual ~WorkflowStateService() = default;

    // The description of the row's current state; empty when the row has none yet.
    virtual QString GetDescrizioneStatoFromGUID(const QString &rowGuid) = 0;

    // The default state of a workflow; 0 when the workflow defines none.
    virtual int GetDefaultFlussoStato(const QString &workflow) = 0;

    // Stores the state of a row (creating the row's state record when it has none).
    virtual void ConfermaStato(const QString &rowGuid, int state) = 0;

    // Gives the row `toGuid` the current state of the row `fromGuid` (nothing when it has none).
    virtual void DuplicaStato(const QString &fromGuid, const QString &toGuid) = 0;

    // The states of a workflow in their order, for choosing one.
    virtual QList<WorkflowState> GetStatiFlusso(const QString &workflow) = 0;

    // The row's current state; none when the row has no state yet.
    virtual std::optional<int> GetStatoFromGUID(const QString &rowGuid) = 0;

    // Whether its writes go through this connection, inside the transaction open there: a module
    // can then make a state it stores part of its own work. A service writing on a connection of
    // its own would wait for that transaction's lock instead.
    virtual bool writesThrough(const db::Connection &connection) const = 0;

    // The same states read and written through another connection to the same database (a
    // module's own); null when the host cannot give them so.
    virtual std::shared_ptr<WorkflowStateService>
    throughConnection(std::shared_ptr<db::Connection> connection) const = 0;
};

} // namespace fw
