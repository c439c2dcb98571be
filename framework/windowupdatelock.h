#pragma once

#include <QPointer>
#include <QWidget>

namespace fw {

class TreeList;

// Freezes the drawing of a widget for the lifetime of the guard, for long fills of a tree or a
// grid; drawing comes back (with one repaint) when the guard goes, even on an exception.
// A widget that was already frozen stays frozen. A tree list also lays its rows out once, when
// the outermost guard goes, however many nodes were expanded or collapsed meanwhile.
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
    QPointer<TreeList> m_tree;
    bool m_wasEnabled = false;
};

} // namespace fw
