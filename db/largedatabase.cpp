#include "largedatabase.h"

#include "democompanies.h"
#include "democonditions.h"
#include "democontext.h"
#include "demoreference.h"
#include "demosubjects.h"
#include "demotrees.h"
#include "embeddedscripts.h"
#include "sqlitefile.h"

#include "platform/db/databaseerror.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <vector>

namespace dbsetup {

namespace {

constexpr std::uint64_t kLargeSeed = 19700101;
constexpr int kStartMonths = 60; // roots start in one of the months of 2020..2024

struct NodeShape
{
    std::vector<int> parent; // 0-based index of the parent, -1 for a root
    std::vector<int> level;
};

// Breadth first within each root: a root takes up to the size of a full subtree of mean fan-out,
// its nodes take between half and one and a half of the fan-out as children.
NodeShape shapeTree(DemoRandom &random, int nodes, int depth, int fanout)
{
    NodeShape shape;
    shape.parent.reserve(std::size_t(nodes));
    shape.level.reserve(std::size_t(nodes));
    long long fullSubtree = 0;
    long long width = 1;
    for (int level = 0; level < depth; ++level) {
        fullSubtree += width;
        width *= fanout;
        if (fullSubtree > nodes)
            break;
    }
    int next = 0;
    while (next < nodes) {
        const int root = next++;
        shape.parent.push_back(-1);
        shape.level.push_back(0);
        for (int candidate = root; candidate < next && next < nodes && next - root < fullSubtree; ++candidate) {
            if (shape.level[std::size_t(candidate)] + 1 >= depth)
                break; // breadth first: every later candidate is as deep
            const int children = random.between(std::max(1, fanout / 2), fanout + fanout / 2);
            for (int c = 0; c < children && next < nodes && next - root < fullSubtree; ++c, ++next) {
                shape.parent.push_back(candidate);
                shape.level.push_back(shape.level[std::size_t(candidate)] + 1);
            }
        }
    }
    return shape;
}

void fastGuid(DemoRandom &random, char (&out)[37])
{
    static const char hex[] = "0123456789ABCDEF";
    const std::uint64_t a = random.next();
    const std::uint64_t b = random.next();
    int position = 0;
    for (int i = 0; i < 32; ++i) {
        if (i == 8 || i == 12 || i == 16 || i == 20)
            out[position++] = '-';
        const std::uint64_t word = i < 16 ? a : b;
        char digit = hex[(word >> ((i % 16) * 4)) & 0xF];
        if (i == 12)
            digit = '4';
        else if (i == 16)
            digit = "89AB"[a % 4];
        out[position++] = digit;
    }
    out[36] = '\0';
}

void writeNodes(DemoContext &context, const CompanyReference &reference, const NodeShape &shape,
                const std::vector<DemoSubject> &subjects, std::vector<DemoNode> &firstRootsFamily)
{
    DemoRandom &random = context.random;
    const int nodes = int(shape.parent.size());
    const int structural = reference.priorityIds.at(QStringLiteral("GDO"));
    const int north = reference.priorityIds.at(QStringLiteral("LOCN"));
    const int south = reference.priorityIds.at(QStringLiteral("LOCS"));

    std::array<QByteArray, kStartMonths> startDates;
    for (int month = 0; month < kStartMonths; ++month)
        startDates[std::size_t(month)] = sqlDate(QDate(2020, 1, 1).addMonths(month)).toLatin1();
    const QByteArray openEnd = openEndDate().toLatin1();
    const QByteArray shortEnd = sqlDate(2026, 12, 31).toLatin1();
    const char *const stamp = "2025-01-15 09:30:00";

    SqliteStatement insert = context.file.prepare(QStringLiteral(
        "INSERT INTO GD02_DISTINTA (GD02_ID, GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, GD02_TIPOCF_CG44,"
        " GD02_CLIFOR_CG44, GD02_INDREGPROV, GD02_ID_WF02, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL,"
        " GD02_TIPOANAGFATT, GD02_CLIFORFATT_CG44, GD02_DESCR, GD02_IDSTRUTTURA_LP09,"
        " GD02_IDLOCALIZZATA_LP09, GD02_INDEREPROMO, gd02_guid, GD02_DATACRE, GD02_GRUPPOCRE,"
        " GD02_UTENTECRE, GD02_DATAVAR, GD02_GRUPPOVAR, GD02_UTENTEVAR)"
        " VALUES (?, ?, ?, ?, ?, ?, 0, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 'COMMERCIALE', 'admin', ?, 'COMMERCIALE', "
        "'admin')"));

    std::vector<std::uint8_t> startMonth(static_cast<std::size_t>(nodes));
    std::vector<std::uint8_t> shortPeriod(static_cast<std::size_t>(nodes));
    char guid[37];
    int firstRoots = 0;
    for (int i = 0; i < nodes; ++i) {
        const int parent = shape.parent[std::size_t(i)];
        const bool root = parent < 0;
        if (root) {
            startMonth[std::size_t(i)] = std::uint8_t(random.between(0, kStartMonths - 13));
            shortPeriod[std::size_t(i)] = random.chance(10);
        } else {
            const int inherited = startMonth[std::size_t(parent)];
            startMonth[std::size_t(i)] = std::uint8_t(
                random.chance(80) ? inherited : random.between(inherited, std::min(inherited + 12, kStartMonths - 1)));
            shortPeriod[std::size_t(i)] = shortPeriod[std::size_t(parent)];
        }
        const DemoSubject &subject = subjects[std::size_t(i) % subjects.size()];
        int billingRule = 0;
        if (!root) {
            const int draw = random.between(1, 100);
            billingRule = draw <= 70 ? 0 : draw <= 85 ? 1 : draw <= 95 ? 2 : 3;
        }
        const int state = root ? 6 : (random.chance(30) ? 6 : 0);
        fastGuid(random, guid);
        const char *start = startDates[startMonth[std::size_t(i)]].constData();

        insert.bind(1, i + 1);
        insert.bind(2, kLargeDatabaseTypeId);
        insert.bind(3, root ? 0 : parent + 1);
        insert.bind(4, kLargeDatabaseCompany);
        insert.bind(5, kLargeDatabaseKind);
        insert.bind(6, subject.code);
        insert.bind(7, state);
        insert.bind(8, start);
        insert.bind(9, shortPeriod[std::size_t(i)] ? shortEnd.constData() : openEnd.constData());
        insert.bind(10, billingRule);
        insert.bind(11, nullptr);
        if (root)
            insert.bind(12, "Centrale acquisti");
        else
            insert.bind(12, nullptr);
        if (root || random.chance(5))
            insert.bind(13, structural);
        else
            insert.bind(13, nullptr);
        if (random.chance(20))
            insert.bind(14, subject.macroArea == 'N' ? north : south);
        else
            insert.bind(14, nullptr);
        insert.bind(15, root ? 2 : 0);
        insert.bind(16, static_cast<const char *>(guid));
        insert.bind(17, stamp);
        insert.bind(18, stamp);
        insert.run();

        // The first three roots and their children carry the demo-like contracts and promotions.
        if (root)
            ++firstRoots;
        if (firstRoots <= 3 && (root || shape.level[std::size_t(i)] == 1)) {
            DemoNode node;
            node.id = i + 1;
            node.parentId = root ? 0 : parent + 1;
            node.level = shape.level[std::size_t(i)];
            node.subject = subject.code;
            node.macroArea = subject.macroArea;
            node.promoRule = root ? 2 : 0;
            node.guid = QString::fromLatin1(guid);
            node.state = state;
            firstRootsFamily.push_back(node);
        }
    }
}

void removeDatabaseFiles(const QString &path)
{
    for (const QString &suffix :
         {QString(), QStringLiteral("-wal"), QStringLiteral("-shm"), QStringLiteral("-journal")})
        QFile::remove(path + suffix);
}

void writeLargeDatabase(const QString &path, int subjects, int nodes, int depth, int fanout)
{
    SqliteFile file(path);
    file.exec(QStringLiteral("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE;"
                             " PRAGMA temp_store=MEMORY; PRAGMA cache_size=-262144;"));
    inTransaction(file, [&] {
        const QStringList indexes = file.execScript(sqliteSchemaScript(), SqliteFile::Statements::AllButIndexes);

        DemoContext context(file, kLargeSeed);
        writeSharedReference(context);
        const CompanyReference reference = writeCompanyReference(context, demoMainCompanyProfile());
        SubjectWriter subjectWriter(context, reference);
        const std::vector<DemoSubject> customers = subjectWriter.write({kLargeDatabaseKind, 1, subjects, 95});

        TreeWriter trees(context, kLargeDatabaseCompany);
        trees.writeType({kLargeDatabaseTypeCode,
                         "Distinta clienti di grandi dimensioni",
                         kLargeDatabaseKind,
                         {},
                         reference.priorityIds.at(QStringLiteral("GDO"))});
        const QString typeGuid = trees.lastTypeGuid();

        std::vector<DemoNode> family;
        writeNodes(context, reference, shapeTree(context.random, nodes, depth, fanout), customers, family);

        ConditionWriter conditions(context, reference);
        std::vector<DemoNode> contractNodes;
        for (const DemoNode &node : family) {
            if (node.level == 0 || contractNodes.size() < 6)
                contractNodes.push_back(node);
        }
        conditions.writeContracts(contractNodes, family, {});
        conditions.writeNodePromotions(family);
        conditions.writeStates(typeGuid, 6, family);
        conditions.writeParameters();

        for (const QString &index : indexes)
            file.exec(index);
        // Installed after the bulk load: the generated rows are no one's changes.
        file.execScript(journalScript());
    });
    file.exec(QStringLiteral("PRAGMA locking_mode=NORMAL; PRAGMA journal_mode=WAL;"));
    // The completion mark, written last.
    file.exec(QStringLiteral("PRAGMA user_version = %1").arg(kSchemaVersion));
}

} // namespace

void generateLargeDatabase(const QString &path, int subjects, int nodes, int depth, int fanout)
{
    subjects = std::max(1, subjects);
    nodes = std::max(0, nodes);
    depth = std::max(1, depth);
    fanout = std::max(1, fanout);

    // Built aside and renamed when complete: killed half-way, the generator leaves at most a
    // ".generating" file, which the next run removes, and never a file under the target's name.
    const QString building = path + QStringLiteral(".generating");
    removeDatabaseFiles(building);
    try {
        writeLargeDatabase(building, subjects, nodes, depth, fanout);
    } catch (...) {
        removeDatabaseFiles(building);
        throw;
    }
    removeDatabaseFiles(path);
    if (!QFile::rename(building, path)) {
        removeDatabaseFiles(building);
        throw db::DatabaseError({{QStringLiteral("Impossibile rinominare il database generato in ") + path,
                                  QStringLiteral("SQLite"),
                                  {},
                                  0}});
    }
}

bool isCompleteLargeDatabase(const QString &path, int nodes)
{
    if (!QFileInfo::exists(path))
        return false;
    try {
        SqliteFile file(path, SqliteFile::Access::ReadOnly);
        return file.scalar(QStringLiteral("PRAGMA user_version")) == kSchemaVersion
            && file.scalar(QStringLiteral("SELECT COUNT(*) FROM GD02_DISTINTA WHERE GD02_ID_GD01 = %1")
                               .arg(kLargeDatabaseTypeId))
            == nodes;
    } catch (const db::DatabaseError &) {
        return false;
    }
}

} // namespace dbsetup
