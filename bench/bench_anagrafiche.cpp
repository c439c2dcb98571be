// The subject list on the large generated databases, through the real form: the whole
// CaricaAnagraficheDistinta (drop, build, read back, bind, release of the previous list) for a
// type without division and for one bound to a division, the rebuild that a click on the
// "Anagrafiche" page runs, and the filter and the order of the list. The floor of the list is
// the same rows selected by a plain hand-written LEFT JOIN statement, stepped bare with sqlite3
// on the same file in the same run; the floor of the filter and of the order is a plain pass over
// the same strings.
//
//   bench_anagrafiche [--db-dir DIR] [--sizes 100000,1000000] [--runs N]
//
// It works on a copy of each generated database, to which it adds a type bound to a division
// and that division's own data for every third subject.

#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"

#include "data/anagrafichestatements.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgridfiltermodel.h"
#include "platform/db/tsqltranslator.h"

#include <QApplication>
#include <QFile>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

const QString ownDataColumns = QStringLiteral(
    "c.CG44_CODPAG_CG62, p.CG62_DESCPAG, a.MG17_AGENTE, ga.CG16_RAGSOANAG, g.CG16_CITTA, g.CG16_PROV, "
    "v.MG19_MACROAREA, v.MG19_AREA, v.MG19_ZONA, v.MG19_MACROCAT, v.MG19_CATEG, v.MG19_SOTTOCAT, "
    "v.MG19_RAGGRCF1, v.MG19_RAGGRCF2, v.MG19_RAGGCRF3 ");

// The rows of the list as one would write them by hand for SQLite: the subjects through their
// key, one lookup per joined table, the presence as an EXISTS.
QString floorStatement(int company, int kind, std::optional<qint64> division)
{
    const QString presence = QStringLiteral(
        "SELECT 0, c.CG44_CLIFOR, EXISTS (SELECT 1 FROM GD02_DISTINTA d WHERE d.GD02_DITTA_CG18 = c.CG44_DITTA_CG18 "
        "AND d.GD02_TIPOCF_CG44 = c.CG44_TIPOCF AND d.GD02_CLIFOR_CG44 = c.CG44_CLIFOR), g.CG16_RAGSOANAG, ");
    const QString subjects = QStringLiteral(
        "FROM CG44_CLIFOR c JOIN CG16_ANAGGEN g ON g.CG16_CODICE = c.CG44_CODICE_CG16 "
        "LEFT JOIN MG19_CLIFORVA v ON v.MG19_DITTA_CG18 = c.CG44_DITTA_CG18 AND v.MG19_TIPOCF_CG44 = c.CG44_TIPOCF "
        "AND v.MG19_CLIFOR_CG44 = c.CG44_CLIFOR ");
    const QString where = QStringLiteral("WHERE c.CG44_DITTA_CG18 = %1 AND c.CG44_TIPOCF = %2 ORDER BY c.CG44_CLIFOR")
                              .arg(company)
                              .arg(kind);
    if (!division) {
        return presence + ownDataColumns + subjects
            + QStringLiteral("LEFT JOIN CG62_CONDPAGDES p ON p.CG62_CODPAG = c.CG44_CODPAG_CG62 "
                             "LEFT JOIN MG17_AGENTI a ON a.MG17_IDAGENTE = c.CG44_IDAGENTE_MG17 "
                             "AND a.MG17_DITTA_CG18 = c.CG44_DITTA_CG18 "
                             "LEFT JOIN CG16_ANAGGEN ga ON ga.CG16_CODICE = a.MG17_ANAGEN_CG16 ")
            + where;
    }
    return presence
        + QStringLiteral(
               "ifnull(o.CO1D_CODPAG_CG62, c.CG44_CODPAG_CG62), p.CG62_DESCPAG, a.MG17_AGENTE, ga.CG16_RAGSOANAG, "
               "g.CG16_CITTA, g.CG16_PROV, ifnull(o.CO1D_MACROAREA, v.MG19_MACROAREA), "
               "ifnull(o.CO1D_AREA, v.MG19_AREA), ifnull(o.CO1D_ZONA, v.MG19_ZONA), "
               "ifnull(o.CO1D_MACROCAT, v.MG19_MACROCAT), ifnull(o.CO1D_CATEG, v.MG19_CATEG), "
               "ifnull(o.CO1D_SOTTOCAT, v.MG19_SOTTOCAT), ifnull(o.CO1D_RAGGRCF1, v.MG19_RAGGRCF1), "
               "ifnull(o.CO1D_RAGGRCF2, v.MG19_RAGGRCF2), ifnull(o.CO1D_RAGGRCF3, v.MG19_RAGGCRF3) ")
        + subjects
        + QStringLiteral(
              "LEFT JOIN CO1D_CLIFORDIV o ON o.CO1D_DITTA_CG18 = c.CG44_DITTA_CG18 "
              "AND o.CO1D_TIPOCF_CG44 = c.CG44_TIPOCF AND o.CO1D_CLIFOR_CG44 = c.CG44_CLIFOR "
              "AND o.CO1D_IDDIV_CO1A = %1 "
              "LEFT JOIN CG62_CONDPAGDES p ON p.CG62_CODPAG = ifnull(o.CO1D_CODPAG_CG62, c.CG44_CODPAG_CG62) "
              "LEFT JOIN MG17_AGENTI a ON a.MG17_IDAGENTE = ifnull(o.CO1D_IDAGENTE_MG17, c.CG44_IDAGENTE_MG17) "
              "AND a.MG17_DITTA_CG18 = c.CG44_DITTA_CG18 "
              "LEFT JOIN CG16_ANAGGEN ga ON ga.CG16_CODICE = a.MG17_ANAGEN_CG16 ")
              .arg(*division)
        + where;
}

// A division type and the division's data of every third subject, in the copy.
qint64 addDivisionType(const db::ConnectionPtr &connection, int company, int kind)
{
    connection->execute(
        QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, "
                       "GD01_INDTIPOSOGG, GD01_IDDIV_CO1A) VALUES (%1, 'DIV-BENCH', 'Divisione', %2, 1)")
            .arg(company)
            .arg(kind));
    connection->execute(
        QStringLiteral(
            "INSERT INTO CO1D_CLIFORDIV (CO1D_DITTA_CG18, CO1D_TIPOCF_CG44, CO1D_CLIFOR_CG44, CO1D_IDDIV_CO1A, "
            "CO1D_CODPAG_CG62, CO1D_MACROAREA, CO1D_ZONA) "
            "SELECT CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, 1, CG44_CODPAG_CG62, 'DIV', 'Z' "
            "FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = %1 AND CG44_TIPOCF = %2 AND CG44_CLIFOR % 3 = 0")
            .arg(company)
            .arg(kind));
    return connection->openRecordset(QStringLiteral("SELECT MAX(GD01_ID) AS ID FROM GD01_TIPODISTINTA"))
        ->value(0)
        .toLongLong();
}

void choose(FRMGD_DISTINTA *form, const QString &key)
{
    auto *selector = form->findChild<QTreeWidget *>(QStringLiteral("TVW_SELDISTINTE"));
    for (QTreeWidgetItemIterator it(selector); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == key) {
            selector->setCurrentItem(*it);
            form->TVW_SELDISTINTE_Click();
            return;
        }
    }
    bench::fail(QStringLiteral("no selector item ") + key);
}

int runsFor(int nodes, const QStringList &arguments, int optionRuns)
{
    if (arguments.contains(QStringLiteral("--runs")))
        return optionRuns;
    return nodes >= 1000000 ? 3 : 5;
}

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table, QStringList &plans)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("anagrafiche.sqlite"));
    bench::check(QFile::copy(generated.path, path), QStringLiteral("cannot copy ") + generated.path);
    const int company = generated.company;
    const int kind = generated.subjectKind;

    bench::EditorHost host(path);
    const qint64 divisionType = addDivisionType(host.connection(), company, kind);

    // ---- floors and plans, both variants
    const bench::Floor floor = bench::measureQueryFloor(path, floorStatement(company, kind, {}), runs);
    const bench::Floor divisionFloor = bench::measureQueryFloor(path, floorStatement(company, kind, 1), runs);
    const double floorMs = floor.timing.bestMs;
    const double divisionFloorMs = divisionFloor.timing.bestMs;
    bench::addTiming(table, QStringLiteral("floor: hand-written LEFT JOIN, stepped with sqlite3"), floor.timing,
                     floorMs, bench::Target::None, QStringLiteral("%1 rows").arg(floor.rows));
    bench::addTiming(table, QStringLiteral("floor, division: hand-written LEFT JOIN"), divisionFloor.timing,
                     divisionFloorMs, bench::Target::None, QStringLiteral("%1 rows").arg(divisionFloor.rows));
    const QString build = anagrafichestatements::buildSubjectListStatement(company, kind, {});
    const QString buildDivision = anagrafichestatements::buildSubjectListStatement(company, kind, 1);
    const auto selectOf = [](const QString &statement) {
        // The plan of the SELECT that fills the table.
        QString sqlite = db::translateTsqlToSqlite(statement);
        return sqlite.mid(sqlite.indexOf(QLatin1String(" AS SELECT ")) + 4);
    };
    plans << QStringLiteral("%1 subjects, without division:").arg(floor.rows) << bench::queryPlan(path, selectOf(build))
          << QStringLiteral("%1 subjects, with a division:").arg(floor.rows)
          << bench::queryPlan(path, selectOf(buildDivision));

    // ---- the whole procedure through the form
    FRMGD_DISTINTA *form = host.openEditor();
    bench::check(form && host.log().isQuiet(), QStringLiteral("the editor did not open"));
    auto *tabs = form->findChild<QTabWidget *>(QStringLiteral("TAB_VISUALIZZAGESTIONE"));
    auto *grid = form->findChild<fw::RecordsetGrid *>(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
    form->resize(1280, 800);
    form->show();
    QCoreApplication::processEvents();

    form->CaricaAnagraficheDistinta(); // a previous list to release, as in use
    const bench::Timing whole = bench::measure(runs, [&] { form->CaricaAnagraficheDistinta(); });
    bench::check(form->parti().anagrafiche.lista() && form->parti().anagrafiche.lista()->recordCount() == floor.rows,
                 QStringLiteral("the list does not hold the floor's %1 rows").arg(floor.rows));
    bench::addTiming(table, QStringLiteral("CaricaAnagraficheDistinta whole"), whole, floorMs,
                     bench::Target::TwiceFloor, QStringLiteral("drop, build, read back, bind, previous list let go"));

    const db::ConnectionPtr connection = host.connection();
    const bench::Timing building = bench::measure(
        runs, [&] { connection->execute(anagrafichestatements::dropSubjectListStatement()); },
        [&] { connection->execute(build); });
    bench::addTiming(table, QStringLiteral("of which: SELECT ... INTO #GD02_CLIFORSTD"), building, floorMs);
    db::RecordsetPtr readBack;
    const bench::Timing reading = bench::measure(
        runs, [&] { readBack.reset(); },
        [&] { readBack = connection->openRecordset(anagrafichestatements::readSubjectListStatement()); });
    readBack.reset();
    bench::addTiming(table, QStringLiteral("of which: read back into the recordset"), reading, floorMs);

    tabs->setCurrentIndex(0);
    const bench::Timing tabClick = bench::measure(
        runs, [&] { tabs->setCurrentIndex(0); }, [&] { tabs->setCurrentIndex(1); });
    bench::addTiming(table, QStringLiteral("rebuild on a click of the \"Anagrafiche\" page"), tabClick, floorMs,
                     bench::Target::TwiceFloor);

    // ---- the division variant
    tabs->setCurrentIndex(0);
    choose(form, QStringLiteral("C%1").arg(divisionType));
    bench::check(form->parti().albero.divisione().has_value(), QStringLiteral("the division type has no division"));
    const bench::Timing division = bench::measure(runs, [&] { form->CaricaAnagraficheDistinta(); });
    bench::check(form->parti().anagrafiche.lista()->recordCount() == divisionFloor.rows,
                 QStringLiteral("division list rows"));
    bench::addTiming(table, QStringLiteral("CaricaAnagraficheDistinta whole, division"), division, divisionFloorMs,
                     bench::Target::TwiceFloor);
    bench::check(host.log().isQuiet(), QStringLiteral("the editor reported: ") + host.log().messageTexts().join(u'/'));

    // ---- the filter and the order, against a plain pass over the same strings
    fw::RecordsetGridFilterModel *filter = grid->rowFilter();
    const db::Recordset &rows = *form->parti().anagrafiche.lista();
    std::vector<QString> texts;
    texts.reserve(size_t(rows.recordCount()));
    for (int row = 0; row < rows.recordCount(); ++row)
        texts.push_back((rows.valueAt(row, 1).toString() + u'\n' + rows.valueAt(row, 3).toString() + u'\n'
                         + rows.valueAt(row, 8).toString())
                            .toCaseFolded());
    const QString needle = QStringLiteral("rossi");
    volatile int sink = 0;
    const bench::Timing pass = bench::measure(runs * 4, [&] {
        int found = 0;
        for (const QString &text : texts)
            found += text.contains(needle) ? 1 : 0;
        sink = found;
    });
    bench::addTiming(table, QStringLiteral("floor: plain pass over the filter's strings"), pass, pass.bestMs);
    filter->setFilterText(QStringLiteral("r")); // the texts are read once per list
    int step = 0;
    const bench::Timing keystroke = bench::measure(
        runs * 4, [&] { filter->setFilterText(step++ % 2 ? QStringLiteral("rossi") : QStringLiteral("ross")); });
    bench::addTiming(table, QStringLiteral("filter: one keystroke"), keystroke, pass.bestMs, bench::Target::None,
                     QStringLiteral("%1 rows shown of %2").arg(grid->model()->rowCount()).arg(rows.recordCount()));
    filter->setFilterText(QString());
    const int nameColumn = grid->columnOf(QStringLiteral("Ragione sociale"));
    // The first click on a list just read (its values are read for the order then), and the
    // click after it, which orders the same values the other way.
    const db::RecordsetPtr list = grid->recordset();
    const bench::Timing sorting = bench::measure(
        runs,
        [&] {
            filter->sort(-1);
            grid->setRecordset(list);
        },
        [&] { filter->sort(nameColumn, Qt::AscendingOrder); });
    bench::addTiming(table, QStringLiteral("order by a heading (Ragione sociale)"), sorting, pass.bestMs);
    int order = 0;
    const bench::Timing reversing = bench::measure(
        runs, [&] { filter->sort(nameColumn, order++ % 2 ? Qt::AscendingOrder : Qt::DescendingOrder); });
    bench::addTiming(table, QStringLiteral("the same heading again (the other way)"), reversing, pass.bestMs);
    filter->sort(-1);
    (void)sink;
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("DISTINTA_LAYOUT_FILE"))
        qputenv("DISTINTA_LAYOUT_FILE", "");
    QApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const bench::Options options = bench::parseOptions(arguments);
    bench::DatabaseFolder databases(options.databaseDir);
    QStringList plans;
    for (int nodes : options.sizes) {
        const int runs = runsFor(nodes, arguments, options.runs);
        bench::BenchTable table(QStringLiteral("Subject list, %1 subjects (2 cores, best of %2)").arg(nodes).arg(runs));
        try {
            benchSize(databases.database(nodes), runs, table, plans);
        } catch (const std::exception &error) {
            bench::fail(QString::fromUtf8(error.what()));
        }
        table.print();
    }
    QTextStream(stdout) << "\nQuery plans of the translated statements:\n" << plans.join(u'\n') << '\n';
    return 0;
}
