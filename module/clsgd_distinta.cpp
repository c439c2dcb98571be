#include "module/clsgd_distinta.h"

#include "forms/anagdistinta/frmgd_anagdistinta.h"
#include "forms/distinta/frmgd_distinta.h"
#include "framework/activenavigator.h"
#include "framework/layoutobjectmodel.h"
#include "framework/scriptobjectmodel.h"

#include <limits>
#include <stdexcept>

namespace {

// Every member runs under its own trap: nothing fails towards the host.
template<typename Statement>
void trapped(Statement statement)
{
    try {
        statement();
    } catch (...) {
    }
}

qint16 toInteger16(qint32 value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw std::overflow_error("Overflow");
    return static_cast<qint16>(value);
}

} // namespace

CLSGD_DISTINTA::CLSGD_DISTINTA(QObject *parent)
    : QObject(parent)
    , m_activeDll(this)
{ }

CLSGD_DISTINTA::~CLSGD_DISTINTA()
{
    m_statusBar.clear();
    m_activeFrame.clear();
    m_activeDll.reset();
    m_clsVoceMenu.clear();
    m_clsGlobal = nullptr;
    m_gobjWindow.clear();
    for (const auto &subscription : std::as_const(m_navigatorSubscription))
        disconnect(subscription);
    m_activeNavigator.clear();
    m_connection.reset();
    m_form.clear();
}

void CLSGD_DISTINTA::setClsGlobal(fw::GlobalServices *services)
{
    m_clsGlobal = services;
}
fw::GlobalServices *CLSGD_DISTINTA::ClsGlobal() const
{
    return m_clsGlobal;
}
void CLSGD_DISTINTA::setActiveFrame(QObject *frame)
{
    m_activeFrame = frame;
}
QObject *CLSGD_DISTINTA::ActiveFrame() const
{
    return m_activeFrame;
}

void CLSGD_DISTINTA::setActiveNavigator(fw::ActiveNavigator *navigator)
{
    for (const auto &subscription : std::as_const(m_navigatorSubscription))
        disconnect(subscription);
    m_navigatorSubscription.clear();
    m_activeNavigator = navigator;
    if (!navigator)
        return;
    m_navigatorSubscription << connect(navigator, &fw::ActiveNavigator::BeforeExportToOffice, this,
                                       &CLSGD_DISTINTA::ActiveNavigator_BeforeExportToOffice)
                            << connect(navigator, &fw::ActiveNavigator::InitializeLayoutObjectModel, this,
                                       &CLSGD_DISTINTA::ActiveNavigator_InitializeLayoutObjectModel)
                            << connect(navigator, &fw::ActiveNavigator::InitializeScriptObjectModel, this,
                                       &CLSGD_DISTINTA::ActiveNavigator_InitializeScriptObjectModel);
}

fw::ActiveNavigator *CLSGD_DISTINTA::ActiveNavigator() const
{
    return m_activeNavigator;
}
void CLSGD_DISTINTA::setActiveDll(fw::Cinterface *contract)
{
    m_activeDll = contract;
}
fw::Cinterface *CLSGD_DISTINTA::ActiveDll() const
{
    return m_activeDll.get();
}
void CLSGD_DISTINTA::setStatusBar(QObject *statusBar)
{
    m_statusBar = statusBar;
}
QObject *CLSGD_DISTINTA::StatusBar() const
{
    return m_statusBar;
}
void CLSGD_DISTINTA::setCanInsert(bool value)
{
    m_canInsert = value;
}
bool CLSGD_DISTINTA::CanInsert() const
{
    return m_canInsert;
}
void CLSGD_DISTINTA::setCanDelete(bool value)
{
    m_canDelete = value;
}
bool CLSGD_DISTINTA::CanDelete() const
{
    return m_canDelete;
}
void CLSGD_DISTINTA::setCanUpdate(bool value)
{
    m_canUpdate = value;
}
bool CLSGD_DISTINTA::CanUpdate() const
{
    return m_canUpdate;
}
void CLSGD_DISTINTA::setCanQbe(bool value)
{
    m_canQbe = value;
}
bool CLSGD_DISTINTA::CanQbe() const
{
    return m_canQbe;
}

void CLSGD_DISTINTA::setWindowState(qint32 value)
{
    trapped([&] { m_windowState = toInteger16(value); });
}

qint32 CLSGD_DISTINTA::WindowState() const
{
    return m_windowState;
}
void CLSGD_DISTINTA::setWindowModal(bool value)
{
    m_windowModal = value;
}
bool CLSGD_DISTINTA::WindowModal() const
{
    return m_windowModal;
}

void CLSGD_DISTINTA::setProgramMode(qint32 value)
{
    trapped([&] { m_programMode = toInteger16(value); });
}

qint32 CLSGD_DISTINTA::ProgramMode() const
{
    return m_programMode;
}
void CLSGD_DISTINTA::setMenuModulo(const QString &value)
{
    m_menuModulo = value;
}
QString CLSGD_DISTINTA::MenuModulo() const
{
    return m_menuModulo;
}
void CLSGD_DISTINTA::setMenuPadre(const QString &value)
{
    m_menuPadre = value;
}
QString CLSGD_DISTINTA::MenuPadre() const
{
    return m_menuPadre;
}
void CLSGD_DISTINTA::setMenuProg(const QString &value)
{
    m_menuProg = value;
}
QString CLSGD_DISTINTA::MenuProg() const
{
    return m_menuProg;
}
void CLSGD_DISTINTA::setCaption(const QString &value)
{
    m_caption = value;
}
QString CLSGD_DISTINTA::Caption() const
{
    return m_caption;
}
void CLSGD_DISTINTA::sethwndParent(qint32 value)
{
    m_hwndParent = value;
}
qint32 CLSGD_DISTINTA::hwndParent() const
{
    return m_hwndParent;
}

QVariant CLSGD_DISTINTA::ShowForm()
{
    trapped([&] {
        FormFrame *form = nullptr;
        if (m_typeMaintenance) {
            auto *types = new FRMGD_ANAGDISTINTA;
            types->setIdDistinta(m_idDistinta);
            form = types;
        } else {
            form = new FRMGD_DISTINTA;
        }
        m_form = form; // an earlier form stays open, no longer referenced
        form->setActiveDll(ActiveDll());
        form->setEntryClass(this);
        form->setWindowTitle(m_caption);
        if (m_windowModal)
            form->showModal();
        else
            form->showModeless(m_activeFrame);
    });
    return {};
}

bool CLSGD_DISTINTA::printList(const QString &code, std::optional<int> level, std::optional<QDate> date)
{
    return senzaFinestra([&](FRMGD_DISTINTA &form) { return form.StampaSenzaFinestra(code, level, date); });
}

bool CLSGD_DISTINTA::exportList(const QString &code, std::optional<int> level, std::optional<QDate> date,
                                const QString &path, fw::ExportFile::Format format)
{
    return senzaFinestra(
        [&](FRMGD_DISTINTA &form) { return form.EsportaSenzaFinestra(code, level, date, path, format); });
}

bool CLSGD_DISTINTA::exportHistory(const QString &code, std::optional<QDate> from, std::optional<QDate> to,
                                   const QString &user, const QString &path, fw::ExportFile::Format format)
{
    return senzaFinestra(
        [&](FRMGD_DISTINTA &form) { return form.StoricoSenzaFinestra(code, from, to, user, path, format); });
}

bool CLSGD_DISTINTA::exportComparison(const QString &code, const QDate &a, const QDate &b, const QString &path,
                                      fw::ExportFile::Format format)
{
    return senzaFinestra([&](FRMGD_DISTINTA &form) { return form.ConfrontoSenzaFinestra(code, a, b, path, format); });
}

bool CLSGD_DISTINTA::exportCheck(const QString &code, const QString &path, fw::ExportFile::Format format)
{
    return senzaFinestra([&](FRMGD_DISTINTA &form) { return form.VerificaSenzaFinestra(code, path, format); });
}

fw::ListImporter::Outcome CLSGD_DISTINTA::importList(const QString &code, const QString &file, bool dryRun,
                                                     const QString &reportPath, fw::ExportFile::Format format)
{
    int esito = NotDone;
    senzaFinestra([&](FRMGD_DISTINTA &form) {
        esito = form.ImportaSenzaFinestra(code, file, dryRun, reportPath, format);
        return esito != NotDone;
    });
    return esito == Done ? Done : esito == SomeRefused ? SomeRefused : NotDone;
}

// The editor prepared as ShowForm prepares it and started as its first showing would start
// it, for work done without a window; nothing is ever shown.
bool CLSGD_DISTINTA::senzaFinestra(const std::function<bool(FRMGD_DISTINTA &)> &work)
{
    bool done = false;
    trapped([&] {
        FRMGD_DISTINTA form;
        form.setActiveDll(ActiveDll());
        form.setEntryClass(this);
        form.setWindowTitle(m_caption);
        form.Form_Load();
        form.Form_Activate();
        if (!form.isFirstActivation())
            done = work(form);
        form.Form_UnLoad();
    });
    return done;
}

QVariant CLSGD_DISTINTA::CloseForm()
{
    bool closed = false;
    trapped([&] {
        if (!m_form)
            throw std::logic_error("no form");
        m_form->unload();
        // The editor lets go of the host contract only when it really unloaded.
        closed = !m_form || !m_form->ActiveDll();
    });
    return closed;
}

void CLSGD_DISTINTA::setConnection(const db::ConnectionPtr &connection)
{
    m_connection = connection;
}
db::ConnectionPtr CLSGD_DISTINTA::Connection() const
{
    return m_connection;
}
QObject *CLSGD_DISTINTA::Cwindow() const
{
    return m_gobjWindow;
}

QVariant CLSGD_DISTINTA::TransferData(const QVariant &data)
{
    trapped([&] { emit DataTransfer(data); });
    return {};
}

void CLSGD_DISTINTA::setTop(float value)
{
    m_top = value;
}
float CLSGD_DISTINTA::Top() const
{
    return m_top;
}
void CLSGD_DISTINTA::setLeft(float value)
{
    m_left = value;
}
float CLSGD_DISTINTA::Left() const
{
    return m_left;
}
void CLSGD_DISTINTA::setClsVoceMenu(QObject *menuEntry)
{
    m_clsVoceMenu = menuEntry;
}
QObject *CLSGD_DISTINTA::ClsVoceMenu() const
{
    return m_clsVoceMenu;
}
void CLSGD_DISTINTA::setIsActive(bool value)
{
    m_isActive = value;
}
bool CLSGD_DISTINTA::IsActive() const
{
    return m_isActive;
}
void CLSGD_DISTINTA::setIsCalled(bool value)
{
    m_isCalled = value;
}
bool CLSGD_DISTINTA::IsCalled() const
{
    return m_isCalled;
}

// The module takes no filter from the host.
void CLSGD_DISTINTA::setFiltro(const QVariant &) { }
QVariant CLSGD_DISTINTA::Filtro() const
{
    return {};
}

std::unique_ptr<fw::Cinterface> CLSGD_DISTINTA::createInstance() const
{
    return std::make_unique<CLSGD_DISTINTA>();
}

void CLSGD_DISTINTA::setTypeMaintenance(std::optional<qint64> idDistinta)
{
    m_typeMaintenance = true;
    m_idDistinta = idDistinta;
}

FormFrame *CLSGD_DISTINTA::shownForm() const
{
    return m_form;
}

FRMGD_DISTINTA *CLSGD_DISTINTA::form() const
{
    return qobject_cast<FRMGD_DISTINTA *>(m_form);
}

void CLSGD_DISTINTA::ActiveNavigator_BeforeExportToOffice()
{
    trapped([&] {
        if (fw::Cinterface *contract = ActiveDll())
            contract->IsActive();
    });
}

void CLSGD_DISTINTA::ActiveNavigator_InitializeLayoutObjectModel(fw::LayoutObjectModel *model)
{
    trapped([&] {
        fw::Cinterface *contract = ActiveDll();
        if (!contract || !contract->IsActive() || !m_form || !model)
            return;
        QObject *form = model->registerForm(m_form->layoutObject(), m_form->formIdentifier());
        m_form = qobject_cast<FormFrame *>(form);
    });
}

void CLSGD_DISTINTA::ActiveNavigator_InitializeScriptObjectModel(fw::ScriptObjectModel *model)
{
    trapped([&] {
        fw::Cinterface *contract = ActiveDll();
        if (!contract || !contract->IsActive() || !m_form || !model)
            return;
        QObject *first = m_form->scriptObject();
        QObject *second = m_form->secondScriptObject();
        model->registerForm(first);
        if (second)
            model->registerObject(second, second->objectName(), fw::ScriptObjectModel::NamedObject);
    });
}
