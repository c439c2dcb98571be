#pragma once

#include <QList>
#include <QString>

namespace fw {

// The host's state management of rows, keyed by the row's guid: each row of a workflow-managed
// table is in one state of its workflow at a time.
class WorkflowStateService
{
public:
    struct Stato
    {
        int id = 0;
        QString descrizione;
    };

    virtual ~WorkflowStateService() = default;

    // The states of a workflow in their order, as a state control offers them.
    virtual QList<Stato> StatiFlusso(const QString &workflow) = 0;

    // The description of the row's current state; empty when the row has none yet.
    virtual QString GetDescrizioneStatoFromGUID(const QString &rowGuid) = 0;

    // The default state of a workflow; 0 when the workflow defines none.
    virtual int GetDefaultFlussoStato(const QString &workflow) = 0;

    // Stores the state of a row (creating the row's state record when it has none).
    virtual void ConfermaStato(const QString &rowGuid, int state) = 0;

    // Gives the row `toGuid` the current state of the row `fromGuid` (nothing when it has none).
    virtual void DuplicaStato(const QString &fromGuid, const QString &toGuid) = 0;
};

} // namespace fw
