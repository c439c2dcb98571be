#include "forms/distinta/inserimento.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/sqltext.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/paginaanagrafiche.h"
#include "forms/distinta/parametrimodulo.h"
#include "forms/distinta/verifica.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/globalservices.h"
#include "framework/treelist/treelist.h"
#include "framework/workprogress.h"

#include <QPushButton>

namespace distinta {

namespace {

const QDate inizioPredefinito(2000, 1, 1);
const QDate finePredefinita(2099, 12, 31);

// A parent's date, or the default when it has none. Passing through "dd/mm/yyyy" keeps the day
// only, as the statement writes it.
QDate dataOPredefinita(const QVariant &value, const QDate &predefinita)
{
    const QString testo = MODGD_DISTINTA::NvlStringa(value);
    const QDate date = sqltext::parseDayMonthYear(testo.left(10));
    return date.isValid() ? date : predefinita;
}

} // namespace

Inserimento::Inserimento(FormFrame &form, Albero &albero, PaginaAnagrafiche &anagrafiche, Verifica &verifica,
                         const ParametriModulo &parametri)
    : m_form(form)
    , m_albero(albero)
    , m_anagrafiche(anagrafiche)
    , m_verifica(verifica)
    , m_parametri(parametri)
{
    connect(anagrafiche.aggiungiAlNodo(), &QPushButton::clicked, this, &Inserimento::CMD_ADDANAGR_Click);
    connect(anagrafiche.aggiungiCapostipite(), &QPushButton::clicked, this, &Inserimento::CMD_ADDANAGRCAPO_Click);
}

void Inserimento::CMD_ADDANAGR_Click()
{
    bool capostipite = false;
    InserisciNodo(capostipite);
}

void Inserimento::CMD_ADDANAGRCAPO_Click()
{
    bool capostipite = true;
    InserisciNodo(capostipite);
}

void Inserimento::InserisciNodo(bool &capostipite)
{
    const QString procedure = QStringLiteral("InserisciNodo");
    const db::RecordsetPtr anagrafiche = m_anagrafiche.lista();
    if (!anagrafiche || (anagrafiche->bof() && anagrafiche->eof()))
        return;
    const db::RecordsetPtr selezionati = anagrafiche->clone();
    db::RecordsetPtr nodi = m_albero.nodi();
    const Parametri &parametri = m_parametri.valori();
    fw::TreeList *albero = m_albero.widget();
    QString nonImportate; // refusal lines, each ending with a line feed
    int aggiunte = 0;
    int rifiutate = 0;

    const fw::TreeListNode focalizzato = albero->focusedNode();
    const int posizione = focalizzato.isValid() ? focalizzato.absoluteIndex() : -1;
    if (!focalizzato.isValid())
        capostipite = true;

    if (!m_form.step(procedure, [&] { selezionati->setFilter(QStringLiteral("Seleziona = 1 ")); }))
        return;
    if (selezionati->recordCount() > 0) {
        selezionati->moveLast();
        selezionati->moveFirst();

        // The parent and the period are decided once for the whole batch.
        const bool haPadre = !capostipite && nodi && nodi->currentRow() >= 0;
        qint64 idPadre = 0;
        QDate inizio;
        QDate fine;
        if (haPadre) {
            // The parent may have gone since the tree was read: nothing is added under a node
            // that is no longer there.
            if (m_albero.rigaModificataAltrove(procedure, true))
                return;
            if (!m_form.step(procedure, [&] {
                    idPadre = nodi->value(QStringLiteral("GD02_ID")).toLongLong();
                    if (parametri.tipoCaricaData != 0) {
                        inizio = parametri.dataFissaInizio;
                        fine = parametri.dataFissaFine;
                    } else {
                        inizio = dataOPredefinita(nodi->value(QStringLiteral("GD02_DATAINIZIOVAL")), inizioPredefinito);
                        fine = dataOPredefinita(nodi->value(QStringLiteral("GD02_DATAFINEVAL")), finePredefinita);
                    }
                }))
                return;
        } else {
            // A root always takes the parameter dates, whatever the date loading mode.
            inizio = parametri.dataFissaInizio.isValid() ? parametri.dataFissaInizio : inizioPredefinito;
            fine = parametri.dataFissaFine.isValid() ? parametri.dataFissaFine : finePredefinita;
        }

        nodistatements::NuovoNodo nuovo;
        nuovo.typeId = m_albero.idTipo();
        nuovo.parentId = idPadre;
        nuovo.company = m_form.companyCode();
        nuovo.subjectKind = m_albero.tipoSoggetto();
        nuovo.linkState = parametri.statoLegame;
        nuovo.start = inizio;
        nuovo.end = fine;
        nuovo.today = QDate::currentDate();
        if (fw::GlobalServices *services = m_form.globals()) {
            nuovo.userGroup = services->userGroup();
            nuovo.user = services->user();
        }
        nuovo.billingRule = parametri.tipoCaricaFatt;
        nuovo.root = !haPadre;

        const int totale = selezionati->recordCount();
        // The whole batch is one operation of the journal, committed at the end of this block.
        OperazioneStorico operazione(m_form, procedure, QStringLiteral("Inserimento"), m_albero.idTipo());
        if (!operazione.inizia())
            return;
        fw::WorkProgress avanzamento(&m_form, QStringLiteral("Inserimento delle anagrafiche nella distinta"), totale,
                                     true);
        avanzamento.showCounts();
        avanzamento.setObjectName(QStringLiteral("dlgAvanzamento"));
        int fatti = 0;
        while (!selezionati->eof()) {
            Verifica::Nodo candidato;
            bool continua = m_form.step(procedure, [&] {
                candidato.idPadre = haPadre ? idPadre : 0;
                candidato.codice = qint64(
                    MODGD_DISTINTA::NvlNumero(selezionati->value(QStringLiteral("Codice"))).toDouble());
                candidato.dataInizio = inizio;
                candidato.dataFine = fine;
            });
            if (!continua)
                break;
            const Verifica::Esito esito = m_verifica.VerificaNodo(Verifica::Modo::Inserimento, candidato);
            nonImportate += esito.righe;
            if (!esito.valido)
                ++rifiutate;
            if (esito.valido) {
                nuovo.subjectCode = candidato.codice;
                bool scritto = false;
                continua = m_form.step(procedure, [&] {
                    m_form.connection()->execute(nodistatements::insertStatement(nuovo));
                    scritto = true;
                });
                if (scritto) {
                    selezionati->setValue(QStringLiteral("AssociatoInDistinta"), 1);
                    ++aggiunte;
                }
                if (!continua)
                    break;
            }
            // Accepted or not, the subject loses its tick.
            selezionati->setValue(QStringLiteral("Seleziona"), 0);
            selezionati->update();
            selezionati->moveNext();
            if (!avanzamento.advance(++fatti))
                break;
        }
    }

    if (!nonImportate.trimmed().isEmpty())
        m_form.notifica(QStringLiteral("Anagrafiche non importate:\n") + nonImportate);

    nodi.reset(); // the reload lets go of the rows read before
    m_albero.CaricaDistinta();
    if (posizione >= 0 && albero->count() > 0)
        albero->setFocusedAbsoluteIndex(qMin(posizione, albero->count() - 1));
    albero->refresh();
    if (aggiunte + rifiutate > 0)
        m_form.mostraInBarraDiStato(rifiutate > 0
                                        ? QStringLiteral("Anagrafiche aggiunte alla distinta: %1; non importate: %2.")
                                              .arg(aggiunte)
                                              .arg(rifiutate)
                                        : QStringLiteral("Anagrafiche aggiunte alla distinta: %1.").arg(aggiunte));
}

} // namespace distinta
