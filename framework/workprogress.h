#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <memory>

class QProgressDialog;
class QWidget;

namespace fw {

// The progress of a long piece of work done on the user-interface thread: a modal progress box
// that appears only once the work has lasted a moment, with "Annulla" when the work can stop.
// Without a visible window to stand over (an unattended run) nothing is shown.
class WorkProgress
{
public:
    WorkProgress(QWidget *over, const QString &label, int total, bool cancellable, int showAfterMs = 1000);
    ~WorkProgress();
    WorkProgress(const WorkProgress &) = delete;
    WorkProgress &operator=(const WorkProgress &) = delete;

    // The box also says how many of the total are done ("label\n120 di 5000").
    void showCounts();
    // The box's object name, for work that has always named it otherwise.
    void setObjectName(const QString &name);

    // done of total so far; false once the user has cancelled. Cheap enough to call on every
    // row: the box is updated (and events handled) a few times a second only.
    bool advance(int done);
    bool cancelled() const;

private:
    QString m_label;
    int m_total = 0;
    bool m_counts = false;
    std::unique_ptr<QProgressDialog> m_dialog;
    QElapsedTimer m_sinceUpdate;
    bool m_updated = false;
    bool m_cancelled = false;
};

} // namespace fw
