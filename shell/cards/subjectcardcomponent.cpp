#include "shell/cards/subjectcardcomponent.h"

#include "framework/activenavigator.h"
#include "shell/cards/subjectcardform.h"

const QString SubjectCardComponent::CustomerCard = QStringLiteral("CARDS.CustomerCard");
const QString SubjectCardComponent::SupplierCard = QStringLiteral("CARDS.SupplierCard");

SubjectCardComponent::SubjectCardComponent(int subjectKind, QObject *parent)
    : QObject(parent)
    , m_subjectKind(subjectKind)
{ }

SubjectCardComponent::~SubjectCardComponent() = default;

SubjectCardForm *SubjectCardComponent::form() const
{
    return m_form;
}

QVariant SubjectCardComponent::ShowForm()
{
    auto *form = new SubjectCardForm(m_subjectKind);
    m_form = form;
    form->setActiveDll(this);
    form->setEntryClass(this);
    if (m_modal)
        form->showModal();
    else
        form->showModeless(m_activeFrame);
    return {};
}

QVariant SubjectCardComponent::CloseForm()
{
    return m_form ? QVariant(m_form->unload()) : QVariant(false);
}

QVariant SubjectCardComponent::TransferData(const QVariant &data)
{
    const QVariantMap values = data.toMap();
    if (m_form && values.contains(QStringLiteral("CliFor")))
        m_form->mostraSoggetto(values.value(QStringLiteral("Ditta")).toInt(),
                               values.value(QStringLiteral("CliFor")).toLongLong());
    return {};
}
