#pragma once

#include "framework/themeservice.h"

#include <QHash>

namespace fw {

// The suite's standard colours for grids and trees.
class DefaultTheme : public ThemeService
{
public:
    DefaultTheme();

    QColor color(const QString &name) const override;
    void setColor(const QString &name, const QColor &color);

private:
    QHash<QString, QColor> m_colors;
};

} // namespace fw
