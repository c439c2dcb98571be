#pragma once

#include "platform/db/connection.h"

#include <QString>
#include <memory>

class ComponentCatalog;

namespace fw {
class Cinterface;
class HostGlobalServices;
}

// What the runs without a window (print, export) share.

// True when the command line holds the option (as "--name" or "--name=value"): such a run needs
// no display.
bool commandLineHas(int argc, char **argv, const char *option);

// The module of programId created from the catalog and given the host contract as ShowForm
// would get it; null when the catalog does not have it.
std::unique_ptr<fw::Cinterface> createHeadlessModule(const ComponentCatalog &catalog, const QString &programId,
                                                     fw::HostGlobalServices &globals,
                                                     const db::ConnectionPtr &connection);
