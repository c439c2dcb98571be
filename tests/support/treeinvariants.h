#pragma once

#include <QString>
#include <QStringList>

// What must hold of the trees in a database file whoever wrote it, read in SQLite's own dialect
// on the file itself: each broken rule as one line ("nodo 12: in un ciclo"), none when the
// trees are sound. Also PRAGMA integrity_check, whose answer must be "ok". Both open the file
// as the next user would (recovering what a killed writer left in its WAL).
QStringList treeViolations(const QString &path);
QString integrityCheck(const QString &path);
