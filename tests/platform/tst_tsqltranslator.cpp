// The T-SQL compatibility layer: every construct the module sends is rewritten for SQLite and
// run on a real database, and whatever it cannot run with the same meaning is refused by name.

#include "platform/db/databaseerror.h"
#include "platform/db/sqlitefunctions.h"
#include "platform/db/tsqltranslator.h"

#include <QtTest>
#include <sqlite3.h>

namespace {

// A SQLite database in memory with the translator's functions registered. Results come back
// as text: columns joined by '|', rows by new lines, NULL as "NULL", failures as "ERROR: ...".
class SqliteDatabase
{
public:
    SqliteDatabase()
    {
        sqlite3_open(":memory:", &m_handle);
        db::registerSqliteFunctions(m_handle);
    }
    ~SqliteDatabase() { sqlite3_close(m_handle); }

    // Plain SQLite, for fixtures.
    bool exec(const char *sql)
    {
        char *message = nullptr;
        const bool ok = sqlite3_exec(m_handle, sql, nullptr, nullptr, &message) == SQLITE_OK;
        if (!ok)
            qWarning("%s", message);
        sqlite3_free(message);
        return ok;
    }

    // Translates and runs one statement.
    QString run(const QString &tsql)
    {
        QString sqlite;
        try {
            sqlite = db::translateTsqlToSqlite(tsql);
        } catch (const db::DatabaseError &error) {
            return QStringLiteral("ERROR: ") + error.message();
        }
        return query(sqlite);
    }

    QString query(const QString &sql)
    {
        sqlite3_stmt *statement = prepare(sql);
        if (!statement)
            return QStringLiteral("ERROR: ") + QString::fromUtf8(sqlite3_errmsg(m_handle));
        QStringList rows;
        int rc;
        while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
            QStringList row;
            for (int c = 0; c < sqlite3_column_count(statement); ++c) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, c));
                row << (text ? QString::fromUtf8(text) : QStringLiteral("NULL"));
            }
            rows << row.join(u'|');
        }
        sqlite3_finalize(statement);
        if (rc != SQLITE_DONE)
            return QStringLiteral("ERROR: ") + QString::fromUtf8(sqlite3_errmsg(m_handle));
        return rows.join(u'\n');
    }

    QString columnNames(const QString &tsql)
    {
        sqlite3_stmt *statement = prepare(db::translateTsqlToSqlite(tsql));
        if (!statement)
            return QStringLiteral("ERROR: ") + QString::fromUtf8(sqlite3_errmsg(m_handle));
        QStringList names;
        for (int c = 0; c < sqlite3_column_count(statement); ++c)
            names << QString::fromUtf8(sqlite3_column_name(statement, c));
        sqlite3_finalize(statement);
        return names.join(u'|');
    }

private:
    sqlite3_stmt *prepare(const QString &sql)
    {
        sqlite3_stmt *statement = nullptr;
        const QByteArray utf8 = sql.toUtf8();
        if (sqlite3_prepare_v2(m_handle, utf8.constData(), int(utf8.size()), &statement, nullptr) != SQLITE_OK)
            return nullptr;
        return statement;
    }

    sqlite3 *m_handle = nullptr;
};

// A few rows for single constructs. Dates are stored as the compatibility layer writes them.
const char *const smallFixture = R"(
    CREATE TABLE P (id INTEGER PRIMARY KEY, name TEXT, city TEXT, d TEXT, amount REAL, code INTEGER);
    INSERT INTO P VALUES (1, 'Rossi Mario', 'Milano', '2020-01-15 00:00:00', 10.5, 100);
    INSERT INTO P VALUES (2, 'Bianchi', NULL, '2020-02-29 00:00:00', 2.25, 200);
    INSERT INTO P VALUES (3, 'Perché Srl', 'Forlì', '2021-12-31 10:30:00', NULL, NULL);
    INSERT INTO P VALUES (4, 'D''Amico', 'Bari', NULL, 7, 400);
    CREATE TABLE Q (id INTEGER PRIMARY KEY, pid INTEGER, note TEXT);
    INSERT INTO Q VALUES (1, 1, 'a'), (2, 1, 'b'), (3, 4, 'c');
)";

// The module's tables as far as the subject list and the search read them: company 1 has
// customers 10, 20 and 30 (40 has no master data) and supplier 10; company 2 reuses code 10.
const char *const subjectsFixture = R"(
    CREATE TABLE CG44_CLIFOR (CG44_DITTA_CG18 INTEGER, CG44_TIPOCF INTEGER, CG44_CLIFOR INTEGER,
        CG44_CODICE_CG16 INTEGER, CG44_CODPAG_CG62 TEXT, CG44_IDAGENTE_MG17 INTEGER);
    INSERT INTO CG44_CLIFOR VALUES (1, 0, 30, 130, 'B60', 2), (1, 0, 10, 110, 'R30', 1),
        (1, 0, 20, 120, NULL, NULL), (1, 0, 40, 140, NULL, NULL), (1, 1, 10, 150, NULL, NULL),
        (2, 0, 10, 160, NULL, 1);
    CREATE TABLE CG16_ANAGGEN (CG16_CODICE INTEGER, CG16_RAGSOANAG TEXT, CG16_CITTA TEXT, CG16_PROV TEXT);
    INSERT INTO CG16_ANAGGEN VALUES (110, 'Rossi Mario Spa  ', 'Milano', 'MI'),
        (120, 'Bianchi & C.', 'Torino', 'TO'), (130, 'D''Amico Srl', 'Bari', 'BA'),
        (150, 'Fornitore Dieci', 'Roma', 'RM'), (160, 'Altra Ditta', 'Pisa', 'PI'),
        (501, 'Agente Uno', 'Como', 'CO');
    CREATE TABLE CG62_CONDPAGDES (CG62_CODPAG TEXT, CG62_DESCPAG TEXT);
    INSERT INTO CG62_CONDPAGDES VALUES ('R30', 'Rimessa 30 gg'), ('B60', 'Bonifico 60 gg');
    CREATE TABLE MG17_AGENTI (MG17_DITTA_CG18 INTEGER, MG17_IDAGENTE INTEGER, MG17_AGENTE TEXT,
        MG17_ANAGEN_CG16 INTEGER);
    INSERT INTO MG17_AGENTI VALUES (1, 1, 'A01', 501), (1, 2, 'A02', 999), (2, 1, 'X99', 501);
    CREATE TABLE MG19_CLIFORVA (MG19_DITTA_CG18 INTEGER, MG19_TIPOCF_CG44 INTEGER, MG19_CLIFOR_CG44 INTEGER,
        MG19_MACROAREA TEXT, MG19_AREA TEXT, MG19_ZONA TEXT, MG19_MACROCAT TEXT, MG19_CATEG TEXT,
        MG19_SOTTOCAT TEXT, MG19_RAGGRCF1 TEXT, MG19_RAGGRCF2 TEXT, MG19_RAGGCRF3 TEXT);
    INSERT INTO MG19_CLIFORVA VALUES (1, 0, 10, 'NORD', 'LOM', 'Z1', 'MC', 'C1', 'S1', 'G1', 'G2', 'G3'),
        (1, 0, 30, 'SUD', 'PUG', 'Z9', 'MC', 'C2', 'S2', NULL, NULL, NULL);
    CREATE TABLE VCO1C_CLIFOR (CO1C_DITTA_CG18 INTEGER, CO1C_TIPOCF_CG44 INTEGER, CO1C_CLIFOR_CG44 INTEGER,
        CO1C_IDDIV_CO1A INTEGER, CO1D_CODPAG_CG62 TEXT, CO1D_IDAGENTE_MG17 INTEGER, CO1D_MACROAREA TEXT,
        CO1D_AREA TEXT, CO1D_ZONA TEXT, CO1D_MACROCAT TEXT, CO1D_CATEG TEXT, CO1D_SOTTOCAT TEXT,
        CO1D_RAGGRCF1 TEXT, CO1D_RAGGRCF2 TEXT, CO1D_RAGGRCF3 TEXT);
    INSERT INTO VCO1C_CLIFOR VALUES
        (1, 0, 30, 7, 'R30', 1, 'CENTRO', NULL, NULL, NULL, NULL, NULL, NULL, NULL, 'D3'),
        (1, 0, 10, 8, 'B60', 2, 'ISOLE', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
    CREATE TABLE GD01_TIPODISTINTA (GD01_ID INTEGER PRIMARY KEY, GD01_DITTA_CG18 INTEGER,
        GD01_CODICE TEXT, GD01_DESCR TEXT, GD01_INDTIPOSOGG INTEGER, GD01_IDDIV_CO1A INTEGER);
    INSERT INTO GD01_TIPODISTINTA VALUES (1, 1, 'CLI', 'Clienti Nord  ', 0, NULL), (2, 1, 'FOR', 'Fornitori', 1, 7),
        (3, 2, 'ALT', 'Altra', 0, NULL), (4, 1, 'DIV', 'Divisione otto', 0, 8);
    CREATE TABLE GD02_DISTINTA (GD02_ID INTEGER PRIMARY KEY, GD02_ID_GD01 INTEGER, GD02_IDPARENT_GD02 INTEGER,
        GD02_DITTA_CG18 INTEGER, GD02_TIPOCF_CG44 INTEGER, GD02_CLIFOR_CG44 INTEGER,
        GD02_DATAINIZIOVAL TEXT, GD02_DATAFINEVAL TEXT, GD02_DATACRE TEXT, GD02_UTENTECRE TEXT);
    INSERT INTO GD02_DISTINTA VALUES
        (1, 1, NULL, 1, 0, 20, '2000-01-01 00:00:00', '2099-12-31 00:00:00', NULL, NULL),
        (2, 2, NULL, 1, 1, 10, '2000-01-01 00:00:00', '2099-12-31 00:00:00', NULL, NULL),
        (3, 1, 1, 1, 0, 30, '2000-01-01 00:00:00', '2099-12-31 00:00:00', NULL, NULL),
        (4, 3, NULL, 2, 0, 10, '2000-01-01 00:00:00', '2099-12-31 00:00:00', NULL, NULL),
        (5, 4, NULL, 1, 0, 30, '2010-05-01 00:00:00', '2010-05-31 00:00:00', NULL, NULL);
)";

QString dropTemporaryTable(const QString &name)
{
    return QStringLiteral("IF OBJECT_ID('tempdb..") + name + QStringLiteral("') IS NOT NULL ")
        + QStringLiteral("DROP TABLE ") + name;
}

const QString subjectListHead = QStringLiteral(
    "SELECT DISTINCT 0 AS Seleziona, CG44_CLIFOR.CG44_CLIFOR AS Codice, CASE WHEN ISNULL((SELECT "
    "COUNT(GD02_CLIFOR_CG44) FROM GD02_DISTINTA WHERE GD02_DISTINTA.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
    "GD02_DISTINTA.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND GD02_DISTINTA.GD02_CLIFOR_CG44 = "
    "CG44_CLIFOR.CG44_CLIFOR),0) > 0 THEN 1 ELSE 0 END AS AssociatoInDistinta, CG16_ANAGGEN.CG16_RAGSOANAG AS 'Ragione "
    "sociale' ,");

QString subjectListWithoutDivision(int company, int kind)
{
    return subjectListHead
        + QStringLiteral(
               " CG44_CODPAG_CG62 AS CodPagamento, CG62_DESCPAG AS DescPagamento, MG17_AGENTE AS CodAgente, "
               "CG16_ANAGGEN_AGE.CG16_RAGSOANAG AS 'Ragione sociale agente', CG16_ANAGGEN.CG16_CITTA AS Citta, "
               "CG16_ANAGGEN.CG16_PROV AS Provincia, MG19_MACROAREA AS Macroarea, MG19_AREA AS Area, MG19_ZONA AS "
               "Zona, MG19_MACROCAT AS MacroCategoria, MG19_CATEG AS Categoria, MG19_SOTTOCAT AS SottoCategoria, "
               "MG19_RAGGRCF1 AS RaggrCF1, MG19_RAGGRCF2 AS RaggrCF2, MG19_RAGGCRF3 AS RaggrCF3 INTO #GD02_CLIFORSTD "
               "FROM CG62_CONDPAGDES RIGHT OUTER JOIN CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON "
               "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE LEFT OUTER JOIN MG19_CLIFORVA ON "
               "CG44_CLIFOR.CG44_DITTA_CG18 = MG19_CLIFORVA.MG19_DITTA_CG18 AND CG44_CLIFOR.CG44_TIPOCF = "
               "MG19_CLIFORVA.MG19_TIPOCF_CG44 AND CG44_CLIFOR.CG44_CLIFOR = MG19_CLIFORVA.MG19_CLIFOR_CG44 ON "
               "CG62_CONDPAGDES.CG62_CODPAG = CG44_CLIFOR.CG44_CODPAG_CG62 LEFT OUTER JOIN CG16_ANAGGEN "
               "CG16_ANAGGEN_AGE RIGHT OUTER JOIN MG17_AGENTI ON CG16_ANAGGEN_AGE.CG16_CODICE = "
               "MG17_AGENTI.MG17_ANAGEN_CG16 ON CG44_CLIFOR.CG44_IDAGENTE_MG17 = MG17_AGENTI.MG17_IDAGENTE AND "
               "CG44_CLIFOR.CG44_DITTA_CG18 = MG17_AGENTI.MG17_DITTA_CG18")
        + QStringLiteral(" WHERE CG44_DITTA_CG18 = %1 AND CG44_TIPOCF = %2 ORDER BY CG44_CLIFOR")
              .arg(company)
              .arg(kind);
}

QString subjectListWithDivision(int company, int kind, int division)
{
    return subjectListHead
        + QStringLiteral(
              " ISNULL(CO1D_CODPAG_CG62 ,CG44_CODPAG_CG62 ) AS CodPagamento, CG62_DESCPAG AS DescPagamento, "
              "MG17_AGENTE AS CodAgente, CG16_ANAGGEN_AGE.CG16_RAGSOANAG AS 'Ragione sociale agente', "
              "CG16_ANAGGEN.CG16_CITTA AS Citta, CG16_ANAGGEN.CG16_PROV AS Provincia, ISNULL(CO1D_MACROAREA "
              ",MG19_MACROAREA ) AS Macroarea, ISNULL(CO1D_AREA ,MG19_AREA ) AS Area, ISNULL(CO1D_ZONA ,MG19_ZONA ) AS "
              "Zona, ISNULL(CO1D_MACROCAT ,MG19_MACROCAT ) AS MacroCategoria, ISNULL(CO1D_CATEG ,MG19_CATEG ) AS "
              "Categoria, ISNULL(CO1D_SOTTOCAT ,MG19_SOTTOCAT ) AS SottoCategoria, ISNULL(CO1D_RAGGRCF1 ,MG19_RAGGRCF1 "
              ") AS RaggrCF1, ISNULL(CO1D_RAGGRCF2 ,MG19_RAGGRCF2 ) AS RaggrCF2, ISNULL(CO1D_RAGGRCF3 ,MG19_RAGGCRF3 ) "
              "AS RaggrCF3 INTO #GD02_CLIFORSTD FROM CG44_CLIFOR INNER JOIN CG16_ANAGGEN ON "
              "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE LEFT OUTER JOIN VCO1C_CLIFOR ON "
              "CG44_CLIFOR.CG44_DITTA_CG18 = VCO1C_CLIFOR.CO1C_DITTA_CG18 AND CG44_CLIFOR.CG44_TIPOCF = "
              "VCO1C_CLIFOR.CO1C_TIPOCF_CG44 AND CG44_CLIFOR.CG44_CLIFOR = VCO1C_CLIFOR.CO1C_CLIFOR_CG44 AND "
              "CO1C_IDDIV_CO1A = %3 LEFT OUTER JOIN MG19_CLIFORVA ON MG19_CLIFORVA.MG19_DITTA_CG18 = "
              "CG44_CLIFOR.CG44_DITTA_CG18 AND MG19_CLIFORVA.MG19_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
              "MG19_CLIFORVA.MG19_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR LEFT OUTER JOIN CG62_CONDPAGDES ON "
              "isnull(CO1D_CODPAG_CG62,CG44_CLIFOR.CG44_CODPAG_CG62) = CG62_CONDPAGDES.CG62_CODPAG LEFT OUTER JOIN "
              "MG17_AGENTI ON isnull(CO1D_IDAGENTE_MG17,CG44_CLIFOR.CG44_IDAGENTE_MG17) = MG17_AGENTI.MG17_IDAGENTE "
              "AND isnull(CO1C_DITTA_CG18,CG44_CLIFOR.CG44_DITTA_CG18) = MG17_AGENTI.MG17_DITTA_CG18 LEFT OUTER JOIN "
              "CG16_ANAGGEN AS CG16_ANAGGEN_AGE ON CG16_ANAGGEN_AGE.CG16_CODICE = MG17_AGENTI.MG17_ANAGEN_CG16")
              .arg(division)
        + QStringLiteral(" WHERE CG44_DITTA_CG18 = %1 AND CG44_TIPOCF = %2 ORDER BY CG44_CLIFOR")
              .arg(company)
              .arg(kind);
}

// The check for links of one subject whose period overlaps [start, end], within a division.
QString overlappingLinks(int company, int subject, int kind, int division, const QString &start, const QString &end)
{
    return QStringLiteral(" SELECT CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, ")
        + QStringLiteral(" GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL AS DataI,")
        + QStringLiteral(" GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL AS DataF, ")
        + QStringLiteral(" GD01_TIPODISTINTA_FIGLIO.GD01_CODICE AS CodDistinta,")
        + QStringLiteral(" GD01_TIPODISTINTA_FIGLIO.GD01_DESCR AS DescDistinta,")
        + QStringLiteral(" GD01_TIPODISTINTA_PADRE.GD01_CODICE AS CodDistintaCapo,")
        + QStringLiteral(" GD01_TIPODISTINTA_PADRE.GD01_DESCR AS DescDistintaCapo")
        + QStringLiteral(" FROM GD01_TIPODISTINTA AS GD01_TIPODISTINTA_FIGLIO LEFT OUTER JOIN GD02_DISTINTA AS "
                         "GD02_DISTINTA_FIGLIO"
                         " ON GD01_TIPODISTINTA_FIGLIO.GD01_ID = GD02_DISTINTA_FIGLIO.GD02_ID_GD01"
                         " LEFT OUTER JOIN (GD02_DISTINTA AS GD02_DISTINTA_PADRE LEFT OUTER JOIN GD01_TIPODISTINTA AS "
                         "GD01_TIPODISTINTA_PADRE"
                         " ON GD02_DISTINTA_PADRE.GD02_ID_GD01 = GD01_TIPODISTINTA_PADRE.GD01_ID)"
                         " ON GD02_DISTINTA_FIGLIO.GD02_IDPARENT_GD02 = GD02_DISTINTA_PADRE.GD02_ID"
                         " LEFT OUTER JOIN (CG44_CLIFOR LEFT OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = "
                         "CG16_ANAGGEN.CG16_CODICE)"
                         " ON GD02_DISTINTA_PADRE.GD02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18"
                         " AND GD02_DISTINTA_PADRE.GD02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF"
                         " AND GD02_DISTINTA_PADRE.GD02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR")
        + QStringLiteral(" WHERE GD02_DISTINTA_FIGLIO.GD02_DITTA_CG18 = ") + QString::number(company)
        + QStringLiteral("   AND GD02_DISTINTA_FIGLIO.GD02_CLIFOR_CG44 = ") + QString::number(subject)
        + QStringLiteral("   AND GD02_DISTINTA_FIGLIO.GD02_TIPOCF_CG44 = ") + QString::number(kind)
        + QStringLiteral("   AND (GD01_TIPODISTINTA_FIGLIO.GD01_IDDIV_CO1A = ") + QString::number(division)
        + QStringLiteral("        OR ") + QStringLiteral("        GD01_TIPODISTINTA_FIGLIO.GD01_IDDIV_CO1A IS NULL")
        + QStringLiteral("       )") + QStringLiteral("   AND (CONVERT(DateTime,'") + start
        + QStringLiteral(
               "',103) BETWEEN  GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL  AND  GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL  ")
        + QStringLiteral("        OR CONVERT(DateTime,'") + end
        + QStringLiteral(
               "',103) BETWEEN GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL  AND GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL ")
        + QStringLiteral("        OR (CONVERT(DateTime,'") + start
        + QStringLiteral("',103) <= GD02_DISTINTA_FIGLIO.GD02_DATAINIZIOVAL AND CONVERT(DateTime,'") + end
        + QStringLiteral("',103) >= GD02_DISTINTA_FIGLIO.GD02_DATAFINEVAL)") + QStringLiteral("        )")
        + QStringLiteral(" ORDER BY GD02_DISTINTA_FIGLIO.GD02_ID_GD01");
}

// The search across all classification lists, with its filters as the search form adds them.
QString crossListSearch(int company, const QString &code, const QString &name)
{
    QString sql = QStringLiteral(" SELECT ") + QStringLiteral(" GD02_ID AS ID, ")
        + QStringLiteral(" GD02_DITTA_CG18 AS DITTA, ") + QStringLiteral(" GD02_TIPOCF_CG44 AS TIPOCF, ")
        + QStringLiteral(" GD02_CLIFOR_CG44 AS CLIFOR, ")
        + QStringLiteral(" CAST(GD02_CLIFOR_CG44 AS VARCHAR) + '-' + RTRIM(CG16_RAGSOANAG) AS ANAGRAFICA, ")
        + QStringLiteral(" GD01_CODICE + '-' + RTRIM(GD01_DESCR) AS DISTINTA ") + QStringLiteral(" FROM GD02_DISTINTA")
        + QStringLiteral(" INNER JOIN GD01_TIPODISTINTA") + QStringLiteral("   ON GD02_ID_GD01 = GD01_ID")
        + QStringLiteral(" INNER JOIN CG44_CLIFOR") + QStringLiteral("   ON CG44_DITTA_CG18 = GD02_DITTA_CG18")
        + QStringLiteral("   AND CG44_TIPOCF = GD02_TIPOCF_CG44")
        + QStringLiteral("   AND CG44_CLIFOR = GD02_CLIFOR_CG44") + QStringLiteral(" INNER JOIN CG16_ANAGGEN")
        + QStringLiteral("   ON CG16_CODICE = CG44_CODICE_CG16") + QStringLiteral(" WHERE ")
        + QStringLiteral("   GD02_DITTA_CG18 = ") + QString::number(company);
    QString quotedCode = code;
    quotedCode.replace(u'\'', QStringLiteral("''"));
    QString quotedName = name;
    quotedName.replace(u'\'', QStringLiteral("''"));
    bool numeric = false;
    code.toLongLong(&numeric);
    if (code.isEmpty() && name.isEmpty())
        return sql + QStringLiteral("   AND 0=1 ");
    if (!code.isEmpty() && numeric)
        sql += QStringLiteral("   AND GD02_CLIFOR_CG44 = ") + quotedCode;
    if (!name.isEmpty())
        sql += QStringLiteral("   AND CG16_RAGSOANAG LIKE '%") + quotedName + QStringLiteral("%'");
    return sql;
}

} // namespace

class TestTsqlTranslator : public QObject
{
    Q_OBJECT

private slots:
    void rewritesConstructs_data();
    void rewritesConstructs();
    void runsConstructs_data();
    void runsConstructs();
    void refusesWhatItCannotTranslate_data();
    void refusesWhatItCannotTranslate();
    void checksDates();
    void temporaryTableLifecycle();
    void subjectList_data();
    void subjectList();
    void overlappingLinks_data();
    void overlappingLinks();
    void crossListSearch_data();
    void crossListSearch();
    void writesRowByRow();
};

void TestTsqlTranslator::rewritesConstructs_data()
{
    QTest::addColumn<QString>("tsql");
    QTest::addColumn<QString>("sqlite");

    QTest::newRow("ISNULL in any case") << "SELECT isnull(a,0), ISNULL(b, 'x') FROM t"
                                        << "SELECT IFNULL(a,0), IFNULL(b, 'x') FROM t";
    QTest::newRow("CONVERT style 103 folded") << "SELECT 1 FROM t WHERE d > CONVERT(DateTime,'31/12/2099',103)"
                                              << "SELECT 1 FROM t WHERE d > '2099-12-31 00:00:00'";
    QTest::newRow("CONVERT style 101 with time") << "SELECT CONVERT(DateTime,'02/29/2024 7:05:09',101)"
                                                 << "SELECT '2024-02-29 07:05:09'";
    QTest::newRow("CONVERT of a column") << "SELECT CONVERT(DateTime, t.x, 103) FROM t"
                                         << "SELECT tsql_convert_datetime(t.x, 103) FROM t";
    QTest::newRow("CAST to text types")
        << "SELECT CAST(a AS VARCHAR), Rtrim(CAST(b AS Char)), CAST(c AS NVARCHAR(3)) FROM t"
        << "SELECT CAST(a AS TEXT), Rtrim(CAST(b AS TEXT)), SUBSTR(CAST(c AS TEXT), 1, 3) FROM t";
    QTest::newRow("CAST to numbers") << "SELECT CAST(a AS INT), CAST(b AS FLOAT), CAST(c AS DECIMAL(10,2)) FROM t"
                                     << "SELECT CAST(a AS INTEGER), CAST(b AS REAL), ROUND(CAST(c AS REAL), 2) FROM t";
    QTest::newRow("string + becomes ||") << "SELECT CAST(a AS VARCHAR) + '-' + RTRIM(b) AS x, c + ' ' + d FROM t"
                                         << "SELECT CAST(a AS TEXT) || '-' || RTRIM(b) AS x, c || ' ' || d FROM t";
    QTest::newRow("concatenated operands kept together") << "SELECT a || b + 'x' FROM t"
                                                         << "SELECT (a || b) || 'x' FROM t";
    QTest::newRow("numeric + stays") << "SELECT a + b, a + 1 + ISNULL(c, 0) FROM t"
                                     << "SELECT a + b, a + 1 + IFNULL(c, 0) FROM t";
    QTest::newRow("YEAR") << "SELECT YEAR(d) AS ANNO FROM t"
                          << "SELECT CAST(strftime('%Y', d) AS INTEGER) AS ANNO FROM t";
    QTest::newRow("TOP at the end of its own query")
        << "SELECT TOP 1 *  FROM t WHERE a IN (SELECT TOP 2 b FROM u ORDER BY b) ORDER BY a"
        << "SELECT *  FROM t WHERE a IN (SELECT b FROM u ORDER BY b LIMIT 2) ORDER BY a LIMIT 1";
    QTest::newRow("NOLOCK removed") << "SELECT a FROM t WITH (NOLOCK) INNER JOIN u WITH (NOLOCK) ON a = b"
                                    << "SELECT a FROM t INNER JOIN u ON a = b";
    QTest::newRow("SELECT INTO a temporary table")
        << "SELECT a AS 'Ragione sociale' INTO #T1 FROM t ORDER BY a"
        << "CREATE TEMP TABLE \"#T1\" AS SELECT a AS 'Ragione sociale' FROM t ORDER BY a";
    QTest::newRow("drop of a temporary table")
        << dropTemporaryTable(QStringLiteral("#GD12_TEMP")) << "DROP TABLE IF EXISTS temp.\"#GD12_TEMP\"";
    QTest::newRow("temporary and bracketed names") << "SELECT #t.a, [Ragione sociale] FROM #t"
                                                   << "SELECT \"#t\".a, \"Ragione sociale\" FROM \"#t\"";
    QTest::newRow("joins nested without parentheses")
        << "SELECT 1 FROM A RIGHT OUTER JOIN B INNER JOIN C ON c1 = 1 LEFT OUTER JOIN M ON c2 = 2 ON c3 = 3"
        << "SELECT 1 FROM B INNER JOIN C ON c1 = 1 LEFT OUTER JOIN M ON c2 = 2 LEFT OUTER JOIN A ON c3 = 3";
    QTest::newRow("joins nested without parentheses, columns by *")
        << "SELECT * FROM A RIGHT OUTER JOIN B INNER JOIN C ON c1 = 1 LEFT OUTER JOIN M ON c2 = 2 ON c3 = 3"
        << "SELECT * FROM A RIGHT OUTER JOIN (B INNER JOIN C ON c1 = 1 LEFT OUTER JOIN M ON c2 = 2) ON c3 = 3";
    QTest::newRow("left-deep joins unchanged") << "SELECT 1 FROM A JOIN B ON x = 1 LEFT JOIN C c ON y = 2 WHERE z = 3"
                                               << "SELECT 1 FROM A JOIN B ON x = 1 LEFT JOIN C c ON y = 2 WHERE z = 3";
    QTest::newRow("DELETE without FROM") << "DELETE GD12_PROMO WHERE GD12_ID = 5"
                                         << "DELETE FROM GD12_PROMO WHERE GD12_ID = 5";
    QTest::newRow("literals untouched") << "SELECT 'TOP 1 a + b FROM #t WITH (NOLOCK) ISNULL(''x'')' + \"q\" FROM t"
                                        << "SELECT 'TOP 1 a + b FROM #t WITH (NOLOCK) ISNULL(''x'')' || \"q\" FROM t";
    QTest::newRow("whitespace kept, comments blanked") << "SELECT  a ,\n\tb -- nota\nFROM t /* x */ WHERE a = 1;"
                                                       << "SELECT  a ,\n\tb FROM t WHERE a = 1;";
}

void TestTsqlTranslator::rewritesConstructs()
{
    QFETCH(QString, tsql);
    QFETCH(QString, sqlite);
    const QString translated = db::translateTsqlToSqlite(tsql);
    QCOMPARE(translated, sqlite);
    QCOMPARE(db::translateTsqlToSqlite(translated), translated); // the output is stable
}

void TestTsqlTranslator::runsConstructs_data()
{
    QTest::addColumn<QString>("tsql");
    QTest::addColumn<QString>("rows");

    QTest::newRow("period between converted dates")
        << "SELECT id FROM P WHERE d BETWEEN CONVERT(DateTime,'01/02/2020',103) AND CONVERT(DateTime,'29/02/2020',103)"
        << "2";
    QTest::newRow("date with time compared") << "SELECT id FROM P WHERE d > CONVERT(DateTime,'12/31/2021 10:29',101)"
                                             << "3";
    QTest::newRow("date built from text at run time")
        << "SELECT CONVERT(DateTime, '0' + CAST(id AS VARCHAR) + '/03/2022', 103) FROM P WHERE id = 2"
        << "2022-03-02 00:00:00";
    QTest::newRow("date written back as text")
        << "SELECT CONVERT(varchar(10), d, 103), CONVERT(varchar, d, 101) FROM P WHERE id = 1"
        << "15/01/2020|01/15/2020";
    QTest::newRow("YEAR MONTH DAY") << "SELECT YEAR(d), MONTH(d), DAY(d), YEAR(NULL) FROM P WHERE id = 3"
                                    << "2021|12|31|NULL";
    QTest::newRow("GETDATE is a date after 2024")
        << "SELECT CASE WHEN GETDATE() > CONVERT(DateTime,'01/01/2024',103) THEN 1 ELSE 0 END"
        << "1";
    QTest::newRow("ISNULL") << "SELECT id, ISNULL(city, '-') FROM P WHERE id < 3 ORDER BY id"
                            << "1|Milano\n2|-";
    QTest::newRow("code and name joined")
        << "SELECT CAST(code AS VARCHAR) + '-' + RTRIM(name) FROM P WHERE id IN (1, 3) ORDER BY id"
        << "100-Rossi Mario\nNULL";
    QTest::newRow("name and city joined") << "SELECT name + ' (' + city + ')' FROM P WHERE id = 4"
                                          << "D'Amico (Bari)";
    QTest::newRow("CASE of texts joined")
        << "SELECT CASE WHEN id = 1 THEN 'uno' ELSE 'altro' END + '!' FROM P WHERE id < 3 ORDER BY id"
        << "uno!\naltro!";
    QTest::newRow("numbers added") << "SELECT id + code + 1, amount + 1 FROM P WHERE id = 1"
                                   << "102|11.5";
    QTest::newRow("CHAR(n) cuts") << "SELECT CAST(name AS CHAR(5)) + '|' FROM P WHERE id = 1"
                                  << "Rossi|";
    QTest::newRow("DECIMAL rounds")
        << "SELECT CAST(amount AS DECIMAL(10,1)), CAST(amount AS DECIMAL) FROM P WHERE id = 2"
        << "2.3|2";
    QTest::newRow("TOP with ORDER BY") << "SELECT TOP 2 id FROM P ORDER BY id DESC"
                                       << "4\n3";
    QTest::newRow("TOP in a subquery") << "SELECT (SELECT TOP 1 name FROM P ORDER BY id DESC) AS last"
                                       << "D'Amico";
    QTest::newRow("NOLOCK and IN") << "SELECT COUNT(*) FROM P WITH (NOLOCK) WHERE id IN (1, 2)"
                                   << "2";
    QTest::newRow("EXISTS and NOT IN")
        << "SELECT id FROM P WHERE EXISTS (SELECT 1 FROM Q WHERE Q.pid = P.id) AND id NOT IN (SELECT 4) ORDER BY id"
        << "1";
    QTest::newRow("LIKE without case, accents kept") << "SELECT id FROM P WHERE name LIKE '%PERCHÉ%'"
                                                     << "3";
    QTest::newRow("LIKE with a set") << "SELECT id FROM P WHERE name LIKE '[BR]%' ORDER BY id"
                                     << "1\n2";
    QTest::newRow("LIKE with a negated set and one character")
        << "SELECT id FROM P WHERE name LIKE '[^BR]%' OR name LIKE 'bian_hi' ORDER BY id"
        << "2\n3\n4";
    QTest::newRow("LIKE with an escape") << "SELECT CASE WHEN '50%' LIKE '50!%' ESCAPE '!' THEN 1 ELSE 0 END, CASE "
                                            "WHEN '500' LIKE '50!%' ESCAPE '!' THEN 1 ELSE 0 END"
                                         << "1|0";
    QTest::newRow("LIKE with a doubled quote") << "SELECT id FROM P WHERE name LIKE '%d''amico%'"
                                               << "4";
    QTest::newRow("UPPER of accented letters") << "SELECT UPPER(city), LOWER(name) FROM P WHERE id = 3"
                                               << "FORLÌ|perché srl";
    QTest::newRow("literal with keywords and signs")
        << "SELECT 'TOP 1 a + b FROM #t WITH (NOLOCK) ISNULL(''x'') -- c' AS t"
        << "TOP 1 a + b FROM #t WITH (NOLOCK) ISNULL('x') -- c";
    QTest::newRow("alias with a space") << "SELECT name AS [Ragione sociale] FROM P WHERE id = 4"
                                        << "D'Amico";
    QTest::newRow("empty result with the right columns") << "SELECT *, '' AS RagioneSociale FROM P WHERE 1=0"
                                                         << "";
}

void TestTsqlTranslator::runsConstructs()
{
    QFETCH(QString, tsql);
    QFETCH(QString, rows);
    SqliteDatabase database;
    QVERIFY(database.exec(smallFixture));
    QCOMPARE(database.run(tsql), rows);
}

void TestTsqlTranslator::refusesWhatItCannotTranslate_data()
{
    QTest::addColumn<QString>("tsql");
    QTest::addColumn<QString>("construct");

    QTest::newRow("GETUTCDATE") << "SELECT GETUTCDATE()"
                                << "GETUTCDATE";
    QTest::newRow("DATEADD") << "SELECT DATEADD(day, 1, d) FROM P"
                             << "DATEADD";
    QTest::newRow("DATEDIFF") << "SELECT 1 FROM P WHERE DATEDIFF(day, d, d) > 0"
                              << "DATEDIFF";
    QTest::newRow("CHARINDEX") << "SELECT charindex('a', name) FROM P"
                               << "CHARINDEX";
    QTest::newRow("LEN") << "SELECT LEN(name) FROM P"
                         << "LEN";
    QTest::newRow("ISNUMERIC") << "SELECT ISNUMERIC(name) FROM P"
                               << "ISNUMERIC";
    QTest::newRow("NEWID") << "INSERT INTO P (name) VALUES (NEWID())"
                           << "NEWID";
    QTest::newRow("unknown function") << "SELECT Calcola(1)"
                                      << "CALCOLA";
    QTest::newRow("function of a schema") << "SELECT dbo.Calcola(1)"
                                          << "dbo.Calcola";
    QTest::newRow("variable") << "SELECT name FROM P WHERE id = @id"
                              << "@id";
    QTest::newRow("EXEC") << "EXEC sp_who"
                          << "EXEC";
    QTest::newRow("DECLARE") << "DECLARE @x INT"
                             << "DECLARE";
    QTest::newRow("CROSS APPLY") << "SELECT 1 FROM P CROSS APPLY (SELECT 1 AS x) y"
                                 << "CROSS APPLY";
    QTest::newRow("OUTER APPLY") << "SELECT 1 FROM P OUTER APPLY (SELECT 1 AS x) y"
                                 << "OUTER APPLY";
    QTest::newRow("other IF") << "IF EXISTS (SELECT 1 FROM P) DELETE FROM P"
                              << "IF";
    QTest::newRow("IF dropping another table") << "IF OBJECT_ID('tempdb..#a') IS NOT NULL DROP TABLE #b"
                                               << "IF";
    QTest::newRow("CONVERT with another style") << "SELECT CONVERT(varchar(10), d, 120) FROM P"
                                                << "CONVERT(varchar(10), ..., 120)";
    QTest::newRow("CONVERT to a date without style") << "SELECT CONVERT(DateTime, '2020-01-01')"
                                                     << "CONVERT(DateTime)";
    QTest::newRow("CAST to a date") << "SELECT CAST(d AS DATETIME) FROM P"
                                    << "CAST AS DATETIME";
    QTest::newRow("TOP PERCENT") << "SELECT TOP 10 PERCENT id FROM P"
                                 << "TOP PERCENT";
    QTest::newRow("TOP in a UNION") << "SELECT TOP 1 id FROM P UNION SELECT id FROM Q"
                                    << "TOP con UNION";
    QTest::newRow("other table hint") << "SELECT id FROM P WITH (UPDLOCK)"
                                      << "WITH (UPDLOCK)";
    QTest::newRow("date arithmetic") << "SELECT GETDATE() + 1"
                                     << "+ con date";
    QTest::newRow("text plus number") << "SELECT 'a' + 1"
                                      << "+ tra testo e numero";
    QTest::newRow("text plus arithmetic") << "SELECT name + ' ' + id * 2 FROM P"
                                          << "+ tra testo e numero";
    QTest::newRow("OFFSET FETCH") << "SELECT id FROM P ORDER BY id OFFSET 1 ROWS FETCH NEXT 1 ROWS ONLY"
                                  << "OFFSET";
    QTest::newRow("two statements") << "SELECT 1; SELECT 2"
                                    << ";";
    QTest::newRow("UPDATE with FROM") << "UPDATE P SET name = 'x' FROM P INNER JOIN Q ON Q.pid = P.id"
                                      << "UPDATE ... FROM";
    QTest::newRow("global temporary table") << "SELECT * FROM ##g"
                                            << "##g";
    QTest::newRow("SET option") << "SET NOCOUNT ON"
                                << "SET";
}

void TestTsqlTranslator::refusesWhatItCannotTranslate()
{
    QFETCH(QString, tsql);
    QFETCH(QString, construct);
    try {
        const QString translated = db::translateTsqlToSqlite(tsql);
        QFAIL(qPrintable(QStringLiteral("translated as: ") + translated));
    } catch (const db::DatabaseError &error) {
        QCOMPARE(error.errors().size(), 1);
        QCOMPARE(error.errors().first().source, QStringLiteral("T-SQL"));
        QCOMPARE(error.errors().first().description, QStringLiteral("Costrutto T-SQL non supportato: ") + construct);
    }
}

void TestTsqlTranslator::checksDates()
{
    SqliteDatabase database;

    // Days that exist, including a leap day; an empty text is the server's 1 January 1900.
    QCOMPARE(database.run(QStringLiteral("SELECT CONVERT(DateTime,'29/02/2024',103), CONVERT(DateTime,'1/2/2023 "
                                         "23:59:59.5',103), CONVERT(DateTime,'',103)")),
             QStringLiteral("2024-02-29 00:00:00|2023-02-01 23:59:59.500|1900-01-01 00:00:00"));

    // A literal that names no day stops the statement before SQLite sees it.
    for (const char *bad : {"31/02/2023", "29/02/2023", "13/13/2020", "1/1/20", "31/12/2099 24:00", "ieri"}) {
        try {
            db::translateTsqlToSqlite(QStringLiteral("SELECT CONVERT(DateTime,'%1',103)").arg(QLatin1StringView(bad)));
            QFAIL(bad);
        } catch (const db::DatabaseError &error) {
            QCOMPARE(error.errors().first().description,
                     QStringLiteral("Istruzione T-SQL non valida: data non valida '%1'").arg(QLatin1StringView(bad)));
            QCOMPARE(error.errors().first().source, QStringLiteral("T-SQL"));
        }
    }
    QVERIFY(database.run(QStringLiteral("SELECT CONVERT(DateTime,'12/31/2020',103)")).startsWith(u"ERROR: Istruzione"));

    // Values known only at run time fail the statement in SQLite the same way.
    QCOMPARE(database.run(QStringLiteral("SELECT CONVERT(DateTime, 'x' + '1/1/2020', 103)")),
             QStringLiteral("ERROR: Conversione in data non riuscita: 'x1/1/2020'"));
    QCOMPARE(database.run(QStringLiteral("SELECT CONVERT(DateTime, NULL + '', 103)")), QStringLiteral("NULL"));
}

void TestTsqlTranslator::temporaryTableLifecycle()
{
    SqliteDatabase database;
    QVERIFY(database.exec(smallFixture));
    const QString name = QStringLiteral("#GD02_CLIFORSTD");
    const QString fill = QStringLiteral("SELECT DISTINCT 0 AS Seleziona, id AS Codice, name AS 'Ragione sociale' INTO ")
        + name + QStringLiteral(" FROM P WITH (NOLOCK) WHERE id > 1 ORDER BY id DESC");

    QCOMPARE(database.run(dropTemporaryTable(name)), QString()); // nothing to drop yet
    QCOMPARE(database.run(fill), QString());
    QCOMPARE(database.run(QStringLiteral("SELECT * FROM ") + name),
             QStringLiteral("0|4|D'Amico\n0|3|Perché Srl\n0|2|Bianchi"));
    QCOMPARE(database.columnNames(QStringLiteral("SELECT * FROM ") + name),
             QStringLiteral("Seleziona|Codice|Ragione sociale"));
    QVERIFY(database.run(fill).contains(u"already exists"));

    QCOMPARE(database.run(dropTemporaryTable(name)), QString());
    QVERIFY(database.run(QStringLiteral("SELECT * FROM ") + name).startsWith(u"ERROR: no such table"));
    QCOMPARE(database.run(fill), QString());
    QCOMPARE(database.run(QStringLiteral("SELECT COUNT(*) FROM ") + name), QStringLiteral("3"));
    QCOMPARE(database.run(QStringLiteral("DROP TABLE ") + name), QString());
}

void TestTsqlTranslator::subjectList_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("rows");

    QTest::newRow("own data")
        << subjectListWithoutDivision(1, 0)
        << "0|10|0|Rossi Mario Spa  |R30|Rimessa 30 gg|A01|Agente Uno|Milano|MI|NORD|LOM|Z1|MC|C1|S1|G1|G2|G3\n"
           "0|20|1|Bianchi & C.|NULL|NULL|NULL|NULL|Torino|TO|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL\n"
           "0|30|1|D'Amico Srl|B60|Bonifico 60 gg|A02|NULL|Bari|BA|SUD|PUG|Z9|MC|C2|S2|NULL|NULL|NULL";
    QTest::newRow("division overrides")
        << subjectListWithDivision(1, 0, 7)
        << "0|10|0|Rossi Mario Spa  |R30|Rimessa 30 gg|A01|Agente Uno|Milano|MI|NORD|LOM|Z1|MC|C1|S1|G1|G2|G3\n"
           "0|20|1|Bianchi & C.|NULL|NULL|NULL|NULL|Torino|TO|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL\n"
           "0|30|1|D'Amico Srl|R30|Rimessa 30 gg|A01|Agente Uno|Bari|BA|CENTRO|PUG|Z9|MC|C2|S2|NULL|NULL|D3";
    QTest::newRow("suppliers") << subjectListWithoutDivision(
        1, 1) << "0|10|1|Fornitore Dieci|NULL|NULL|NULL|NULL|Roma|RM|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL";
    QTest::newRow("other company") << subjectListWithDivision(
        2, 0, 7) << "0|10|1|Altra Ditta|NULL|NULL|X99|Agente Uno|Pisa|PI|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL|NULL";
}

void TestTsqlTranslator::subjectList()
{
    QFETCH(QString, statement);
    QFETCH(QString, rows);
    SqliteDatabase database;
    QVERIFY(database.exec(subjectsFixture));
    const QString table = QStringLiteral("#GD02_CLIFORSTD");

    QCOMPARE(database.run(dropTemporaryTable(table)), QString());
    QCOMPARE(database.run(statement), QString());
    QCOMPARE(database.run(QStringLiteral("SELECT * FROM ") + table), rows);
    QCOMPARE(database.columnNames(QStringLiteral("SELECT * FROM ") + table),
             QStringLiteral("Seleziona|Codice|AssociatoInDistinta|Ragione sociale|CodPagamento|DescPagamento|"
                            "CodAgente|Ragione sociale agente|Citta|Provincia|Macroarea|Area|Zona|MacroCategoria|"
                            "Categoria|SottoCategoria|RaggrCF1|RaggrCF2|RaggrCF3"));
}

void TestTsqlTranslator::overlappingLinks_data()
{
    QTest::addColumn<int>("division");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("rows");

    const QString inTree = QStringLiteral(
        "20|Bianchi & C.|2000-01-01 00:00:00|2099-12-31 00:00:00|CLI|Clienti Nord  |CLI|Clienti Nord  ");
    QTest::newRow("period ending on the first day") << 7 << "01/01/1990"
                                                    << "01/01/2000" << inTree;
    QTest::newRow("period starting on the last day") << 7 << "31/12/2099"
                                                     << "31/12/2100" << inTree;
    QTest::newRow("period after every link") << 7 << "01/01/2100"
                                             << "31/12/2100"
                                             << "";
    QTest::newRow("period around a root of another division")
        << 8 << "01/01/2010"
        << "1/1/2011"
        << inTree + QStringLiteral("\nNULL|NULL|2010-05-01 00:00:00|2010-05-31 00:00:00|DIV|Divisione otto|NULL|NULL");
    QTest::newRow("other division ignored") << 7 << "01/01/2010"
                                            << "1/1/2011" << inTree;
}

void TestTsqlTranslator::overlappingLinks()
{
    QFETCH(int, division);
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QString, rows);
    SqliteDatabase database;
    QVERIFY(database.exec(subjectsFixture));
    const QString tsql = ::overlappingLinks(1, 30, 0, division, start, end);
    QCOMPARE(database.run(tsql), rows);
    // The parent's groups are read as one chain, through the parent's key, not copied aside.
    QVERIFY(!db::translateTsqlToSqlite(tsql).contains(QLatin1String("(GD02_DISTINTA AS GD02_DISTINTA_PADRE")));
    QVERIFY(!db::translateTsqlToSqlite(tsql).contains(QLatin1String("(CG44_CLIFOR")));
}

void TestTsqlTranslator::crossListSearch_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("rows");

    QTest::newRow("by code") << "20"
                             << ""
                             << "1|1|0|20|20-Bianchi & C.|CLI-Clienti Nord";
    QTest::newRow("by name with an apostrophe")
        << ""
        << "d'amico"
        << "3|1|0|30|30-D'Amico Srl|CLI-Clienti Nord\n5|1|0|30|30-D'Amico Srl|DIV-Divisione otto";
    QTest::newRow("code that is not a number")
        << "abc"
        << ""
        << "1|1|0|20|20-Bianchi & C.|CLI-Clienti Nord\n2|1|1|10|10-Fornitore Dieci|FOR-Fornitori\n"
           "3|1|0|30|30-D'Amico Srl|CLI-Clienti Nord\n5|1|0|30|30-D'Amico Srl|DIV-Divisione otto";
    QTest::newRow("code and name") << "10"
                                   << "dieci"
                                   << "2|1|1|10|10-Fornitore Dieci|FOR-Fornitori";
    QTest::newRow("nothing typed") << ""
                                   << ""
                                   << "";
}

void TestTsqlTranslator::crossListSearch()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, rows);
    SqliteDatabase database;
    QVERIFY(database.exec(subjectsFixture));
    QCOMPARE(database.run(::crossListSearch(1, code, name) + QStringLiteral(" ORDER BY GD02_ID")), rows);
}

void TestTsqlTranslator::writesRowByRow()
{
    SqliteDatabase database;
    QVERIFY(database.exec(subjectsFixture));

    // A node inserted as the tree editor writes it, dates in day/month/year.
    QCOMPARE(database.run(QStringLiteral(
                 "INSERT INTO GD02_DISTINTA  (  GD02_ID_GD01,  GD02_IDPARENT_GD02,  GD02_DITTA_CG18,  GD02_TIPOCF_CG44,"
                 "  GD02_CLIFOR_CG44,  GD02_DATAINIZIOVAL,  GD02_DATAFINEVAL,  GD02_DATACRE,  GD02_UTENTECRE ) VALUES ("
                 "  1,  0,  1,  0,  10,  CONVERT(DateTime,'01/03/2024',103),  CONVERT(DateTime,'31/12/2099',103),"
                 "  CONVERT(DateTime,'15/03/2024',103),  'rossi' )")),
             QString());
    // The print work table's month/day/year form lands on the same stored text.
    QVERIFY(database.exec("CREATE TABLE GD04_STDISTINTA (GD04_ID INTEGER PRIMARY KEY, GD04_KEY TEXT, "
                          "GD04_DATAINIZIOVAL TEXT, GD04_DATAFINEVAL TEXT, GD04_ID_WF02 INTEGER)"));
    QCOMPARE(database.run(QStringLiteral(
                 "INSERT INTO GD04_STDISTINTA ( GD04_KEY, GD04_DATAINIZIOVAL, GD04_DATAFINEVAL, GD04_ID_WF02 ) VALUES ("
                 " 'PC1rossi',CONVERT(DateTime,'03/01/2024',101),CONVERT(DateTime,'12/31/2099',101),6 )")),
             QString());
    QCOMPARE(database.run(QStringLiteral(
                 "SELECT COUNT(*) FROM GD02_DISTINTA INNER JOIN GD04_STDISTINTA"
                 "  ON GD02_DATAINIZIOVAL = GD04_DATAINIZIOVAL AND GD02_DATAFINEVAL = GD04_DATAFINEVAL")),
             QStringLiteral("1"));

    QCOMPARE(database.run(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_UTENTECRE = ISNULL(GD02_UTENTECRE, 'x') + '!'"
                                         " WHERE GD02_CLIFOR_CG44 = 10 AND GD02_DITTA_CG18 = 1")),
             QString());
    QCOMPARE(database.run(QStringLiteral("SELECT GD02_UTENTECRE FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 = 10"
                                         " AND GD02_DITTA_CG18 = 1 ORDER BY GD02_ID")),
             QStringLiteral("x!\nrossi!"));
    QCOMPARE(database.run(
                 QStringLiteral("DELETE GD02_DISTINTA WHERE GD02_DATAINIZIOVAL >= CONVERT(DateTime,'01/03/2024',103)")),
             QString());
    QCOMPARE(database.run(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA")), QStringLiteral("5"));
}

QTEST_MAIN(TestTsqlTranslator)
#include "tst_tsqltranslator.moc"
