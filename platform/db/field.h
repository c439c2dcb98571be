#pragma once

#include <QString>
#include <QVariant>

namespace db {

enum class FieldType { Integer, Double, Decimal, Text, DateTime, Boolean, Blob, Unknown };

// Description of one column of a recordset. Values themselves live in the recordset.
struct FieldInfo
{
    QString name; // as the statement names it (alias included)
    FieldType type = FieldType::Unknown;
    int numericScale = 0;  // digits after the decimal point for Decimal, else 0
    bool writable = false; // the column belongs to the recordset's base table
    bool key = false;      // part of the base table's primary key
};

} // namespace db
