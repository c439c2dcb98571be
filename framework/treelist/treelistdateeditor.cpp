#include "framework/treelist/treelistdateeditor.h"

#include "framework/treelist/treelistcalendarpopup.h"
#include "platform/db/dayformat.h"

#include <QAction>
#include <QDateTime>
#include <QKeyEvent>
#include <QStyle>

namespace fw {

TreeListDateEditor::TreeListDateEditor(QWidget *parent)
    : QLineEdit(parent)
    , m_popup(new TreeListCalendarPopup(this))
{
    setFrame(false);
    setInputMask(QStringLiteral("00/00/0000;_")); // digits optional: blank and partial input reach validation
    QAction *dropDown = addAction(style()->standardIcon(QStyle::SP_ArrowDown), QLineEdit::TrailingPosition);
    connect(dropDown, &QAction::triggered, this, &TreeListDateEditor::showCalendar);
    connect(m_popup, &TreeListCalendarPopup::chosen, this, [this](const QDate &date) {
        setValue(date);
        emit closedUp(date.isValid() ? QVariant(date) : QVariant());
    });
}

void TreeListDateEditor::setValue(const QVariant &value)
{
    const QDate date = value.metaType().id() == QMetaType::QDate ? value.toDate() : value.toDateTime().date();
    if (value.isNull() || !date.isValid())
        clear();
    else
        setText(date.toString(db::dayFormat));
}

bool TreeListDateEditor::isBlank() const
{
    QString digits = text();
    digits.remove(QLatin1Char('/'));
    return digits.trimmed().isEmpty();
}

QVariant TreeListDateEditor::value() const
{
    if (isBlank())
        return {};
    const QDate date = QDate::fromString(text(), db::dayFormat);
    return date.isValid() ? QVariant(date) : QVariant(text());
}

bool TreeListDateEditor::isValidInput() const
{
    return value().metaType().id() != QMetaType::QString;
}

void TreeListDateEditor::showCalendar()
{
    const QVariant current = value();
    m_popup->showBelow(this, current.metaType().id() == QMetaType::QDate ? current.toDate() : QDate());
}

void TreeListDateEditor::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier))) {
        showCalendar();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

} // namespace fw
