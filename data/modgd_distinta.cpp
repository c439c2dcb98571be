#include "modgd_distinta.h"

#include "platform/db/dayformat.h"

#include <QDateTime>
#include <QLocale>

namespace MODGD_DISTINTA {

namespace {

bool isMissing(const QVariant &value)
{
    return !value.isValid() || value.isNull();
}

QString rightTrimmed(const QString &text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1).isSpace())
        --end;
    return text.left(end);
}

QString textOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDate: return value.toDate().toString(db::dayFormat);
    case QMetaType::QDateTime: {
        const QDateTime dateTime = value.toDateTime();
        if (dateTime.time() == QTime(0, 0))
            return dateTime.toString(db::dayFormat);
        return dateTime.toString(db::dayTimeFormat);
    }
    case QMetaType::Double:
    case QMetaType::Float: return QString::number(value.toDouble(), 'g', 15);
    default: return value.toString();
    }
}

double serialDay(const QDateTime &dateTime)
{
    const QDateTime origin(QDate(1899, 12, 30), QTime(0, 0), dateTime.timeSpec());
    return double(origin.msecsTo(dateTime)) / 86400000.0;
}

double numberFromText(const QString &text)
{
    const QString trimmed = text.trimmed();
    bool ok = false;
    double number = QLocale::c().toDouble(trimmed, &ok);
    if (!ok && trimmed.count(QLatin1Char(',')) == 1 && !trimmed.contains(QLatin1Char('.')))
        number = QLocale::c().toDouble(QString(trimmed).replace(QLatin1Char(','), QLatin1Char('.')), &ok);
    if (!ok || trimmed.isEmpty())
        throw ConversionError(QStringLiteral("Tipo non corrispondente: \"%1\" non è un numero").arg(text));
    return number;
}

} // namespace

QString NvlStringa(const QVariant &value)
{
    if (isMissing(value))
        return {};
    return rightTrimmed(textOf(value));
}

QVariant NvlNumero(const QVariant &value)
{
    if (isMissing(value))
        return QVariant::fromValue<short>(0);
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray:
    case QMetaType::QChar: {
        const QString text = value.toString();
        if (text.isEmpty())
            return QVariant::fromValue<short>(0);
        return numberFromText(text);
    }
    case QMetaType::Bool: return value.toBool() ? -1.0 : 0.0;
    case QMetaType::QDate: return serialDay(value.toDate().startOfDay());
    case QMetaType::QDateTime: return serialDay(value.toDateTime());
    default: break;
    }
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok)
        throw ConversionError(QStringLiteral("Tipo non corrispondente: valore di tipo %1 non numerico")
                                  .arg(QString::fromLatin1(value.typeName())));
    return number;
}

QVariant NvlTrim(const QVariant &value, const QVariant &defaultValue)
{
    if (isMissing(value))
        return defaultValue;
    if (!value.canConvert<QString>())
        return {};
    const QString trimmed = textOf(value).trimmed();
    if (trimmed.isEmpty())
        return defaultValue;
    return trimmed;
}

} // namespace MODGD_DISTINTA
