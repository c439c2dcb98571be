#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <stdexcept>

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
    setEnabled(false);
    connect(m_states, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_showing)
            emit AfterItem(true);
    });
}

void WorkflowStateControl::setWorkflow(std::shared_ptr<WorkflowStateService> service, const QString &workflow)
{
    m_service = std::move(service);
    m_workflow = workflow;
    QScopedValueRollback showing(m_showing, true);
    m_states->clear();
    if (!m_service)
        return;
    for (const WorkflowState &state : m_service->GetStatiFlusso(workflow))
        m_states->addItem(m_upperCase ? state.description.toUpper() : state.description, state.id);
    m_states->setCurrentIndex(-1);
}

void WorkflowStateControl::setGuid(const QString &rowGuid)
{
    m_guid = rowGuid.trimmed();
    const bool bound = m_service && !m_guid.isEmpty();
    setEnabled(bound);
    select(bound ? m_service->GetStatoFromGUID(m_guid) : std::nullopt);
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
    return service().GetDescrizioneStatoFromGUID(rowGuid);
}

bool WorkflowStateControl::GetDefaultFlussoStato()
{
    for (const WorkflowState &state : service().GetStatiFlusso(m_workflow)) {
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
    if (!m_guid.isEmpty() && selected)
        service().ConfermaStato(m_guid, *selected);
}

void WorkflowStateControl::DuplicaStato(const QString &fromGuid, const QString &toGuid)
{
    service().DuplicaStato(fromGuid, toGuid);
}

void WorkflowStateControl::select(const std::optional<int> &state)
{
    const int index = state ? m_states->findData(*state) : -1;
    if (index == m_states->currentIndex())
        return;
    {
        QScopedValueRollback showing(m_showing, true);
        m_states->setCurrentIndex(index);
    }
    emit AfterItem(false);
}

WorkflowStateService &WorkflowStateControl::service() const
{
    if (!m_service)
        throw std::runtime_error("Gestione degli stati non disponibile nel programma ospite.");
    return *m_service;
}

} // namespace fw
