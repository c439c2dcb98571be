#pragma once

#include "framework/recordsetgridcolumn.h"
#include "platform/db/recordset.h"

#include <QFrame>

class QLabel;

namespace fw {

class RecordsetGrid;

// The list a lookup opens under its field: the rows of a query with a title. Double click or
// Enter chooses a row, Escape closes without a choice. The popup deletes itself once closed.
class LookupPopup : public QFrame
{
    Q_OBJECT

public:
    // name: the lookup's name ("lkp_Divisioni"), also the popup's object name.
    LookupPopup(const QString &name, const QString &title, QWidget *parent = nullptr);

    void setRows(db::RecordsetPtr rows, const QList<RecordsetGridColumn> &columns);
    RecordsetGrid *grid() const { return m_grid; }
    QString title() const;

signals:
    // The chosen row's value of the field named when the lookup opened.
    void chosen(int row);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLabel *m_title;
    RecordsetGrid *m_grid;
};

} // namespace fw
