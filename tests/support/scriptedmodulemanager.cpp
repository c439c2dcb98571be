#include "tests/support/scriptedmodulemanager.h"

#include "framework/cinterface.h"

bool ScriptedModuleManager::answer(const Request &request)
{
    requests.append(request);
    return installed(request.programId);
}

bool ScriptedModuleManager::openComponent(const QString &programId, const fw::Cinterface &caller)
{
    return answer({.what = QStringLiteral("component"),
                   .programId = programId,
                   .callerCaption = caller.Caption(),
                   .callerHasConnection = caller.Connection() != nullptr});
}

bool ScriptedModuleManager::openCreatedComponent(std::unique_ptr<fw::Cinterface> component)
{
    if (!answer({.what = QStringLiteral("created"),
                 .callerCaption = component->Caption(),
                 .callerHasConnection = component->Connection() != nullptr}))
        return false;
    fw::Cinterface *opened = component.get();
    createdComponents.push_back(std::move(component));
    opened->setWindowModal(false);
    opened->ShowForm();
    return true;
}

bool ScriptedModuleManager::openPromotions(const QString &filter)
{
    return answer({.what = QStringLiteral("promotions"), .programId = filter, .filter = filter});
}

bool ScriptedModuleManager::openContract(const fw::ContractReference &contract)
{
    return answer(
        {.what = QStringLiteral("contract"), .programId = contract.ContrattoCod.toString(), .contract = contract});
}

bool ScriptedModuleManager::openSubjectMasterData(int subjectKind, qint64 subjectCode)
{
    return answer({.what = QStringLiteral("masterData"), .subjectKind = subjectKind, .subjectCode = subjectCode});
}

bool ScriptedModuleManager::openSubjectCard(const QString &programId, int company, qint64 subjectCode)
{
    const bool opened = answer(
        {.what = QStringLiteral("card"), .programId = programId, .company = company, .subjectCode = subjectCode});
    return opened && cardOpener ? cardOpener(programId, company, subjectCode) : opened;
}
