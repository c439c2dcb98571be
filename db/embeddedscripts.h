#pragma once

#include <QString>

namespace dbsetup {

// Scripts embedded through db.qrc (SQLite dialect).
QString sqliteSchemaScript();    // schema_sqlite.sql
QString demoReferenceScript();   // demo_reference.sql

} // namespace dbsetup
