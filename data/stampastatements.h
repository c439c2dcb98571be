#pragma once

#include <QDate>
#include <QString>
#include <optional>

// Statements of the print of a classification list: the work table GD04_STDISTINTA that holds
// the printed nodes under the key of a workstation and user, and the report's data query.
// The key is text and goes between quotes (a quote in a name is doubled); company, type,
// subject kind and code are written bare.
namespace stampastatements {

// One printed node of the work table.
struct RigaStampa
{
    QString key; // computer name followed by user name
    int company = 0;
    qint64 typeId = 0;
    int level = 0; // 0 for a root
    int subjectKind = 0;
    qint64 subjectCode = 0;
    std::optional<QDate> start; // a missing date is written NULL
    std::optional<QDate> end;
};

// As many dots as the level plus one, then the level plus one: ".1" for a root, "...3" for a
// node at level 2.
QString levelText(int level);

// PulisciStampa: the rows of an earlier print with the same key, in this company only.
QString deleteWorkRowsStatement(const QString &key, int company);

// One node of the print, dates as "mm/dd/yyyy" with style 101, state 6.
QString insertWorkRowStatement(const RigaStampa &row);

// The report's rows: the work rows of the key with their subjects' master data and their type,
// in the order they were written. A node whose subject has no master data does not print.
QString reportDataQuery(const QString &key, int company);

// The type with a code in a company (an unattended print names the type by its code).
QString typeByCodeQuery(int company, const QString &code);

} // namespace stampastatements
