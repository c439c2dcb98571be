#include "filesystem.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace os {

bool isWritable(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    return faccessat(AT_FDCWD, name.constData(), W_OK, AT_EACCESS) == 0;
}

bool isPrivateToUser(const QString &path)
{
    struct stat info
    { };
    if (stat(QFile::encodeName(path).constData(), &info) != 0)
        return false;
    return S_ISREG(info.st_mode) && info.st_uid == geteuid() && (info.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

} // namespace os
