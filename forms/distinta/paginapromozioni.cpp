#include "forms/distinta/paginapromozioni.h"

#include "data/dettaglistatements.h"
#include "data/modgd_distinta.h"
#include "data/sqltext.h"
#include "data/testiregole.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/paginaanagrafiche.h"
#include "forms/distinta/priorita.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/columnsizing.h"
#include "framework/modulemanager.h"
#include "framework/recordframe.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgridmodel.h"
#include "framework/treelist/treelist.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStandardItemModel>
#include <QVBoxLayout>

namespace distinta {

namespace {

const QString colonnaSelez = QStringLiteral("SELEZ");
constexpr int regolaDalPadre = 1;

QString testoData(const QVariant &value)
{
    return value.isNull() ? QString() : sqltext::dayMonthYear(value.toDate());
}

QLineEdit *nascosto(const QString &name)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(name);
    edit->hide();
    return edit;
}

} // namespace

PaginaPromozioni::PaginaPromozioni(FormFrame &form, Albero &albero, Priorita &priorita)
    : m_form(form)
    , m_albero(albero)
    , m_priorita(priorita)
    , m_pagina(new QWidget)
    , CBO_EREPROMO(new QComboBox)
    , TXT_IDPRIORITA_STRUTTURA(nascosto(QStringLiteral("TXT_IDPRIORITA_STRUTTURA")))
    , TXT_IDPRIORITA_LOCALIZZATA(nascosto(QStringLiteral("TXT_IDPRIORITA_LOCALIZZATA")))
    , TXT_GD02_ID(nascosto(QStringLiteral("TXT_GD02_ID")))
    , GRD_PROMO(new fw::RecordsetGrid)
{
    CBO_EREPROMO->setObjectName(QStringLiteral("CBO_EREPROMO"));
    GRD_PROMO->setObjectName(QStringLiteral("GRD_PROMO"));
    auto *regola = new QHBoxLayout;
    regola->addWidget(new QLabel(QStringLiteral("Promozioni")));
    regola->addWidget(CBO_EREPROMO);
    regola->addSpacing(12);
    regola->addWidget(new QLabel(QStringLiteral("Priorità struttura")));
    regola->addWidget(priorita.campoStruttura());
    regola->addWidget(TXT_IDPRIORITA_STRUTTURA);
    regola->addWidget(new QLabel(QStringLiteral("Priorità localizzata")));
    regola->addWidget(priorita.campoLocalizzata());
    regola->addWidget(TXT_IDPRIORITA_LOCALIZZATA);
    regola->addWidget(TXT_GD02_ID);
    regola->addStretch();
    auto *layout = new QVBoxLayout(m_pagina);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addLayout(regola);
    layout->addWidget(GRD_PROMO);

    // The user's choice only: the record frame's own filling of the combo is not a change.
    connect(CBO_EREPROMO, &QComboBox::activated, this, &PaginaPromozioni::CBO_EREPROMO_Click);
    GRD_PROMO->gridModel()->setEditGuard([this](int row, const QString &key, const QVariant &before, const QVariant &) {
        return GRD_PROMO_BeforeColUpdate(row, key, before);
    });
    connect(GRD_PROMO, &fw::RecordsetGrid::rowChosen, this, [this](int row) {
        if (m_promozioni && row >= 0 && row < m_promozioni->recordCount()) {
            m_promozioni->setCurrentRow(row);
            Invoca_Promozioni();
        }
    });
    ConfiguraQRID_PROMO();
}

// The grid outlives this part by a moment: its edits must not reach it any more.
PaginaPromozioni::~PaginaPromozioni()
{
    GRD_PROMO->gridModel()->setEditGuard({});
}

QList<QWidget *> PaginaPromozioni::ordineTab() const
{
    return {CBO_EREPROMO, m_priorita.campoStruttura(), m_priorita.campoLocalizzata(), GRD_PROMO};
}

QList<std::pair<QWidget *, QString>> PaginaPromozioni::controlliLegati() const
{
    return {{TXT_IDPRIORITA_STRUTTURA, QStringLiteral("GD02_IDSTRUTTURA_LP09")},
            {TXT_IDPRIORITA_LOCALIZZATA, QStringLiteral("GD02_IDLOCALIZZATA_LP09")},
            {CBO_EREPROMO, QStringLiteral("GD02_INDEREPROMO")},
            {TXT_GD02_ID, QStringLiteral("GD02_ID")}};
}

void PaginaPromozioni::preparaRegole()
{
    CBO_EREPROMO->clear();
    for (int regola = 0; regola < testiregole::regolePromozioniNodo().size(); ++regola)
        CBO_EREPROMO->addItem(testiregole::regolePromozioniNodo().at(regola), regola);
    CBO_EREPROMO->setCurrentIndex(0);
}

// A root that holds "Eredita dal padre" from elsewhere shows it as stored; nothing is written on
// focus.
void PaginaPromozioni::mostraNodo(bool radice)
{
    CBO_EREPROMO->setEnabled(true);
    auto *regole = qobject_cast<QStandardItemModel *>(CBO_EREPROMO->model());
    if (regole && regole->item(regolaDalPadre))
        regole->item(regolaDalPadre)->setEnabled(!radice);
}

void PaginaPromozioni::svuota()
{
    GRD_PROMO->setRecordset(nullptr);
    m_promozioni.reset();
    m_priorita.campoStruttura()->clear();
    m_priorita.campoLocalizzata()->clear();
    CBO_EREPROMO->setEnabled(false);
}

void PaginaPromozioni::ConfiguraQRID_PROMO()
{
    m_form.step(QStringLiteral("ConfiguraQRID_PROMO:"), [this] {
        using Kind = fw::RecordsetGridColumn::Kind;
        GRD_PROMO->setFillWidth(true);
        GRD_PROMO->setColumns({
            {.key = QStringLiteral("ANNO"),
             .caption = QStringLiteral("Anno"),
             .width = 800,
             .widthSample = QStringLiteral("2099")},
            {.key = QStringLiteral("MG94_CODCAMP"),
             .caption = QStringLiteral("Codice"),
             .width = 1000,
             .widthSample = QStringLiteral("CAMP2099")},
            {.key = QStringLiteral("MG94_DESCAMP"),
             .caption = QStringLiteral("Descrizione"),
             .width = 2500,
             .widthSample = QStringLiteral("Promozione di primavera")},
            {.key = QStringLiteral("MG94_DATAINIZIO"),
             .caption = QStringLiteral("Data inizio"),
             .width = 1000,
             .widthSample = fw::wholeDateSample(),
             .displayText = testoData},
            {.key = QStringLiteral("MG94_DATAFINE"),
             .caption = QStringLiteral("Data fine"),
             .width = 1000,
             .widthSample = fw::wholeDateSample(),
             .displayText = testoData},
            {.key = QStringLiteral("MG94_FLGATTIVA"),
             .caption = QStringLiteral("Attiva in campagne promozionali"),
             .width = 2085,
             .kind = Kind::Check,
             .readOnly = true},
            {.key = colonnaSelez,
             .caption = QStringLiteral("Attiva per cli/for distinta"),
             .width = 2220,
             .kind = Kind::Check,
             .readOnly = false},
        });
    });
}

// The user's own choice of rule: stored on the node at once (a row changed meanwhile by another
// clerk is refused and read again), then the list follows the rule.
void PaginaPromozioni::CBO_EREPROMO_Click()
{
    // A reload after a refusal replaces the frame: the one written through is watched.
    const QPointer<fw::RecordFrame> frame = m_albero.frameDistinta();
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!frame || !nodi || nodi->currentRow() < 0)
        return;
    const QString procedure = QStringLiteral("CBO_EREPROMO_ChangeRow");
    std::optional<db::DatabaseError> conflitto;
    bool salvato = false;
    {
        OperazioneStorico operazione(m_form, procedure, QStringLiteral("Modifica"), m_albero.idTipo());
        if (operazione.inizia())
            salvato = m_form.writeRow(
                procedure, [&] { frame->update(); }, [&](const db::DatabaseError &error) { conflitto = error; });
        salvato = operazione.fine() && salvato;
    }
    if (conflitto)
        m_albero.rileggiNodoInConflitto(*conflitto);
    if (!salvato) {
        if (frame)
            frame->undo();
        return;
    }
    m_albero.widget()->refresh();
    CBO_EREPROMO_ChangeRow();
}

void PaginaPromozioni::CBO_EREPROMO_ChangeRow()
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!m_form.isLoaded() || m_albero.lavoroInCorso() || !nodi || nodi->isEmpty() || nodi->currentRow() < 0)
        return;
    qint64 idNodo = 0;
    short regola = 0;
    if (!m_form.step(QStringLiteral("CBO_EREPROMO_ChangeRow"), [&] {
            idNodo = nodi->value(QStringLiteral("GD02_ID")).toLongLong();
            regola = short(MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_INDEREPROMO"))).toInt());
        }))
        return;
    CaricaCondizioniInFattura(idNodo, regola);
}

void PaginaPromozioni::CaricaCondizioniInFattura(qint64 idNodo, short regola)
{
    const QString procedure = QStringLiteral("CaricaCondizioniInFattura:");
    const db::ConnectionPtr connection = m_form.connection();
    QString struttura;
    QString localizzata;
    if (!m_form.step(procedure, [&] {
            const db::RecordsetPtr priorita = connection->openRecordset(
                dettaglistatements::nodePrioritiesQuery(m_albero.idTipo(), idNodo));
            if (priorita->isEmpty())
                return;
            priorita->moveFirst();
            struttura = m_priorita.Get_LP09_CODICE(connection,
                                                   priorita->value(QStringLiteral("GD02_IDSTRUTTURA_LP09")));
            localizzata = m_priorita.Get_LP09_CODICE(connection,
                                                     priorita->value(QStringLiteral("GD02_IDLOCALIZZATA_LP09")));
        }))
        return;
    m_priorita.campoStruttura()->setText(struttura);
    m_priorita.campoLocalizzata()->setText(localizzata);
    m_idNodoPromo = idNodo;
    m_regolaPromo = regola;

    PaginaAnagrafiche::EliminaTabellaTemp(dettaglistatements::campaignTable(), connection);
    db::RecordsetPtr lista;
    if (!m_form.step(procedure,
                     [&] {
                         connection->execute(
                             dettaglistatements::buildCampaignListStatement(m_form.companyCode(), idNodo, regola));
                     })
        || !m_form.step(procedure,
                        [&] { lista = connection->openRecordset(dettaglistatements::readCampaignListStatement()); }))
        return;
    m_promozioni = lista;
    GRD_PROMO->setRecordset(lista);
}

// The tick of a campaign, given the box's value before the click. The grid's own change is
// always cancelled: the box takes the value that the database change produced.
bool PaginaPromozioni::GRD_PROMO_BeforeColUpdate(int row, const QString &key, const QVariant &before)
{
    if (key.compare(colonnaSelez, Qt::CaseInsensitive) != 0 || !m_promozioni)
        return true;
    m_promozioni->setCurrentRow(row);
    const int prima = before.toInt();
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (prima == 0 && nodi && nodi->currentRow() >= 0)
        InsertCondizioniInFattura(nodi->value(QStringLiteral("GD02_ID")).toLongLong());
    else if (prima == 1)
        EliminaCondizioniInFattura();
    return false;
}

void PaginaPromozioni::InsertCondizioniInFattura(qint64 idNodo)
{
    const QString procedure = QStringLiteral("InsertCondizioniInFattura:");
    OperazioneStorico operazione(m_form, procedure, QStringLiteral("Modifica"), m_albero.idTipo());
    if (!operazione.inizia())
        return;
    m_form.step(procedure, [&] {
        const qint64 campagna = m_promozioni->value(QStringLiteral("MG94_ID")).toLongLong();
        m_form.connection()->execute(
            dettaglistatements::insertCampaignLinkStatement(m_form.companyCode(), idNodo, campagna));
        m_promozioni->setValue(colonnaSelez, 1);
        m_promozioni->update();
    });
}

// A link made since the list was read has no identifier in it yet: it stays until the list is
// read again.
void PaginaPromozioni::EliminaCondizioniInFattura()
{
    const QString procedure = QStringLiteral("EliminaCondizioniInFattura:");
    OperazioneStorico operazione(m_form, procedure, QStringLiteral("Modifica"), m_albero.idTipo());
    if (!operazione.inizia())
        return;
    m_form.step(procedure, [&] {
        if (!m_promozioni)
            return;
        const QVariant legame = m_promozioni->value(QStringLiteral("GD12_ID"));
        if (legame.isNull())
            return;
        m_form.connection()->execute(dettaglistatements::deleteCampaignLinkStatement(legame.toLongLong()));
        m_promozioni->setValue(colonnaSelez, 0);
        m_promozioni->setValue(QStringLiteral("GD12_ID"), QVariant());
        m_promozioni->update();
    });
}

void PaginaPromozioni::SalvaCondizioniInFattura(qint64 idNodo)
{
    const QString procedure = QStringLiteral("SalvaCondizioniInFattura:");
    if (!m_promozioni)
        return;
    const db::ConnectionPtr connection = m_form.connection();
    OperazioneStorico operazione(m_form, procedure, QStringLiteral("Modifica"), m_albero.idTipo());
    if (!operazione.inizia())
        return;
    if (!m_form.step(procedure, [&] {
            connection->execute(dettaglistatements::deleteNodeCampaignLinksStatement(m_form.companyCode(), idNodo));
        }))
        return;
    const db::RecordsetPtr scelte = m_promozioni->clone();
    m_form.step(procedure, [&] {
        scelte->setFilter(QStringLiteral("SELEZ = 1"));
        for (scelte->moveFirst(); !scelte->eof(); scelte->moveNext())
            connection->execute(dettaglistatements::insertCampaignLinkStatement(
                m_form.companyCode(), idNodo, scelte->value(QStringLiteral("MG94_ID")).toLongLong()));
    });
}

void PaginaPromozioni::Invoca_Promozioni()
{
    if (!m_promozioni || m_promozioni->currentRow() < 0)
        return;
    m_form.step(QStringLiteral("Invoca_Promozioni"), [this] {
        const QString codice = MODGD_DISTINTA::NvlStringa(m_promozioni->value(QStringLiteral("MG94_CODCAMP")));
        if (fw::ModuleManager *modules = m_form.moduleManager(QStringLiteral("Promozioni")))
            modules->openPromotions(QStringLiteral(" MG94_CODCAMP IN ('") + sqltext::doubleQuotes(codice)
                                    + QStringLiteral("')"));
    });
}

void PaginaPromozioni::ApplicaEreditaPromozioni(qint64 idNodo, short regola)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->currentRow() < 0 || nodi->value(QStringLiteral("GD02_ID")).toLongLong() != idNodo)
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

} // namespace distinta
