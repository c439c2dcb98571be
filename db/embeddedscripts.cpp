#include "embeddedscripts.h"

#include "platform/db/databaseerror.h"

#include <QFile>

namespace dbsetup {

namespace {

QString readResource(const QString &name)
{
    QFile file(QStringLiteral(":/db/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        db::DbError error {QStringLiteral("Script incorporato non trovato: ") + name, QStringLiteral("SQLite"), {}, 0};
        throw db::DatabaseError({error});
    }
    return QString::fromUtf8(file.readAll());
}

} // namespace

QString sqliteSchemaScript()
{
    return readResource(QStringLiteral("schema_sqlite.sql"));
}

QString journalScript()
{
    return readResource(QStringLiteral("journal_sqlite.sql"));
}

QString demoReferenceScript()
{
    return readResource(QStringLiteral("demo_reference.sql"));
}

} // namespace dbsetup
