#pragma once

#include "platform/db/connection.h"

#include <QString>
#include <memory>

class ComponentCatalog;
struct ShellOptions;

namespace fw {
class HostGlobalServices;
class UnattendedRun;
} // namespace fw

// True when the command line asks for a print (--print) or an export (--export) without a
// window: such a run needs no display.
bool asksForRunWithoutWindow(int argc, char **argv);

// Prints the list that options.print names to its PDF, or writes the list that
// options.exportList names to its file, through the module, without opening any window: the
// module gets its host contract as for ShowForm, and a print a report engine that writes the
// PDF unattended; the log services of globals are those of the run without a user. Returns the
// exit code: 0 when the file was written; fw::UnattendedRun::FailureExitCode after a failing
// statement (already reported); 1 with the reason on the standard error stream otherwise.
int runWithoutWindow(const ShellOptions &options, fw::HostGlobalServices &globals, const db::ConnectionPtr &connection,
                     const ComponentCatalog &catalog, const QString &programId,
                     const std::shared_ptr<fw::UnattendedRun> &unattended);
