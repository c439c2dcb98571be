#pragma once

class QMdiArea;

namespace fw {

// Closes every sub-window of the area as its own close button would, the most recently active
// first, so that each form asks about its pending changes and keeps its layout. Stops at the
// first one that stays open (the user kept its changes) and returns false; true when all closed.
bool closeSubWindows(QMdiArea *area);

} // namespace fw
