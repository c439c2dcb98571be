#pragma once

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
};
