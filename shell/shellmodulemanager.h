#pragma once

#include "framework/hostcontext.h"
#include "framework/modulemanager.h"

#include <memory>
#include <vector>

class ComponentCatalog;

// The shell's module manager: creates components from the catalogue, fills their host
// contract and opens them in the shell's MDI area. What is not installed is said plainly.
class ShellModuleManager : public fw::ModuleManager
{
public:
    // shell: the shell's own host objects (global services, connection, MDI area).
    ShellModuleManager(const ComponentCatalog &catalog, const fw::HostContext &shell);
    ~ShellModuleManager() override;

    // Opens the component with the given host objects; null when it is not installed.
    fw::Cinterface *open(const QString &programId, const fw::HostContext &context);

    bool openComponent(const QString &programId, const fw::Cinterface &caller) override;
    bool openCreatedComponent(std::unique_ptr<fw::Cinterface> component) override;
    bool openPromotions(const QString &filter) override;
    bool openContract(const fw::ContractReference &contract) override;
    bool openSubjectMasterData(int subjectKind, qint64 subjectCode) override;
    bool openSubjectCard(const QString &programId, int company, qint64 subjectCode) override;

private:
    fw::HostContext contextFrom(const fw::Cinterface &caller) const;
    bool notInstalled(const QString &text);

    const ComponentCatalog &m_catalog;
    fw::HostContext m_shell;
    std::vector<std::unique_ptr<fw::Cinterface>> m_components;
};
