#include "framework/controlvalue.h"

#include "platform/db/dayformat.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTime>
#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QWidget>

namespace controlvalue {

namespace {

QVariant nullIfEmpty(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString && value.toString().isEmpty())
        return {};
    return value;
}

QString displayText(const QVariant &value)
{
    if (value.typeId() == QMetaType::QDateTime)
        return value.toDateTime().toString(db::dayFormat);
    if (value.typeId() == QMetaType::QDate)
        return value.toDate().toString(db::dayFormat);
    return value.toString();
}

} // namespace

QVariant read(const QWidget *control)
{
    if (const auto *combo = qobject_cast<const QComboBox *>(control)) {
        const QVariant data = combo->currentData();
        return data.isValid() ? data : nullIfEmpty(combo->currentText());
    }
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return nullIfEmpty(label->text());
    const QMetaProperty property = control->metaObject()->userProperty();
    return property.isValid() ? nullIfEmpty(property.read(control)) : QVariant();
}

void write(QWidget *control, const QVariant &value)
{
    if (auto *combo = qobject_cast<QComboBox *>(control)) {
        int index = value.isNull() ? -1 : combo->findData(value);
        if (index < 0 && !value.isNull())
            index = combo->findText(displayText(value));
        combo->setCurrentIndex(index);
        return;
    }
    if (auto *label = qobject_cast<QLabel *>(control)) {
        label->setText(displayText(value));
        return;
    }
    const QMetaProperty property = control->metaObject()->userProperty();
    if (!property.isValid())
        return;
    QVariant shown;
    if (value.isNull())
        shown = QVariant(property.metaType());
    else if (property.metaType().id() == QMetaType::QString)
        shown = displayText(value);
    else
        shown = value;
    // A frame refills every control on each move of its row; a control that already shows the
    // value is left alone (setting a text lays it out again even when it is the same).
    if (property.read(control) != shown)
        property.write(control, shown);
}

QMetaObject::Connection onChange(QWidget *control, QObject *context, std::function<void()> onEdit)
{
    if (auto *combo = qobject_cast<QComboBox *>(control))
        return QObject::connect(combo, &QComboBox::currentIndexChanged, context, [onEdit] { onEdit(); });
    if (auto *text = qobject_cast<QPlainTextEdit *>(control))
        return QObject::connect(text, &QPlainTextEdit::textChanged, context, [onEdit] { onEdit(); });
    if (auto *button = qobject_cast<QAbstractButton *>(control))
        return QObject::connect(button, &QAbstractButton::toggled, context, [onEdit] { onEdit(); });

    if (auto *line = qobject_cast<QLineEdit *>(control))
        return QObject::connect(line, &QLineEdit::textChanged, context, [onEdit] { onEdit(); });
    if (auto *spin = qobject_cast<QSpinBox *>(control))
        return QObject::connect(spin, &QSpinBox::valueChanged, context, [onEdit] { onEdit(); });
    if (auto *spin = qobject_cast<QDoubleSpinBox *>(control))
        return QObject::connect(spin, &QDoubleSpinBox::valueChanged, context, [onEdit] { onEdit(); });
    if (auto *date = qobject_cast<QDateTimeEdit *>(control))
        return QObject::connect(date, &QDateTimeEdit::dateTimeChanged, context, [onEdit] { onEdit(); });
    return {};
}

QVariant toFieldValue(const QVariant &value, db::FieldType type)
{
    if (value.isNull())
        return value;
    bool ok = false;
    switch (type) {
    case db::FieldType::Integer:
    case db::FieldType::Boolean: {
        if (value.typeId() == QMetaType::Bool)
            return value.toBool() ? 1 : 0;
        const qlonglong number = value.toString().trimmed().toLongLong(&ok);
        return ok ? QVariant(number) : value;
    }
    case db::FieldType::Double:
    case db::FieldType::Decimal: {
        const double number = value.toString().trimmed().replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&ok);
        return ok ? QVariant(number) : value;
    }
    case db::FieldType::DateTime: {
        if (value.typeId() == QMetaType::QDateTime)
            return value;
        if (value.typeId() == QMetaType::QDate)
            return QDateTime(value.toDate(), QTime(0, 0));
        const QDate date = QDate::fromString(value.toString().trimmed(), db::dayFormat);
        return date.isValid() ? QVariant(QDateTime(date, QTime(0, 0))) : value;
    }
    default: return value;
    }
}

bool sameValue(const QVariant &typed, const QVariant &stored, db::FieldType type)
{
    if (stored.isNull())
        return false;
    const QVariant converted = toFieldValue(typed, type);
    switch (type) {
    case db::FieldType::Integer:
    case db::FieldType::Boolean:
    case db::FieldType::Double:
    case db::FieldType::Decimal: {
        bool okTyped = false;
        bool okStored = false;
        const double a = converted.toDouble(&okTyped);
        const double b = stored.toDouble(&okStored);
        return okTyped && okStored && a == b;
    }
    case db::FieldType::DateTime: return converted.toDateTime() == stored.toDateTime();
    default: return converted.toString().trimmed().compare(stored.toString().trimmed(), Qt::CaseInsensitive) == 0;
    }
}

} // namespace controlvalue
