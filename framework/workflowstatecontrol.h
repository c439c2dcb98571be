#pragma once

#include "framework/workflowstateservice.h"

#include <QWidget>
#include <memory>

class QComboBox;

namespace fw {

// The state of one row of a workflow-managed table, shown and changed by the user: the states
// of the workflow in a drop-down, the bound row's state selected. Choosing a state only changes
// the control; the owner confirms it (ConfermaStato) when AfterItem says the user changed it.
//
// Every operation reaches the state service; its database failures are raised to the caller
// as db::DatabaseError, for the form's error handler.
class WorkflowStateControl : public QWidget
{
    Q_OBJECT

public:
    explicit WorkflowStateControl(QWidget *parent = nullptr);

    // The service and the workflow whose states are offered; reads the states.
    void setWorkflow(std::shared_ptr<WorkflowStateService> service, const QString &workflow);
    // The row shown; an empty guid shows no state and disables the control.
    void setGuid(const QString &rowGuid);
    QString guid() const { return m_guid; }
    std::optional<int> state() const;          // the state selected, none when empty
    QString stateDescription() const;
    bool hasService() const { return m_service != nullptr; }

    // The operations the forms call by these names.
    QString GetDescrizioneStatoFromGUID(const QString &rowGuid);
    // Selects the workflow's default state (without confirming it); false when there is none.
    bool GetDefaultFlussoStato();
    // Stores the selected state for the bound row.
    void ConfermaStato();
    void DuplicaStato(const QString &fromGuid, const QString &toGuid);

signals:
    // The selected state changed; byUser is true only for a choice made in the drop-down.
    void AfterItem(bool byUser);

private:
    void select(const std::optional<int> &state);

    std::shared_ptr<WorkflowStateService> m_service;
    QString m_workflow;
    QString m_guid;
    QComboBox *m_states;
};

} // namespace fw
