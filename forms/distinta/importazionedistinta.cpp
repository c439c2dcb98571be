#include "forms/distinta/importazionedistinta.h"

#include "data/distintastatements.h"
#include "data/importazionestatements.h"
#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/testiregole.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controlloimportazione.h"

namespace distinta {

namespace {

using Voce = PianoImportazione::Voce;
using Esito = PianoImportazione::Esito;

QDate giorno(const QVariant &value)
{
    return value.isNull() ? QDate() : value.toDateTime().date();
}

qint64 codice(const QVariant &value)
{
    return value.isNull() ? 0 : value.toLongLong();
}

// A code where 0 means none.
QVariant codiceONull(qint64 code)
{
    return code == 0 ? QVariant() : QVariant(code);
}

} // namespace

ImportazioneDistinta::ImportazioneDistinta(db::ConnectionPtr connection, ContestoImportazione contesto)
    : m_connection(std::move(connection))
    , m_contesto(std::move(contesto))
{ }

CatalogoImportazione ImportazioneDistinta::leggiCatalogo()
{
    CatalogoImportazione catalogo;
    const db::RecordsetPtr soggetti = m_connection->openRecordset(
        importazionestatements::subjectsQuery(m_contesto.ditta, m_contesto.tipoSoggetto));
    catalogo.soggetti.reserve(soggetti->recordCount());
    for (int row = 0; row < soggetti->recordCount(); ++row)
        catalogo.soggetti.insert(soggetti->valueAt(row, 0).toLongLong(),
                                 MODGD_DISTINTA::NvlStringa(soggetti->valueAt(row, 1)));
    const db::RecordsetPtr priorita = m_connection->openRecordset(importazionestatements::prioritiesQuery());
    for (int row = 0; row < priorita->recordCount(); ++row) {
        const qint64 id = priorita->valueAt(row, 0).toLongLong();
        const QString descrizione = MODGD_DISTINTA::NvlStringa(priorita->valueAt(row, 1)).trimmed().toLower();
        if (!descrizione.isEmpty())
            catalogo.priorita.insert(descrizione, id);
    }
    // A code wins over a description that reads like another priority's code.
    for (int row = 0; row < priorita->recordCount(); ++row) {
        const qint64 id = priorita->valueAt(row, 0).toLongLong();
        catalogo.priorita.insert(QString::number(id), id);
    }
    catalogo.regoleFatturazione = testiregole::regoleFatturazione();
    catalogo.regolePromozioni = testiregole::regolePromozioniNodo();
    return catalogo;
}

// The classification's nodes as the tree reads them, kept for the writes that follow.
QList<NodoEsistente> ImportazioneDistinta::leggiNodi()
{
    m_righeNodi = m_connection->openRecordset(
        distintastatements::nodesQuery(m_contesto.ditta, m_contesto.tipoSoggetto, m_contesto.idTipo));
    m_rigaDelNodo.clear();
    const db::Recordset &righe = *m_righeNodi;
    const auto campo = [&](const char *nome) { return righe.fieldIndex(QLatin1String(nome)); };
    const int id = campo("GD02_ID");
    const int padre = campo("GD02_IDPARENT_GD02");
    const int soggetto = campo("GD02_CLIFOR_CG44");
    const int inizio = campo("GD02_DATAINIZIOVAL");
    const int fine = campo("GD02_DATAFINEVAL");
    const int regola = campo("GD02_TIPOANAGFATT");
    const int fatturazione = campo("GD02_CLIFORFATT_CG44");
    const int descrizione = campo("GD02_DESCR");
    const int struttura = campo("GD02_IDSTRUTTURA_LP09");
    const int localizzata = campo("GD02_IDLOCALIZZATA_LP09");
    const int promozioni = campo("GD02_INDEREPROMO");
    QList<NodoEsistente> nodi;
    nodi.reserve(righe.recordCount());
    for (int row = 0; row < righe.recordCount(); ++row) {
        NodoEsistente nodo;
        nodo.idNodo = righe.valueAt(row, id).toLongLong();
        nodo.idPadre = codice(righe.valueAt(row, padre));
        nodo.codice = codice(righe.valueAt(row, soggetto));
        nodo.dataInizio = giorno(righe.valueAt(row, inizio));
        nodo.dataFine = giorno(righe.valueAt(row, fine));
        nodo.tipoFatturazione = righe.valueAt(row, regola).toInt();
        nodo.codiceFatturazione = codice(righe.valueAt(row, fatturazione));
        nodo.descrizione = MODGD_DISTINTA::NvlStringa(righe.valueAt(row, descrizione));
        nodo.prioritaStruttura = codice(righe.valueAt(row, struttura));
        nodo.prioritaLocalizzata = codice(righe.valueAt(row, localizzata));
        nodo.promozioni = righe.valueAt(row, promozioni).toInt();
        m_rigaDelNodo.insert(nodo.idNodo, row);
        nodi << nodo;
    }
    return nodi;
}

std::optional<PianoImportazione> ImportazioneDistinta::prova(const fw::ImportedTable &tabella, QString &errore,
                                                             const Avanzamento &avanza)
{
    const CatalogoImportazione catalogo = leggiCatalogo();
    const RigheImportazione lette = RigheImportazione::leggi(tabella, catalogo);
    errore = lette.errore;
    if (!errore.isEmpty())
        return PianoImportazione {};
    const QList<NodoEsistente> nodi = leggiNodi();
    PianoImportazione piano = PianoImportazione::prepara(lette, nodi);
    ControlloImportazione controllo(m_connection, m_contesto, nodi, catalogo.soggetti);
    const int totale = int(piano.voci.size());
    if (!controllo.verifica(piano, [&](int fatti) { return avanza(fatti, totale); }))
        return std::nullopt;
    return piano;
}

bool ImportazioneDistinta::applica(const PianoImportazione &piano, const Scrittura &scrivi,
                                   const std::function<bool(int)> &avanza)
{
    m_righeNodi->setUpdateStamp(Albero::timbroModifica(m_contesto.gruppo, m_contesto.utente));
    QHash<int, qint64> nuovi; // the new node of each row written
    int fatti = 0;
    for (const int i : ControlloImportazione::ordine(piano)) {
        const Voce &voce = piano.voci.at(i);
        if (voce.esito == Esito::DaAggiornare) {
            if (!scrivi([&] { aggiorna(voce); }))
                return false;
        } else if (voce.esito == Esito::DaInserire) {
            qint64 idPadre = voce.idPadre;
            if (voce.padreNelFile >= 0)
                idPadre = piano.voci.at(voce.padreNelFile).idNodo != 0 ? piano.voci.at(voce.padreNelFile).idNodo
                                                                       : nuovi.value(voce.padreNelFile);
            if (!scrivi([&] { nuovi.insert(i, inserisci(voce, idPadre)); }))
                return false;
        } else {
            continue;
        }
        if (!avanza(++fatti))
            return false;
    }
    return true;
}

void ImportazioneDistinta::aggiorna(const Voce &voce)
{
    const RigaFile &riga = voce.riga;
    db::Recordset &righe = *m_righeNodi;
    righe.setCurrentRow(m_rigaDelNodo.value(voce.idNodo, -1));
    try {
        righe.setValue(QStringLiteral("GD02_DATAFINEVAL"), riga.dataFine);
        if (riga.tipoFatturazione)
            righe.setValue(QStringLiteral("GD02_TIPOANAGFATT"), *riga.tipoFatturazione);
        if (riga.codiceFatturazione)
            righe.setValue(QStringLiteral("GD02_CLIFORFATT_CG44"), codiceONull(*riga.codiceFatturazione));
        if (riga.descrizione)
            righe.setValue(QStringLiteral("GD02_DESCR"),
                           riga.descrizione->isEmpty() ? QVariant() : QVariant(*riga.descrizione));
        if (riga.prioritaStruttura)
            righe.setValue(QStringLiteral("GD02_IDSTRUTTURA_LP09"), codiceONull(*riga.prioritaStruttura));
        if (riga.prioritaLocalizzata)
            righe.setValue(QStringLiteral("GD02_IDLOCALIZZATA_LP09"), codiceONull(*riga.prioritaLocalizzata));
        if (riga.promozioni)
            righe.setValue(QStringLiteral("GD02_INDEREPROMO"), *riga.promozioni);
        righe.update();
    } catch (const db::DatabaseError &) {
        righe.cancelUpdate(); // a retry starts again from the stored row
        throw;
    }
}

qint64 ImportazioneDistinta::inserisci(const Voce &voce, qint64 idPadre)
{
    const RigaFile &riga = voce.riga;
    nodistatements::NuovoNodo nuovo;
    nuovo.typeId = m_contesto.idTipo;
    nuovo.parentId = idPadre;
    nuovo.company = m_contesto.ditta;
    nuovo.subjectKind = m_contesto.tipoSoggetto;
    nuovo.subjectCode = riga.codice;
    nuovo.linkState = m_contesto.statoLegame;
    nuovo.start = riga.dataInizio;
    nuovo.end = riga.dataFine;
    nuovo.today = m_contesto.oggi;
    nuovo.userGroup = m_contesto.gruppo;
    nuovo.user = m_contesto.utente;
    nuovo.billingRule = riga.tipoFatturazione.value_or(m_contesto.regolaFatturazione);
    nuovo.root = idPadre == 0;
    nuovo.billingCode = riga.codiceFatturazione;
    nuovo.description = riga.descrizione;
    nuovo.structurePriority = riga.prioritaStruttura;
    nuovo.localPriority = riga.prioritaLocalizzata;
    nuovo.promotions = riga.promozioni;
    m_connection->execute(nodistatements::insertStatement(nuovo));
    return m_connection->lastInsertedKey().toLongLong();
}

} // namespace distinta
