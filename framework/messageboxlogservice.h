#pragma once

#include "framework/logservice.h"

#include <QList>
#include <QPair>
#include <memory>

namespace fw {

class UnattendedRun;

// The log service of a desktop host: messages and error dialogs as message boxes.
//
// For a run without a user it shows nothing: messages go to the standard error stream and take
// the default button of their style (never Retry, which would only repeat what failed), and an
// error dialog is answered Abort after the error has been handed to the run (UnattendedRun),
// which reports the first one and ends the run.
class MessageBoxLogService : public LogService
{
public:
    MessageBoxLogService();
    explicit MessageBoxLogService(std::shared_ptr<UnattendedRun> unattended);

    void logError(const QString &procedure, const QString &description) override;
    void logDatabaseErrors(const QList<db::DbError> &errors) override;
    int showMessage(const QString &text, const QString &title, int style) override;
    int showErrorDialog(const QString &procedure, const QString &applicationTitle, const QString &caption,
                        int style) override;

    // The answer a box of this style gives when its default button is taken.
    static int defaultAnswer(int style);

private:
    int ask(const QString &text, const QString &title, int style);
    QString pendingErrorText(const QString &procedure) const;

    std::shared_ptr<UnattendedRun> m_unattended; // null when a user answers
    QList<QPair<QString, QString>> m_errors;     // procedure, description
    QList<db::DbError> m_databaseErrors;
};

} // namespace fw
