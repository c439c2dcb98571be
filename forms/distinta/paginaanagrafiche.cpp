// The subject selection list: every customer or supplier of the company, built in a temporary
// table of the form's connection. The filter narrows the rows shown as one types (the list's
// rows and ticks stay as they are: a hidden ticked subject is still added), the count of ticked
// subjects stands beside it, and each heading says what its column holds.
#include "forms/distinta/paginaanagrafiche.h"

#include "data/anagrafichestatements.h"
#include "data/sqltext.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/emptyviewhint.h"
#include "framework/messagestyle.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgridfiltermodel.h"
#include "framework/recordsetgridmodel.h"
#include "framework/windowupdatelock.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace distinta {

namespace {

QPushButton *pulsante(const QString &name, const QString &caption, const QString &toolTip)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    return button;
}

} // namespace

PaginaAnagrafiche::PaginaAnagrafiche(FormFrame &form, Selettore &selettore, Albero &albero, QTabWidget *schede)
    : m_form(form)
    , m_selettore(selettore)
    , m_albero(albero)
    , m_schede(schede)
    , m_pagina(new QWidget)
    , CMD_ADDANAGR(pulsante(QStringLiteral("CMD_ADDANAGR"), QStringLiteral("&Aggiungi al nodo"),
                            QStringLiteral("Aggiunge i soggetti spuntati sotto il nodo selezionato (Alt+A, Ins)")))
    , CMD_ADDANAGRCAPO(pulsante(QStringLiteral("CMD_ADDANAGRCAPO"), QStringLiteral("Aggiungi &capostipite"),
                                QStringLiteral("Aggiunge i soggetti spuntati come capostipiti (Alt+C, Maiusc+Ins)")))
    , CMD_REMANAGR(pulsante(QStringLiteral("CMD_REMANAGR"), QStringLiteral("Ri&muovi"),
                            QStringLiteral("Toglie dalla distinta il nodo selezionato (Alt+M, Canc sull'albero)")))
    , TXT_FILTROANAGRAFICHE(new QLineEdit)
    , LBL_SELEZIONATI(new QLabel)
    , GRD_ANAGRAFICHEDISTINTA(new fw::RecordsetGrid)
    , mnuAnagrafiche(new QMenu(GRD_ANAGRAFICHEDISTINTA))
{
    TXT_FILTROANAGRAFICHE->setObjectName(QStringLiteral("TXT_FILTROANAGRAFICHE"));
    TXT_FILTROANAGRAFICHE->setPlaceholderText(QStringLiteral("Filtra per codice, ragione sociale o città"));
    TXT_FILTROANAGRAFICHE->setClearButtonEnabled(true);
    TXT_FILTROANAGRAFICHE->setToolTip(QStringLiteral("Mostra solo i soggetti il cui codice, ragione sociale o città "
                                                     "contiene il testo; le spunte restano (Ctrl+Maiusc+F)"));
    LBL_SELEZIONATI->setObjectName(QStringLiteral("LBL_SELEZIONATI"));
    GRD_ANAGRAFICHEDISTINTA->setObjectName(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));

    auto *pulsanti = new QHBoxLayout;
    pulsanti->addWidget(CMD_ADDANAGR);
    pulsanti->addWidget(CMD_ADDANAGRCAPO);
    pulsanti->addWidget(CMD_REMANAGR);
    pulsanti->addStretch();
    auto *filtro = new QHBoxLayout;
    filtro->addWidget(TXT_FILTROANAGRAFICHE, 1);
    filtro->addWidget(LBL_SELEZIONATI);
    auto *layout = new QVBoxLayout(m_pagina);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addLayout(pulsanti);
    layout->addLayout(filtro);
    layout->addWidget(GRD_ANAGRAFICHEDISTINTA);

    connect(GRD_ANAGRAFICHEDISTINTA, &fw::RecordsetGrid::headerClicked, this,
            &PaginaAnagrafiche::GRD_ANAGRAFICHEDISTINTA_HeaderClick);
    mnuAnagrafiche->setObjectName(QStringLiteral("mnuAnagrafiche"));
    mnuDoveUsatoAnagrafica = mnuAnagrafiche->addAction(QStringLiteral("Dove è usato"));
    mnuDoveUsatoAnagrafica->setObjectName(QStringLiteral("mnuDoveUsatoAnagrafica"));
    connect(mnuDoveUsatoAnagrafica, &QAction::triggered, this, [this] {
        bool ok = false;
        const qint64 codice = mnuDoveUsatoAnagrafica->data().toLongLong(&ok);
        if (ok)
            emit doveUsatoRichiesto(m_tipoLista, codice);
    });
    GRD_ANAGRAFICHEDISTINTA->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(GRD_ANAGRAFICHEDISTINTA, &QWidget::customContextMenuRequested, this,
            &PaginaAnagrafiche::apriMenuAnagrafiche);
    collegaFiltro();
    // After the filter, whose rows it watches.
    m_vuoto = new fw::EmptyViewHint(GRD_ANAGRAFICHEDISTINTA, [this]() -> QString {
        if (!m_anagrafiche)
            return QStringLiteral("Scegliere una distinta nella pagina «Distinte» per vedere i suoi soggetti.");
        if (m_anagrafiche->recordCount() == 0)
            return QStringLiteral("La ditta non ha soggetti di questo tipo.");
        return QStringLiteral("Nessun soggetto corrisponde al filtro.");
    });
}

PaginaAnagrafiche::~PaginaAnagrafiche()
{
    delete m_vuoto;
}

void PaginaAnagrafiche::collegaFiltro()
{
    GRD_ANAGRAFICHEDISTINTA->enableRowFilter(
        {QStringLiteral("Codice"), QStringLiteral("Ragione sociale"), QStringLiteral("Citta")},
        {QStringLiteral("Seleziona")});
    // No database round trip: the rows already read are narrowed where they are.
    connect(TXT_FILTROANAGRAFICHE, &QLineEdit::textChanged, this,
            [this](const QString &testo) { GRD_ANAGRAFICHEDISTINTA->rowFilter()->setFilterText(testo); });
    GRD_ANAGRAFICHEDISTINTA->gridModel()->setHeadingToolTips({
        {QStringLiteral("Seleziona"),
         QStringLiteral(
             "Soggetti scelti per l'aggiunta alla distinta; un clic sull'intestazione li sceglie o li toglie tutti")},
        {QStringLiteral("AssociatoInDistinta"),
         QStringLiteral(
             "Il soggetto è già in una distinta (di qualunque tipo) dello stesso genere, clienti o fornitori")},
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
    aggiornaConteggio();
}

QList<QWidget *> PaginaAnagrafiche::ordineTab() const
{
    return {TXT_FILTROANAGRAFICHE, GRD_ANAGRAFICHEDISTINTA, CMD_ADDANAGR, CMD_ADDANAGRCAPO, CMD_REMANAGR};
}

void PaginaAnagrafiche::rilascia()
{
    GRD_ANAGRAFICHEDISTINTA->setRecordset(nullptr);
    m_anagrafiche.reset();
}

bool PaginaAnagrafiche::mostrata() const
{
    return m_schede->currentWidget() == m_pagina;
}

void PaginaAnagrafiche::CaricaAnagraficheDistinta()
{
    const QString procedure = QStringLiteral("CaricaAnagraficheDistinta");
    // "P0" customers, "P1" suppliers.
    const int subjectKind = m_selettore.tipoDellaRadice();
    if (subjectKind < 0) {
        m_form.message(QStringLiteral("Occorre selezionare la distinta da modificare."), fw::MessageStyle::Warning,
                       QStringLiteral("Attenzione"));
        return;
    }

    const db::ConnectionPtr connection = m_form.connection();
    EliminaTabellaTemp(anagrafichestatements::subjectListTable(), connection);
    if (!m_form.step(procedure, [&] {
            connection->execute(anagrafichestatements::buildSubjectListStatement(m_form.companyCode(), subjectKind,
                                                                                 m_albero.divisione()));
        }))
        return;
    db::RecordsetPtr list;
    if (!m_form.step(procedure,
                     [&] { list = connection->openRecordset(anagrafichestatements::readSubjectListStatement()); })
        || !list) // ignored: the list stays as it was
        return;
    InizializzaQgrid();
    m_anagrafiche = list;
    m_tipoLista = subjectKind;
    GRD_ANAGRAFICHEDISTINTA->setRecordset(list);
    connect(list.get(), &QAbstractItemModel::dataChanged, this, &PaginaAnagrafiche::contaSelezionatiPiuTardi);
    connect(list.get(), &QAbstractItemModel::modelReset, this, &PaginaAnagrafiche::contaSelezionatiPiuTardi);
    contaSelezionatiPiuTardi();
    emit listaCaricata();
}

void PaginaAnagrafiche::EliminaTabellaTemp(const QString &table, const db::ConnectionPtr &connection)
{
    if (!connection)
        return;
    if (!FormFrame::quietly([&] { connection->execute(sqltext::dropTempTableStatement(table)); }))
        connection->clearErrors();
}

void PaginaAnagrafiche::apriMenuAnagrafiche(const QPoint &pos)
{
    int row = GRD_ANAGRAFICHEDISTINTA->recordsetRow(GRD_ANAGRAFICHEDISTINTA->indexAt(pos));
    if (row < 0)
        row = GRD_ANAGRAFICHEDISTINTA->recordsetRow(GRD_ANAGRAFICHEDISTINTA->currentIndex());
    QVariant codice;
    if (row >= 0 && m_anagrafiche)
        codice = m_anagrafiche->valueAt(row, m_anagrafiche->fieldIndex(QStringLiteral("Codice")));
    mnuDoveUsatoAnagrafica->setData(codice);
    mnuDoveUsatoAnagrafica->setEnabled(!codice.isNull());
    mnuAnagrafiche->popup(GRD_ANAGRAFICHEDISTINTA->viewport()->mapToGlobal(pos));
}

// Headings, widths and read-only columns of the list; once.
void PaginaAnagrafiche::InizializzaQgrid()
{
    if (m_qgridConfigurata)
        return;
    m_form.step(QStringLiteral("InizializzaQgrid"), [this] {
        using Kind = fw::RecordsetGridColumn::Kind;
        QList<fw::RecordsetGridColumn> subjects = {
            {.key = QStringLiteral("Seleziona"),
             .caption = QStringLiteral("Sel."),
             .width = 750,
             .kind = Kind::Check,
             .readOnly = false,
             .background = QColor(255, 255, 153)},
            {.key = QStringLiteral("AssociatoInDistinta"),
             .caption = QStringLiteral("Pres."),
             .width = 750,
             .kind = Kind::Mark},
            {.key = QStringLiteral("Codice"), .width = 900},
            {.key = QStringLiteral("Ragione sociale"), .width = 4500},
            {.key = QStringLiteral("CodPagamento"), .width = 600},
            {.key = QStringLiteral("DescPagamento"), .width = 3000},
            {.key = QStringLiteral("CodAgente"), .width = 600},
            {.key = QStringLiteral("Ragione sociale agente"), .width = 3000},
            {.key = QStringLiteral("Citta"), .width = 3000},
            {.key = QStringLiteral("Provincia"), .width = 1000},
        };
        for (const char *classification : {"Macroarea", "Area", "Zona", "MacroCategoria", "Categoria", "SottoCategoria",
                                           "RaggrCF1", "RaggrCF2", "RaggrCF3"})
            subjects.append({.key = QString::fromLatin1(classification), .width = 3000});
        GRD_ANAGRAFICHEDISTINTA->setColumns(subjects);
        m_qgridConfigurata = true;
    });
}

// A click on the "Sel." heading ticks every subject, the next one clears every tick.
void PaginaAnagrafiche::GRD_ANAGRAFICHEDISTINTA_HeaderClick(const QString &key)
{
    if (key != QLatin1String("Seleziona") || !m_anagrafiche)
        return;
    m_form.step(QStringLiteral("GRD_ANAGRAFICHEDISTINTA_SelezionaTutti"), [this] {
        fw::WindowUpdateLock freeze(GRD_ANAGRAFICHEDISTINTA);
        const int value = m_selezionaTutti ? 0 : 1;
        // A clone walks the shared rows without dragging the grid's current row along.
        const db::RecordsetPtr rows = m_anagrafiche->clone();
        for (rows->moveFirst(); !rows->eof(); rows->moveNext())
            rows->setValue(QStringLiteral("Seleziona"), value);
        m_selezionaTutti = !m_selezionaTutti;
        if (!m_anagrafiche->isEmpty())
            m_anagrafiche->moveFirst();
    });
}

// Ticks change one by one or all at once: they are counted once the change is over.
void PaginaAnagrafiche::contaSelezionatiPiuTardi()
{
    if (m_conteggioInAttesa)
        return;
    m_conteggioInAttesa = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_conteggioInAttesa = false;
            m_selezionati = 0;
            if (m_anagrafiche) {
                const int field = m_anagrafiche->fieldIndex(QStringLiteral("Seleziona"));
                for (int row = 0; field >= 0 && row < m_anagrafiche->recordCount(); ++row)
                    m_selezionati += m_anagrafiche->valueAt(row, field).toInt() == 1 ? 1 : 0;
            }
            aggiornaConteggio();
            emit selezioneCambiata();
        },
        Qt::QueuedConnection);
}

void PaginaAnagrafiche::aggiornaConteggio()
{
    LBL_SELEZIONATI->setText(m_selezionati == 1 ? QStringLiteral("1 selezionato")
                                                : QStringLiteral("%1 selezionati").arg(m_selezionati));
}

} // namespace distinta
