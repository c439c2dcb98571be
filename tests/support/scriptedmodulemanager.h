#pragma once

#include "framework/modulemanager.h"

#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

// The host's module manager as the tests play it: records every request and answers as told.
// A request for what the host has not installed is answered false after recording it, as the
// shell does once it has told the user.
class ScriptedModuleManager : public fw::ModuleManager
{
public:
    struct Request
    {
        QString what; // "component", "created", "promotions", "contract", "masterData", "card"
        QString programId;
        int company = 0;
        int subjectKind = -1;
        qint64 subjectCode = 0;
        QString callerCaption; // of a created component: its own
        bool callerHasConnection = false;
        QString filter;                 // promotions
        fw::ContractReference contract; // contract
    };

    bool openComponent(const QString &programId, const fw::Cinterface &caller) override;
    bool openCreatedComponent(std::unique_ptr<fw::Cinterface> component) override;
    bool openPromotions(const QString &filter) override;
    bool openContract(const fw::ContractReference &contract) override;
    bool openSubjectMasterData(int subjectKind, qint64 subjectCode) override;
    bool openSubjectCard(const QString &programId, int company, qint64 subjectCode) override;

    // --- script: what the host has installed (everything, unless told)
    std::function<bool(const QString &programId)> installed = [](const QString &) { return true; };
    // Opens a subject card as a host would, once recorded; none by default.
    std::function<bool(const QString &programId, int company, qint64 subjectCode)> cardOpener;

    QList<Request> requests;
    // The components handed over already created, kept and shown as the shell does (when installed).
    std::vector<std::unique_ptr<fw::Cinterface>> createdComponents;

private:
    bool answer(const Request &request);
};
