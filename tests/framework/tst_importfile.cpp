#include "framework/export/csvtablewriter.h"
#include "framework/export/xlsxtablewriter.h"
#include "framework/import/importfile.h"

#include <QCryptographicHash>
#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>
#include <minizip/zip.h>

// The files an import reads, as the spreadsheets that users have write them: workbooks of two
// writers kept as samples, workbooks made here for what those do not show, CSV of our dialect;
// and the files refused, each with its message. No file read is ever changed.
class TestImportFile : public QObject
{
    Q_OBJECT

    // A cell as "T:text", "N:text", "D:dd/mm/yyyy" or "" for an empty one.
    static QStringList describe(const fw::ImportedRow &row)
    {
        QStringList cells;
        for (const fw::ImportedCell &cell : row.cells) {
            switch (cell.kind) {
            case fw::ImportedCell::Kind::Empty: cells << QString(); break;
            case fw::ImportedCell::Kind::Text: cells << QStringLiteral("T:") + cell.text; break;
            case fw::ImportedCell::Kind::Number: cells << QStringLiteral("N:") + cell.text; break;
            case fw::ImportedCell::Kind::Date: cells << QStringLiteral("D:") + cell.text; break;
            }
        }
        return cells;
    }

    static QList<int> lines(const fw::ImportedTable &table)
    {
        QList<int> result;
        for (const fw::ImportedRow &row : table.rows)
            result << row.line;
        return result;
    }

    // Reads path and checks that neither its bytes nor its time of change moved; the message of
    // the refusal, if any, goes to message.
    static fw::ImportedTable readUnchanged(const QString &path, QString *message = nullptr)
    {
        const QByteArray before = digest(path);
        const QDateTime changed = QFileInfo(path).lastModified();
        fw::ImportedTable table;
        try {
            table = fw::readImportFile(path);
        } catch (const fw::ImportFileError &error) {
            if (!message)
                qWarning("%s", qPrintable(error.message()));
            else
                *message = error.message();
        }
        if (digest(path) != before || QFileInfo(path).lastModified() != changed)
            qFatal("%s was changed by reading it", qPrintable(path));
        return table;
    }

    static QString refusal(const QString &path)
    {
        QString message;
        readUnchanged(path, &message);
        return message;
    }

    static QByteArray digest(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
    }

    static QString write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    static QString sample(const QString &name)
    {
        return qEnvironmentVariable("DISTINTA_SOURCE_DIR") + QStringLiteral("/tests/framework/samples/") + name;
    }

    // A workbook made of the given parts; the package's own relationships are left out unless
    // given, as the reader finds the workbook at its usual place without them.
    static QString zip(const QString &path, const QList<std::pair<QString, QByteArray>> &parts)
    {
        zipFile package = zipOpen64(QFile::encodeName(path).constData(), APPEND_STATUS_CREATE);
        if (!package)
            qFatal("cannot create %s", qPrintable(path));
        for (const auto &[name, bytes] : parts) {
            if (zipOpenNewFileInZip64(package, name.toUtf8().constData(), nullptr, nullptr, 0, nullptr, 0, nullptr,
                                      Z_DEFLATED, Z_DEFAULT_COMPRESSION, 0)
                    != ZIP_OK
                || zipWriteInFileInZip(package, bytes.constData(), unsigned(bytes.size())) != ZIP_OK
                || zipCloseFileInZip(package) != ZIP_OK)
                qFatal("cannot write %s", qPrintable(name));
        }
        zipClose(package, nullptr);
        return path;
    }

    static QByteArray xml(const QByteArray &root, const QByteArray &body)
    {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<" + root
            + " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\""
              " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
            + body + "</" + root + ">";
    }

    static QByteArray relationships(const QList<std::pair<QByteArray, QByteArray>> &idTargets)
    {
        QByteArray body;
        for (const auto &[id, target] : idTargets)
            body += "<Relationship Id=\"" + id
                + "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" Target=\""
                + target + "\"/>";
        return "<?xml version=\"1.0\"?><Relationships "
               "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
            + body + "</Relationships>";
    }

    // A workbook of one sheet "Dati" holding sheetData (and what follows it), with styles.
    static QString oneSheet(const QString &path, const QByteArray &sheetData, const QByteArray &workbookPr = {},
                            const QByteArray &sharedStrings = {})
    {
        QList<std::pair<QString, QByteArray>> parts {
            {QStringLiteral("xl/workbook.xml"),
             xml("workbook", workbookPr + "<sheets><sheet name=\"Dati\" sheetId=\"1\" r:id=\"rId1\"/></sheets>")},
            {QStringLiteral("xl/_rels/workbook.xml.rels"), relationships({{"rId1", "worksheets/sheet1.xml"}})},
            {QStringLiteral("xl/worksheets/sheet1.xml"), xml("worksheet", sheetData)},
            {QStringLiteral("xl/styles.xml"),
             xml("styleSheet",
                 "<numFmts count=\"2\"><numFmt numFmtId=\"164\" formatCode=\"[$-410]d\\ mmmm\\ yyyy\"/>"
                 "<numFmt numFmtId=\"165\" formatCode=\"&quot;gg/mm/aa&quot;\\ #,##0.00\"/></numFmts>"
                 "<cellStyleXfs count=\"1\"><xf numFmtId=\"14\"/></cellStyleXfs>"
                 "<cellXfs count=\"4\"><xf numFmtId=\"0\"/><xf numFmtId=\"14\"><alignment/></xf>"
                 "<xf numFmtId=\"164\"/><xf numFmtId=\"165\"/></cellXfs>")}};
        if (!sharedStrings.isEmpty())
            parts.append({QStringLiteral("xl/sharedStrings.xml"), xml("sst", sharedStrings)});
        return zip(path, parts);
    }

private slots:
    void samplesOfTwoWritersReadToTheirCells()
    {
        // libxlsxwriter: a hidden sheet first, shared strings, a date style, a formula's cached values.
        const fw::ImportedTable written = readUnchanged(sample(QStringLiteral("libxlsxwriter.xlsx")));
        QCOMPARE(written.sheet, QStringLiteral("Łódź Città"));
        QCOMPARE(written.headingLine, 1);
        QCOMPARE(written.headings,
                 QStringList({QStringLiteral("Codice"), QStringLiteral("Descrizione"), QStringLiteral("Inizio"),
                              QStringLiteral("Importo"), QStringLiteral("Doppio")}));
        QCOMPARE(lines(written), QList<int>({2, 4, 5})); // row 3 is empty
        QCOMPARE(describe(written.rows.at(0)),
                 QStringList({QStringLiteral("T:00123"), QStringLiteral("T:Perché più caffè"),
                              QStringLiteral("D:29/02/2024"), QStringLiteral("N:1234.5"), QStringLiteral("N:2469")}));
        QCOMPARE(describe(written.rows.at(1)),
                 QStringList({QStringLiteral("T:007"), QStringLiteral("T:Ελλάδα"), QStringLiteral("D:31/12/2099"),
                              QStringLiteral("N:-0.25"), QStringLiteral("T:007x")}));
        QCOMPARE(describe(written.rows.at(2)),
                 QStringList({QString(), QString(), QString(), QString(), QString(), QStringLiteral("T:sola F")}));
        QCOMPARE(written.rows.at(0).cells.at(2).date, QDate(2024, 2, 29));
        QCOMPARE(written.rows.at(0).cells.at(3).number, 1234.5);

        // LibreOffice: its own date format, rich text runs, a date before the 1900 system's phantom leap day.
        const fw::ImportedTable saved = readUnchanged(sample(QStringLiteral("libreoffice.xlsx")));
        QCOMPARE(saved.sheet, QStringLiteral("Clienti è già"));
        QCOMPARE(saved.headings,
                 QStringList({QStringLiteral("Livello"), QStringLiteral("Codice"), QStringLiteral("Ragione sociale"),
                              QStringLiteral("Dal"), QStringLiteral("Quota"), QStringLiteral("Doppia")}));
        QCOMPARE(lines(saved), QList<int>({2, 3}));
        QCOMPARE(
            describe(saved.rows.at(0)),
            QStringList({QStringLiteral("N:1"), QStringLiteral("T:000451"), QStringLiteral("T:Società Łódź S.r.l."),
                         QStringLiteral("D:01/01/2023"), QStringLiteral("N:12.75"), QStringLiteral("N:25.5")}));
        QCOMPARE(describe(saved.rows.at(1)),
                 QStringList({QStringLiteral("N:2"), QStringLiteral("T:000452"), QStringLiteral("T:Ελληνικά & Co."),
                              QStringLiteral("D:01/03/1900"), QString(), QStringLiteral("T:000452-")}));
    }

    void ourExportsReadBack()
    {
        QTemporaryDir folder;
        const QList<fw::ExportColumn> columns {{QStringLiteral("Codice"), fw::ExportCellKind::Number},
                                               {QStringLiteral("Ragione Sociale"), fw::ExportCellKind::Text},
                                               {QStringLiteral("Quota"), fw::ExportCellKind::Number},
                                               {QStringLiteral("Data inizio"), fw::ExportCellKind::Date}};
        const QList<QList<QVariant>> values {
            {1001, QStringLiteral("Alfa; \"Beta\" S.p.A."), 12.5, QDate(2024, 1, 1)},
            {1002, QStringLiteral("Zakład Łódź Ωmega"), QVariant(), QDate(2099, 12, 31)},
            {1003, QStringLiteral("Riga\r\nseconda; \"terza\""), 0.1, QVariant()},
            {1004, QStringLiteral(" 0042 "), -3, QDate(1904, 1, 1)}};
        const auto export_ = [&](fw::TableWriter &writer, const QString &path) {
            writer.open(path, QStringLiteral("Rete nord"), columns);
            for (int i = 0; i < values.size(); ++i)
                writer.writeRow(i, values.at(i));
            writer.commit();
            return path;
        };

        fw::CsvTableWriter csvWriter;
        const fw::ImportedTable csv = readUnchanged(export_(csvWriter, folder.filePath(QStringLiteral("d.csv"))));
        QCOMPARE(csv.sheet, QString());
        QCOMPARE(csv.headings,
                 QStringList({QStringLiteral("Livello"), QStringLiteral("Codice"), QStringLiteral("Ragione Sociale"),
                              QStringLiteral("Quota"), QStringLiteral("Data inizio")}));
        QCOMPARE(lines(csv), QList<int>({2, 3, 4, 5}));
        QCOMPARE(
            describe(csv.rows.at(0)),
            QStringList({QStringLiteral("T:1"), QStringLiteral("T:1001"), QStringLiteral("T:Alfa; \"Beta\" S.p.A."),
                         QStringLiteral("T:12,5"), QStringLiteral("T:01/01/2024")}));
        QCOMPARE(describe(csv.rows.at(1)),
                 QStringList({QStringLiteral("T:2"), QStringLiteral("T:1002"), QStringLiteral("T:Zakład Łódź Ωmega"),
                              QString(), QStringLiteral("T:31/12/2099")}));
        QCOMPARE(describe(csv.rows.at(2)),
                 QStringList({QStringLiteral("T:3"), QStringLiteral("T:1003"),
                              QStringLiteral("T:Riga\r\nseconda; \"terza\""), QStringLiteral("T:0,1")}));
        QCOMPARE(describe(csv.rows.at(3)).at(2), QStringLiteral("T: 0042 "));

        fw::XlsxTableWriter xlsxWriter;
        const fw::ImportedTable xlsx = readUnchanged(export_(xlsxWriter, folder.filePath(QStringLiteral("d.xlsx"))));
        QCOMPARE(xlsx.sheet, QStringLiteral("Rete nord"));
        QCOMPARE(xlsx.headings, csv.headings);
        QCOMPARE(lines(xlsx), QList<int>({2, 3, 4, 5}));
        QCOMPARE(
            describe(xlsx.rows.at(0)),
            QStringList({QStringLiteral("N:1"), QStringLiteral("N:1001"), QStringLiteral("T:Alfa; \"Beta\" S.p.A."),
                         QStringLiteral("N:12.5"), QStringLiteral("D:01/01/2024")}));
        QCOMPARE(describe(xlsx.rows.at(2)),
                 QStringList({QStringLiteral("N:3"), QStringLiteral("N:1003"),
                              QStringLiteral("T:Riga\r\nseconda; \"terza\""), QStringLiteral("N:0.1")}));
        QCOMPARE(describe(xlsx.rows.at(3)),
                 QStringList({QStringLiteral("N:4"), QStringLiteral("N:1004"), QStringLiteral("T: 0042 "),
                              QStringLiteral("N:-3"), QStringLiteral("D:01/01/1904")}));
    }

    void datesStringsAndReferences()
    {
        QTemporaryDir folder;
        // 1904 system: day 0 is 1 January 1904; the time of day goes; a custom date format with a
        // locale in brackets and escaped blanks; a number whose format quotes "gg/mm/aa" stays a number.
        const fw::ImportedTable mac = readUnchanged(oneSheet(
            folder.filePath(QStringLiteral("1904.xlsx")),
            "<sheetData><row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>Data</t></is></c></row>"
            "<row r=\"2\"><c r=\"A2\" s=\"1\"><v>0</v></c><c r=\"B2\" s=\"2\"><v>1.75</v></c>"
            "<c r=\"C2\" s=\"3\"><v>45000</v></c><c r=\"D2\" t=\"d\"><v>2024-03-15T00:00:00</v></c></row></sheetData>",
            "<workbookPr date1904=\"1\"/>"));
        QCOMPARE(describe(mac.rows.at(0)),
                 QStringList({QStringLiteral("D:01/01/1904"), QStringLiteral("D:02/01/1904"), QStringLiteral("N:45000"),
                              QStringLiteral("D:15/03/2024")}));
        const fw::ImportedTable windows = readUnchanged(
            oneSheet(folder.filePath(QStringLiteral("1900.xlsx")),
                     "<sheetData><row><c t=\"inlineStr\"><is><t>Data</t></is></c></row>"
                     "<row><c s=\"1\"><v>1</v></c><c s=\"1\"><v>59</v></c><c s=\"2\"><v>61</v></c>"
                     "<c s=\"1\"><v>45351</v></c></row></sheetData>"));
        QCOMPARE(describe(windows.rows.at(0)),
                 QStringList({QStringLiteral("D:01/01/1900"), QStringLiteral("D:28/02/1900"),
                              QStringLiteral("D:01/03/1900"), QStringLiteral("D:29/02/2024")}));

        // Shared strings with runs, phonetic guides left out, blanks kept, escapes decoded; inline
        // strings; booleans; a formula's text; cells and rows that skip, and cells without a reference.
        const fw::ImportedTable strings = readUnchanged(
            oneSheet(folder.filePath(QStringLiteral("strings.xlsx")),
                     "<sheetData><row r=\"2\"><c r=\"B2\" t=\"s\"><v>0</v></c><c t=\"s\"><v>1</v></c></row>"
                     "<row r=\"5\"><c r=\"A5\" t=\"s\"><v>2</v></c><c r=\"D5\" t=\"inlineStr\"><is><r><t>in</t></r>"
                     "<r><rPr><b/></rPr><t xml:space=\"preserve\"> linea</t></r></is></c><c t=\"b\"><v>1</v></c>"
                     "<c r=\"G5\" t=\"str\"><f>A5&amp;\"\"</f><v>0012</v></c><c r=\"H5\" t=\"s\"><v>3</v></c></row>"
                     "<row r=\"6\"><c r=\"A6\" s=\"1\"/><c r=\"B6\" t=\"str\"><f>\"\"</f><v></v></c></row>"
                     "<row r=\"7\"><c r=\"C7\" t=\"b\"><v>0</v></c></row></sheetData>",
                     {},
                     "<si><t>Codice</t></si><si><r><t>Ragione </t></r><r><rPr><i/></rPr><t>sociale</t></r>"
                     "<rPh sb=\"0\" eb=\"1\"><t>ラ</t></rPh></si><si><t xml:space=\"preserve\">  0042  </t></si>"
                     "<si><t>a_x000D_b_x005F_x0041_</t></si>"));
        QCOMPARE(strings.headingLine, 2);
        QCOMPARE(strings.headings,
                 QStringList({QString(), QStringLiteral("Codice"), QStringLiteral("Ragione sociale")}));
        QCOMPARE(lines(strings), QList<int>({5, 7})); // row 6 holds a styled blank and an empty text only
        QCOMPARE(describe(strings.rows.at(0)),
                 QStringList({QStringLiteral("T:  0042  "), QString(), QString(), QStringLiteral("T:in linea"),
                              QStringLiteral("T:VERO"), QString(), QStringLiteral("T:0012"),
                              QStringLiteral("T:a\rb_x0041_")}));
        QCOMPARE(describe(strings.rows.at(1)), QStringList({QString(), QString(), QStringLiteral("T:FALSO")}));
    }

    void sheetsHiddenAndResolvedThroughRelationships()
    {
        QTemporaryDir folder;
        const QByteArray sheet = xml("worksheet",
                                     "<sheetData><row r=\"3\"><c r=\"C3\" t=\"inlineStr\"><is><t>qui</t>"
                                     "</is></c></row></sheetData>");
        const QByteArray other = xml("worksheet",
                                     "<sheetData><row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>no</t>"
                                     "</is></c></row></sheetData>");
        const fw::ImportedTable table = readUnchanged(zip(
            folder.filePath(QStringLiteral("fogli.xlsx")),
            {{QStringLiteral("_rels/.rels"),
              "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
              "Id=\"rId1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
              "Target=\"/cartella/libro.xml\"/></Relationships>"},
             {QStringLiteral("cartella/libro.xml"),
              xml("workbook",
                  "<sheets><sheet name=\"Uno\" sheetId=\"1\" state=\"hidden\" r:id=\"rId7\"/>"
                  "<sheet name=\"Due\" sheetId=\"2\" state=\"veryHidden\" r:id=\"rId7\"/>"
                  "<sheet name=\"Tre è\" sheetId=\"3\" r:id=\"rId2\"/>"
                  "<sheet name=\"Quattro\" sheetId=\"4\" r:id=\"rId7\"/></sheets>")},
             {QStringLiteral("cartella/_rels/libro.xml.rels"),
              relationships({{"rId7", "fogli/primo.xml"}, {"rId2", "../altrove/terzo.xml"}})},
             {QStringLiteral("cartella/fogli/primo.xml"), other},
             {QStringLiteral("altrove/terzo.xml"), sheet}}));
        QCOMPARE(table.sheet, QStringLiteral("Tre è"));
        QCOMPARE(table.headingLine, 3);
        QCOMPARE(table.headings, QStringList({QString(), QString(), QStringLiteral("qui")}));

        const QString allHidden = zip(folder.filePath(QStringLiteral("nascosti.xlsx")),
                                      {{QStringLiteral("xl/workbook.xml"),
                                        xml("workbook",
                                            "<sheets><sheet name=\"A\" sheetId=\"1\" state=\"hidden\" r:id=\"rId1\"/>"
                                            "</sheets>")}});
        QCOMPARE(refusal(allHidden), QStringLiteral("La cartella di lavoro nascosti.xlsx non ha fogli visibili."));
    }

    void sheetsRefusedWithTheCellOrRangeNamed()
    {
        QTemporaryDir folder;
        const QByteArray head = "<sheetData><row r=\"1\"><c r=\"A1\" t=\"inlineStr\"><is><t>Codice</t></is></c>"
                                "<c r=\"B1\" t=\"inlineStr\"><is><t>Nome</t></is></c></row>";
        QCOMPARE(refusal(oneSheet(
                     folder.filePath(QStringLiteral("f.xlsx")),
                     head + "<row r=\"2\"><c r=\"A2\"><v>1</v></c><c r=\"B2\"><f>A2*2</f></c></row></sheetData>")),
                 QStringLiteral("Il foglio Dati, cella B2: la formula non ha un valore calcolato; aprire e salvare il "
                                "file con il foglio di calcolo."));
        QCOMPARE(refusal(oneSheet(
                     folder.filePath(QStringLiteral("e.xlsx")),
                     head + "<row r=\"3\"><c r=\"AB3\" t=\"e\"><f>1/0</f><v>#DIV/0!</v></c></row></sheetData>")),
                 QStringLiteral("Il foglio Dati, cella AB3: la cella contiene un errore (#DIV/0!)."));
        QCOMPARE(refusal(oneSheet(folder.filePath(QStringLiteral("m.xlsx")),
                                  head
                                      + "<row r=\"2\"><c r=\"A2\"><v>1</v></c></row></sheetData>"
                                        "<mergeCells count=\"2\"><mergeCell ref=\"H20:I20\"/>"
                                        "<mergeCell ref=\"A2:B2\"/></mergeCells>")),
                 QStringLiteral("Il foglio Dati ha celle unite (A2:B2): separarle e riprovare."));
        // Cells merged away from the table (a note under it, a title above it) do not matter.
        const fw::ImportedTable apart = readUnchanged(oneSheet(
            folder.filePath(QStringLiteral("apart.xlsx")),
            "<sheetData><row r=\"3\"><c r=\"A3\" t=\"inlineStr\"><is><t>Codice</t></is></c></row>"
            "<row r=\"4\"><c r=\"A4\"><v>7</v></c></row></sheetData>"
            "<mergeCells><mergeCell ref=\"A1:D1\"/><mergeCell ref=\"A6:C8\"/><mergeCell ref=\"B3:C4\"/></mergeCells>"));
        QCOMPARE(lines(apart), QList<int>({4}));
    }

    void filesRefusedWithTheirMessage()
    {
        QTemporaryDir folder;
        QByteArray random(4096, Qt::Uninitialized);
        QRandomGenerator generator(20240229);
        for (char &byte : random)
            byte = char(generator.bounded(256));
        QCOMPARE(refusal(write(folder.filePath(QStringLiteral("protetto.xlsx")),
                               QByteArrayLiteral("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") + random)),
                 QStringLiteral("La cartella di lavoro protetto.xlsx è protetta da password: salvarla senza password e "
                                "riprovare."));
        QCOMPARE(refusal(write(folder.filePath(QStringLiteral("casuale.csv")), random)),
                 QStringLiteral("Il file casuale.csv non è un file XLSX né CSV."));
        QCOMPARE(refusal(write(folder.filePath(QStringLiteral("immagine.xlsx")),
                               QByteArrayLiteral("\x89PNG\r\n\x1A\n") + random)),
                 QStringLiteral("Il file immagine.xlsx non è un file XLSX né CSV."));
        QCOMPARE(refusal(write(folder.filePath(QStringLiteral("vuoto.xlsx")), {})),
                 QStringLiteral("Il file vuoto.xlsx non contiene righe."));
        QCOMPARE(refusal(write(folder.filePath(QStringLiteral("bianco.csv")), "\xEF\xBB\xBF;;\r\n\r\n  \n;\n")),
                 QStringLiteral("Il file bianco.csv non contiene righe."));

        // A zip that is no workbook, and a workbook cut short.
        QCOMPARE(
            refusal(zip(folder.filePath(QStringLiteral("archivio.xlsx")), {{QStringLiteral("leggimi.txt"), "testo"}})),
            QStringLiteral("La cartella di lavoro archivio.xlsx è danneggiata o non è un file XLSX."));
        QFile whole(sample(QStringLiteral("libxlsxwriter.xlsx")));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QCOMPARE(refusal(write(folder.filePath(QStringLiteral("tronco.xlsx")), whole.read(whole.size() / 2))),
                 QStringLiteral("La cartella di lavoro tronco.xlsx è danneggiata o non è un file XLSX."));

        // Too large, before anything is read; a file that is not there.
        QFile large(folder.filePath(QStringLiteral("grande.csv")));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(50LL * 1024 * 1024 + 1));
        large.close();
        QCOMPARE(refusal(large.fileName()),
                 QStringLiteral("Il file grande.csv è troppo grande (50,1 MB): il massimo è 50 MB."));
        QVERIFY(refusal(folder.filePath(QStringLiteral("manca.csv")))
                    .startsWith(QStringLiteral("Impossibile aprire il file manca.csv: ")));

        // Content decides, not the name: a text file renamed .xlsx is read as CSV.
        const fw::ImportedTable renamed = readUnchanged(
            write(folder.filePath(QStringLiteral("elenco.xlsx")), "Codice;Nome\n1;Uno\n"));
        QCOMPARE(renamed.headings, QStringList({QStringLiteral("Codice"), QStringLiteral("Nome")}));
        QCOMPARE(describe(renamed.rows.at(0)), QStringList({QStringLiteral("T:1"), QStringLiteral("T:Uno")}));
    }

    void csvDialect()
    {
        QTemporaryDir folder;
        // A byte-order mark, CR LF and LF mixed, blank lines before the headings and among the rows,
        // quoted separators, line breaks and doubled quotes, a record that ends with empty fields.
        const fw::ImportedTable table = readUnchanged(
            write(folder.filePath(QStringLiteral("a.csv")),
                  "\xEF\xBB\xBF\r\n;;\r\n Codice ;\"Nome; completo\";Note\r\n"
                  "007;\"Rossi \"\"il Grande\"\"\";\"riga uno\r\nriga due\"\n"
                  "\r\n"
                  "\"\";Verdi;;\n"
                  "008;\"\"\"\";\"\"\"x\"\"\"")); // no line end after the last record
        QCOMPARE(table.headingLine, 3);
        QCOMPARE(table.headings,
                 QStringList({QStringLiteral("Codice"), QStringLiteral("Nome; completo"), QStringLiteral("Note")}));
        QCOMPARE(lines(table), QList<int>({4, 6, 7}));
        QCOMPARE(describe(table.rows.at(0)),
                 QStringList({QStringLiteral("T:007"), QStringLiteral("T:Rossi \"il Grande\""),
                              QStringLiteral("T:riga uno\r\nriga due")}));
        QCOMPARE(describe(table.rows.at(1)), QStringList({QString(), QStringLiteral("T:Verdi")}));
        QCOMPARE(describe(table.rows.at(2)),
                 QStringList({QStringLiteral("T:008"), QStringLiteral("T:\""), QStringLiteral("T:\"x\"")}));

        // Commas when the heading line has no semicolon; Latin-1 when the bytes are not UTF-8.
        const fw::ImportedTable commas = readUnchanged(
            write(folder.filePath(QStringLiteral("b.csv")), "Codice,Citt\xE0\n1,\"Forl\xEC, centro\"\n2;x,y\n"));
        QCOMPARE(commas.headings, QStringList({QStringLiteral("Codice"), QStringLiteral("Città")}));
        QCOMPARE(describe(commas.rows.at(0)), QStringList({QStringLiteral("T:1"), QStringLiteral("T:Forlì, centro")}));
        QCOMPARE(describe(commas.rows.at(1)), QStringList({QStringLiteral("T:2;x"), QStringLiteral("T:y")}));
        const fw::ImportedTable semicolons = readUnchanged(
            write(folder.filePath(QStringLiteral("c.csv")), "Codice;Nome, cognome\n1,5;Uno\n"));
        QCOMPARE(semicolons.headings, QStringList({QStringLiteral("Codice"), QStringLiteral("Nome, cognome")}));
        QCOMPARE(describe(semicolons.rows.at(0)), QStringList({QStringLiteral("T:1,5"), QStringLiteral("T:Uno")}));
    }
};

QTEST_GUILESS_MAIN(TestImportFile)
#include "tst_importfile.moc"
