#include "framework/treelist/treelistbuttondelegate.h"

#include "framework/treelist/treelistcolumn.h"
#include "framework/treelist/treelisthooks.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionButton>

namespace fw {

QRect TreeListButtonDelegate::buttonRect(const QRect &cell)
{
    const int width = qMin(cell.height() + 2, cell.width());
    return QRect(cell.right() - width + 1, cell.top() + 1, width - 1, cell.height() - 2);
}

void TreeListButtonDelegate::paintCell(QPainter *painter, const QStyleOptionViewItem &option,
                                       const QModelIndex &index) const
{
    // The button is drawn on the focused cell only, so that a column of buttons does not hide
    // what the cells say.
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    if (view && view->currentIndex() != index) {
        TreeListDelegate::paintCell(painter, option, index);
        return;
    }
    const QRect button = buttonRect(option.rect);
    QStyleOptionViewItem textOption(option);
    textOption.rect.setRight(button.left() - 1);
    TreeListDelegate::paintCell(painter, textOption, index);

    QStyleOptionButton buttonOption;
    buttonOption.rect = button;
    buttonOption.state = QStyle::State_Enabled | QStyle::State_Raised;
    buttonOption.palette = option.palette;
    const QIcon &glyph = columnOf(index).buttonGlyph;
    if (glyph.isNull()) {
        buttonOption.text = QStringLiteral("...");
    } else {
        buttonOption.icon = glyph;
        const int side = qMax(8, button.height() - 6);
        buttonOption.iconSize = QSize(side, side);
    }
    QStyle *style = option.widget ? option.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_PushButton, &buttonOption, painter, option.widget);
}

bool TreeListButtonDelegate::editorEvent(QEvent *event, QAbstractItemModel *, const QStyleOptionViewItem &option,
                                         const QModelIndex &index)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    const auto *mouse = static_cast<QMouseEvent *>(event);
    if (mouse->button() != Qt::LeftButton || !buttonRect(option.rect).contains(mouse->position().toPoint()))
        return false;
    hooks()->buttonClicked(index);
    return true;
}

} // namespace fw
