#pragma once

#include <QPointer>
#include <QWidget>

namespace os {

// Freezes the drawing of a widget for the lifetime of the guard, for long fills of a tree or a
// grid; drawing comes back (with one repaint) when the guard goes, even on an exception.
// A widget that was already frozen stays frozen.
class WindowUpdateLock
{
public:
    explicit WindowUpdateLock(QWidget *widget);
    ~WindowUpdateLock();

    WindowUpdateLock(const WindowUpdateLock &) = delete;
    WindowUpdateLock &operator=(const WindowUpdateLock &) = delete;

    void release(); // ends the freeze before the guard goes

private:
    QPointer<QWidget> m_widget;
    bool m_wasEnabled = false;
};

} // namespace os
