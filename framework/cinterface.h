#pragma once

#include "platform/db/connection.h"

#include <QObject>
#include <QString>
#include <QVariant>

namespace fw {

class ActiveNavigator;
class GlobalServices;

// The host contract: what the suite's shell sets on a module before opening it, and the
// operations it calls afterwards. Members follow the contract's slot order; for a property the
// write accessor comes first, then the read accessor.
//
// Names that a member shares with a type (ActiveNavigator, Connection) are written qualified.
//
// Widths are those of the contract: WindowState and ProgramMode travel as 32-bit values even
// though a module keeps them in 16 bits.
class Cinterface
{
public:
    virtual ~Cinterface() = default;

    virtual void setClsGlobal(GlobalServices *services) = 0;
    virtual GlobalServices *ClsGlobal() const = 0;
    virtual void setActiveFrame(QObject *frame) = 0;
    virtual QObject *ActiveFrame() const = 0;
    virtual void setActiveNavigator(fw::ActiveNavigator *navigator) = 0;
    virtual fw::ActiveNavigator *ActiveNavigator() const = 0;
    virtual void setActiveDll(Cinterface *contract) = 0;
    virtual Cinterface *ActiveDll() const = 0;
    virtual void setStatusBar(QObject *statusBar) = 0;
    virtual QObject *StatusBar() const = 0;
    virtual void setCanInsert(bool value) = 0;
    virtual bool CanInsert() const = 0;
    virtual void setCanDelete(bool value) = 0;
    virtual bool CanDelete() const = 0;
    virtual void setCanUpdate(bool value) = 0;
    virtual bool CanUpdate() const = 0;
    virtual void setCanQbe(bool value) = 0;
    virtual bool CanQbe() const = 0;
    virtual void setWindowState(qint32 value) = 0;
    virtual qint32 WindowState() const = 0;
    virtual void setWindowModal(bool value) = 0;
    virtual bool WindowModal() const = 0;
    virtual void setProgramMode(qint32 value) = 0;
    virtual qint32 ProgramMode() const = 0;
    virtual void setMenuModulo(const QString &value) = 0;
    virtual QString MenuModulo() const = 0;
    virtual void setMenuPadre(const QString &value) = 0;
    virtual QString MenuPadre() const = 0;
    virtual void setMenuProg(const QString &value) = 0;
    virtual QString MenuProg() const = 0;
    virtual void setCaption(const QString &value) = 0;
    virtual QString Caption() const = 0;
    virtual void sethwndParent(qint32 value) = 0;
    virtual qint32 hwndParent() const = 0;
    virtual QVariant ShowForm() = 0;
    virtual QVariant CloseForm() = 0;
    virtual void setConnection(const db::ConnectionPtr &connection) = 0;
    virtual db::ConnectionPtr Connection() const = 0;
    virtual QObject *Cwindow() const = 0;
    virtual QVariant TransferData(const QVariant &data) = 0;
    virtual void setTop(float value) = 0;
    virtual float Top() const = 0;
    virtual void setLeft(float value) = 0;
    virtual float Left() const = 0;
    virtual void setClsVoceMenu(QObject *menuEntry) = 0;
    virtual QObject *ClsVoceMenu() const = 0;
    virtual void setIsActive(bool value) = 0;
    virtual bool IsActive() const = 0;
    virtual void setIsCalled(bool value) = 0;
    virtual bool IsCalled() const = 0;
    virtual void setFiltro(const QVariant &value) = 0;
    virtual QVariant Filtro() const = 0;
};

} // namespace fw

#define Cinterface_iid "it.vrax.framework.Cinterface/1.0"
Q_DECLARE_INTERFACE(fw::Cinterface, Cinterface_iid)
