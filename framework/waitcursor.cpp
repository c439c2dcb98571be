#include "framework/waitcursor.h"

#include <QWidget>

namespace fw {

WaitCursor::WaitCursor(QWidget *widget)
    : m_widget(widget)
{
    if (!widget)
        return;
    m_hadCursor = widget->testAttribute(Qt::WA_SetCursor);
    if (m_hadCursor)
        m_previous = widget->cursor();
    widget->setCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor()
{
    if (!m_widget)
        return;
    if (m_hadCursor)
        m_widget->setCursor(m_previous);
    else
        m_widget->unsetCursor();
}

} // namespace fw
