#pragma once

#include <QString>
#include <QVariantList>

namespace db {

// Appends every statement sent to the file named by DISTINTA_SQL_TRACE, each followed by a
// line holding only "GO", so that support can replay or read what the module did.
// Connection strings never pass through here.
class StatementTrace
{
public:
    static void write(const QString &statement);
    // A statement with bound values: the values follow as a comment line.
    static void write(const QString &statement, const QVariantList &values);
    // What the database answered to the statement written last, when it refused it; the
    // statement may have been refused quietly, on purpose, by the code that sent it.
    static void writeFailure(const QString &message);
};

} // namespace db
