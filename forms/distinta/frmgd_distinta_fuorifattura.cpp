// The off-invoice conditions that reach the focused node: contracts' bonuses and promotional
// activities given to the node itself, or to its subject over a period that overlaps the
// node's. Grouped by kind of condition; a double click opens the contract in the suite.
#include "forms/distinta/frmgd_distinta.h"

#include "data/legamistatements.h"
#include "data/modgd_distinta.h"
#include "framework/modulemanager.h"
#include "framework/recordsetgroupgrid.h"

namespace {

QString testoData(const QVariant &value)
{
    return value.isNull() ? QString() : value.toDate().toString(QStringLiteral("dd/MM/yyyy"));
}

} // namespace

void FRMGD_DISTINTA::ConfiguraGRD_PREMI()
{
    step(QStringLiteral("ConfiguraGRD_PREMI:"), [this] {
        GRD_PREMI->setColumns({
            {.key = QStringLiteral("IDProg"), .visible = false},
            {.key = QStringLiteral("TipoCondizione"), .caption = QStringLiteral("Condizione"), .width = 1000},
            {.key = QStringLiteral("ContrattoCod"), .caption = QStringLiteral("Contratto"), .width = 800},
            {.key = QStringLiteral("ContrattoDes"), .caption = QStringLiteral("Descrizione"), .width = 2000},
            {.key = QStringLiteral("ContrattoVer"), .caption = QStringLiteral("Versione"), .width = 800},
            {.key = QStringLiteral("TipoPremioAtt"), .caption = QStringLiteral("Premio"), .width = 800},
            {.key = QStringLiteral("CondizioneDes"), .caption = QStringLiteral("Descr. premio"), .width = 2000},
            {.key = QStringLiteral("CondizioneIni"), .caption = QStringLiteral("Data inizio"), .width = 1000,
             .displayText = testoData},
            {.key = QStringLiteral("CondizioneFin"), .caption = QStringLiteral("Data fine"), .width = 1000,
             .displayText = testoData},
            {.key = QStringLiteral("CondizioneCodIntest"), .caption = QStringLiteral("Intestatario"), .width = 800},
            {.key = QStringLiteral("CondizioneRagIntest"), .caption = QStringLiteral("Rag. Sociale"), .width = 2000},
        });
        GRD_PREMI->setGroupField(QStringLiteral("TipoCondizione"));
    });
}

void FRMGD_DISTINTA::CaricaCondizioniFuoriFattura()
{
    if (!m_nodi || m_nodi->currentRow() < 0)
        return;
    db::RecordsetPtr condizioni;
    if (!step(QStringLiteral("CaricaCondizioniFuoriFattura:"), [&] {
            legamistatements::NodoCondizioni nodo;
            nodo.nodeId = m_nodi->value(QStringLiteral("GD02_ID")).toLongLong();
            nodo.subjectKind = m_nodi->value(QStringLiteral("GD02_TIPOCF_CG44")).toInt();
            nodo.subjectCode = MODGD_DISTINTA::NvlNumero(m_nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong();
            nodo.start = m_nodi->value(QStringLiteral("GD02_DATAINIZIOVAL")).toDate();
            nodo.end = m_nodi->value(QStringLiteral("GD02_DATAFINEVAL")).toDate();
            const QString divisione = m_divisione ? QString::number(*m_divisione) : QString();
            condizioni = connection()->openRecordset(legamistatements::conditionsQuery(companyCode(), nodo, divisione));
        }))
        return;
    m_condizioniFuoriFattura = condizioni;
    GRD_PREMI->setRecordset(condizioni);
}

void FRMGD_DISTINTA::InvocaContratti()
{
    if (!m_condizioniFuoriFattura || m_condizioniFuoriFattura->currentRow() < 0)
        return;
    step(QStringLiteral("InvocaContratti"), [this] {
        const db::Recordset &riga = *m_condizioniFuoriFattura;
        fw::ContractReference contratto;
        contratto.IDContratto = riga.value(QStringLiteral("IDContratto"));
        contratto.ContrattoCod = riga.value(QStringLiteral("ContrattoCod"));
        contratto.ContrattoVer = riga.value(QStringLiteral("ContrattoVer"));
        contratto.ContrattoDes = riga.value(QStringLiteral("ContrattoDes"));
        contratto.IDCondizione = riga.value(QStringLiteral("IDCondizione"));
        contratto.premio = MODGD_DISTINTA::NvlStringa(riga.value(QStringLiteral("TipoCondizione"))) == QLatin1String("Premio");
        contratto.CondizioneCod = riga.value(QStringLiteral("CondizioneCod"));
        if (fw::ModuleManager *modules = gestoreModuli(QStringLiteral("Contratti")))
            modules->openContract(contratto);
    });
}
