#pragma once

#include "framework/hostglobalservices.h"
#include "platform/db/connection.h"
#include "tests/support/scriptedlogservice.h"
#include "tests/support/scriptednavigator.h"

#include <QPointer>
#include <memory>

class CLSGD_DISTINTA;
class FRMGD_DISTINTA;

namespace fw {
class DefaultTheme;
class DictionaryTranslationService;
} // namespace fw

namespace bench {

// The shell as it opens the editor, on an existing database file: login context of company 1
// (user "bench", group "ADMIN"), the standard dictionary and theme, and a log service that
// records instead of asking (its answers can be scripted).
class EditorHost
{
public:
    explicit EditorHost(const QString &databasePath);
    ~EditorHost();

    // ShowForm on a new entry class, then the first activation: the editor loads the first
    // customer type, which is the large tree.
    FRMGD_DISTINTA *openEditor();

    db::ConnectionPtr connection() const { return m_connection; }
    ScriptedLogService &log() { return *m_log; }
    fw::HostGlobalServices &globals() { return m_globals; }

private:
    db::ConnectionPtr m_connection;
    std::shared_ptr<ScriptedLogService> m_log;
    std::shared_ptr<fw::DictionaryTranslationService> m_translations;
    std::shared_ptr<fw::DefaultTheme> m_theme;
    fw::HostGlobalServices m_globals;
    ScriptedNavigator m_navigator;
    std::unique_ptr<CLSGD_DISTINTA> m_entry;
    QPointer<FRMGD_DISTINTA> m_form;
};

} // namespace bench
