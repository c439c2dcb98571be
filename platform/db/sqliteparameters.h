#pragma once

#include <QString>
#include <QVariantList>

namespace db {

// A SELECT with the whole numbers and texts of its conditions (WHERE, ON, HAVING) taken out as
// parameters, in order. Statements that differ only in those values (a node's id, a subject's
// code) then share one prepared statement instead of being parsed and planned each time.
// Values that could change the result's shape or its plan stay in the text: those of the
// select list (they name unaliased columns), of ORDER BY, GROUP BY and LIMIT, of type names,
// the patterns of LIKE and GLOB, decimals. values is empty when nothing was taken out, or when
// the text is not one SELECT.
struct ParameterizedSelect
{
    QString text;
    QVariantList values; // qlonglong or QString
};

ParameterizedSelect parameterizeConditions(const QString &sqlite);

// An INSERT of one row, "INSERT INTO t (...) VALUES (...)", with each value that is a whole
// number or a text on its own taken out as a parameter: a batch of inserts that differ only in
// their values shares one prepared statement (and the trigger programs it carries). Expressions,
// decimals and NULL stay in the text; values is empty for any other statement.
ParameterizedSelect parameterizeValues(const QString &sqlite);

} // namespace db
