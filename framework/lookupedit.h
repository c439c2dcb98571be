#pragma once

#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QLineEdit>
#include <QPointer>

class QAction;

namespace fw {

class LookupPopup;

// An edit field whose value can also be chosen from a list: a button at its right (or F4) asks
// for the list, the form reads the rows and hands them to showLookup(); the chosen row's value
// becomes the field's text as if typed.
class LookupEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit LookupEdit(QWidget *parent = nullptr);

    // The list button of any edit field; its object name is the field's followed by "_Lookup".
    static QAction *addLookupButton(QLineEdit *edit);

    QAction *lookupButton() const { return m_button; }

    // Opens the list under the field; valueField names the column whose value is taken.
    LookupPopup *showLookup(const QString &name, const QString &title, db::RecordsetPtr rows,
                            const QList<RecordsetGridColumn> &columns, const QString &valueField);
    LookupPopup *popup() const; // the list open now; null when none

signals:
    void lookupRequested();
    // A row was chosen and its value is now the field's text.
    void lookupChosen();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QAction *m_button;
    QPointer<LookupPopup> m_popup;
};

} // namespace fw
