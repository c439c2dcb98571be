#include "tests/support/scriptedhost.h"

#include "forms/distinta/frmgd_distinta.h"
#include "framework/defaulttheme.h"
#include "framework/dictionarytranslationservice.h"
#include "framework/hostglobalservices.h"
#include "framework/sqlworkflowstateservice.h"
#include "module/clsgd_distinta.h"

ScriptedHost::ScriptedHost(TestDatabase::Content content)
    : m_database(std::make_unique<TestDatabase>(content))
    , m_log(std::make_shared<ScriptedLogService>())
    , m_navigator(std::make_unique<ScriptedNavigator>())
    , m_modules(std::make_unique<ScriptedModuleManager>())
    , m_translations(std::make_shared<fw::DictionaryTranslationService>())
    , m_theme(std::make_shared<fw::DefaultTheme>())
    , m_globals(std::make_unique<fw::HostGlobalServices>())
    , m_statusBar(std::make_unique<QStatusBar>())
{
    m_globals->setWorkingCompany(Company);
    m_globals->setUser(QStringLiteral("tester"));
    m_globals->setUserGroup(QStringLiteral("ADMIN"));
    m_globals->setApplicationTitle(QStringLiteral("VRAX Prove"));
    m_globals->setTranslationService(m_translations);
    m_globals->setLogServiceFactory([log = m_log] { return log; });
    m_globals->setThemeFactory([theme = m_theme] { return theme; });
    m_globals->setModuleManager(m_modules.get());
    m_globals->setWorkflowStateService(std::make_shared<fw::SqlWorkflowStateService>(
        m_database->connection(), m_globals->user(), m_globals->userGroup()));
}

ScriptedHost::~ScriptedHost() = default;

fw::HostContext ScriptedHost::context() const
{
    fw::HostContext context;
    context.globals = m_globals.get();
    context.connection = m_database->connection();
    context.navigator = m_navigator.get();
    context.statusBar = m_statusBar.get();
    context.menuModulo = QStringLiteral("GD");
    context.menuPadre = QStringLiteral("GD00");
    context.menuProg = QStringLiteral("GD01");
    return context;
}

std::unique_ptr<CLSGD_DISTINTA> ScriptedHost::createEntryClass(const QString &caption)
{
    auto entry = std::make_unique<CLSGD_DISTINTA>();
    fw::HostContext hostContext = context();
    hostContext.caption = caption;
    fw::fillHostContract(*entry, hostContext);
    return entry;
}

FRMGD_DISTINTA *ScriptedHost::openEditor(CLSGD_DISTINTA &entry)
{
    entry.ShowForm();
    FRMGD_DISTINTA *form = entry.form();
    if (form)
        form->Form_Activate();
    return form;
}
