// Adding the ticked subjects of the list to the classification: under the focused node, or as
// new roots. The period and the billing rule come from the company's parameters, each subject
// is checked before its row is written, and the refused ones are listed at the end.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/sqltext.h"
#include "framework/globalservices.h"
#include "framework/logservice.h"
#include "framework/progressfeedback.h"
#include "framework/recordsetgrid.h"
#include "framework/treelist/treelist.h"

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

void FRMGD_DISTINTA::CMD_ADDANAGR_Click()
{
    bool capostipite = false;
    InserisciNodo(capostipite);
}

void FRMGD_DISTINTA::CMD_ADDANAGRCAPO_Click()
{
    bool capostipite = true;
    InserisciNodo(capostipite);
}

void FRMGD_DISTINTA::InserisciNodo(bool &capostipite)
{
    const QString procedure = QStringLiteral("InserisciNodo");
    if (!m_anagrafiche || (m_anagrafiche->bof() && m_anagrafiche->eof()))
        return;
    const db::RecordsetPtr selezionati = m_anagrafiche->clone();
    m_nonImportate.clear();

    const fw::TreeListNode focalizzato = TVW_DISTINTA->focusedNode();
    const int posizione = focalizzato.isValid() ? focalizzato.absoluteIndex() : -1;
    if (!focalizzato.isValid())
        capostipite = true;

    if (!step(procedure, [&] { selezionati->setFilter(QStringLiteral("Seleziona = 1 ")); }))
        return;
    if (selezionati->recordCount() > 0) {
        selezionati->moveLast();
        selezionati->moveFirst();

        // The parent and the period are decided once for the whole batch.
        const bool haPadre = !capostipite && m_nodi && m_nodi->currentRow() >= 0;
        qint64 idPadre = 0;
        QDate inizio;
        QDate fine;
        if (haPadre) {
            // The parent may have gone since the tree was read: nothing is added under a node
            // that is no longer there.
            if (rigaModificataAltrove(procedure, true))
                return;
            if (!step(procedure, [&] {
                    idPadre = m_nodi->value(QStringLiteral("GD02_ID")).toLongLong();
                    if (m_parametri.tipoCaricaData != 0) {
                        inizio = m_parametri.dataFissaInizio;
                        fine = m_parametri.dataFissaFine;
                    } else {
                        inizio = dataOPredefinita(m_nodi->value(QStringLiteral("GD02_DATAINIZIOVAL")), inizioPredefinito);
                        fine = dataOPredefinita(m_nodi->value(QStringLiteral("GD02_DATAFINEVAL")), finePredefinita);
                    }
                }))
                return;
        } else {
            // A root always takes the parameter dates, whatever the date loading mode.
            inizio = m_parametri.dataFissaInizio.isValid() ? m_parametri.dataFissaInizio : inizioPredefinito;
            fine = m_parametri.dataFissaFine.isValid() ? m_parametri.dataFissaFine : finePredefinita;
        }

        nodistatements::NuovoNodo nuovo;
        nuovo.typeId = m_idDistinta.toLongLong();
        nuovo.parentId = idPadre;
        nuovo.company = companyCode();
        nuovo.subjectKind = m_tipoSoggetto;
        nuovo.linkState = m_parametri.statoLegame;
        nuovo.start = inizio;
        nuovo.end = fine;
        nuovo.today = QDate::currentDate();
        if (fw::GlobalServices *services = globals()) {
            nuovo.userGroup = services->userGroup();
            nuovo.user = services->user();
        }
        nuovo.billingRule = m_parametri.tipoCaricaFatt;
        nuovo.root = !haPadre;

        const int totale = selezionati->recordCount();
        fw::ProgressFeedback avanzamento(this, QStringLiteral("Inserimento delle anagrafiche nella distinta"), totale, true);
        int fatti = 0;
        while (!selezionati->eof()) {
            bool continua = step(procedure, [&] {
                m_verifica = {};
                m_verifica.idPadre = haPadre ? idPadre : 0;
                m_verifica.codice = qint64(MODGD_DISTINTA::NvlNumero(selezionati->value(QStringLiteral("Codice"))).toDouble());
                m_verifica.dataInizio = inizio;
                m_verifica.dataFine = fine;
                m_verifica.haPadre = haPadre;
            });
            if (!continua)
                break;
            if (VerificaNodo(QStringLiteral("Insert"))) {
                nuovo.subjectCode = m_verifica.codice;
                bool scritto = false;
                continua = step(procedure, [&] {
                    connection()->execute(nodistatements::insertStatement(nuovo));
                    scritto = true;
                });
                if (scritto)
                    selezionati->setValue(QStringLiteral("AssociatoInDistinta"), 1);
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

    if (!m_nonImportate.trimmed().isEmpty()) {
        if (fw::LogService *log = logService())
            log->showMessage(QStringLiteral("Anagrafiche non importate:\n") + m_nonImportate, windowTitle(),
                             fw::MessageStyle::Notice);
    }

    CaricaDistinta();
    if (posizione >= 0 && TVW_DISTINTA->count() > 0)
        TVW_DISTINTA->setFocusedAbsoluteIndex(qMin(posizione, TVW_DISTINTA->count() - 1));
    TVW_DISTINTA->refresh();
}
