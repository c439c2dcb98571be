// TEMPORARY placeholder until the tokenizer-based translator lands.
#include "tsqltranslator.h"
namespace db {
QString translateTsqlToSqlite(const QString &tsql) { return tsql; }
}
