#pragma once

#include <QByteArray>
#include <QString>

namespace db {

// The name to hand sqlite3_open_v2 (with SQLITE_OPEN_URI) for a database file: a "file:" URI
// of the absolute path with every character but letters, digits, "-._~/" percent-encoded.
// Debian's SQLite reads "file:" names as URIs even without the flag, so a plain name that
// happens to start with "file:" or hold a '?' would name another file; the URI never does.
//
// readOnly adds "mode=ro" and, unless another connection has the file open in WAL mode (its
// -wal and -shm beside it), "immutable=1": a reader that cannot write must not leave -wal or
// -shm files behind, and an immutable reader needs neither. ":memory:" is passed as it is.
QByteArray sqliteFileUri(const QString &path, bool readOnly = false);

} // namespace db
