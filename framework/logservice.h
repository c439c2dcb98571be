#pragma once

#include "framework/messagestyle.h"
#include "platform/db/databaseerror.h"

#include <QList>
#include <QString>

namespace fw {

// The host's log service: every error, warning and question of a module goes through it.
class LogService
{
public:
    virtual ~LogService() = default;

    // Records a run-time error of a procedure; the next error dialog shows it.
    virtual void logError(const QString &procedure, const QString &description) = 0;

    // Records the error list of a database connection along with the error.
    virtual void logDatabaseErrors(const QList<db::DbError> &errors) = 0;

    // Shows a message box; style as in MessageStyle. Returns the Answer chosen.
    virtual int showMessage(const QString &text, const QString &title, int style) = 0;

    // Shows the errors recorded since the last dialog, for the procedure, and returns the
    // Answer chosen (Abort, Retry or Ignore with MessageStyle::ErrorDialog).
    virtual int showErrorDialog(const QString &procedure, const QString &applicationTitle, const QString &caption,
                                int style) = 0;
};

} // namespace fw
