// The in-invoice campaigns of a node. Only a node whose rule is "Specifica per Cli/For Distinta"
// has a list of its own; an inheriting node shows an empty one. The list is a temporary table
// rebuilt at every load; a tick links or unlinks one campaign at once, and the box shows only
// what the database change produced.
#include "forms/distinta/frmgd_distinta.h"

#include "data/dettaglistatements.h"
#include "data/modgd_distinta.h"
#include "data/sqltext.h"
#include "framework/modulemanager.h"
#include "framework/recordsetgrid.h"
#include "framework/treelist/treelist.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

const QString colonnaSelez = QStringLiteral("SELEZ");

QString testoData(const QVariant &value)
{
    return value.isNull() ? QString() : value.toDate().toString(QStringLiteral("dd/MM/yyyy"));
}

} // namespace

void FRMGD_DISTINTA::ConfiguraQRID_PROMO()
{
    step(QStringLiteral("ConfiguraQRID_PROMO:"), [this] {
        using Kind = fw::RecordsetGridColumn::Kind;
        GRD_PROMO->setColumns({
            {.key = QStringLiteral("ANNO"), .caption = QStringLiteral("Anno"), .width = 800},
            {.key = QStringLiteral("MG94_CODCAMP"), .caption = QStringLiteral("Codice"), .width = 1000},
            {.key = QStringLiteral("MG94_DESCAMP"), .caption = QStringLiteral("Descrizione"), .width = 2500},
            {.key = QStringLiteral("MG94_DATAINIZIO"), .caption = QStringLiteral("Data inizio"), .width = 1000,
             .displayText = testoData},
            {.key = QStringLiteral("MG94_DATAFINE"), .caption = QStringLiteral("Data fine"), .width = 1000,
             .displayText = testoData},
            {.key = QStringLiteral("MG94_FLGATTIVA"), .caption = QStringLiteral("Attiva in campagne promozionali"),
             .width = 2085, .kind = Kind::Check, .readOnly = true},
            {.key = colonnaSelez, .caption = QStringLiteral("Attiva per cli/for distinta"), .width = 2220,
             .kind = Kind::Check, .readOnly = false},
        });
    });
}

// The user's own choice of rule: stored on the node at once (a row changed meanwhile by another
// clerk is refused and read again), then the list follows the rule.
void FRMGD_DISTINTA::CBO_EREPROMO_Click()
{
    if (!m_frameDistinta || !m_nodi || m_nodi->currentRow() < 0)
        return;
    std::optional<db::DatabaseError> conflitto;
    const bool salvato = step(QStringLiteral("CBO_EREPROMO_ChangeRow"), [&] {
        try {
            m_frameDistinta->update();
        } catch (const db::DatabaseError &error) {
            if (!error.isStaleRow())
                throw;
            conflitto = error;
        }
    });
    if (conflitto)
        rileggiNodoInConflitto(*conflitto);
    if (conflitto || !salvato) {
        m_frameDistinta->undo();
        return;
    }
    TVW_DISTINTA->refresh();
    CBO_EREPROMO_ChangeRow();
}

void FRMGD_DISTINTA::CBO_EREPROMO_ChangeRow()
{
    if (!isLoaded() || m_propagazioneInCorso || m_eliminazioneInCorso || !m_nodi || m_nodi->isEmpty()
        || m_nodi->currentRow() < 0)
        return;
    qint64 idNodo = 0;
    short regola = 0;
    if (!step(QStringLiteral("CBO_EREPROMO_ChangeRow"), [&] {
            idNodo = m_nodi->value(QStringLiteral("GD02_ID")).toLongLong();
            regola = short(MODGD_DISTINTA::NvlNumero(m_nodi->value(QStringLiteral("GD02_INDEREPROMO"))).toInt());
        }))
        return;
    CaricaCondizioniInFattura(idNodo, regola);
}

void FRMGD_DISTINTA::CaricaCondizioniInFattura(qint64 idNodo, short regola)
{
    const QString procedure = QStringLiteral("CaricaCondizioniInFattura:");
    QString struttura;
    QString localizzata;
    if (!step(procedure, [&] {
            const db::RecordsetPtr priorita = connection()->openRecordset(
                dettaglistatements::nodePrioritiesQuery(m_idDistinta.toLongLong(), idNodo));
            if (priorita->isEmpty())
                return;
            priorita->moveFirst();
            struttura = Get_LP09_CODICE(connection(), priorita->value(QStringLiteral("GD02_IDSTRUTTURA_LP09")));
            localizzata = Get_LP09_CODICE(connection(), priorita->value(QStringLiteral("GD02_IDLOCALIZZATA_LP09")));
        }))
        return;
    TXT_PRIORITA_STRUTTURA->setText(struttura);
    TXT_PRIORITA_LOCALIZZATA->setText(localizzata);
    m_idNodoPromo = idNodo;
    m_regolaPromo = regola;

    EliminaTabellaTemp(dettaglistatements::campaignTable(), connection());
    db::RecordsetPtr lista;
    if (!step(procedure, [&] {
            connection()->execute(dettaglistatements::buildCampaignListStatement(companyCode(), idNodo, regola));
        })
        || !step(procedure, [&] { lista = connection()->openRecordset(dettaglistatements::readCampaignListStatement()); }))
        return;
    m_promozioni = lista;
    GRD_PROMO->setRecordset(lista);
}

// The tick of a campaign, given the box's value before the click. The grid's own change is
// always cancelled: the box takes the value that the database change produced.
bool FRMGD_DISTINTA::GRD_PROMO_BeforeColUpdate(int row, const QString &key, const QVariant &before)
{
    if (key.compare(colonnaSelez, Qt::CaseInsensitive) != 0 || !m_promozioni)
        return true;
    m_promozioni->setCurrentRow(row);
    const int prima = before.toInt();
    if (prima == 0 && m_nodi && m_nodi->currentRow() >= 0)
        InsertCondizioniInFattura(m_nodi->value(QStringLiteral("GD02_ID")).toLongLong());
    else if (prima == 1)
        EliminaCondizioniInFattura();
    return false;
}

void FRMGD_DISTINTA::InsertCondizioniInFattura(qint64 idNodo)
{
    step(QStringLiteral("InsertCondizioniInFattura:"), [&] {
        const qint64 campagna = m_promozioni->value(QStringLiteral("MG94_ID")).toLongLong();
        connection()->execute(dettaglistatements::insertCampaignLinkStatement(companyCode(), idNodo, campagna));
        m_promozioni->setValue(colonnaSelez, 1);
        m_promozioni->update();
    });
}

// A link made since the list was read has no identifier in it yet: it stays until the list
// is read again.
void FRMGD_DISTINTA::EliminaCondizioniInFattura()
{
    step(QStringLiteral("EliminaCondizioniInFattura:"), [&] {
        if (!m_promozioni)
            return;
        const QVariant legame = m_promozioni->value(QStringLiteral("GD12_ID"));
        if (legame.isNull())
            return;
        connection()->execute(dettaglistatements::deleteCampaignLinkStatement(legame.toLongLong()));
        m_promozioni->setValue(colonnaSelez, 0);
        m_promozioni->setValue(QStringLiteral("GD12_ID"), QVariant());
        m_promozioni->update();
    });
}

void FRMGD_DISTINTA::SalvaCondizioniInFattura(qint64 idNodo)
{
    const QString procedure = QStringLiteral("SalvaCondizioniInFattura:");
    if (!m_promozioni)
        return;
    if (!step(procedure, [&] { connection()->execute(dettaglistatements::deleteNodeCampaignLinksStatement(companyCode(), idNodo)); }))
        return;
    const db::RecordsetPtr scelte = m_promozioni->clone();
    step(procedure, [&] {
        scelte->setFilter(QStringLiteral("SELEZ = 1"));
        for (scelte->moveFirst(); !scelte->eof(); scelte->moveNext())
            connection()->execute(dettaglistatements::insertCampaignLinkStatement(
                companyCode(), idNodo, scelte->value(QStringLiteral("MG94_ID")).toLongLong()));
    });
}

void FRMGD_DISTINTA::Invoca_Promozioni()
{
    if (!m_promozioni || m_promozioni->currentRow() < 0)
        return;
    step(QStringLiteral("Invoca_Promozioni"), [this] {
        const QString codice = MODGD_DISTINTA::NvlStringa(m_promozioni->value(QStringLiteral("MG94_CODCAMP")));
        if (fw::ModuleManager *modules = gestoreModuli(QStringLiteral("Promozioni")))
            modules->openPromotions(QStringLiteral(" MG94_CODCAMP IN ('") + sqltext::doubleQuotes(codice) + QStringLiteral("')"));
    });
}
