#pragma once

#include <QColor>

class QAbstractItemView;
class QTableView;

namespace fw {

// The colours of a grid or a tree list, as the host's theme gives them. An invalid colour
// leaves the style's own.
struct GridColors
{
    QColor header;     // header and band background
    QColor headerText; // header and band captions
    QColor text;       // cell text
    QColor gridLines;
    QColor highlight; // the selected row while the view has the focus
    QColor highlightText;
    QColor hideSelection; // the selected row while the view has not the focus
    QColor footer;        // kept for a footer panel; no view shows one
};

// The cell text and selection colours, through the view's palette. Without the focus the
// selected row is drawn in the cell text colour, which stays readable on hideSelection.
void applyGridPalette(QAbstractItemView *view, const GridColors &colors);

// A plain table: its palette as above, and its grid lines and header sections through a
// style sheet.
void applyGridColors(QTableView *table, const GridColors &colors);

} // namespace fw
