#include "framework/unattendedrun.h"

#include <QCoreApplication>
#include <QTextStream>

namespace fw {

void UnattendedRun::fail(const QString &report)
{
    if (m_failed)
        return;
    m_failed = true;
    m_report = report;
    QTextStream(stderr)
        << report << Qt::endl
        << QStringLiteral("Esecuzione senza utente interrotta per errore (codice di uscita %1).").arg(FailureExitCode)
        << Qt::endl;
    QCoreApplication::exit(FailureExitCode); // every running event loop; nothing when none runs yet
}

} // namespace fw
