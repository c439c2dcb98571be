#pragma once

#include "platform/db/connection.h"

#include <QString>

struct ShellOptions;

// The database a run works on, opened as the options say. A SQLite file is looked at before
// anything is written to it: a missing one becomes the demo database when a user starts the
// program and is an error in a run without one; a file that is not a database of this module
// is refused and left as it was; one the user may not write (or whose folder they may not write)
// opens read-only; one of ours is brought up to date.
struct ShellDatabase
{
    db::ConnectionPtr connection; // null when problem is set
    QString description;          // for the status bar
    bool readOnly = false;
    QString warning; // to print, and go on
    QString notice;  // to show once the window is up (read-only)
    QString problem; // to show, and stop

    static ShellDatabase open(const ShellOptions &options);
};
