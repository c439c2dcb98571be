#include "framework/treelist/treelistcolumnsizing.h"

#include <QFontMetrics>

#include <algorithm>

namespace fw {

int minimumColumnWidth(const TreeListColumn &column, const QFontMetrics &cells, const QFontMetrics &header,
                       int extraIndent)
{
    int value = 0;
    switch (column.kind) {
    case TreeListColumnKind::Date:
        // Digits share one advance in the fonts we use; the widest date is any whole date.
        value = cells.horizontalAdvance(QStringLiteral("31/12/2099")) + cells.height(); // room for the calendar button
        break;
    case TreeListColumnKind::ImageCombo:
        for (const TreeListComboItem &item : column.comboItems)
            value = std::max(value,
                             cells.horizontalAdvance(item.description) + (item.icon.isNull() ? 0 : cells.height() + 4));
        break;
    case TreeListColumnKind::ButtonEdit:
        value = cells.horizontalAdvance(column.widthSample) + cells.height() + 4; // the "..." button
        break;
    case TreeListColumnKind::Text:
    case TreeListColumnKind::Unbound: value = cells.horizontalAdvance(column.widthSample); break;
    }
    const int heading = header.horizontalAdvance(column.caption) + CellTextPadding;
    return std::max(heading, value + CellTextPadding + extraIndent);
}

QList<int> proportionalWidths(const QList<int> &designWidths, const QList<int> &minimums, int available)
{
    const qsizetype count = designWidths.size();
    QList<int> widths(count, 0);
    QList<bool> held(count, false);
    qint64 minimumTotal = 0;
    for (qsizetype i = 0; i < count; ++i)
        minimumTotal += minimums.value(i);
    if (minimumTotal >= available) {
        for (qsizetype i = 0; i < count; ++i)
            widths[i] = std::max(1, minimums.value(i));
        return widths;
    }
    // Each pass holds at their minimum the columns that their share would make narrower; at
    // most one pass per column.
    for (qsizetype pass = 0; pass <= count; ++pass) {
        qint64 freeTwips = 0;
        int freeWidth = available;
        for (qsizetype i = 0; i < count; ++i) {
            if (held[i])
                freeWidth -= minimums.value(i);
            else
                freeTwips += std::max(1, designWidths.at(i));
        }
        bool changed = false;
        int used = 0;
        qsizetype lastFree = -1;
        for (qsizetype i = 0; i < count; ++i) {
            if (held[i]) {
                widths[i] = minimums.value(i);
                continue;
            }
            widths[i] = int(qint64(freeWidth) * std::max(1, designWidths.at(i)) / std::max<qint64>(1, freeTwips));
            used += widths[i];
            lastFree = i;
            if (widths[i] < minimums.value(i)) {
                held[i] = true;
                changed = true;
            }
        }
        if (!changed) {
            if (lastFree >= 0)
                widths[lastFree] += freeWidth - used; // rounding goes to the last free column
            return widths;
        }
    }
    return widths;
}

} // namespace fw
