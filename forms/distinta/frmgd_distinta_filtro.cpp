// Finding subjects in a long list: a filter over code, name and city that narrows the rows shown
// as one types (the list's rows and ticks stay as they are: a hidden ticked subject is still
// added), the count of ticked subjects beside it, the order chosen by a click on a heading, and
// what each column holds over its heading.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/recordsetgrid.h"
#include "framework/recordsetgridfiltermodel.h"
#include "framework/recordsetgridmodel.h"
#include "framework/treelist/treelist.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

QLayout *FRMGD_DISTINTA::creaFiltroAnagrafiche()
{
    TXT_FILTROANAGRAFICHE = new QLineEdit;
    TXT_FILTROANAGRAFICHE->setObjectName(QStringLiteral("TXT_FILTROANAGRAFICHE"));
    TXT_FILTROANAGRAFICHE->setPlaceholderText(QStringLiteral("Filtra per codice, ragione sociale o città"));
    TXT_FILTROANAGRAFICHE->setClearButtonEnabled(true);
    LBL_SELEZIONATI = new QLabel;
    LBL_SELEZIONATI->setObjectName(QStringLiteral("LBL_SELEZIONATI"));
    auto *row = new QHBoxLayout;
    row->addWidget(TXT_FILTROANAGRAFICHE, 1);
    row->addWidget(LBL_SELEZIONATI);
    return row;
}

void FRMGD_DISTINTA::collegaFiltroAnagrafiche()
{
    GRD_ANAGRAFICHEDISTINTA->enableRowFilter(
        {QStringLiteral("Codice"), QStringLiteral("Ragione sociale"), QStringLiteral("Citta")},
        {QStringLiteral("Seleziona")});
    connect(TXT_FILTROANAGRAFICHE, &QLineEdit::textChanged, this, &FRMGD_DISTINTA::filtraAnagrafiche);
    GRD_ANAGRAFICHEDISTINTA->gridModel()->setHeadingToolTips({
        {QStringLiteral("Seleziona"),
         QStringLiteral("Soggetti scelti per l'aggiunta alla distinta; un clic sull'intestazione li sceglie o li toglie tutti")},
        {QStringLiteral("AssociatoInDistinta"),
         QStringLiteral("Il soggetto è già in una distinta (di qualunque tipo) dello stesso genere, clienti o fornitori")},
        {QStringLiteral("Codice"), QStringLiteral("Codice del cliente o del fornitore")},
        {QStringLiteral("Ragione sociale"), QStringLiteral("Ragione sociale del soggetto")},
        {QStringLiteral("CodPagamento"), QStringLiteral("Codice della condizione di pagamento")},
        {QStringLiteral("DescPagamento"), QStringLiteral("Descrizione della condizione di pagamento")},
        {QStringLiteral("CodAgente"), QStringLiteral("Codice dell'agente")},
        {QStringLiteral("Ragione sociale agente"), QStringLiteral("Ragione sociale dell'agente")},
        {QStringLiteral("Citta"), QStringLiteral("Città del soggetto")},
        {QStringLiteral("Provincia"), QStringLiteral("Sigla della provincia del soggetto")},
        {QStringLiteral("Macroarea"), QStringLiteral("Macroarea geografica del soggetto")},
        {QStringLiteral("Area"), QStringLiteral("Area geografica del soggetto")},
        {QStringLiteral("Zona"), QStringLiteral("Zona geografica del soggetto")},
        {QStringLiteral("MacroCategoria"), QStringLiteral("Macrocategoria del soggetto")},
        {QStringLiteral("Categoria"), QStringLiteral("Categoria del soggetto")},
        {QStringLiteral("SottoCategoria"), QStringLiteral("Sottocategoria del soggetto")},
        {QStringLiteral("RaggrCF1"), QStringLiteral("Primo raggruppamento libero del soggetto")},
        {QStringLiteral("RaggrCF2"), QStringLiteral("Secondo raggruppamento libero del soggetto")},
        {QStringLiteral("RaggrCF3"), QStringLiteral("Terzo raggruppamento libero del soggetto")},
    });
    aggiornaConteggioSelezionati();
}

// No database round trip: the rows already read are narrowed where they are.
void FRMGD_DISTINTA::filtraAnagrafiche(const QString &testo)
{
    GRD_ANAGRAFICHEDISTINTA->rowFilter()->setFilterText(testo);
}

// What cannot act on an empty tree is disabled; the count of ticks follows the list.
void FRMGD_DISTINTA::aggiornaComandiUsabilita()
{
    const bool nodi = TVW_DISTINTA->count() > 0;
    CMD_ESPANDICOLLASSA->setEnabled(nodi);
    CMB_LIVELLO->setEnabled(nodi);
    CMD_CERCA->setEnabled(nodi);
    aggiornaConteggioSelezionati();
}

void FRMGD_DISTINTA::aggiornaConteggioSelezionati()
{
    if (!LBL_SELEZIONATI)
        return;
    LBL_SELEZIONATI->setText(m_selezionati == 1 ? QStringLiteral("1 selezionato")
                                                : QStringLiteral("%1 selezionati").arg(m_selezionati));
}
