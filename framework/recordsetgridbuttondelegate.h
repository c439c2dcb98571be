#pragma once

#include <QStyledItemDelegate>

namespace fw {

// Paints the cells of a grid's button columns as push buttons and reports a press on one.
class RecordsetGridButtonDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

signals:
    void pressed(const QModelIndex &index);
};

} // namespace fw
