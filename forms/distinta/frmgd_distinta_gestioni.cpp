// Where the editor leads out of itself: the linked managements of the suite, this module's own
// maintenance of classification types, and the master data and card of a node's subject. The
// suite's components are asked of the host by the names they are registered under.
#include "forms/distinta/frmgd_distinta.h"

#include "forms/anagdistinta/frmgd_anagdistinta.h"
#include "framework/cinterface.h"
#include "framework/globalservices.h"
#include "framework/logservice.h"
#include "framework/modulemanager.h"
#include "framework/treelist/treelist.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>

namespace {

const QString schedaClienti = QStringLiteral("CARDS.CustomerCard");
const QString schedaFornitori = QStringLiteral("CARDS.SupplierCard");

// The suite's component behind each key of the linked managements; "Distinta" is this module's.
QString componenteGestione(const QString &key)
{
    if (key == QLatin1String("Priorita"))
        return QStringLiteral("PRIOTAB.PriorityTables");
    if (key == QLatin1String("Provider"))
        return QStringLiteral("PRIOPROV.Providers");
    if (key == QLatin1String("Listini"))
        return QStringLiteral("PRIOLIST.PriceLists");
    return {};
}

} // namespace

void FRMGD_DISTINTA::collegaGestioni()
{
    connect(CMD_GESTIONICOLLEGATE->menu(), &QMenu::triggered, this, [this](QAction *action) {
        CMD_GESTIONICOLLEGATE_Click(action->data().toString(), action->text());
    });
    collegaPriorita();
}

// The host's module manager; without one the user is told that the management cannot be opened.
fw::ModuleManager *FRMGD_DISTINTA::gestoreModuli(const QString &gestione)
{
    fw::GlobalServices *services = globals();
    if (fw::ModuleManager *modules = services ? services->moduleManager() : nullptr)
        return modules;
    if (fw::LogService *log = logService())
        log->showMessage(QStringLiteral("Il programma non può aprire la gestione \"%1\".").arg(gestione), windowTitle(),
                         fw::MessageStyle::Warning);
    return nullptr;
}

void FRMGD_DISTINTA::CMD_GESTIONICOLLEGATE_Click(const QString &key, const QString &caption)
{
    step(QStringLiteral("CMD_GESTIONICOLLEGATE"), [&] {
        if (key == QLatin1String("Distinta")) {
            apriAnagraficaDistinta();
            return;
        }
        const QString programId = componenteGestione(key);
        fw::Cinterface *caller = entryClass();
        if (programId.isEmpty() || !caller)
            return;
        if (fw::ModuleManager *modules = gestoreModuli(caption))
            modules->openComponent(programId, *caller);
    });
}

// The type maintenance opens on the type chosen in the selector, or on none from a root. When it
// closes, the selector is built again so that new and changed types show at once.
void FRMGD_DISTINTA::apriAnagraficaDistinta()
{
    if (m_anagraficaDistinta) {
        if (auto *window = qobject_cast<QMdiSubWindow *>(m_anagraficaDistinta->parentWidget()))
            window->mdiArea()->setActiveSubWindow(window);
        else
            m_anagraficaDistinta->activateWindow();
        return;
    }
    auto *form = new FRMGD_ANAGDISTINTA;
    form->setActiveDll(ActiveDll());
    form->setEntryClass(entryClass());
    const QString key = chiaveSelezionata();
    if (!key.isEmpty() && !key.startsWith(QLatin1Char('P')))
        form->setIdDistinta(key.mid(1).toLongLong());
    connect(form, &FormFrame::unloaded, this, &FRMGD_DISTINTA::anagraficaDistintaChiusa);
    m_anagraficaDistinta = form;
    form->showModeless(entryClass() ? entryClass()->ActiveFrame() : nullptr);
}

void FRMGD_DISTINTA::anagraficaDistintaChiusa()
{
    m_anagraficaDistinta.clear();
    if (isLoaded() && !isFirstActivation())
        InizializzaDistinte(chiaveSelezionata());
}

FRMGD_ANAGDISTINTA *FRMGD_DISTINTA::anagraficaDistinta() const
{
    return m_anagraficaDistinta;
}

void FRMGD_DISTINTA::mnuAnagCF_Click()
{
    if (!m_soggettoMenu)
        return;
    step(QStringLiteral("mnuAnagCF_Click"), [this] {
        const QString archive = m_tipoSoggetto == 0 ? QStringLiteral("Anagrafica clienti")
                                                    : QStringLiteral("Anagrafica fornitori");
        if (fw::ModuleManager *modules = gestoreModuli(archive))
            modules->openSubjectMasterData(m_tipoSoggetto, *m_soggettoMenu);
    });
}

void FRMGD_DISTINTA::mnuSchedaCF_Click()
{
    if (!m_soggettoMenu)
        return;
    step(QStringLiteral("mnuSchedaCF_Click"), [this] {
        if (m_tipoSoggetto == 0)
            RichiamaSchedaClienti(*m_soggettoMenu);
        else
            RichiamaSchedaFornitori(*m_soggettoMenu);
    });
}

void FRMGD_DISTINTA::RichiamaSchedaClienti(qint64 codice)
{
    step(QStringLiteral("RichiamaSchedaClienti"), [&] {
        if (fw::ModuleManager *modules = gestoreModuli(QStringLiteral("Scheda cliente")))
            modules->openSubjectCard(schedaClienti, companyCode(), codice);
    });
}

void FRMGD_DISTINTA::RichiamaSchedaFornitori(qint64 codice)
{
    step(QStringLiteral("RichiamaSchedaFornitori"), [&] {
        if (fw::ModuleManager *modules = gestoreModuli(QStringLiteral("Scheda fornitore")))
            modules->openSubjectCard(schedaFornitori, companyCode(), codice);
    });
}
