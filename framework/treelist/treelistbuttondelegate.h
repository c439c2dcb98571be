#pragma once

#include "framework/treelist/treelistdelegate.h"

namespace fw {

// Button cells: the text comes from the draw-time hook, and a button with the column's glyph
// sits at the right of the cell. Releasing the mouse on it reports the click; the text is
// never edited in place.
class TreeListButtonDelegate : public TreeListDelegate
{
    Q_OBJECT

public:
    using TreeListDelegate::TreeListDelegate;

    static QRect buttonRect(const QRect &cell);

    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

protected:
    void paintCell(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace fw
