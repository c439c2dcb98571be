#pragma once

#include "platform/db/connection.h"

#include <QString>

class QObject;

namespace fw {

class ActiveNavigator;
class Cinterface;
class GlobalServices;

// What a host hands a module before opening it. The shell builds one from its login context;
// a module that opens another component passes its own on (from()).
struct HostContext
{
    GlobalServices *globals = nullptr;
    db::ConnectionPtr connection;
    QObject *activeFrame = nullptr; // the shell's MDI host
    ActiveNavigator *navigator = nullptr;
    QObject *statusBar = nullptr;
    QString caption;
    QString menuModulo;
    QString menuPadre;
    QString menuProg;
    bool canInsert = true;
    bool canDelete = true;
    bool canUpdate = true;
    bool canQbe = true;
    bool modal = false;

    static HostContext from(const Cinterface &module);
};

// Sets the host contract of a module from the context, as the shell does before ShowForm.
void fillHostContract(Cinterface &module, const HostContext &context);

} // namespace fw
