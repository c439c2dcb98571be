#include "framework/hostglobalservices.h"
#include "framework/treelist/treelistnodemover.h"
#include "framework/treelist/treelistview.h"
#include "framework/treelist/treelistmodel.h"
#include "tests/forms/distintafixture.h"

#include <QDropEvent>
#include <QMimeData>

// Moving a branch: by drag and drop and by Ctrl+X / Ctrl+V, refused when it would break the
// tree's rules or another user changed things meanwhile, and leaving everything but the top
// node's parent as it was.
class TestDistintaSpostamento : public QObject
{
    Q_OBJECT

    // A01: 1001 > 1002 > (1003, 1004); 1005 > 1006. B01 is another classification.
    struct Rete : DistintaFixture
    {
        Rete()
        {
            const char *names[] = {"Alfa", "Beta", "Gamma", "Delta", "Epsilon", "Zeta", "Eta"};
            for (int i = 0; i < 7; ++i)
                soggetto(0, 1001 + i, QString::fromLatin1(names[i]));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Rete"));
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Altra"));
            n1 = nodo(a01, 0, 1001);
            n2 = nodo(a01, 0, 1002, {.parent = n1, .start = QStringLiteral("2024-03-01"), .billingRule = 2});
            n3 = nodo(a01, 0, 1003, {.parent = n2, .billingCode = 1001, .billingRule = 1});
            n4 = nodo(a01, 0, 1004, {.parent = n2});
            n5 = nodo(a01, 0, 1005);
            n6 = nodo(a01, 0, 1006, {.parent = n5});
            exec(QStringLiteral(
                     "UPDATE GD02_DISTINTA SET GD02_INDEREPROMO = 1, GD02_DESCR = 'ramo' WHERE GD02_ID IN (%1, %2)")
                     .arg(n2)
                     .arg(n3));
            apri();
        }
        // Every column of the nodes but the parent and the change stamp, to see that a move
        // touches nothing else.
        QStringList righe()
        {
            const db::RecordsetPtr rows = host.database().connection()->openRecordset(
                QStringLiteral("SELECT GD02_ID, GD02_ID_GD01, GD02_CLIFOR_CG44, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL, "
                               "GD02_TIPOANAGFATT, "
                               "GD02_CLIFORFATT_CG44, GD02_DESCR, GD02_INDEREPROMO, GD02_ID_WF02, gd02_guid FROM "
                               "GD02_DISTINTA ORDER BY GD02_ID"));
            QStringList result;
            for (int row = 0; row < rows->recordCount(); ++row) {
                QStringList values;
                for (int field = 0; field < rows->fieldCount(); ++field)
                    values << rows->valueAt(row, field).toString();
                result << values.join(QLatin1Char('|'));
            }
            return result;
        }
        qint64 padre(qint64 id)
        {
            return scalar(QStringLiteral("SELECT IFNULL(GD02_IDPARENT_GD02, 0) FROM GD02_DISTINTA WHERE GD02_ID = %1")
                              .arg(id))
                .toLongLong();
        }
        fw::TreeListNode nodoDi(int code) const
        {
            for (fw::TreeListNode node = albero()->firstNode(); node.isValid(); node = node.next()) {
                if (node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toInt() == code)
                    return node;
            }
            return {};
        }
        // A drop as the platform delivers it at the end of a drag; code 0: the empty area.
        void rilascia(const fw::TreeListNode &node, int targetCode, fw::TreeListNodeMover *from = nullptr)
        {
            rilasciaSu(node, targetCode != 0 ? nodoDi(targetCode) : fw::TreeListNode(), from);
        }
        void rilasciaSu(const fw::TreeListNode &node, const fw::TreeListNode &target,
                        fw::TreeListNodeMover *from = nullptr)
        {
            auto *mover = albero()->findChild<fw::TreeListNodeMover *>();
            QVERIFY(mover);
            QWidget *viewport = albero()->view()->viewport();
            QPoint at(viewport->width() / 2, viewport->height() - 2);
            if (target.isValid())
                at = albero()->view()->visualRect(albero()->model()->indexOfNode(target.id(), 1)).center();
            std::unique_ptr<QMimeData> data((from ? from : mover)->mimeDataFor(node));
            // The platform's drag loop hands the drop to the mover; QApplication does not pass a
            // drop event it did not start itself.
            QVERIFY(mover->dropAt(data.get(), at));
            attendi();
        }
        qint64 a01 = 0, b01 = 0, n1 = 0, n2 = 0, n3 = 0, n4 = 0, n5 = 0, n6 = 0;
    };

private slots:
    void aDroppedBranchMovesWithNothingElseChanged()
    {
        Rete f;
        const QStringList before = f.righe();
        f.host.log().answerNext(fw::Answer::Yes);
        f.rilascia(f.nodoDi(1002), 1006);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Spostare 1002 - Beta e i suoi 2 nodi sotto 1006 - Zeta?")));
        QCOMPARE(f.host.log().messages().at(0).style, int(fw::MessageStyle::YesNoWarning));
        QCOMPARE(f.padre(f.n2), f.n6);
        QCOMPARE(f.righe(), before);
        QCOMPARE(f.codiciAlbero(), QStringList({"1001", "1005", ".1006", "..1002", "...1003", "...1004"}));
        QCOMPARE(f.codiceFocalizzato(), QStringLiteral("1002"));
        QVERIFY(f.albero()->isExpanded(f.nodoDi(1006)));
        QCOMPARE(f.scalar(QStringLiteral("SELECT GD02_UTENTEVAR FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n2))
                     .toString(),
                 f.host.globals().user());

        // Onto the empty area: a root, with promotions of its own as a new root has.
        f.host.log().clear();
        f.host.log().answerNext(fw::Answer::Yes);
        f.rilascia(f.nodoDi(1003), 0);
        QCOMPARE(f.host.log().messageTexts(), QStringList(QStringLiteral("Spostare 1003 - Gamma come capostipite?")));
        QCOMPARE(f.padre(f.n3), 0);
        QCOMPARE(
            f.scalar(QStringLiteral("SELECT GD02_INDEREPROMO FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n3)).toInt(),
            2);
        QCOMPARE(f.codiciAlbero(), QStringList({"1001", "1003", "1005", ".1006", "..1002", "...1004"}));
    }

    void theKeyboardCutsAndPastes()
    {
        Rete f;
        QWidget *view = f.albero()->view();
        QVERIFY(!f.control<QPushButton>(QStringLiteral("CMD_INCOLLANODO"))->isEnabled());
        f.focalizza(1004);
        QTest::keyClick(view, Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(f.form->parti().spostamento.nodoTagliato(), f.n4);
        QVERIFY(f.control<QPushButton>(QStringLiteral("CMD_INCOLLANODO"))->isEnabled());
        QCOMPARE(f.control<QPushButton>(QStringLiteral("CMD_INCOLLANODO"))->toolTip(),
                 QStringLiteral(
                     "Sposta 1004 - Delta sotto il nodo selezionato (Alt+N, Ctrl+V); come capostipite: Ctrl+Maiusc+V"));
        f.focalizza(1001);
        f.host.log().answerNext(fw::Answer::Yes);
        QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(f.host.log().messageTexts(), QStringList(QStringLiteral("Spostare 1004 - Delta sotto 1001 - Alfa?")));
        QCOMPARE(f.padre(f.n4), f.n1);
        QCOMPARE(f.form->parti().spostamento.nodoTagliato(), 0);

        // No, the default: nothing moves.
        f.host.log().clear();
        f.focalizza(1006);
        QTest::keyClick(view, Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(view, Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.host.log().messageTexts(), QStringList(QStringLiteral("Spostare 1006 - Zeta come capostipite?")));
        QCOMPARE(f.padre(f.n6), f.n5);
    }

    void movesThatWouldBreakTheTreeAreRefused()
    {
        Rete f;
        const QStringList before = f.righe();
        const QStringList tree = f.codiciAlbero();
        const auto refused = [&](int code, int target, const QString &message) {
            f.host.log().clear();
            f.rilascia(f.nodoDi(code), target);
            QCOMPARE(f.host.log().messageTexts(), QStringList(message));
            QCOMPARE(f.host.log().messages().at(0).style, int(fw::MessageStyle::Warning));
            QCOMPARE(f.righe(), before);
            QCOMPARE(f.codiciAlbero(), tree);
        };
        refused(1002, 1002, QStringLiteral("Il nodo 1002 - Beta non può essere spostato sotto sé stesso."));
        refused(1002, 1004,
                QStringLiteral("Il nodo 1004 - Delta è nel ramo di 1002 - Beta: un ramo non può essere "
                               "spostato sotto uno dei suoi nodi."));
        refused(1002, 1001, QStringLiteral("Il nodo 1002 - Beta è già sotto 1001 - Alfa."));
        refused(1005, 0, QStringLiteral("Il nodo 1005 - Epsilon è già un capostipite."));

        // A subject of the branch on the new parent: 1001's branch holds 1002, which a node of
        // another period also links under 1006.
        const qint64 other = f.nodo(
            f.a01, 0, 1002,
            {.parent = f.n6, .start = QStringLiteral("1990-01-01"), .end = QStringLiteral("1990-12-31")});
        f.form->CaricaDistinta();
        const QStringList withOther = f.righe();
        f.host.log().clear();
        f.rilasciaSu(f.nodoDi(1001), f.albero()->nodeAt(f.albero()->count() - 1));
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Cliente 1002 del ramo da spostare è già tra i nodi padre di 1002 - Beta: "
                                            "il ramo non può essere spostato lì.")));
        QCOMPARE(f.righe(), withOther);
        QCOMPARE(f.padre(other), f.n6);

        // A node of another tree (another editor's) is not taken.
        f.host.log().clear();
        fw::TreeList otherTree;
        fw::TreeListNodeMover otherMover(&otherTree);
        f.rilascia(f.nodoDi(1001), 1005, &otherMover);
        QCOMPARE(
            f.host.log().messageTexts(),
            QStringList(QStringLiteral("Il nodo appartiene a un'altra distinta: un nodo si sposta solo all'interno "
                                       "della sua distinta.")));
    }

    void anotherUsersChangeStopsTheMove()
    {
        Rete f;
        // The node itself changed after it was read.
        f.exec(QStringLiteral("UPDATE GD02_DISTINTA SET GD02_DESCR = 'altro utente' WHERE GD02_ID = %1").arg(f.n4));
        f.host.log().answerNext(fw::Answer::Yes);
        f.rilascia(f.nodoDi(1004), 1006);
        QCOMPARE(f.host.log().messageTexts().last(),
                 QStringLiteral("Il nodo è stato modificato da un altro utente dopo la lettura: "
                                "i suoi dati sono stati riletti, l'operazione non è stata eseguita."));
        QCOMPARE(f.padre(f.n4), f.n2);

        // The target deleted meanwhile.
        f.form->CaricaDistinta();
        f.host.log().clear();
        f.exec(QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(f.n6));
        f.host.log().answerNext(fw::Answer::Yes);
        f.rilascia(f.nodoDi(1004), 1006);
        QCOMPARE(f.host.log().messageTexts().last(),
                 QStringLiteral("Il nodo 1006 - Zeta è stato eliminato da un altro utente dopo la lettura: "
                                "il ramo non è stato spostato, la distinta viene ricaricata."));
        QCOMPARE(f.padre(f.n4), f.n2);
        QCOMPARE(f.codiciAlbero(), QStringList({"1001", ".1002", "..1003", "..1004", "1005"}));
    }

    void aDefinitiveBonusInTheBranchAsksFirst()
    {
        Rete f;
        const qint64 contract = f.contratto(1003);
        f.scadenza(f.condizione(contract, f.n3), QStringLiteral("2024-12-31"), 2);
        f.scadenza(f.condizione(contract, f.n6), QStringLiteral("2024-12-31"), 2); // outside the branch
        f.host.log().answerNext(fw::Answer::No);
        f.rilascia(f.nodoDi(1002), 1006);
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList(QStringLiteral("Il nodo del ramo è usato in un premio definitivo:\n1003 - Gamma\n"
                                            "Si vuole proseguire con lo spostamento?")));
        QCOMPARE(f.padre(f.n2), f.n1);

        f.host.log().clear();
        f.host.log().answerNext({fw::Answer::Yes, fw::Answer::Yes});
        f.rilascia(f.nodoDi(1002), 1006);
        QCOMPARE(f.host.log().messageTexts().size(), 2);
        QCOMPARE(f.padre(f.n2), f.n6);
    }
};

QTEST_MAIN(TestDistintaSpostamento)
#include "tst_distinta_spostamento.moc"
