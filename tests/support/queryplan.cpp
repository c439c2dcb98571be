#include "tests/support/queryplan.h"

#include <QStringList>
#include <sqlite3.h>

QString queryPlan(sqlite3 *handle, const QString &sqlite)
{
    QStringList steps;
    sqlite3_stmt *statement = nullptr;
    const QByteArray utf8 = (QStringLiteral("EXPLAIN QUERY PLAN ") + sqlite).toUtf8();
    if (sqlite3_prepare_v2(handle, utf8.constData(), int(utf8.size()), &statement, nullptr) != SQLITE_OK)
        return QString::fromUtf8(sqlite3_errmsg(handle));
    while (sqlite3_step(statement) == SQLITE_ROW)
        steps << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 3)));
    sqlite3_finalize(statement);
    return steps.join(u'\n');
}
