#include "windowupdatelock.h"

namespace os {

WindowUpdateLock::WindowUpdateLock(QWidget *widget)
    : m_widget(widget)
{
    if (m_widget) {
        m_wasEnabled = m_widget->updatesEnabled();
        m_widget->setUpdatesEnabled(false);
    }
}

WindowUpdateLock::~WindowUpdateLock()
{
    release();
}

void WindowUpdateLock::release()
{
    if (m_widget && m_wasEnabled)
        m_widget->setUpdatesEnabled(true);
    m_widget = nullptr;
}

} // namespace os
