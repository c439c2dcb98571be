#include "editorhost.h"

#include "db/demodatabase.h"
#include "forms/distinta/frmgd_distinta.h"
#include "framework/defaulttheme.h"
#include "framework/dictionarytranslationservice.h"
#include "framework/hostcontext.h"
#include "framework/sqlworkflowstateservice.h"
#include "module/clsgd_distinta.h"

namespace bench {

EditorHost::EditorHost(const QString &databasePath)
    : m_connection(db::Connection::open(dbsetup::sqliteConnectionString(databasePath)))
    , m_log(std::make_shared<ScriptedLogService>())
    , m_translations(std::make_shared<fw::DictionaryTranslationService>())
    , m_theme(std::make_shared<fw::DefaultTheme>())
{
    m_globals.setWorkingCompany(1);
    m_globals.setUser(QStringLiteral("bench"));
    m_globals.setUserGroup(QStringLiteral("ADMIN"));
    m_globals.setApplicationTitle(QStringLiteral("VRAX Bench"));
    m_globals.setTranslationService(m_translations);
    m_globals.setLogServiceFactory([log = m_log] { return log; });
    m_globals.setThemeFactory([theme = m_theme] { return theme; });
    m_globals.setWorkflowStateService(
        std::make_shared<fw::SqlWorkflowStateService>(m_connection, m_globals.user(), m_globals.userGroup()));
}

EditorHost::~EditorHost()
{
    delete m_form;
    m_entry.reset();
}

FRMGD_DISTINTA *EditorHost::openEditor()
{
    m_entry = std::make_unique<CLSGD_DISTINTA>();
    fw::HostContext context;
    context.globals = &m_globals;
    context.connection = m_connection;
    context.navigator = &m_navigator;
    context.caption = QStringLiteral("Distinta di classificazione");
    context.menuModulo = QStringLiteral("GD");
    context.menuPadre = QStringLiteral("GD00");
    context.menuProg = QStringLiteral("GD01");
    fw::fillHostContract(*m_entry, context);
    m_entry->ShowForm();
    m_form = m_entry->form();
    if (m_form)
        m_form->Form_Activate();
    return m_form;
}

} // namespace bench
