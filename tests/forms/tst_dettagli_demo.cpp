#include "tests/forms/distintafixture.h"

#include "forms/parametri/frmgd_parametri.h"
#include "framework/gridnavigator.h"

#include <QDir>
#include <QTableWidget>

// On the demo company: a customer node with campaigns of its own and conditions shows its
// master data, its campaigns and its conditions; the parameters form changes the dates that the
// next insertion uses. With DISTINTA_SHOTS_DIR set, pictures of the three pages and of the
// parameters form are saved there.
class TestDettagliDemo : public QObject
{
    Q_OBJECT

    static void foto(QWidget *widget, const QString &name)
    {
        const QString folder = qEnvironmentVariable("DISTINTA_SHOTS_DIR");
        if (folder.isEmpty())
            return;
        QCoreApplication::processEvents();
        QVERIFY(widget->grab().save(QDir(folder).filePath(name)));
    }

private slots:
    void aCustomerShowsItsDetailsAndTheParametersSetTheNextDates()
    {
        DistintaFixture f(TestDatabase::DemoData);
        f.apri();
        f.form->show();
        f.attendi();
        const QVariant found = f.scalar(QStringLiteral(
            "SELECT MIN(GD02_ID) FROM GD02_DISTINTA INNER JOIN GD01_TIPODISTINTA ON GD01_ID = GD02_ID_GD01 "
            "WHERE GD01_DITTA_CG18 = 1 AND GD01_INDTIPOSOGG = 0 AND GD01_IDDIV_CO1A IS NULL AND GD02_INDEREPROMO = 2 "
            "AND EXISTS (SELECT 1 FROM GD12_PROMO WHERE GD12_ID_GD02 = GD02_ID) "
            "AND EXISTS (SELECT 1 FROM GDVISTA03_SOGGETTICOND WHERE ID = GD02_ID OR (ID = 0 AND CondizioneTipoCF = 0 "
            "AND CondizioneCodIntest = GD02_CLIFOR_CG44 AND CondizioneFin >= GD02_DATAINIZIOVAL "
            "AND CondizioneIni <= GD02_DATAFINEVAL))"));
        QVERIFY2(!found.isNull(), "the demo has a customer node with campaigns and conditions");
        f.clicca(QStringLiteral("C%1").arg(
            f.scalar(
                 QStringLiteral("SELECT GD02_ID_GD01 FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(found.toLongLong()))
                .toLongLong()));
        f.attendi();
        const qint64 node = found.toLongLong();
        const int code =
            f.scalar(QStringLiteral("SELECT GD02_CLIFOR_CG44 FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(node)).toInt();
        for (fw::TreeListNode n = f.albero()->firstNode(); n.isValid(); n = n.next()) {
            if (f.form->nodi()->valueAt(n.row(), f.form->nodi()->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong()
                == node)
                f.albero()->setFocusedNode(n);
        }
        f.attendi();
        QCOMPARE(f.codiceFocalizzato(), QString::number(code));

        auto *pages = f.control<QTabWidget>(QStringLiteral("TAB_DETTAGLIOSOGGETTO"));
        auto *sheet = f.control<QTableWidget>(QStringLiteral("GRD_DATIANAGRAFICI"));
        QVERIFY(sheet->rowCount() > 1);
        QVERIFY(sheet->item(0, 1)->text().startsWith(QString::number(code) + QLatin1Char(' ')));
        foto(f.form, QStringLiteral("dettagli-anagrafica.png"));

        pages->setCurrentIndex(1);
        f.attendi();
        QVERIFY(f.form->parti().dettagli.promozioni().promozioni()->recordCount() > 0);
        const QVariantList ticks = DistintaFixture::colonna(f.form->parti().dettagli.promozioni().promozioni(),
                                                            QStringLiteral("SELEZ"));
        QVERIFY(ticks.contains(QVariant(1)));
        foto(f.form, QStringLiteral("dettagli-promozioni.png"));

        pages->setCurrentIndex(2);
        f.attendi();
        QVERIFY(f.form->parti().dettagli.condizioni().condizioniFuoriFattura()->recordCount() > 0);
        foto(f.form, QStringLiteral("dettagli-condizioni.png"));

        // Fixed dates for the next links.
        f.premi(QStringLiteral("CMD_PARAMETRI"));
        f.attendi();
        FRMGD_PARAMETRI *p = f.form->parti().parametri.formParametri();
        QVERIFY(p);
        p->show();
        f.attendi();
        auto *rule = p->findChild<QComboBox *>(QStringLiteral("CMB_GD03_TIPOCARICODATA"));
        rule->setCurrentIndex(rule->findData(1));
        emit rule->activated(rule->currentIndex());
        p->findChild<QLineEdit *>(QStringLiteral("TXT_GD03_DATAINIZIOVAL"))->setText(QStringLiteral("01/07/2026"));
        p->findChild<QLineEdit *>(QStringLiteral("TXT_GD03_DATAFINEVAL"))->setText(QStringLiteral("30/06/2027"));
        foto(p, QStringLiteral("parametri.png"));
        p->findChild<fw::GridNavigator *>(QStringLiteral("GRIDNAV_PARAMETRI"))->press(QStringLiteral("Salva"));
        QVERIFY(p->unload());
        f.attendi();
        QCOMPARE(f.form->parametri().tipoCaricaData, short(1));
        QCOMPARE(f.form->parametri().dataFissaInizio, QDate(2026, 7, 1));
        QCOMPARE(f.form->parametri().dataFissaFine, QDate(2027, 6, 30));
        QVERIFY(f.host.log().isQuiet());
    }
};

QTEST_MAIN(TestDettagliDemo)
#include "tst_dettagli_demo.moc"
