#include "framework/defaulttheme.h"

namespace fw {

DefaultTheme::DefaultTheme()
{
    setColor(QStringLiteral("GridHeaderColor"), QColor(204, 225, 255));
    setColor(QStringLiteral("GridHeaderFontColor"), QColor(0, 0, 128));
    setColor(QStringLiteral("GridFontColor"), QColor(0, 0, 0));
    setColor(QStringLiteral("GridBorderColor"), QColor(192, 192, 192));
    setColor(QStringLiteral("GridFooterColor"), QColor(226, 250, 254));
    setColor(QStringLiteral("GridHideSelectionColor"), QColor(212, 208, 200));
    setColor(QStringLiteral("GridHighLightColor"), QColor(0, 0, 128));
    setColor(QStringLiteral("GridHighLightFontColor"), QColor(255, 255, 255));
}

QColor DefaultTheme::color(const QString &name) const
{
    return m_colors.value(name);
}

void DefaultTheme::setColor(const QString &name, const QColor &color)
{
    m_colors.insert(name, color);
}

} // namespace fw
