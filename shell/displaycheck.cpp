#include "shell/displaycheck.h"

#include <QByteArray>
#include <QList>
#include <QTextStream>
#include <QtGlobal>

namespace {

bool needsNoDisplay(const QByteArray &platform)
{
    const QByteArray name = platform.split(':').first();
    return !name.isEmpty() && name != "xcb" && name != "wayland" && name != "wayland-egl";
}

} // namespace

bool displayAvailable(int argc, char **argv)
{
    if (!qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return true;
    for (int i = 1; i + 1 < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "-platform" || argument == "--platform")
            return needsNoDisplay(argv[i + 1]);
    }
    return needsNoDisplay(qgetenv("QT_QPA_PLATFORM"));
}

void explainMissingDisplay()
{
    QTextStream(stderr) << "distinta: nessun display disponibile (DISPLAY e WAYLAND_DISPLAY non sono impostate).\n"
                           "Il programma ha bisogno di uno schermo grafico. Su una macchina senza schermo lo si avvia\n"
                           "sotto un server X virtuale:\n"
                           "    xvfb-run -a build/bin/distinta\n"
                           "oppure, senza finestre visibili, con QT_QPA_PLATFORM=offscreen.\n";
}
