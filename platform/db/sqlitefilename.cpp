#include "sqlitefilename.h"

#include <QFileInfo>

namespace db {

QByteArray sqliteFileUri(const QString &path, bool readOnly)
{
    if (path == QLatin1String(":memory:"))
        return path.toUtf8();
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QByteArray uri = QByteArrayLiteral("file:") + absolute.toUtf8().toPercentEncoding("/");
    if (readOnly) {
        uri += QByteArrayLiteral("?mode=ro");
        const bool openInWal = QFileInfo::exists(absolute + QStringLiteral("-wal"))
            && QFileInfo::exists(absolute + QStringLiteral("-shm"));
        if (!openInWal)
            uri += QByteArrayLiteral("&immutable=1");
    }
    return uri;
}

} // namespace db
