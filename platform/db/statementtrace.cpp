#include "statementtrace.h"

#include "sqlliterals.h"
#include "storedvalues.h"

#include <QFile>
#include <QStringList>

namespace db {

namespace {

QString literal(const QVariant &value)
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("NULL");
    switch (value.metaType().id()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Double: return value.toString();
    case QMetaType::QDateTime:
    case QMetaType::QDate: return quoted(storedvalues::formatDateTime(value.toDateTime()));
    default: return quoted(value.toString());
    }
}

void append(const QString &text)
{
    const QString path = qEnvironmentVariable("DISTINTA_SQL_TRACE");
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return; // tracing must never break the work it watches
    file.write(text.toUtf8());
}

} // namespace

void StatementTrace::write(const QString &statement)
{
    if (!qEnvironmentVariableIsSet("DISTINTA_SQL_TRACE"))
        return;
    append(statement + QStringLiteral("\nGO\n"));
}

void StatementTrace::write(const QString &statement, const QVariantList &values)
{
    if (!qEnvironmentVariableIsSet("DISTINTA_SQL_TRACE"))
        return;
    QStringList literals;
    for (const QVariant &value : values)
        literals << literal(value);
    append(statement + QStringLiteral("\n-- ") + literals.join(QStringLiteral(", ")) + QStringLiteral("\nGO\n"));
}

void StatementTrace::writeFailure(const QString &message)
{
    if (!qEnvironmentVariableIsSet("DISTINTA_SQL_TRACE"))
        return;
    QString line = message;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    append(QStringLiteral("-- errore: ") + line + QLatin1Char('\n'));
}

} // namespace db
