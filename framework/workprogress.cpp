#include "framework/workprogress.h"

#include <QCoreApplication>
#include <QProgressDialog>
#include <QWidget>

namespace fw {

namespace {

constexpr int UpdateEveryMs = 100; // repainting on every step would cost more than the work

QString countText(const QString &label, int done, int total)
{
    return QStringLiteral("%1\n%2 di %3").arg(label).arg(done).arg(total);
}

} // namespace

WorkProgress::WorkProgress(QWidget *over, const QString &label, int total, bool cancellable, int showAfterMs)
    : m_label(label)
    , m_total(std::max(total, 0))
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

void WorkProgress::showCounts()
{
    m_counts = true;
    if (m_dialog)
        m_dialog->setLabelText(countText(m_label, 0, m_total));
}

void WorkProgress::setObjectName(const QString &name)
{
    if (m_dialog)
        m_dialog->setObjectName(name);
}

bool WorkProgress::advance(int done)
{
    if (!m_dialog || m_cancelled)
        return !m_cancelled;
    if (m_updated && m_sinceUpdate.elapsed() < UpdateEveryMs && done < m_dialog->maximum())
        return true;
    m_updated = true;
    m_sinceUpdate.restart();
    if (m_counts)
        m_dialog->setLabelText(countText(m_label, done, m_total));
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
