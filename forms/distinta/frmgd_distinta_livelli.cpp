// Levels of the tree: the level combo, and the button that expands or collapses one level at a
// time. The button's caption says what its next click does, and is read back to know it.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/treelist/treelist.h"

#include <QComboBox>
#include <QPushButton>

namespace {

const QString procedureLivelli = QStringLiteral("CMD_ESPANDICOLLASSA_Click");

// Many expansions or collapses are laid out once, at the end, whatever happens in between.
class TreeUpdate
{
public:
    explicit TreeUpdate(fw::TreeList *tree) : m_tree(tree) { m_tree->beginUpdate(); }
    ~TreeUpdate() { m_tree->endUpdate(); }
    TreeUpdate(const TreeUpdate &) = delete;
    TreeUpdate &operator=(const TreeUpdate &) = delete;

private:
    fw::TreeList *m_tree;
};

} // namespace

void FRMGD_DISTINTA::CaricaLivelli()
{
    step(QStringLiteral("CaricaLivelli"), [this] {
        const db::RecordsetPtr bound = TVW_DISTINTA->recordset();
        if (!bound)
            return;
        int deepest = 0;
        fw::TreeListNode node = TVW_DISTINTA->firstNode();
        for (int i = 0, count = bound->recordCount(); i < count && node.isValid(); ++i) {
            deepest = qMax(deepest, node.level());
            node = node.next();
        }

        const QString levelLabel = testo(94562, QStringLiteral("° livello"));
        CMB_LIVELLO->clear();
        for (int level = 0; level <= deepest; ++level)
            CMB_LIVELLO->addItem(QString::number(level + 1) + levelLabel);
        CMB_LIVELLO->setCurrentIndex(CMB_LIVELLO->count() - 1);

        // CaricaDistinta leaves the tree fully expanded.
        m_livelloMassimo = deepest;
        m_livelloCorrente = deepest;
        CMD_ESPANDICOLLASSA->setText(testo(94561, QStringLiteral("COMPRIMI LIVELLO "))
                                     + QString::number(m_livelloCorrente + 1));
    });
}

void FRMGD_DISTINTA::CMD_ESPANDICOLLASSA_Click()
{
    if (TVW_DISTINTA->count() == 0 || !m_nodi || m_nodi->isEmpty())
        return;
    step(procedureLivelli, [this] {
        QString mode = CMD_ESPANDICOLLASSA->text().left(8);
        while (mode.endsWith(QLatin1Char(' ')))
            mode.chop(1);
        const QString expandLabel = testo(94560, QStringLiteral("ESPANDI LIVELLO "));
        const QString collapseLabel = testo(94561, QStringLiteral("COMPRIMI LIVELLO "));

        QString caption;
        if (mode.toUpper() == QLatin1String("COMPRIMI")) {
            comprimiLivello();
            caption = m_livelloCorrente < 1 ? expandLabel : collapseLabel;
        } else {
            espandiLivello();
            caption = m_livelloCorrente >= m_livelloMassimo ? collapseLabel : expandLabel;
        }
        CMD_ESPANDICOLLASSA->setText(caption + QString::number(m_livelloCorrente + 1));
    });
}

// Collapses the nodes just above the current level; at level 0 there is nothing to collapse.
void FRMGD_DISTINTA::comprimiLivello()
{
    if (m_livelloCorrente < 1)
        return;
    {
        TreeUpdate update(TVW_DISTINTA);
        fw::TreeListNode node = TVW_DISTINTA->firstNode();
        for (int i = 0, count = m_nodi->recordCount(); i < count && node.isValid(); ++i) {
            if (node.level() == m_livelloCorrente - 1)
                TVW_DISTINTA->collapse(node);
            node = node.next();
        }
    }
    --m_livelloCorrente;
}

void FRMGD_DISTINTA::espandiLivello()
{
    {
        TreeUpdate update(TVW_DISTINTA);
        fw::TreeListNode node = TVW_DISTINTA->firstNode();
        for (int i = 0, count = m_nodi->recordCount(); i < count && node.isValid(); ++i) {
            if (node.level() == m_livelloCorrente)
                TVW_DISTINTA->expand(node);
            node = node.next();
        }
    }
    ++m_livelloCorrente;
}
