#include "framework/italiantranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace fw {

bool installItalianTranslations(QCoreApplication &application)
{
    // "qt_it" gathers the catalogues of every Qt module the program uses (widgets, dialogs,
    // printing, file errors).
    auto *translator = new QTranslator(&application);
    if (!translator->load(QStringLiteral("qt_it"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}

} // namespace fw
