// The two searches: inside the loaded tree by name or code, and across every classification of
// the company, whose result rows jump to the subject's node.
#include "forms/distinta/frmgd_distinta.h"

#include "data/ricercastatements.h"
#include "framework/logservice.h"
#include "framework/recordsetgrid.h"
#include "framework/treelist/treelist.h"

#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {

const QString campoRagioneSociale = QStringLiteral("RagioneSociale");
const QString campoCodice = QStringLiteral("trGD02_CLIFOR_CG44");

} // namespace

// Always from the first row, so that repeating a search finds the same node. The focused node
// follows the recordset; when nothing matches the recordset is left past its last row and the
// tree keeps its node. A code that is not a number finds nothing and moves nothing.
void FRMGD_DISTINTA::CercaNellaDistinta(const QString &campo)
{
    if (!TVW_DISTINTA->focusedNode().isValid() || !m_nodi || (m_nodi->bof() && m_nodi->eof()))
        return;
    const std::optional<QString> criterion = campo == campoRagioneSociale
                                                 ? ricercastatements::inTreeNameCriterion(TXTCERCA->text())
                                                 : ricercastatements::inTreeCodeCriterion(TXTCERCA->text());
    if (!criterion)
        return;
    m_nodi->moveFirst();
    m_campoRicerca = campo;
    segnalaRicercaSenzaEsito(!m_nodi->find(*criterion));
    TVW_DISTINTA->setFocus();
}

void FRMGD_DISTINTA::TXTCERCA_KeyDown()
{
    QScopedValueRollback searching(m_ricercaInCorso, true);
    step(QStringLiteral("TXTCERCA_KeyDown"), [this] { CercaNellaDistinta(campoRagioneSociale); });
}

// A failed search from the button's menu is silent.
void FRMGD_DISTINTA::CMD_CERCA_ButtonMenuClick(const QString &key)
{
    QScopedValueRollback searching(m_ricercaInCorso, true);
    const bool done = quietly([&] {
        if (key == QLatin1String("RagSoc"))
            CercaNellaDistinta(campoRagioneSociale);
        else if (key == QLatin1String("Codice"))
            CercaNellaDistinta(campoCodice);
    });
    if (!done && connection())
        connection()->clearErrors();
}

void FRMGD_DISTINTA::cercaDaCaselle(const QString &procedure)
{
    step(procedure, [this] { CercaDistinte(TXT_CODICE->text(), TXT_RAGIONESOC->text()); });
}

void FRMGD_DISTINTA::CercaDistinte(const QString &codice, const QString &ragioneSociale)
{
    m_risultatiRicerca = connection()->openRecordset(
        ricercastatements::crossListSearchQuery(companyCode(), codice, ragioneSociale));
    GRD_CERCADISTINTA->setRecordset(m_risultatiRicerca);
    if (m_risultatiRicerca->recordCount() == 0) {
        if (fw::LogService *log = logService())
            log->showMessage(QStringLiteral("La ricerca non ha prodotto alcun risultato."), windowTitle(),
                             fw::MessageStyle::Warning);
    }
}

// "Vai": opens the row's classification type, when the selector shows one with exactly the
// row's text, and focuses the subject's node in it.
void FRMGD_DISTINTA::GRD_CERCADISTINTA_ButtonClick(int row, const QString &key)
{
    if (key != QLatin1String("VAI") || !m_risultatiRicerca)
        return;
    const QString procedure = QStringLiteral("GRD_CERCADISTINTA_ButtonClick");
    QString codice;
    if (!step(procedure, [&] {
            m_risultatiRicerca->setCurrentRow(row);
            m_tipoSoggetto = m_risultatiRicerca->value(QStringLiteral("TIPOCF")).toInt() == 0 ? 0 : 1;
            const QString distinta = m_risultatiRicerca->value(QStringLiteral("DISTINTA")).toString();
            for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it; ++it) {
                if ((*it)->text(0) == distinta) {
                    TVW_SELDISTINTE->setCurrentItem(*it);
                    break;
                }
            }
            codice = m_risultatiRicerca->value(QStringLiteral("CLIFOR")).toString();
        }))
        return;

    CaricaAnagraficheDistinta();
    CaricaDistinta();
    CaricaIntestazioneDistinta();
    TXTCERCA->setText(codice);
    step(procedure, [this] { CercaNellaDistinta(campoCodice); });
    TVW_DISTINTA->setFocus();
}
