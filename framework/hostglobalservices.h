#pragma once

#include "framework/globalservices.h"

#include <QList>
#include <functional>

namespace fw {

// Global services filled in by the host that creates them: the shell from its login context,
// the tests from their scripted services.
class HostGlobalServices : public GlobalServices
{
public:
    HostGlobalServices();
    ~HostGlobalServices() override;

    int workingCompany() const override { return m_company; }
    QString user() const override { return m_user; }
    QString userGroup() const override { return m_userGroup; }
    QString applicationTitle() const override { return m_applicationTitle; }
    QString divisionVisibility(const QString &divisionColumn) const override;
    TranslationService *translationService() const override { return m_translation.get(); }
    ModuleManager *moduleManager() const override { return m_moduleManager; }
    std::shared_ptr<LogService> createLogService() const override;
    std::shared_ptr<ThemeService> createThemeService() const override;
    std::unique_ptr<ReportEngine> createReportEngine() const override;
    std::shared_ptr<WorkflowStateService> workflowStateService() const override { return m_workflow; }

    void setWorkingCompany(int company) { m_company = company; }
    void setUser(const QString &user) { m_user = user; }
    void setUserGroup(const QString &group) { m_userGroup = group; }
    void setApplicationTitle(const QString &title) { m_applicationTitle = title; }
    // Empty: every division is visible.
    void setVisibleDivisions(const QList<qint64> &divisions) { m_visibleDivisions = divisions; }
    void setTranslationService(std::shared_ptr<TranslationService> service) { m_translation = std::move(service); }
    void setModuleManager(ModuleManager *manager) { m_moduleManager = manager; }
    void setLogServiceFactory(std::function<std::shared_ptr<LogService>()> factory)
    {
        m_logFactory = std::move(factory);
    }
    void setThemeFactory(std::function<std::shared_ptr<ThemeService>()> factory)
    {
        m_themeFactory = std::move(factory);
    }
    void setReportEngineFactory(std::function<std::unique_ptr<ReportEngine>()> factory)
    {
        m_reportFactory = std::move(factory);
    }
    void setWorkflowStateService(std::shared_ptr<WorkflowStateService> service) { m_workflow = std::move(service); }

private:
    int m_company = 1;
    QString m_user;
    QString m_userGroup;
    QString m_applicationTitle;
    QList<qint64> m_visibleDivisions;
    std::shared_ptr<TranslationService> m_translation;
    ModuleManager *m_moduleManager = nullptr;
    std::function<std::shared_ptr<LogService>()> m_logFactory;
    std::function<std::shared_ptr<ThemeService>()> m_themeFactory;
    std::function<std::unique_ptr<ReportEngine>()> m_reportFactory;
    std::shared_ptr<WorkflowStateService> m_workflow;
};

} // namespace fw
