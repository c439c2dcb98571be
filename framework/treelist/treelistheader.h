#pragma once

#include <QColor>
#include <QHeaderView>

namespace fw {

// The column header of a tree list, with the band caption on a row of its own above the
// column captions. Painted in the given colours, or by the style when they are not set.
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

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    int bandHeight() const;
    void paintCell(QPainter *painter, const QRect &rect, const QString &text, Qt::Alignment alignment) const;

    QString m_bandCaption;
    bool m_bandVisible = true;
    QColor m_background;
    QColor m_text;
    QColor m_lines;
};

} // namespace fw
