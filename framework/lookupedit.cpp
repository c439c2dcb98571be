#include "framework/lookupedit.h"

#include "framework/lookuppopup.h"
#include "framework/columnsizing.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>

namespace fw {

LookupEdit::LookupEdit(QWidget *parent)
    : QLineEdit(parent)
    , m_button(nullptr)
{
    m_button = addLookupButton(this);
    connect(m_button, &QAction::triggered, this, &LookupEdit::lookupRequested);
}

QAction *LookupEdit::addLookupButton(QLineEdit *edit)
{
    const QIcon icon = QApplication::style()->standardIcon(QStyle::SP_FileDialogContentsView);
    QAction *button = edit->addAction(icon, QLineEdit::TrailingPosition);
    button->setObjectName(edit->objectName() + QStringLiteral("_Lookup"));
    button->setToolTip(QStringLiteral("Elenco (F4)"));
    connect(edit, &QObject::objectNameChanged, button,
            [button](const QString &name) { button->setObjectName(name + QStringLiteral("_Lookup")); });
    return button;
}

LookupPopup *LookupEdit::showLookup(const QString &name, const QString &title, db::RecordsetPtr rows,
                                    const QList<RecordsetGridColumn> &columns, const QString &valueField)
{
    if (m_popup)
        m_popup->close();
    auto *popup = new LookupPopup(name, title, this);
    m_popup = popup;
    const int valueIndex = rows ? rows->fieldIndex(valueField) : -1;
    connect(popup, &LookupPopup::chosen, this, [this, rows, valueIndex](int row) {
        if (!rows || valueIndex < 0 || row < 0 || row >= rows->recordCount())
            return;
        setText(rows->valueAt(row, valueIndex).toString().trimmed());
        setModified(true);
        emit lookupChosen();
    });
    popup->setRows(std::move(rows), columns);

    int width = 0;
    for (const RecordsetGridColumn &column : columns)
        width += column.visible ? twipsToPixels(column.width, logicalDpiX()) : 0;
    popup->resize(qMax(this->width(), width + 40), 260);
    QPoint below = mapToGlobal(QPoint(0, height()));
    if (const QScreen *screen = this->screen()) {
        const QRect area = screen->availableGeometry();
        below.setX(qMin(below.x(), area.right() - popup->width()));
        if (below.y() + popup->height() > area.bottom())
            below.setY(mapToGlobal(QPoint(0, 0)).y() - popup->height());
    }
    popup->move(below);
    popup->show();
    return popup;
}

LookupPopup *LookupEdit::popup() const
{
    return m_popup;
}

void LookupEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F4 && !isReadOnly()) {
        emit lookupRequested();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void LookupEdit::changeEvent(QEvent *event)
{
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ReadOnlyChange || event->type() == QEvent::EnabledChange)
        m_button->setEnabled(isEnabled() && !isReadOnly());
}

} // namespace fw
