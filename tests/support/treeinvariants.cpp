#include "tests/support/treeinvariants.h"

#include "db/sqlitefile.h"

namespace {

void collect(dbsetup::SqliteFile &file, const QString &rule, const QString &sql, QStringList *violations)
{
    dbsetup::SqliteStatement rows = file.prepare(sql);
    while (rows.step())
        violations->append(QStringLiteral("nodo %1: %2").arg(rows.columnText(0), rule));
}

} // namespace

QStringList treeViolations(const QString &path)
{
    dbsetup::SqliteFile file(path);
    QStringList violations;
    collect(file, QStringLiteral("tipo distinta assente nella ditta"),
            QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA D WHERE NOT EXISTS (SELECT 1 FROM GD01_TIPODISTINTA"
                           " WHERE GD01_ID = D.GD02_ID_GD01 AND GD01_DITTA_CG18 = D.GD02_DITTA_CG18)"),
            &violations);
    collect(
        file, QStringLiteral("padre assente, di un altro tipo o di un'altra ditta"),
        QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA C WHERE IFNULL(C.GD02_IDPARENT_GD02, 0) <> 0 AND NOT EXISTS ("
                       " SELECT 1 FROM GD02_DISTINTA P WHERE P.GD02_ID = C.GD02_IDPARENT_GD02"
                       " AND P.GD02_ID_GD01 = C.GD02_ID_GD01 AND P.GD02_DITTA_CG18 = C.GD02_DITTA_CG18)"),
        &violations);
    collect(file, QStringLiteral("data non valida"),
            QStringLiteral("SELECT GD02_ID FROM GD02_DISTINTA WHERE"
                           " (GD02_DATAINIZIOVAL IS NOT NULL AND IFNULL(date(GD02_DATAINIZIOVAL, '+0 days') = "
                           "substr(GD02_DATAINIZIOVAL, 1, 10), 0) = 0)"
                           " OR (GD02_DATAFINEVAL IS NOT NULL AND IFNULL(date(GD02_DATAFINEVAL, '+0 days') = "
                           "substr(GD02_DATAFINEVAL, 1, 10), 0) = 0)"
                           " OR datetime(GD02_DATAINIZIOVAL) > datetime(GD02_DATAFINEVAL)"),
            &violations);
    collect(file, QStringLiteral("in un ciclo"),
            QStringLiteral(
                "WITH RECURSIVE UP(START, ID, STEPS) AS ("
                " SELECT GD02_ID, GD02_IDPARENT_GD02, 1 FROM GD02_DISTINTA WHERE IFNULL(GD02_IDPARENT_GD02, 0) <> 0"
                " UNION ALL SELECT U.START, P.GD02_IDPARENT_GD02, U.STEPS + 1 FROM UP U"
                " INNER JOIN GD02_DISTINTA P ON P.GD02_ID = U.ID"
                " WHERE U.ID <> U.START AND IFNULL(P.GD02_IDPARENT_GD02, 0) <> 0 AND U.STEPS < 10000)"
                " SELECT DISTINCT START FROM UP WHERE ID = START"),
            &violations);
    collect(file, QStringLiteral("campagna di un nodo che non c'è più"),
            QStringLiteral(
                "SELECT GD12_ID_GD02 FROM GD12_PROMO WHERE GD12_ID_GD02 NOT IN (SELECT GD02_ID FROM GD02_DISTINTA)"),
            &violations);
    return violations;
}

QString integrityCheck(const QString &path)
{
    dbsetup::SqliteFile file(path);
    dbsetup::SqliteStatement check = file.prepare(QStringLiteral("PRAGMA integrity_check"));
    QStringList lines;
    while (check.step())
        lines << check.columnText(0);
    return lines.join(QLatin1Char('\n'));
}
