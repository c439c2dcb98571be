// The billing code of a node whose rule is "Manuale", typed in TXT_ALFA laid over its cell: the
// code must be a subject of the company and kind; Enter stores it, Escape or leaving the field
// drops what was typed.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "data/numerictext.h"
#include "framework/treelist/treelist.h"

#include <QLineEdit>
#include <QScopedValueRollback>
#include <QShortcut>

namespace {

const QString colonnaCodiceFatt = QStringLiteral("trGD02_CLIFORFATT_CG44");

} // namespace

void FRMGD_DISTINTA::creaTXT_ALFA()
{
    TXT_ALFA = new QLineEdit(TVW_DISTINTA);
    TXT_ALFA->setObjectName(QStringLiteral("TXT_ALFA"));
    TXT_ALFA->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    TXT_ALFA->setToolTip(QStringLiteral("Codice dell'anagrafica di fatturazione: Invio conferma, Esc annulla"));
    TXT_ALFA->hide();
    connect(TXT_ALFA, &QLineEdit::returnPressed, this, &FRMGD_DISTINTA::TXT_ALFA_Invio);
    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), TXT_ALFA, nullptr, nullptr, Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, this, &FRMGD_DISTINTA::TXT_ALFA_Annulla);
    // Leaving the field (not by Enter) drops what was typed.
    connect(TXT_ALFA, &QLineEdit::editingFinished, this, [this] {
        if (TXT_ALFA->isVisible() && !TXT_ALFA->hasFocus() && !m_messaggioTXT_ALFA)
            TXT_ALFA->hide();
    });
}

// Both modes lay the editor over the focused node's billing-code cell with the stored code. It
// opens once the tree has finished the edit or the drop-down that asked for it, so that the
// tree does not take the focus back.
void FRMGD_DISTINTA::GestioneTXTAnagrafica(const QString &)
{
    const fw::TreeListNode node = TVW_DISTINTA->focusedNode();
    if (!node.isValid() || !m_nodi)
        return;
    m_idNodoTXT_ALFA = m_nodi->valueAt(node.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
    QMetaObject::invokeMethod(this, [this] {
        const fw::TreeListNode focused = TVW_DISTINTA->focusedNode();
        if (!focused.isValid() || m_nodi->valueAt(focused.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong()
                                      != m_idNodoTXT_ALFA)
            return;
        const QRect cell = TVW_DISTINTA->cellRect(focused, colonnaCodiceFatt);
        if (!cell.isValid())
            return;
        TXT_ALFA->setGeometry(cell);
        TXT_ALFA->setText(MODGD_DISTINTA::NvlTrim(focused.value(colonnaCodiceFatt), QString()).toString());
        TXT_ALFA->show();
        TXT_ALFA->raise();
        TXT_ALFA->setFocus();
        TXT_ALFA->selectAll();
    }, Qt::QueuedConnection);
}

void FRMGD_DISTINTA::TXT_ALFA_Invio()
{
    const fw::TreeListNode node = TVW_DISTINTA->focusedNode();
    if (!node.isValid()
        || m_nodi->valueAt(node.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong() != m_idNodoTXT_ALFA) {
        TXT_ALFA->hide();
        return;
    }
    const QString testo = TXT_ALFA->text().trimmed();
    QVariant codice;
    if (!testo.isEmpty()) {
        bool intero = false;
        const qint64 numero = testo.toLongLong(&intero);
        QScopedValueRollback messaggio(m_messaggioTXT_ALFA, true);
        if (!numerictext::isNumeric(testo) || !intero || numero <= 0) {
            avviso(QStringLiteral("Il codice anagrafica deve essere un numero intero positivo."));
            TXT_ALFA->setFocus();
            return;
        }
        QString nome;
        if (!step(QStringLiteral("TXT_ALFA_KeyDown"), [&] { nome = AssegnaRagioneSociale(numero); }))
            return;
        if (nome.isEmpty()) {
            avviso((m_tipoSoggetto != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente ")) + testo
                   + QStringLiteral(" non trovato tra le anagrafiche della ditta."));
            TXT_ALFA->setFocus();
            return;
        }
        m_ragioniSocialiFatt.insert(numero, nome);
        codice = numero;
    }
    TXT_ALFA->hide();
    TVW_DISTINTA->setValue(node, colonnaCodiceFatt, codice);
    TVW_DISTINTA->refresh();
    TVW_DISTINTA->setFocus();
}

void FRMGD_DISTINTA::TXT_ALFA_Annulla()
{
    TXT_ALFA->hide();
    TVW_DISTINTA->setFocus();
}
