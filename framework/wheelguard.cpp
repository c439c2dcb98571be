#include "framework/wheelguard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QWidget>

namespace fw {

WheelGuard::WheelGuard(QObject *parent)
    : QObject(parent)
{ }

namespace {

void guard(QWidget *control, WheelGuard *guard)
{
    // With the wheel focus policy the wheel hands the control the focus before any filter runs.
    if (control->focusPolicy() == Qt::WheelFocus)
        control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(guard); // a second install of the same filter counts once
}

} // namespace

void WheelGuard::protect(QWidget *root)
{
    auto *wheelGuard = root->findChild<WheelGuard *>(QString(), Qt::FindDirectChildrenOnly);
    if (!wheelGuard)
        wheelGuard = new WheelGuard(root);
    for (QComboBox *combo : root->findChildren<QComboBox *>())
        guard(combo, wheelGuard);
    for (QAbstractSpinBox *spin : root->findChildren<QAbstractSpinBox *>())
        guard(spin, wheelGuard);
}

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel)
        return false;
    const auto *control = qobject_cast<QWidget *>(watched);
    if (!control || control->hasFocus())
        return false;
    // Unaccepted, the event goes on to the control's parent.
    event->ignore();
    return true;
}

} // namespace fw
