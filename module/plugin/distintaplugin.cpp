#include "module/plugin/distintaplugin.h"

#include "module/clsgd_distinta.h"

fw::Cinterface *DistintaPlugin::create(const QString &programId)
{
    if (programId.compare(QLatin1String("VRAX_DISTINTA.CLSGD_DISTINTA"), Qt::CaseInsensitive) != 0)
        return nullptr;
    return new CLSGD_DISTINTA;
}
