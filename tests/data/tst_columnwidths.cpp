#include "data/columnwidths.h"
#include "data/dittastatements.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

namespace {

QString sourceFile(const QString &relative)
{
    const QString source = qEnvironmentVariable("DISTINTA_SOURCE_DIR");
    QFile file(source.isEmpty() ? QFINDTESTDATA(QStringLiteral("../../") + relative)
                                : source + QLatin1Char('/') + relative);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? QString::fromUtf8(file.readAll()) : QString();
}

// The width a schema script declares for a column: "COLUMN   VARCHAR(n)".
int declaredWidth(const QString &script, const QString &column)
{
    const QRegularExpression declaration(QStringLiteral("^\\s*%1\\s+VARCHAR\\((\\d+)\\)").arg(column),
                                         QRegularExpression::MultilineOption
                                             | QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = declaration.match(script);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

} // namespace

// Names written into fixed-width columns are fitted to the width both schemas give, so that SQL
// Server never refuses a write for a long user, computer or group name.
class TestColumnWidths : public QObject
{
    Q_OBJECT

private slots:
    void widthsAreTheSchemas()
    {
        const QString sqlite = sourceFile(QStringLiteral("db/schema_sqlite.sql"));
        const QString server = sourceFile(QStringLiteral("db/schema_sqlserver.sql"));
        QVERIFY(!sqlite.isEmpty() && !server.isEmpty());
        for (const char *name : {"GD01_GRUPPOCRE", "GD01_UTENTECRE", "GD01_GRUPPOVAR", "GD01_UTENTEVAR",
                                 "GD02_GRUPPOCRE", "GD02_UTENTECRE", "GD02_GRUPPOVAR", "GD02_UTENTEVAR", "WF02_TABELLA",
                                 "WF02_GRUPPOCRE", "WF02_UTENTECRE", "WF02_GRUPPOVAR", "WF02_UTENTEVAR", "GD04_KEY",
                                 "GD04_LIVELLO", "GD01_CODICE", "GD01_DESCR", "GD02_DESCR"}) {
            const QString column = QLatin1String(name);
            QCOMPARE(columnwidths::widthOf(column), declaredWidth(server, column));
            QCOMPARE(columnwidths::widthOf(column), declaredWidth(sqlite, column));
        }
        QCOMPARE(columnwidths::widthOf(QStringLiteral("gd02_utentecre")), 20);
        QCOMPARE(columnwidths::widthOf(QStringLiteral("GD02_ID")), 0);
    }

    void valuesAreFittedNeverLengthened()
    {
        const QString longUser = QStringLiteral("amministratore.di.sistema@sede-centrale");
        QCOMPARE(columnwidths::fitToColumn(QStringLiteral("GD02_UTENTECRE"), longUser), longUser.left(20));
        QCOMPARE(columnwidths::fitToColumn(QStringLiteral("GD02_UTENTECRE"), QStringLiteral("rossi")),
                 QStringLiteral("rossi"));
        QCOMPARE(columnwidths::fitToColumn(QStringLiteral("GD02_ID"), longUser), longUser); // not a text column
        // A character outside the basic plane is never cut in half.
        const QString emoji = QString(19, QLatin1Char('a')) + QString::fromUtf8("\xF0\x9F\x98\x80");
        QCOMPARE(columnwidths::fitToColumn(QStringLiteral("GD02_UTENTECRE"), emoji), QString(19, QLatin1Char('a')));
        // Quotes are doubled after fitting: the stored text is what counts.
        QCOMPARE(columnwidths::fitToColumn(QStringLiteral("GD01_CODICE"), QString(25, QLatin1Char('\''))).size(), 20);
    }

    void companyDataQuery()
    {
        QCOMPARE(dittastatements::companyHasDataQuery(7),
                 QStringLiteral("SELECT CASE WHEN EXISTS (SELECT 1 FROM CG18_DITTE WHERE CG18_DITTA = 7)"
                                " OR EXISTS (SELECT 1 FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 7)"
                                " OR EXISTS (SELECT 1 FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = 7)"
                                " THEN 1 ELSE 0 END AS DittaConDati"));
    }
};

QTEST_GUILESS_MAIN(TestColumnWidths)
#include "tst_columnwidths.moc"
