#include "largetree.h"

#include "benchutil.h"

#include "db/sqlitefile.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/treelist/treelist.h"
#include "platform/db/recordset.h"
#include "platform/db/tsqltranslator.h"

#include <QStringList>
#include <vector>

namespace bench {

Shape::Shape(dbsetup::SqliteFile &file, qint64 typeId)
{
    dbsetup::SqliteStatement rows = file.prepare(
        QStringLiteral("SELECT GD02_ID, COALESCE(GD02_IDPARENT_GD02, 0) FROM GD02_DISTINTA WHERE GD02_ID_GD01 = %1")
            .arg(typeId));
    QList<qint64> order;
    while (rows.step()) {
        const qint64 id = rows.columnInt64(0);
        parent.insert(id, rows.columnInt64(1));
        order << id;
    }
    QList<qint64> roots;
    for (qint64 id : std::as_const(order)) {
        const qint64 up = parent.value(id);
        (parent.contains(up) ? children[up] : roots) << id;
    }
    // Depth first with an explicit stack: levels on the way down, sizes on the way back.
    std::vector<std::pair<qint64, bool>> stack;
    for (qint64 root : std::as_const(roots)) {
        level.insert(root, 0);
        stack.push_back({root, false});
    }
    while (!stack.empty()) {
        auto [id, done] = stack.back();
        stack.pop_back();
        if (done) {
            int total = 1;
            for (qint64 child : children.value(id))
                total += size.value(child);
            size.insert(id, total);
            continue;
        }
        stack.push_back({id, true});
        for (qint64 child : children.value(id)) {
            level.insert(child, level.value(id) + 1);
            stack.push_back({child, false});
        }
    }
}

qint64 Shape::nearest(int wanted) const
{
    qint64 best = 0;
    for (auto it = size.cbegin(); it != size.cend(); ++it) {
        if (best == 0 || std::abs(it.value() - wanted) < std::abs(size.value(best) - wanted))
            best = it.key();
    }
    return best;
}

QList<qint64> Shape::below(qint64 id) const
{
    QList<qint64> nodes;
    QList<qint64> pending = children.value(id);
    while (!pending.isEmpty()) {
        const qint64 next = pending.takeLast();
        nodes << next;
        pending << children.value(next);
    }
    return nodes;
}

QString idList(const QList<qint64> &ids)
{
    QStringList texts;
    texts.reserve(ids.size());
    for (qint64 id : ids)
        texts << QString::number(id);
    return texts.join(u',');
}

// Runs a translated module statement to its end on the bare connection, reading every row.
void stepBare(dbsetup::SqliteFile &file, const QString &tsql)
{
    dbsetup::SqliteStatement statement = file.prepare(db::translateTsqlToSqlite(tsql));
    while (statement.step()) {
    }
}

void tickSubjects(FRMGD_DISTINTA *form, int firstCode, int count)
{
    const db::RecordsetPtr ticks = form->parti().anagrafiche.lista()->clone();
    const int code = ticks->fieldIndex(QStringLiteral("Codice"));
    for (ticks->moveFirst(); !ticks->eof(); ticks->moveNext()) {
        const int subject = ticks->value(code).toInt();
        if (subject >= firstCode && subject < firstCode + count)
            ticks->setValue(QStringLiteral("Seleziona"), 1);
    }
}

void focusNode(fw::TreeList *tree, const FRMGD_DISTINTA *form, qint64 id)
{
    const db::RecordsetPtr nodes = form->nodi();
    const int idField = nodes->fieldIndex(QStringLiteral("GD02_ID"));
    for (int row = 0; row < nodes->recordCount(); ++row) {
        if (nodes->valueAt(row, idField).toLongLong() == id) {
            tree->setFocusedNode(tree->nodeOfRow(row));
            return;
        }
    }
    bench::fail(QStringLiteral("node %1 is not in the tree").arg(id));
}

void addUnlinkedCustomers(dbsetup::SqliteFile &file, int firstCode, int count)
{
    dbsetup::inTransaction(file, [&] {
        const qint64 general = file.scalar(QStringLiteral("SELECT MAX(CG16_CODICE) FROM CG16_ANAGGEN"));
        dbsetup::SqliteStatement names = file.prepare(
            QStringLiteral("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_CITTA, CG16_PROV) VALUES (?, "
                           "?, 'Modena', 'MO')"));
        dbsetup::SqliteStatement subjects = file.prepare(
            QStringLiteral("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16) "
                           "VALUES (1, 0, ?, ?)"));
        for (int i = 0; i < count; ++i) {
            names.insert(std::int64_t(general + 1 + i), QStringLiteral("Nuovo cliente %1").arg(i + 1));
            subjects.insert(std::int64_t(firstCode + i), std::int64_t(general + 1 + i));
        }
    });
}

} // namespace bench
