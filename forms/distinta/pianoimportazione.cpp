#include "forms/distinta/pianoimportazione.h"

#include <QHash>

namespace distinta {

namespace {

using Voce = PianoImportazione::Voce;
using Esito = PianoImportazione::Esito;

QString giorno(const QDate &day)
{
    return day.toString(QStringLiteral("dd/MM/yyyy"));
}

bool copre(const QDate &inizio, const QDate &fine, const QDate &day)
{
    return inizio <= day && (!fine.isValid() || day <= fine);
}

// Whether the row would change what the node holds; what the row leaves out stays as it is.
bool cambia(const RigaFile &riga, const NodoEsistente &nodo)
{
    return riga.dataFine != nodo.dataFine || (riga.tipoFatturazione && *riga.tipoFatturazione != nodo.tipoFatturazione)
        || (riga.codiceFatturazione && *riga.codiceFatturazione != nodo.codiceFatturazione)
        || (riga.descrizione && *riga.descrizione != nodo.descrizione)
        || (riga.prioritaStruttura && *riga.prioritaStruttura != nodo.prioritaStruttura)
        || (riga.prioritaLocalizzata && *riga.prioritaLocalizzata != nodo.prioritaLocalizzata)
        || (riga.promozioni && *riga.promozioni != nodo.promozioni);
}

void sbaglia(Voce &voce, const QString &motivo)
{
    voce.esito = Esito::Errore;
    voce.motivo = motivo;
}

} // namespace

PianoImportazione PianoImportazione::prepara(const QList<RigaFile> &righe, const QList<NodoEsistente> &nodi)
{
    PianoImportazione piano;
    QMultiHash<qint64, int> nodiPerSoggetto;
    for (int i = 0; i < nodi.size(); ++i)
        nodiPerSoggetto.insert(nodi.at(i).codice, i);
    QMultiHash<qint64, int> righePerSoggetto;
    for (int i = 0; i < righe.size(); ++i)
        righePerSoggetto.insert(righe.at(i).codice, i);

    QList<int> ultimaPerLivello; // the export's format: the last row seen at each level
    QHash<QPair<qint64, QDate>, int> viste;
    for (int i = 0; i < righe.size(); ++i) {
        Voce voce;
        voce.riga = righe.at(i);
        voce.esito = Esito::DaInserire;
        const RigaFile &riga = voce.riga;

        if (riga.livello) {
            const int livello = *riga.livello;
            ultimaPerLivello.resize(qMax(ultimaPerLivello.size(), livello), -1);
            if (livello > 1 && ultimaPerLivello.at(livello - 2) < 0)
                sbaglia(voce, QStringLiteral("Riga %1: il livello %2 non ha sopra una riga di livello %3")
                                  .arg(riga.riga)
                                  .arg(livello)
                                  .arg(livello - 1));
            else if (livello > 1)
                voce.padreNelFile = ultimaPerLivello.at(livello - 2);
            ultimaPerLivello[livello - 1] = i;
            ultimaPerLivello.resize(livello); // deeper rows above no longer take children
        }
        if (!riga.errore.isEmpty()) {
            sbaglia(voce, riga.errore);
            piano.voci << voce;
            continue;
        }
        const auto chiave = qMakePair(riga.codice, riga.dataInizio);
        if (const auto vista = viste.constFind(chiave); vista != viste.constEnd()) {
            sbaglia(voce, QStringLiteral("Riga %1: il soggetto %2 dal %3 compare già alla riga %4")
                              .arg(riga.riga)
                              .arg(riga.codice)
                              .arg(giorno(riga.dataInizio))
                              .arg(righe.at(*vista).riga));
            piano.voci << voce;
            continue;
        }
        viste.insert(chiave, i);

        // The flat format names the parent by its subject: a row of the file whose period holds
        // the child's start first, then a node of the tree, then any row or node of that subject.
        if (!riga.livello && riga.codicePadre != 0) {
            const QList<int> inFile = righePerSoggetto.values(riga.codicePadre);
            const QList<int> inAlbero = nodiPerSoggetto.values(riga.codicePadre);
            for (const int r : inFile) {
                if (r != i && copre(righe.at(r).dataInizio, righe.at(r).dataFine, riga.dataInizio)) {
                    voce.padreNelFile = r;
                    break;
                }
            }
            for (int k = 0; voce.padreNelFile < 0 && voce.idPadre == 0 && k < inAlbero.size(); ++k) {
                const NodoEsistente &nodo = nodi.at(inAlbero.at(k));
                if (copre(nodo.dataInizio, nodo.dataFine, riga.dataInizio))
                    voce.idPadre = nodo.idNodo;
            }
            if (voce.padreNelFile < 0 && voce.idPadre == 0) {
                if (!inFile.isEmpty() && inFile.first() != i)
                    voce.padreNelFile = inFile.first();
                else if (!inAlbero.isEmpty())
                    voce.idPadre = nodi.at(inAlbero.first()).idNodo;
                else
                    sbaglia(voce, QStringLiteral("Riga %1: il padre %2 non è nel file né nella distinta")
                                      .arg(riga.riga)
                                      .arg(riga.codicePadre));
            }
        }

        for (const int n : nodiPerSoggetto.values(riga.codice)) {
            const NodoEsistente &nodo = nodi.at(n);
            if (nodo.dataInizio != riga.dataInizio)
                continue;
            voce.idNodo = nodo.idNodo;
            voce.esito = cambia(riga, nodo) ? Esito::DaAggiornare : Esito::Invariato;
        }
        piano.voci << voce;
    }

    // A parent met in the file is resolved only now: a child may come before it. The node a row
    // updates keeps its parent; an import never moves a node.
    for (Voce &voce : piano.voci) {
        if (voce.esito == Esito::Errore || voce.idNodo == 0 || voce.padreNelFile < 0)
            continue;
        const Voce &padre = piano.voci.at(voce.padreNelFile);
        const qint64 idPadre = padre.idNodo;
        const auto nodo = std::find_if(nodi.cbegin(), nodi.cend(), [&](const NodoEsistente &n) {
            return n.idNodo == voce.idNodo;
        });
        if (idPadre == 0 || nodo->idPadre != idPadre)
            sbaglia(voce, QStringLiteral("Riga %1: il soggetto %2 dal %3 è già nella distinta sotto un altro padre, "
                                         "e l'importazione non sposta i nodi")
                              .arg(voce.riga.riga)
                              .arg(voce.riga.codice)
                              .arg(giorno(voce.riga.dataInizio)));
    }
    for (Voce &voce : piano.voci) {
        if (voce.esito != Esito::Errore && voce.idNodo != 0 && voce.padreNelFile < 0 && !voce.riga.livello) {
            const auto nodo = std::find_if(nodi.cbegin(), nodi.cend(), [&](const NodoEsistente &n) {
                return n.idNodo == voce.idNodo;
            });
            if (nodo->idPadre != voce.idPadre)
                sbaglia(voce, QStringLiteral("Riga %1: il soggetto %2 dal %3 è già nella distinta sotto un altro "
                                             "padre, e l'importazione non sposta i nodi")
                                  .arg(voce.riga.riga)
                                  .arg(voce.riga.codice)
                                  .arg(giorno(voce.riga.dataInizio)));
        }
    }

    // A row under a row set aside is set aside too, however far down; a loop of parents in the
    // file never reaches the tree, so its rows are refused as well.
    for (int i = 0; i < piano.voci.size(); ++i) {
        QList<int> catena;
        int corrente = i;
        while (corrente >= 0 && piano.voci.at(corrente).esito != Esito::Errore
               && piano.voci.at(corrente).esito != Esito::Rifiutato && !catena.contains(corrente)) {
            catena << corrente;
            corrente = piano.voci.at(corrente).padreNelFile;
        }
        if (corrente < 0)
            continue;
        for (const int k : std::as_const(catena)) {
            Voce &voce = piano.voci[k];
            voce.esito = Esito::Rifiutato;
            voce.motivo = QStringLiteral("padre rifiutato");
        }
    }
    return piano;
}

QString PianoImportazione::testoEsito(const Voce &voce)
{
    switch (voce.esito) {
    case Esito::DaInserire: return QStringLiteral("Da inserire");
    case Esito::DaAggiornare: return QStringLiteral("Da aggiornare");
    case Esito::Invariato: return QStringLiteral("Invariato");
    case Esito::Rifiutato: return QStringLiteral("Rifiutato: ") + voce.motivo;
    case Esito::Errore: return voce.motivo;
    }
    return {};
}

} // namespace distinta
