#include "framework/windowupdatelock.h"

#include "framework/treelist/treelist.h"

namespace fw {

WindowUpdateLock::WindowUpdateLock(QWidget *widget)
{
    if (auto *tree = qobject_cast<TreeList *>(widget)) {
        m_tree = tree;
        tree->beginUpdate();
    } else if (widget) {
        m_widget = widget;
        m_wasEnabled = widget->updatesEnabled();
        widget->setUpdatesEnabled(false);
    }
}

WindowUpdateLock::~WindowUpdateLock()
{
    release();
}

void WindowUpdateLock::release()
{
    if (m_tree)
        m_tree->endUpdate();
    if (m_widget && m_wasEnabled)
        m_widget->setUpdatesEnabled(true);
    m_tree = nullptr;
    m_widget = nullptr;
}

} // namespace fw
