#include "columnwidths.h"

#include "schemanames.h"

#include <QHash>

namespace columnwidths {

namespace {

const QHash<QString, int> &widths()
{
    static const QHash<QString, int> table {
        // audit stamps of the types and the nodes
        {schemanames::GD01_GRUPPOCRE, 20},
        {schemanames::GD01_UTENTECRE, 20},
        {schemanames::GD01_GRUPPOVAR, 20},
        {schemanames::GD01_UTENTEVAR, 20},
        {schemanames::GD02_GRUPPOCRE, 20},
        {schemanames::GD02_UTENTECRE, 20},
        {schemanames::GD02_GRUPPOVAR, 20},
        {schemanames::GD02_UTENTEVAR, 20},
        // workflow states of rows
        {QStringLiteral("WF02_TABELLA"), 30},
        {QStringLiteral("WF02_GRUPPOCRE"), 20},
        {QStringLiteral("WF02_UTENTECRE"), 20},
        {QStringLiteral("WF02_GRUPPOVAR"), 20},
        {QStringLiteral("WF02_UTENTEVAR"), 20},
        // print work table: computer name + user name, and the level text
        {schemanames::GD04_KEY, 200},
        {QStringLiteral("GD04_LIVELLO"), 40},
        // texts typed into the types and the nodes
        {QStringLiteral("GD01_CODICE"), 20},
        {QStringLiteral("GD01_DESCR"), 80},
        {QStringLiteral("GD02_DESCR"), 80},
    };
    return table;
}

} // namespace

int widthOf(const QString &column)
{
    return widths().value(column.toUpper(), 0);
}

QString fitToColumn(const QString &column, const QString &value)
{
    const int width = widthOf(column);
    if (width <= 0 || value.size() <= width)
        return value;
    // Never half of a character written as a surrogate pair.
    return value.left(value.at(width - 1).isHighSurrogate() ? width - 1 : width);
}

} // namespace columnwidths
