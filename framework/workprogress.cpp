#include "framework/workprogress.h"

#include <QCoreApplication>
#include <QProgressDialog>
#include <QWidget>

namespace fw {

namespace {

constexpr int UpdateEveryMs = 100;

} // namespace

WorkProgress::WorkProgress(QWidget *over, const QString &label, int total, bool cancellable, int showAfterMs)
{
    if (!over || !over->isVisible())
        return;
    m_dialog = std::make_unique<QProgressDialog>(label, QString(), 0, std::max(total, 1), over->window());
    m_dialog->setObjectName(QStringLiteral("PRG_LAVORO"));
    m_dialog->setWindowTitle(over->window()->windowTitle());
    if (cancellable)
        m_dialog->setCancelButtonText(QStringLiteral("Annulla"));
    else
        m_dialog->setCancelButton(nullptr);
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    m_dialog->setMinimumDuration(showAfterMs);
    m_dialog->setValue(0);
    m_sinceUpdate.start();
}

WorkProgress::~WorkProgress() = default;

bool WorkProgress::advance(int done)
{
    if (!m_dialog || m_cancelled)
        return !m_cancelled;
    if (m_updated && m_sinceUpdate.elapsed() < UpdateEveryMs && done < m_dialog->maximum())
        return true;
    m_updated = true;
    m_sinceUpdate.restart();
    m_dialog->setValue(std::min(done, m_dialog->maximum()));
    // Once the box is up (and modal) it answers at every update, "Annulla" included; before
    // that, nothing else may run in the middle of the work.
    if (m_dialog->isVisible())
        QCoreApplication::processEvents();
    m_cancelled = m_dialog->wasCanceled();
    return !m_cancelled;
}

bool WorkProgress::cancelled() const
{
    return m_cancelled;
}

} // namespace fw
