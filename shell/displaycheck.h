#pragma once

// Whether a window can be shown: an X11 or Wayland display is set, or Qt is asked (through
// QT_QPA_PLATFORM or -platform) for a platform that needs none, such as offscreen.
bool displayAvailable(int argc, char **argv);

// Prints why the program cannot start without a display and how to run it anyway.
void explainMissingDisplay();
