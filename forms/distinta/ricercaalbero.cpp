#include "forms/distinta/ricercaalbero.h"

#include "data/ricercastatements.h"
#include "forms/distinta/albero.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"

#include <QActionGroup>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

namespace distinta {

RicercaAlbero::RicercaAlbero(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , TXTCERCA(new QLineEdit)
    , CMD_CERCA(new QToolButton)
{
    TXTCERCA->setObjectName(QStringLiteral("TXTCERCA"));
    TXTCERCA->setMinimumWidth(160);
    TXTCERCA->setToolTip(QStringLiteral("Testo da cercare nella distinta: Invio trova il primo nodo per ragione "
                                        "sociale, il menu «Cerca» per ragione sociale o per codice, F3 il "
                                        "successivo (Ctrl+F)"));
    CMD_CERCA->setObjectName(QStringLiteral("CMD_CERCA"));
    CMD_CERCA->setText(QStringLiteral("C&erca"));
    CMD_CERCA->setToolTip(QStringLiteral("Cerca nella distinta per ragione sociale o per codice (Alt+E)"));
    CMD_CERCA->setPopupMode(QToolButton::InstantPopup);
    CMD_CERCA->setToolButtonStyle(Qt::ToolButtonTextOnly);
    CMD_CERCA->setMenu(new QMenu(CMD_CERCA));

    connect(TXTCERCA, &QLineEdit::returnPressed, this, &RicercaAlbero::TXTCERCA_KeyDown);
    connect(TXTCERCA, &QLineEdit::textChanged, this, [this] { segnalaRicercaSenzaEsito(false); });
    connect(CMD_CERCA->menu(), &QMenu::triggered, this,
            [this](QAction *action) { CMD_CERCA_ButtonMenuClick(action->data().toString()); });
    // Nothing to search on an empty tree; the state follows every load, once it is over.
    connect(albero.widget()->model(), &QAbstractItemModel::modelReset, this, &RicercaAlbero::aggiornaAbilitazione,
            Qt::QueuedConnection);
    aggiornaAbilitazione();
}

void RicercaAlbero::preparaMenu()
{
    QMenu *menu = CMD_CERCA->menu();
    menu->clear();
    menu->addAction(QStringLiteral("Rag. Sociale"))->setData(QStringLiteral("RagSoc"));
    menu->addAction(QStringLiteral("Codice"))->setData(QStringLiteral("Codice"));
    auto *group = new QActionGroup(menu);
    for (QAction *action : menu->actions()) {
        action->setCheckable(true);
        group->addAction(action);
    }
    mostraCampoRicerca();
}

// The field that F3 follows: checked in the menu, and named by the box while it is empty.
void RicercaAlbero::mostraCampoRicerca()
{
    const bool codice = m_campoRicerca == Campo::Codice;
    for (QAction *action : CMD_CERCA->menu()->actions())
        action->setChecked(action->data().toString() == (codice ? QLatin1String("Codice") : QLatin1String("RagSoc")));
    TXTCERCA->setPlaceholderText(codice ? QStringLiteral("Cerca per codice")
                                        : QStringLiteral("Cerca per ragione sociale"));
}

void RicercaAlbero::distintaMostrata(const QString &chiave)
{
    if (chiave == m_chiaveDistinta)
        return;
    m_chiaveDistinta = chiave;
    TXTCERCA->clear();
}

void RicercaAlbero::aggiornaAbilitazione()
{
    CMD_CERCA->setEnabled(m_albero.widget()->count() > 0);
}

// The focused node follows the recordset; when nothing matches the recordset is left past its
// last row and the tree keeps its node. A code that is not a number finds nothing and moves
// nothing.
void RicercaAlbero::CercaNellaDistinta(Campo campo)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!m_albero.widget()->focusedNode().isValid() || !nodi || (nodi->bof() && nodi->eof()))
        return;
    const std::optional<QString> criterion = campo == Campo::RagioneSociale
        ? ricercastatements::inTreeNameCriterion(TXTCERCA->text())
        : ricercastatements::inTreeCodeCriterion(TXTCERCA->text());
    if (!criterion)
        return;
    nodi->moveFirst();
    m_campoRicerca = campo;
    mostraCampoRicerca();
    segnalaRicercaSenzaEsito(!nodi->find(*criterion));
    m_albero.widget()->setFocus();
}

void RicercaAlbero::cercaCodice(const QString &procedure, const QString &codice)
{
    TXTCERCA->setText(codice);
    m_form.step(procedure, [this] { CercaNellaDistinta(Campo::Codice); });
}

void RicercaAlbero::TXTCERCA_KeyDown()
{
    m_form.step(QStringLiteral("TXTCERCA_KeyDown"), [this] { CercaNellaDistinta(Campo::RagioneSociale); });
}

// A failed search from the button's menu is silent.
void RicercaAlbero::CMD_CERCA_ButtonMenuClick(const QString &key)
{
    const bool done = FormFrame::quietly([&] {
        if (key == QLatin1String("RagSoc"))
            CercaNellaDistinta(Campo::RagioneSociale);
        else if (key == QLatin1String("Codice"))
            CercaNellaDistinta(Campo::Codice);
    });
    if (!done && m_form.connection())
        m_form.connection()->clearErrors();
}

// The next node after the focused one that matches the search text, by the field of the last
// search; past the last match the search starts again from the top, and the status bar says so.
// Only a text that matches no node marks the box.
void RicercaAlbero::cercaSuccessivo()
{
    const fw::TreeListNode focused = m_albero.widget()->focusedNode();
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!focused.isValid() || !nodi || nodi->isEmpty())
        return;
    const std::optional<QString> criterion = m_campoRicerca == Campo::Codice
        ? ricercastatements::inTreeCodeCriterion(TXTCERCA->text())
        : std::optional<QString>(ricercastatements::inTreeNameCriterion(TXTCERCA->text()));
    if (!criterion)
        return;
    m_form.step(QStringLiteral("TXTCERCA_KeyDown"), [&] {
        const int next = focused.row() + 1;
        bool found = false;
        if (next < nodi->recordCount()) {
            nodi->setCurrentRow(next);
            found = nodi->find(*criterion);
        }
        if (!found) {
            nodi->moveFirst();
            found = nodi->find(*criterion);
            if (found)
                m_form.mostraInBarraDiStato(QStringLiteral("Ricerca ripresa dall'inizio della distinta."));
        }
        if (!found)
            nodi->setCurrentRow(focused.row()); // the tree keeps its node
        segnalaRicercaSenzaEsito(!found);
        m_albero.widget()->setFocus();
    });
}

// A coloured frame and a tooltip, as long as the text that found nothing stays.
void RicercaAlbero::segnalaRicercaSenzaEsito(bool senzaEsito)
{
    if (TXTCERCA->property("senzaEsito").toBool() == senzaEsito)
        return;
    TXTCERCA->setProperty("senzaEsito", senzaEsito);
    if (senzaEsito) {
        TXTCERCA->setProperty("suggerimento", TXTCERCA->toolTip());
        TXTCERCA->setStyleSheet(QStringLiteral("QLineEdit { border: 2px solid #c62828; background: #fdecea; }"));
        TXTCERCA->setToolTip(QStringLiteral("Nessun nodo trovato per «%1».").arg(TXTCERCA->text()));
    } else {
        TXTCERCA->setStyleSheet(QString());
        TXTCERCA->setToolTip(TXTCERCA->property("suggerimento").toString());
    }
}

} // namespace distinta
