#pragma once

#include "platform/db/connection.h"

#include <QString>
#include <memory>

class ComponentCatalog;
struct ShellOptions;

namespace fw {
class HostGlobalServices;
class UnattendedRun;
}

// True when the command line asks for an export without a window (--export): such a run needs
// no display.
bool asksForExport(int argc, char **argv);

// Writes the list that options.exportList names to its file through the module, without any
// window, as printWithoutWindow prints. Returns the exit code: 0 when the file was written;
// fw::UnattendedRun::FailureExitCode after a failing statement (already reported); 1 with the
// reason on the standard error stream otherwise.
int exportWithoutWindow(const ShellOptions &options, fw::HostGlobalServices &globals,
                        const db::ConnectionPtr &connection, const ComponentCatalog &catalog,
                        const QString &programId, const std::shared_ptr<fw::UnattendedRun> &unattended);
