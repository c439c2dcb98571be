#include "shell/shellmodulemanager.h"

#include "framework/cinterface.h"
#include "framework/globalservices.h"
#include "framework/logservice.h"
#include "shell/componentcatalog.h"

#include <QHash>

namespace {

// The suite's managements that a module may ask for, by the names the user knows them by.
QString managementName(const QString &programId)
{
    static const QHash<QString, QString> names = {
        {QStringLiteral("priolist.pricelists"), QStringLiteral("Gestione listini e condizioni")},
        {QStringLiteral("prioprov.providers"), QStringLiteral("Configurazione condizioni")},
        {QStringLiteral("priotab.prioritytables"), QStringLiteral("Configurazione priorità")},
        {QStringLiteral("cards.customercard"), QStringLiteral("Scheda cliente")},
        {QStringLiteral("cards.suppliercard"), QStringLiteral("Scheda fornitore")},
    };
    return names.value(programId.toLower());
}

} // namespace

ShellModuleManager::ShellModuleManager(const ComponentCatalog &catalog, const fw::HostContext &shell)
    : m_catalog(catalog)
    , m_shell(shell)
{ }

ShellModuleManager::~ShellModuleManager() = default;

fw::Cinterface *ShellModuleManager::open(const QString &programId, const fw::HostContext &context)
{
    std::unique_ptr<fw::Cinterface> component = m_catalog.create(programId);
    if (!component) {
        const QString name = managementName(programId);
        notInstalled(name.isEmpty()
                         ? QStringLiteral("Il componente \"%1\" non è installato.").arg(programId)
                         : QStringLiteral("La gestione \"%1\" non è installata in questo programma (componente %2).")
                               .arg(name, programId));
        return nullptr;
    }
    fw::Cinterface *opened = component.get();
    m_components.push_back(std::move(component));
    fw::fillHostContract(*opened, context);
    opened->ShowForm();
    return opened;
}

bool ShellModuleManager::openComponent(const QString &programId, const fw::Cinterface &caller)
{
    return open(programId, contextFrom(caller)) != nullptr;
}

bool ShellModuleManager::openCreatedComponent(std::unique_ptr<fw::Cinterface> component)
{
    if (!component)
        return false;
    // Its host objects are the caller's choice; where it shows is the shell's.
    fw::Cinterface *opened = component.get();
    m_components.push_back(std::move(component));
    opened->setActiveFrame(m_shell.activeFrame);
    opened->setWindowModal(false);
    opened->ShowForm();
    return true;
}

bool ShellModuleManager::openPromotions(const QString &filter)
{
    return notInstalled(
        QStringLiteral("La gestione delle promozioni non è installata.\nFiltro richiesto:%1").arg(filter));
}

bool ShellModuleManager::openContract(const fw::ContractReference &contract)
{
    return notInstalled(
        QStringLiteral("La gestione dei contratti non è installata.\nContratto richiesto: %1 versione %2")
            .arg(contract.ContrattoCod.toString().trimmed(), contract.ContrattoVer.toString()));
}

bool ShellModuleManager::openSubjectMasterData(int subjectKind, qint64 subjectCode)
{
    const QString archive = subjectKind == 0 ? QStringLiteral("L'anagrafica dei clienti")
                                             : QStringLiteral("L'anagrafica dei fornitori");
    return notInstalled(QStringLiteral("%1 non è installata.\nSoggetto richiesto: %2").arg(archive).arg(subjectCode));
}

bool ShellModuleManager::openSubjectCard(const QString &programId, int company, qint64 subjectCode)
{
    fw::Cinterface *card = open(programId, m_shell);
    if (!card)
        return false;
    // The card learns its subject the way the host pushes values into a component.
    card->TransferData(QVariantMap {{QStringLiteral("Ditta"), company}, {QStringLiteral("CliFor"), subjectCode}});
    return true;
}

fw::HostContext ShellModuleManager::contextFrom(const fw::Cinterface &caller) const
{
    fw::HostContext context = fw::HostContext::from(caller);
    context.activeFrame = m_shell.activeFrame;
    context.modal = false;
    return context;
}

bool ShellModuleManager::notInstalled(const QString &text)
{
    if (!m_shell.globals)
        return false;
    if (const std::shared_ptr<fw::LogService> log = m_shell.globals->createLogService())
        log->showMessage(text, m_shell.globals->applicationTitle(), fw::MessageStyle::Warning);
    return false;
}
