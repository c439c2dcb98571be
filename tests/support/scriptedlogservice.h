#pragma once

#include "framework/logservice.h"

#include <QList>
#include <QQueue>
#include <QString>

// The log service of the tests: records everything a form shows and answers questions and error
// dialogs from a queue; once the queue is empty, with the default answer (by default the
// default button of each style).
class ScriptedLogService : public fw::LogService
{
public:
    struct Message
    {
        QString text;
        QString title;
        int style = 0;
        int answer = 0;
    };
    struct ErrorDialog
    {
        QString procedure;
        QString applicationTitle;
        QString caption;
        int style = 0;
        QStringList errors;                // descriptions logged since the previous dialog
        QList<db::DbError> databaseErrors; // database errors logged since the previous dialog
        int answer = 0;
    };

    void logError(const QString &procedure, const QString &description) override;
    void logDatabaseErrors(const QList<db::DbError> &errors) override;
    int showMessage(const QString &text, const QString &title, int style) override;
    int showErrorDialog(const QString &procedure, const QString &applicationTitle, const QString &caption,
                        int style) override;

    // --- script
    void answerNext(int answer) { m_answers.enqueue(answer); }
    void answerNext(std::initializer_list<int> answers);
    void setDefaultAnswer(int answer) { m_defaultAnswer = answer; } // 0: the style's default
    int pendingAnswers() const { return m_answers.size(); }

    // --- record
    const QList<Message> &messages() const { return m_messages; }
    const QList<ErrorDialog> &errorDialogs() const { return m_dialogs; }
    QStringList messageTexts() const;
    bool isQuiet() const { return m_messages.isEmpty() && m_dialogs.isEmpty() && m_errors.isEmpty(); }
    void clear();

private:
    int nextAnswer(int style);

    QQueue<int> m_answers;
    int m_defaultAnswer = 0;
    QList<Message> m_messages;
    QList<ErrorDialog> m_dialogs;
    QStringList m_errors;
    QList<db::DbError> m_databaseErrors;
};
