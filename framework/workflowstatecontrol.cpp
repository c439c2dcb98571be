#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <stdexcept>

namespace fw {

WorkflowStateControl::WorkflowStateControl(QWidget *parent)
    : QWidget(parent)
    , m_combo(new QComboBox(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_combo);
    setFocusProxy(m_combo);
    setEnabled(false);
    connect(m_combo, &QComboBox::currentIndexChanged, this, [this] {
        if (!m_showing)
            emit AfterItem(true);
    });
}

WorkflowStateControl::~WorkflowStateControl() = default;

void WorkflowStateControl::setService(std::shared_ptr<WorkflowStateService> service, const QString &workflow)
{
    m_service = std::move(service);
    m_workflow = workflow;
    QScopedValueRollback showing(m_showing, true);
    m_combo->clear();
    for (const WorkflowStateService::Stato &state : this->service().StatiFlusso(m_workflow))
        m_combo->addItem(state.descrizione.toUpper(), state.id);
    m_combo->setCurrentIndex(-1);
}

void WorkflowStateControl::setGuid(const QString &rowGuid)
{
    m_guid = rowGuid.trimmed();
    setEnabled(!m_guid.isEmpty() && m_service);
    if (m_guid.isEmpty() || !m_service) {
        showState(-1);
        return;
    }
    const QString description = service().GetDescrizioneStatoFromGUID(m_guid).toUpper();
    const int index = description.isEmpty() ? -1 : m_combo->findText(description);
    showState(index < 0 ? -1 : m_combo->itemData(index).toInt());
}

int WorkflowStateControl::stato() const
{
    return m_combo->currentIndex() < 0 ? -1 : m_combo->currentData().toInt();
}

QString WorkflowStateControl::testo() const
{
    return m_combo->currentText();
}

QString WorkflowStateControl::GetDescrizioneStatoFromGUID(const QString &rowGuid)
{
    return service().GetDescrizioneStatoFromGUID(rowGuid);
}

void WorkflowStateControl::GetDefaultFlussoStato()
{
    showState(service().GetDefaultFlussoStato(m_workflow));
    emit AfterItem(false);
}

void WorkflowStateControl::ConfermaStato()
{
    if (m_guid.isEmpty() || stato() < 0)
        return;
    service().ConfermaStato(m_guid, stato());
}

void WorkflowStateControl::DuplicaStato(const QString &fromGuid, const QString &toGuid)
{
    service().DuplicaStato(fromGuid, toGuid);
}

void WorkflowStateControl::showState(int state)
{
    QScopedValueRollback showing(m_showing, true);
    m_combo->setCurrentIndex(state < 0 ? -1 : m_combo->findData(state));
}

WorkflowStateService &WorkflowStateControl::service() const
{
    if (!m_service)
        throw std::runtime_error("Gestione degli stati non disponibile nel programma ospite.");
    return *m_service;
}

} // namespace fw
