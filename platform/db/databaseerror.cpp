#include "databaseerror.h"

#include "writeback.h"

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
{ }

QString DatabaseError::message() const
{
    return QString::fromStdString(what());
}

bool DatabaseError::isStaleRow() const
{
    const QString conflict = QString::fromUtf8(WriteBack::conflictMessage());
    for (const DbError &error : m_errors) {
        if (error.description == conflict)
            return true;
    }
    return false;
}

} // namespace db
