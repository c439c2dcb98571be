#pragma once

#include "framework/mdihost.h"

#include <QMainWindow>

class QLabel;
class QMdiArea;

namespace fw {
class HostGlobalServices;
}

// The shell's window: the modules' forms live in its MDI area.
class MainWindow : public QMainWindow, public fw::MdiHost
{
    Q_OBJECT
    Q_INTERFACES(fw::MdiHost)

public:
    MainWindow(fw::HostGlobalServices &globals, const QString &databaseDescription, QWidget *parent = nullptr);

    void addForm(QWidget *form) override;
    QMdiArea *mdiArea() const { return m_mdiArea; }

    // The object names and titles of the forms open in the area.
    QStringList openForms() const;

signals:
    void openEditorRequested();

private:
    void changeWorkingCompany();
    void updateStatus();

    fw::HostGlobalServices &m_globals;
    QString m_databaseDescription;
    QMdiArea *m_mdiArea;
    QLabel *m_status;
};
