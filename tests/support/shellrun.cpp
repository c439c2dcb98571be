#include "tests/support/shellrun.h"

#include <QCoreApplication>
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
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program(), arguments);
    const bool finished = process.waitForFinished(300000);
    if (!finished)
        process.kill();
    return {finished ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}
