#pragma once

#include <QLineEdit>
#include <QVariant>

namespace fw {

class TreeListCalendarPopup;

// The in-place editor of a date cell: typed through the mask of dd/MM/yyyy, or picked from a
// drop-down calendar (F4, Alt+Down or the arrow in the editor) that also offers today and a
// clear button.
class TreeListDateEditor : public QLineEdit
{
    Q_OBJECT

public:
    explicit TreeListDateEditor(QWidget *parent = nullptr);

    void setValue(const QVariant &value); // a date, a date-time or null
    QVariant value() const;               // null when blank, a QDate when valid, else the text typed
    bool isValidInput() const;            // blank or a real date

    void showCalendar();
    TreeListCalendarPopup *calendarPopup() const { return m_popup; }

signals:
    void closedUp(const QVariant &value); // a date, or null for the clear button

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    bool isBlank() const;

    TreeListCalendarPopup *m_popup;
};

} // namespace fw
