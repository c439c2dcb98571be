#include "shell/headlessmodule.h"

#include "framework/cinterface.h"
#include "framework/hostcontext.h"
#include "framework/hostglobalservices.h"
#include "shell/componentcatalog.h"

#include <QByteArray>

bool commandLineHas(int argc, char **argv, const char *option)
{
    const QByteArray name(option);
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == name || argument.startsWith(name + '='))
            return true;
    }
    return false;
}

std::unique_ptr<fw::Cinterface> createHeadlessModule(const ComponentCatalog &catalog, const QString &programId,
                                                     fw::HostGlobalServices &globals,
                                                     const db::ConnectionPtr &connection)
{
    std::unique_ptr<fw::Cinterface> module = catalog.create(programId);
    if (!module)
        return nullptr;
    fw::HostContext context;
    context.globals = &globals;
    context.connection = connection;
    context.caption = QStringLiteral("Distinta di classificazione");
    context.menuModulo = QStringLiteral("GD");
    context.menuPadre = QStringLiteral("GD00");
    context.menuProg = QStringLiteral("GD01");
    fw::fillHostContract(*module, context);
    return module;
}
