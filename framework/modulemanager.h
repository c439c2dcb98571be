#pragma once

#include <QString>
#include <QVariant>
#include <memory>

namespace fw {

class Cinterface;

// What the suite's contract management is opened on.
struct ContractReference
{
    QVariant IDContratto;
    QVariant ContrattoCod;
    QVariant ContrattoVer;
    QVariant ContrattoDes;
    QVariant IDCondizione;
    bool premio = false; // the condition is a bonus
    QVariant CondizioneCod;
};

// The shell's opening of other components as its windows. Each call returns false when the
// host could not open what was asked (it has already told the user why).
class ModuleManager
{
public:
    virtual ~ModuleManager() = default;

    // Creates the component registered under programId ("PRIOTAB.PriorityTables", ...), gives it
    // the caller's host objects (connection, global services, navigator, rights) and opens it.
    virtual bool openComponent(const QString &programId, const Cinterface &caller) = 0;

    // Opens, as a window of the shell, a component that the caller has created and given its
    // host objects; the host keeps it from then on, as it keeps those it creates.
    virtual bool openCreatedComponent(std::unique_ptr<Cinterface> component) = 0;

    // The promotions management, showing the campaigns that match filter (" MG94_CODCAMP IN (...)").
    virtual bool openPromotions(const QString &filter) = 0;

    virtual bool openContract(const ContractReference &contract) = 0;

    // The master data of a customer (subjectKind 0) or supplier (1) of the working company.
    virtual bool openSubjectMasterData(int subjectKind, qint64 subjectCode) = 0;

    // A subject's card component ("CARDS.CustomerCard", "CARDS.SupplierCard").
    virtual bool openSubjectCard(const QString &programId, int company, qint64 subjectCode) = 0;
};

} // namespace fw
