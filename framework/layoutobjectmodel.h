#pragma once

#include <QString>

class QObject;

namespace fw {

// The navigator's model of form layouts, filled by the modules on request.
class LayoutObjectModel
{
public:
    virtual ~LayoutObjectModel() = default;

    // Registers a form's layout object under the form's text identifier; returns the form
    // that owns the layout, which the caller keeps as its form reference.
    virtual QObject *registerForm(QObject *layoutObject, const QString &formIdentifier) = 0;
};

} // namespace fw
