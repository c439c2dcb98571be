#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// The shell program run as a scheduled job runs it: no display unless asked (offscreen), no
// plugin folder from the environment. exitCode is -1 when it did not end within five minutes.
struct ShellRun
{
    int exitCode = -1;
    QString out;
    QString err;

    static QString program(); // <bin>/distinta
    static ShellRun run(const QStringList &arguments, bool offscreen = false);
    // A run in the given environment, cut short after timeoutMs; programPath, when given, is a
    // wrapper that runs the program (its path among the arguments). A run that crashes or is
    // ended by a sanitizer prints its standard error as a warning, so that the test's log says why.
    static ShellRun runIn(const QProcessEnvironment &environment, const QStringList &arguments, int timeoutMs = 300000,
                          const QString &programPath = {});
};
