#include "forms/distinta/paginacondizioni.h"

#include "data/legamistatements.h"
#include "data/modgd_distinta.h"
#include "data/sqltext.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controllilegami.h"
#include "frame/formframe.h"
#include "framework/columnsizing.h"
#include "framework/modulemanager.h"
#include "framework/recordsetgroupgrid.h"

#include <QVBoxLayout>

namespace distinta {

namespace {

QString testoData(const QVariant &value)
{
    return value.isNull() ? QString() : sqltext::dayMonthYear(value.toDate());
}

} // namespace

PaginaCondizioni::PaginaCondizioni(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , m_pagina(new QWidget)
    , GRD_PREMI(new fw::RecordsetGroupGrid)
{
    GRD_PREMI->setObjectName(QStringLiteral("GRD_PREMI"));
    auto *layout = new QVBoxLayout(m_pagina);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(GRD_PREMI);
    connect(GRD_PREMI, &fw::RecordsetGroupGrid::rowChosen, this, [this](int row) {
        if (m_condizioniFuoriFattura && row >= 0 && row < m_condizioniFuoriFattura->recordCount()) {
            m_condizioniFuoriFattura->setCurrentRow(row);
            InvocaContratti();
        }
    });
    ConfiguraGRD_PREMI();
}

QWidget *PaginaCondizioni::griglia() const
{
    return GRD_PREMI;
}

void PaginaCondizioni::ConfiguraGRD_PREMI()
{
    m_form.step(QStringLiteral("ConfiguraGRD_PREMI:"), [this] {
        GRD_PREMI->setFillWidth(true);
        GRD_PREMI->setColumns({
            {.key = QStringLiteral("IDProg"), .visible = false},
            {.key = QStringLiteral("TipoCondizione"), .caption = QStringLiteral("Condizione"), .width = 1000},
            {.key = QStringLiteral("ContrattoCod"),
             .caption = QStringLiteral("Contratto"),
             .width = 800,
             .widthSample = QStringLiteral("CT99-999")},
            {.key = QStringLiteral("ContrattoDes"),
             .caption = QStringLiteral("Descrizione"),
             .width = 2000,
             .widthSample = QStringLiteral("Accordo commerciale")},
            {.key = QStringLiteral("ContrattoVer"),
             .caption = QStringLiteral("Versione"),
             .width = 800,
             .widthSample = QStringLiteral("99")},
            {.key = QStringLiteral("TipoPremioAtt"),
             .caption = QStringLiteral("Premio"),
             .width = 800,
             .widthSample = QStringLiteral("QT")},
            {.key = QStringLiteral("CondizioneDes"),
             .caption = QStringLiteral("Descr. premio"),
             .width = 2000,
             .widthSample = QStringLiteral("Premio quantitativo")},
            {.key = QStringLiteral("CondizioneIni"),
             .caption = QStringLiteral("Data inizio"),
             .width = 1000,
             .widthSample = fw::wholeDateSample(),
             .displayText = testoData},
            {.key = QStringLiteral("CondizioneFin"),
             .caption = QStringLiteral("Data fine"),
             .width = 1000,
             .widthSample = fw::wholeDateSample(),
             .displayText = testoData},
            {.key = QStringLiteral("CondizioneCodIntest"),
             .caption = QStringLiteral("Intestatario"),
             .width = 800,
             .widthSample = QStringLiteral("9999999")},
            {.key = QStringLiteral("CondizioneRagIntest"),
             .caption = QStringLiteral("Rag. Sociale"),
             .width = 2000,
             .widthSample = QStringLiteral("Commerciale Rossi Srl")},
        });
        GRD_PREMI->setGroupField(QStringLiteral("TipoCondizione"));
    });
}

void PaginaCondizioni::svuota()
{
    GRD_PREMI->setRecordset(nullptr);
    m_condizioniFuoriFattura.reset();
}

void PaginaCondizioni::CaricaCondizioniFuoriFattura()
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->currentRow() < 0)
        return;
    db::RecordsetPtr condizioni;
    if (!m_form.step(QStringLiteral("CaricaCondizioniFuoriFattura:"), [&] {
            const QString divisione = m_albero.divisione() ? QString::number(*m_albero.divisione()) : QString();
            legamistatements::NodoCondizioni nodo = ControlliLegami::nodoCondizioni(*nodi);
            // A subject code that is no number is a failure of this page, not subject 0.
            nodo.subjectCode = MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong();
            condizioni = m_form.connection()->openRecordset(
                legamistatements::conditionsQuery(m_form.companyCode(), nodo, divisione));
        }))
        return;
    m_condizioniFuoriFattura = condizioni;
    GRD_PREMI->setRecordset(condizioni);
}

void PaginaCondizioni::InvocaContratti()
{
    if (!m_condizioniFuoriFattura || m_condizioniFuoriFattura->currentRow() < 0)
        return;
    m_form.step(QStringLiteral("InvocaContratti"), [this] {
        const db::Recordset &riga = *m_condizioniFuoriFattura;
        fw::ContractReference contratto;
        contratto.IDContratto = riga.value(QStringLiteral("IDContratto"));
        contratto.ContrattoCod = riga.value(QStringLiteral("ContrattoCod"));
        contratto.ContrattoVer = riga.value(QStringLiteral("ContrattoVer"));
        contratto.ContrattoDes = riga.value(QStringLiteral("ContrattoDes"));
        contratto.IDCondizione = riga.value(QStringLiteral("IDCondizione"));
        contratto.premio = MODGD_DISTINTA::NvlStringa(riga.value(QStringLiteral("TipoCondizione")))
            == QLatin1String("Premio");
        contratto.CondizioneCod = riga.value(QStringLiteral("CondizioneCod"));
        if (fw::ModuleManager *modules = m_form.moduleManager(QStringLiteral("Contratti")))
            modules->openContract(contratto);
    });
}

} // namespace distinta
