#pragma once

#include <QString>

namespace os {

// The logged-in user's name, as the operating system knows it; empty when it cannot be read.
QString userName();

// This machine's host name; empty when it cannot be read.
QString computerName();

} // namespace os
