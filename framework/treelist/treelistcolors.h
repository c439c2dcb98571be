#pragma once

#include <QColor>

namespace fw {

// The colours of a tree list. An invalid colour leaves the style's own.
struct TreeListColors
{
    QColor header;            // header and band background
    QColor headerText;        // header and band captions
    QColor text;              // cell text
    QColor gridLines;
    QColor highlight;         // the selected node while the tree has the focus
    QColor highlightText;
    QColor hideSelection;     // the selected node while the tree has not the focus
    QColor footer;            // kept for a footer panel; the tree shows none
};

} // namespace fw
