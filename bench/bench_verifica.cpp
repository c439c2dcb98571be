// The check of every classification of the company ("Verifica distinte") on a large generated
// database, against its statements stepped bare on the same file.
//
//   bench_verifica [--db-dir DIR] [--sizes 100000] [--runs N]

#include "benchmain.h"
#include "benchtable.h"
#include "benchutil.h"
#include "largetree.h"

#include "data/verificastatements.h"
#include "db/sqlitefile.h"
#include "db/demodatabase.h"
#include "forms/distinta/verificadistinte.h"
#include "platform/db/connection.h"
#include "platform/db/sqlitefunctions.h"

#include <QDate>

namespace {

void benchSize(const bench::LargeDatabase &generated, int runs, bench::BenchTable &table)
{
    const int company = generated.company;
    const QDate day(2025, 6, 1);
    dbsetup::SqliteFile bare(generated.path, dbsetup::SqliteFile::Access::ReadOnly);
    db::registerSqliteFunctions(bare.handle());
    const db::ConnectionPtr connection = db::Connection::open(dbsetup::sqliteConnectionString(generated.path, true));

    const auto floor = [&](std::optional<qint64> typeId) {
        bench::stepBare(bare, verificastatements::missingSubjectsQuery(company, day, typeId));
        bench::stepBare(bare, verificastatements::overlappingLinksQuery(company, typeId));
        bench::stepBare(bare, verificastatements::childrenOutsideParentQuery(company, typeId));
        bench::stepBare(bare, verificastatements::orphanNodesQuery(company, typeId));
        if (!typeId) {
            bench::stepBare(bare, verificastatements::orphanPromotionsQuery(company));
            bench::stepBare(bare, verificastatements::orphanStatesQuery());
            bench::stepBare(bare, verificastatements::orphanContractConditionsQuery(company));
        }
    };
    for (const std::optional<qint64> typeId : {std::optional<qint64>(), std::optional<qint64>(generated.typeId)}) {
        const QString which = typeId ? QStringLiteral("the large tree's type") : QStringLiteral("every type");
        const bench::Timing bareTiming = bench::measure(runs, [&] { floor(typeId); });
        int findings = 0;
        const bench::Timing check = bench::measure(runs, [&] {
            findings = int(distinta::VerificaDistinte::verifica(connection, company, day, typeId).size());
        });
        bench::addTiming(table, QStringLiteral("floor: the check's statements stepped bare, ") + which, bareTiming,
                         bareTiming.bestMs);
        bench::addTiming(table, QStringLiteral("Verifica distinte, ") + which, check, bareTiming.bestMs,
                         bench::Target::TwiceFloor, QStringLiteral("%1 findings").arg(findings));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    return bench::runPerSize(argc, argv, QStringLiteral("Verifica distinte: the health check of the classifications"),
                             [](const bench::LargeDatabase &database, int runs, bench::BenchTable &table) {
                                 benchSize(database, runs, table);
                             },
                             {100000});
}
