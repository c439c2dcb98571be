#include "tests/forms/distintafixture.h"

#include "framework/recordsetgridmodel.h"
#include "framework/columnsizing.h"

class TestDistintaAnagrafiche : public QObject
{
    Q_OBJECT

    // Customers 30, 10 and 20 written out of order; a supplier 10. Customer 20 sits in the
    // division type D01 and has an override for its division; customer 10 has none.
    struct Soggetti : DistintaFixture
    {
        Soggetti()
        {
            exec(QStringLiteral("INSERT INTO CG62_CONDPAGDES VALUES ('RB30', 'Ricevuta bancaria 30 gg')"));
            exec(QStringLiteral("INSERT INTO CG62_CONDPAGDES VALUES ('BB60', 'Bonifico 60 gg')"));
            soggetto(0, 30, QStringLiteral("Gamma"));
            soggetto(0, 10, QStringLiteral("Alfa"), QStringLiteral("RB30"));
            soggetto(0, 20, QStringLiteral("Beta"), QStringLiteral("RB30"));
            soggetto(1, 10, QStringLiteral("Fornitore uno"));
            soggetto(0, 40, QStringLiteral("Altra ditta"), {}, 2);
            for (int code : {10, 20})
                exec(QStringLiteral("INSERT INTO MG19_CLIFORVA (MG19_DITTA_CG18, MG19_TIPOCF_CG44, MG19_CLIFOR_CG44, "
                                    "MG19_ZONA, MG19_AREA) VALUES (1, 0, %1, 'Z1', 'A1')")
                         .arg(code));
            nord = divisione(QStringLiteral("N"), QStringLiteral("Nord"));
            exec(QStringLiteral("INSERT INTO CO1D_CLIFORDIV (CO1D_DITTA_CG18, CO1D_TIPOCF_CG44, CO1D_CLIFOR_CG44, "
                                "CO1D_IDDIV_CO1A, CO1D_CODPAG_CG62, CO1D_ZONA) VALUES (1, 0, 20, %1, 'BB60', 'Z2')")
                     .arg(nord));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
            d01 = tipo(0, QStringLiteral("D01"), QStringLiteral("Clienti del nord"), nord);
            f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori"));
            nodo(d01, 0, 20);
            nodo(f01, 1, 10);
        }

        fw::RecordsetGrid *griglia() const
        {
            return control<fw::RecordsetGrid>(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
        }
        QVariantList valori(const QString &field) const { return colonna(form->parti().anagrafiche.lista(), field); }
        QVariant valore(int code, const QString &field) const
        {
            const QVariantList codes = valori(QStringLiteral("Codice"));
            const int row = int(codes.indexOf(QVariant(code)));
            return row < 0 ? QVariant() : valori(field).value(row);
        }

        qint64 nord = 0, a01 = 0, d01 = 0, f01 = 0;
    };

private slots:
    void listOfTheKindOrderedByCodeWithPresence()
    {
        Soggetti f;
        f.apri();
        f.paginaAnagrafiche();

        QCOMPARE(f.valori(QStringLiteral("Codice")), QVariantList({10, 20, 30}));
        // 20 sits in another tree of the same kind; supplier 10 does not make customer 10 present.
        QCOMPARE(f.valori(QStringLiteral("AssociatoInDistinta")), QVariantList({0, 1, 0}));
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({0, 0, 0}));
        QCOMPARE(f.valore(10, QStringLiteral("DescPagamento")).toString(), QStringLiteral("Ricevuta bancaria 30 gg"));
        QCOMPARE(f.valore(20, QStringLiteral("Zona")).toString(), QStringLiteral("Z1"));
        QCOMPARE(f.valore(30, QStringLiteral("Ragione sociale")).toString(), QStringLiteral("Gamma"));

        fw::RecordsetGrid *grid = f.griglia();
        QCOMPARE(grid->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Sel."));
        QCOMPARE(grid->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Pres."));
        QCOMPARE(grid->model()->headerData(3, Qt::Horizontal).toString(), QStringLiteral("Ragione sociale"));
        QCOMPARE(grid->model()->columnCount(), 19);
        // "Pres." is a mark to read, not a box to tick.
        QCOMPARE(grid->model()->index(1, 1).data().toString(), QStringLiteral("\u2713"));
        QCOMPARE(grid->model()->index(0, 1).data().toString(), QString());
        QVERIFY(!grid->model()->index(1, 1).data(Qt::CheckStateRole).isValid());
        QCOMPARE(grid->model()->index(0, 0).data(Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 255, 153));
        QVERIFY(grid->model()->flags(grid->model()->index(0, 0)) & Qt::ItemIsUserCheckable);
        for (int column = 1; column < grid->model()->columnCount(); ++column) {
            const Qt::ItemFlags flags = grid->model()->flags(grid->model()->index(0, column));
            QVERIFY2(!(flags & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)), qPrintable(QString::number(column)));
        }
        QCOMPARE(grid->columnWidth(3), fw::twipsToPixels(4500, grid->logicalDpiX()));

        // A supplier type lists the suppliers.
        f.control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->setCurrentIndex(0);
        f.clicca(QStringLiteral("F%1").arg(f.f01));
        f.paginaAnagrafiche();
        QCOMPARE(f.valori(QStringLiteral("Codice")), QVariantList({10}));
        QCOMPARE(f.valori(QStringLiteral("AssociatoInDistinta")), QVariantList({1}));
        QVERIFY(f.host.log().isQuiet());
    }

    void divisionTypeTakesTheOverridesAndKeepsEverySubject()
    {
        Soggetti f;
        f.apri();
        f.clicca(QStringLiteral("C%1").arg(f.d01));
        f.paginaAnagrafiche();

        QCOMPARE(f.valori(QStringLiteral("Codice")), QVariantList({10, 20, 30}));
        QCOMPARE(f.valore(20, QStringLiteral("CodPagamento")).toString(), QStringLiteral("BB60"));
        QCOMPARE(f.valore(20, QStringLiteral("DescPagamento")).toString(), QStringLiteral("Bonifico 60 gg"));
        QCOMPARE(f.valore(20, QStringLiteral("Zona")).toString(), QStringLiteral("Z2"));
        QCOMPARE(f.valore(20, QStringLiteral("Area")).toString(), QStringLiteral("A1")); // no override: its own
        QCOMPARE(f.valore(10, QStringLiteral("CodPagamento")).toString(), QStringLiteral("RB30"));
        QCOMPARE(f.valore(10, QStringLiteral("Zona")).toString(), QStringLiteral("Z1"));
        QVERIFY(f.host.log().isQuiet());
    }

    void aRootChosenAsksForAType()
    {
        Soggetti f;
        f.apri();
        f.clicca(QStringLiteral("P0"));
        f.paginaAnagrafiche();
        QCOMPARE(f.host.log().messages().size(), 1);
        const ScriptedLogService::Message message = f.host.log().messages().first();
        QCOMPARE(message.text, QStringLiteral("Occorre selezionare la distinta da modificare."));
        QCOMPARE(message.title, QStringLiteral("Attenzione"));
        QCOMPARE(message.style, 48);
        QVERIFY(!f.form->parti().anagrafiche.lista());
        QCOMPARE(f.griglia()->model()->rowCount(), 0);
    }

    // The "Sel." heading ticks every subject, then clears them; a rebuild clears the ticks
    // without resetting the toggle.
    void selectAllToggles()
    {
        Soggetti f;
        f.apri();
        f.paginaAnagrafiche();
        fw::RecordsetGrid *grid = f.griglia();
        QHeaderView *header = grid->horizontalHeader();
        const QPoint selHeading(header->sectionViewportPosition(0) + header->sectionSize(0) / 2, header->height() / 2);
        const auto integers = [](const QVariantList &values) {
            return std::all_of(values.cbegin(), values.cend(), [](const QVariant &value) {
                return value.typeId() == QMetaType::Int || value.typeId() == QMetaType::LongLong;
            });
        };

        f.form->parti().anagrafiche.lista()->moveLast();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, selHeading);
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({1, 1, 1}));
        QVERIFY(integers(f.valori(QStringLiteral("Seleziona"))));
        QCOMPARE(f.form->parti().anagrafiche.lista()->currentRow(), 0);
        QCOMPARE(grid->model()->index(2, 0).data(Qt::CheckStateRole).value<Qt::CheckState>(), Qt::Checked);

        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, selHeading);
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({0, 0, 0}));
        QVERIFY(integers(f.valori(QStringLiteral("Seleziona"))));

        // Other headings do nothing; a tick by hand writes 1.
        const QPoint codeHeading(header->sectionViewportPosition(2) + 5, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, codeHeading);
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({0, 0, 0}));
        QVERIFY(grid->model()->setData(grid->model()->index(1, 0), Qt::Checked, Qt::CheckStateRole));
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({0, 1, 0}));

        f.form->CaricaAnagraficheDistinta();
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({0, 0, 0}));
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, selHeading);
        QCOMPARE(f.valori(QStringLiteral("Seleziona")), QVariantList({1, 1, 1}));
        QVERIFY(f.host.log().isQuiet());
    }
};

QTEST_MAIN(TestDistintaAnagrafiche)
#include "tst_distinta_anagrafiche.moc"
