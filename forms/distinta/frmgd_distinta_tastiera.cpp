// The editor without the mouse: an Alt+letter on every button, shortcuts for the main commands
// (each named in its control's tooltip), a Tab order that follows the work (types, tree,
// search, subject list, details) and F3 for the next node that matches the search.
#include "forms/distinta/frmgd_distinta.h"

#include "data/ricercastatements.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistview.h"
#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>

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

void FRMGD_DISTINTA::impostaTastiera()
{
    CMD_ADDANAGR->setText(QStringLiteral("&Aggiungi al nodo"));
    CMD_ADDANAGR->setToolTip(QStringLiteral("Aggiunge i soggetti spuntati sotto il nodo selezionato (Alt+A, Ins)"));
    CMD_ADDANAGRCAPO->setText(QStringLiteral("Aggiungi &capostipite"));
    CMD_ADDANAGRCAPO->setToolTip(QStringLiteral("Aggiunge i soggetti spuntati come capostipiti (Alt+C, Maiusc+Ins)"));
    CMD_REMANAGR->setText(QStringLiteral("&Rimuovi"));
    CMD_REMANAGR->setToolTip(QStringLiteral("Toglie dalla distinta il nodo selezionato (Alt+R, Canc sull'albero)"));
    CMD_RICERCA->setText(QStringLiteral("Cer&ca"));
    CMD_RICERCA->setToolTip(QStringLiteral("Cerca il soggetto in tutte le distinte della ditta (Alt+C, Invio)"));
    CMD_CERCA->setText(QStringLiteral("C&erca"));
    CMD_CERCA->setToolTip(QStringLiteral("Cerca nella distinta per ragione sociale o per codice (Alt+E)"));
    CMD_STAMPA->setText(QStringLiteral("&Stampa"));
    CMD_STAMPA->setToolTip(QStringLiteral("Stampa la distinta fino al livello scelto (Alt+S, Ctrl+P)"));
    CMD_PARAMETRI->setText(QStringLiteral("&Parametri"));
    CMD_PARAMETRI->setToolTip(QStringLiteral("Parametri del modulo per la ditta (Alt+P)"));
    CMD_GESTIONICOLLEGATE->setText(QStringLiteral("&Gestioni collegate"));
    CMD_GESTIONICOLLEGATE->setToolTip(QStringLiteral("Listini, condizioni, priorità e tipi di distinta (Alt+G)"));
    CMD_ESPANDICOLLASSA->setToolTip(QStringLiteral("Espande o comprime l'albero di un livello (Alt+L)"));
    TXTCERCA->setToolTip(QStringLiteral(
        "Ragione sociale da cercare nella distinta: Invio trova il primo nodo, F3 il successivo (Ctrl+F)"));
    TXT_FILTROANAGRAFICHE->setToolTip(QStringLiteral(
        "Mostra solo i soggetti il cui codice, ragione sociale o città contiene il testo; le spunte restano (Ctrl+Maiusc+F)"));
    TVW_SELDISTINTE->setToolTip(QStringLiteral("Distinte della ditta: Invio o un clic apre la distinta, F5 la ricarica"));

    // The caption of this button is read back to know its mode, so its key is a shortcut.
    connect(scorciatoia(this, QKeySequence(Qt::ALT | Qt::Key_L), QStringLiteral("scorciatoiaEspandiComprimi")),
            &QShortcut::activated, CMD_ESPANDICOLLASSA, &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::Key_Insert), QStringLiteral("scorciatoiaAggiungiAlNodo")),
            &QShortcut::activated, CMD_ADDANAGR, &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::SHIFT | Qt::Key_Insert), QStringLiteral("scorciatoiaAggiungiCapostipite")),
            &QShortcut::activated, CMD_ADDANAGRCAPO, &QPushButton::click);
    connect(scorciatoia(TVW_DISTINTA, QKeySequence(Qt::Key_Delete), QStringLiteral("scorciatoiaRimuovi")),
            &QShortcut::activated, CMD_REMANAGR, &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::Key_P), QStringLiteral("scorciatoiaStampa")),
            &QShortcut::activated, CMD_STAMPA, &QPushButton::click);
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::Key_F), QStringLiteral("scorciatoiaCerca")),
            &QShortcut::activated, this, [this] {
                TXTCERCA->setFocus(Qt::ShortcutFocusReason);
                TXTCERCA->selectAll();
            });
    connect(scorciatoia(this, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F), QStringLiteral("scorciatoiaFiltro")),
            &QShortcut::activated, this, [this] {
                TAB_VISUALIZZAGESTIONE->setCurrentIndex(1);
                TXT_FILTROANAGRAFICHE->setFocus(Qt::ShortcutFocusReason);
                TXT_FILTROANAGRAFICHE->selectAll();
            });
    connect(scorciatoia(this, QKeySequence(Qt::Key_F3), QStringLiteral("scorciatoiaSuccessivo")),
            &QShortcut::activated, this, &FRMGD_DISTINTA::cercaSuccessivo);
    connect(scorciatoia(this, QKeySequence(Qt::Key_F5), QStringLiteral("scorciatoiaRicarica")),
            &QShortcut::activated, this, &FRMGD_DISTINTA::ricarica);
    impostaOrdineTab();
}

// Types, tree, search, subject list, details; the tree's other tools after them.
void FRMGD_DISTINTA::impostaOrdineTab()
{
    const QList<QWidget *> order = {
        TVW_SELDISTINTE, TVW_DISTINTA->view(), TXTCERCA, CMD_CERCA, TAB_VISUALIZZAGESTIONE->tabBar(),
        TXT_FILTROANAGRAFICHE, GRD_ANAGRAFICHEDISTINTA, CMD_ADDANAGR, CMD_ADDANAGRCAPO, CMD_REMANAGR,
        TXT_CODICE, TXT_RAGIONESOC, CMD_RICERCA, GRD_CERCADISTINTA,
        TAB_DETTAGLIOSOGGETTO->tabBar(), GRD_DATIANAGRAFICI, CBO_EREPROMO, TXT_PRIORITA_STRUTTURA,
        TXT_PRIORITA_LOCALIZZATA, GRD_PROMO, GRD_PREMI,
        CMB_LIVELLO, CMD_ESPANDICOLLASSA, TXT_GD02_STATO, CMD_STAMPA, CMD_PARAMETRI, CMD_GESTIONICOLLEGATE,
    };
    for (qsizetype i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order.at(i - 1), order.at(i));
}

// The next node after the focused one that matches the search text, by the field of the last
// search; past the last match the box says that nothing more was found.
void FRMGD_DISTINTA::cercaSuccessivo()
{
    const fw::TreeListNode focused = TVW_DISTINTA->focusedNode();
    if (!focused.isValid() || !m_nodi || m_nodi->isEmpty())
        return;
    const std::optional<QString> criterion = m_campoRicerca == QLatin1String("trGD02_CLIFOR_CG44")
                                                 ? ricercastatements::inTreeCodeCriterion(TXTCERCA->text())
                                                 : std::optional<QString>(ricercastatements::inTreeNameCriterion(TXTCERCA->text()));
    if (!criterion)
        return;
    step(QStringLiteral("TXTCERCA_KeyDown"), [&] {
        const int next = focused.row() + 1;
        bool found = false;
        if (next < m_nodi->recordCount()) {
            m_nodi->setCurrentRow(next);
            found = m_nodi->find(*criterion);
        }
        if (!found)
            m_nodi->setCurrentRow(focused.row()); // the tree keeps its node
        segnalaRicercaSenzaEsito(!found);
        TVW_DISTINTA->setFocus();
    });
}

// The tree, and the subject list when it shows, read again from the database.
void FRMGD_DISTINTA::ricarica()
{
    const QString chiave = chiaveSelezionata();
    if (chiave.isEmpty() || chiave.startsWith(QLatin1Char('P')))
        return;
    if (TAB_VISUALIZZAGESTIONE->currentIndex() == 1)
        CaricaAnagraficheDistinta();
    CaricaDistinta();
}
