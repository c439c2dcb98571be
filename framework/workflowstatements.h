#pragma once

#include <QDateTime>
#include <QString>

// Statements of the default workflow-state service over the host's tables: the states of each
// workflow in WF01_STATI, the current state of each row guid in WF02_STATORIGA. Guids, workflow
// names, groups and users are quoted with their quotes doubled; a stamp is written with its time,
// as CONVERT(DateTime,'dd/mm/yyyy hh:mm:ss',103). Pure functions.
namespace fw::workflowstatements {

// The description of a row's state (no row: the row has no state).
QString stateDescriptionQuery(const QString &rowGuid);

// The first default state of a workflow in the workflow's order.
QString defaultStateQuery(const QString &workflow);

// Sets the state of a row that has a state record, stamped as changed by the user.
QString changeStateStatement(const QString &rowGuid, int state, const QDateTime &at, const QString &userGroup,
                             const QString &user);

// The state record of a row that has none, stamped as created and changed by the user.
QString insertStateStatement(const QString &rowGuid, int state, const QDateTime &at, const QString &userGroup,
                             const QString &user);

// The states of a workflow in their order.
QString workflowStatesQuery(const QString &workflow);

// The state of a row.
QString rowStateQuery(const QString &rowGuid);

} // namespace fw::workflowstatements
