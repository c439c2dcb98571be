#include "framework/treelist/treelistheader.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionHeader>

#include <algorithm>
#include <utility>

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
    // Qt repaints from the resized section on, where it lies scrolled; the frozen ones are not there.
    connect(this, &QHeaderView::sectionResized, this, [this] {
        if (m_frozenCount > 0)
            viewport()->update();
    });
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

// One band spans every column: it is painted across their whole length, scrolled with them. The
// frozen captions are painted again at the left edge, over the start of the scrolled ones.
void TreeListHeader::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    if (count() == 0)
        return;
    QPainter painter(viewport());
    if (m_bandVisible)
        paintCell(&painter, QRect(-offset(), 0, length(), bandHeight()), m_bandCaption, Qt::AlignCenter);
    if (frozenShift() == 0)
        return;
    for (int i = 0; i < std::min(m_frozenCount, count()); ++i) {
        if (!isSectionHidden(i))
            paintSection(&painter, QRect(sectionPosition(i), 0, sectionSize(i), viewport()->height()), i);
    }
}

// --- frozen sections

void TreeListHeader::setFrozenSectionCount(int count)
{
    m_frozenCount = std::max(0, count);
    viewport()->update();
}

int TreeListHeader::frozenWidth() const
{
    int width = 0;
    for (int i = 0; i < std::min(m_frozenCount, count()); ++i)
        width += sectionSize(i); // 0 for a hidden one
    return width * 3 <= viewport()->width() * 2 ? width : 0;
}

// Qt finds the edges under the pointer where the sections lie scrolled: over the frozen sections,
// drawn elsewhere, their own edges are looked for here instead.
bool TreeListHeader::overFrozenSections(int x) const
{
    if (frozenShift() == 0)
        return false;
    return x < frozenWidth() + style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
}

int TreeListHeader::frozenEdgeAt(int x) const
{
    if (!overFrozenSections(x))
        return -1;
    const int grip = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    for (int i = std::min(m_frozenCount, count()) - 1; i >= 0; --i) {
        const int edge = sectionPosition(i) + sectionSize(i);
        if (!isSectionHidden(i) && sectionResizeMode(i) == Interactive && x > edge - grip && x < edge + grip)
            return i;
    }
    return -1;
}

void TreeListHeader::mousePressEvent(QMouseEvent *event)
{
    const int x = event->position().toPoint().x();
    m_pressOverFrozen = overFrozenSections(x);
    if (!m_pressOverFrozen) {
        QHeaderView::mousePressEvent(event);
        return;
    }
    // Sections are neither clickable nor movable: only an edge does something.
    m_resizedSection = event->button() == Qt::LeftButton ? frozenEdgeAt(x) : -1;
    m_dragStartX = x;
    m_dragStartSize = m_resizedSection >= 0 ? sectionSize(m_resizedSection) : 0;
}

void TreeListHeader::mouseMoveEvent(QMouseEvent *event)
{
    const int x = event->position().toPoint().x();
    if (m_resizedSection >= 0) {
        resizeSection(m_resizedSection,
                      std::clamp(m_dragStartSize + x - m_dragStartX, minimumSectionSize(), maximumSectionSize()));
        return;
    }
    const bool ours = event->buttons() == Qt::NoButton ? overFrozenSections(x) : m_pressOverFrozen;
    if (!ours) {
        QHeaderView::mouseMoveEvent(event);
        return;
    }
    if (frozenEdgeAt(x) >= 0)
        setCursor(Qt::SplitHCursor);
    else
        unsetCursor();
}

void TreeListHeader::mouseReleaseEvent(QMouseEvent *event)
{
    m_resizedSection = -1;
    if (std::exchange(m_pressOverFrozen, false))
        return;
    QHeaderView::mouseReleaseEvent(event);
}

void TreeListHeader::mouseDoubleClickEvent(QMouseEvent *event)
{
    const int x = event->position().toPoint().x();
    m_pressOverFrozen = overFrozenSections(x);
    if (!m_pressOverFrozen) {
        QHeaderView::mouseDoubleClickEvent(event);
        return;
    }
    if (const int edge = frozenEdgeAt(x); edge >= 0)
        emit sectionHandleDoubleClicked(edge);
}

} // namespace fw
