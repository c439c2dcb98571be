// The pages under the tree follow the focused node. Only the page that shows is filled: at once
// for a focus change, and once for many that come before the event loop turns again, so that
// the tree moves at the keys' pace and the page catches up with the node the focus stopped on,
// never with a node the focus has already left. What protects the node's own cells (its start date when a
// definitive bonus is settled) is applied at once.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "forms/parametri/frmgd_parametri.h"
#include "framework/cinterface.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgridmodel.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/treelist/treelist.h"
#include "platform/db/readsnapshot.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableWidget>

namespace {

constexpr int paginaAnagrafica = 0;
constexpr int paginaPromozioni = 1;
constexpr int paginaCondizioni = 2;
constexpr int regolaDalPadre = 1;
const QString colonnaInizio = QStringLiteral("trGD02_DATAINIZIOVAL");

} // namespace

void FRMGD_DISTINTA::collegaDettagli()
{
    connect(TAB_DETTAGLIOSOGGETTO, &QTabWidget::currentChanged, this, &FRMGD_DISTINTA::TAB_DETTAGLIOSOGGETTO_Click);
    // The user's choice only: the record frame's own filling of the combo is not a change.
    connect(CBO_EREPROMO, &QComboBox::activated, this, &FRMGD_DISTINTA::CBO_EREPROMO_Click);
    GRD_PROMO->gridModel()->setEditGuard([this](int row, const QString &key, const QVariant &before, const QVariant &) {
        return GRD_PROMO_BeforeColUpdate(row, key, before);
    });
    connect(GRD_PROMO, &fw::RecordsetGrid::rowChosen, this, [this](int row) {
        if (m_promozioni && row >= 0 && row < m_promozioni->recordCount()) {
            m_promozioni->setCurrentRow(row);
            Invoca_Promozioni();
        }
    });
    connect(GRD_PREMI, &fw::RecordsetGroupGrid::rowChosen, this, [this](int row) {
        if (m_condizioniFuoriFattura && row >= 0 && row < m_condizioniFuoriFattura->recordCount()) {
            m_condizioniFuoriFattura->setCurrentRow(row);
            InvocaContratti();
        }
    });
    connect(CMD_PARAMETRI, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_PARAMETRI_Click);
    ConfiguraQRID_PROMO();
    ConfiguraGRD_PREMI();
}

// The focus-change handler's share of the details, in its order: the sheet loses a subject
// that is no longer focused, the page showing is (later) filled, the promotion rule follows
// the node, and the node's start date is locked while a definitive bonus is settled.
void FRMGD_DISTINTA::dettagliNodoFocalizzato(const fw::TreeListNode &current)
{
    auto *regole = qobject_cast<QStandardItemModel *>(CBO_EREPROMO->model());
    if (!current.isValid() || !m_nodi || m_nodi->currentRow() < 0) {
        SvuotaFlex(GRD_DATIANAGRAFICI);
        GRD_PROMO->setRecordset(nullptr);
        GRD_PREMI->setRecordset(nullptr);
        m_promozioni.reset();
        m_condizioniFuoriFattura.reset();
        TXT_PRIORITA_STRUTTURA->clear();
        TXT_PRIORITA_LOCALIZZATA->clear();
        CBO_EREPROMO->setEnabled(false);
        TVW_DISTINTA->setLockedCells({}, {});
        if (m_parametriForm)
            m_parametriForm->mostraEreditaPromo();
        return;
    }
    const qint64 codice = MODGD_DISTINTA::NvlNumero(m_nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong();
    if (m_ultimoSoggetto != codice)
        SvuotaFlex(GRD_DATIANAGRAFICI);
    caricaPaginaPiuTardi();

    // A root has no parent to inherit from: that rule cannot be chosen for it. A root that holds
    // it from elsewhere shows it as stored; nothing is written on focus.
    const bool radice = MODGD_DISTINTA::NvlNumero(m_nodi->value(QStringLiteral("GD02_IDPARENT_GD02"))).toLongLong() == 0;
    CBO_EREPROMO->setEnabled(true);
    if (regole && regole->item(regolaDalPadre))
        regole->item(regolaDalPadre)->setEnabled(!radice);
    if (m_parametriForm)
        m_parametriForm->mostraEreditaPromo();
    bloccaDateNodo(current);
}

// A propagation or a removal moves the focus silently; once it is over, the pages catch up
// with the node it left focused.
void FRMGD_DISTINTA::dettagliDopoIlLavoro()
{
    QMetaObject::invokeMethod(this, [this] {
        if (m_propagazioneInCorso || m_eliminazioneInCorso || !isLoaded())
            return;
        dettagliNodoFocalizzato(TVW_DISTINTA->focusedNode());
    }, Qt::QueuedConnection);
}

void FRMGD_DISTINTA::bloccaDateNodo(const fw::TreeListNode &current)
{
    const qint64 idNodo = m_nodi->value(QStringLiteral("GD02_ID")).toLongLong();
    const QString messaggio = m_ultimoMessaggioControllo;
    m_dateBloccate = PremioDefinitivo(idNodo, std::nullopt);
    m_ultimoMessaggioControllo = messaggio;   // an answer for the focus, not a refusal to report
    TVW_DISTINTA->setLockedCells(current, m_dateBloccate ? QStringList{colonnaInizio} : QStringList{});
}

// The first focus change of a turn of the event loop fills the page at once; the ones that
// follow before the loop turns again (a held key, a search stepping through matches) end in one
// load, for the node focused when it runs.
void FRMGD_DISTINTA::caricaPaginaPiuTardi()
{
    if (m_paginaInAttesa)
        return;
    if (!m_paginaCaricataNelGiro) {
        m_paginaCaricataNelGiro = true;
        QMetaObject::invokeMethod(this, [this] { m_paginaCaricataNelGiro = false; }, Qt::QueuedConnection);
        caricaPaginaDettaglio();
        return;
    }
    m_paginaInAttesa = true;
    QMetaObject::invokeMethod(this, [this] {
        m_paginaInAttesa = false;
        caricaPaginaDettaglio();
    }, Qt::QueuedConnection);
}

void FRMGD_DISTINTA::caricaPaginaDettaglio()
{
    if (m_propagazioneInCorso || m_eliminazioneInCorso || !isLoaded() || !m_nodi || m_nodi->currentRow() < 0)
        return;
    const db::ReadSnapshot burst(connection());
    switch (TAB_DETTAGLIOSOGGETTO->currentIndex()) {
    case paginaAnagrafica:
        CaricaCondizioniCliente(MODGD_DISTINTA::NvlNumero(m_nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toDouble());
        break;
    case paginaPromozioni:
        CaricaCondizioniInFattura(m_nodi->value(QStringLiteral("GD02_ID")).toLongLong(),
                                  short(MODGD_DISTINTA::NvlNumero(m_nodi->value(QStringLiteral("GD02_INDEREPROMO"))).toInt()));
        break;
    case paginaCondizioni:
        CaricaCondizioniFuoriFattura();
        break;
    default:
        break;
    }
}

// A page chosen is filled for the focused node; without a classification chosen there is none.
void FRMGD_DISTINTA::TAB_DETTAGLIOSOGGETTO_Click()
{
    if (chiaveSelezionata().isEmpty() || chiaveSelezionata().startsWith(QLatin1Char('P')))
        return;
    step(QStringLiteral("TAB_DETTAGLIOSOGGETTO_Click"), [this] {
        if (m_nodi && m_nodi->currentRow() >= 0 && TVW_DISTINTA->focusedNode().isValid())
            caricaPaginaDettaglio();
    });
}

void FRMGD_DISTINTA::CMD_PARAMETRI_Click()
{
    if (m_parametriForm) {
        if (auto *window = qobject_cast<QMdiSubWindow *>(m_parametriForm->parentWidget()))
            window->mdiArea()->setActiveSubWindow(window);
        else
            m_parametriForm->activateWindow();
        return;
    }
    auto *form = new FRMGD_PARAMETRI(this);
    connect(form, &FormFrame::unloaded, this, &FRMGD_DISTINTA::parametriChiusi);
    m_parametriForm = form;
    form->showModeless(entryClass() ? entryClass()->ActiveFrame() : nullptr);
}

FRMGD_PARAMETRI *FRMGD_DISTINTA::formParametri() const
{
    return m_parametriForm;
}

// New parameters change the groups of the master-data sheet and the defaults of new nodes.
void FRMGD_DISTINTA::parametriChiusi()
{
    m_parametriForm.clear();
    if (!isLoaded() || isFirstActivation())
        return;
    CaricaParametri();
    SvuotaFlex(GRD_DATIANAGRAFICI);
    if (TVW_DISTINTA->focusedNode().isValid())
        caricaPaginaDettaglio();
}

// The parameters form's choice for a node: applied when the node is still the focused one, as
// if the user had chosen it here.
void FRMGD_DISTINTA::ApplicaEreditaPromozioni(qint64 idNodo, short regola)
{
    if (!m_nodi || m_nodi->currentRow() < 0 || m_nodi->value(QStringLiteral("GD02_ID")).toLongLong() != idNodo)
        return;
    const int index = CBO_EREPROMO->findData(int(regola));
    if (index < 0 || !CBO_EREPROMO->isEnabled())
        return;
    auto *regole = qobject_cast<QStandardItemModel *>(CBO_EREPROMO->model());
    if (regole && regole->item(index) && !regole->item(index)->isEnabled())
        return;
    CBO_EREPROMO->setCurrentIndex(index);
    CBO_EREPROMO_Click();
}
