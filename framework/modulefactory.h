#pragma once

#include <QString>
#include <QObject>

namespace fw {

class Cinterface;

// The entry point of a module plugin. The plugin's metadata names what it creates:
//   { "programIds": ["VRAX_DISTINTA.CLSGD_DISTINTA"] }
class ModuleFactory
{
public:
    virtual ~ModuleFactory() = default;

    // A new instance of the class registered under programId; null for an unknown one.
    // The caller owns it.
    virtual Cinterface *create(const QString &programId) = 0;
};

} // namespace fw

#define ModuleFactory_iid "it.vrax.framework.ModuleFactory/1.0"
Q_DECLARE_INTERFACE(fw::ModuleFactory, ModuleFactory_iid)
