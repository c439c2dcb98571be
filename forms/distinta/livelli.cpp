// Levels of the tree: the level combo, and the button that expands or collapses one level at a
// time.
#include "forms/distinta/livelli.h"

#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/windowupdatelock.h"
#include "platform/db/recordset.h"

#include <QComboBox>
#include <QPushButton>
#include <limits>
#include <stdexcept>

namespace distinta {

Livelli::Livelli(FormFrame &form, fw::TreeList *albero)
    : m_form(form)
    , m_albero(albero)
    , CMB_LIVELLO(new QComboBox)
    , CMD_ESPANDICOLLASSA(new QPushButton)
{
    CMB_LIVELLO->setObjectName(QStringLiteral("CMB_LIVELLO"));
    CMB_LIVELLO->setMinimumContentsLength(10);
    CMB_LIVELLO->setToolTip(QStringLiteral("Fino a quale livello arriva la stampa della distinta"));
    CMD_ESPANDICOLLASSA->setObjectName(QStringLiteral("CMD_ESPANDICOLLASSA"));
    CMD_ESPANDICOLLASSA->setMinimumWidth(
        CMD_ESPANDICOLLASSA->fontMetrics().horizontalAdvance(QStringLiteral("COMPRIMI LIVELLO 99")) + 16);
    CMD_ESPANDICOLLASSA->setToolTip(QStringLiteral("Espande o comprime l'albero di un livello (Alt+L)"));
    connect(CMD_ESPANDICOLLASSA, &QPushButton::clicked, this, &Livelli::CMD_ESPANDICOLLASSA_Click);
    // Nothing to expand or choose on an empty tree; the state follows every load, once it is over.
    connect(albero->model(), &QAbstractItemModel::modelReset, this, &Livelli::aggiornaAbilitazione,
            Qt::QueuedConnection);
    aggiornaAbilitazione();
}

void Livelli::aggiornaAbilitazione()
{
    const bool nodi = m_albero->count() > 0;
    CMD_ESPANDICOLLASSA->setEnabled(nodi);
    CMB_LIVELLO->setEnabled(nodi);
}

void Livelli::preparaCaricamento()
{
    CMD_ESPANDICOLLASSA->setText(m_form.translated(94563, QStringLiteral("ESPANDI/COMPRIMI")));
}

void Livelli::svuota()
{
    CMB_LIVELLO->clear();
}

QString Livelli::testoLivello() const
{
    return CMB_LIVELLO->currentText();
}

void Livelli::CaricaLivelli()
{
    m_form.step(QStringLiteral("CaricaLivelli"), [this] {
        const db::RecordsetPtr bound = m_albero->recordset();
        if (!bound)
            return;
        int deepest = 0;
        fw::TreeListNode node = m_albero->firstNode();
        for (int i = 0, count = bound->recordCount(); i < count && node.isValid(); ++i) {
            deepest = qMax(deepest, node.level());
            node = node.next();
        }

        const QString levelLabel = m_form.translated(94562, QStringLiteral("° livello"));
        CMB_LIVELLO->clear();
        for (int level = 0; level <= deepest; ++level)
            CMB_LIVELLO->addItem(QString::number(level + 1) + levelLabel);
        CMB_LIVELLO->setCurrentIndex(CMB_LIVELLO->count() - 1);

        // CaricaDistinta leaves the tree fully expanded.
        m_livelloMassimo = deepest;
        m_livelloCorrente = deepest;
        CMD_ESPANDICOLLASSA->setText(m_form.translated(94561, QStringLiteral("COMPRIMI LIVELLO "))
                                     + QString::number(m_livelloCorrente + 1));
    });
}

void Livelli::CMD_ESPANDICOLLASSA_Click()
{
    const db::RecordsetPtr nodi = m_albero->recordset();
    if (m_albero->count() == 0 || !nodi || nodi->isEmpty())
        return;
    m_form.step(QStringLiteral("CMD_ESPANDICOLLASSA_Click"), [this] {
        QString mode = CMD_ESPANDICOLLASSA->text().left(8);
        while (mode.endsWith(QLatin1Char(' ')))
            mode.chop(1);
        const QString expandLabel = m_form.translated(94560, QStringLiteral("ESPANDI LIVELLO "));
        const QString collapseLabel = m_form.translated(94561, QStringLiteral("COMPRIMI LIVELLO "));

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
void Livelli::comprimiLivello()
{
    if (m_livelloCorrente < 1)
        return;
    {
        fw::WindowUpdateLock update(m_albero);
        fw::TreeListNode node = m_albero->firstNode();
        for (int i = 0, count = m_albero->recordset()->recordCount(); i < count && node.isValid(); ++i) {
            if (node.level() == m_livelloCorrente - 1)
                m_albero->collapse(node);
            node = node.next();
        }
    }
    --m_livelloCorrente;
}

void Livelli::espandiLivello()
{
    {
        fw::WindowUpdateLock update(m_albero);
        fw::TreeListNode node = m_albero->firstNode();
        for (int i = 0, count = m_albero->recordset()->recordCount(); i < count && node.isValid(); ++i) {
            if (node.level() == m_livelloCorrente)
                m_albero->expand(node);
            node = node.next();
        }
    }
    ++m_livelloCorrente;
}

qint64 Livelli::numeroIniziale(const QString &testo)
{
    qsizetype i = 0;
    while (i < testo.size() && testo.at(i).isSpace())
        ++i;
    bool negative = false;
    if (i < testo.size() && (testo.at(i) == QLatin1Char('-') || testo.at(i) == QLatin1Char('+')))
        negative = testo.at(i++) == QLatin1Char('-');
    qint64 value = 0;
    for (; i < testo.size() && testo.at(i).isDigit(); ++i) {
        value = value * 10 + testo.at(i).digitValue();
        if (value > std::numeric_limits<qint32>::max())
            break;
    }
    return negative ? -value : value;
}

short Livelli::limite(const QString &testoLivello)
{
    const qint64 valore = numeroIniziale(testoLivello) + 1;
    if (valore > std::numeric_limits<qint16>::max() || valore < std::numeric_limits<qint16>::min())
        throw std::overflow_error("Overflow");
    return static_cast<short>(valore);
}

} // namespace distinta
