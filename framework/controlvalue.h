#pragma once

#include "platform/db/field.h"

#include <QMetaObject>
#include <QVariant>
#include <functional>

class QObject;
class QWidget;

// Reading and writing the value of an edit control as a record frame sees it.
namespace controlvalue {

// The control's value; a null QVariant for empty text or no combo choice.
QVariant read(const QWidget *control);

// Shows value in the control; null clears it. Dates show as "dd/mm/yyyy" in text controls.
void write(QWidget *control, const QVariant &value);

// Calls onEdit whenever the control's value changes; an invalid connection for a control
// that cannot be edited.
QMetaObject::Connection onChange(QWidget *control, QObject *context, std::function<void()> onEdit);

// value converted for a field of the given type ("1,5" and "1.5" for numbers, "dd/mm/yyyy" for
// dates); a value that does not convert is returned unchanged, for the database to judge.
QVariant toFieldValue(const QVariant &value, db::FieldType type);

// Whether two values of a field are the same for a query by example.
bool sameValue(const QVariant &typed, const QVariant &stored, db::FieldType type);

} // namespace controlvalue
