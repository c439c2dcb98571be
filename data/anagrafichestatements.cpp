#include "anagrafichestatements.h"

#include "data/sqltext.h"

namespace anagrafichestatements {

namespace {

const QString head = QStringLiteral(
    "SELECT DISTINCT 0 AS Seleziona, CG44_CLIFOR.CG44_CLIFOR AS Codice, "
    "CASE WHEN ISNULL((SELECT COUNT(GD02_CLIFOR_CG44) FROM GD02_DISTINTA "
    "WHERE GD02_DISTINTA.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 "
    "AND GD02_DISTINTA.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF "
    "AND GD02_DISTINTA.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR),0) > 0 THEN 1 ELSE 0 END "
    "AS AssociatoInDistinta, CG16_ANAGGEN.CG16_RAGSOANAG AS 'Ragione sociale' ,");

const QString ownColumns = QStringLiteral(
    "CG44_CODPAG_CG62 AS CodPagamento, CG62_DESCPAG AS DescPagamento, MG17_AGENTE AS CodAgente, "
    "CG16_ANAGGEN_AGE.CG16_RAGSOANAG AS 'Ragione sociale agente', CG16_ANAGGEN.CG16_CITTA AS Citta, "
    "CG16_ANAGGEN.CG16_PROV AS Provincia, MG19_MACROAREA AS Macroarea, MG19_AREA AS Area, "
    "MG19_ZONA AS Zona, MG19_MACROCAT AS MacroCategoria, MG19_CATEG AS Categoria, "
    "MG19_SOTTOCAT AS SottoCategoria, MG19_RAGGRCF1 AS RaggrCF1, MG19_RAGGRCF2 AS RaggrCF2, "
    "MG19_RAGGCRF3 AS RaggrCF3");

const QString ownFrom = QStringLiteral(
    " FROM CG62_CONDPAGDES RIGHT OUTER JOIN CG44_CLIFOR INNER JOIN CG16_ANAGGEN "
    "ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE LEFT OUTER JOIN MG19_CLIFORVA "
    "ON CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 "
    "AND CG44_CLIFOR.CG44_TIPOCF = MG19_CLIFORVA.MG19_TIPOCF_CG44 "
    "AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44 "
    "ON CG62_CONDPAGDES.CG62_CODPAG = CG44_CLIFOR.CG44_CODPAG_CG62 "
    "LEFT OUTER JOIN CG16_ANAGGEN CG16_ANAGGEN_AGE RIGHT OUTER JOIN MG17_AGENTI "
    "ON CG16_ANAGGEN_AGE.CG16_CODICE = MG17_AGENTI.MG17_ANAGEN_CG16 "
    "ON CG44_CLIFOR.CG44_IDAGENTE_MG17 = MG17_AGENTI.MG17_IDAGENTE "
    "AND CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18");

const QString divisionColumns = QStringLiteral(
    "ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62 ) AS CodPagamento, CG62_DESCPAG AS DescPagamento, "
    "MG17_AGENTE AS CodAgente, CG16_ANAGGEN_AGE.CG16_RAGSOANAG AS 'Ragione sociale agente', "
    "CG16_ANAGGEN.CG16_CITTA AS Citta, CG16_ANAGGEN.CG16_PROV AS Provincia, "
    "ISNULL(CO1D_MACROAREA ,MG19_MACROAREA ) AS Macroarea, ISNULL(CO1D_AREA ,MG19_AREA ) AS Area, "
    "ISNULL(CO1D_ZONA ,MG19_ZONA ) AS Zona, ISNULL(CO1D_MACROCAT ,MG19_MACROCAT ) AS MacroCategoria, "
    "ISNULL(CO1D_CATEG ,MG19_CATEG ) AS Categoria, "
    "ISNULL(CO1D_SOTTOCAT ,MG19_SOTTOCAT ) AS SottoCategoria, "
    "ISNULL(CO1D_RAGGRCF1 ,MG19_RAGGRCF1 ) AS RaggrCF1, "
    "ISNULL(CO1D_RAGGRCF2 ,MG19_RAGGRCF2 ) AS RaggrCF2, "
    "ISNULL(CO1D_RAGGRCF3 ,MG19_RAGGCRF3 ) AS RaggrCF3");

const QString divisionFromHead = QStringLiteral(
    " FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE "
    "LEFT OUTER JOIN VCO1C_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = VCO1C_CLIFOR.CO1C_DITTA_CG18 "
    "AND CG44_CLIFOR.CG44_TIPOCF = VCO1C_CLIFOR.CO1C_TIPOCF_CG44 "
    "AND CG44_CLIFOR.CG44_CLIFOR = VCO1C_CLIFOR.CO1C_CLIFOR_CG44 AND CO1C_IDDIV_CO1A = ");

const QString divisionFromTail = QStringLiteral(
    " LEFT OUTER JOIN MG19_CLIFORVA ON MG19_CLIFORVA.MG19_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 "
    "AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF "
    "AND MG19_CLIFORVA.MG19_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR "
    "LEFT OUTER JOIN CG62_CONDPAGDES "
    "ON isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = CG62_CONDPAGDES.CG62_CODPAG "
    "LEFT OUTER JOIN MG17_AGENTI "
    "ON isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = MG17_AGENTI.MG17_IDAGENTE "
    "AND isnull(CO1C_DITTA_CG18,CG44_CLIFOR.CG44_DITTA_CG18) = MG17_AGENTI.MG17_DITTA_CG18 "
    "LEFT OUTER JOIN CG16_ANAGGEN AS CG16_ANAGGEN_AGE "
    "ON CG16_ANAGGEN_AGE.CG16_CODICE = MG17_AGENTI.MG17_ANAGEN_CG16");

} // namespace

QString subjectListTable()
{
    return QStringLiteral("#GD02_CLIFORSTD");
}

QString dropSubjectListStatement()
{
    return sqltext::dropTempTableStatement(subjectListTable());
}

QString buildSubjectListStatement(int company, int subjectKind, std::optional<qint64> division)
{
    // The head ends in " ," and the columns follow it directly, in the style of the whole list.
    QString sql = head;
    if (division) {
        sql += divisionColumns + sqltext::intoTempTable(subjectListTable()) + divisionFromHead
            + QString::number(*division) + divisionFromTail;
    } else {
        sql += ownColumns + sqltext::intoTempTable(subjectListTable()) + ownFrom;
    }
    sql += QStringLiteral(" WHERE CG44_DITTA_CG18 = ") + QString::number(company)
        + QStringLiteral(" AND CG44_TIPOCF = ") + QString::number(subjectKind)
        + QStringLiteral(" ORDER BY CG44_CLIFOR");
    return sql;
}

QString readSubjectListStatement()
{
    return sqltext::selectAllFrom(subjectListTable());
}

} // namespace anagrafichestatements
