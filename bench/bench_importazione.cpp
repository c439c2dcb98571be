// The import of a 10,000-row file into the large generated tree, through the real form: the
// dry run against the same rows' check statements stepped bare on a second connection, and
// the writing of its rows against the cost per row of adding ticked subjects (InserisciNodo).
//
//   bench_importazione [--db-dir DIR] [--sizes 100000] [--runs N]
//
// The program works on a copy of the generated database, to which it adds 10,000 customers
// that no classification holds yet; the file puts each under one node of the large tree.

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "editorhost.h"
#include "largetree.h"

#include "data/distintastatements.h"
#include "data/importazionestatements.h"
#include "data/nodistatements.h"
#include "db/sqlitefile.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/importazionedistinta.h"
#include "forms/distinta/parti.h"
#include "framework/import/importfile.h"
#include "framework/treelist/treelist.h"
#include "platform/db/sqlitefunctions.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using bench::stepBare;

constexpr int fileRows = 10000;
constexpr int tickedSubjects = 1000;

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table)
{
    QTemporaryDir work;
    const QString path = work.filePath(QStringLiteral("importazione.sqlite"));
    bench::copyDatabase(generated.path, path);
    dbsetup::SqliteFile bare(path);
    db::registerSqliteFunctions(bare.handle());
    bare.exec(QStringLiteral("PRAGMA synchronous=NORMAL; PRAGMA recursive_triggers=OFF"));
    const int firstNew = generated.nodes + 1;
    bench::addUnlinkedCustomers(bare, firstNew, fileRows);
    const bench::Shape shape(bare, generated.typeId);
    const qint64 parentNode = shape.nearest(10);
    const qint64 parentSubject = bare.scalar(
        QStringLiteral("SELECT GD02_CLIFOR_CG44 FROM GD02_DISTINTA WHERE GD02_ID = %1").arg(parentNode));

    // The flat format: every new customer under the node's subject.
    const QString file = work.filePath(QStringLiteral("importa.csv"));
    {
        QFile out(file);
        bench::check(out.open(QIODevice::WriteOnly), QStringLiteral("cannot write ") + file);
        QByteArray text = "Codice padre;Codice;Data inizio;Data fine\r\n";
        for (int i = 0; i < fileRows; ++i)
            text += QByteArray::number(parentSubject) + ';' + QByteArray::number(firstNew + i)
                + ";01/01/2024;31/12/2099\r\n";
        out.write(text);
    }
    const fw::ImportedTable tabella = fw::readImportFile(file);

    bench::EditorHost host(path);
    FRMGD_DISTINTA *form = host.openEditor();
    bench::check(form && host.log().isQuiet(), QStringLiteral("the editor did not open cleanly"));
    distinta::ComandoImportazione &comando = form->parti().importazione;
    const distinta::ContestoImportazione contesto = comando.contesto();
    bench::check(contesto.idTipo == generated.typeId, QStringLiteral("the editor shows another classification"));

    // ---- the dry run
    nodistatements::Collegamento link;
    link.company = contesto.ditta;
    link.subjectKind = contesto.tipoSoggetto;
    link.division = contesto.divisione;
    link.start = QDate(2024, 1, 1);
    link.end = QDate(2099, 12, 31);
    link.withNodeId = true;
    const bench::Timing dryFloor = bench::measure(runs, [&] {
        stepBare(bare, importazionestatements::subjectsQuery(contesto.ditta, contesto.tipoSoggetto));
        stepBare(bare, importazionestatements::prioritiesQuery());
        stepBare(bare, distintastatements::nodesQuery(contesto.ditta, contesto.tipoSoggetto, contesto.idTipo));
        for (int i = 0; i < fileRows; ++i) {
            link.subjectCode = firstNew + i;
            stepBare(bare, nodistatements::overlapQuery(link));
        }
    });
    int accepted = 0;
    const bench::Timing dry = bench::measure(runs, [&] {
        distinta::ImportazioneDistinta importazione(form->connection(), contesto);
        QString errore;
        const std::optional<distinta::PianoImportazione> piano = importazione.prova(tabella, errore,
                                                                                    [](int, int) { return true; });
        bench::check(piano && errore.isEmpty(), QStringLiteral("the dry run did not end: ") + errore);
        accepted = piano->quante(distinta::PianoImportazione::Esito::DaInserire);
    });
    bench::check(accepted == fileRows, QStringLiteral("the dry run accepted %1 rows").arg(accepted));
    bench::addTiming(table, QStringLiteral("floor: subjects, priorities, nodes and 10,000 overlap selects bare"),
                     dryFloor, dryFloor.bestMs);
    bench::addTiming(table, QStringLiteral("dry run of a 10,000-row file (file read apart)"), dry, dryFloor.bestMs,
                     bench::Target::TwiceFloor);

    // ---- writing: per row, against the ticked subjects' insertion
    const QString removeNew = QStringLiteral("DELETE FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 >= %1").arg(firstNew);
    fw::TreeList *tree = form->findChild<fw::TreeList *>(QStringLiteral("TVW_DISTINTA"));
    const bench::Timing ticked = bench::measure(
        runs,
        [&] {
            bare.exec(removeNew);
            form->CaricaDistinta();
            form->CaricaAnagraficheDistinta();
            bench::tickSubjects(form, firstNew, tickedSubjects);
            bench::focusNode(tree, form, parentNode);
        },
        [&] { form->parti().inserimento.CMD_ADDANAGR_Click(); });
    const QString report = work.filePath(QStringLiteral("esito.csv"));
    int outcome = -1;
    const bench::Timing apply = bench::measure(
        runs,
        [&] {
            bare.exec(removeNew);
            form->CaricaDistinta();
        },
        [&] { outcome = comando.importaSenzaFinestra(file, false, report, fw::ExportFile::Format::Csv); });
    bench::check(outcome == 0 && host.log().isQuiet(),
                 QStringLiteral("the import reported: ") + host.log().messageTexts().join(u'/'));
    bench::check(
        bare.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_CLIFOR_CG44 >= %1").arg(firstNew))
            == fileRows,
        QStringLiteral("the import did not write %1 nodes").arg(fileRows));
    const auto perRow = [](const bench::Timing &timing, int rows) {
        bench::Timing each = timing;
        each.bestMs /= rows;
        each.medianMs /= rows;
        each.bestCpuMs /= rows;
        return each;
    };
    const bench::Timing tickedRow = perRow(ticked, tickedSubjects);
    bench::addTiming(table, QStringLiteral("floor: InserisciNodo of 1,000 ticked subjects, per subject"), tickedRow,
                     tickedRow.bestMs);
    bench::addTiming(table, QStringLiteral("import of the 10,000 rows (checked again, written, report), per row"),
                     perRow(apply, fileRows), tickedRow.bestMs, bench::Target::None, QStringLiteral("target <= 1.3"));
}

} // namespace

int main(int argc, char *argv[])
{
    return bench::runPerSize(argc, argv, QStringLiteral("Importa: the dry run and the writing of a 10,000-row file"),
                             [](const bench::LargeDatabase &database, int runs, bench::BenchTable &table) {
                                 benchSize(database, runs, table);
                             },
                             {100000});
}
