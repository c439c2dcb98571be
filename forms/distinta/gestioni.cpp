#include "forms/distinta/gestioni.h"

#include "forms/anagdistinta/frmgd_anagdistinta.h"
#include "forms/distinta/moduleentry.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/cinterface.h"
#include "framework/hostcontext.h"
#include "framework/modulemanager.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QToolButton>

namespace distinta {

namespace {

const QString schedaClienti = QStringLiteral("CARDS.CustomerCard");
const QString schedaFornitori = QStringLiteral("CARDS.SupplierCard");

const QList<std::pair<QString, QString>> gestioniCollegate = {
    {QStringLiteral("Gestione listini e condizioni"), QStringLiteral("Listini")},
    {QStringLiteral("Configurazione condizioni"), QStringLiteral("Provider")},
    {QStringLiteral("Configurazione priorità"), QStringLiteral("Priorita")},
    {QStringLiteral("Anagrafica distinta"), QStringLiteral("Distinta")},
};

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

ModuleEntry *moduleEntry(fw::Cinterface *entryClass)
{
    return qobject_cast<ModuleEntry *>(dynamic_cast<QObject *>(entryClass));
}

} // namespace

Gestioni::Gestioni(FormFrame &form, Selettore &selettore)
    : m_form(form)
    , m_selettore(selettore)
    , CMD_GESTIONICOLLEGATE(new QToolButton)
{
    CMD_GESTIONICOLLEGATE->setObjectName(QStringLiteral("CMD_GESTIONICOLLEGATE"));
    CMD_GESTIONICOLLEGATE->setText(QStringLiteral("&Gestioni collegate"));
    CMD_GESTIONICOLLEGATE->setToolTip(QStringLiteral("Listini, condizioni, priorità e tipi di distinta (Alt+G)"));
    CMD_GESTIONICOLLEGATE->setPopupMode(QToolButton::InstantPopup);
    CMD_GESTIONICOLLEGATE->setToolButtonStyle(Qt::ToolButtonTextOnly);
    CMD_GESTIONICOLLEGATE->setMenu(new QMenu(CMD_GESTIONICOLLEGATE));
    connect(CMD_GESTIONICOLLEGATE->menu(), &QMenu::triggered, this,
            [this](QAction *action) { CMD_GESTIONICOLLEGATE_Click(action->data().toString(), action->text()); });
}

FRMGD_ANAGDISTINTA *Gestioni::anagraficaDistinta() const
{
    return m_anagraficaDistinta;
}

void Gestioni::preparaMenu()
{
    QMenu *menu = CMD_GESTIONICOLLEGATE->menu();
    menu->clear();
    for (const auto &[caption, key] : gestioniCollegate)
        menu->addAction(caption)->setData(key);
}

void Gestioni::CMD_GESTIONICOLLEGATE_Click(const QString &key, const QString &caption)
{
    m_form.step(QStringLiteral("CMD_GESTIONICOLLEGATE"), [&] {
        if (key == QLatin1String("Distinta")) {
            apriAnagraficaDistinta(caption);
            return;
        }
        const QString programId = componenteGestione(key);
        fw::Cinterface *caller = m_form.entryClass();
        if (programId.isEmpty() || !caller)
            return;
        if (fw::ModuleManager *modules = m_form.moduleManager(caption))
            modules->openComponent(programId, *caller);
    });
}

// The type maintenance is a new instance of the module's entry class, with the editor's host
// objects, opened by the host like the suite's managements. It opens on the type chosen in the
// selector, or on none from a root. While it is open the same window is brought forward; when it
// closes, the selector is built again so that new and changed types show at once.
void Gestioni::apriAnagraficaDistinta(const QString &caption)
{
    if (m_anagraficaDistinta) {
        if (auto *window = qobject_cast<QMdiSubWindow *>(m_anagraficaDistinta->parentWidget()))
            window->mdiArea()->setActiveSubWindow(window);
        else
            m_anagraficaDistinta->activateWindow();
        return;
    }
    fw::Cinterface *caller = m_form.entryClass();
    ModuleEntry *self = moduleEntry(caller);
    if (!self) {
        m_form.avviso(QStringLiteral("Il programma non può aprire la gestione \"%1\".").arg(caption));
        return;
    }
    fw::ModuleManager *modules = m_form.moduleManager(caption);
    if (!modules)
        return;
    std::unique_ptr<fw::Cinterface> instance = self->createInstance();
    ModuleEntry *types = moduleEntry(instance.get());
    fw::HostContext context = fw::HostContext::from(*caller);
    context.caption = caption;
    fw::fillHostContract(*instance, context);
    types->setTypeMaintenance(m_selettore.distintaScelta()
                                  ? std::optional<qint64>(m_selettore.chiaveSelezionata().mid(1).toLongLong())
                                  : std::nullopt);
    if (!modules->openCreatedComponent(std::move(instance)))
        return;
    // The host keeps the instance it opened, and with it the form.
    m_anagraficaDistinta = qobject_cast<FRMGD_ANAGDISTINTA *>(types->shownForm());
    if (m_anagraficaDistinta)
        connect(m_anagraficaDistinta, &FormFrame::unloaded, this, &Gestioni::anagraficaDistintaChiusa);
}

void Gestioni::anagraficaDistintaChiusa()
{
    m_anagraficaDistinta.clear();
    if (m_form.isLoaded() && !m_form.isFirstActivation())
        emit tipiCambiati();
}

void Gestioni::apriAnagraficaSoggetto(int tipoSoggetto, qint64 codice)
{
    const QString archive = tipoSoggetto == 0 ? QStringLiteral("Anagrafica clienti")
                                              : QStringLiteral("Anagrafica fornitori");
    if (fw::ModuleManager *modules = m_form.moduleManager(archive))
        modules->openSubjectMasterData(tipoSoggetto, codice);
}

void Gestioni::RichiamaSchedaClienti(qint64 codice)
{
    m_form.step(QStringLiteral("RichiamaSchedaClienti"), [&] {
        if (fw::ModuleManager *modules = m_form.moduleManager(QStringLiteral("Scheda cliente")))
            modules->openSubjectCard(schedaClienti, m_form.companyCode(), codice);
    });
}

void Gestioni::RichiamaSchedaFornitori(qint64 codice)
{
    m_form.step(QStringLiteral("RichiamaSchedaFornitori"), [&] {
        if (fw::ModuleManager *modules = m_form.moduleManager(QStringLiteral("Scheda fornitore")))
            modules->openSubjectCard(schedaFornitori, m_form.companyCode(), codice);
    });
}

} // namespace distinta
