#include "shell/mainwindow.h"

#include "framework/companychangehandler.h"
#include "framework/hostglobalservices.h"
#include "framework/logservice.h"
#include "framework/subwindowclosing.h"

#include <QCloseEvent>
#include <QInputDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>

MainWindow::MainWindow(fw::HostGlobalServices &globals, const QString &databaseDescription, QWidget *parent)
    : QMainWindow(parent)
    , m_globals(globals)
    , m_databaseDescription(databaseDescription)
    , m_mdiArea(new QMdiArea(this))
    , m_status(new QLabel(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(globals.applicationTitle());
    m_mdiArea->setObjectName(QStringLiteral("MDIActiveX1"));
    m_mdiArea->setViewMode(QMdiArea::SubWindowView);
    // Windows that do not fit beside each other once tiled or cascaded are reached by scrolling;
    // without the bars the area would grow to hold them all and push the program off the screen.
    m_mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_mdiArea);
    // Kept at the right while a module's notes come and go on the left.
    statusBar()->addPermanentWidget(m_status);

    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(QStringLiteral("Apri &distinta di classificazione"), this, &MainWindow::openEditorRequested);
    file->addAction(QStringLiteral("&Cambia ditta di lavoro..."), this, &MainWindow::changeWorkingCompany);
    file->addSeparator();
    file->addAction(QStringLiteral("&Esci"), this, &QWidget::close);

    QMenu *windows = menuBar()->addMenu(QStringLiteral("F&inestre"));
    windows->addAction(QStringLiteral("&Affianca"), m_mdiArea, &QMdiArea::tileSubWindows);
    windows->addAction(QStringLiteral("&Sovrapponi"), m_mdiArea, &QMdiArea::cascadeSubWindows);
    windows->addAction(QStringLiteral("&Chiudi tutte"), m_mdiArea, &QMdiArea::closeAllSubWindows);

    updateStatus();
}

void MainWindow::addForm(QWidget *form)
{
    QMdiSubWindow *window = m_mdiArea->addSubWindow(form);
    window->setWindowTitle(form->windowTitle());
    connect(form, &QWidget::windowTitleChanged, window, &QWidget::setWindowTitle);
    // Opened maximized, the editor gets all the room there is; restored, the sub-window keeps
    // most of the area with its frame in sight.
    const QSize area = m_mdiArea->viewport()->size();
    window->resize(area.isEmpty() ? QSize(1000, 700) : area * 0.95);
    window->showMaximized();
}

QStringList MainWindow::openForms() const
{
    QStringList forms;
    for (QMdiSubWindow *window : m_mdiArea->subWindowList()) {
        if (QWidget *form = window->widget())
            forms << QStringLiteral("%1 \"%2\"").arg(form->objectName(), form->windowTitle());
    }
    return forms;
}

void MainWindow::setCompanyCheck(std::function<bool(int)> hasData)
{
    m_companyHasData = std::move(hasData);
    updateStatus();
}

QString MainWindow::companyNotice() const
{
    if (!m_companyWithoutData)
        return {};
    return QStringLiteral("La ditta %1 non ha dati in questo database (né anagrafica della ditta, né tipi distinta, "
                          "né clienti o fornitori): le distinte saranno vuote.")
        .arg(m_globals.workingCompany());
}

void MainWindow::changeWorkingCompany()
{
    bool ok = false;
    const int company = QInputDialog::getInt(this, QStringLiteral("Cambia ditta di lavoro"),
                                             QStringLiteral("Codice della nuova ditta di lavoro:"),
                                             m_globals.workingCompany(), 1, 99999, 1, &ok);
    if (!ok || company == m_globals.workingCompany())
        return;
    m_globals.setWorkingCompany(company);
    // The forms take the change in first: the status line names the new company only once
    // what is shown is the new company's.
    for (QMdiSubWindow *window : m_mdiArea->subWindowList()) {
        if (auto *handler = qobject_cast<fw::CompanyChangeHandler *>(window->widget()))
            handler->workingCompanyChanged();
    }
    updateStatus();
    if (const QString notice = companyNotice(); !notice.isEmpty()) {
        if (const auto log = m_globals.createLogService())
            log->showMessage(notice, m_globals.applicationTitle(), fw::MessageStyle::Notice);
    }
}

// File › Esci and the window's own close end the program only once every form has closed as the
// user would close it: pending changes are asked about ("Annulla" keeps the program open), and
// each form keeps its layout.
void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!fw::closeSubWindows(m_mdiArea)) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

void MainWindow::updateStatus()
{
    m_companyWithoutData = m_companyHasData && !m_companyHasData(m_globals.workingCompany());
    const QString company = QString::number(m_globals.workingCompany())
        + (m_companyWithoutData ? QStringLiteral(" (senza dati)") : QString());
    m_status->setText(QStringLiteral("Ditta %1   Utente %2   Gruppo %3   %4")
                          .arg(company, m_globals.user(), m_globals.userGroup(), m_databaseDescription));
}
