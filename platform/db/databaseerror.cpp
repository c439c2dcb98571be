#include "databaseerror.h"

#include <QStringList>

namespace db {

namespace {

std::string joinedDescriptions(const QList<DbError> &errors)
{
    QStringList lines;
    for (const DbError &error : errors)
        lines << error.description;
    return lines.join(QLatin1Char('\n')).toStdString();
}

} // namespace

DatabaseError::DatabaseError(const QList<DbError> &errors, const QString &statement)
    : std::runtime_error(joinedDescriptions(errors))
    , m_errors(errors)
    , m_statement(statement)
{
}

QString DatabaseError::message() const
{
    return QString::fromStdString(what());
}

} // namespace db
