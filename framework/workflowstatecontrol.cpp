#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace fw {

WorkflowStateControl::WorkflowStateControl(QWidget *parent)
    : QWidget(parent)
    , m_states(new QComboBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_states);
    setFocusProxy(m_states);
    m_states->setObjectName(QStringLiteral("stati"));
    m_states->setToolTip(tr("Stato del legame selezionato"));
    setEnabled(false);
    connect(m_states, &QComboBox::activated, this, [this] { emit AfterItem(true); });
}

void WorkflowStateControl::setWorkflow(std::shared_ptr<WorkflowStateService> service, const QString &workflow)
{
    m_service = std::move(service);
    m_workflow = workflow;
    const QSignalBlocker quiet(m_states);
    m_states->clear();
    if (!m_service)
        return;
    for (const WorkflowState &state : m_service->GetStatiFlusso(workflow))
        m_states->addItem(state.description, state.id);
    m_states->setCurrentIndex(-1);
}

void WorkflowStateControl::setGuid(const QString &rowGuid)
{
    m_guid = rowGuid;
    setEnabled(m_service && !rowGuid.isEmpty());
    select(m_service && !rowGuid.isEmpty() ? m_service->GetStatoFromGUID(rowGuid) : std::nullopt);
}

std::optional<int> WorkflowStateControl::state() const
{
    if (m_states->currentIndex() < 0)
        return std::nullopt;
    return m_states->currentData().toInt();
}

QString WorkflowStateControl::stateDescription() const
{
    return m_states->currentIndex() < 0 ? QString() : m_states->currentText();
}

QString WorkflowStateControl::GetDescrizioneStatoFromGUID(const QString &rowGuid)
{
    return m_service ? m_service->GetDescrizioneStatoFromGUID(rowGuid) : QString();
}

bool WorkflowStateControl::GetDefaultFlussoStato()
{
    if (!m_service)
        return false;
    for (const WorkflowState &state : m_service->GetStatiFlusso(m_workflow)) {
        if (state.isDefault) {
            select(state.id);
            return true;
        }
    }
    return false;
}

void WorkflowStateControl::ConfermaStato()
{
    const std::optional<int> selected = state();
    if (m_service && !m_guid.isEmpty() && selected)
        m_service->ConfermaStato(m_guid, *selected);
}

void WorkflowStateControl::DuplicaStato(const QString &fromGuid, const QString &toGuid)
{
    if (m_service)
        m_service->DuplicaStato(fromGuid, toGuid);
}

void WorkflowStateControl::select(const std::optional<int> &state)
{
    const int index = state ? m_states->findData(*state) : -1;
    if (index == m_states->currentIndex())
        return;
    {
        const QSignalBlocker quiet(m_states);
        m_states->setCurrentIndex(index);
    }
    emit AfterItem(false);
}

} // namespace fw
