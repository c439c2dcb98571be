#pragma once

#include <QObject>

namespace fw {

class LayoutObjectModel;
class ScriptObjectModel;

// The shell's navigator: it keeps the layouts of the open forms and the host's script layer.
// It asks the modules for their object models through its three events.
class ActiveNavigator : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // The script layer's model; null when the host runs no script layer.
    virtual ScriptObjectModel *scriptObjectModel() const = 0;

signals:
    void BeforeExportToOffice();
    void InitializeLayoutObjectModel(fw::LayoutObjectModel *model);
    void InitializeScriptObjectModel(fw::ScriptObjectModel *model);
};

} // namespace fw
