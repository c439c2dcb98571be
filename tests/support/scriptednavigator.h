#pragma once

#include "framework/activenavigator.h"
#include "framework/layoutobjectmodel.h"
#include "framework/layoutstructures.h"
#include "framework/scriptobjectmodel.h"

#include <QList>
#include <QStringList>

// The host's navigator and script layer for tests: records what the forms tell it and answers
// the may-close question as scripted.
class ScriptedNavigator : public fw::ActiveNavigator, public fw::ScriptObjectModel, public fw::LayoutObjectModel
{
    Q_OBJECT

public:
    struct FormEvent
    {
        QString formIdentifier;
        QString text;
        int open = 0;
    };
    struct Registration
    {
        QObject *object = nullptr;
        QString name;
        int kind = 0;
    };

    using fw::ActiveNavigator::ActiveNavigator;

    fw::ScriptObjectModel *scriptObjectModel() const override;

    void registerForm(QObject *form) override;
    void registerObject(QObject *object, const QString &name, int kind) override;
    void raiseFormEvent(const QString &formIdentifier, const QString &text, int open) override;
    bool queryUnload(const QString &formIdentifier) override;
    QObject *registerForm(QObject *layoutObject, const QString &formIdentifier) override;

    // --- layout script: the structures a form offers, as the host asks for them (none when the
    // form offers none)
    static QStringList structuresOf(QObject *form);

    // --- script
    void setScriptLayer(bool present) { m_scriptLayer = present; }
    void setRefuseClose(bool refuse) { m_refuseClose = refuse; }

    // --- record
    QList<FormEvent> formEvents;
    QList<Registration> registrations; // forms (kind 0) and named objects
    QStringList layouts;               // form identifiers of registered layouts
    QStringList closeQuestions;        // form identifiers asked about

private:
    bool m_scriptLayer = true;
    bool m_refuseClose = false;
};
