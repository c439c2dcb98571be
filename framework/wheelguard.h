#pragma once

#include <QObject>

class QWidget;

namespace fw {

// A combo box, spin box or date field of a form may write the moment its value changes, so a
// wheel turned while the pointer merely passes over it must not change it. Such a control takes
// the wheel only while it has the keyboard focus; otherwise the wheel goes on to what holds it
// (a scrolling area scrolls), and the wheel no longer gives it the focus either.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    // Guards every combo box and spin box (date fields included) that the widget holds. Calling
    // it again guards the controls added since.
    static void protect(QWidget *root);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit WheelGuard(QObject *parent);
};

} // namespace fw
