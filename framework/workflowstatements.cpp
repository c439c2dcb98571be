#include "framework/workflowstatements.h"

#include "platform/db/sqlliterals.h"

namespace fw::workflowstatements {

using db::convertDateTime103;
using db::quoted;

QString stateDescriptionQuery(const QString &rowGuid)
{
    return QStringLiteral("SELECT WF01_DESCR FROM WF02_STATORIGA INNER JOIN WF01_STATI ON WF02_ID_WF01 = WF01_ID"
                          " WHERE WF02_GUID = %1")
        .arg(quoted(rowGuid));
}

QString defaultStateQuery(const QString &workflow)
{
    return QStringLiteral("SELECT TOP 1 WF01_ID FROM WF01_STATI WHERE WF01_FLUSSO = %1 AND WF01_FLGDEFAULT = 1"
                          " ORDER BY WF01_ORDINE")
        .arg(quoted(workflow));
}

QString changeStateStatement(const QString &rowGuid, int state, const QDateTime &at, const QString &userGroup,
                             const QString &user)
{
    return QStringLiteral("UPDATE WF02_STATORIGA SET WF02_ID_WF01 = %1, WF02_DATAVAR = %2,"
                          " WF02_GRUPPOVAR = %3, WF02_UTENTEVAR = %4 WHERE WF02_GUID = %5")
        .arg(QString::number(state), convertDateTime103(at), quoted(userGroup), quoted(user), quoted(rowGuid));
}

QString insertStateStatement(const QString &rowGuid, int state, const QDateTime &at, const QString &userGroup,
                             const QString &user)
{
    return QStringLiteral("INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_ID_WF01, WF02_DATACRE, WF02_GRUPPOCRE,"
                          " WF02_UTENTECRE, WF02_DATAVAR, WF02_GRUPPOVAR, WF02_UTENTEVAR)"
                          " VALUES (%1, %2, %3, %4, %5, %3, %4, %5)")
        .arg(quoted(rowGuid), QString::number(state), convertDateTime103(at), quoted(userGroup), quoted(user));
}

QString workflowStatesQuery(const QString &workflow)
{
    return QStringLiteral("SELECT WF01_ID, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT FROM WF01_STATI"
                          " WHERE WF01_FLUSSO = %1 ORDER BY WF01_ORDINE, WF01_ID")
        .arg(quoted(workflow));
}

QString rowStateQuery(const QString &rowGuid)
{
    return QStringLiteral("SELECT WF02_ID_WF01 FROM WF02_STATORIGA WHERE WF02_GUID = %1").arg(quoted(rowGuid));
}

} // namespace fw::workflowstatements
