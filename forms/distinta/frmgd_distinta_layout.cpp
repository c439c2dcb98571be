// The editor's controls and their placement: the management panel on the left (types,
// subject list, search), the classification tree with its header line and buttons on the right,
// the subject's detail tabs below the tree; two splitters hold the proportions.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/recordsetgrid.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

template<typename Control>
Control *named(Control *control, const QString &name)
{
    control->setObjectName(name);
    return control;
}

QPushButton *button(const QString &name, const QString &caption)
{
    return named(new QPushButton(caption), name);
}

QToolButton *menuButton(const QString &name, const QString &caption)
{
    auto *tool = named(new QToolButton, name);
    tool->setText(caption);
    tool->setPopupMode(QToolButton::InstantPopup);
    tool->setToolButtonStyle(Qt::ToolButtonTextOnly);
    tool->setMenu(new QMenu(tool));
    return tool;
}

QWidget *page(QLayout *layout)
{
    auto *widget = new QWidget;
    widget->setLayout(layout);
    return widget;
}

} // namespace

void FRMGD_DISTINTA::creaControlli()
{
    SPLITTERVerticale = named(new QSplitter(Qt::Horizontal), QStringLiteral("SPLITTERVerticale"));
    SPLITTERorizzontale = named(new QSplitter(Qt::Vertical), QStringLiteral("SPLITTERorizzontale"));

    SPLITTERVerticale->addWidget(creaPannelloGestione());
    SPLITTERorizzontale->addWidget(creaPannelloDistinta());
    SPLITTERorizzontale->addWidget(creaPannelloDettaglio());
    SPLITTERVerticale->addWidget(SPLITTERorizzontale);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(SPLITTERVerticale);
}

// Left: the classification types, the subject list and the search across all lists.
QWidget *FRMGD_DISTINTA::creaPannelloGestione()
{
    TAB_VISUALIZZAGESTIONE = named(new QTabWidget, QStringLiteral("TAB_VISUALIZZAGESTIONE"));

    TVW_SELDISTINTE = named(new QTreeWidget, QStringLiteral("TVW_SELDISTINTE"));
    TVW_SELDISTINTE->setHeaderHidden(true);
    TVW_SELDISTINTE->setColumnCount(1);
    auto *types = new QVBoxLayout;
    types->setContentsMargins(2, 2, 2, 2);
    types->addWidget(TVW_SELDISTINTE);
    TAB_VISUALIZZAGESTIONE->addTab(page(types), QStringLiteral("Distinte"));

    CMD_ADDANAGR = button(QStringLiteral("CMD_ADDANAGR"), QStringLiteral("Aggiungi al nodo"));
    CMD_ADDANAGRCAPO = button(QStringLiteral("CMD_ADDANAGRCAPO"), QStringLiteral("Aggiungi capostipite"));
    CMD_REMANAGR = button(QStringLiteral("CMD_REMANAGR"), QStringLiteral("Rimuovi"));
    GRD_ANAGRAFICHEDISTINTA = named(new fw::RecordsetGrid, QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
    auto *subjectButtons = new QHBoxLayout;
    subjectButtons->addWidget(CMD_ADDANAGR);
    subjectButtons->addWidget(CMD_ADDANAGRCAPO);
    subjectButtons->addWidget(CMD_REMANAGR);
    subjectButtons->addStretch();
    auto *subjects = new QVBoxLayout;
    subjects->setContentsMargins(2, 2, 2, 2);
    subjects->addLayout(subjectButtons);
    subjects->addLayout(creaFiltroAnagrafiche());
    subjects->addWidget(GRD_ANAGRAFICHEDISTINTA);
    TAB_VISUALIZZAGESTIONE->addTab(page(subjects), QStringLiteral("Anagrafiche"));

    TXT_CODICE = named(new QLineEdit, QStringLiteral("TXT_CODICE"));
    TXT_RAGIONESOC = named(new QLineEdit, QStringLiteral("TXT_RAGIONESOC"));
    CMD_RICERCA = button(QStringLiteral("CMD_RICERCA"), QStringLiteral("Cerca"));
    GRD_CERCADISTINTA = named(new fw::RecordsetGrid, QStringLiteral("GRD_CERCADISTINTA"));
    auto *criteria = new QFormLayout;
    criteria->addRow(QStringLiteral("Codice"), TXT_CODICE);
    criteria->addRow(QStringLiteral("Ragione sociale"), TXT_RAGIONESOC);
    auto *searchButton = new QHBoxLayout;
    searchButton->addStretch();
    searchButton->addWidget(CMD_RICERCA);
    auto *search = new QVBoxLayout;
    search->setContentsMargins(2, 2, 2, 2);
    search->addLayout(criteria);
    search->addLayout(searchButton);
    search->addWidget(GRD_CERCADISTINTA);
    TAB_VISUALIZZAGESTIONE->addTab(page(search), QStringLiteral("Ricerca"));

    return TAB_VISUALIZZAGESTIONE;
}

// Right, above: the header line, the tree's buttons and the tree.
QWidget *FRMGD_DISTINTA::creaPannelloDistinta()
{
    lblDescDistinta = named(new QLabel(QStringLiteral("Struttura distinta")), QStringLiteral("lblDescDistinta"));
    QFont titleFont = lblDescDistinta->font();
    titleFont.setBold(true);
    lblDescDistinta->setFont(titleFont);
    lblDescDistinta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblDescDistinta->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    CMB_LIVELLO = named(new QComboBox, QStringLiteral("CMB_LIVELLO"));
    CMB_LIVELLO->setMinimumContentsLength(10);
    CMD_ESPANDICOLLASSA = button(QStringLiteral("CMD_ESPANDICOLLASSA"), QString());
    CMD_ESPANDICOLLASSA->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("COMPRIMI LIVELLO 99")) + 16);
    TXTCERCA = named(new QLineEdit, QStringLiteral("TXTCERCA"));
    TXTCERCA->setMinimumWidth(160);
    CMD_CERCA = menuButton(QStringLiteral("CMD_CERCA"), QStringLiteral("Cerca"));
    TXT_GD02_STATO = named(new fw::WorkflowStateControl, QStringLiteral("TXT_GD02_STATO"));
    TXT_GD02_STATO->setMinimumWidth(140);
    TXT_GD02_STATO->setMaximumWidth(180);
    CMD_STAMPA = button(QStringLiteral("CMD_STAMPA"), QStringLiteral("Stampa"));
    CMD_PARAMETRI = button(QStringLiteral("CMD_PARAMETRI"), QStringLiteral("Parametri"));
    CMD_GESTIONICOLLEGATE = menuButton(QStringLiteral("CMD_GESTIONICOLLEGATE"), QStringLiteral("Gestioni collegate"));

    // The header line shares its row with the branch move and the buttons that open other work;
    // the tree's own view tools (levels, date, search, state) sit on the row below, so that
    // neither row needs more than the panel's width at 1280 pixels.
    auto *header = new QHBoxLayout;
    header->addWidget(lblDescDistinta, 1);
    header->addLayout(creaComandiSpostamento());
    header->addSpacing(12);
    header->addWidget(CMD_STAMPA);
    header->addWidget(creaCMD_ESPORTA());
    header->addWidget(CMD_PARAMETRI);
    header->addWidget(CMD_GESTIONICOLLEGATE);
    auto *tools = new QHBoxLayout;
    tools->addWidget(CMB_LIVELLO);
    tools->addWidget(CMD_ESPANDICOLLASSA);
    tools->addSpacing(12);
    tools->addLayout(creaDataValidita());
    tools->addSpacing(12);
    tools->addWidget(TXTCERCA);
    tools->addWidget(CMD_CERCA);
    tools->addStretch();
    tools->addWidget(new QLabel(QStringLiteral("Stato")));
    tools->addWidget(TXT_GD02_STATO);

    TVW_DISTINTA = named(new fw::TreeList, QStringLiteral("TVW_DISTINTA"));
    creaColonneDistinta();
    creaTXT_ALFA();
    creaMenuCollegamento();

    auto *layout = new QVBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addLayout(tools);
    layout->addWidget(TVW_DISTINTA, 1);
    return page(layout);
}

// Right, below: master data, promotions and off-invoice conditions of the focused subject.
QWidget *FRMGD_DISTINTA::creaPannelloDettaglio()
{
    TAB_DETTAGLIOSOGGETTO = named(new QTabWidget, QStringLiteral("TAB_DETTAGLIOSOGGETTO"));

    GRD_DATIANAGRAFICI = named(new QTableWidget, QStringLiteral("GRD_DATIANAGRAFICI"));
    GRD_DATIANAGRAFICI->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_DATIANAGRAFICI->verticalHeader()->setVisible(false);
    auto *masterData = new QVBoxLayout;
    masterData->setContentsMargins(2, 2, 2, 2);
    masterData->addWidget(GRD_DATIANAGRAFICI);
    TAB_DETTAGLIOSOGGETTO->addTab(page(masterData), QStringLiteral("Dati anagrafici"));

    CBO_EREPROMO = named(new QComboBox, QStringLiteral("CBO_EREPROMO"));
    TXT_PRIORITA_STRUTTURA = named(new QLineEdit, QStringLiteral("TXT_PRIORITA_STRUTTURA"));
    TXT_PRIORITA_LOCALIZZATA = named(new QLineEdit, QStringLiteral("TXT_PRIORITA_LOCALIZZATA"));
    TXT_IDPRIORITA_STRUTTURA = named(new QLineEdit, QStringLiteral("TXT_IDPRIORITA_STRUTTURA"));
    TXT_IDPRIORITA_LOCALIZZATA = named(new QLineEdit, QStringLiteral("TXT_IDPRIORITA_LOCALIZZATA"));
    TXT_GD02_ID = named(new QLineEdit, QStringLiteral("TXT_GD02_ID"));
    TXT_GD02_ID->hide();
    GRD_PROMO = named(new fw::RecordsetGrid, QStringLiteral("GRD_PROMO"));
    auto *rule = new QHBoxLayout;
    rule->addWidget(new QLabel(QStringLiteral("Promozioni")));
    rule->addWidget(CBO_EREPROMO);
    rule->addSpacing(12);
    rule->addWidget(new QLabel(QStringLiteral("Priorità struttura")));
    rule->addWidget(TXT_PRIORITA_STRUTTURA);
    rule->addWidget(TXT_IDPRIORITA_STRUTTURA);
    rule->addWidget(new QLabel(QStringLiteral("Priorità localizzata")));
    rule->addWidget(TXT_PRIORITA_LOCALIZZATA);
    rule->addWidget(TXT_IDPRIORITA_LOCALIZZATA);
    rule->addWidget(TXT_GD02_ID);
    rule->addStretch();
    auto *promotions = new QVBoxLayout;
    promotions->setContentsMargins(2, 2, 2, 2);
    promotions->addLayout(rule);
    promotions->addWidget(GRD_PROMO);
    TAB_DETTAGLIOSOGGETTO->addTab(page(promotions), QStringLiteral("Promozioni in fattura"));

    GRD_PREMI = named(new fw::RecordsetGroupGrid, QStringLiteral("GRD_PREMI"));
    auto *conditions = new QVBoxLayout;
    conditions->setContentsMargins(2, 2, 2, 2);
    conditions->addWidget(GRD_PREMI);
    TAB_DETTAGLIOSOGGETTO->addTab(page(conditions), QStringLiteral("Condizioni fuori fattura"));

    return TAB_DETTAGLIOSOGGETTO;
}

// The designed column set of the tree: every other Part addresses the columns by these names.
void FRMGD_DISTINTA::creaColonneDistinta()
{
    using fw::TreeListColumnKind;
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    const QList<fw::TreeListComboItem> billingRules = {
        {0, QStringLiteral("Codice anagrafico"), {}},
        {1, QStringLiteral("Cli per fatt."), {}},
        {2, QStringLiteral("Nodo padre"), {}},
        {3, QStringLiteral("Cli per fatt. del nodo padre"), {}},
        {4, QStringLiteral("Manuale"), {}},
    };

    TVW_DISTINTA->setBandCaption(QStringLiteral("Dettaglio distinta"));
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_CLIFOR_CG44"), .caption = QStringLiteral("Codice"),
                             .fieldName = QStringLiteral("GD02_CLIFOR_CG44"), .alignment = right,
                             .readOnly = true, .inPlaceEditor = false, .designWidth = 1200});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("RagioneSociale"), .caption = QStringLiteral("Ragione Sociale"),
                             .fieldName = QStringLiteral("RagioneSociale"), .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_DATAINIZIOVAL"), .caption = QStringLiteral("Data inizio"),
                             .fieldName = QStringLiteral("GD02_DATAINIZIOVAL"), .kind = TreeListColumnKind::Date,
                             .alignment = right, .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_DATAFINEVAL"), .caption = QStringLiteral("Data fine"),
                             .fieldName = QStringLiteral("GD02_DATAFINEVAL"), .kind = TreeListColumnKind::Date,
                             .alignment = right, .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_TIPOANAGFATT"), .caption = QStringLiteral("Tipo fatturazione"),
                             .fieldName = QStringLiteral("GD02_TIPOANAGFATT"), .kind = TreeListColumnKind::ImageCombo,
                             .designWidth = 300, .comboItems = billingRules});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_CLIFORFATT_CG44"), .caption = QStringLiteral("Codice anagrafica"),
                             .fieldName = QStringLiteral("GD02_CLIFORFATT_CG44"), .inPlaceEditor = false,
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("RagioneSocialeFatt"), .caption = QStringLiteral("Rag. Sociale fatturazione"),
                             .kind = TreeListColumnKind::Unbound, .inPlaceEditor = false, .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_DESCR"), .caption = QStringLiteral("Descrizione"),
                             .fieldName = QStringLiteral("GD02_DESCR"), .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_IDSTRUTTURA_LP09"), .caption = QStringLiteral("Priorità struttura"),
                             .fieldName = QStringLiteral("GD02_IDSTRUTTURA_LP09"), .kind = TreeListColumnKind::ButtonEdit,
                             .readOnly = true, .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_IDLOCALIZZATA_LP09"), .caption = QStringLiteral("Priorità localizzata"),
                             .fieldName = QStringLiteral("GD02_IDLOCALIZZATA_LP09"), .kind = TreeListColumnKind::ButtonEdit,
                             .readOnly = true, .designWidth = 300});
    TVW_DISTINTA->setFillWidth(true);

    const QFont tahoma(QStringLiteral("Tahoma"));
    TVW_DISTINTA->setFont(tahoma);
    TVW_DISTINTA->setHeaderFont(tahoma);
    TVW_DISTINTA->setColors({.header = ColoreIntestazione, .headerText = ColoreTestoIntestazione,
                             .footer = ColorePiede});

    connect(TVW_DISTINTA, &fw::TreeList::customDrawCell, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnCustomDrawCell);
}

// The splitters remember where the user left them, as shares of the form's size.
void FRMGD_DISTINTA::SplitterSetup()
{
    SPLITTERVerticale->setChildrenCollapsible(false);
    SPLITTERorizzontale->setChildrenCollapsible(false);
    SPLITTERVerticale->setStretchFactor(1, 1);
    SPLITTERorizzontale->setStretchFactor(0, 1);
    connect(SPLITTERVerticale, &QSplitter::splitterMoved, this, &FRMGD_DISTINTA::registraPosizioneSplitter);
    connect(SPLITTERorizzontale, &QSplitter::splitterMoved, this, &FRMGD_DISTINTA::registraPosizioneSplitter);
    SplitterReposition();
}

void FRMGD_DISTINTA::registraPosizioneSplitter()
{
    const QList<int> across = SPLITTERVerticale->sizes();
    if (across.size() == 2 && across.at(0) + across.at(1) > 0)
        m_quotaGestione = double(across.at(0)) / (across.at(0) + across.at(1));
    const QList<int> down = SPLITTERorizzontale->sizes();
    if (down.size() == 2 && down.at(0) + down.at(1) > 0)
        m_quotaDistinta = double(down.at(0)) / (down.at(0) + down.at(1));
}

// Places the panels at the splitters' shares of the current size.
void FRMGD_DISTINTA::SplitterReposition()
{
    const auto place = [](QSplitter *splitter, double share) {
        const int total = (splitter->orientation() == Qt::Horizontal ? splitter->width() : splitter->height())
                          - splitter->handleWidth();
        if (total <= 0)
            return;
        const int first = int(total * share);
        splitter->setSizes({first, total - first});
    };
    place(SPLITTERVerticale, m_quotaGestione);
    place(SPLITTERorizzontale, m_quotaDistinta);
}

void FRMGD_DISTINTA::resizeEvent(QResizeEvent *event)
{
    FormFrame::resizeEvent(event);
    SplitterReposition();
}
