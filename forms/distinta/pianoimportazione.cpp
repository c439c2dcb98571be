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

} // namespace

PianoImportazione PianoImportazione::prepara(const RigheImportazione &lette, const QList<NodoEsistente> &nodi)
{
    using Colonna = RigheImportazione::Colonna;
    const QList<RigaFile> &righe = lette.righe;
    const Colonna colonnaPadre = lette.colonne.at(RigheImportazione::Livello) >= 0 ? RigheImportazione::Livello
                                                                                   : RigheImportazione::CodicePadre;
    PianoImportazione piano;
    QHash<qint64, int> nodoPerId;
    QMultiHash<qint64, int> nodiPerSoggetto;
    for (int i = 0; i < nodi.size(); ++i) {
        nodoPerId.insert(nodi.at(i).idNodo, i);
        nodiPerSoggetto.insert(nodi.at(i).codice, i);
    }
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
        const auto sbaglia = [&](Colonna colonna, const QString &motivo) {
            voce.esito = Esito::Errore;
            voce.motivo = lette.erroreIn(riga.riga, colonna, motivo);
        };

        if (riga.livello) {
            const int livello = *riga.livello;
            ultimaPerLivello.resize(qMax(ultimaPerLivello.size(), livello), -1);
            if (livello > 1 && ultimaPerLivello.at(livello - 2) < 0 && riga.errore.isEmpty())
                sbaglia(
                    RigheImportazione::Livello,
                    QStringLiteral("il livello %1 non ha sopra una riga di livello %2").arg(livello).arg(livello - 1));
            else if (livello > 1)
                voce.padreNelFile = ultimaPerLivello.at(livello - 2);
            ultimaPerLivello[livello - 1] = i;
            ultimaPerLivello.resize(livello); // deeper rows above no longer take children
        }
        if (!riga.errore.isEmpty()) {
            voce.esito = Esito::Errore;
            voce.motivo = riga.errore;
        }
        if (voce.esito == Esito::Errore) {
            piano.voci << voce;
            continue;
        }
        const auto chiave = qMakePair(riga.codice, riga.dataInizio);
        if (const auto vista = viste.constFind(chiave); vista != viste.constEnd()) {
            sbaglia(RigheImportazione::Codice,
                    QStringLiteral("il soggetto %1 dal %2 compare già alla riga %3")
                        .arg(riga.codice)
                        .arg(giorno(riga.dataInizio))
                        .arg(righe.at(*vista).riga));
            piano.voci << voce;
            continue;
        }
        viste.insert(chiave, i);

        // The flat format names the parent by its subject: a row of the file whose period holds
        // the child's start first, then a node of the tree that does.
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
                // Outside every period of the parent's: its node in the tree, else its first row.
                const auto prima = [i](const QList<int> &indici) {
                    int minimo = -1;
                    for (const int k : indici) {
                        if (k != i && (minimo < 0 || k < minimo))
                            minimo = k;
                    }
                    return minimo;
                };
                if (const int nodo = prima(inAlbero); nodo >= 0)
                    voce.idPadre = nodi.at(nodo).idNodo;
                else if (const int r = prima(inFile); r >= 0)
                    voce.padreNelFile = r;
                else
                    sbaglia(RigheImportazione::CodicePadre,
                            QStringLiteral("il padre %1 non è nel file né nella distinta").arg(riga.codicePadre));
            }
        }

        for (const int n : nodiPerSoggetto.values(riga.codice)) {
            const NodoEsistente &nodo = nodi.at(n);
            if (voce.esito != Esito::Errore && nodo.dataInizio == riga.dataInizio) {
                voce.idNodo = nodo.idNodo;
                voce.esito = cambia(riga, nodo) ? Esito::DaAggiornare : Esito::Invariato;
            }
        }
        piano.voci << voce;
    }

    // A parent met in the file is known only now: a child may come before it. The node a row
    // updates keeps its parent; an import never moves a node.
    for (Voce &voce : piano.voci) {
        if (voce.esito == Esito::Errore || voce.idNodo == 0)
            continue;
        qint64 padreVoluto = voce.idPadre;
        if (voce.padreNelFile >= 0) {
            const Voce &padre = piano.voci.at(voce.padreNelFile);
            if (padre.esito == Esito::Errore)
                continue; // set aside below with its parent
            padreVoluto = padre.idNodo;
        }
        if (nodi.at(nodoPerId.value(voce.idNodo)).idPadre != padreVoluto) {
            voce.esito = Esito::Errore;
            voce.motivo = lette.erroreIn(voce.riga.riga, colonnaPadre,
                                         QStringLiteral("il soggetto %1 dal %2 è già nella distinta sotto un altro "
                                                        "padre, e l'importazione non sposta i nodi")
                                             .arg(voce.riga.codice)
                                             .arg(giorno(voce.riga.dataInizio)));
        }
    }
    piano.rifiutaFigli();
    return piano;
}

void PianoImportazione::rifiutaFigli()
{
    // A row whose chain of parents in the file reaches a row set aside, or comes back on itself,
    // is set aside with the whole chain up to there.
    for (int i = 0; i < voci.size(); ++i) {
        QList<int> catena;
        int corrente = i;
        while (corrente >= 0 && voci.at(corrente).esito != Esito::Errore && voci.at(corrente).esito != Esito::Rifiutato
               && !catena.contains(corrente)) {
            catena << corrente;
            corrente = voci.at(corrente).padreNelFile;
        }
        if (corrente < 0)
            continue;
        for (const int k : std::as_const(catena)) {
            voci[k].esito = Esito::Rifiutato;
            voci[k].motivo = QStringLiteral("padre rifiutato");
        }
    }
}

int PianoImportazione::quante(Esito esito) const
{
    return int(std::count_if(voci.cbegin(), voci.cend(), [esito](const Voce &voce) { return voce.esito == esito; }));
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
