#include "tests/support/shellrun.h"

#include <QCoreApplication>
#include <QDebug>
#include <QProcess>

QString ShellRun::program()
{
    return qEnvironmentVariable("DISTINTA_BIN_DIR", QCoreApplication::applicationDirPath())
        + QStringLiteral("/distinta");
}

ShellRun ShellRun::run(const QStringList &arguments, bool offscreen)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DISTINTA_PLUGIN_DIR"})
        environment.remove(QLatin1String(name));
    if (offscreen)
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return runIn(environment, arguments);
}

ShellRun ShellRun::runIn(const QProcessEnvironment &environment, const QStringList &arguments, int timeoutMs,
                         const QString &programPath)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(programPath.isEmpty() ? program() : programPath, arguments);
    const bool finished = process.waitForFinished(timeoutMs);
    if (!finished)
        process.kill();
    const ShellRun result {finished ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
                           QString::fromUtf8(process.readAllStandardError())};
    if (finished && process.exitStatus() == QProcess::CrashExit)
        qWarning().noquote() << "distinta" << arguments.join(QLatin1Char(' ')) << "crashed:\n" << result.err;
    return result;
}
