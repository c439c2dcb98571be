#pragma once

#include <QDate>
#include <QObject>
#include <QString>
#include <optional>

namespace fw {

// A module that prints one of its lists without opening a window, for scheduled jobs: the host
// sets the contract as for ShowForm, and its report engine decides where the print goes.
class ListPrinter
{
public:
    virtual ~ListPrinter() = default;

    // The list named by its code, down to level (as the module's level choice reads it; none:
    // the module's default), as it stood on date (none: every entry). False when nothing was
    // printed; the reason went to the log service.
    virtual bool printList(const QString &code, std::optional<int> level, std::optional<QDate> date) = 0;
};

} // namespace fw

#define ListPrinter_iid "it.vrax.framework.ListPrinter/2.0"
Q_DECLARE_INTERFACE(fw::ListPrinter, ListPrinter_iid)
