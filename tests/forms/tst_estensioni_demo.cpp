#include "framework/treelist/treelistnodemover.h"
#include "framework/treelist/treelistview.h"
#include "framework/treelist/treelistmodel.h"
#include "tests/forms/distintafixture.h"
#include "tests/support/xlsxsheet.h"

#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QTemporaryDir>

// On the demo company: the list as of a past date, a branch moved by drag and drop and back
// from the keyboard, and the workbook of what is shown, read back. With DISTINTA_SHOTS_DIR set,
// pictures of the editor and a text picture of the workbook's rows are saved there.
class TestEstensioniDemo : public QObject
{
    Q_OBJECT

    static QString cartella() { return qEnvironmentVariable("DISTINTA_SHOTS_DIR"); }

    static void foto(QWidget *widget, const QString &name)
    {
        if (cartella().isEmpty())
            return;
        QCoreApplication::processEvents();
        QVERIFY(widget->grab().save(QDir(cartella()).filePath(name)));
    }

    static QDate data(const fw::TreeListNode &node, const QString &column)
    {
        const QVariant value = node.value(column);
        return value.metaType().id() == QMetaType::QDateTime ? value.toDateTime().date() : value.toDate();
    }

private slots:
    void aPastDateAMoveAndTheWorkbook()
    {
        DistintaFixture f(TestDatabase::DemoData);
        f.apri();
        // The Ho.Re.Ca. channel: a branch head whose link ended with 2022 keeps children linked
        // for good.
        const qint64 horeca = f.scalar(QStringLiteral("SELECT GD01_ID FROM GD01_TIPODISTINTA WHERE GD01_DITTA_CG18 = 1 "
                                                      "AND GD01_CODICE = 'CLI-HOR'"))
                                  .toLongLong();
        f.clicca(QStringLiteral("C%1").arg(horeca));
        const int whole = f.albero()->count();
        QVERIFY(whole > 20);

        // ---- as of 1 January 2023: every node shown is valid that day or carries one that is
        auto *field = f.control<QLineEdit>(QStringLiteral("TXT_DATAVALIDITA"));
        field->setText(QStringLiteral("01/01/2023"));
        emit field->editingFinished();
        const QDate day(2023, 1, 1);
        const int shown = f.albero()->count();
        QVERIFY(shown > 0 && shown < whole);
        int marked = 0;
        for (fw::TreeListNode node = f.albero()->firstNode(); node.isValid(); node = node.next()) {
            const bool valid = data(node, QStringLiteral("trGD02_DATAINIZIOVAL")) <= day
                && day <= data(node, QStringLiteral("trGD02_DATAFINEVAL"));
            const bool isMarked = node.displayText(QStringLiteral("RagioneSociale"))
                                      .endsWith(QStringLiteral("(non valido al 01/01/2023)"));
            QCOMPARE(isMarked, !valid);
            if (!valid) {
                ++marked;
                QVERIFY(node.hasChildren());
            }
        }
        QVERIFY(marked > 0);
        QVERIFY(f.titolo().contains(QStringLiteral("DISTINTA CLI-HOR-Canale Ho.Re.Ca. alla data 01/01/2023      (")));
        f.albero()->setFocusedNode(f.albero()->nodeAt(1)); // the greyed head shows unselected
        foto(f.form, QStringLiteral("alla_data_01-01-2023.png"));

        // ---- the workbook of what is shown, all levels
        QTemporaryDir temporary;
        const QString folder = cartella().isEmpty() ? temporary.path() : cartella();
        const QString workbook = QDir(folder).filePath(QStringLiteral("distinta_al_01-01-2023.xlsx"));
        auto *levels = f.control<QComboBox>(QStringLiteral("CMB_LIVELLO"));
        QVERIFY(f.form->parti().esportazione.EsportaDistinta(workbook, fw::ExportFile::Format::Xlsx,
                                                             levels->itemText(levels->count() - 1)));
        const XlsxSheet sheet(workbook);
        QVERIFY2(sheet.isValid(), qPrintable(sheet.error()));
        QCOMPARE(sheet.rows().size(), shown + 1);
        QStringList dump;
        fw::TreeListNode node = f.albero()->firstNode();
        for (const XlsxSheet::Row &row : sheet.rows()) {
            const int level = row.number == 1 ? 0 : node.level();
            if (row.number > 1) {
                QCOMPARE(row.outlineLevel, std::min(level, 7));
                QCOMPARE(row.value(QStringLiteral("B")), node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toString());
                node = node.next();
            }
            QStringList cells;
            for (const XlsxSheet::Cell &cell : row.cells)
                cells << cell.value;
            dump << QStringLiteral("%1 | %2%3")
                        .arg(row.outlineLevel)
                        .arg(QString(level * 2, QLatin1Char(' ')), cells.join(QStringLiteral(" ; ")));
        }
        if (!cartella().isEmpty()) {
            QFile text(QDir(folder).filePath(QStringLiteral("distinta_al_01-01-2023.txt")));
            QVERIFY(text.open(QIODevice::WriteOnly));
            text.write((QStringLiteral("outline | row cells (dates as Excel serial days)\n") + dump.join(u'\n') + u'\n')
                           .toUtf8());
        }

        // ---- back to the whole list; a leaf of the first root's branch dropped on the last root
        field->setText(QString());
        emit field->editingFinished();
        QCOMPARE(f.albero()->count(), whole);
        fw::TreeListNode leaf = f.albero()->firstNode();
        while (leaf.isValid() && (leaf.level() < 1 || leaf.hasChildren()))
            leaf = leaf.next();
        QVERIFY(leaf.isValid());
        fw::TreeListNode lastRoot = f.albero()->firstNode();
        for (fw::TreeListNode n = lastRoot; n.isValid(); n = n.next()) {
            if (n.level() == 0)
                lastRoot = n;
        }
        const int leafCode = leaf.value(QStringLiteral("trGD02_CLIFOR_CG44")).toInt();
        const QString homeCode = leaf.parent().value(QStringLiteral("trGD02_CLIFOR_CG44")).toString();
        const QString rootCode = lastRoot.value(QStringLiteral("trGD02_CLIFOR_CG44")).toString();
        const qint64 leafId =
            f.form->nodi()->valueAt(leaf.row(), f.form->nodi()->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        const qint64 homeId = f.scalar(QStringLiteral("SELECT GD02_IDPARENT_GD02 FROM GD02_DISTINTA WHERE GD02_ID = %1")
                                           .arg(leafId))
                                  .toLongLong();
        f.albero()->setFocusedNode(leaf);
        foto(f.form, QStringLiteral("spostamento_prima.png"));

        auto *mover = f.albero()->findChild<fw::TreeListNodeMover *>();
        QVERIFY(mover);
        f.albero()->setFocusedNode(lastRoot);
        const QPoint at = f.albero()->view()->visualRect(f.albero()->model()->indexOfNode(lastRoot.id(), 1)).center();
        std::unique_ptr<QMimeData> mime(mover->mimeDataFor(leaf));
        f.host.log().setDefaultAnswer(fw::Answer::Yes);
        QVERIFY(mover->dropAt(mime.get(), at));
        DistintaFixture::attendi();
        QVERIFY2(f.host.log().messageTexts().last().startsWith(QStringLiteral("Spostare %1 - ").arg(leafCode)),
                 qPrintable(f.host.log().messageTexts().join(u'/')));
        QVERIFY(f.host.log().errorDialogs().isEmpty());
        QCOMPARE(f.codiceFocalizzato(), QString::number(leafCode));
        QCOMPARE(f.albero()->focusedNode().parent().value(QStringLiteral("trGD02_CLIFOR_CG44")).toString(), rootCode);
        foto(f.form, QStringLiteral("spostamento_dopo_trascinamento.png"));

        // ---- and back from the keyboard: Ctrl+X on it, Ctrl+V on its old parent
        QTest::keyClick(f.albero()->view(), Qt::Key_X, Qt::ControlModifier);
        f.focalizza(homeCode.toInt());
        QTest::keyClick(f.albero()->view(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD02_IDPARENT_GD02 FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(leafId))
                     .toLongLong(),
                 homeId);
        QCOMPARE(f.albero()->count(), whole);
        QVERIFY(f.host.log().errorDialogs().isEmpty());
    }
};

QTEST_MAIN(TestEstensioniDemo)
#include "tst_estensioni_demo.moc"
