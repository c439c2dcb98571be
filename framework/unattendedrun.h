#pragma once

#include <QString>

namespace fw {

// A run without a user: the shell's --exit-after-show and --screenshot, and every headless
// command (print, export). Nobody can answer an error dialog, and its default answer, Retry,
// would repeat the failure for ever; so the first error ends the run. It is written once to the
// standard error stream (the procedure's label and the database's message), the log services
// answer every error dialog with Abort from then on, and the application leaves its event loops
// with FailureExitCode. An error raised before the shell's event loop runs is kept: the shell
// asks failed() and returns the same code.
class UnattendedRun
{
public:
    static constexpr int FailureExitCode = 3;

    // The first call writes report to stderr and asks the application to quit; later calls do
    // nothing, so that the errors an aborted start-up leaves behind do not bury the first one.
    void fail(const QString &report);

    bool failed() const { return m_failed; }
    QString report() const { return m_report; }

private:
    bool m_failed = false;
    QString m_report;
};

} // namespace fw
