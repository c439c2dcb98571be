// The tree list's column widths as a reader needs them: never narrower than a heading and a
// whole value, fitted to the rows shown on request, remembered by name, and the whole text of
// a cut cell in its tooltip.
#include "framework/treelist/treelist.h"

#include "framework/columnsizing.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace fw {

int TreeList::minimumColumnWidth(int index) const
{
    if (index < 0 || index >= columnCount())
        return 0;
    // The hierarchy is drawn in the first column: a whole code must fit beside the deepest lines.
    const int indent = index == 0 ? m_view->indentation() * (m_deepestLevel + 1) : 0;
    return fw::minimumColumnWidth(column(index), m_view->fontMetrics(), m_view->header()->fontMetrics(), indent);
}

void TreeList::setColumnWidthSample(const QString &name, const QString &sample)
{
    updateColumn(name, [&](TreeListColumn &column) { column.widthSample = sample; });
}

void TreeList::measureDeepestLevel()
{
    const TreeListStructure &structure = m_model->structure();
    int deepest = 0;
    for (int node = 0; node < structure.count(); ++node)
        deepest = std::max(deepest, structure.level(node));
    if (deepest == m_deepestLevel)
        return;
    m_deepestLevel = deepest;
    applyColumnWidths();
}

// The rows in view decide, as a double click on the edge asks for what the user sees.
void TreeList::fitColumnToContents(int index)
{
    if (index < 0 || index >= columnCount() || m_view->isColumnHidden(index))
        return;
    const QFontMetrics metrics = m_view->fontMetrics();
    int widest = 0;
    const int bottom = m_view->viewport()->height();
    for (QModelIndex row = m_view->indexAt(QPoint(1, 1)); row.isValid(); row = m_view->indexBelow(row)) {
        const QRect rect = m_view->visualRect(row);
        if (rect.top() > bottom)
            break;
        const QModelIndex cell = row.siblingAtColumn(index);
        const int node = m_model->nodeOf(cell);
        if (node < 0)
            continue;
        int width = metrics.horizontalAdvance(drawText(cell, m_model->text(node, index))) + CellTextPadding;
        if (index == 0)
            width += m_view->indentation() * (m_model->structure().level(node) + 1);
        if (column(index).kind == TreeListColumnKind::ButtonEdit || column(index).kind == TreeListColumnKind::Date)
            width += metrics.height();
        widest = std::max(widest, width);
    }
    m_view->setColumnWidth(index, std::max(minimumColumnWidth(index), widest));
}

QList<std::pair<QString, int>> TreeList::designWidths() const
{
    QList<std::pair<QString, int>> widths;
    for (int i = 0; i < columnCount(); ++i)
        widths.append({column(i).name, column(i).designWidth});
    return widths;
}

void TreeList::setDesignWidths(const QHash<QString, int> &twipsByName)
{
    if (twipsByName.isEmpty())
        return;
    for (int i = 0; i < columnCount(); ++i) {
        TreeListColumn changed = column(i);
        const auto found = twipsByName.constFind(changed.name);
        if (found == twipsByName.constEnd() || found.value() <= 0)
            continue;
        changed.designWidth = found.value();
        m_model->setColumn(i, changed);
    }
    applyColumnWidths();
}

// A cell whose text does not fit shows it whole in its tooltip; a cell that fits shows none.
bool TreeList::showCutText(QHelpEvent *event)
{
    const QModelIndex cell = m_view->indexAt(event->pos());
    const int node = cell.isValid() ? m_model->nodeOf(cell) : -1;
    if (node < 0) {
        QToolTip::hideText();
        return true;
    }
    const QString text = drawText(cell, m_model->text(node, cell.column()));
    const QRect rect = m_view->visualRect(cell);
    int room = rect.width() - CellTextPadding;
    if (column(cell.column()).kind == TreeListColumnKind::ButtonEdit)
        room -= m_view->fontMetrics().height();
    if (text.isEmpty() || m_view->fontMetrics().horizontalAdvance(text) <= room) {
        QToolTip::hideText();
        return true;
    }
    QToolTip::showText(event->globalPos(), text, m_view->viewport(), rect);
    return true;
}

} // namespace fw
