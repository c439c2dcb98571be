#include "systeminfo.h"

#include <pwd.h>
#include <unistd.h>

#include <climits>
#include <vector>

namespace os {

QString userName()
{
    // The account of the process, not $USER, which anyone can set.
    long bufferSize = sysconf(_SC_GETPW_R_SIZE_MAX);
    if (bufferSize <= 0)
        bufferSize = 16384;
    std::vector<char> buffer(static_cast<size_t>(bufferSize));
    passwd entry {};
    passwd *found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_name)
        return QString::fromLocal8Bit(found->pw_name);
    return qEnvironmentVariable("USER");
}

QString computerName()
{
    char name[HOST_NAME_MAX + 1] = {};
    if (gethostname(name, sizeof name - 1) != 0)
        return {};
    return QString::fromLocal8Bit(name);
}

} // namespace os
