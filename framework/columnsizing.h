#pragma once

#include <QFont>
#include <QHash>
#include <QList>
#include <QString>
#include <functional>

class QFontMetrics;

namespace fw {

// How wide the columns of the tree list and of the grids are: one rule for every view with
// columns, so that none of them cuts a heading or a value while room is left over.

// Twips of a design width to device-independent pixels: 15 twips are a pixel at 96 dpi.
int twipsToPixels(int twips, int logicalDpi);
int pixelsToTwips(int pixels, int logicalDpi);

// Room a cell needs beside its text: the margins of the cell and of the item's text.
inline constexpr int CellTextPadding = 12;

// A whole date as the views show it; digits share one advance in the fonts we use, so any whole
// date is as wide as this one.
QString wholeDateSample();

// The narrowest a column may be: its heading whole, and a value valueWidth wide with the cell's
// margins and extraIndent before it (the hierarchy lines a tree draws in the column).
int minimumColumnWidth(const QString &heading, const QFontMetrics &header, int valueWidth, int extraIndent = 0);

// Widths that share `available` in proportion to the design widths, none below its minimum:
// columns held at their minimum leave the rest to the others, still in proportion. When the
// minimums alone do not fit, every column gets its minimum (the view scrolls sideways).
QList<int> proportionalWidths(const QList<int> &designWidths, const QList<int> &minimums, int available);

// Widths measured once and kept while the font stays the same: the grids under the tree are
// filled again at every focus change, and measuring text is what laying them out costs.
class WidthMemo
{
public:
    // The width kept under key, or measure()'s, kept; all are forgotten when font is not the one
    // they were measured in.
    int width(const QFont &font, const QString &key, const std::function<int()> &measure);

private:
    static constexpr int Capacity = 4096;
    QFont m_font;
    QHash<QString, int> m_widths;
};

} // namespace fw
