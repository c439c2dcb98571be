#pragma once

#include "framework/report/reportprintchoice.h"

#include <QString>

namespace fw {

// The last answers of each user in the print dialog, kept in a settings file of the machine,
// so that the next print proposes them again.
class ReportDialogMemory
{
public:
    explicit ReportDialogMemory(const QString &settingsFile);

    // What the user answered last time; empty texts and the preview when never asked.
    ReportPrintChoice recall(const QString &user) const;
    void remember(const QString &user, const ReportPrintChoice &choice);

    // stampe.ini in the program's configuration folder of the user's account.
    static QString defaultSettingsFile();

private:
    QString m_settingsFile;
};

} // namespace fw
