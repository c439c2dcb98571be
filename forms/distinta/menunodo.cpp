#include "forms/distinta/menunodo.h"

#include "data/modgd_distinta.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/gestioni.h"
#include "forms/distinta/statolegame.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/workflowstatecontrol.h"

#include <QMenu>

namespace distinta {

namespace {

QAction *voce(QMenu *menu, const QString &name, const QString &caption)
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}

} // namespace

MenuNodo::MenuNodo(FormFrame &form, Albero &albero, StatoLegame &stato, Gestioni &gestioni)
    : m_form(form)
    , m_albero(albero)
    , m_stato(stato)
    , m_gestioni(gestioni)
    , m_propagazione(form, albero, stato)
    , mnuCollegamento(new QMenu(&form))
{
    mnuCollegamento->setObjectName(QStringLiteral("mnuCollegamento"));
    mnuAnagCF = voce(mnuCollegamento, QStringLiteral("mnuAnagCF"), QStringLiteral("Collegamento ad anagrafica"));
    mnuSchedaCF = voce(mnuCollegamento, QStringLiteral("mnuSchedaCF"),
                       QStringLiteral("Collegamento scheda anagrafica"));
    mnuPropagaFigli = voce(mnuCollegamento, QStringLiteral("mnuPropagaFigli"),
                           QStringLiteral("Imposta valori fatturazione sui figli"));
    // A heading with no action of its own: the command on the branch's state sits under it.
    mnuStatoLegame = mnuCollegamento->addMenu(QStringLiteral("Gestione stato"));
    mnuStatoLegame->setObjectName(QStringLiteral("mnuStatoLegame"));
    mnuRilasciaFigli = voce(mnuStatoLegame, QStringLiteral("mnuRilasciaFigli"),
                            QStringLiteral("Imposta valore di stato sui figli"));
    mnuCollegamento->addSeparator();
    mnuDoveUsato = voce(mnuCollegamento, QStringLiteral("mnuDoveUsato"), QStringLiteral("Dove è usato"));

    connect(mnuAnagCF, &QAction::triggered, this, &MenuNodo::mnuAnagCF_Click);
    connect(mnuSchedaCF, &QAction::triggered, this, &MenuNodo::mnuSchedaCF_Click);
    connect(mnuPropagaFigli, &QAction::triggered, this, &MenuNodo::mnuPropagaFigli_Click);
    connect(mnuRilasciaFigli, &QAction::triggered, this, &MenuNodo::mnuRilasciaFigli_Click);
    connect(mnuDoveUsato, &QAction::triggered, this, [this] {
        if (m_cliccato.soggetto)
            emit doveUsatoRichiesto(m_albero.tipoSoggetto(), *m_cliccato.soggetto);
    });
    connect(albero.widget(), &fw::TreeList::mouseDown, this, &MenuNodo::TVW_DISTINTA_OnMouseDown);
    connect(albero.widget(), &fw::TreeList::contextMenuRequested, this, &MenuNodo::apriMenuCollegamento);
}

// What the menu commands need of the node pressed on; the right button opens the menu.
void MenuNodo::TVW_DISTINTA_OnMouseDown(const fw::TreeListNode &node, const QString &, Qt::MouseButton button,
                                        const QPoint &pos)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!node.isValid() || !nodi)
        return;
    FormFrame::quietly([&] {
        const int row = node.row();
        const auto campo = [&](const char *field) {
            return nodi->valueAt(row, nodi->fieldIndex(QLatin1String(field)));
        };
        m_cliccato.idNodo = campo("GD02_ID").toLongLong();
        m_cliccato.livello = node.level();
        m_cliccato.indice = node.absoluteIndex();
        m_cliccato.tipoAnagFatt = short(campo("GD02_TIPOANAGFATT").toInt());
        m_cliccato.codiceFatt = MODGD_DISTINTA::NvlNumero(MODGD_DISTINTA::NvlTrim(campo("GD02_CLIFORFATT_CG44"), 0))
                                    .toDouble();
        bool ok = false;
        const qint64 soggetto = campo("GD02_CLIFOR_CG44").toLongLong(&ok);
        m_cliccato.soggetto = ok ? std::optional<qint64>(soggetto) : std::nullopt;
    });
    if (button == Qt::RightButton)
        apriMenuCollegamento(node, m_albero.widget()->mapToGlobal(pos));
}

void MenuNodo::apriMenuCollegamento(const fw::TreeListNode &node, const QPoint &globalPos)
{
    if (!node.isValid())
        return;
    TVW_DISTINTA_OnMouseDown(node, QString(), Qt::NoButton, QPoint()); // the node as it is now
    mnuAnagCF->setEnabled(m_cliccato.soggetto.has_value());
    mnuSchedaCF->setEnabled(m_cliccato.soggetto.has_value());
    // On purpose: a leaf has no children to set, so the entry is disabled rather than doing nothing.
    mnuPropagaFigli->setEnabled(node.hasChildren());
    mnuRilasciaFigli->setEnabled(m_stato.controllo()->hasService());
    mnuDoveUsato->setEnabled(m_cliccato.soggetto.has_value());
    mnuCollegamento->popup(globalPos);
}

void MenuNodo::mnuAnagCF_Click()
{
    if (!m_cliccato.soggetto)
        return;
    m_form.step(QStringLiteral("mnuAnagCF_Click"),
                [this] { m_gestioni.apriAnagraficaSoggetto(m_albero.tipoSoggetto(), *m_cliccato.soggetto); });
}

void MenuNodo::mnuSchedaCF_Click()
{
    if (!m_cliccato.soggetto)
        return;
    m_form.step(QStringLiteral("mnuSchedaCF_Click"), [this] {
        if (m_albero.tipoSoggetto() == 0)
            m_gestioni.RichiamaSchedaClienti(*m_cliccato.soggetto);
        else
            m_gestioni.RichiamaSchedaFornitori(*m_cliccato.soggetto);
    });
}

void MenuNodo::mnuPropagaFigli_Click()
{
    m_propagazione.PropagaFigli(m_cliccato);
}

void MenuNodo::mnuRilasciaFigli_Click()
{
    m_propagazione.RilasciaFigli(m_cliccato);
}

} // namespace distinta
