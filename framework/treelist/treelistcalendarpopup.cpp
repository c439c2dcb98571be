#include "framework/treelist/treelistcalendarpopup.h"

#include <QCalendarWidget>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace fw {

TreeListCalendarPopup::TreeListCalendarPopup(QWidget *owner)
    : QFrame(owner, Qt::Popup)
    , m_calendar(new QCalendarWidget(this))
    , m_today(new QPushButton(tr("Oggi"), this))
    , m_clear(new QPushButton(tr("Cancella"), this))
{
    setFrameShape(QFrame::StyledPanel);
    m_calendar->setGridVisible(true);
    m_calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    m_calendar->setFirstDayOfWeek(Qt::Monday);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_today);
    buttons->addStretch();
    buttons->addWidget(m_clear);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_calendar);
    layout->addLayout(buttons);

    connect(m_calendar, &QCalendarWidget::clicked, this, &TreeListCalendarPopup::choose);
    connect(m_calendar, &QCalendarWidget::activated, this, &TreeListCalendarPopup::choose);
    connect(m_today, &QPushButton::clicked, this, [this] { choose(QDate::currentDate()); });
    connect(m_clear, &QPushButton::clicked, this, [this] { choose(QDate()); });
}

void TreeListCalendarPopup::showBelow(const QWidget *anchor, const QDate &date)
{
    m_calendar->setSelectedDate(date.isValid() ? date : QDate::currentDate());
    adjustSize();
    QPoint position = anchor->mapToGlobal(QPoint(0, anchor->height()));
    if (const QScreen *screen = anchor->screen()) {
        const QRect available = screen->availableGeometry();
        if (position.y() + height() > available.bottom())
            position.ry() -= height() + anchor->height();
        position.rx() = qBound(available.left(), position.x(), available.right() - width());
    }
    move(position);
    show();
    m_calendar->setFocus();
}

void TreeListCalendarPopup::choose(const QDate &date)
{
    hide();
    emit chosen(date);
}

} // namespace fw
