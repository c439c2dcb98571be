#pragma once

#include "shell/exportrequest.h"
#include "shell/historyrequest.h"
#include "shell/importrequest.h"
#include "shell/printrequest.h"

#include <QSize>
#include <QString>
#include <QStringList>

// The login context and the database of a run, from the command line.
struct ShellOptions
{
    int company = 1;
    QString user; // default: the user logged into the system
    QString userGroup = QStringLiteral("ADMIN");
    QString databasePath;         // SQLite file; created with the demo data when missing
    QString odbcConnectionString; // instead of a SQLite file
    QString odbcPasswordFile;     // the ODBC password, in a file only the user may read
    bool exitAfterShow = false;   // unattended check: open the editor, report, exit
    QString screenshotPath;       // unattended: open the editor, save a picture of the window, exit
    QSize windowSize;             // --size; invalid: 1280x800 without a user, else as last left
    PrintRequest print;           // unattended: print a list to PDF without a window, exit
    ExportRequest exportList;     // unattended: export a list to XLSX or CSV without a window, exit
    HistoryRequest history;       // unattended: a list's history or its differences between two days, exit
    ImportRequest importFile;     // unattended: a spreadsheet imported into a list, exit

    // A run without a user: errors end it with fw::UnattendedRun::FailureExitCode. Every headless
    // command belongs here.
    bool unattended() const
    {
        return exitAfterShow || !screenshotPath.isEmpty() || print.requested() || exportList.requested()
            || history.requested() || importFile.requested();
    }

    // Parses the arguments (program name first). On --help or --version it prints and sets
    // exitCode to 0; on a wrong argument it prints the error and sets exitCode to 1.
    static ShellOptions parse(const QStringList &arguments, int *exitCode);
    static QSize parseWindowSize(const QString &text);
};
