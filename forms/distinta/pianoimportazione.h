#pragma once

#include "forms/distinta/righeimportazione.h"

namespace distinta {

// A node of the classification as an import compares it.
struct NodoEsistente
{
    qint64 idNodo = 0;
    qint64 idPadre = 0; // 0 for a root
    qint64 codice = 0;
    QDate dataInizio;
    QDate dataFine;
    int tipoFatturazione = 0;
    qint64 codiceFatturazione = 0;
    QString descrizione;
    qint64 prioritaStruttura = 0;
    qint64 prioritaLocalizzata = 0;
    int promozioni = 0;
};

// What an import would do with each row of its file, before anything is written. Rows are
// matched to the tree by subject and start date; a parent is a row of the file or a node of
// the tree. The checks of the links themselves (overlaps, recursion, bonuses) come after.
struct PianoImportazione
{
    enum class Esito { DaInserire, DaAggiornare, Invariato, Rifiutato, Errore };

    struct Voce
    {
        RigaFile riga;
        Esito esito = Esito::Errore;
        QString motivo;        // a refusal's or an error's text
        qint64 idNodo = 0;     // the node an update changes
        int padreNelFile = -1; // the index of the parent's entry, when the parent is a row of the file
        qint64 idPadre = 0;    // the parent node, when it is in the tree already
    };

    QList<Voce> voci;

    static PianoImportazione prepara(const RigheImportazione &lette, const QList<NodoEsistente> &nodi);
    // Sets aside, as "padre rifiutato", every row under a row set aside, and the rows of a loop
    // of parents within the file.
    void rifiutaFigli();
    // How many entries have that fate.
    int quante(Esito esito) const;
    // The fate's text as the report shows it: "Da inserire", "Rifiutato: ...".
    static QString testoEsito(const Voce &voce);
};

} // namespace distinta
