#include "forms/distinta/resocontoimportazione.h"

namespace distinta {

using Esito = PianoImportazione::Esito;

QList<fw::ExportColumn> ResocontoImportazione::colonne()
{
    return {{QStringLiteral("Riga"), fw::ExportCellKind::Number},
            {QStringLiteral("Codice"), fw::ExportCellKind::Number},
            {QStringLiteral("Data inizio"), fw::ExportCellKind::Date},
            {QStringLiteral("Data fine"), fw::ExportCellKind::Date},
            {QStringLiteral("Esito"), fw::ExportCellKind::Text}};
}

QList<QVariant> ResocontoImportazione::valori(const PianoImportazione::Voce &voce)
{
    const RigaFile &riga = voce.riga;
    const auto data = [](const QDate &day) { return day.isValid() ? QVariant(day) : QVariant(); };
    return {riga.riga, riga.codice != 0 ? QVariant(riga.codice) : QVariant(), data(riga.dataInizio),
            data(riga.dataFine), PianoImportazione::testoEsito(voce)};
}

QString ResocontoImportazione::riepilogo(const PianoImportazione &piano)
{
    return QStringLiteral("Da inserire: %1; da aggiornare: %2; invariate: %3; rifiutate: %4.")
        .arg(piano.quante(Esito::DaInserire))
        .arg(piano.quante(Esito::DaAggiornare))
        .arg(piano.quante(Esito::Invariato))
        .arg(piano.quante(Esito::Rifiutato) + piano.quante(Esito::Errore));
}

void ResocontoImportazione::esporta(const PianoImportazione &piano, const QString &percorso,
                                    fw::ExportFile::Format formato, const QString &titolo)
{
    const std::unique_ptr<fw::TableWriter> writer = fw::ExportFile::writer(formato, fw::TableShape::Flat);
    writer->open(percorso, titolo, colonne());
    for (const PianoImportazione::Voce &voce : piano.voci)
        writer->writeRow(0, valori(voce));
    writer->commit();
}

} // namespace distinta
