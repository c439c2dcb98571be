#pragma once

#include "forms/distinta/moduleentry.h"
#include "framework/cinterface.h"
#include "framework/contractpointer.h"
#include "framework/historyexporter.h"
#include "framework/listexporter.h"
#include "framework/listimporter.h"
#include "framework/listprinter.h"

#include <QObject>
#include <QPointer>
#include <functional>

class FormFrame;
class FRMGD_DISTINTA;

namespace fw {
class LayoutObjectModel;
class ScriptObjectModel;
} // namespace fw

// The module's entry class: the shell fills in the host contract and calls ShowForm, which
// opens the classification tree editor. It keeps what the host gives, as given, and never
// lets an error reach the host: a failing member leaves things as they stood.
//
// The editor opens the classification types through a new instance of this class that it hands
// to the host (ModuleEntry); that one instance opens the type maintenance instead.
class CLSGD_DISTINTA : public QObject,
                       public fw::Cinterface,
                       public fw::ListPrinter,
                       public fw::ListExporter,
                       public fw::HistoryExporter,
                       public fw::ListImporter,
                       public distinta::ModuleEntry
{
    Q_OBJECT
    Q_INTERFACES(
        fw::Cinterface fw::ListPrinter fw::ListExporter fw::HistoryExporter fw::ListImporter distinta::ModuleEntry)

public:
    explicit CLSGD_DISTINTA(QObject *parent = nullptr);
    ~CLSGD_DISTINTA() override;

    void setClsGlobal(fw::GlobalServices *services) override;
    fw::GlobalServices *ClsGlobal() const override;
    void setActiveFrame(QObject *frame) override;
    QObject *ActiveFrame() const override;
    void setActiveNavigator(fw::ActiveNavigator *navigator) override;
    fw::ActiveNavigator *ActiveNavigator() const override;
    void setActiveDll(fw::Cinterface *contract) override;
    fw::Cinterface *ActiveDll() const override;
    void setStatusBar(QObject *statusBar) override;
    QObject *StatusBar() const override;
    void setCanInsert(bool value) override;
    bool CanInsert() const override;
    void setCanDelete(bool value) override;
    bool CanDelete() const override;
    void setCanUpdate(bool value) override;
    bool CanUpdate() const override;
    void setCanQbe(bool value) override;
    bool CanQbe() const override;
    void setWindowState(qint32 value) override;
    qint32 WindowState() const override;
    void setWindowModal(bool value) override;
    bool WindowModal() const override;
    void setProgramMode(qint32 value) override;
    qint32 ProgramMode() const override;
    void setMenuModulo(const QString &value) override;
    QString MenuModulo() const override;
    void setMenuPadre(const QString &value) override;
    QString MenuPadre() const override;
    void setMenuProg(const QString &value) override;
    QString MenuProg() const override;
    void setCaption(const QString &value) override;
    QString Caption() const override;
    void sethwndParent(qint32 value) override;
    qint32 hwndParent() const override;
    QVariant ShowForm() override;
    QVariant CloseForm() override;
    void setConnection(const db::ConnectionPtr &connection) override;
    db::ConnectionPtr Connection() const override;
    QObject *Cwindow() const override;
    QVariant TransferData(const QVariant &data) override;
    void setTop(float value) override;
    float Top() const override;
    void setLeft(float value) override;
    float Left() const override;
    void setClsVoceMenu(QObject *menuEntry) override;
    QObject *ClsVoceMenu() const override;
    void setIsActive(bool value) override;
    bool IsActive() const override;
    void setIsCalled(bool value) override;
    bool IsCalled() const override;
    void setFiltro(const QVariant &value) override;
    QVariant Filtro() const override;

    // Prints the classification of the type with that code through an editor that is never
    // shown (ListPrinter).
    bool printList(const QString &code, std::optional<int> level, std::optional<QDate> date) override;
    // Writes the tree of that type, as the editor would show it, to a spreadsheet (ListExporter).
    bool exportList(const QString &code, std::optional<int> level, std::optional<QDate> date, const QString &path,
                    fw::ExportFile::Format format) override;

    // The history of that type, or its differences between two days, to a spreadsheet
    // (HistoryExporter).
    bool exportHistory(const QString &code, std::optional<QDate> from, std::optional<QDate> to, const QString &user,
                       const QString &path, fw::ExportFile::Format format) override;
    bool exportComparison(const QString &code, const QDate &a, const QDate &b, const QString &path,
                          fw::ExportFile::Format format) override;
    bool exportCheck(const QString &code, const QString &path, fw::ExportFile::Format format) override;

    // A spreadsheet read into the type of that code, through an editor that is never shown
    // (ListImporter).
    Outcome importList(const QString &code, const QString &file, bool dryRun, const QString &reportPath,
                       fw::ExportFile::Format format) override;

    std::unique_ptr<fw::Cinterface> createInstance() const override;
    void setTypeMaintenance(std::optional<qint64> idDistinta) override;
    FormFrame *shownForm() const override;

    // The editor opened by the last ShowForm; null before it, once the editor is gone, or when
    // this instance opens the type maintenance.
    FRMGD_DISTINTA *form() const;

signals:
    void DataTransfer(const QVariant &data);

private:
    bool senzaFinestra(const std::function<bool(FRMGD_DISTINTA &)> &work);
    void ActiveNavigator_BeforeExportToOffice();
    void ActiveNavigator_InitializeLayoutObjectModel(fw::LayoutObjectModel *model);
    void ActiveNavigator_InitializeScriptObjectModel(fw::ScriptObjectModel *model);

    fw::ContractPointer<fw::Cinterface> m_activeDll;
    QPointer<QObject> m_activeFrame;
    QPointer<fw::ActiveNavigator> m_activeNavigator;
    QList<QMetaObject::Connection> m_navigatorSubscription;
    fw::GlobalServices *m_clsGlobal = nullptr;
    db::ConnectionPtr m_connection;
    QPointer<QObject> m_gobjWindow;
    QPointer<QObject> m_statusBar;
    QPointer<QObject> m_clsVoceMenu;
    bool m_canDelete = false;
    bool m_canInsert = false;
    bool m_canQbe = false;
    bool m_canUpdate = false;
    bool m_isCalled = false;
    bool m_isActive = false;
    bool m_windowModal = false;
    QString m_caption;
    QString m_menuModulo;
    QString m_menuPadre;
    QString m_menuProg;
    qint32 m_hwndParent = 0;
    float m_top = 0;
    float m_left = 0;
    qint16 m_programMode = 0;
    qint16 m_windowState = 0;
    bool m_typeMaintenance = false;
    std::optional<qint64> m_idDistinta;
    QPointer<FormFrame> m_form;
};
