#include "tests/support/scriptedlogservice.h"

#include "framework/messageboxlogservice.h"

void ScriptedLogService::logError(const QString &procedure, const QString &description)
{
    m_errors << procedure + QStringLiteral(": ") + description;
}

void ScriptedLogService::logDatabaseErrors(const QList<db::DbError> &errors)
{
    m_databaseErrors << errors;
}

int ScriptedLogService::showMessage(const QString &text, const QString &title, int style)
{
    const int answer = nextAnswer(style);
    m_messages.append({text, title, style, answer});
    return answer;
}

int ScriptedLogService::showErrorDialog(const QString &procedure, const QString &applicationTitle,
                                        const QString &caption, int style)
{
    const int answer = nextAnswer(style);
    m_dialogs.append({procedure, applicationTitle, caption, style, m_errors, m_databaseErrors, answer});
    m_errors.clear();
    m_databaseErrors.clear();
    return answer;
}

void ScriptedLogService::answerNext(std::initializer_list<int> answers)
{
    for (int answer : answers)
        m_answers.enqueue(answer);
}

QStringList ScriptedLogService::messageTexts() const
{
    QStringList texts;
    for (const Message &message : m_messages)
        texts << message.text;
    return texts;
}

void ScriptedLogService::clear()
{
    m_messages.clear();
    m_dialogs.clear();
    m_errors.clear();
    m_databaseErrors.clear();
}

int ScriptedLogService::nextAnswer(int style)
{
    if (!m_answers.isEmpty())
        return m_answers.dequeue();
    return m_defaultAnswer != 0 ? m_defaultAnswer : fw::MessageBoxLogService::defaultAnswer(style);
}
