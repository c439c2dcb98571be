#include "tests/support/altletters.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMap>
#include <QMenu>
#include <QShortcut>
#include <QTabBar>

namespace {

// The letters claimed so far, each with the texts that claim it.
class Letters
{
public:
    void claim(const QString &text)
    {
        const QKeySequence mnemonic = QKeySequence::mnemonic(text);
        if (!mnemonic.isEmpty())
            m_claims[mnemonic[0].key()] << text;
    }
    void claim(const QKeySequence &shortcut, const QString &name)
    {
        if (!shortcut.isEmpty() && shortcut[0].keyboardModifiers() == Qt::AltModifier && shortcut[0].key() >= Qt::Key_A
            && shortcut[0].key() <= Qt::Key_Z)
            m_claims[shortcut[0].key()] << name;
    }
    QStringList clashes() const
    {
        QStringList found;
        for (auto claim = m_claims.cbegin(); claim != m_claims.cend(); ++claim) {
            if (claim.value().size() > 1)
                found << QStringLiteral("Alt+%1: %2").arg(QChar(claim.key()), claim.value().join(QStringLiteral(", ")));
        }
        return found;
    }

private:
    QMap<int, QStringList> m_claims;
};

} // namespace

QStringList altLetterClashes(const QWidget *form)
{
    Letters letters;
    const auto shown = [form](const QWidget *widget) { return widget->isVisibleTo(form); };
    for (const QAbstractButton *button : form->findChildren<QAbstractButton *>()) {
        if (shown(button))
            letters.claim(button->text());
    }
    for (const QLabel *label : form->findChildren<QLabel *>()) {
        if (label->buddy() && shown(label))
            letters.claim(label->text());
    }
    for (const QGroupBox *group : form->findChildren<QGroupBox *>()) {
        if (shown(group))
            letters.claim(group->title());
    }
    for (const QTabBar *tabs : form->findChildren<QTabBar *>()) {
        for (int tab = 0; shown(tabs) && tab < tabs->count(); ++tab) {
            if (tabs->isTabVisible(tab))
                letters.claim(tabs->tabText(tab));
        }
    }
    for (const QShortcut *shortcut : form->findChildren<QShortcut *>()) {
        if (shortcut->isEnabled())
            letters.claim(shortcut->key(), shortcut->objectName());
    }
    return letters.clashes();
}

QStringList altLetterClashes(const QMenu *menu)
{
    Letters letters;
    for (const QAction *action : menu->actions()) {
        if (action->isVisible() && !action->isSeparator())
            letters.claim(action->text());
    }
    return letters.clashes();
}
