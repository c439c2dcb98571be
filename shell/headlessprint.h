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

// True when the command line asks for a print without a window (--print): such a run needs no
// display.
bool asksForPrint(int argc, char **argv);

// Prints the list that options.print names to its PDF through the module, without opening any
// window: the module gets its host contract as for ShowForm and a report engine that writes the
// PDF unattended; the log services of globals are those of the run without a user. Returns the
// exit code: 0 when the PDF was written; fw::UnattendedRun::FailureExitCode after a failing
// statement (already reported); 1 with the reason on the standard error stream otherwise.
int printWithoutWindow(const ShellOptions &options, fw::HostGlobalServices &globals,
                       const db::ConnectionPtr &connection, const ComponentCatalog &catalog,
                       const QString &programId, const std::shared_ptr<fw::UnattendedRun> &unattended);
