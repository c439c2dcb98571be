#include "framework/treelist/treelistheader.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace fw {

TreeListHeader::TreeListHeader(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(false);
    setSectionsMovable(false);
    setHighlightSections(false);
    setStretchLastSection(false);
    setMinimumSectionSize(8); // design widths may be narrower than the style's default minimum
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TreeListHeader::setBandCaption(const QString &caption)
{
    m_bandCaption = caption;
    viewport()->update();
}

void TreeListHeader::setBandVisible(bool visible)
{
    if (m_bandVisible == visible)
        return;
    m_bandVisible = visible;
    updateGeometry();
    viewport()->update();
}

void TreeListHeader::setColors(const QColor &background, const QColor &text, const QColor &lines)
{
    m_background = background;
    m_text = text;
    m_lines = lines;
    viewport()->update();
}

int TreeListHeader::bandHeight() const
{
    return m_bandVisible ? QHeaderView::sizeHint().height() : 0;
}

QSize TreeListHeader::sizeHint() const
{
    QSize size = QHeaderView::sizeHint();
    size.rheight() += bandHeight();
    return size;
}

void TreeListHeader::paintCell(QPainter *painter, const QRect &rect, const QString &text, Qt::Alignment alignment) const
{
    if (!m_background.isValid()) {
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.rect = rect;
        option.text = text;
        option.textAlignment = alignment;
        option.position = QStyleOptionHeader::OnlyOneSection;
        style()->drawControl(QStyle::CE_Header, &option, painter, this);
        return;
    }
    painter->save();
    painter->fillRect(rect, m_background);
    painter->setPen(m_lines.isValid() ? m_lines : palette().color(QPalette::Mid));
    painter->drawLine(rect.topRight(), rect.bottomRight());
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->setPen(m_text.isValid() ? m_text : palette().color(QPalette::ButtonText));
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    painter->drawText(rect.adjusted(margin, 0, -margin, 0), int(alignment),
                      fontMetrics().elidedText(text, Qt::ElideRight, rect.width() - 2 * margin));
    painter->restore();
}

void TreeListHeader::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    const QRect captionRect = rect.adjusted(0, bandHeight(), 0, 0);
    const QString caption = model() ? model()->headerData(logicalIndex, orientation()).toString() : QString();
    paintCell(painter, captionRect, caption, defaultAlignment());
}

// One band spans every column: it is painted across their whole length, scrolled with them.
void TreeListHeader::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    if (!m_bandVisible || count() == 0)
        return;
    QPainter painter(viewport());
    const QRect band(-offset(), 0, length(), bandHeight());
    paintCell(&painter, band, m_bandCaption, Qt::AlignCenter);
}

} // namespace fw
