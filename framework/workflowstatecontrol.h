#pragma once

#include "framework/workflowstateservice.h"

#include <QWidget>
#include <memory>

class QComboBox;

namespace fw {

// The state of one row of a workflow-managed table, shown and chosen from the workflow's
// states. The control is bound to the row by its guid; without a guid (a row not saved yet) it
// is empty and disabled. Choosing a state changes nothing by itself: AfterItem tells the form,
// which confirms it (ConfermaStato).
//
// Every operation reaches the state service; its database failures are raised to the caller
// as db::DatabaseError, for the form's error handler. Without a service the control stays
// disabled and the operations that need one throw.
class WorkflowStateControl : public QWidget
{
    Q_OBJECT

public:
    explicit WorkflowStateControl(QWidget *parent = nullptr);

    // The service and the workflow whose states are offered; reads the states.
    void setWorkflow(std::shared_ptr<WorkflowStateService> service, const QString &workflow);
    // States shown in capitals, as some forms show them.
    void setUpperCase(bool upperCase) { m_upperCase = upperCase; }
    // The row shown; an empty guid shows no state and disables the control.
    void setGuid(const QString &rowGuid);
    QString guid() const { return m_guid; }
    std::optional<int> state() const; // the state selected, none when empty
    QString stateDescription() const; // as shown
    bool hasService() const { return m_service != nullptr; }
    QComboBox *combo() const { return m_states; }

    // The operations the forms call by these names.
    QString GetDescrizioneStatoFromGUID(const QString &rowGuid);
    // Selects the workflow's default state (without confirming it); false when there is none.
    bool GetDefaultFlussoStato();
    // Stores the selected state for the bound row.
    void ConfermaStato();
    void DuplicaStato(const QString &fromGuid, const QString &toGuid);

signals:
    // The selected state changed: by a choice in the drop-down (true) or by the code (false).
    void AfterItem(bool byUser);

private:
    void select(const std::optional<int> &state);
    WorkflowStateService &service() const;

    std::shared_ptr<WorkflowStateService> m_service;
    QString m_workflow;
    QString m_guid;
    QComboBox *m_states;
    bool m_upperCase = false;
    bool m_showing = false; // the code is changing the selection
};

} // namespace fw
