#pragma once

#include <QString>

namespace dbsetup {

// Where the large tree lives in a generated database.
inline constexpr int kLargeDatabaseCompany = 1;
inline constexpr int kLargeDatabaseKind = 0;   // customers
inline constexpr int kLargeDatabaseTypeId = 1; // GD01_ID of its only classification type
inline constexpr const char *kLargeDatabaseTypeCode = "CLI-GRANDE";

// Writes a database for benchmarks at path (replacing any file there): the schema, the demo's
// shared reference data and company 1's agents, divisions, classifications, priorities and
// campaigns, `subjects` customers with master and sales data, and ONE classification type of
// company 1 for customers holding a tree of `nodes` nodes: roots with parent 0, each subtree
// `depth` levels deep with fan-outs around `fanout` (from half to one and a half of it). Node i
// classifies customer (i mod subjects) + 1, so with subjects >= nodes every node has its own
// subject and no two links overlap. A few contracts, settlements and node promotions hang on
// the first roots, as in the demo. Deterministic.
//
// Written with prepared statements in one transaction, journal and sync off, and the secondary
// indexes created after the bulk insert; the file is left in WAL mode. It is written beside the
// target ("<path>.generating") and renamed when complete, with the schema version in PRAGMA
// user_version as its last write, so that an interrupted run never leaves a file that looks
// complete. Throws db::DatabaseError.
void generateLargeDatabase(const QString &path, int subjects, int nodes, int depth = 6, int fanout = 10);

// Whether path holds a database generateLargeDatabase() finished for today's schema, with `nodes`
// nodes in its tree: what a benchmark may reuse. Reads only; never throws.
bool isCompleteLargeDatabase(const QString &path, int nodes);

} // namespace dbsetup
