#pragma once

#include "framework/logservice.h"

#include <QList>
#include <QPair>

namespace fw {

// The log service of a desktop host: messages and error dialogs as message boxes.
// Non-interactive (for unattended runs) it writes to the standard error stream instead and
// answers with the default button of each style.
class MessageBoxLogService : public LogService
{
public:
    explicit MessageBoxLogService(bool interactive = true);

    void logError(const QString &procedure, const QString &description) override;
    void logDatabaseErrors(const QList<db::DbError> &errors) override;
    int showMessage(const QString &text, const QString &title, int style) override;
    int showErrorDialog(const QString &procedure, const QString &applicationTitle,
                        const QString &caption, int style) override;

    // The answer a box of this style gives when its default button is taken.
    static int defaultAnswer(int style);

private:
    int ask(const QString &text, const QString &title, int style);
    QString pendingErrorText(const QString &procedure) const;

    bool m_interactive;
    QList<QPair<QString, QString>> m_errors;   // procedure, description
    QList<db::DbError> m_databaseErrors;
};

} // namespace fw
