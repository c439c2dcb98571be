#pragma once

#include <QString>

class QObject;

namespace fw {

// The host's script layer as the modules see it: the objects scripts may address, the events
// of forms opening and closing, and the script's say on whether a form may close.
class ScriptObjectModel
{
public:
    // Registration kind of an object that scripts address by its Name.
    static constexpr int NamedObject = 3;

    virtual ~ScriptObjectModel() = default;

    virtual void registerForm(QObject *form) = 0;
    virtual void registerObject(QObject *object, const QString &name, int kind) = 0;

    // open is 1 when the form opens, 0 when it closes.
    virtual void raiseFormEvent(const QString &formIdentifier, const QString &text, int open) = 0;

    // The script's answer to a form's closing: true cancels it.
    virtual bool queryUnload(const QString &formIdentifier) = 0;
};

} // namespace fw
