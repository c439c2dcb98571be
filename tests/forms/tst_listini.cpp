#include "framework/hostglobalservices.h"
#include "tests/forms/gestionifixture.h"

#include <QHeaderView>

// The picker of structural price-list priorities: what it lists and how, and what it hands back.
class TestListini : public QObject
{
    Q_OBJECT

    // Company 1: STD (two conditions), GDO (three), NEW (none: not listed), LOCN (localised:
    // not listed); company 2: STD (not listed for company 1).
    struct Priorita : GestioniFixture
    {
        Priorita()
        {
            std = priorita(QStringLiteral("STD"), QStringLiteral("Priorità standard"), 0,
                           {QStringLiteral("Listino base"), QStringLiteral("Sconti cliente")});
            gdo = priorita(QStringLiteral("GDO"), QStringLiteral("Priorità grande distribuzione"), 0,
                           {QStringLiteral("Condizioni da contratto"), QStringLiteral("Prezzi netti"),
                            QStringLiteral("Listino base")});
            priorita(QStringLiteral("NEW"), QStringLiteral("Priorità in preparazione"));
            priorita(QStringLiteral("LOCN"), QStringLiteral("Priorità localizzata Nord"), 1,
                     {QStringLiteral("Listino base")});
            priorita(QStringLiteral("STD"), QStringLiteral("Priorità della seconda ditta"), 0,
                     {QStringLiteral("Listino base")}, 2);
        }

        FRMGD_LISTINI *apriPicker(const QVariant &attuale = {})
        {
            auto *opened = new FRMGD_LISTINI(scelta, attuale);
            opened->setActiveDll(entry.get());
            opened->setEntryClass(entry.get());
            picker = opened;
            opened->showModeless(nullptr);
            opened->Form_Activate();
            return opened;
        }

        fw::RecordsetGroupGrid *griglia() const
        {
            return in<fw::RecordsetGroupGrid>(picker, QStringLiteral("QGRID_LISTINI"));
        }
        ~Priorita() { delete picker; }

        PrioritaScelta scelta;
        QPointer<FRMGD_LISTINI> picker;
        qint64 std = 0, gdo = 0;
    };

private slots:
    // One heading per structural priority of the company, its conditions below it; the
    // identifiers and the code are hidden, the priority column has no caption.
    void conditionsAreGroupedByPriority()
    {
        Priorita f;
        f.apriPicker();
        fw::RecordsetGroupGrid *grid = f.griglia();
        fw::RecordsetGroupModel *model = grid->groupModel();
        QCOMPARE(model->groupCount(), 2);
        QCOMPARE(model->groupText(0), QStringLiteral("Priorità grande distribuzione"));
        QCOMPARE(model->groupText(1), QStringLiteral("Priorità standard"));
        const QModelIndex gdo = model->index(0, 0);
        QCOMPARE(model->rowCount(gdo), 3);
        QCOMPARE(model->rowCount(model->index(1, 0)), 2);
        const int condition = model->columnOf(QStringLiteral("Condizione"));
        QStringList conditions;
        for (int row = 0; row < 3; ++row)
            conditions << model->index(row, condition, gdo).data().toString();
        QCOMPARE(conditions, QStringList({"Condizioni da contratto", "Prezzi netti", "Listino base"}));
        QCOMPARE(gdo.data().toString(), QStringLiteral("Priorità grande distribuzione"));
        QVERIFY(model->index(0, condition, gdo)
                    .siblingAtColumn(model->columnOf(QStringLiteral("Priorità")))
                    .data()
                    .isNull());

        QCOMPARE(model->headerData(model->columnOf(QStringLiteral("Priorità")), Qt::Horizontal).toString(), QString());
        QCOMPARE(model->headerData(condition, Qt::Horizontal).toString(), QStringLiteral("Condizione listini"));
        for (const char *hidden : {"IDCondizione", "IDPriorità", "CodicePriorità"})
            QVERIFY2(grid->isColumnHidden(model->columnOf(QString::fromUtf8(hidden))), hidden);
        QVERIFY(!grid->isColumnHidden(condition));
        QCOMPARE(grid->columnWidth(condition), fw::twipsToPixels(4000, grid->logicalDpiX()));
        QVERIFY(grid->isExpanded(gdo));
    }

    // Whatever row of a group is chosen, or its heading, the group's priority comes back and
    // the picker closes.
    void choosingARowHandsBackItsGroupsPriority()
    {
        {
            Priorita f;
            f.apriPicker();
            fw::RecordsetGroupGrid *grid = f.griglia();
            const QModelIndex row = grid->groupModel()->index(2, 1, grid->groupModel()->index(0, 0));
            GestioniFixture::doppioClic(grid, row);
            QCOMPARE(f.scelta.IDPriorita, std::optional<double>(double(f.gdo)));
            QCOMPARE(f.scelta.CodicePriorita, QStringLiteral("GDO"));
            QTRY_VERIFY(!f.picker);
        }
        {
            Priorita f;
            f.apriPicker();
            fw::RecordsetGroupGrid *grid = f.griglia();
            grid->setCurrentIndex(grid->groupModel()->index(1, 0)); // the heading of STD
            QTest::keyClick(grid, Qt::Key_Return);
            QCOMPARE(f.scelta.IDPriorita, std::optional<double>(double(f.std)));
            QCOMPARE(f.scelta.CodicePriorita, QStringLiteral("STD"));
            QTRY_VERIFY(!f.picker);
            QVERIFY(f.host.log().isQuiet());
        }
    }

    // Opened from a node that has a priority, the picker stands on it: Enter keeps it. Without
    // one, it stands on the first priority.
    void opensOnTheCurrentPriority()
    {
        Priorita f;
        f.apriPicker(f.std);
        fw::RecordsetGroupGrid *grid = f.griglia();
        QCOMPARE(grid->currentIndex(), grid->groupModel()->index(1, 0));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(f.scelta.CodicePriorita, QStringLiteral("STD"));

        Priorita none;
        none.apriPicker();
        QCOMPARE(none.griglia()->currentIndex(), none.griglia()->groupModel()->index(0, 0));
    }

    // Escape closes without a choice: the values stay as they were.
    void escapeLeavesTheValuesAsTheyWere()
    {
        Priorita f;
        f.scelta = {42.0, QStringLiteral("OLD")};
        f.apriPicker();
        QTest::keyClick(f.griglia(), Qt::Key_Escape);
        QTRY_VERIFY(!f.picker);
        QCOMPARE(f.scelta.IDPriorita, std::optional<double>(42.0));
        QCOMPARE(f.scelta.CodicePriorita, QStringLiteral("OLD"));
    }

    // A company without structural priorities gets an empty list, where Enter chooses nothing.
    void aCompanyWithoutPrioritiesShowsAnEmptyList()
    {
        Priorita f;
        f.host.globals().setWorkingCompany(3);
        f.apriPicker();
        QCOMPARE(f.griglia()->groupModel()->rowCount(), 0);
        QTest::keyClick(f.griglia(), Qt::Key_Return);
        QVERIFY(f.picker);
        QVERIFY(!f.scelta.IDPriorita);
        QVERIFY(f.host.log().isQuiet());
    }
};

QTEST_MAIN(TestListini)
#include "tst_listini.moc"
