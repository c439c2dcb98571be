#pragma once

#include "framework/activenavigator.h"
#include "framework/cinterface.h"

#include <QObject>
#include <QPointer>

class SubjectCardForm;

// The customer and supplier cards of the standalone program, registered in its catalogue under
// the suite's names ("CARDS.CustomerCard", "CARDS.SupplierCard") so that a module opens them as
// it opens the suite's own. The host contract's values are kept as given; ShowForm opens the
// card, and the subject arrives through TransferData as {"Ditta": company, "CliFor": code}.
class SubjectCardComponent : public QObject, public fw::Cinterface
{
    Q_OBJECT
    Q_INTERFACES(fw::Cinterface)

public:
    static const QString CustomerCard;
    static const QString SupplierCard;

    explicit SubjectCardComponent(int subjectKind, QObject *parent = nullptr);
    ~SubjectCardComponent() override;

    int subjectKind() const { return m_subjectKind; }
    SubjectCardForm *form() const;

    void setClsGlobal(fw::GlobalServices *services) override { m_globals = services; }
    fw::GlobalServices *ClsGlobal() const override { return m_globals; }
    void setActiveFrame(QObject *frame) override { m_activeFrame = frame; }
    QObject *ActiveFrame() const override { return m_activeFrame; }
    void setActiveNavigator(fw::ActiveNavigator *navigator) override { m_navigator = navigator; }
    fw::ActiveNavigator *ActiveNavigator() const override { return m_navigator; }
    void setActiveDll(fw::Cinterface *) override { }
    fw::Cinterface *ActiveDll() const override { return const_cast<SubjectCardComponent *>(this); }
    void setStatusBar(QObject *statusBar) override { m_statusBar = statusBar; }
    QObject *StatusBar() const override { return m_statusBar; }
    void setCanInsert(bool) override { }
    bool CanInsert() const override { return false; }
    void setCanDelete(bool) override { }
    bool CanDelete() const override { return false; }
    void setCanUpdate(bool) override { }
    bool CanUpdate() const override { return false; }
    void setCanQbe(bool) override { }
    bool CanQbe() const override { return false; }
    void setWindowState(qint32 value) override { m_windowState = value; }
    qint32 WindowState() const override { return m_windowState; }
    void setWindowModal(bool value) override { m_modal = value; }
    bool WindowModal() const override { return m_modal; }
    void setProgramMode(qint32 value) override { m_programMode = value; }
    qint32 ProgramMode() const override { return m_programMode; }
    void setMenuModulo(const QString &value) override { m_menuModulo = value; }
    QString MenuModulo() const override { return m_menuModulo; }
    void setMenuPadre(const QString &value) override { m_menuPadre = value; }
    QString MenuPadre() const override { return m_menuPadre; }
    void setMenuProg(const QString &value) override { m_menuProg = value; }
    QString MenuProg() const override { return m_menuProg; }
    void setCaption(const QString &value) override { m_caption = value; }
    QString Caption() const override { return m_caption; }
    void sethwndParent(qint32 value) override { m_hwndParent = value; }
    qint32 hwndParent() const override { return m_hwndParent; }
    QVariant ShowForm() override;
    QVariant CloseForm() override;
    void setConnection(const db::ConnectionPtr &connection) override { m_connection = connection; }
    db::ConnectionPtr Connection() const override { return m_connection; }
    QObject *Cwindow() const override { return nullptr; }
    QVariant TransferData(const QVariant &data) override;
    void setTop(float value) override { m_top = value; }
    float Top() const override { return m_top; }
    void setLeft(float value) override { m_left = value; }
    float Left() const override { return m_left; }
    void setClsVoceMenu(QObject *) override { }
    QObject *ClsVoceMenu() const override { return nullptr; }
    void setIsActive(bool value) override { m_isActive = value; }
    bool IsActive() const override { return m_isActive; }
    void setIsCalled(bool value) override { m_isCalled = value; }
    bool IsCalled() const override { return m_isCalled; }
    void setFiltro(const QVariant &) override { }
    QVariant Filtro() const override { return {}; }

private:
    int m_subjectKind;
    fw::GlobalServices *m_globals = nullptr;
    QPointer<QObject> m_activeFrame;
    QPointer<fw::ActiveNavigator> m_navigator;
    QPointer<QObject> m_statusBar;
    db::ConnectionPtr m_connection;
    QString m_caption;
    QString m_menuModulo;
    QString m_menuPadre;
    QString m_menuProg;
    qint32 m_windowState = 0;
    qint32 m_programMode = 0;
    qint32 m_hwndParent = 0;
    float m_top = 0;
    float m_left = 0;
    bool m_modal = false;
    bool m_isActive = false;
    bool m_isCalled = false;
    QPointer<SubjectCardForm> m_form;
};
