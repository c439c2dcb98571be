#include "data/stampastatements.h"
#include "framework/hostglobalservices.h"
#include "framework/report/defaultreportengine.h"
#include "tests/forms/distintafixture.h"
#include "tests/support/pdftext.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>

// The print of a classification: the work table's rows for the level chosen, under the key of
// this workstation and user, then the report read back from its PDF.
class TestDistintaStampa : public QObject
{
    Q_OBJECT

    // Customer type CLI-A: 1001 > 1002 > 1003, and 1004 > 1005 (a name outside Latin-1); the
    // editor opens on it. The report engine writes a PDF, unattended, with fixed header texts.
    struct Stampa : DistintaFixture
    {
        Stampa()
        {
            soggetto(0, 1001, QStringLiteral("Alfa Distribuzione S.p.A."));
            soggetto(0, 1002, QStringLiteral("Bar dell'Angolo"));
            soggetto(0, 1003, QStringLiteral("Caffè Centrale"));
            soggetto(0, 1004, QStringLiteral("Delta Market"));
            soggetto(0, 1005, QStringLiteral("Zakład Łódź Ωmega"));
            tipoA = tipo(0, QStringLiteral("CLI-A"), QStringLiteral("Rete diretta"));
            const qint64 alfa = nodo(tipoA, 0, 1001);
            const qint64 bar = nodo(tipoA, 0, 1002, {.parent = alfa});
            nodo(tipoA, 0, 1003, {.parent = bar});
            const qint64 delta = nodo(tipoA, 0, 1004);
            nodo(tipoA, 0, 1005, {.parent = delta});
            host.log().setDefaultAnswer(fw::Answer::Abort);
            host.globals().setReportEngineFactory([this] {
                auto engine = std::make_unique<fw::DefaultReportEngine>(QStringLiteral("tester"));
                engine->setInteractive(false);
                engine->setRunMode(fw::ReportEngine::RunMode::Pdf);
                engine->setOutputFile(pdf);
                engine->setReportFolder(reportFolder);
                engine->setPrintValues(QStringLiteral("Mario Rossi"), QStringLiteral("Jiří Dvořák, vendite"),
                                       QStringLiteral("Controllo di fine mese"));
                return engine;
            });
        }

        QString chiave() const { return distinta::Stampa::NomeComputer() + distinta::Stampa::NomeUtente(); }

        // Chooses the level combo's item whose text begins with text; "" empties the combo and
        // any other text becomes the only item.
        void scegliLivello(const QString &text)
        {
            auto *combo = control<QComboBox>(QStringLiteral("CMB_LIVELLO"));
            if (text.isEmpty()) {
                combo->clear();
                return;
            }
            for (int i = 0; i < combo->count(); ++i) {
                if (combo->itemText(i).startsWith(text)) {
                    combo->setCurrentIndex(i);
                    return;
                }
            }
            combo->clear();
            combo->addItem(text);
        }

        void stampa() { QTest::mouseClick(control<QPushButton>(QStringLiteral("CMD_STAMPA")), Qt::LeftButton); }

        // The work rows of a key and company in print order: level text and subject code.
        QStringList righe(const QString &key, int company = 1)
        {
            const db::RecordsetPtr rows = host.database().connection()->openRecordset(
                QStringLiteral("SELECT GD04_LIVELLO, GD04_CLIFOR_CG44 FROM GD04_STDISTINTA WHERE GD04_KEY = '%1' "
                               "AND GD04_DITTA_CG18 = %2 ORDER BY GD04_ID")
                    .arg(key)
                    .arg(company));
            QStringList result;
            for (int row = 0; row < rows->recordCount(); ++row)
                result << rows->valueAt(row, 0).toString() + QLatin1Char(' ') + rows->valueAt(row, 1).toString();
            return result;
        }

        QTemporaryDir folder;
        QString pdf = folder.filePath(QStringLiteral("distinta.pdf"));
        QString reportFolder = fw::DefaultReportEngine::defaultReportFolder();
        qint64 tipoA = 0;
    };

private slots:
    void initTestCase()
    {
        if (!PdfText::toolAvailable())
            QFAIL("pdftotext is missing: scripts/setup-debian.sh installs poppler-utils");
    }

    // With the print dialog, a PDF is proposed under the list's name in the folder of the last
    // one, and the editor says where the PDF went.
    void thePdfIsNamedAfterTheListAndTold()
    {
        Stampa f;
        f.host.globals().setReportEngineFactory([&f] {
            auto engine = std::make_unique<fw::DefaultReportEngine>(QStringLiteral("tester"));
            engine->setSettingsFile(f.folder.filePath(QStringLiteral("stampa.ini")));
            engine->setReportFolder(f.reportFolder);
            return engine;
        });
        f.apri();
        QVERIFY(f.attiva());
        const QString altra = f.folder.filePath(QStringLiteral("altra/vecchia.pdf"));
        QVERIFY(QDir().mkpath(QFileInfo(altra).absolutePath()));
        QStringList proposti;
        const auto rispondi = [&proposti](const QString &percorso) {
            auto *poll = new QTimer;
            QObject::connect(poll, &QTimer::timeout, poll, [poll, &proposti, percorso] {
                for (QWidget *dialog : QApplication::topLevelWidgets()) {
                    if (dialog->objectName() != QLatin1String("FRM_STAMPA") || !dialog->isVisible())
                        continue;
                    poll->deleteLater();
                    poll->stop();
                    dialog->findChild<QRadioButton *>(QStringLiteral("OPT_PDF"))->click();
                    auto *file = dialog->findChild<QLineEdit *>(QStringLiteral("TXT_FILEPDF"));
                    proposti << file->text();
                    if (!percorso.isEmpty())
                        file->setText(percorso);
                    dialog->findChild<QAbstractButton *>(QStringLiteral("CMD_OK"))->click();
                    return;
                }
            });
            poll->start(0);
        };
        rispondi(altra);
        f.stampa();
        rispondi({});
        f.stampa();
        QCOMPARE(proposti.size(), 2);
        QCOMPARE(proposti.last(), f.folder.filePath(QStringLiteral("altra/CLI-A-Rete diretta.pdf")));
        QVERIFY(QFileInfo::exists(proposti.last()));
        QCOMPARE(f.host.log().messageTexts(),
                 (QStringList {QStringLiteral("Distinta stampata nel file \"%1\".").arg(altra),
                               QStringLiteral("Distinta stampata nel file \"%1\".").arg(proposti.last())}));
    }

    void workRowsDownToTheChosenLevel_data()
    {
        QTest::addColumn<QString>("livello");
        QTest::addColumn<QStringList>("righe");
        const QStringList roots = {".1 1001", ".1 1004"};
        QTest::newRow("empty combo: roots") << QString() << roots;
        QTest::newRow("0: roots") << QStringLiteral("0") << roots;
        QTest::newRow("1° livello: two levels")
            << QStringLiteral("1°") << QStringList {".1 1001", "..2 1002", ".1 1004", "..2 1005"};
        QTest::newRow("2: three levels") << QStringLiteral("2")
                                         << QStringList {".1 1001", "..2 1002", "...3 1003", ".1 1004", "..2 1005"};
        QTest::newRow("beyond the depth")
            << QStringLiteral("40") << QStringList {".1 1001", "..2 1002", "...3 1003", ".1 1004", "..2 1005"};
        QTest::newRow("not a number: roots") << QStringLiteral("livello") << roots;
    }

    void workRowsDownToTheChosenLevel()
    {
        QFETCH(QString, livello);
        QFETCH(QStringList, righe);
        Stampa f;
        f.apri();
        f.scegliLivello(livello);
        f.stampa();
        QVERIFY2(f.host.log().isQuiet(), qPrintable(f.host.log().messageTexts().join('\n')));
        QCOMPARE(f.righe(f.chiave()), righe);
        QCOMPARE(f.form->parti().stampa.chiaveStampa(), f.chiave());

        // Every row carries the company, the type, the kind, the node's period and state 6.
        const db::RecordsetPtr rows = f.host.database().connection()->openRecordset(
            QStringLiteral("SELECT DISTINCT GD04_DITTA_CG18, GD04_ID_GD01, GD04_TIPOCF_CG44, GD04_DATAINIZIOVAL, "
                           "GD04_DATAFINEVAL, GD04_ID_WF02 FROM GD04_STDISTINTA"));
        QCOMPARE(rows->recordCount(), 1);
        QCOMPARE(rows->valueAt(0, 0).toInt(), 1);
        QCOMPARE(rows->valueAt(0, 1).toLongLong(), f.tipoA);
        QCOMPARE(rows->valueAt(0, 2).toInt(), 0);
        QCOMPARE(rows->valueAt(0, 3).toDateTime().date(), QDate(2024, 1, 1));
        QCOMPARE(rows->valueAt(0, 4).toDateTime().date(), QDate(2099, 12, 31));
        QCOMPARE(rows->valueAt(0, 5).toInt(), 6);
        QVERIFY(QFileInfo::exists(f.pdf));
    }

    // The rows of an earlier print with the same key go, in this company only; another key's
    // rows stay.
    void anEarlierPrintIsClearedInItsCompanyOnly()
    {
        Stampa f;
        const auto earlier = [&](const QString &key, int company, int code) {
            f.exec(stampastatements::insertWorkRowStatement({key, company, 99, 0, 0, code, {}, {}}));
        };
        earlier(f.chiave(), 2, 7001);
        earlier(f.chiave(), 1, 7002);
        earlier(QStringLiteral("ALTRA-POSTAZIONEaltro"), 1, 7003);
        f.apri();
        f.scegliLivello(QStringLiteral("0"));
        f.stampa();
        QCOMPARE(f.righe(f.chiave()), QStringList({".1 1001", ".1 1004"}));
        QCOMPARE(f.righe(f.chiave(), 2), QStringList {".1 7001"});
        QCOMPARE(f.righe(QStringLiteral("ALTRA-POSTAZIONEaltro")), QStringList {".1 7003"});

        f.stampa(); // the next print replaces its own rows, nothing more
        QCOMPARE(f.righe(f.chiave()), QStringList({".1 1001", ".1 1004"}));
    }

    void anEmptyTreePrintsNothing()
    {
        Stampa f;
        const qint64 vuoto = f.tipo(0, QStringLiteral("CLI-B"), QStringLiteral("Senza nodi"));
        f.apri();
        QVERIFY(f.control<QPushButton>(QStringLiteral("CMD_STAMPA"))->isEnabled());
        f.clicca(QStringLiteral("C%1").arg(vuoto));
        QVERIFY(!f.control<QPushButton>(QStringLiteral("CMD_STAMPA"))->isEnabled());
        QVERIFY(!f.form->parti().stampa.StampaDistinta(QString()));
        f.form->parti().stampa.CMD_STAMPA_Click();
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD04_STDISTINTA")).toInt(), 0);
        QVERIFY(!QFileInfo::exists(f.pdf));
        QVERIFY(f.host.log().isQuiet());

        f.clicca(QStringLiteral("C%1").arg(f.tipoA)); // back on a tree: printable again
        QVERIFY(f.control<QPushButton>(QStringLiteral("CMD_STAMPA"))->isEnabled());
    }

    // A row that cannot be written reaches the error dialog under "Stampa": Ignore goes on with
    // the next node, Abort stops with what was written and prints nothing.
    void aFailingWorkRowGoesToTheErrorDialog()
    {
        Stampa f;
        f.exec(QStringLiteral("CREATE TRIGGER GD04_PIENO BEFORE INSERT ON GD04_STDISTINTA "
                              "WHEN NEW.GD04_CLIFOR_CG44 = 1003 BEGIN SELECT RAISE(ABORT, 'spazio esaurito'); END"));
        f.apri();
        f.scegliLivello(QStringLiteral("2"));
        f.host.log().answerNext(fw::Answer::Ignore);
        f.stampa();
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().at(0).procedure, QStringLiteral("Stampa"));
        QVERIFY(f.host.log().errorDialogs().at(0).databaseErrors.value(0).description.contains(
            QStringLiteral("spazio esaurito")));
        QCOMPARE(f.righe(f.chiave()), QStringList({".1 1001", "..2 1002", ".1 1004", "..2 1005"}));
        QVERIFY(QFileInfo::exists(f.pdf));

        QFile::remove(f.pdf);
        f.host.log().clear();
        f.host.log().answerNext(fw::Answer::Abort);
        f.stampa();
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QCOMPARE(f.righe(f.chiave()), QStringList({".1 1001", "..2 1002"})); // left for the next print
        QVERIFY(!QFileInfo::exists(f.pdf));
    }

    // The PDF holds the list in tree order, each level further right, with the texts of the
    // print dialog and the level in its header.
    void thePdfReadsBackAsTheTree()
    {
        Stampa f;
        f.apri();
        f.scegliLivello(QStringLiteral("1°"));
        f.stampa();
        const PdfText text(f.pdf);
        QVERIFY2(text.isValid(), qPrintable(text.error()));
        QCOMPARE(text.pageCount(), 1);
        const QStringList lines = text.lines(1);
        QCOMPARE(lines.value(0), QStringLiteral("Distinta di Classificazione anagrafiche"));
        QVERIFY2(lines.contains(QStringLiteral("Eseguito da: Mario Rossi Destinato a: Jiří Dvořák, vendite")),
                 qPrintable(lines.join('\n')));
        QVERIFY(lines.contains(QStringLiteral("Fino al livello: 1")));
        QVERIFY(lines.contains(QStringLiteral("Note: Controllo di fine mese")));
        QVERIFY(lines.contains(QStringLiteral("Distinta CLI-A - Rete diretta")));

        QStringList list;
        for (const QString &line : lines) {
            if (line.startsWith(QLatin1Char('.')))
                list << line;
        }
        QCOMPARE(list,
                 QStringList({".1 1001 Alfa Distribuzione S.p.A. Verona VR 01/01/2024 31/12/2099",
                              "..2 1002 Bar dell'Angolo Verona VR 01/01/2024 31/12/2099",
                              ".1 1004 Delta Market Verona VR 01/01/2024 31/12/2099",
                              "..2 1005 Zakład Łódź Ωmega Verona VR 01/01/2024 31/12/2099"}));
        // Each level 3 mm (8.5 points) further right.
        const double indent = text.find(QStringLiteral("..2")).x - text.find(QStringLiteral(".1")).x;
        QVERIFY2(qAbs(indent - 3 * 72 / 25.4) < 0.2, qPrintable(QString::number(indent)));
        QVERIFY(lines.last().endsWith(QStringLiteral("Pagina 1 di 1")));
        QVERIFY(QRegularExpression(QStringLiteral("^Stampato il \\d\\d/\\d\\d/\\d{4} alle \\d\\d:\\d\\d"))
                    .match(lines.last())
                    .hasMatch());
    }

    // Pages carry the column headings, their number and the count; the title opens the first.
    void aLongListRunsOverPages()
    {
        Stampa f;
        for (int code = 2001; code <= 2130; ++code) {
            f.soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
            f.nodo(f.tipoA, 0, code);
        }
        f.apri();
        f.scegliLivello(QStringLiteral("0"));
        f.stampa();
        const PdfText text(f.pdf);
        QVERIFY2(text.isValid(), qPrintable(text.error()));
        QCOMPARE(text.pageCount(), 3);
        for (int page = 1; page <= 3; ++page) {
            const QStringList lines = text.lines(page);
            QCOMPARE(lines.contains(QStringLiteral("Distinta di Classificazione anagrafiche")), page == 1);
            QVERIFY2(
                lines.contains(QStringLiteral("Livello / Codice Ragione sociale Città Prov. Valido dal Valido al")),
                qPrintable(lines.mid(0, 8).join('\n')));
            QVERIFY2(lines.last().endsWith(QStringLiteral("Pagina %1 di 3").arg(page)), qPrintable(lines.last()));
        }
        QStringList codes;
        for (const QString &line : text.allLines()) {
            if (line.startsWith(QStringLiteral(".1 ")))
                codes << line.section(QLatin1Char(' '), 1, 1);
        }
        QCOMPARE(codes.size(), 132);
        QCOMPARE(codes.first(), QStringLiteral("1001"));
        QCOMPARE(codes.last(), QStringLiteral("2130"));
    }

    // What stops the report (no layout, a PDF that cannot be written) reaches the error dialog
    // under "InvocaStampa", naming the file, and nothing is printed.
    void aReportThatCannotBeProducedIsAnError()
    {
        Stampa f;
        QTemporaryDir empty;
        f.reportFolder = empty.path();
        f.apri();
        f.stampa();
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QCOMPARE(f.host.log().errorDialogs().at(0).procedure, QStringLiteral("InvocaStampa"));
        QCOMPARE(f.host.log().errorDialogs().at(0).errors.value(0),
                 QStringLiteral("InvocaStampa: Modello di stampa \"%1/VRAX_DISTINTA.layout\": il file non esiste")
                     .arg(empty.path()));
        QVERIFY(!QFileInfo::exists(f.pdf));

        f.host.log().clear();
        f.reportFolder = fw::DefaultReportEngine::defaultReportFolder();
        f.pdf = f.folder.filePath(QStringLiteral("manca/distinta.pdf"));
        f.stampa();
        QCOMPARE(f.host.log().errorDialogs().size(), 1);
        QVERIFY2(f.host.log().errorDialogs().at(0).errors.value(0).startsWith(
                     QStringLiteral("InvocaStampa: Impossibile scrivere il file PDF \"%1\"").arg(f.pdf)),
                 qPrintable(f.host.log().errorDialogs().at(0).errors.value(0)));
    }

    // The print without a window chooses the type by its code, in any case, and refuses a code
    // the company does not have.
    void aPrintWithoutWindowNamesTheTypeByCode()
    {
        Stampa f;
        f.tipo(0, QStringLiteral("CLI-B"), QStringLiteral("Senza nodi"));
        QVERIFY(f.entry->printList(QStringLiteral("cli-a"), 0, std::nullopt));
        QCOMPARE(f.righe(f.chiave()), QStringList({".1 1001", ".1 1004"}));
        QVERIFY(f.entry->printList(QStringLiteral("CLI-A"), std::nullopt, std::nullopt)); // the whole tree
        QCOMPARE(f.righe(f.chiave()).size(), 5);
        QVERIFY(!f.entry->form()); // no window was opened

        QVERIFY(!f.entry->printList(QStringLiteral("CLI-Z"), 2, std::nullopt));
        QVERIFY(!f.entry->printList(QStringLiteral("CLI-B"), 2, std::nullopt));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("La distinta \"CLI-Z\" non esiste nella ditta 1."),
                              QStringLiteral("La distinta \"CLI-B\" non ha nodi da stampare.")}));
        QCOMPARE(f.righe(f.chiave()).size(), 5);
    }
};

QTEST_MAIN(TestDistintaStampa)
#include "tst_distinta_stampa.moc"
