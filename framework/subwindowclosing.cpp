#include "framework/subwindowclosing.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

namespace fw {

bool closeSubWindows(QMdiArea *area)
{
    QList<QPointer<QMdiSubWindow>> windows;
    for (QMdiSubWindow *window : area->subWindowList(QMdiArea::ActivationHistoryOrder))
        windows.prepend(window);
    for (const QPointer<QMdiSubWindow> &window : std::as_const(windows)) {
        // A form that closed another one on its way out has nothing left to ask.
        if (window && window->isVisible() && !window->close())
            return false;
    }
    return true;
}

} // namespace fw
