#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>

class QProgressDialog;
class QWidget;

namespace fw {

// How far a long piece of work has got: a window-modal progress dialog with the count done,
// shown only once the work has run for about a second, so that short work shows nothing.
// Cancel is offered when the work can stop between two steps; it never interrupts a step.
class ProgressFeedback
{
public:
    ProgressFeedback(QWidget *parent, const QString &label, int total, bool cancellable);
    ~ProgressFeedback();
    ProgressFeedback(const ProgressFeedback &) = delete;
    ProgressFeedback &operator=(const ProgressFeedback &) = delete;

    // Records the steps done so far; false once the user asked to stop.
    bool advance(int done);
    bool wasCancelled() const;

private:
    QString m_label;
    int m_total;
    QPointer<QProgressDialog> m_dialog;
    QElapsedTimer m_sinceUpdate;
};

} // namespace fw
