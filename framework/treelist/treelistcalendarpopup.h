#pragma once

#include <QDate>
#include <QFrame>

class QCalendarWidget;
class QPushButton;

namespace fw {

// The drop-down of a date cell: a calendar with a button for today and one that clears.
class TreeListCalendarPopup : public QFrame
{
    Q_OBJECT

public:
    explicit TreeListCalendarPopup(QWidget *owner);

    void showBelow(const QWidget *anchor, const QDate &date);

    QCalendarWidget *calendar() const { return m_calendar; }
    QPushButton *todayButton() const { return m_today; }
    QPushButton *clearButton() const { return m_clear; }

signals:
    void chosen(const QDate &date); // a null date when the clear button was pressed

private:
    void choose(const QDate &date);

    QCalendarWidget *m_calendar;
    QPushButton *m_today;
    QPushButton *m_clear;
};

} // namespace fw
