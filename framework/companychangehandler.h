#pragma once

#include <QObject>

namespace fw {

// A window that reacts when the user changes the shell's working company.
class CompanyChangeHandler
{
public:
    virtual ~CompanyChangeHandler() = default;
    virtual void workingCompanyChanged() = 0;
};

} // namespace fw

#define CompanyChangeHandler_iid "it.vrax.framework.CompanyChangeHandler/1.0"
Q_DECLARE_INTERFACE(fw::CompanyChangeHandler, CompanyChangeHandler_iid)
