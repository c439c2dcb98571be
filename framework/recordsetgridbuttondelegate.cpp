#include "framework/recordsetgridbuttondelegate.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

namespace fw {

void RecordsetGridButtonDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                        const QModelIndex &index) const
{
    QStyleOptionButton button;
    button.rect = option.rect.adjusted(1, 1, -1, -1);
    button.text = index.data(Qt::DisplayRole).toString();
    button.state = QStyle::State_Enabled | QStyle::State_Raised;
    button.fontMetrics = option.fontMetrics;
    const QWidget *widget = option.widget;
    QStyle *style = widget ? widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_PushButton, &button, painter, widget);
}

bool RecordsetGridButtonDelegate::editorEvent(QEvent *event, QAbstractItemModel *model,
                                              const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::LeftButton && option.rect.contains(mouse->position().toPoint())) {
            emit pressed(index);
            return true;
        }
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}

} // namespace fw
