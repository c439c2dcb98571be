// TEMPORARY placeholder until the translator's functions land.
#include "sqlitefunctions.h"
namespace db {
void registerSqliteFunctions(sqlite3 *) {}
}
