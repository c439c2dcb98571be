// The tree's context menu: the subject's master data and card, the billing values and the link
// state pushed down the branch. The right button on a node opens it, as does the keyboard's
// menu key on the focused node; what the commands need of the node is taken as it opens.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"

#include <QMenu>

void FRMGD_DISTINTA::creaMenuCollegamento()
{
    mnuCollegamento = new QMenu(this);
    mnuCollegamento->setObjectName(QStringLiteral("mnuCollegamento"));
    const auto voce = [](QMenu *menu, const QString &name, const QString &caption) {
        QAction *action = menu->addAction(caption);
        action->setObjectName(name);
        return action;
    };
    mnuAnagCF = voce(mnuCollegamento, QStringLiteral("mnuAnagCF"), QStringLiteral("Collegamento ad anagrafica"));
    mnuSchedaCF = voce(mnuCollegamento, QStringLiteral("mnuSchedaCF"), QStringLiteral("Collegamento scheda anagrafica"));
    mnuPropagaFigli = voce(mnuCollegamento, QStringLiteral("mnuPropagaFigli"),
                           QStringLiteral("Imposta valori fatturazione sui figli"));
    // A heading with no action of its own: the command on the branch's state sits under it.
    mnuStatoLegame = mnuCollegamento->addMenu(QStringLiteral("Gestione stato"));
    mnuStatoLegame->setObjectName(QStringLiteral("mnuStatoLegame"));
    mnuRilasciaFigli = voce(mnuStatoLegame, QStringLiteral("mnuRilasciaFigli"),
                            QStringLiteral("Imposta valore di stato sui figli"));

    connect(mnuAnagCF, &QAction::triggered, this, &FRMGD_DISTINTA::mnuAnagCF_Click);
    connect(mnuSchedaCF, &QAction::triggered, this, &FRMGD_DISTINTA::mnuSchedaCF_Click);
    connect(mnuPropagaFigli, &QAction::triggered, this, &FRMGD_DISTINTA::mnuPropagaFigli_Click);
    connect(mnuRilasciaFigli, &QAction::triggered, this, &FRMGD_DISTINTA::mnuRilasciaFigli_Click);
    connect(TVW_DISTINTA, &fw::TreeList::contextMenuRequested, this, &FRMGD_DISTINTA::apriMenuCollegamento);
}

// What the menu commands need of the node pressed on; the right button opens the menu.
void FRMGD_DISTINTA::TVW_DISTINTA_OnMouseDown(const fw::TreeListNode &node, const QString &, Qt::MouseButton button,
                                              const QPoint &pos)
{
    if (!node.isValid() || !m_nodi)
        return;
    quietly([&] {
        const int row = node.row();
        m_cliccato.idNodo = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        m_cliccato.livello = node.level();
        m_cliccato.indice = node.absoluteIndex();
        m_cliccato.tipoAnagFatt = short(m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_TIPOANAGFATT"))).toInt());
        m_cliccato.codiceFatt = MODGD_DISTINTA::NvlNumero(
                                    MODGD_DISTINTA::NvlTrim(m_nodi->valueAt(row, m_nodi->fieldIndex(
                                                                                     QStringLiteral("GD02_CLIFORFATT_CG44"))),
                                                            0))
                                    .toDouble();
        bool ok = false;
        const qint64 soggetto = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong(&ok);
        m_soggettoMenu = ok ? std::optional<qint64>(soggetto) : std::nullopt;
    });
    if (button == Qt::RightButton)
        apriMenuCollegamento(node, TVW_DISTINTA->mapToGlobal(pos));
}

// Commands that cannot act on this node are disabled.
void FRMGD_DISTINTA::apriMenuCollegamento(const fw::TreeListNode &node, const QPoint &globalPos)
{
    if (!node.isValid())
        return;
    TVW_DISTINTA_OnMouseDown(node, QString(), Qt::NoButton, QPoint());   // the node as it is now
    mnuAnagCF->setEnabled(m_soggettoMenu.has_value());
    mnuSchedaCF->setEnabled(m_soggettoMenu.has_value());
    mnuPropagaFigli->setEnabled(node.hasChildren());
    mnuRilasciaFigli->setEnabled(TXT_GD02_STATO->hasService());
    mnuCollegamento->popup(globalPos);
}

// The node the menu was opened on, while the tree still shows it there.
fw::TreeListNode FRMGD_DISTINTA::nodoCliccato() const
{
    const fw::TreeListNode node = TVW_DISTINTA->nodeAt(m_cliccato.indice);
    if (!node.isValid() || !m_nodi
        || m_nodi->valueAt(node.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong() != m_cliccato.idNodo)
        return {};
    return node;
}
