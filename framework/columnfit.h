#pragma once

#include <QList>
#include <QObject>
#include <functional>

class QAbstractScrollArea;
class QHeaderView;

namespace fw {

// Keeps the columns of a view (the tree list, the grids) to one width rule: design widths in
// twips, none narrower than its minimum. With fill width the view's width is shared in the
// design's proportions and follows the view's size, and a drag moves the edge between a column
// and the next; when the minimums do not fit the view scrolls sideways. A user's drag becomes the
// column's design width, so the next layout keeps it.
class ColumnFit : public QObject
{
    Q_OBJECT

public:
    // By logical column.
    struct Columns
    {
        std::function<int(int column)> designTwips;
        std::function<int(int column)> minimumWidth;               // pixels
        std::function<void(int column, int twips)> setDesignTwips; // a user's drag
    };

    ColumnFit(QAbstractScrollArea *view, QHeaderView *header, Columns columns);

    // The columns of a view that keeps its design widths in a list by column (the declared widths,
    // then the user's; 1200 twips for a column it does not know yet).
    static Columns designList(QList<int> &designTwips, std::function<int(int column)> minimumWidth);

    void setFillWidth(bool fill);
    bool fillWidth() const { return m_fill; }
    void apply();
    // Hiding and showing resize the column's section: that is no width chosen by the user.
    void setColumnHidden(int column, bool hidden);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onSectionResized(int column, int oldSize, int newSize);

    QAbstractScrollArea *m_view;
    QHeaderView *m_header;
    Columns m_columns;
    bool m_fill = false;
    bool m_applying = false;
};

} // namespace fw
