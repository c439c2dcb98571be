#include "forms/distinta/controlloimportazione.h"

#include "data/legamistatements.h"
#include "data/nodistatements.h"
#include "forms/distinta/controllilegami.h"
#include "forms/distinta/verifica.h"

#include <QQueue>

namespace distinta {

namespace {

using Voce = PianoImportazione::Voce;
using Esito = PianoImportazione::Esito;

bool sovrapposti(const QDate &inizioA, const QDate &fineA, const QDate &inizioB, const QDate &fineB)
{
    return inizioA <= fineB && inizioB <= fineA;
}

void rifiuta(Voce &voce, const QString &motivo)
{
    voce.esito = Esito::Rifiutato;
    voce.motivo = motivo;
}

} // namespace

ControlloImportazione::ControlloImportazione(db::ConnectionPtr connection, const ContestoImportazione &contesto,
                                             const QList<NodoEsistente> &nodi,
                                             const QHash<qint64, QString> &ragioniSociali)
    : m_connection(std::move(connection))
    , m_contesto(contesto)
    , m_ragioniSociali(ragioniSociali)
{
    m_posti.reserve(nodi.size());
    for (const NodoEsistente &nodo : nodi) {
        m_posti.insert(nodo.idNodo, {nodo.idPadre, nodo.codice, nodo.dataInizio, nodo.dataFine});
        m_postiPerSoggetto.insert(nodo.codice, nodo.idNodo);
    }
}

QList<int> ControlloImportazione::ordine(const PianoImportazione &piano)
{
    QList<int> ordine;
    QHash<int, QList<int>> figli;
    QQueue<int> coda;
    for (int i = 0; i < piano.voci.size(); ++i) {
        const Voce &voce = piano.voci.at(i);
        if (voce.esito == Esito::DaAggiornare || voce.esito == Esito::Invariato)
            ordine << i;
        if (voce.esito != Esito::DaInserire)
            continue;
        if (voce.padreNelFile >= 0 && piano.voci.at(voce.padreNelFile).esito == Esito::DaInserire)
            figli[voce.padreNelFile] << i;
        else
            coda.enqueue(i);
    }
    while (!coda.isEmpty()) {
        const int i = coda.dequeue();
        ordine << i;
        for (const int figlio : figli.value(i))
            coda.enqueue(figlio);
    }
    return ordine;
}

qint64 ControlloImportazione::chiave(const PianoImportazione &piano, int indice) const
{
    const qint64 idNodo = piano.voci.at(indice).idNodo;
    return idNodo != 0 ? idNodo : -1 - qint64(indice);
}

void ControlloImportazione::risali(qint64 posto, const std::function<bool(qint64)> &continua) const
{
    qsizetype passi = 0;
    for (qint64 k = m_posti.value(posto).padre; k != 0 && passi <= m_posti.size() && continua(k);
         k = m_posti.value(k).padre)
        ++passi;
}

bool ControlloImportazione::verifica(PianoImportazione &piano, const std::function<bool(int)> &avanza)
{
    for (const Voce &voce : std::as_const(piano.voci)) {
        if (voce.esito == Esito::DaAggiornare || voce.esito == Esito::Invariato)
            m_nodiNelFile.insert(voce.idNodo);
    }
    int fatti = 0;
    for (const int i : ordine(piano)) {
        if (!avanza(++fatti))
            return false;
        Voce &voce = piano.voci[i];
        if (voce.esito == Esito::DaAggiornare) {
            if (const QString motivo = controllaModifica(voce); !motivo.isEmpty())
                rifiuta(voce, motivo);
            else
                m_posti[voce.idNodo].fine = voce.riga.dataFine;
            continue;
        }
        if (voce.esito != Esito::DaInserire)
            continue;
        qint64 padre = voce.idPadre;
        if (voce.padreNelFile >= 0) {
            const Esito esitoPadre = piano.voci.at(voce.padreNelFile).esito;
            if (esitoPadre == Esito::Errore || esitoPadre == Esito::Rifiutato) {
                rifiuta(voce, QStringLiteral("padre rifiutato"));
                continue;
            }
            padre = chiave(piano, voce.padreNelFile);
        }
        if (const QString motivo = controllaNuovo(piano, i, padre); !motivo.isEmpty()) {
            rifiuta(voce, motivo);
            continue;
        }
        const qint64 posto = -1 - qint64(i);
        m_posti.insert(posto, {padre, voce.riga.codice, voce.riga.dataInizio, voce.riga.dataFine});
        m_postiPerSoggetto.insert(voce.riga.codice, posto);
    }
    piano.rifiutaFigli();
    return true;
}

QString ControlloImportazione::controllaNuovo(const PianoImportazione &piano, int indice, qint64 padre)
{
    const RigaFile &riga = piano.voci.at(indice).riga;
    const int tipo = m_contesto.tipoSoggetto;
    if (QString motivo = sovrapposto(riga.codice, riga.dataInizio, riga.dataFine, std::nullopt); !motivo.isEmpty())
        return motivo;
    if (padre == 0)
        return {};
    if (m_posti.value(padre).codice == riga.codice)
        return Verifica::rigaUgualeAlPadre(tipo, riga.codice);
    // The subject below the parent: walking up from one of its places meets the parent.
    for (const qint64 posto : m_postiPerSoggetto.values(riga.codice)) {
        bool sotto = false;
        risali(posto, [&](qint64 k) {
            sotto = k == padre;
            return !sotto;
        });
        if (sotto)
            return Verifica::rigaGiaFiglio(tipo, riga.codice);
    }
    // As in the tree, the ancestors count only from the third level down.
    int livello = 0;
    bool sopra = false;
    risali(padre, [&](qint64 k) {
        ++livello;
        sopra = sopra || m_posti.value(k).codice == riga.codice;
        return true;
    });
    return sopra && livello >= 2 ? Verifica::rigaGiaPadre(tipo, riga.codice) : QString();
}

QString ControlloImportazione::controllaModifica(const Voce &voce)
{
    const RigaFile &riga = voce.riga;
    if (m_posti.value(voce.idNodo).fine == riga.dataFine)
        return {}; // only a change of period is checked, as in the tree
    if (QString motivo = sovrapposto(riga.codice, riga.dataInizio, riga.dataFine, voce.idNodo); !motivo.isEmpty())
        return motivo;
    const db::RecordsetPtr premi = m_connection->openRecordset(
        legamistatements::definitiveBonusQuery(m_contesto.ditta, voce.idNodo, riga.dataFine));
    return premi->isEmpty() ? QString() : ControlliLegami::messaggioPremioDefinitivo(true);
}

QString ControlloImportazione::sovrapposto(qint64 codice, const QDate &inizio, const QDate &fine,
                                           std::optional<qint64> escluso)
{
    nodistatements::Collegamento link;
    link.company = m_contesto.ditta;
    link.subjectCode = codice;
    link.subjectKind = m_contesto.tipoSoggetto;
    link.division = m_contesto.divisione;
    link.excludedNodeId = escluso;
    link.start = inizio;
    link.end = fine;
    link.withNodeId = true;
    const db::RecordsetPtr altri = m_connection->openRecordset(nodistatements::overlapQuery(link));
    for (; !altri->eof(); altri->moveNext()) {
        // A node whose period the file gives is compared below, with that period.
        if (!m_nodiNelFile.contains(altri->value(QStringLiteral("IdNodo")).toLongLong()))
            return Verifica::rigaSovrapposizione(m_contesto.tipoSoggetto, codice, Verifica::sovrapposizione(*altri));
    }
    for (const qint64 posto : m_postiPerSoggetto.values(codice)) {
        if (posto == escluso || (posto > 0 && !m_nodiNelFile.contains(posto)))
            continue;
        const Posto altro = m_posti.value(posto);
        if (!sovrapposti(inizio, fine, altro.inizio, altro.fine))
            continue;
        Verifica::Sovrapposizione sovrapposizione;
        if (altro.padre != 0) {
            const qint64 codicePadre = m_posti.value(altro.padre).codice;
            sovrapposizione.anagrafica = QString::number(codicePadre);
            sovrapposizione.ragSoc = m_ragioniSociali.value(codicePadre);
            sovrapposizione.codDistinta = m_contesto.codiceTipo;
            sovrapposizione.descDistinta = m_contesto.descrizioneTipo;
        }
        sovrapposizione.dataI = altro.inizio;
        sovrapposizione.dataF = altro.fine;
        return Verifica::rigaSovrapposizione(m_contesto.tipoSoggetto, codice, sovrapposizione);
    }
    return {};
}

} // namespace distinta
