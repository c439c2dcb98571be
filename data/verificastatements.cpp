#include "data/verificastatements.h"

#include "data/sqltext.h"

namespace verificastatements {

namespace {

// An empty start is as old as can be, an empty end open: the periods compare whole.
QString inizio(const QString &alias)
{
    return QStringLiteral("ISNULL(") + alias + QStringLiteral(".GD02_DATAINIZIOVAL, ")
        + sqltext::convertDate103(QDate(1900, 1, 1)) + QStringLiteral(")");
}

QString fine(const QString &alias)
{
    return QStringLiteral("ISNULL(") + alias + QStringLiteral(".GD02_DATAFINEVAL, ")
        + sqltext::convertDate103(QDate(2099, 12, 31)) + QStringLiteral(")");
}

// The type and the subject's name of the nodes of alias.
QString tipoESoggetto(const QString &alias)
{
    return QStringLiteral(" LEFT OUTER JOIN GD01_TIPODISTINTA ON GD01_TIPODISTINTA.GD01_ID = ") + alias
        + QStringLiteral(".GD02_ID_GD01 AND GD01_TIPODISTINTA.GD01_DITTA_CG18 = ") + alias
        + QStringLiteral(".GD02_DITTA_CG18 LEFT OUTER JOIN CG44_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = ") + alias
        + QStringLiteral(".GD02_DITTA_CG18 AND CG44_CLIFOR.CG44_TIPOCF = ") + alias
        + QStringLiteral(".GD02_TIPOCF_CG44 AND CG44_CLIFOR.CG44_CLIFOR = ") + alias
        + QStringLiteral(".GD02_CLIFOR_CG44 LEFT OUTER JOIN CG16_ANAGGEN "
                         "ON CG16_ANAGGEN.CG16_CODICE = CG44_CLIFOR.CG44_CODICE_CG16");
}

QString colonneNodo(const QString &alias)
{
    return alias + QStringLiteral(".GD02_ID, ") + alias
        + QStringLiteral(".GD02_ID_GD01, GD01_TIPODISTINTA.GD01_CODICE, GD01_TIPODISTINTA.GD01_DESCR, ") + alias
        + QStringLiteral(".GD02_TIPOCF_CG44, ") + alias
        + QStringLiteral(".GD02_CLIFOR_CG44, CG16_ANAGGEN.CG16_RAGSOANAG");
}

QString delTipo(const QString &alias, std::optional<qint64> typeId)
{
    return typeId ? QStringLiteral(" AND ") + alias + QStringLiteral(".GD02_ID_GD01 = ") + sqltext::number(*typeId)
                  : QString();
}

} // namespace

QString missingSubjectsQuery(int company, const QDate &day, std::optional<qint64> typeId)
{
    const QString ditta = sqltext::number(company);
    const QString giorno = sqltext::convertDate103(day);
    return QStringLiteral("SELECT CG44_CLIFOR.CG44_TIPOCF, CG44_CLIFOR.CG44_CLIFOR, CG16_ANAGGEN.CG16_RAGSOANAG, "
                          "DIVISIONI.IdDivisione, CO1A_ANAGDIVISIONI.CO1A_CODICE, CO1A_ANAGDIVISIONI.CO1A_DESCR "
                          "FROM (SELECT DISTINCT GD01_INDTIPOSOGG AS TipoSoggetto, GD01_IDDIV_CO1A AS IdDivisione "
                          "FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = ")
        + ditta + (typeId ? QStringLiteral(" AND GD01_ID = ") + sqltext::number(*typeId) : QString())
        + QStringLiteral(") AS DIVISIONI INNER JOIN CG44_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = ") + ditta
        + QStringLiteral(" AND CG44_CLIFOR.CG44_TIPOCF = DIVISIONI.TipoSoggetto LEFT OUTER JOIN CG16_ANAGGEN "
                         "ON CG16_ANAGGEN.CG16_CODICE = CG44_CLIFOR.CG44_CODICE_CG16 LEFT OUTER JOIN "
                         "CO1A_ANAGDIVISIONI ON CO1A_ANAGDIVISIONI.CO1A_IDDIV = DIVISIONI.IdDivisione "
                         "AND CO1A_ANAGDIVISIONI.CO1A_DITTA_CG18 = ")
        + ditta
        + QStringLiteral(" WHERE NOT EXISTS (SELECT 1 FROM GD02_DISTINTA INNER JOIN GD01_TIPODISTINTA "
                         "ON GD01_TIPODISTINTA.GD01_ID = GD02_DISTINTA.GD02_ID_GD01 "
                         "AND GD01_TIPODISTINTA.GD01_DITTA_CG18 = GD02_DISTINTA.GD02_DITTA_CG18 "
                         "WHERE GD02_DISTINTA.GD02_DITTA_CG18 = ")
        + ditta
        + QStringLiteral(" AND GD02_DISTINTA.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF "
                         "AND GD02_DISTINTA.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR "
                         "AND (GD01_TIPODISTINTA.GD01_IDDIV_CO1A = DIVISIONI.IdDivisione "
                         "OR GD01_TIPODISTINTA.GD01_IDDIV_CO1A IS NULL) AND ")
        + inizio(QStringLiteral("GD02_DISTINTA")) + QStringLiteral(" <= ") + giorno + QStringLiteral(" AND ")
        + fine(QStringLiteral("GD02_DISTINTA")) + QStringLiteral(" >= ") + giorno
        + QStringLiteral(") ORDER BY CG44_CLIFOR.CG44_TIPOCF, CO1A_ANAGDIVISIONI.CO1A_CODICE, "
                         "CG44_CLIFOR.CG44_CLIFOR");
}

QString overlappingLinksQuery(int company, std::optional<qint64> typeId)
{
    // With a type, its node comes first whichever id is lower; a pair inside it once.
    const QString coppia = typeId ? QStringLiteral(" AND A.GD02_ID_GD01 = ") + sqltext::number(*typeId)
            + QStringLiteral(" AND (B.GD02_ID_GD01 <> ") + sqltext::number(*typeId)
            + QStringLiteral(" OR A.GD02_ID < B.GD02_ID)")
                                  : QStringLiteral(" AND A.GD02_ID < B.GD02_ID");
    return QStringLiteral("SELECT ") + colonneNodo(QStringLiteral("A"))
        + QStringLiteral(", A.GD02_DATAINIZIOVAL, A.GD02_DATAFINEVAL, B.GD02_ID AS IdAltro, "
                         "ALTRO.GD01_CODICE AS CodiceAltro, B.GD02_DATAINIZIOVAL AS InizioAltro, "
                         "B.GD02_DATAFINEVAL AS FineAltro FROM GD02_DISTINTA AS A INNER JOIN GD02_DISTINTA AS B "
                         "ON B.GD02_DITTA_CG18 = A.GD02_DITTA_CG18 AND B.GD02_TIPOCF_CG44 = A.GD02_TIPOCF_CG44 "
                         "AND B.GD02_CLIFOR_CG44 = A.GD02_CLIFOR_CG44 AND B.GD02_ID <> A.GD02_ID "
                         "INNER JOIN GD01_TIPODISTINTA AS ALTRO ON ALTRO.GD01_ID = B.GD02_ID_GD01 "
                         "AND ALTRO.GD01_DITTA_CG18 = B.GD02_DITTA_CG18")
        + tipoESoggetto(QStringLiteral("A")) + QStringLiteral(" WHERE A.GD02_DITTA_CG18 = ") + sqltext::number(company)
        + coppia
        + QStringLiteral(" AND GD01_TIPODISTINTA.GD01_ID IS NOT NULL AND (ALTRO.GD01_IDDIV_CO1A = "
                         "GD01_TIPODISTINTA.GD01_IDDIV_CO1A OR ALTRO.GD01_IDDIV_CO1A IS NULL OR "
                         "GD01_TIPODISTINTA.GD01_IDDIV_CO1A IS NULL) AND ")
        + inizio(QStringLiteral("A")) + QStringLiteral(" <= ") + fine(QStringLiteral("B")) + QStringLiteral(" AND ")
        + inizio(QStringLiteral("B")) + QStringLiteral(" <= ") + fine(QStringLiteral("A"))
        + QStringLiteral(" ORDER BY A.GD02_ID, B.GD02_ID");
}

QString childrenOutsideParentQuery(int company, std::optional<qint64> typeId)
{
    return QStringLiteral("SELECT ") + colonneNodo(QStringLiteral("F"))
        + QStringLiteral(", F.GD02_DATAINIZIOVAL, F.GD02_DATAFINEVAL, P.GD02_ID AS IdPadre, "
                         "P.GD02_CLIFOR_CG44 AS CodicePadre, P.GD02_DATAINIZIOVAL AS InizioPadre, "
                         "P.GD02_DATAFINEVAL AS FinePadre FROM GD02_DISTINTA AS F INNER JOIN GD02_DISTINTA AS P "
                         "ON P.GD02_ID = F.GD02_IDPARENT_GD02 AND P.GD02_DITTA_CG18 = F.GD02_DITTA_CG18")
        + tipoESoggetto(QStringLiteral("F")) + QStringLiteral(" WHERE F.GD02_DITTA_CG18 = ") + sqltext::number(company)
        + delTipo(QStringLiteral("F"), typeId) + QStringLiteral(" AND (") + inizio(QStringLiteral("F"))
        + QStringLiteral(" < ") + inizio(QStringLiteral("P")) + QStringLiteral(" OR ") + fine(QStringLiteral("F"))
        + QStringLiteral(" > ") + fine(QStringLiteral("P")) + QStringLiteral(") ORDER BY F.GD02_ID");
}

QString orphanNodesQuery(int company, std::optional<qint64> typeId)
{
    const QString senzaPadre = QStringLiteral("N.GD02_IDPARENT_GD02 IS NOT NULL AND N.GD02_IDPARENT_GD02 <> 0 "
                                              "AND PADRE.GD02_ID IS NULL");
    return QStringLiteral("SELECT ") + colonneNodo(QStringLiteral("N"))
        + QStringLiteral(", N.GD02_IDPARENT_GD02, CASE WHEN CG44_CLIFOR.CG44_CLIFOR IS NULL THEN 1 ELSE 0 END "
                         "AS SenzaSoggetto, CASE WHEN GD01_TIPODISTINTA.GD01_ID IS NULL THEN 1 ELSE 0 END "
                         "AS SenzaTipo, CASE WHEN ")
        + senzaPadre + QStringLiteral(" THEN 1 ELSE 0 END AS SenzaPadre FROM GD02_DISTINTA AS N")
        + tipoESoggetto(QStringLiteral("N"))
        + QStringLiteral(" LEFT OUTER JOIN GD02_DISTINTA AS PADRE ON PADRE.GD02_ID = N.GD02_IDPARENT_GD02 "
                         "AND PADRE.GD02_DITTA_CG18 = N.GD02_DITTA_CG18 WHERE N.GD02_DITTA_CG18 = ")
        + sqltext::number(company) + delTipo(QStringLiteral("N"), typeId)
        + QStringLiteral(" AND (CG44_CLIFOR.CG44_CLIFOR IS NULL OR GD01_TIPODISTINTA.GD01_ID IS NULL OR (") + senzaPadre
        + QStringLiteral(")) ORDER BY N.GD02_ID");
}

QString orphanPromotionsQuery(int company)
{
    return QStringLiteral("SELECT GD12_PROMO.GD12_ID, GD12_PROMO.GD12_ID_GD02, GD12_PROMO.GD12_ID_MG94, "
                          "MG94_CAMPANAG.MG94_CODCAMP, MG94_CAMPANAG.MG94_DESCAMP FROM GD12_PROMO "
                          "LEFT OUTER JOIN MG94_CAMPANAG ON MG94_CAMPANAG.MG94_ID = GD12_PROMO.GD12_ID_MG94 "
                          "AND MG94_CAMPANAG.MG94_DITTA_CG18 = GD12_PROMO.GD12_DITTA_CG18 "
                          "WHERE GD12_PROMO.GD12_DITTA_CG18 = ")
        + sqltext::number(company)
        + QStringLiteral(" AND NOT EXISTS (SELECT 1 FROM GD02_DISTINTA WHERE GD02_DISTINTA.GD02_ID = "
                         "GD12_PROMO.GD12_ID_GD02 AND GD02_DISTINTA.GD02_DITTA_CG18 = GD12_PROMO.GD12_DITTA_CG18) "
                         "ORDER BY GD12_PROMO.GD12_ID_GD02, GD12_PROMO.GD12_ID");
}

QString orphanContractConditionsQuery(int company)
{
    return QStringLiteral("SELECT GD14_SOGGCONTR.GD14_ID, GD14_SOGGCONTR.GD14_ID_GD02, "
                          "GD14_SOGGCONTR.GD14_CODCONTR_GD10, GD14_SOGGCONTR.GD14_VERCONTR_GD10, "
                          "GD14_SOGGCONTR.GD14_PROGRCOND_GD13, GD14_SOGGCONTR.GD14_TIPOCF_CG44, "
                          "GD14_SOGGCONTR.GD14_CLIFOR_CG44, CG16_ANAGGEN.CG16_RAGSOANAG FROM GD14_SOGGCONTR "
                          "LEFT OUTER JOIN CG44_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = GD14_SOGGCONTR.GD14_DITTA_CG18 "
                          "AND CG44_CLIFOR.CG44_TIPOCF = GD14_SOGGCONTR.GD14_TIPOCF_CG44 "
                          "AND CG44_CLIFOR.CG44_CLIFOR = GD14_SOGGCONTR.GD14_CLIFOR_CG44 "
                          "LEFT OUTER JOIN CG16_ANAGGEN ON CG16_ANAGGEN.CG16_CODICE = CG44_CLIFOR.CG44_CODICE_CG16 "
                          "WHERE GD14_SOGGCONTR.GD14_DITTA_CG18 = ")
        + sqltext::number(company)
        + QStringLiteral(" AND GD14_SOGGCONTR.GD14_ID_GD02 <> 0 AND NOT EXISTS (SELECT 1 FROM GD02_DISTINTA "
                         "WHERE GD02_DISTINTA.GD02_ID = GD14_SOGGCONTR.GD14_ID_GD02 "
                         "AND GD02_DISTINTA.GD02_DITTA_CG18 = GD14_SOGGCONTR.GD14_DITTA_CG18) "
                         "ORDER BY GD14_SOGGCONTR.GD14_ID_GD02, GD14_SOGGCONTR.GD14_ID");
}

// NOT IN over the whole guid column: read once, where a correlated lookup would need an index of
// the nodes by guid that nothing else wants.
QString orphanStatesQuery()
{
    return QStringLiteral(
        "SELECT WF02_STATORIGA.WF02_ID, WF02_STATORIGA.WF02_GUID, WF01_STATI.WF01_DESCR FROM WF02_STATORIGA "
        "LEFT OUTER JOIN WF01_STATI ON WF01_STATI.WF01_ID = WF02_STATORIGA.WF02_ID_WF01 "
        "WHERE ISNULL(WF02_STATORIGA.WF02_TABELLA, 'GD02_DISTINTA') = 'GD02_DISTINTA' "
        "AND WF02_STATORIGA.WF02_GUID NOT IN (SELECT gd02_guid FROM GD02_DISTINTA WHERE gd02_guid IS NOT NULL) "
        "AND WF02_STATORIGA.WF02_GUID NOT IN (SELECT GD01_GUID FROM GD01_TIPODISTINTA WHERE GD01_GUID IS NOT NULL) "
        "ORDER BY WF02_STATORIGA.WF02_ID");
}

} // namespace verificastatements
