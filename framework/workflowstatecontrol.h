#pragma once

#include "framework/workflowstateservice.h"

#include <QWidget>
#include <memory>

class QComboBox;

namespace fw {

// The state of one row in its workflow, shown in capitals and chosen from the workflow's
// states. The control is bound to the row by its guid; without a guid (a row not saved yet) it
// is empty and disabled. Choosing a state changes nothing by itself: AfterItem tells the form,
// which confirms it. Failures of the host's state management are raised as exceptions to the
// form's procedure that called the operation.
class WorkflowStateControl : public QWidget
{
    Q_OBJECT

public:
    explicit WorkflowStateControl(QWidget *parent = nullptr);
    ~WorkflowStateControl() override;

    // The host's state management and the workflow whose states are offered; reads the states.
    void setService(std::shared_ptr<WorkflowStateService> service, const QString &workflow);

    // Binds the control to a row and shows the row's current state (none when it has none yet).
    void setGuid(const QString &rowGuid);
    QString guid() const { return m_guid; }

    int stato() const;                 // the state shown; -1 for none
    QString testo() const;             // its description as shown

    // --- the operations of the host's state control
    QString GetDescrizioneStatoFromGUID(const QString &rowGuid);
    void GetDefaultFlussoStato();      // shows the workflow's default state
    void ConfermaStato();              // stores the state shown for the bound row
    void DuplicaStato(const QString &fromGuid, const QString &toGuid);

    QComboBox *combo() const { return m_combo; }

signals:
    // The state shown changed: by the user's choice (true) or by the code (false).
    void AfterItem(bool changedByUser);

private:
    void showState(int state);
    WorkflowStateService &service() const;

    QComboBox *m_combo;
    std::shared_ptr<WorkflowStateService> m_service;
    QString m_workflow;
    QString m_guid;
    bool m_showing = false;
};

} // namespace fw
