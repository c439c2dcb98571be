#include "framework/progressfeedback.h"

#include <QProgressDialog>

namespace fw {

namespace {

constexpr int showAfterMs = 1000;
constexpr int updateEveryMs = 100;   // repainting on every step would cost more than the work

QString countText(const QString &label, int done, int total)
{
    return QStringLiteral("%1\n%2 di %3").arg(label).arg(done).arg(total);
}

} // namespace

ProgressFeedback::ProgressFeedback(QWidget *parent, const QString &label, int total, bool cancellable)
    : m_label(label)
    , m_total(qMax(0, total))
    , m_dialog(new QProgressDialog(countText(label, 0, m_total), cancellable ? QStringLiteral("Annulla") : QString(),
                                   0, qMax(1, m_total), parent))
{
    m_dialog->setObjectName(QStringLiteral("dlgAvanzamento"));
    m_dialog->setWindowTitle(parent ? parent->window()->windowTitle() : QString());
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setMinimumDuration(showAfterMs);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    if (!cancellable)
        m_dialog->setCancelButton(nullptr);
    m_dialog->setValue(0);
    m_sinceUpdate.start();
}

ProgressFeedback::~ProgressFeedback()
{
    delete m_dialog;
}

bool ProgressFeedback::advance(int done)
{
    if (!m_dialog)
        return true;
    if (m_sinceUpdate.elapsed() >= updateEveryMs || done >= m_total) {
        m_sinceUpdate.restart();
        m_dialog->setLabelText(countText(m_label, done, m_total));
        m_dialog->setValue(qMin(done, qMax(1, m_total)));
    }
    return !m_dialog->wasCanceled();
}

bool ProgressFeedback::wasCancelled() const
{
    return m_dialog && m_dialog->wasCanceled();
}

} // namespace fw
