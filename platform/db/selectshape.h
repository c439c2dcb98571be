#pragma once

#include <QList>
#include <QString>

namespace db {

// What a query reads, as far as writing changes back needs to know: whether its top-level FROM
// names a single table (no join, union or grouping), which table, and where each item of the
// select list comes from. Internal to platform/db.
struct SelectShape
{
    struct Item
    {
        QString outputName;      // alias, or the column's own name; empty for unnamed expressions
        QString sourceColumn;    // the base-table column it reads; empty for expressions
        bool allColumns = false; // "*" or "T.*"
    };

    bool singleTable = false;
    QString table;               // without brackets and schema
    bool temporaryTable = false; // a "#name" of the session
    QList<Item> items;

    static SelectShape analyse(const QString &sql);
};

} // namespace db
