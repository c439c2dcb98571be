#include "frame/formframe.h"

#include "frame/operazionestorico.h"

#include "framework/activenavigator.h"
#include "framework/cinterface.h"
#include "framework/globalservices.h"
#include "framework/logservice.h"
#include "framework/mdihost.h"
#include "framework/modulemanager.h"
#include "framework/recordframe.h"
#include "framework/scriptobjectmodel.h"
#include "framework/translationservice.h"
#include "framework/wheelguard.h"
#include "framework/workflowstateservice.h"
#include "platform/db/recordset.h"

#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStatusBar>
#include <QtDebug>
#include <optional>
#include <stdexcept>

namespace {

const QString missingLogService = QStringLiteral("Classe Log non settata");
// Long enough to be read after the work, short enough not to be taken for the state of later work.
constexpr int statusNoteMs = 20000;

} // namespace

FormFrame::FormFrame(QWidget *parent)
    : QWidget(parent)
{ }

FormFrame::~FormFrame()
{
    // The form's own parts are gone by now, while its controls live on until QWidget's
    // destructor, which takes the focus away from them.
    stopListeningToControls();
}

// A control that loses the focus while an unloaded form is hidden or destroyed must find
// nobody listening.
void FormFrame::stopListeningToControls()
{
    const QList<QObject *> controls = findChildren<QObject *>();
    for (QObject *control : controls)
        QObject::disconnect(control, nullptr, this, nullptr);
}

void FormFrame::setActiveDll(fw::Cinterface *contract)
{
    m_activeDll = contract;
}

fw::Cinterface *FormFrame::ActiveDll() const
{
    return m_activeDll.get();
}

void FormFrame::setEntryClass(fw::Cinterface *entryClass)
{
    m_entryClass = entryClass;
}

fw::Cinterface *FormFrame::entryClass() const
{
    return m_entryClass.get();
}

QString FormFrame::formIdentifier() const
{
    return objectName();
}

QObject *FormFrame::layoutObject()
{
    return this;
}

QObject *FormFrame::scriptObject()
{
    return this;
}

QObject *FormFrame::secondScriptObject()
{
    return nullptr;
}

void FormFrame::showModeless(QObject *activeFrame)
{
    if (auto *host = qobject_cast<fw::MdiHost *>(activeFrame)) {
        host->addForm(this);
        return;
    }
    setAttribute(Qt::WA_DeleteOnClose);
    show();
}

void FormFrame::showModal()
{
    m_centreOn = QApplication::activeWindow();
    setParent(nullptr, Qt::Window);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);
    QEventLoop loop;
    connect(this, &FormFrame::unloaded, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    show();
    loop.exec();
}

// ---------------------------------------------------------------------------------------------
// Life cycle

void FormFrame::Form_Load()
{
    if (m_loaded)
        return;
    m_loaded = true;
    if (fw::GlobalServices *services = globals())
        m_log = services->createLogService();
    step(QStringLiteral("Form_Load"), [this] { loadForm(); });
    // The form's controls are all built by now; those that write as their value changes take
    // the wheel only with the focus.
    fw::WheelGuard::protect(this);
}

void FormFrame::Form_Activate()
{
    if (!m_firstActivation || m_activating || m_unloaded)
        return;
    m_activating = true;
    const bool ready = step(QStringLiteral("Form_Activate"), [this] { takeHostConnection(); }) && activateForm();
    if (ready) {
        m_firstActivation = false;
        // A new row the form has just started stays where it is: moving off it would store it
        // before the user typed anything.
        if (m_recordFrame && m_recordFrame->state() != fw::RecordFrame::Insert && m_recordFrame->recordset()
            && !m_recordFrame->recordset()->isEmpty())
            step(QStringLiteral("Form_Activate"), [this] { m_recordFrame->recordset()->moveFirst(); });
    }
    m_activating = false;
}

void FormFrame::takeHostConnection()
{
    fw::Cinterface *source = entryClass();
    if (!source || !source->Connection())
        throw std::runtime_error("Connessione al database non impostata dal programma ospite.");
    m_hostConnection = source->Connection();
    // The form works on a connection of its own to the same database.
    m_connection = db::Connection::open(m_hostConnection->connectionString());
    if (fw::GlobalServices *services = globals())
        m_companyCode = services->workingCompany();
}

std::shared_ptr<fw::WorkflowStateService> FormFrame::statiDelFlusso()
{
    const fw::GlobalServices *services = globals();
    const std::shared_ptr<fw::WorkflowStateService> host = services ? services->workflowStateService() : nullptr;
    if (!host || !m_connection || host->writesThrough(*m_connection))
        return host;
    if (!m_statiDelFlusso || !m_statiDelFlusso->writesThrough(*m_connection))
        m_statiDelFlusso = host->throughConnection(m_connection);
    return m_statiDelFlusso ? m_statiDelFlusso : host;
}

void FormFrame::InizializzaScriptLayout()
{
    ExecuteFormEvent(QStringLiteral("tsOpen"));
}

QVariant FormFrame::ExecuteFormEvent(const QString &name)
{
    const bool open = name == QLatin1String("tsOpen");
    if (!open && name != QLatin1String("tsClose"))
        return {};
    step(QStringLiteral("ExecuteFormEvent"), [&] {
        if (fw::ScriptObjectModel *model = scriptObjectModel())
            model->raiseFormEvent(formIdentifier(), QString(), open ? 1 : 0);
    });
    return {};
}

bool FormFrame::EseguiQuery()
{
    if (!m_recordFrame)
        return false;
    const db::RecordsetPtr recordset = m_recordFrame->recordset();
    if (!recordset || recordset->currentRow() < 0)
        return false;
    const QString procedure = QStringLiteral("EseguiQuery");
    if (!step(procedure, [&] { writeFixedFilterFields(*recordset); }))
        return false;
    if (m_recordFrame->state() != fw::RecordFrame::Insert)
        return false;
    bool found = false;
    step(procedure, [&] { found = m_recordFrame->execute(true, true); });
    return found;
}

void FormFrame::workingCompanyChanged()
{
    const QString text = companyChangeText();
    if (text.isEmpty())
        return;
    const QString procedure = QStringLiteral("CambioDitta");
    if (!step(procedure, [&] {
            if (!logService())
                throw std::runtime_error(missingLogService.toStdString());
            logService()->showMessage(text, windowTitle(), fw::MessageStyle::Warning);
        }))
        return;
    unload();
}

bool FormFrame::Form_QueryUnload()
{
    const QString procedure = QStringLiteral("Form_QueryUnload");
    bool cancel = false;
    if (m_recordFrame) {
        // Pending changes that could not be saved keep the form open, whatever the answer to
        // the error: closing would lose them.
        bool mayClose = false;
        if (!stepOnRow(procedure, [&] { mayClose = m_recordFrame->mayClose(); }) || !mayClose)
            return true;
    }
    ExecuteFormEvent(QStringLiteral("tsClose"));
    step(procedure, [&] {
        if (fw::ScriptObjectModel *model = scriptObjectModel())
            cancel = model->queryUnload(formIdentifier());
    });
    return cancel;
}

void FormFrame::Form_UnLoad()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    stopListeningToControls();
    quietly([this] { formClosing(); });
    quietly([this] { release(Release::GridWrapper); });
    m_entryClass.reset();
    m_activeDll.reset();
    delete m_recordFrame; // the main recordset goes with its frame
    quietly([this] { release(Release::HelperObjects); });
    m_statiDelFlusso.reset();
    m_connection.reset();
    m_hostConnection.reset();
    quietly([this] { release(Release::FrameworkObjects); });
    m_log.reset();
    emit unloaded();
}

bool FormFrame::unload()
{
    if (m_unloaded)
        return true;
    auto *subWindow = qobject_cast<QMdiSubWindow *>(parentWidget());
    QWidget *window = subWindow ? static_cast<QWidget *>(subWindow) : this;
    window->close();
    return m_unloaded;
}

void FormFrame::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    Form_Load();
    // Placed once its size is known (Form_Load sizes it) and before it reaches the screen.
    if (m_centreOn) {
        QRect placed = rect();
        placed.moveCenter(m_centreOn->geometry().center());
        if (const QScreen *screen = m_centreOn->screen()) {
            const QRect area = screen->availableGeometry();
            placed.moveLeft(qBound(area.left(), placed.left(), qMax(area.left(), area.right() - placed.width())));
            placed.moveTop(qBound(area.top(), placed.top(), qMax(area.top(), area.bottom() - placed.height())));
        }
        move(placed.topLeft());
        m_centreOn.clear();
    }
    if (m_firstActivation)
        QMetaObject::invokeMethod(this, &FormFrame::Form_Activate, Qt::QueuedConnection);
}

void FormFrame::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        Form_Activate();
}

void FormFrame::closeEvent(QCloseEvent *event)
{
    if (!m_unloaded) {
        if (Form_QueryUnload()) {
            event->ignore();
            return;
        }
        Form_UnLoad();
    }
    event->accept();
}

// ---------------------------------------------------------------------------------------------
// Error handling

bool FormFrame::step(const QString &procedure, const std::function<void()> &statement)
{
    for (;;) {
        QString description;
        QList<db::DbError> databaseErrors;
        try {
            statement();
            return true;
        } catch (const db::DatabaseError &error) {
            description = error.message();
            databaseErrors = error.errors();
        } catch (const std::exception &error) {
            description = QString::fromUtf8(error.what());
        }
        switch (ErrorHandler(procedure, description, databaseErrors)) {
        case fw::Answer::Retry: continue;
        case fw::Answer::Ignore: return true;
        default: return false;
        }
    }
}

bool FormFrame::writeRow(const QString &procedure, const std::function<void()> &write,
                         const std::function<void(const db::DatabaseError &)> &stale)
{
    std::optional<db::DatabaseError> staleRow;
    const bool done = step(procedure, [&] {
        try {
            write();
        } catch (const db::DatabaseError &error) {
            if (!error.isStaleRow())
                throw;
            staleRow = error;
        }
    });
    if (!staleRow)
        return done;
    if (m_connection)
        m_connection->clearErrors();
    stale(*staleRow);
    return false;
}

void FormFrame::registraNelloStorico(fw::RecordFrame *frame, const QString &procedure)
{
    frame->setWriteScope([this, procedure](const QString &kind, const std::function<void()> &write) {
        OperazioneStorico operazione(*this, procedure, kind, std::nullopt);
        if (!operazione.inizia())
            throw db::DatabaseError(m_connection->errors());
        write();
    });
}

bool FormFrame::stepOnRow(const QString &procedure, const std::function<void()> &statement)
{
    return step(procedure, statement);
}

bool FormFrame::quietly(const std::function<void()> &statement)
{
    try {
        statement();
        return true;
    } catch (const std::exception &) {
        return false;
    }
}

int FormFrame::ErrorHandler(const QString &procedure, const QString &description,
                            const QList<db::DbError> &databaseErrors)
{
    fw::LogService *log = logService();
    if (!log) {
        // Nothing to show the error with: the procedure is abandoned.
        if (reportsMissingLogService())
            qWarning().noquote() << missingLogService << "-" << windowTitle() << "-" << procedure << ":" << description;
        return fw::Answer::Abort;
    }

    log->logError(procedure, description);
    if (m_connection) {
        // The connection's list, as the failing statement left it; a failure raised elsewhere
        // (another connection, a recordset) brings its own list.
        const QList<db::DbError> errors = m_connection->errors().isEmpty() ? databaseErrors : m_connection->errors();
        if (!errors.isEmpty())
            log->logDatabaseErrors(errors);
        m_connection->clearErrors();
    } else if (!databaseErrors.isEmpty()) {
        log->logDatabaseErrors(databaseErrors);
    }

    const QString applicationTitle = globals() ? globals()->applicationTitle() : QString();
    return log->showErrorDialog(procedure, applicationTitle, windowTitle(), fw::MessageStyle::ErrorDialog);
}

// ---------------------------------------------------------------------------------------------
// Messages

int FormFrame::message(const QString &text, int style, const QString &title) const
{
    fw::LogService *log = logService();
    return log ? log->showMessage(text, title.isEmpty() ? windowTitle() : title, style) : fw::Answer::No;
}

void FormFrame::avviso(const QString &text) const
{
    message(text, fw::MessageStyle::Warning);
}

void FormFrame::notifica(const QString &text) const
{
    message(text, fw::MessageStyle::Notice);
}

void FormFrame::mostraInBarraDiStato(const QString &text) const
{
    const fw::Cinterface *source = entryClass();
    if (auto *bar = qobject_cast<QStatusBar *>(source ? source->StatusBar() : nullptr))
        bar->showMessage(text, statusNoteMs);
}

int FormFrame::domanda(const QString &text) const
{
    return message(text, fw::MessageStyle::YesNoWarning);
}

// ---------------------------------------------------------------------------------------------
// Services

fw::GlobalServices *FormFrame::globals() const
{
    if (fw::Cinterface *source = entryClass())
        return source->ClsGlobal();
    if (fw::Cinterface *contract = ActiveDll())
        return contract->ClsGlobal();
    return nullptr;
}

QString FormFrame::translated(int id, const QString &defaultText) const
{
    fw::GlobalServices *services = globals();
    fw::TranslationService *translation = services ? services->translationService() : nullptr;
    return translation ? translation->text(id, defaultText) : defaultText;
}

QString FormFrame::translated(const QString &text) const
{
    fw::GlobalServices *services = globals();
    fw::TranslationService *translation = services ? services->translationService() : nullptr;
    return translation ? translation->translate(text) : text;
}

fw::ModuleManager *FormFrame::moduleManager(const QString &management) const
{
    fw::GlobalServices *services = globals();
    if (fw::ModuleManager *modules = services ? services->moduleManager() : nullptr)
        return modules;
    avviso(QStringLiteral("Il programma non può aprire la gestione \"%1\".").arg(management));
    return nullptr;
}

fw::LogService *FormFrame::logService() const
{
    return m_log.get();
}

fw::RecordFrame *FormFrame::recordFrame() const
{
    return m_recordFrame;
}

fw::RecordFrame *FormFrame::openRecordFrame(const QString &sql, const QString &keyField)
{
    delete m_recordFrame;
    auto *frame = new fw::RecordFrame(m_connection, this);
    frame->setLogService(m_log.get(), windowTitle());
    m_recordFrame = frame;
    frame->open(sql, keyField);
    return frame;
}

void FormFrame::setLogService(std::shared_ptr<fw::LogService> log)
{
    m_log = std::move(log);
}

void FormFrame::setConnection(db::ConnectionPtr connection)
{
    m_connection = std::move(connection);
}

fw::ScriptObjectModel *FormFrame::scriptObjectModel() const
{
    fw::Cinterface *contract = ActiveDll();
    fw::ActiveNavigator *navigator = contract ? contract->ActiveNavigator() : nullptr;
    return navigator ? navigator->scriptObjectModel() : nullptr;
}
