#pragma once

#include <QString>
#include <memory>

namespace fw {

class LogService;
class ModuleManager;
class ReportEngine;
class ThemeService;
class TranslationService;
class WorkflowStateService;

// The shell's global services object: the login context and the services a module creates.
class GlobalServices
{
public:
    virtual ~GlobalServices() = default;

    // --- login context
    virtual int workingCompany() const = 0;
    virtual QString user() const = 0;
    virtual QString userGroup() const = 0;
    virtual QString applicationTitle() const = 0;

    // A condition to append to a WHERE clause (" AND ...") that keeps the rows whose division
    // column names a division the user may see; empty when every division is visible.
    virtual QString divisionVisibility(const QString &divisionColumn) const = 0;

    // --- services
    virtual TranslationService *translationService() const = 0;
    virtual ModuleManager *moduleManager() const = 0;

    // A form creates its own log service at load and releases it at unload; null when the
    // host cannot give one.
    virtual std::shared_ptr<LogService> createLogService() const = 0;
    // Null when the host has no theme: designed colours stay.
    virtual std::shared_ptr<ThemeService> createThemeService() const = 0;
    virtual std::unique_ptr<ReportEngine> createReportEngine() const = 0;
    virtual std::shared_ptr<WorkflowStateService> workflowStateService() const = 0;
};

} // namespace fw
