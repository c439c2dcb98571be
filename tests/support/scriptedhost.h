#pragma once

#include "framework/hostcontext.h"

#include <QStatusBar>
#include "tests/support/scriptedlogservice.h"
#include "tests/support/scriptedmodulemanager.h"
#include "tests/support/scriptednavigator.h"
#include "tests/support/testdatabase.h"

#include <memory>

class CLSGD_DISTINTA;
class FRMGD_DISTINTA;

namespace fw {
class DefaultTheme;
class DictionaryTranslationService;
class HostGlobalServices;
} // namespace fw

// The suite's shell as the tests play it: a fresh database, the scripted log service shared by
// every form, the scripted navigator, the standard dictionary and theme, and a login context
// (company 1, user "tester", group "ADMIN", application title "VRAX Prove"), and a module manager
// that records what the module asks of the host.
// Forms open as windows of their own (no MDI area).
class ScriptedHost
{
public:
    static constexpr int Company = 1;

    explicit ScriptedHost(TestDatabase::Content content = TestDatabase::SchemaOnly);
    ~ScriptedHost();

    TestDatabase &database() { return *m_database; }
    ScriptedLogService &log() { return *m_log; }
    ScriptedNavigator &navigator() { return *m_navigator; }
    ScriptedModuleManager &modules() { return *m_modules; }
    fw::HostGlobalServices &globals() { return *m_globals; }
    fw::DictionaryTranslationService &translations() { return *m_translations; }
    // The status bar the shell hands to its modules.
    QStatusBar &statusBar() { return *m_statusBar; }

    // The host objects as the shell hands them to a module.
    fw::HostContext context() const;

    // A new entry class with its host contract filled in as the shell fills it.
    std::unique_ptr<CLSGD_DISTINTA>
    createEntryClass(const QString &caption = QStringLiteral("Distinta di classificazione"));

    // ShowForm on the entry class, then the editor's first activation; the editor opened.
    FRMGD_DISTINTA *openEditor(CLSGD_DISTINTA &entry);

private:
    std::unique_ptr<TestDatabase> m_database;
    std::shared_ptr<ScriptedLogService> m_log;
    std::unique_ptr<ScriptedNavigator> m_navigator;
    std::unique_ptr<ScriptedModuleManager> m_modules;
    std::shared_ptr<fw::DictionaryTranslationService> m_translations;
    std::shared_ptr<fw::DefaultTheme> m_theme;
    std::unique_ptr<fw::HostGlobalServices> m_globals;
    std::unique_ptr<QStatusBar> m_statusBar;
};
