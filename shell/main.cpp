#include "data/columnwidths.h"
#include "data/dittastatements.h"
#include "data/schemanames.h"
#include "framework/defaulttheme.h"
#include "framework/hostcontext.h"
#include "framework/hostglobalservices.h"
#include "framework/italiantranslations.h"
#include "framework/layoutmemory.h"
#include "framework/messageboxlogservice.h"
#include "framework/recordframe.h"
#include "framework/report/defaultreportengine.h"
#include "framework/sqlworkflowstateservice.h"
#include "framework/unattendedrun.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "shell/cards/subjectcardcomponent.h"
#include "shell/componentcatalog.h"
#include "shell/displaycheck.h"
#include "shell/headlessrun.h"
#include "shell/mainwindow.h"
#include "shell/shelldatabase.h"
#include "shell/shellmodulemanager.h"
#include "shell/shelloptions.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStatusBar>
#include <QTextStream>

namespace {

const QString editorProgramId = QStringLiteral("VRAX_DISTINTA.CLSGD_DISTINTA");

bool asksForInformation(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "-h" || argument == "--help" || argument == "-v" || argument == "--version")
            return true;
    }
    return false;
}

QString pluginFolder()
{
    const QString configured = qEnvironmentVariable("DISTINTA_PLUGIN_DIR");
    return configured.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/plugins") : configured;
}

// Whether the working company has any row; a failing query (a database of the suite without one
// of the tables) does not count as "no data": the editor reports what fails.
bool companyHasData(const db::ConnectionPtr &connection, int company)
{
    try {
        const db::RecordsetPtr rows = connection->openRecordset(dittastatements::companyHasDataQuery(company));
        return rows->isEmpty() || rows->value(0).toInt() != 0;
    } catch (const db::DatabaseError &) {
        return true;
    }
}

// For unattended runs: what opened, and whether the editor finished its start-up.
int reportOpenForms(MainWindow &window, const ShellOptions &options)
{
    QTextStream out(stdout);
    bool editorReady = false;
    for (QMdiSubWindow *sub : window.mdiArea()->subWindowList()) {
        QWidget *form = sub->widget();
        const bool ready = form && form->findChild<fw::RecordFrame *>() != nullptr;
        out << "Finestra aperta: " << form->objectName() << " \"" << form->windowTitle() << "\""
            << (ready ? " (pronta)" : "") << Qt::endl;
        editorReady = editorReady || (form->objectName() == QLatin1String("FRMGD_DISTINTA") && ready);
    }
    if (!options.screenshotPath.isEmpty()) {
        if (!window.grab().save(options.screenshotPath)) {
            QTextStream(stderr) << "Impossibile salvare l'immagine in " << options.screenshotPath << Qt::endl;
            return 1;
        }
        out << "Immagine salvata: " << options.screenshotPath << Qt::endl;
    }
    return editorReady ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    const bool information = asksForInformation(argc, argv);
    if (!displayAvailable(argc, argv)) {
        if (!information && !asksForRunWithoutWindow(argc, argv)) {
            explainMissingDisplay();
            return 2;
        }
        qputenv("QT_QPA_PLATFORM", "offscreen"); // --help, --print and --export need no window
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("distinta"));
    QApplication::setOrganizationName(QStringLiteral("VRAX_DISTINTA"));
    fw::installItalianTranslations(app);

    int exitCode = -1;
    const ShellOptions options = ShellOptions::parse(QApplication::arguments(), &exitCode);
    if (exitCode >= 0)
        return exitCode;

    fw::HostGlobalServices globals;
    globals.setWorkingCompany(options.company);
    // Every audit column for users and groups is 20 characters wide: a longer name would make SQL
    // Server refuse the writes that carry it.
    globals.setUser(columnwidths::fitToColumn(schemanames::GD02_UTENTECRE, options.user));
    globals.setUserGroup(columnwidths::fitToColumn(schemanames::GD02_GRUPPOCRE, options.userGroup));
    globals.setApplicationTitle(QStringLiteral("VRAX - Distinte di classificazione"));
    // Without a user, the first error is reported once and ends the run (fw::UnattendedRun).
    const auto unattended = options.unattended() ? std::make_shared<fw::UnattendedRun>() : nullptr;
    globals.setLogServiceFactory([unattended]() -> std::shared_ptr<fw::LogService> {
        if (unattended)
            return std::make_shared<fw::MessageBoxLogService>(unattended);
        return std::make_shared<fw::MessageBoxLogService>();
    });
    globals.setThemeFactory([] { return std::make_shared<fw::DefaultTheme>(); });
    globals.setReportEngineFactory([&options] { return std::make_unique<fw::DefaultReportEngine>(options.user); });

    const ShellDatabase database = ShellDatabase::open(options);
    if (!database.warning.isEmpty())
        QTextStream(stderr) << database.warning << Qt::endl;
    if (!database.connection) {
        QTextStream(stderr) << "distinta: impossibile aprire il database.\n" << database.problem << Qt::endl;
        if (!unattended)
            globals.createLogService()->showMessage(database.problem, globals.applicationTitle(),
                                                    fw::MessageStyle::Critical);
        return 1;
    }
    const db::ConnectionPtr connection = database.connection;
    globals.setWorkflowStateService(
        std::make_shared<fw::SqlWorkflowStateService>(connection, globals.user(), globals.userGroup()));

    if (options.print.requested() || options.exportList.requested() || options.history.requested()
        || options.importFile.requested())
        return runWithoutWindow(options, globals, connection, ComponentCatalog(pluginFolder()), editorProgramId,
                                unattended);

    MainWindow window(globals, database.description);
    window.setCompanyCheck([connection](int company) { return companyHasData(connection, company); });

    fw::HostContext shell;
    shell.globals = &globals;
    shell.connection = connection;
    shell.activeFrame = &window;
    shell.statusBar = window.statusBar();
    shell.caption = QStringLiteral("Distinta di classificazione");
    shell.menuModulo = QStringLiteral("GD");
    shell.menuPadre = QStringLiteral("GD00");
    shell.menuProg = QStringLiteral("GD01");

    ComponentCatalog catalog(pluginFolder());
    // The suite's subject cards, as this program offers them.
    catalog.registerBuiltIn(SubjectCardComponent::CustomerCard,
                            [] { return std::make_unique<SubjectCardComponent>(0); });
    catalog.registerBuiltIn(SubjectCardComponent::SupplierCard,
                            [] { return std::make_unique<SubjectCardComponent>(1); });
    ShellModuleManager modules(catalog, shell);
    globals.setModuleManager(&modules);
    QObject::connect(&window, &MainWindow::openEditorRequested, &window,
                     [&modules, &shell] { modules.open(editorProgramId, shell); });

    // Each user finds the window as large as it was left.
    fw::LayoutMemory windowMemory(fw::LayoutMemory::defaultSettingsFile(), globals.user(), QStringLiteral("distinta"));
    if (options.unattended()) {
        // A picture of a known size, whatever the screen.
        window.resize(options.windowSize.isValid() ? options.windowSize : QSize(1280, 800));
        window.show();
    } else if (const QSize size = options.windowSize.isValid() ? options.windowSize : windowMemory.windowSize();
               size.isValid()) {
        window.resize(size);
        window.show();
    } else {
        window.showMaximized();
    }
    if (!options.unattended()) {
        QObject::connect(&app, &QCoreApplication::aboutToQuit, &window, [&window, &windowMemory] {
            if (!window.isMaximized() && !window.isFullScreen())
                windowMemory.rememberWindowSize(window.size());
        });
    }
    const bool opened = modules.open(editorProgramId, shell) != nullptr;

    // Notices about what was opened, after the editor's start-up (which the editor queues when it
    // is first shown); without a user they go to stderr.
    QStringList notices {database.notice, window.companyNotice()};
    notices.removeAll(QString());
    if (!notices.isEmpty()) {
        QMetaObject::invokeMethod(
            &app,
            [&globals, notices] {
                if (const auto log = globals.createLogService()) {
                    for (const QString &notice : notices)
                        log->showMessage(notice, globals.applicationTitle(), fw::MessageStyle::Notice);
                }
            },
            Qt::QueuedConnection);
    }

    if (unattended) {
        if (unattended->failed()) { // failed before the event loop could be left
            globals.setModuleManager(nullptr);
            return fw::UnattendedRun::FailureExitCode;
        }
        QMetaObject::invokeMethod(
            &app, [&] { app.exit(opened ? reportOpenForms(window, options) : 1); }, Qt::QueuedConnection);
    }
    int result = app.exec();
    if (unattended && unattended->failed())
        result = fw::UnattendedRun::FailureExitCode;
    globals.setModuleManager(nullptr);
    return result;
}
