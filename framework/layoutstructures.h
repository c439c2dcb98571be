#pragma once

#include <QObject>
#include <QString>

namespace fw {

// The host's layout script places fields by structures, named groups that each form offers.
// The host hands the form a model, and the form adds its structures to it.
class LayoutStructureModel
{
public:
    virtual ~LayoutStructureModel() = default;
    virtual void addStructure(const QString &name) = 0;
};

// A form that offers structures to the host's layout script.
class LayoutStructureSource
{
public:
    virtual ~LayoutStructureSource() = default;
    virtual void LAYSCRIPTMEDIA_OnAddStruttura(LayoutStructureModel &model) = 0;
};

} // namespace fw

#define LayoutStructureSource_iid "it.vrax.framework.LayoutStructureSource/1.0"
Q_DECLARE_INTERFACE(fw::LayoutStructureSource, LayoutStructureSource_iid)
