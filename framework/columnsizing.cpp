#include "framework/columnsizing.h"

#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace fw {

int twipsToPixels(int twips, int logicalDpi)
{
    return int(std::lround(double(twips) * logicalDpi / 1440.0));
}

int pixelsToTwips(int pixels, int logicalDpi)
{
    return logicalDpi > 0 ? int(std::lround(double(pixels) * 1440.0 / logicalDpi)) : pixels * 15;
}

QString wholeDateSample()
{
    return QStringLiteral("31/12/2099");
}

int minimumColumnWidth(const QString &heading, const QFontMetrics &header, int valueWidth, int extraIndent)
{
    return std::max(header.horizontalAdvance(heading) + CellTextPadding, valueWidth + CellTextPadding + extraIndent);
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

int WidthMemo::width(const QFont &font, const QString &key, const std::function<int()> &measure)
{
    if (font != m_font || m_widths.size() >= Capacity) {
        m_widths.clear();
        m_font = font;
    }
    const auto known = m_widths.constFind(key);
    if (known != m_widths.constEnd())
        return *known;
    const int measured = measure();
    m_widths.insert(key, measured);
    return measured;
}

} // namespace fw
