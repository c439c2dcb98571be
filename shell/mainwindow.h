#pragma once

#include "framework/mdihost.h"

#include <QMainWindow>
#include <functional>

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

    // Tells whether a company has any row in the database; the status bar marks a company that
    // has none, and changing to one shows a notice.
    void setCompanyCheck(std::function<bool(int company)> hasData);
    // The notice for a company without data; empty when it has some.
    QString companyNotice() const;

signals:
    void openEditorRequested();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void changeWorkingCompany();
    void updateStatus();

    fw::HostGlobalServices &m_globals;
    QString m_databaseDescription;
    std::function<bool(int)> m_companyHasData;
    bool m_companyWithoutData = false;
    QMdiArea *m_mdiArea;
    QLabel *m_status;
};
