#include "forms/distinta/paginastorico.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/storicostatements.h"
#include "forms/distinta/albero.h"
#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <QCheckBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <stdexcept>

namespace distinta {

namespace {

const QString procedura = QStringLiteral("CaricaStorico");

} // namespace

PaginaStorico::PaginaStorico(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , m_pagina(new QWidget)
    , CHK_STORICOSOGGETTO(new QCheckBox(QStringLiteral("Anc&he le altre distinte del soggetto")))
    , CMD_SALVASTORICO(
          fw::ExportFile::menuButton(QStringLiteral("CMD_SALVASTORICO"), QStringLiteral("Sal&va storico"),
                                     QStringLiteral("Salva lo storico mostrato in Excel o in CSV (Alt+V)"), this,
                                     [this](fw::ExportFile::Format formato) { CMD_SALVASTORICO_Click(formato); }))
    , GRD_STORICO(new QTableView)
{
    m_pagina->setObjectName(QStringLiteral("PAG_STORICO"));
    CHK_STORICOSOGGETTO->setObjectName(QStringLiteral("CHK_STORICOSOGGETTO"));
    CHK_STORICOSOGGETTO->setToolTip(
        QStringLiteral("Mostra le modifiche del soggetto del nodo in tutte le distinte della ditta (Alt+H)"));
    CMD_SALVASTORICO->setEnabled(false);

    GRD_STORICO->setObjectName(QStringLiteral("GRD_STORICO"));
    GRD_STORICO->setModel(&m_modello);
    GRD_STORICO->setSelectionBehavior(QAbstractItemView::SelectRows);
    GRD_STORICO->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_STORICO->setWordWrap(false);
    GRD_STORICO->verticalHeader()->hide();
    GRD_STORICO->horizontalHeader()->setStretchLastSection(true);

    auto *comandi = new QHBoxLayout;
    comandi->addWidget(CHK_STORICOSOGGETTO);
    comandi->addStretch();
    comandi->addWidget(CMD_SALVASTORICO);
    auto *layout = new QVBoxLayout(m_pagina);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addLayout(comandi);
    layout->addWidget(GRD_STORICO, 1);

    connect(CHK_STORICOSOGGETTO, &QCheckBox::toggled, this, &PaginaStorico::CaricaStorico);
    connect(&m_modello, &QAbstractItemModel::modelReset, this,
            [this] { CMD_SALVASTORICO->setEnabled(m_modello.rowCount() > 0); });
}

void PaginaStorico::svuota()
{
    m_modello.imposta({});
}

void PaginaStorico::CaricaStorico()
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    const db::ConnectionPtr connection = m_form.connection();
    if (!nodi || nodi->currentRow() < 0 || !connection
        || !connection->hasTable(QString::fromLatin1(storicostatements::OperationsTable))) {
        svuota();
        return;
    }
    QList<VoceStorico> voci;
    if (!m_form.step(procedura, [&] {
            const qint64 idNodo = nodi->value(QStringLiteral("GD02_ID")).toLongLong();
            QString query;
            if (CHK_STORICOSOGGETTO->isChecked()) {
                query = storicostatements::subjectHistoryQuery(
                    m_form.companyCode(), m_albero.tipoSoggetto(),
                    MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong());
            } else {
                const db::RecordsetPtr guid = connection->openRecordset(
                    nodistatements::nodeGuidQuery(m_form.companyCode(), idNodo));
                query = storicostatements::nodeHistoryQuery(
                    m_form.companyCode(), idNodo,
                    guid->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(guid->valueAt(0, 0)));
            }
            voci = LetturaStorico(connection, m_form.companyCode()).leggi(query);
        })) {
        svuota();
        return;
    }
    m_modello.imposta(voci);
    GRD_STORICO->resizeColumnsToContents();
}

void PaginaStorico::CMD_SALVASTORICO_Click(fw::ExportFile::Format formato)
{
    if (m_modello.rowCount() == 0)
        return;
    const VoceStorico &prima = m_modello.voci().constFirst();
    const QString nome = QStringLiteral("Storico ") + prima.soggetto;
    const QString percorso = fw::ExportFile::chooseInDocuments(&m_form, formato, nome);
    if (percorso.isEmpty())
        return;
    if (m_form.step(QStringLiteral("CMD_SALVASTORICO_Click"),
                    [&] { LetturaStorico::esporta(m_modello.voci(), percorso, formato, nome); }))
        m_form.notifica(QStringLiteral("Storico salvato nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)));
}

} // namespace distinta
