#include "forms/distinta/paginedettaglio.h"

#include "data/modgd_distinta.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controllilegami.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "platform/db/readsnapshot.h"

#include <QCheckBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>

namespace distinta {

namespace {

constexpr int paginaAnagrafica = 0;
constexpr int paginaPromozioni = 1;
constexpr int paginaCondizioni = 2;
constexpr int paginaStorico = 3;
const QString colonnaInizio = QStringLiteral("trGD02_DATAINIZIOVAL");

} // namespace

PagineDettaglio::PagineDettaglio(FormFrame &form, Albero &albero, Selettore &selettore, ControlliLegami &legami,
                                 const ParametriModulo &parametri, Priorita &priorita)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , m_legami(legami)
    , TAB_DETTAGLIOSOGGETTO(new QTabWidget)
    , m_datiAnagrafici(form, albero, parametri)
    , m_promozioni(form, albero, priorita)
    , m_condizioni(form, albero)
    , m_storico(form, albero)
{
    TAB_DETTAGLIOSOGGETTO->setObjectName(QStringLiteral("TAB_DETTAGLIOSOGGETTO"));
    TAB_DETTAGLIOSOGGETTO->addTab(m_datiAnagrafici.pagina(), QStringLiteral("Dati anagrafici"));
    TAB_DETTAGLIOSOGGETTO->addTab(m_promozioni.pagina(), QStringLiteral("Promozioni in fattura"));
    TAB_DETTAGLIOSOGGETTO->addTab(m_condizioni.pagina(), QStringLiteral("Condizioni fuori fattura"));
    TAB_DETTAGLIOSOGGETTO->addTab(m_storico.pagina(), QStringLiteral("Storico"));
    connect(TAB_DETTAGLIOSOGGETTO, &QTabWidget::currentChanged, this, &PagineDettaglio::TAB_DETTAGLIOSOGGETTO_Click);
}

QList<QWidget *> PagineDettaglio::ordineTab() const
{
    return QList<QWidget *> {TAB_DETTAGLIOSOGGETTO->tabBar(), m_datiAnagrafici.griglia()} + m_promozioni.ordineTab()
        + QList<QWidget *> {m_condizioni.griglia(), static_cast<QWidget *>(m_storico.soggetto()), m_storico.griglia()};
}

void PagineDettaglio::preparaPagine()
{
    m_promozioni.preparaRegole();
    TAB_DETTAGLIOSOGGETTO->setCurrentIndex(paginaAnagrafica);
}

void PagineDettaglio::nodoFocalizzato(const fw::TreeListNode &current)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!current.isValid() || !nodi || nodi->currentRow() < 0) {
        m_datiAnagrafici.SvuotaFlex();
        m_promozioni.svuota();
        m_condizioni.svuota();
        m_storico.svuota();
        m_albero.widget()->setLockedCells({}, {});
        emit nodoMostrato();
        return;
    }
    const qint64 codice = MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong();
    if (m_datiAnagrafici.soggettoCaricato() != codice)
        m_datiAnagrafici.SvuotaFlex();
    caricaPaginaPiuTardi();
    m_promozioni.mostraNodo(MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_IDPARENT_GD02"))).toLongLong()
                            == 0);
    emit nodoMostrato();
    bloccaDateNodo(current);
}

void PagineDettaglio::dopoIlLavoro()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_albero.lavoroInCorso() || !m_form.isLoaded())
                return;
            nodoFocalizzato(m_albero.widget()->focusedNode());
        },
        Qt::QueuedConnection);
}

void PagineDettaglio::bloccaDateNodo(const fw::TreeListNode &current)
{
    const bool bloccate = m_legami.PremioDefinitivo(m_albero.idNodoCorrente(), std::nullopt);
    m_albero.widget()->setLockedCells(current, bloccate ? QStringList {colonnaInizio} : QStringList {});
}

// The first focus change of a turn of the event loop fills the page at once; the ones that
// follow before the loop turns again (a held key, a search stepping through matches) end in one
// load, for the node focused when it runs.
void PagineDettaglio::caricaPaginaPiuTardi()
{
    if (m_paginaInAttesa)
        return;
    if (!m_paginaCaricataNelGiro) {
        m_paginaCaricataNelGiro = true;
        QMetaObject::invokeMethod(
            this, [this] { m_paginaCaricataNelGiro = false; }, Qt::QueuedConnection);
        caricaPaginaDettaglio();
        return;
    }
    m_paginaInAttesa = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_paginaInAttesa = false;
            caricaPaginaDettaglio();
        },
        Qt::QueuedConnection);
}

void PagineDettaglio::caricaPaginaDettaglio()
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (m_albero.lavoroInCorso() || !m_form.isLoaded() || !nodi || nodi->currentRow() < 0)
        return;
    const db::ReadSnapshot burst(m_form.connection());
    switch (TAB_DETTAGLIOSOGGETTO->currentIndex()) {
    case paginaAnagrafica:
        m_datiAnagrafici.CaricaCondizioniCliente(
            MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toDouble());
        break;
    case paginaPromozioni:
        m_promozioni.CaricaCondizioniInFattura(
            nodi->value(QStringLiteral("GD02_ID")).toLongLong(),
            short(MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_INDEREPROMO"))).toInt()));
        break;
    case paginaCondizioni: m_condizioni.CaricaCondizioniFuoriFattura(); break;
    case paginaStorico: m_storico.CaricaStorico(); break;
    default: break;
    }
}

// The campaigns and the conditions are filled for the focused node when their page is chosen;
// the master-data sheet only on focus changes, so choosing its page reads nothing (the sheet
// was emptied when the focus left its subject, and says how to fill it). Without a
// classification chosen nothing happens.
void PagineDettaglio::TAB_DETTAGLIOSOGGETTO_Click()
{
    if (!m_selettore.distintaScelta() || TAB_DETTAGLIOSOGGETTO->currentIndex() == paginaAnagrafica)
        return;
    m_form.step(QStringLiteral("TAB_DETTAGLIOSOGGETTO_Click"), [this] {
        const db::RecordsetPtr nodi = m_albero.nodi();
        if (nodi && nodi->currentRow() >= 0 && m_albero.widget()->focusedNode().isValid())
            caricaPaginaDettaglio();
    });
}

void PagineDettaglio::parametriCambiati()
{
    m_datiAnagrafici.SvuotaFlex();
    if (m_albero.widget()->focusedNode().isValid())
        caricaPaginaDettaglio();
}

} // namespace distinta
