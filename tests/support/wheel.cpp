#include "tests/support/wheel.h"

#include <QApplication>
#include <QWheelEvent>
#include <QWidget>

bool turnWheel(QWidget *over, int notches)
{
    const QPointF at = QRectF(over->rect()).center();
    QWheelEvent wheel(at, over->mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(over, &wheel);
    return wheel.isAccepted();
}
