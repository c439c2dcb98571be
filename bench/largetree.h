#pragma once

#include <QHash>
#include <QList>
#include <QString>

class FRMGD_DISTINTA;

namespace dbsetup {
class SqliteFile;
}
namespace fw {
class TreeList;
}

// The generated tree as the write benchmarks need it: its shape, and the editor focused on a node.
namespace bench {

// The large tree's shape, read once: parents, subtree sizes, levels, in GD02_ID terms.
struct Shape
{
    QHash<qint64, qint64> parent;
    QHash<qint64, QList<qint64>> children;
    QHash<qint64, int> size; // the node and every node below it
    QHash<qint64, int> level;

    Shape(dbsetup::SqliteFile &file, qint64 typeId);
    // The node whose subtree is nearest the wanted size.
    qint64 nearest(int wanted) const;
    QList<qint64> below(qint64 id) const;
};

// count customers of company 1 that no classification holds, coded from firstCode on.
void addUnlinkedCustomers(dbsetup::SqliteFile &file, int firstCode, int count);
// "1,2,3" for an IN list.
QString idList(const QList<qint64> &ids);
// Runs a translated module statement to its end on the bare connection, reading every row.
void stepBare(dbsetup::SqliteFile &file, const QString &tsql);
void focusNode(fw::TreeList *tree, const FRMGD_DISTINTA *form, qint64 id);
// Ticks the subjects coded firstCode to firstCode + count - 1 in the editor's subject list.
void tickSubjects(FRMGD_DISTINTA *form, int firstCode, int count);

} // namespace bench
