#pragma once

#include <QStringList>

class QMenu;
class QWidget;

// Two controls that show the same Alt+letter at once each only take the focus in turn, and two
// items of one menu with the same letter are chosen only by a second key: both are clashes.
// Each clash reads "Alt+<letter>: <text>, <text>".

// The controls visible in the form now: buttons, labels with a buddy, tabs, group boxes and
// Alt+letter shortcuts.
QStringList altLetterClashes(const QWidget *form);

// The visible items of one menu.
QStringList altLetterClashes(const QMenu *menu);
