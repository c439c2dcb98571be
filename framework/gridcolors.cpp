#include "framework/gridcolors.h"

#include <QAbstractItemView>
#include <QStringList>
#include <QTableView>

namespace fw {

void applyGridPalette(QAbstractItemView *view, const GridColors &colors)
{
    QPalette palette = view->palette();
    if (colors.text.isValid()) {
        palette.setColor(QPalette::Active, QPalette::Text, colors.text);
        palette.setColor(QPalette::Inactive, QPalette::Text, colors.text);
    }
    if (colors.highlight.isValid())
        palette.setColor(QPalette::Active, QPalette::Highlight, colors.highlight);
    if (colors.highlightText.isValid())
        palette.setColor(QPalette::Active, QPalette::HighlightedText, colors.highlightText);
    if (colors.hideSelection.isValid()) {
        palette.setColor(QPalette::Inactive, QPalette::Highlight, colors.hideSelection);
        if (colors.text.isValid())
            palette.setColor(QPalette::Inactive, QPalette::HighlightedText, colors.text);
    }
    view->setPalette(palette);
}

void applyGridColors(QTableView *table, const GridColors &colors)
{
    applyGridPalette(table, colors);
    QStringList rules;
    if (colors.gridLines.isValid())
        rules << QStringLiteral("QTableView { gridline-color: %1; }").arg(colors.gridLines.name());
    if (colors.header.isValid() && colors.headerText.isValid()) {
        const QColor lines = colors.gridLines.isValid() ? colors.gridLines : colors.header.darker();
        rules << QStringLiteral("QHeaderView::section { background-color: %1; color: %2; border: 0px;"
                                " border-right: 1px solid %3; border-bottom: 1px solid %3; padding: 2px; }")
                     .arg(colors.header.name(), colors.headerText.name(), lines.name());
    }
    table->setStyleSheet(rules.join(QLatin1Char(' ')));
}

} // namespace fw
