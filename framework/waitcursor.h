#pragma once

#include <QCursor>
#include <QPointer>

class QWidget;

namespace fw {

// The wait pointer over a widget (and its children) while a piece of work lasts on the
// user-interface thread; the pointer it had comes back however the work ends. A dialog that the
// work opens meanwhile keeps its own pointer.
class WaitCursor
{
public:
    explicit WaitCursor(QWidget *widget);
    ~WaitCursor();
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    QPointer<QWidget> m_widget;
    bool m_hadCursor = false;
    QCursor m_previous;
};

} // namespace fw
