#include "tests/support/scriptednavigator.h"

fw::ScriptObjectModel *ScriptedNavigator::scriptObjectModel() const
{
    return m_scriptLayer ? const_cast<ScriptedNavigator *>(this) : nullptr;
}

void ScriptedNavigator::registerForm(QObject *form)
{
    registrations.append({form, form ? form->objectName() : QString(), 0});
}

void ScriptedNavigator::registerObject(QObject *object, const QString &name, int kind)
{
    registrations.append({object, name, kind});
}

void ScriptedNavigator::raiseFormEvent(const QString &formIdentifier, const QString &text, int open)
{
    formEvents.append({formIdentifier, text, open});
}

bool ScriptedNavigator::queryUnload(const QString &formIdentifier)
{
    closeQuestions << formIdentifier;
    return m_refuseClose;
}

QObject *ScriptedNavigator::registerForm(QObject *layoutObject, const QString &formIdentifier)
{
    layouts << formIdentifier;
    return layoutObject; // the forms' layout object is the form itself
}

QStringList ScriptedNavigator::structuresOf(QObject *form)
{
    struct Collected : fw::LayoutStructureModel
    {
        void addStructure(const QString &name) override { names << name; }
        QStringList names;
    } collected;
    if (auto *source = qobject_cast<fw::LayoutStructureSource *>(form))
        source->LAYSCRIPTMEDIA_OnAddStruttura(collected);
    return collected.names;
}
