#include "tsqlerror.h"

#include "databaseerror.h"

namespace db {

namespace {

[[noreturn]] void throwTsql(const QString &description)
{
    DbError error;
    error.description = description;
    error.source = QStringLiteral("T-SQL");
    throw DatabaseError({error});
}

} // namespace

void throwUnsupportedTsql(const QString &construct)
{
    throwTsql(QStringLiteral("Costrutto T-SQL non supportato: ") + construct);
}

void throwInvalidTsql(const QString &description)
{
    throwTsql(QStringLiteral("Istruzione T-SQL non valida: ") + description);
}

} // namespace db
