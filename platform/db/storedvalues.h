#pragma once

#include "field.h"

#include <QDateTime>
#include <QString>
#include <QVariant>

// How values are stored in the embedded database and how declared column types map to fields.
// Internal to platform/db.
namespace db::storedvalues {

struct ColumnType
{
    FieldType type = FieldType::Unknown; // Unknown: decided by the values read
    int numericScale = 0;
};

// Maps a declared column type ("INTEGER", "DECIMAL(18,5)", "DATETIME", ...) to a field type.
// An empty declaration, or the bare "NUM" that CREATE TABLE ... AS gives, leaves the type Unknown.
ColumnType columnTypeFromDeclaration(const QString &declaration);

// Parses "YYYY-MM-DD HH:MM:SS" (also "YYYY-MM-DD", a 'T' separator and fractions of a second).
// Returns an invalid QDateTime when the text is not such a date.
QDateTime parseDateTime(const char *text, int length);
QDateTime parseDateTime(const QString &text);

// The text a date is stored as: "YYYY-MM-DD HH:MM:SS", local time.
QString formatDateTime(const QDateTime &value);

// Qt's integer types of every size and sign (bool aside): values and columns that are whole
// numbers, whatever type the driver or the caller gave them.
bool isWholeNumberType(int metaTypeId);

// Converts a value to the field's type, as assigning it to the field does; invalid QVariant
// when the value cannot be converted. A null value stays null.
QVariant coerce(const QVariant &value, FieldType type, bool *ok);

// A decimal rounded half away from zero to scale digits, as a DECIMAL(p,scale) column keeps it.
double roundToScale(double value, int scale);

// Equality as a changed-value test: null differs from any value; dates by instant.
bool sameValue(const QVariant &a, const QVariant &b);

} // namespace db::storedvalues
