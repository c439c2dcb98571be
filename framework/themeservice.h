#pragma once

#include <QColor>
#include <QString>

namespace fw {

// The host's named colours ("GridHeaderColor", "GridHighLightColor", ...).
class ThemeService
{
public:
    virtual ~ThemeService() = default;

    // An invalid colour when the theme has no colour of that name.
    virtual QColor color(const QString &name) const = 0;
};

} // namespace fw
