#pragma once

#include <QColor>
#include <QHeaderView>

namespace fw {

// The column header of a tree list, with the band caption on a row of its own above the
// column captions. Painted in the given colours, or by the style when they are not set.
//
// The first sections may be frozen: while the others scroll, they stay at the left edge, drawn
// over the start of the scrolled ones, and their edges there can still be dragged and double
// clicked.
class TreeListHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit TreeListHeader(QWidget *parent = nullptr);

    void setBandCaption(const QString &caption);
    QString bandCaption() const { return m_bandCaption; }
    void setBandVisible(bool visible);
    bool isBandVisible() const { return m_bandVisible; }

    void setColors(const QColor &background, const QColor &text, const QColor &lines);

    void setFrozenSectionCount(int count);
    int frozenSectionCount() const { return m_frozenCount; }
    // Width of the frozen sections, or 0 when none is frozen or when they would leave the others
    // less than a third of the width (the whole header then scrolls).
    int frozenWidth() const;
    bool isFrozen(int logicalIndex) const { return logicalIndex < m_frozenCount && frozenWidth() > 0; }
    // How far right of where they lie the frozen sections are drawn: the scroll offset, or 0.
    int frozenShift() const { return frozenWidth() > 0 ? offset() : 0; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int bandHeight() const;
    void paintCell(QPainter *painter, const QRect &rect, const QString &text, Qt::Alignment alignment) const;
    bool overFrozenSections(int x) const;
    int frozenEdgeAt(int x) const;

    QString m_bandCaption;
    bool m_bandVisible = true;
    QColor m_background;
    QColor m_text;
    QColor m_lines;
    int m_frozenCount = 0;
    bool m_pressOverFrozen = false;
    int m_resizedSection = -1; // a frozen section whose edge is being dragged
    int m_dragStartX = 0;
    int m_dragStartSize = 0;
};

} // namespace fw
