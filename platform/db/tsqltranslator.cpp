#include "tsqltranslator.h"

#include "tsqlrewriter.h"

namespace db {

QString translateTsqlToSqlite(const QString &tsql)
{
    return TsqlRewriter(tsql).rewrite();
}

} // namespace db
