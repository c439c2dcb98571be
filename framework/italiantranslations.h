#pragma once

class QCoreApplication;

namespace fw {

// Qt's own windows (file dialogs, the print preview, the buttons of its standard dialogs) and the
// system errors Qt words itself ("Permission denied", "No space left on device") speak Italian
// like the rest of the program. Returns false when Qt's Italian catalogue is not installed; the
// program then still works, with those texts in English.
bool installItalianTranslations(QCoreApplication &application);

} // namespace fw
