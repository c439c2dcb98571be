#include "framework/columnfit.h"

#include "framework/columnsizing.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>

namespace fw {

ColumnFit::Columns ColumnFit::designList(QList<int> &designTwips, std::function<int(int column)> minimumWidth)
{
    return {.designTwips = [&designTwips](int column) { return designTwips.value(column, 1200); },
            .minimumWidth = std::move(minimumWidth),
            .setDesignTwips =
                [&designTwips](int column, int twips) {
                    if (column < designTwips.size())
                        designTwips[column] = twips;
                }};
}

ColumnFit::ColumnFit(QAbstractScrollArea *view, QHeaderView *header, Columns columns)
    : QObject(view)
    , m_view(view)
    , m_header(header)
    , m_columns(std::move(columns))
{
    header->setStretchLastSection(false);
    connect(header, &QHeaderView::sectionResized, this, &ColumnFit::onSectionResized);
    // The viewport, not the view: a vertical scroll bar that comes or goes changes the room too.
    view->viewport()->installEventFilter(this);
}

void ColumnFit::setFillWidth(bool fill)
{
    m_fill = fill;
    apply();
}

void ColumnFit::setColumnHidden(int column, bool hidden)
{
    QScopedValueRollback guard(m_applying, true);
    m_header->setSectionHidden(column, hidden);
}

bool ColumnFit::eventFilter(QObject *watched, QEvent *event)
{
    if (m_fill && event->type() == QEvent::Resize && watched == m_view->viewport())
        apply();
    return QObject::eventFilter(watched, event);
}

void ColumnFit::apply()
{
    QScopedValueRollback guard(m_applying, true);
    const int dpi = m_view->logicalDpiX();
    QList<int> visible;
    for (int i = 0; i < m_header->count(); ++i) {
        if (!m_header->isSectionHidden(i))
            visible.append(i);
    }
    if (!m_fill || visible.isEmpty()) {
        for (int i : std::as_const(visible))
            m_header->resizeSection(i, qMax(m_columns.minimumWidth(i), twipsToPixels(m_columns.designTwips(i), dpi)));
        return;
    }
    QList<int> design;
    QList<int> minimums;
    for (int i : std::as_const(visible)) {
        design.append(m_columns.designTwips(i));
        minimums.append(m_columns.minimumWidth(i));
    }
    const QList<int> widths = proportionalWidths(design, minimums, m_view->viewport()->width());
    for (int n = 0; n < visible.size(); ++n)
        m_header->resizeSection(visible.at(n), qMax(1, widths.at(n)));
}

// Without fill width the column keeps its new width; with fill width the next visible column
// gives or takes the difference, and the new widths become the proportions.
void ColumnFit::onSectionResized(int column, int oldSize, int newSize)
{
    if (m_applying || column < 0 || column >= m_header->count() || newSize == 0)
        return;
    const int minimum = m_columns.minimumWidth(column);
    if (newSize < minimum) {
        QScopedValueRollback guard(m_applying, true);
        newSize = minimum;
        m_header->resizeSection(column, newSize);
    }
    const int dpi = m_view->logicalDpiX();
    if (!m_fill) {
        m_columns.setDesignTwips(column, qMax(1, pixelsToTwips(newSize, dpi)));
        return;
    }
    int next = column + 1;
    while (next < m_header->count() && m_header->isSectionHidden(next))
        ++next;
    if (next < m_header->count()) {
        QScopedValueRollback guard(m_applying, true);
        m_header->resizeSection(next, qMax(8, m_header->sectionSize(next) - (newSize - oldSize)));
    }
    for (int i = 0; i < m_header->count(); ++i) {
        if (!m_header->isSectionHidden(i))
            m_columns.setDesignTwips(i, qMax(1, pixelsToTwips(m_header->sectionSize(i), dpi)));
    }
    apply();
}

} // namespace fw
