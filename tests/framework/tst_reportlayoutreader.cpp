#include "framework/report/reportlayoutreader.h"

#include <QTemporaryDir>
#include <QtTest>

// The layout files: the reports the product ships read as they should, and a file that cannot
// be used is refused with its name, the line and what is wrong there.
class TestReportLayoutReader : public QObject
{
    Q_OBJECT

    static QString shipped(const QString &name)
    {
        return qEnvironmentVariable("DISTINTA_SOURCE_DIR") + QStringLiteral("/reports/") + name;
    }

    // A minimal valid layout with extra lines placed after its first line.
    static QString valid(const QString &extra = {})
    {
        return QStringLiteral("layout 1\n") + extra + QStringLiteral("detail\n  row 5\n    field 0 20 CODICE\nend\n");
    }

private slots:
    void readsTheClassificationList()
    {
        const fw::ReportLayout layout = fw::ReportLayoutReader::readFile(
            shipped(QStringLiteral("VRAX_DISTINTA.layout")));
        QCOMPARE(layout.pageSize, QPageSize::A4);
        QCOMPARE(layout.orientation, QPageLayout::Portrait);
        QStringList parameters;
        for (const fw::ReportParameter &parameter : layout.parameters)
            parameters << parameter.name;
        QCOMPARE(parameters, QStringList({"ESEGUITODA", "DESTINATOA", "NOTE", "FINOALIVELLO"}));
        QCOMPARE(layout.groups.size(), 1);
        QCOMPARE(layout.groups.at(0).groupField, QStringLiteral("GD04_ID_GD01"));

        // The level marker and the code move right by 3 mm a level; dates day first.
        const fw::ReportCell &code = layout.detail.rows.at(0).cells.at(0);
        QCOMPARE(code.indentField, QStringLiteral("GD04_LIVELLO"));
        QCOMPARE(code.indentStep, 3.0);
        QCOMPARE(code.parts.size(), 3);
        QCOMPARE(code.parts.at(0).kind, fw::ReportTextPart::Field);
        QCOMPARE(code.parts.at(1).text, QStringLiteral("  "));
        QCOMPARE(layout.detail.rows.at(0).cells.at(4).dateFormat, QStringLiteral("dd/MM/yyyy"));
        QCOMPARE(layout.detail.rows.at(0).cells.at(4).alignment, Qt::AlignRight);

        QStringList fields;
        for (const fw::ReportFieldReference &reference : layout.fieldReferences())
            fields << reference.name;
        fields.removeDuplicates();
        QCOMPARE(fields,
                 QStringList({"GD04_ID_GD01", "GD01_CODICE", "GD01_DESCR", "GD04_LIVELLO", "GD04_CLIFOR_CG44",
                              "CG16_RAGSOANAG", "CG16_CITTA", "CG16_PROV", "GD04_DATAINIZIOVAL", "GD04_DATAFINEVAL"}));
    }

    void readsTheTypesList()
    {
        const fw::ReportLayout layout = fw::ReportLayoutReader::readFile(
            shipped(QStringLiteral("MO09_TIPODIST_01.layout")));
        QVERIFY(layout.parameters.isEmpty());
        QVERIFY(layout.groups.isEmpty());
        QCOMPARE(layout.detail.rows.at(0).cells.size(), 6);
        const QList<fw::ReportTextPart> &footer = layout.pageFooter.rows.at(0).cells.at(1).parts;
        QCOMPARE(footer.size(), 4);
        QCOMPARE(footer.at(1).kind, fw::ReportTextPart::Page);
        QCOMPARE(footer.at(3).kind, fw::ReportTextPart::Pages);
    }

    void placeholdersQuotesAndOptions()
    {
        const fw::ReportLayout layout = fw::ReportLayoutReader::read(
            QStringLiteral("layout 1   # version\n"
                           "page a3 landscape\nmargins left 5 bottom 20\nfont \"Noto Sans\" 9.5\nparameter NOTE\n"
                           "detail\n  row 6 rule-above rule-below\n"
                           "    text 10 50 \"Il \"\"{param:NOTE}\"\" {{x}} del {date}\" bold italic size 12 center\n"
                           "    field 60 30 IMPORTO decimals 2 right\nend\n"),
            QStringLiteral("prova.layout"));
        QCOMPARE(layout.pageSize, QPageSize::A3);
        QCOMPARE(layout.orientation, QPageLayout::Landscape);
        QCOMPARE(layout.margins, QMarginsF(5, 12, 12, 20));
        QCOMPARE(layout.fontFamily, QStringLiteral("Noto Sans"));
        QCOMPARE(layout.fontSize, 9.5);
        const fw::ReportRow &row = layout.detail.rows.at(0);
        QVERIFY(row.ruleAbove && row.ruleBelow);
        const fw::ReportCell &text = row.cells.at(0);
        QCOMPARE(text.parts.size(), 4);
        QCOMPARE(text.parts.at(0).text, QStringLiteral("Il \""));
        QCOMPARE(text.parts.at(1).kind, fw::ReportTextPart::Parameter);
        QCOMPARE(text.parts.at(2).text, QStringLiteral("\" {x} del "));
        QCOMPARE(text.parts.at(3).kind, fw::ReportTextPart::PrintDate);
        QVERIFY(text.bold && text.italic);
        QCOMPARE(text.pointSize, 12.0);
        QCOMPARE(text.alignment, Qt::AlignHCenter);
        QCOMPARE(row.cells.at(1).decimals, 2);
        QCOMPARE(row.cells.at(1).line, 9);
    }

    void refusesWhatItCannotUse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("problem");
        QTest::newRow("no version") << QStringLiteral("page A4\n") << 1
                                    << QStringLiteral("il file deve iniziare con \"layout 1\"");
        QTest::newRow("other version") << QStringLiteral("layout 2\n") << 1
                                       << QStringLiteral("versione del formato non gestita: 2");
        QTest::newRow("empty") << QStringLiteral("# nothing\n\n") << 0
                               << QStringLiteral("il file è vuoto (deve iniziare con \"layout 1\")");
        QTest::newRow("unknown keyword") << valid(QStringLiteral("\ncolonna 1\n")) << 3
                                         << QStringLiteral("parola chiave sconosciuta: colonna");
        QTest::newRow("page size") << valid(QStringLiteral("page B5\n")) << 2
                                   << QStringLiteral("formato di pagina sconosciuto: B5 (A3, A4, A5, Letter, Legal)");
        QTest::newRow("margin not a number")
            << valid(QStringLiteral("margins left x\n")) << 2 << QStringLiteral("il margine non è un numero: \"x\"");
        QTest::newRow("unclosed text") << valid(QStringLiteral("font \"Sans 8\n")) << 2
                                       << QStringLiteral("testo senza le virgolette di chiusura");
        QTest::newRow("band left open") << QStringLiteral("layout 1\ntitle\n  row 5\n    text 0 10 \"x\"\ndetail\n")
                                        << 5 << QStringLiteral("la sezione aperta alla riga 2 non è chiusa da \"end\"");
        QTest::newRow("end missing at the end") << QStringLiteral("layout 1\ndetail\n  row 5\n    field 0 20 A\n") << 2
                                                << QStringLiteral("manca \"end\" alla fine della sezione");
        QTest::newRow("end alone") << valid(QStringLiteral("end\n")) << 2
                                   << QStringLiteral("\"end\" senza una sezione aperta");
        QTest::newRow("cell before a row") << QStringLiteral("layout 1\ndetail\n  field 0 20 A\nend\n") << 3
                                           << QStringLiteral("\"field\" prima della prima \"row\" della sezione");
        QTest::newRow("band twice") << valid(QStringLiteral("footer\n row 5\nend\nfooter\n")) << 5
                                    << QStringLiteral("la sezione \"footer\" è già dichiarata alla riga 2");
        QTest::newRow("unknown placeholder")
            << valid(QStringLiteral("title\n row 5\n  text 0 10 \"{pagina}\"\nend\n")) << 4
            << QStringLiteral(
                   "segnaposto sconosciuto: {pagina} (title, page, pages, date, time, param:NOME, field:NOME)");
        QTest::newRow("undeclared parameter")
            << valid(QStringLiteral("title\n row 5\n  text 0 10 \"{param:NOTE}\"\nend\n")) << 4
            << QStringLiteral("parametro non dichiarato: NOTE (manca \"parameter NOTE\")");
        QTest::newRow("unknown option") << valid(QStringLiteral("title\n row 5\n  text 0 10 \"x\" grassetto\nend\n"))
                                        << 4 << QStringLiteral("opzione sconosciuta: grassetto");
        QTest::newRow("past the right margin")
            << valid(QStringLiteral("title\n row 5\n  text 180 10 \"x\"\nend\n")) << 4
            << QStringLiteral("la cella esce dal margine destro (180 + 10 mm, spazio utile 186.0 mm)");
        QTest::newRow("bands taller than the page")
            << valid(QStringLiteral("page A5\ntitle\n row 300\nend\n")) << 2
            << QStringLiteral("le sezioni (305.0 mm) non stanno nell'altezza utile della pagina (186.0 mm)");
        QTest::newRow("no detail") << QStringLiteral("layout 1\ntitle\n row 5\nend\n") << 0
                                   << QStringLiteral("manca la sezione \"detail\"");
    }

    void refusesWhatItCannotUse()
    {
        QFETCH(QString, text);
        QFETCH(int, line);
        QFETCH(QString, problem);
        try {
            fw::ReportLayoutReader::read(text, QStringLiteral("/reports/PROVA.layout"));
            QFAIL("read without error");
        } catch (const fw::ReportLayoutError &error) {
            QCOMPARE(error.problem(), problem);
            QCOMPARE(error.line(), line);
            const QString where = line > 0
                ? QStringLiteral("Modello di stampa \"/reports/PROVA.layout\", riga %1: ").arg(line)
                : QStringLiteral("Modello di stampa \"/reports/PROVA.layout\": ");
            QCOMPARE(error.message(), where + problem);
        }
    }

    void aFileThatCannotBeRead()
    {
        QTemporaryDir folder;
        const QString missing = folder.filePath(QStringLiteral("MANCA.layout"));
        try {
            fw::ReportLayoutReader::readFile(missing);
            QFAIL("read a missing file");
        } catch (const fw::ReportLayoutError &error) {
            QCOMPARE(error.message(), QStringLiteral("Modello di stampa \"%1\": il file non esiste").arg(missing));
        }
    }
};

QTEST_GUILESS_MAIN(TestReportLayoutReader)
#include "tst_reportlayoutreader.moc"
