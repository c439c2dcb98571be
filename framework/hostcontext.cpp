#include "framework/hostcontext.h"

#include "framework/cinterface.h"

namespace fw {

HostContext HostContext::from(const Cinterface &module)
{
    HostContext context;
    context.globals = module.ClsGlobal();
    context.connection = module.Connection();
    context.activeFrame = module.ActiveFrame();
    context.navigator = module.ActiveNavigator();
    context.statusBar = module.StatusBar();
    context.caption = module.Caption();
    context.menuModulo = module.MenuModulo();
    context.menuPadre = module.MenuPadre();
    context.menuProg = module.MenuProg();
    context.canInsert = module.CanInsert();
    context.canDelete = module.CanDelete();
    context.canUpdate = module.CanUpdate();
    context.canQbe = module.CanQbe();
    context.modal = module.WindowModal();
    return context;
}

void fillHostContract(Cinterface &module, const HostContext &context)
{
    module.setClsGlobal(context.globals);
    module.setConnection(context.connection);
    module.setActiveFrame(context.activeFrame);
    module.setActiveNavigator(context.navigator);
    module.setStatusBar(context.statusBar);
    module.setCaption(context.caption);
    module.setMenuModulo(context.menuModulo);
    module.setMenuPadre(context.menuPadre);
    module.setMenuProg(context.menuProg);
    module.setCanInsert(context.canInsert);
    module.setCanDelete(context.canDelete);
    module.setCanUpdate(context.canUpdate);
    module.setCanQbe(context.canQbe);
    module.setWindowModal(context.modal);
    module.setIsActive(true);
    module.setIsCalled(false);
}

} // namespace fw
