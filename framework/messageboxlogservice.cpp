#include "framework/messageboxlogservice.h"

#include "framework/unattendedrun.h"

#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTextStream>

namespace fw {

namespace {

struct ButtonAnswer
{
    QMessageBox::StandardButton button;
    int answer;
};

// The buttons of a style, in the order the style's default-button bits count them.
QList<ButtonAnswer> buttonsOf(int style)
{
    switch (style & 0xF) {
    case MessageStyle::OkCancel: return {{QMessageBox::Ok, Answer::Ok}, {QMessageBox::Cancel, Answer::Cancel}};
    case MessageStyle::AbortRetryIgnore:
        return {{QMessageBox::Abort, Answer::Abort},
                {QMessageBox::Retry, Answer::Retry},
                {QMessageBox::Ignore, Answer::Ignore}};
    case MessageStyle::YesNoCancel:
        return {{QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No}, {QMessageBox::Cancel, Answer::Cancel}};
    case MessageStyle::YesNo: return {{QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No}};
    case MessageStyle::RetryCancel: return {{QMessageBox::Retry, Answer::Retry}, {QMessageBox::Cancel, Answer::Cancel}};
    default: return {{QMessageBox::Ok, Answer::Ok}};
    }
}

// The buttons speak Italian whatever the system's language.
QString italianCaption(QMessageBox::StandardButton button)
{
    switch (button) {
    case QMessageBox::Yes: return QStringLiteral("Sì");
    case QMessageBox::No: return QStringLiteral("No");
    case QMessageBox::Cancel: return QStringLiteral("Annulla");
    case QMessageBox::Abort: return QStringLiteral("Interrompi");
    case QMessageBox::Retry: return QStringLiteral("Riprova");
    case QMessageBox::Ignore: return QStringLiteral("Ignora");
    default: return QStringLiteral("OK");
    }
}

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case MessageStyle::Critical: return QMessageBox::Critical;
    case MessageStyle::Question: return QMessageBox::Question;
    case MessageStyle::Exclamation: return QMessageBox::Warning;
    case MessageStyle::Information: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

int defaultIndex(int style, int buttonCount)
{
    const int index = (style & 0x300) >> 8;
    return index < buttonCount ? index : 0;
}

} // namespace

MessageBoxLogService::MessageBoxLogService() = default;

MessageBoxLogService::MessageBoxLogService(std::shared_ptr<UnattendedRun> unattended)
    : m_unattended(std::move(unattended))
{ }

void MessageBoxLogService::logError(const QString &procedure, const QString &description)
{
    m_errors.append({procedure, description});
}

void MessageBoxLogService::logDatabaseErrors(const QList<db::DbError> &errors)
{
    m_databaseErrors.append(errors);
}

int MessageBoxLogService::showMessage(const QString &text, const QString &title, int style)
{
    return ask(text, title, style);
}

int MessageBoxLogService::showErrorDialog(const QString &procedure, const QString &applicationTitle,
                                          const QString &caption, int style)
{
    const QString text = pendingErrorText(procedure);
    m_errors.clear();
    m_databaseErrors.clear();
    const QString title = caption.isEmpty() ? applicationTitle : applicationTitle + QStringLiteral(" - ") + caption;
    if (m_unattended) {
        m_unattended->fail(title + QStringLiteral(": ") + text);
        return Answer::Abort;
    }
    return ask(text, title, style);
}

int MessageBoxLogService::defaultAnswer(int style)
{
    const QList<ButtonAnswer> buttons = buttonsOf(style);
    return buttons.at(defaultIndex(style, buttons.size())).answer;
}

int MessageBoxLogService::ask(const QString &text, const QString &title, int style)
{
    if (m_unattended) {
        QTextStream(stderr) << title << ": " << text << Qt::endl;
        const int answer = defaultAnswer(style);
        if (answer != Answer::Retry)
            return answer;
        return (style & 0xF) == MessageStyle::RetryCancel ? int(Answer::Cancel) : int(Answer::Abort);
    }

    const QList<ButtonAnswer> buttons = buttonsOf(style);
    QMessageBox box(iconOf(style), title, text);
    for (const ButtonAnswer &b : buttons)
        box.addButton(b.button)->setText(italianCaption(b.button));
    box.setDefaultButton(buttons.at(defaultIndex(style, buttons.size())).button);
    if (style & MessageStyle::SystemModal) {
        box.setWindowModality(Qt::ApplicationModal);
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    const auto chosen = static_cast<QMessageBox::StandardButton>(box.exec());
    for (const ButtonAnswer &b : buttons) {
        if (b.button == chosen)
            return b.answer;
    }
    // Closed with Escape or the title bar: the box's escape button, else its default.
    const int buttonSet = style & 0xF;
    const bool hasCancel = buttonSet == MessageStyle::OkCancel || buttonSet == MessageStyle::YesNoCancel
        || buttonSet == MessageStyle::RetryCancel;
    return hasCancel ? int(Answer::Cancel) : defaultAnswer(style);
}

QString MessageBoxLogService::pendingErrorText(const QString &procedure) const
{
    QStringList lines;
    lines << QStringLiteral("Si è verificato un errore in %1.").arg(procedure);
    for (const auto &error : m_errors)
        lines << QString() << error.second;
    if (!m_databaseErrors.isEmpty()) {
        lines << QString() << QStringLiteral("Errori del database:");
        for (const db::DbError &e : m_databaseErrors) {
            QString line = e.source;
            if (!e.sqlState.isEmpty())
                line += QStringLiteral(" [%1]").arg(e.sqlState);
            if (e.nativeError != 0)
                line += QStringLiteral(" (%1)").arg(e.nativeError);
            lines << line + QStringLiteral(": ") + e.description;
        }
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace fw
