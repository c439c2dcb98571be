#pragma once

#include <QObject>

class QWidget;

namespace fw {

// The shell's multi-document area. A module's ActiveFrame implements it when the shell wants
// the module's forms inside its own window.
class MdiHost
{
public:
    virtual ~MdiHost() = default;

    // Places the form in the area as a sub-window and shows it; the area owns it from then on.
    virtual void addForm(QWidget *form) = 0;
};

} // namespace fw

#define MdiHost_iid "it.vrax.framework.MdiHost/1.0"
Q_DECLARE_INTERFACE(fw::MdiHost, MdiHost_iid)
