#pragma once

#include "framework/import/importedtable.h"

#include <QHash>
#include <optional>

namespace distinta {

// One row of an import file as the classification reads it. Values a row leaves out stay
// unset: an update keeps what the node has, an insertion takes the editor's defaults.
struct RigaFile
{
    int riga = 0;               // the line in the sheet
    std::optional<int> livello; // the export's format: the parent is the nearest row above one level up
    qint64 codicePadre = 0;     // the flat format: the parent's subject, 0 for a root
    qint64 codice = 0;
    QDate dataInizio;
    QDate dataFine;
    std::optional<int> tipoFatturazione;
    std::optional<qint64> codiceFatturazione; // 0: none
    std::optional<QString> descrizione;
    std::optional<qint64> prioritaStruttura;   // 0: none
    std::optional<qint64> prioritaLocalizzata; // 0: none
    std::optional<int> promozioni;
    QString errore; // why the row cannot be read, naming sheet, row and column; empty when it can
};

// What the file's codes and texts are read against.
struct CatalogoImportazione
{
    QHash<qint64, QString> soggetti; // the subjects of the classification's kind, with their names
    QHash<QString, qint64> priorita; // the price-list priorities by code and by description
    QStringList regoleFatturazione;  // the billing rules' texts, by code
    QStringList regolePromozioni;    // the nodes' campaign rules' texts, by code
};

// The headings of a file and the values of its rows. A file whose headings cannot be read
// (one missing, one repeated, no format recognised) has no rows: its reason says why.
struct RigheImportazione
{
    enum Colonna {
        Livello,
        CodicePadre,
        Codice,
        DataInizio,
        DataFine,
        TipoFatturazione,
        CodiceFatturazione,
        Descrizione,
        PrioritaStruttura,
        PrioritaLocalizzata,
        Promozioni,
        NumeroColonne
    };

    QString errore;
    QList<RigaFile> righe;
    QString foglio;     // empty for a CSV
    QList<int> colonne; // by Colonna: the file's column, -1 when it has none

    static RigheImportazione leggi(const fw::ImportedTable &tabella, const CatalogoImportazione &catalogo);
    static const QStringList &intestazioni(); // by Colonna
    // "Foglio "Clienti", riga 7, colonna D (Data inizio): " + motivo; a CSV names its field by number.
    QString erroreIn(int riga, Colonna colonna, const QString &motivo) const;
};

} // namespace distinta
