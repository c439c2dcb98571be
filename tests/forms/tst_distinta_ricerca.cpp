#include "data/ricercastatements.h"
#include "tests/forms/distintafixture.h"

#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>

class TestDistintaRicerca : public QObject
{
    Q_OBJECT

    // Customer tree A01: 30 "Bar Sport" with child 10 "Bar dell'Angolo", and root 20; supplier
    // tree F01 with supplier 10. A node of company 2 must never show.
    struct Ricerca : DistintaFixture
    {
        Ricerca()
        {
            soggetto(0, 10, QStringLiteral("Bar dell'Angolo"));
            soggetto(0, 20, QStringLiteral("Pasticceria Rossi"));
            soggetto(0, 30, QStringLiteral("Bar Sport"));
            soggetto(1, 10, QStringLiteral("Forniture Bianchi"));
            soggetto(0, 30, QStringLiteral("Bar di un'altra ditta"), {}, 2);
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Bar e locali"));
            f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori merci"));
            const qint64 sport = nodo(a01, 0, 30);
            nodo(a01, 0, 10, {.parent = sport});
            nodo(a01, 0, 20);
            nodo(f01, 1, 10);
            nodo(a01, 0, 30, {.company = 2});
        }

        void cercaNellAlbero(const QString &text, const QString &mode)
        {
            control<QLineEdit>(QStringLiteral("TXTCERCA"))->setText(text);
            QMenu *menu = control<QToolButton>(QStringLiteral("CMD_CERCA"))->menu();
            for (QAction *action : menu->actions()) {
                if (action->data().toString() == mode)
                    action->trigger();
            }
        }

        void cercaOvunque(const QString &code, const QString &name)
        {
            control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->setCurrentIndex(2);
            control<QLineEdit>(QStringLiteral("TXT_CODICE"))->setText(code);
            control<QLineEdit>(QStringLiteral("TXT_RAGIONESOC"))->setText(name);
            control<QPushButton>(QStringLiteral("CMD_RICERCA"))->click();
        }

        fw::RecordsetGrid *risultati() const { return control<fw::RecordsetGrid>(QStringLiteral("GRD_CERCADISTINTA")); }
        QVariantList risultato(const QString &field) const { return colonna(risultati()->recordset(), field); }
        // The rows come in the database's order: compared sorted.
        QList<int> ordinati(const QString &field) const
        {
            QList<int> values;
            for (const QVariant &value : risultato(field))
                values << value.toInt();
            std::sort(values.begin(), values.end());
            return values;
        }

        qint64 a01 = 0, f01 = 0;
    };

private slots:
    void inTreeSearchByNameAndCode()
    {
        Ricerca f;
        f.apri();
        QMenu *menu = f.control<QToolButton>(QStringLiteral("CMD_CERCA"))->menu();
        QCOMPARE(menu->actions().size(), 2);
        QCOMPARE(menu->actions().at(0)->text(), QStringLiteral("Rag. Sociale"));
        QCOMPARE(menu->actions().at(1)->data().toString(), QStringLiteral("Codice"));

        // An apostrophe in the name, with Enter in the search box; repeating finds the same node.
        auto *box = f.control<QLineEdit>(QStringLiteral("TXTCERCA"));
        box->setText(QStringLiteral("dell'Ang"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));

        f.cercaNellAlbero(QStringLiteral("20"), QStringLiteral("Codice"));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("20"));
        QCOMPARE(f.form->nodi()->value(QStringLiteral("GD02_CLIFOR_CG44")).toInt(), 20);

        // Letters in a code move nothing; a name that matches nothing leaves the recordset past
        // its end and the tree where it was; neither says a word.
        f.cercaNellAlbero(QStringLiteral("2x"), QStringLiteral("Codice"));
        QCOMPARE(f.form->nodi()->value(QStringLiteral("GD02_CLIFOR_CG44")).toInt(), 20);
        f.cercaNellAlbero(QStringLiteral("Osteria"), QStringLiteral("RagSoc"));
        QVERIFY(f.form->nodi()->eof());
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("30")); // moved to the first row before looking
        f.cercaNellAlbero(QString(), QStringLiteral("RagSoc"));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("30"));
        QVERIFY(f.host.log().isQuiet());
    }

    // Every search starts again from the first row: an empty name matches that row, wherever
    // the focus was; a code matches only the whole code, never a part of it.
    void inTreeSearchesStartFromTheFirstRow()
    {
        Ricerca f;
        f.apri();
        f.cercaNellAlbero(QStringLiteral("20"), QStringLiteral("Codice"));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("20"));

        f.cercaNellAlbero(QString(), QStringLiteral("RagSoc"));
        QCOMPARE(f.form->nodi()->currentRow(), 0);
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("30"));

        f.cercaNellAlbero(QStringLiteral("Bar"), QStringLiteral("RagSoc")); // "Bar Sport" comes first
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("30"));
        f.cercaNellAlbero(QStringLiteral("0"), QStringLiteral("Codice")); // in 10, 20 and 30, equal to none
        QVERIFY(f.form->nodi()->eof());
        f.cercaNellAlbero(QStringLiteral(" 10 "), QStringLiteral("Codice"));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        f.cercaNellAlbero(QStringLiteral("pasticceria"), QStringLiteral("RagSoc")); // any case
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("20"));
        QVERIFY(f.host.log().isQuiet());
    }

    // Enter in the code box runs the cross-list search by code alone.
    void enterInTheCodeBoxSearchesByCode()
    {
        Ricerca f;
        f.apri();
        f.control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->setCurrentIndex(2);
        auto *code = f.control<QLineEdit>(QStringLiteral("TXT_CODICE"));
        code->setText(QStringLiteral("30"));
        QTest::keyClick(code, Qt::Key_Return);
        QCOMPARE(f.risultato(QStringLiteral("ANAGRAFICA")), QVariantList({QStringLiteral("30-Bar Sport")}));
        QCOMPARE(f.risultato(QStringLiteral("DITTA")), QVariantList({1})); // not the other company's 30

        code->setText(QStringLiteral("99"));
        QTest::keyClick(code, Qt::Key_Return);
        QCOMPARE(f.risultati()->model()->rowCount(), 0);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList({QStringLiteral("La ricerca non ha prodotto alcun risultato.")}));
    }

    void searchAcrossEveryClassification()
    {
        Ricerca f;
        f.apri();
        QTemporaryDir folder;
        const QString tracePath = folder.filePath(QStringLiteral("trace.sql"));
        qputenv("DISTINTA_SQL_TRACE", tracePath.toLocal8Bit());
        f.cercaOvunque(QString(), QStringLiteral("dell'Angolo"));
        qunsetenv("DISTINTA_SQL_TRACE");
        QFile trace(tracePath);
        QVERIFY(trace.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(trace.readAll()),
                 ricercastatements::crossListSearchQuery(1, QString(), QStringLiteral("dell'Angolo"))
                     + QStringLiteral("\nGO\n"));
        QCOMPARE(f.risultato(QStringLiteral("ANAGRAFICA")), QVariantList({QStringLiteral("10-Bar dell'Angolo")}));
        QCOMPARE(f.risultato(QStringLiteral("DISTINTA")), QVariantList({QStringLiteral("A01-Bar e locali")}));

        fw::RecordsetGrid *grid = f.risultati();
        QCOMPARE(grid->model()->columnCount(), 3);
        QCOMPARE(grid->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Vai"));
        QCOMPARE(grid->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Anagrafica"));
        QCOMPARE(grid->model()->headerData(2, Qt::Horizontal).toString(), QStringLiteral("Distinta"));

        // A code that is not a number adds no filter: alone it lists every node of the company,
        // with a name it is a search by name.
        f.cercaOvunque(QStringLiteral("abc"), QString());
        QCOMPARE(f.risultato(QStringLiteral("ID")).size(), 4);
        f.cercaOvunque(QStringLiteral("abc"), QStringLiteral("Bar"));
        QCOMPARE(f.ordinati(QStringLiteral("CLIFOR")), QList<int>({10, 30}));
        f.cercaOvunque(QStringLiteral("10"), QString());
        QCOMPARE(f.ordinati(QStringLiteral("TIPOCF")), QList<int>({0, 1}));
        QVERIFY(f.host.log().isQuiet());

        // Both boxes empty: the grid empties and the user is told.
        f.cercaOvunque(QString(), QString());
        QCOMPARE(grid->model()->rowCount(), 0);
        QCOMPARE(f.host.log().messages().size(), 1);
        QCOMPARE(f.host.log().messages().first().text, QStringLiteral("La ricerca non ha prodotto alcun risultato."));
        QCOMPARE(f.host.log().messages().first().style, 48);

        // Enter in either box searches as the button does.
        auto *name = f.control<QLineEdit>(QStringLiteral("TXT_RAGIONESOC"));
        name->setText(QStringLiteral("Pasticceria"));
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(f.risultato(QStringLiteral("CLIFOR")), QVariantList({20}));
    }

    // "Vai", a double click or Enter on a result opens the row's type and focuses the subject's
    // node in it.
    void theJumpOpensTheTypeAndFocusesTheNode()
    {
        Ricerca f;
        f.apri();
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("30"));
        const auto vai = [&](int row) {
            fw::RecordsetGrid *grid = f.risultati();
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                              grid->visualRect(grid->model()->index(row, 0)).center());
        };

        f.cercaOvunque(QString(), QStringLiteral("Forniture"));
        {
            fw::RecordsetGrid *grid = f.risultati();
            const QPoint cell = grid->visualRect(grid->model()->index(0, 1)).center();
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell);
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell);
        }
        QCOMPARE(f.selettore()->currentItem(), f.voce(QStringLiteral("F%1").arg(f.f01)));
        QCOMPARE(f.form->parti().albero.tipoSoggetto(), 1);
        QCOMPARE(f.titolo(), QStringLiteral("FORNITORI       DISTINTA F01-Fornitori merci      (Divisioni: tutte)"));
        QCOMPARE(f.codiciAlbero(), QStringList({"10"}));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXTCERCA"))->text(), QStringLiteral("10"));
        QCOMPARE(f.form->parti().anagrafiche.lista()->recordCount(), 1); // the suppliers' list

        f.cercaOvunque(QString(), QStringLiteral("dell'Angolo"));
        f.risultati()->setCurrentIndex(f.risultati()->model()->index(0, 2));
        QTest::keyClick(f.risultati(), Qt::Key_Return);
        QCOMPARE(f.form->parti().albero.tipoSoggetto(), 0);
        QCOMPARE(f.codiciAlbero(), QStringList({"30", ".10", "20"}));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("10"));
        QVERIFY(f.host.log().isQuiet());

        // A row whose type text no longer matches leaves the selection where it was.
        f.exec(QStringLiteral("UPDATE GD01_TIPODISTINTA SET GD01_DESCR = 'Rinominata' WHERE GD01_ID = %1").arg(f.f01));
        f.cercaOvunque(QString(), QStringLiteral("Forniture"));
        vai(0);
        QCOMPARE(f.selettore()->currentItem(), f.voce(QStringLiteral("C%1").arg(f.a01)));
        QCOMPARE(f.form->parti().albero.tipoSoggetto(), 1);
        QCOMPARE(f.albero()->count(), 0); // the customer type read as a supplier type
    }
};

QTEST_MAIN(TestDistintaRicerca)
#include "tst_distinta_ricerca.moc"
