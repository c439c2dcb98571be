#include "framework/treelist/treelistmodel.h"
#include "tests/forms/distintafixture.h"

#include <QTemporaryDir>
#include <QToolButton>

// The list as of a date: the links valid that day, both ends of a period included, with the
// ancestors that carry them greyed and marked; levels, header and export follow what is shown.
class TestDistintaAllaData : public QObject
{
    Q_OBJECT

    // Type A01: root 10 for 2024, with 20 from 2025 on and 30 in June 2024 under it, 40 under
    // 20 from 2025; root 50 in 2023 only.
    struct Storia : DistintaFixture
    {
        Storia()
        {
            for (auto [code, name] :
                 {std::pair {10, "Alfa"}, {20, "Beta"}, {30, "Gamma"}, {40, "Delta"}, {50, "Epsilon"}})
                soggetto(0, code, QString::fromLatin1(name));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Rete"));
            n10 = nodo(a01, 0, 10, {.start = QStringLiteral("2024-01-01"), .end = QStringLiteral("2024-12-31")});
            n20 = nodo(a01, 0, 20, {.parent = n10, .start = QStringLiteral("2025-01-01")});
            nodo(a01, 0, 30,
                 {.parent = n10, .start = QStringLiteral("2024-06-01"), .end = QStringLiteral("2024-06-30")});
            nodo(a01, 0, 40, {.parent = n20, .start = QStringLiteral("2025-01-01")});
            nodo(a01, 0, 50, {.start = QStringLiteral("2023-01-01"), .end = QStringLiteral("2023-12-31")});
            apri();
        }
        void data(const QString &text)
        {
            auto *field = control<QLineEdit>(QStringLiteral("TXT_DATAVALIDITA"));
            field->setText(text);
            emit field->editingFinished();
        }
        QString nome(int row) const
        {
            return albero()->displayText(albero()->nodeAt(row), QStringLiteral("RagioneSociale"));
        }
        QColor colore(int row) const
        {
            const QModelIndex index = albero()->model()->indexOfNode(row, 1);
            return albero()->model()->data(index, Qt::ForegroundRole).value<QColor>();
        }
        qint64 a01 = 0, n10 = 0, n20 = 0;
    };

private slots:
    void periodsAreClosedAtBothEnds()
    {
        Storia f;
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".20", "..40", ".30", "50"}));
        f.data(QStringLiteral("31/12/2024")); // the last day of 10: 30 is over, 20 not begun
        QCOMPARE(f.codiciAlbero(), QStringList({"10"}));
        f.data(QStringLiteral("1/6/2024")); // the first day of 30
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".30"}));
        f.data(QStringLiteral("30/06/2024"));
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".30"}));
        QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_DATAVALIDITA"))->text(), QStringLiteral("30/06/2024"));
        f.data(QStringLiteral("01/07/2024"));
        QCOMPARE(f.codiciAlbero(), QStringList({"10"}));
        QCOMPARE(f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"))->count(), 1);
        QCOMPARE(f.titolo(),
                 QStringLiteral("CLIENTI       DISTINTA A01-Rete alla data 01/07/2024      (Divisioni: tutte)"));

        f.data(QStringLiteral("01/01/2022")); // nothing that day
        QCOMPARE(f.albero()->count(), 0);
        QCOMPARE(f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"))->count(), 0);
        QVERIFY(!f.control<QToolButton>(QStringLiteral("CMD_ESPORTA"))->isEnabled());

        f.data(QString()); // empty: the whole list again
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".20", "..40", ".30", "50"}));
        QCOMPARE(f.titolo(), QStringLiteral("CLIENTI       DISTINTA A01-Rete      (Divisioni: tutte)"));
        QVERIFY(f.host.log().isQuiet());
    }

    // 20 and 40 are valid in 2025 under 10, which is not: 10 stays, greyed and marked, and the
    // levels count it.
    void anInvalidParentCarriesItsValidChildren()
    {
        Storia f;
        f.data(QStringLiteral("01/01/2025"));
        QCOMPARE(f.codiciAlbero(), QStringList({"10", ".20", "..40"}));
        QCOMPARE(f.nome(0), QStringLiteral("Alfa  (non valido al 01/01/2025)"));
        QCOMPARE(f.nome(1), QStringLiteral("Beta"));
        QVERIFY(f.colore(0).isValid());
        QVERIFY(!f.colore(1).isValid());
        QVERIFY(f.form->parti().albero.allaData().nodoNonValido(f.n10));
        QCOMPARE(f.didascaliaLivelli(), QStringLiteral("COMPRIMI LIVELLO 3"));

        // Editing stays possible and is checked as usual: the node's own row is written.
        f.focalizza(20);
        QVERIFY(
            f.albero()->setValue(f.albero()->focusedNode(), QStringLiteral("trGD02_DESCR"), QStringLiteral("nuova")));
        QCOMPARE(
            f.scalar(QStringLiteral("SELECT GD02_DESCR FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n20)).toString(),
            QStringLiteral("nuova"));
        // Nothing hidden was written: the rows set aside are all still there.
        QCOMPARE(f.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA")).toInt(), 5);
    }

    void aBadDateChangesNothing()
    {
        Storia f;
        f.data(QStringLiteral("01/01/2025"));
        f.host.log().clear();
        for (const QString &bad :
             {QStringLiteral("31/02/2024"), QStringLiteral("domani"), QStringLiteral("1/1/10000")}) {
            f.data(bad);
            QCOMPARE(f.host.log().messageTexts(),
                     QStringList(QStringLiteral("Data non valida: \"%1\". Scrivere la data come gg/mm/aaaa, "
                                                "per esempio 01/01/2024.")
                                     .arg(bad)));
            QCOMPARE(f.control<QLineEdit>(QStringLiteral("TXT_DATAVALIDITA"))->text(), QStringLiteral("01/01/2025"));
            QCOMPARE(f.codiciAlbero(), QStringList({"10", ".20", "..40"}));
            QCOMPARE(f.form->parti().albero.allaData().data(), std::optional<QDate>(QDate(2025, 1, 1)));
            f.host.log().clear();
        }
    }

    // The export writes what is shown: as of the date, down to the chosen level.
    void theExportFollowsTheDateAndTheLevel()
    {
        Storia f;
        f.data(QStringLiteral("01/01/2025"));
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("rete.csv"));
        QVERIFY(f.form->parti().esportazione.EsportaDistinta(path, fw::ExportFile::Format::Csv,
                                                             QStringLiteral("1° livello")));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 3);
        QVERIFY2(lines.at(1).startsWith(QStringLiteral("1;10;Alfa  (non valido al 01/01/2025);01/01/2024;31/12/2024;")),
                 qPrintable(lines.at(1)));
        QVERIFY2(lines.at(2).startsWith(QStringLiteral("2;20;Beta;01/01/2025;31/12/2099;")), qPrintable(lines.at(2)));
    }
};

QTEST_MAIN(TestDistintaAllaData)
#include "tst_distinta_alladata.moc"
