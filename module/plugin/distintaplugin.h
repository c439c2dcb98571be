#pragma once

#include "framework/modulefactory.h"

#include <QObject>

// The module as the shell loads it: creates VRAX_DISTINTA.CLSGD_DISTINTA.
class DistintaPlugin : public QObject, public fw::ModuleFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ModuleFactory_iid FILE "vrax_distinta.json")
    Q_INTERFACES(fw::ModuleFactory)

public:
    fw::Cinterface *create(const QString &programId) override;
};
