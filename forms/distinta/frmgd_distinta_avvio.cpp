// Start-up of the editor: what the form prepares at load, what its first activation builds, and
// the colours and captions that come from the host.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/globalservices.h"
#include "framework/gridcolors.h"
#include "framework/recordsetgrid.h"
#include "framework/themeservice.h"
#include "framework/translationservice.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStyle>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>

namespace {

const QList<std::pair<QString, QString>> gestioniCollegate = {
    {QStringLiteral("Gestione listini e condizioni"), QStringLiteral("Listini")},
    {QStringLiteral("Configurazione condizioni"), QStringLiteral("Provider")},
    {QStringLiteral("Configurazione priorità"), QStringLiteral("Priorita")},
    {QStringLiteral("Anagrafica distinta"), QStringLiteral("Distinta")},
};

void addMenuItem(QToolButton *button, const QString &caption, const QString &key)
{
    QAction *action = button->menu()->addAction(caption);
    action->setData(key);
}

} // namespace

// The controls' events that the editor handles; the selector reacts to the user's clicks only,
// never to a selection made by the code.
void FRMGD_DISTINTA::collegaEventi()
{
    connect(TVW_SELDISTINTE, &QTreeWidget::itemClicked, this, &FRMGD_DISTINTA::TVW_SELDISTINTE_Click);
    // Enter chooses a type too, where a click does not already activate the item.
    if (!style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, TVW_SELDISTINTE))
        connect(TVW_SELDISTINTE, &QTreeWidget::itemActivated, this, &FRMGD_DISTINTA::TVW_SELDISTINTE_Click);
    connect(CMD_ESPANDICOLLASSA, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_ESPANDICOLLASSA_Click);
    connect(CMD_ADDANAGR, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_ADDANAGR_Click);
    connect(CMD_ADDANAGRCAPO, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_ADDANAGRCAPO_Click);
    connect(CMD_REMANAGR, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_REMANAGR_Click);
    connect(TVW_DISTINTA, &fw::TreeList::focusedNodeChanged, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnChangeNode);
    connect(TVW_DISTINTA, &fw::TreeList::editingStarted, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnEditing);
    connect(TVW_DISTINTA, &fw::TreeList::editCloseUp, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnEditCloseUp);
    connect(TVW_DISTINTA, &fw::TreeList::validateEdit, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnValidateEdit);
    connect(TVW_DISTINTA, &fw::TreeList::mouseDown, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnMouseDown);
    // A refused write is handled once the tree has finished the edit that caused it.
    connect(TVW_DISTINTA, &fw::TreeList::writeFailed, this, [this](const db::DatabaseError &error) {
        QMetaObject::invokeMethod(this, [this, error] { rileggiNodoInConflitto(error); }, Qt::QueuedConnection);
    });
    connect(TXT_GD02_STATO, &fw::WorkflowStateControl::AfterItem, this, &FRMGD_DISTINTA::TXT_GD02_STATO_AfterItem);
    connect(TAB_VISUALIZZAGESTIONE, &QTabWidget::currentChanged, this, &FRMGD_DISTINTA::TAB_VISUALIZZAGESTIONE_Click);
    connect(GRD_ANAGRAFICHEDISTINTA, &fw::RecordsetGrid::headerClicked, this,
            &FRMGD_DISTINTA::GRD_ANAGRAFICHEDISTINTA_HeaderClick);
    connect(GRD_CERCADISTINTA, &fw::RecordsetGrid::buttonClicked, this, &FRMGD_DISTINTA::GRD_CERCADISTINTA_ButtonClick);
    connect(TXTCERCA, &QLineEdit::returnPressed, this, &FRMGD_DISTINTA::TXTCERCA_KeyDown);
    connect(CMD_CERCA->menu(), &QMenu::triggered, this,
            [this](QAction *action) { CMD_CERCA_ButtonMenuClick(action->data().toString()); });
    connect(CMD_RICERCA, &QPushButton::clicked, this,
            [this] { cercaDaCaselle(QStringLiteral("CMD_RICERCA_ButtonClick")); });
    connect(TXT_CODICE, &QLineEdit::returnPressed, this,
            [this] { cercaDaCaselle(QStringLiteral("TXT_RAGIONESOC_KeyDown")); });
    connect(TXT_RAGIONESOC, &QLineEdit::returnPressed, this,
            [this] { cercaDaCaselle(QStringLiteral("TXT_RAGIONESOC_KeyDown")); });
    collegaGestioni();
    collegaStampa();
    collegaUsabilita();
    collegaDettagli();
    collegaDataValidita();
    collegaEsportazione();
    collegaSpostamento();
}

void FRMGD_DISTINTA::loadForm()
{
    CBO_EREPROMO->clear();
    CBO_EREPROMO->addItem(QStringLiteral("Eredita da capostipite"), 0);
    CBO_EREPROMO->addItem(QStringLiteral("Eredita dal padre"), 1);
    CBO_EREPROMO->addItem(QStringLiteral("Specifica per Cli/For Distinta"), 2);
    CBO_EREPROMO->setCurrentIndex(0);
    SplitterSetup();
    TXT_IDPRIORITA_STRUTTURA->hide();
    TXT_IDPRIORITA_LOCALIZZATA->hide();
    TAB_VISUALIZZAGESTIONE->setCurrentIndex(0);
    TAB_DETTAGLIOSOGGETTO->setCurrentIndex(0);
}

// The first activation, after the frame has linked the host and opened the form's connection.
bool FRMGD_DISTINTA::activateForm()
{
    TraduzioneIntestazione_TVW_DISTINTA();
    ImpostaFME_DISTINTE();
    InizializzaScriptLayout();
    InizializzaDistinte();
    InizializzaQgrid();
    step(QStringLiteral("Form_Activate"), [this] {
        CMD_CERCA->menu()->clear();
        addMenuItem(CMD_CERCA, QStringLiteral("Rag. Sociale"), QStringLiteral("RagSoc"));
        addMenuItem(CMD_CERCA, QStringLiteral("Codice"), QStringLiteral("Codice"));
        CMD_GESTIONICOLLEGATE->menu()->clear();
        for (const auto &[caption, key] : gestioniCollegate)
            addMenuItem(CMD_GESTIONICOLLEGATE, caption, key);
    });
    step(QStringLiteral("Form_Activate"), [this] {
        fw::GlobalServices *services = globals();
        TXT_GD02_STATO->setWorkflow(services ? services->workflowStateService() : nullptr, QStringLiteral("DISTINTA"));
        // The tree was loaded before the control was ready: it shows the focused node's state now.
        const fw::TreeListNode focused = TVW_DISTINTA->focusedNode();
        if (focused.isValid() && m_nodi)
            TXT_GD02_STATO->setGuid(guidNodo(m_nodi->valueAt(focused.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID")))
                                                 .toLongLong()));
    });
    CaricaParametri();
    SplitterReposition();
    ripristinaAspetto();
    ColoriSTD();
    aggiornaComandi();
    return true;
}

// The host's theme colours on the tree and on the master-data sheet; without a theme the
// designed colours stay.
void FRMGD_DISTINTA::ColoriSTD()
{
    step(QStringLiteral("ColoriSTD"), [this] {
        fw::GlobalServices *services = globals();
        const std::shared_ptr<fw::ThemeService> theme = services ? services->createThemeService() : nullptr;
        if (!theme)
            return;
        fw::GridColors colors;
        colors.header = theme->color(QStringLiteral("GridHeaderColor"));
        colors.text = theme->color(QStringLiteral("GridFontColor"));
        colors.gridLines = theme->color(QStringLiteral("GridBorderColor"));
        colors.footer = theme->color(QStringLiteral("GridFooterColor"));
        colors.headerText = theme->color(QStringLiteral("GridHeaderFontColor"));
        colors.hideSelection = theme->color(QStringLiteral("GridHideSelectionColor"));
        colors.highlight = theme->color(QStringLiteral("GridHighLightColor"));
        colors.highlightText = theme->color(QStringLiteral("GridHighLightFontColor"));
        TVW_DISTINTA->setColors(colors);
        fw::applyGridColors(GRD_DATIANAGRAFICI, colors);
        const QFont tahoma(QStringLiteral("Tahoma"));
        GRD_DATIANAGRAFICI->setFont(tahoma);
        GRD_DATIANAGRAFICI->horizontalHeader()->setFont(tahoma);
    });
}

void FRMGD_DISTINTA::TraduzioneIntestazione_TVW_DISTINTA()
{
    step(QStringLiteral("TraduzioneIntestazione_TVW_DISTINTA"), [this] {
        TVW_DISTINTA->setBandCaption(traduci(TVW_DISTINTA->bandCaption()));
        for (int i = 0; i < TVW_DISTINTA->columnCount(); ++i) {
            const fw::TreeListColumn &column = TVW_DISTINTA->column(i);
            TVW_DISTINTA->setColumnCaption(column.name, traduci(column.caption));
        }
    });
}

QString FRMGD_DISTINTA::testo(int id, const QString &defaultText) const
{
    fw::GlobalServices *services = globals();
    fw::TranslationService *translation = services ? services->translationService() : nullptr;
    return translation ? translation->text(id, defaultText) : defaultText;
}

QString FRMGD_DISTINTA::traduci(const QString &text) const
{
    fw::GlobalServices *services = globals();
    fw::TranslationService *translation = services ? services->translationService() : nullptr;
    return translation ? translation->translate(text) : text;
}
