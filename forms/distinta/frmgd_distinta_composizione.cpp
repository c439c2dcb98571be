// The editor's controls in place and wired: the management panel on the left (types, subject
// list, search), the classification tree with its header line and buttons on the right, the
// pages under the tree; two splitters hold the proportions. The keyboard: an Alt+letter on every
// button, shortcuts for the main commands (each named in its control's tooltip) and a Tab order
// that follows the work (types, tree, search, subject list, details).
#include "forms/distinta/frmgd_distinta.h"

#include "forms/distinta/alladata.h"
#include "forms/distinta/livelli.h"
#include "forms/distinta/parti.h"
#include "framework/elidedlabel.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistview.h"
#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QShortcut *scorciatoia(QWidget *owner, const QKeySequence &keys, const QString &name,
                       Qt::ShortcutContext context = Qt::WidgetWithChildrenShortcut)
{
    auto *shortcut = new QShortcut(keys, owner);
    shortcut->setContext(context);
    shortcut->setObjectName(name);
    return shortcut;
}

} // namespace

void FRMGD_DISTINTA::creaControlli()
{
    distinta::Aspetto &aspetto = m_parti->aspetto;
    aspetto.verticale()->addWidget(creaPannelloGestione());
    aspetto.orizzontale()->addWidget(creaPannelloDistinta());
    aspetto.orizzontale()->addWidget(m_parti->dettagli.widget());
    aspetto.verticale()->addWidget(aspetto.orizzontale());

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(aspetto.verticale());
}

// Left: the classification types, the subject list and the search across all lists.
QWidget *FRMGD_DISTINTA::creaPannelloGestione()
{
    TAB_VISUALIZZAGESTIONE->setObjectName(QStringLiteral("TAB_VISUALIZZAGESTIONE"));
    auto *tipi = new QWidget;
    auto *layout = new QVBoxLayout(tipi);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_parti->selettore.widget());
    TAB_VISUALIZZAGESTIONE->addTab(tipi, QStringLiteral("Distinte"));
    TAB_VISUALIZZAGESTIONE->addTab(m_parti->anagrafiche.pagina(), QStringLiteral("Anagrafiche"));
    TAB_VISUALIZZAGESTIONE->addTab(m_parti->ricerca.pagina(), QStringLiteral("Ricerca"));
    return TAB_VISUALIZZAGESTIONE;
}

// Right, above: the header line, the tree's buttons and the tree. The header line shares its row
// with the branch move and the buttons that open other work; the tree's own view tools (levels,
// date, search, state) sit on the row below, and the history's on a third, so that no row needs
// more than the panel's width at 1280 pixels.
QWidget *FRMGD_DISTINTA::creaPannelloDistinta()
{
    distinta::Parti &p = *m_parti;
    auto *header = new QHBoxLayout;
    header->addWidget(p.albero.intestazione(), 1);
    header->addLayout(p.spostamento.creaComandi());
    header->addSpacing(12);
    header->addWidget(p.stampa.pulsante());
    header->addWidget(p.esportazione.pulsante());
    header->addWidget(p.importazione.pulsante());
    header->addWidget(p.parametri.pulsante());
    header->addWidget(p.gestioni.pulsante());
    auto *tools = new QHBoxLayout;
    tools->addWidget(p.albero.livelli().combo());
    tools->addWidget(p.albero.livelli().pulsante());
    tools->addSpacing(12);
    tools->addLayout(p.albero.allaData().creaCampo());
    tools->addSpacing(12);
    tools->addWidget(p.ricercaAlbero.casella());
    tools->addWidget(p.ricercaAlbero.pulsante());
    tools->addStretch();
    tools->addWidget(new QLabel(QStringLiteral("Stato")));
    tools->addWidget(p.stato.controllo());

    // The history's row: undo and redo, the list of changes, the comparison of two days; the
    // check of every classification beside them.
    auto *storia = new QHBoxLayout;
    storia->addWidget(p.annullamento.annulla());
    storia->addWidget(p.annullamento.ripeti());
    storia->addSpacing(12);
    storia->addWidget(p.storico.storico());
    storia->addWidget(p.storico.confronta());
    storia->addWidget(p.controllo.pulsante());
    storia->addStretch();

    auto *pannello = new QWidget;
    auto *layout = new QVBoxLayout(pannello);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addLayout(tools);
    layout->addLayout(storia);
    layout->addWidget(p.albero.widget(), 1);
    return pannello;
}

void FRMGD_DISTINTA::collegaEventi()
{
    distinta::Parti &p = *m_parti;
    connect(&p.selettore, &distinta::Selettore::sceltaDallUtente, this, &FRMGD_DISTINTA::TVW_SELDISTINTE_Click);
    // The pages under the tree follow the focus first, then the priority fields.
    connect(p.albero.widget(), &fw::TreeList::focusedNodeChanged, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnChangeNode);
    connect(p.albero.widget(), &fw::TreeList::focusedNodeChanged, &p.priorita,
            &distinta::Priorita::mostraCodiciPriorita);
    connect(TAB_VISUALIZZAGESTIONE, &QTabWidget::currentChanged, this, &FRMGD_DISTINTA::TAB_VISUALIZZAGESTIONE_Click);
    connect(&p.anagrafiche, &distinta::PaginaAnagrafiche::selezioneCambiata, this, &FRMGD_DISTINTA::aggiornaComandi);
    connect(&p.anagrafiche, &distinta::PaginaAnagrafiche::listaCaricata, &p.aspetto,
            &distinta::Aspetto::SplitterReposition);
    connect(&p.ricerca, &distinta::PaginaRicerca::nodoRichiesto, this, &FRMGD_DISTINTA::vaiAlNodo);
    connect(&p.controllo, &distinta::ControlloDistinte::nodoRichiesto, this,
            [this](const QString &chiave, qint64 idNodo, qint64 codice) {
                vaiAlLegame(chiave, idNodo, codice, distinta::ControlloDistinte::procedureSalto);
            });
    connect(&p.gestioni, &distinta::Gestioni::tipiCambiati, this,
            [this] { InizializzaDistinte(m_parti->selettore.chiaveSelezionata()); });
    connect(&p.parametri, &distinta::ParametriModulo::parametriChiusi, &p.dettagli,
            &distinta::PagineDettaglio::parametriCambiati);
    connect(&p.dettagli, &distinta::PagineDettaglio::nodoMostrato, &p.parametri,
            &distinta::ParametriModulo::nodoCambiato);
    // After every operation of the journal, and after an undo or a redo: the tree reads the
    // database again, and the undo and redo buttons follow what the journal now holds.
    connect(this, &FormFrame::operazioneConclusa, &p.annullamento, &distinta::Annullamento::aggiornaComandi);
    connect(&p.albero, &distinta::Albero::distintaCaricata, &p.annullamento, &distinta::Annullamento::aggiornaComandi);
    connect(&p.albero, &distinta::Albero::distintaCaricata, &p.storico, &distinta::StoricoDistinta::aggiornaComandi);
    connect(&p.annullamento, &distinta::Annullamento::distintaCambiata, this, &FRMGD_DISTINTA::ricarica);
    connect(&p.menu, &distinta::MenuNodo::doveUsatoRichiesto, &p.doveUsato,
            &distinta::ComandoDoveUsato::mnuDoveUsato_Click);
    connect(&p.anagrafiche, &distinta::PaginaAnagrafiche::doveUsatoRichiesto, &p.doveUsato,
            &distinta::ComandoDoveUsato::mnuDoveUsato_Click);
    connect(&p.doveUsato, &distinta::ComandoDoveUsato::nodoRichiesto, this,
            [this](const QString &chiave, qint64 idNodo, qint64 codice) {
                vaiAlLegame(chiave, idNodo, codice, QStringLiteral("GRD_DOVEUSATO_DblClick"));
            });
    impostaTastiera();
}

void FRMGD_DISTINTA::impostaTastiera()
{
    distinta::Parti &p = *m_parti;
    // The caption of the levels button is read back to know its mode, so its key is a shortcut.
    connect(scorciatoia(this, QKeySequence(Qt::ALT | Qt::Key_L), QStringLiteral("scorciatoiaEspandiComprimi")),
            &QShortcut::activated, p.albero.livelli().pulsante(), &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::Key_Insert), QStringLiteral("scorciatoiaAggiungiAlNodo")),
            &QShortcut::activated, p.anagrafiche.aggiungiAlNodo(), &QPushButton::click);
    connect(
        scorciatoia(this, QKeySequence(Qt::SHIFT | Qt::Key_Insert), QStringLiteral("scorciatoiaAggiungiCapostipite")),
        &QShortcut::activated, p.anagrafiche.aggiungiCapostipite(), &QPushButton::click);
    connect(scorciatoia(p.albero.widget(), QKeySequence(Qt::Key_Delete), QStringLiteral("scorciatoiaRimuovi")),
            &QShortcut::activated, p.anagrafiche.rimuovi(), &QPushButton::click);
    // The editor's own undo and redo; a text field being edited keeps its own (it takes the keys
    // first).
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::Key_Z), QStringLiteral("scorciatoiaAnnulla")),
            &QShortcut::activated, p.annullamento.annulla(), &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::Key_Y), QStringLiteral("scorciatoiaRipeti")),
            &QShortcut::activated, p.annullamento.ripeti(), &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::Key_P), QStringLiteral("scorciatoiaStampa")),
            &QShortcut::activated, p.stampa.pulsante(), &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::Key_F), QStringLiteral("scorciatoiaCerca")),
            &QShortcut::activated, this, [this] {
                QLineEdit *casella = m_parti->ricercaAlbero.casella();
                casella->setFocus(Qt::ShortcutFocusReason);
                casella->selectAll();
            });
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), QStringLiteral("scorciatoiaFiltro")),
            &QShortcut::activated, this, [this] {
                TAB_VISUALIZZAGESTIONE->setCurrentIndex(1);
                QLineEdit *filtro = m_parti->anagrafiche.filtro();
                filtro->setFocus(Qt::ShortcutFocusReason);
                filtro->selectAll();
            });
    connect(scorciatoia(this, QKeySequence(Qt::Key_F3), QStringLiteral("scorciatoiaSuccessivo")), &QShortcut::activated,
            &p.ricercaAlbero, &distinta::RicercaAlbero::cercaSuccessivo);
    connect(scorciatoia(this, QKeySequence(Qt::Key_F5), QStringLiteral("scorciatoiaRicarica")), &QShortcut::activated,
            this, &FRMGD_DISTINTA::ricarica);
    // Every letter of "Importa" is another command's.
    connect(scorciatoia(this, QKeySequence(Qt::ALT | Qt::Key_K), QStringLiteral("scorciatoiaImporta")),
            &QShortcut::activated, p.importazione.pulsante(), &QPushButton::animateClick);
    connect(&p.importazione, &distinta::ComandoImportazione::distintaModificata, this, &FRMGD_DISTINTA::ricarica);
    impostaOrdineTab();
}

// Types, tree, search, subject list, details; the tree's other tools after them.
void FRMGD_DISTINTA::impostaOrdineTab()
{
    distinta::Parti &p = *m_parti;
    const QList<QWidget *> order = QList<QWidget *> {p.selettore.widget(), p.albero.widget()->view(),
                                                     p.ricercaAlbero.casella(), p.ricercaAlbero.pulsante(),
                                                     TAB_VISUALIZZAGESTIONE->tabBar()}
        + p.anagrafiche.ordineTab() + p.ricerca.ordineTab() + p.dettagli.ordineTab()
        + QList<QWidget *> {p.albero.livelli().combo(), p.albero.livelli().pulsante(), p.stato.controllo(),
                            p.stampa.pulsante(),        p.parametri.pulsante(),        p.gestioni.pulsante()};
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order.at(i - 1), order.at(i));
}
