#pragma once

#include "forms/distinta/pianoimportazione.h"
#include "framework/export/exportfile.h"
#include "framework/export/tablewriter.h"

namespace distinta {

// The dry run's report as a table: one line for each row of the file, with its fate.
class ResocontoImportazione
{
public:
    static QList<fw::ExportColumn> colonne();
    static QList<QVariant> valori(const PianoImportazione::Voce &voce);
    // "Da inserire: 12; da aggiornare: 3; invariate: 40; rifiutate: 2."
    static QString riepilogo(const PianoImportazione &piano);
    // Throws std::runtime_error with the message for the user.
    static void esporta(const PianoImportazione &piano, const QString &percorso, fw::ExportFile::Format formato,
                        const QString &titolo);
};

} // namespace distinta
