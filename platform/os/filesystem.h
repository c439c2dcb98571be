#pragma once

#include <QString>

namespace os {

// Whether this process may write the file or folder at path, as the system decides it for the
// effective user (permissions, read-only file systems); false when it does not exist.
bool isWritable(const QString &path);

// Whether the file at path can be read only by its owner, who is this process's effective user
// (no permission at all for the group and the others): the test for a file that holds a secret.
bool isPrivateToUser(const QString &path);

} // namespace os
