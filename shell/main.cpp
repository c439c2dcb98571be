#include "db/demodatabase.h"
#include "framework/defaulttheme.h"
#include "framework/hostcontext.h"
#include "framework/hostglobalservices.h"
#include "framework/messageboxlogservice.h"
#include "framework/recordframe.h"
#include "framework/report/defaultreportengine.h"
#include "framework/sqlworkflowstateservice.h"
#include "platform/db/connection.h"
#include "shell/componentcatalog.h"
#include "shell/displaycheck.h"
#include "shell/headlessprint.h"
#include "shell/mainwindow.h"
#include "shell/shellmodulemanager.h"
#include "shell/shelloptions.h"

#include <QApplication>
#include <QDir>
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

// Opens the database the options name, creating the demo database when needed.
db::ConnectionPtr openDatabase(const ShellOptions &options, QString *description)
{
    if (!options.odbcConnectionString.isEmpty()) {
        *description = QStringLiteral("Database ODBC");
        return db::Connection::open(options.odbcConnectionString);
    }
    const QString path = options.databasePath.isEmpty() ? dbsetup::defaultDemoDatabasePath()
                                                        : QDir::current().absoluteFilePath(options.databasePath);
    const bool created = dbsetup::ensureDemoDatabase(path);
    QTextStream(stdout) << (created ? "Database dimostrativo creato: " : "Database: ")
                        << QDir::toNativeSeparators(path) << Qt::endl;
    *description = QStringLiteral("Database %1").arg(QDir::toNativeSeparators(path));
    return db::Connection::open(dbsetup::sqliteConnectionString(path));
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
        if (!information && !asksForPrint(argc, argv)) {
            explainMissingDisplay();
            return 2;
        }
        qputenv("QT_QPA_PLATFORM", "offscreen");   // --help and --print need no window
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("distinta"));
    QApplication::setOrganizationName(QStringLiteral("VRAX_DISTINTA"));

    int exitCode = -1;
    const ShellOptions options = ShellOptions::parse(QApplication::arguments(), &exitCode);
    if (exitCode >= 0)
        return exitCode;

    fw::HostGlobalServices globals;
    globals.setWorkingCompany(options.company);
    globals.setUser(options.user);
    globals.setUserGroup(options.userGroup);
    globals.setApplicationTitle(QStringLiteral("VRAX - Distinte di classificazione"));
    const bool interactive = !options.unattended();
    globals.setLogServiceFactory([interactive] { return std::make_shared<fw::MessageBoxLogService>(interactive); });
    globals.setThemeFactory([] { return std::make_shared<fw::DefaultTheme>(); });
    globals.setReportEngineFactory([&options] { return std::make_unique<fw::DefaultReportEngine>(options.user); });

    QString databaseDescription;
    db::ConnectionPtr connection;
    try {
        connection = openDatabase(options, &databaseDescription);
    } catch (const db::DatabaseError &error) {
        QTextStream(stderr) << "distinta: impossibile aprire il database.\n" << error.message() << Qt::endl;
        return 1;
    }
    globals.setWorkflowStateService(
        std::make_shared<fw::SqlWorkflowStateService>(connection, options.user, options.userGroup));

    if (options.print.requested())
        return printWithoutWindow(options, globals, connection, ComponentCatalog(pluginFolder()), editorProgramId);

    MainWindow window(globals, databaseDescription);

    fw::HostContext shell;
    shell.globals = &globals;
    shell.connection = connection;
    shell.activeFrame = &window;
    shell.statusBar = window.statusBar();
    shell.caption = QStringLiteral("Distinta di classificazione");
    shell.menuModulo = QStringLiteral("GD");
    shell.menuPadre = QStringLiteral("GD00");
    shell.menuProg = QStringLiteral("GD01");

    const ComponentCatalog catalog(pluginFolder());
    ShellModuleManager modules(catalog, shell);
    globals.setModuleManager(&modules);
    QObject::connect(&window, &MainWindow::openEditorRequested, &window,
                     [&modules, &shell] { modules.open(editorProgramId, shell); });

    if (options.unattended()) {
        window.resize(1280, 800);   // a picture of a known size, whatever the screen
        window.show();
    } else {
        window.showMaximized();
    }
    const bool opened = modules.open(editorProgramId, shell) != nullptr;

    if (options.unattended()) {
        // Runs after the editor's start-up, which the editor queues when it is first shown.
        QMetaObject::invokeMethod(&app, [&] { app.exit(opened ? reportOpenForms(window, options) : 1); },
                                  Qt::QueuedConnection);
    }
    const int result = app.exec();
    globals.setModuleManager(nullptr);
    return result;
}
