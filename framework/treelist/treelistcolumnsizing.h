#pragma once

#include "framework/treelist/treelistcolumn.h"

#include <QList>

class QFontMetrics;

namespace fw {

// Room a cell needs beside its text: the margins of the cell and of the item's text.
inline constexpr int CellTextPadding = 12;

// The narrowest a column may be: its heading, and a whole value of its kind (a date, the
// longest choice of a combo, the column's width sample), measured with the fonts given.
// extraIndent: what the tree draws before the text of the column (its hierarchy lines).
int minimumColumnWidth(const TreeListColumn &column, const QFontMetrics &cells, const QFontMetrics &header,
                       int extraIndent = 0);

// Widths that share `available` in proportion to the design widths, none below its minimum:
// columns held at their minimum leave the rest to the others, still in proportion. When the
// minimums alone do not fit, every column gets its minimum (the tree scrolls sideways).
QList<int> proportionalWidths(const QList<int> &designWidths, const QList<int> &minimums, int available);

} // namespace fw
