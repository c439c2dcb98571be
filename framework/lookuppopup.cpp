#include "framework/lookuppopup.h"

#include "framework/recordsetgrid.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace fw {

LookupPopup::LookupPopup(const QString &name, const QString &title, QWidget *parent)
    : QFrame(parent, Qt::Popup)
    , m_title(new QLabel(title, this))
    , m_grid(new RecordsetGrid(this))
{
    setObjectName(name);
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_grid->setObjectName(name + QStringLiteral("_Griglia"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_title);
    layout->addWidget(m_grid);
    connect(m_grid, &RecordsetGrid::rowChosen, this, [this](int row) {
        emit chosen(row);
        close();
    });
}

void LookupPopup::setRows(db::RecordsetPtr rows, const QList<RecordsetGridColumn> &columns)
{
    m_grid->setColumns(columns);
    m_grid->setRecordset(std::move(rows));
    m_grid->setFocus();
    if (m_grid->model()->rowCount() > 0)
        m_grid->setCurrentIndex(m_grid->model()->index(0, 0));
}

QString LookupPopup::title() const
{
    return m_title->text();
}

void LookupPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QFrame::keyPressEvent(event);
}

} // namespace fw
