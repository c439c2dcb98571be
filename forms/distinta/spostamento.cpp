#include "forms/distinta/spostamento.h"

#include "data/spostamentostatements.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/alladata.h"
#include "forms/distinta/strutturanodi.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/globalservices.h"
#include "framework/messagestyle.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistnodemover.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTimer>

namespace distinta {

namespace {

const QString procedureSposta = QStringLiteral("SpostaNodo");

} // namespace

Spostamento::Spostamento(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , CMD_TAGLIANODO(new QPushButton(QStringLiteral("&Taglia")))
    , CMD_INCOLLANODO(new QPushButton(QStringLiteral("I&ncolla")))
{
    CMD_TAGLIANODO->setObjectName(QStringLiteral("CMD_TAGLIANODO"));
    CMD_TAGLIANODO->setToolTip(
        QStringLiteral("Taglia il nodo selezionato, con i suoi figli, per spostarlo (Alt+T, Ctrl+X)"));
    CMD_INCOLLANODO->setObjectName(QStringLiteral("CMD_INCOLLANODO"));

    auto *trascina = new fw::TreeListNodeMover(albero.widget());
    // The move runs once the drop is over: its questions and the reload do not belong inside the
    // platform's drag loop.
    connect(trascina, &fw::TreeListNodeMover::moveRequested, this,
            [this](const fw::TreeListNode &node, const fw::TreeListNode &target) {
                const qint64 id = m_albero.idDelNodo(node);
                const qint64 destinazione = m_albero.idDelNodo(target);
                QTimer::singleShot(0, this, [this, id, destinazione] { SpostaNodo(id, destinazione); });
            });
    connect(trascina, &fw::TreeListNodeMover::foreignNodeDropped, this, [this] {
        m_form.avviso(QStringLiteral(
            "Il nodo appartiene a un'altra distinta: un nodo si sposta solo all'interno della sua distinta."));
    });
    connect(trascina, &fw::TreeListNodeMover::cutRequested, this, &Spostamento::CMD_TAGLIANODO_Click);
    connect(trascina, &fw::TreeListNodeMover::pasteRequested, this, [this](bool capostipite) {
        if (capostipite)
            incollaComeCapostipite();
        else
            CMD_INCOLLANODO_Click();
    });
    connect(CMD_TAGLIANODO, &QPushButton::clicked, this, &Spostamento::CMD_TAGLIANODO_Click);
    connect(CMD_INCOLLANODO, &QPushButton::clicked, this, &Spostamento::CMD_INCOLLANODO_Click);
    connect(albero.widget()->model(), &QAbstractItemModel::modelReset, this, &Spostamento::aggiornaComandi);
    aggiornaComandi();
}

QLayout *Spostamento::creaComandi()
{
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CMD_TAGLIANODO);
    layout->addWidget(CMD_INCOLLANODO);
    return layout;
}

// Incolla says which node it would move.
void Spostamento::aggiornaComandi()
{
    fw::TreeList *tree = m_albero.widget();
    CMD_TAGLIANODO->setEnabled(tree->count() > 0);
    CMD_INCOLLANODO->setEnabled(tree->count() > 0 && m_nodoTagliato != 0);
    const int riga = m_nodoTagliato != 0 ? m_albero.rigaDelNodo(m_nodoTagliato) : -1;
    QString nodo = QStringLiteral("il nodo tagliato");
    if (riga >= 0) {
        const db::RecordsetPtr nodi = m_albero.nodi();
        nodo = nodi->valueAt(riga, nodi->fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"))).toString()
            + QStringLiteral(" - ")
            + nodi->valueAt(riga, nodi->fieldIndex(QStringLiteral("RAGIONESOCIALE"))).toString();
    }
    CMD_INCOLLANODO->setToolTip(
        QStringLiteral("Sposta %1 sotto il nodo selezionato (Alt+N, Ctrl+V); come capostipite: Ctrl+Maiusc+V")
            .arg(nodo));
}

void Spostamento::impostaTagliato(qint64 idNodo)
{
    m_nodoTagliato = idNodo;
    aggiornaComandi();
}

void Spostamento::CMD_TAGLIANODO_Click()
{
    impostaTagliato(m_albero.idDelNodo(m_albero.widget()->focusedNode()));
}

void Spostamento::CMD_INCOLLANODO_Click()
{
    const qint64 destinazione = m_albero.idDelNodo(m_albero.widget()->focusedNode());
    if (m_nodoTagliato != 0 && destinazione != 0)
        SpostaNodo(m_nodoTagliato, destinazione);
}

void Spostamento::incollaComeCapostipite()
{
    if (m_nodoTagliato != 0)
        SpostaNodo(m_nodoTagliato, 0);
}

// "code - name" of a loaded node, as the questions name it.
QString Spostamento::nomeNodo(const StrutturaNodi &struttura, int indice) const
{
    QString nome;
    const int row = m_albero.rigaDelNodo(struttura.id(indice));
    if (row >= 0) {
        const db::RecordsetPtr nodi = m_albero.nodi();
        nome = nodi->valueAt(row, nodi->fieldIndex(QStringLiteral("RAGIONESOCIALE"))).toString();
    }
    return QString::number(struttura.codice(indice)) + QStringLiteral(" - ") + nome;
}

// The refusals, in the order a user would want to hear them: what cannot be done at all first,
// then what the database says, then the questions.
bool Spostamento::SpostaNodo(qint64 idNodo, qint64 idDestinazione)
{
    db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->isEmpty() || m_albero.lavoroInCorso())
        return false;
    std::shared_ptr<const StrutturaNodi> struttura = m_albero.allaData().struttura();
    if (!struttura && !m_form.step(procedureSposta, [&] { struttura = std::make_shared<StrutturaNodi>(*nodi); }))
        return false;

    const int nodo = struttura->indice(idNodo);
    if (nodo < 0) {
        m_form.avviso(QStringLiteral("Il nodo da spostare non è più nella distinta: tagliarlo di nuovo."));
        impostaTagliato(0);
        return false;
    }
    const int destinazione = idDestinazione != 0 ? struttura->indice(idDestinazione) : -1;
    if (idDestinazione != 0 && destinazione < 0) {
        m_form.avviso(QStringLiteral("Il nodo di destinazione non è nella distinta aperta: un nodo si sposta solo "
                                     "all'interno della sua distinta."));
        return false;
    }
    const QString nome = nomeNodo(*struttura, nodo);
    const QString nomeDestinazione = destinazione >= 0 ? nomeNodo(*struttura, destinazione) : QString();
    if (nodo == destinazione) {
        m_form.avviso(QStringLiteral("Il nodo %1 non può essere spostato sotto sé stesso.").arg(nome));
        return false;
    }
    const QList<int> ramo = struttura->ramo(nodo);
    if (destinazione >= 0 && ramo.contains(destinazione)) {
        m_form.avviso(
            QStringLiteral("Il nodo %1 è nel ramo di %2: un ramo non può essere spostato sotto uno dei suoi nodi.")
                .arg(nomeDestinazione, nome));
        return false;
    }
    if (struttura->padre(nodo) == destinazione) {
        m_form.avviso(destinazione >= 0 ? QStringLiteral("Il nodo %1 è già sotto %2.").arg(nome, nomeDestinazione)
                                        : QStringLiteral("Il nodo %1 è già un capostipite.").arg(nome));
        return false;
    }
    // The recursion rule of an insertion, for every subject of the branch: none may be the new
    // parent or one of its ancestors.
    if (destinazione >= 0) {
        QSet<qint64> soggetti;
        for (int n : ramo)
            soggetti.insert(struttura->codice(n));
        QList<int> sopra = struttura->antenati(destinazione);
        sopra.prepend(destinazione);
        for (int n : std::as_const(sopra)) {
            if (soggetti.contains(struttura->codice(n))) {
                m_form.avviso((m_albero.tipoSoggetto() != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente "))
                              + QString::number(struttura->codice(n))
                              + QStringLiteral(" del ramo da spostare è già tra i nodi padre di %1: il ramo non può "
                                               "essere spostato lì.")
                                    .arg(nomeDestinazione));
                return false;
            }
        }
    }

    if (!confermaPremiDefinitivi(*struttura, ramo))
        return false;
    const qsizetype figli = ramo.size() - 1;
    QString domandaSposta = QStringLiteral("Spostare ") + nome;
    if (figli > 0)
        domandaSposta += QStringLiteral(" e i suoi %1 nodi").arg(figli);
    domandaSposta += destinazione >= 0 ? QStringLiteral(" sotto ") + nomeDestinazione + QLatin1Char('?')
                                       : QStringLiteral(" come capostipite?");
    if (m_form.domanda(domandaSposta) != fw::Answer::Yes)
        return false;

    // What was read must still hold: the node as it was, its new parent still there.
    const int rigaNodo = m_albero.rigaDelNodo(idNodo);
    if (rigaNodo >= 0) {
        nodi->setCurrentRow(rigaNodo);
        if (m_albero.rigaModificataAltrove(procedureSposta))
            return false;
    }
    const int rigaDestinazione = destinazione >= 0 ? m_albero.rigaDelNodo(idDestinazione) : -1;
    if (rigaDestinazione >= 0) {
        nodi->setCurrentRow(rigaDestinazione);
        db::Recordset::RowState stato = db::Recordset::RowState::Unchanged;
        if (!m_form.step(procedureSposta, [&] { stato = nodi->resync(); }))
            return false;
        if (stato == db::Recordset::RowState::Gone) {
            m_form.avviso(QStringLiteral("Il nodo %1 è stato eliminato da un altro utente dopo la lettura: "
                                         "il ramo non è stato spostato, la distinta viene ricaricata.")
                              .arg(nomeDestinazione));
            m_albero.CaricaDistinta();
            return false;
        }
    }

    nodi.reset(); // the reloads below let go of the rows read before

    spostamentostatements::Spostamento spostamento;
    spostamento.company = m_form.companyCode();
    spostamento.nodeId = idNodo;
    spostamento.oldParentId = struttura->padre(nodo) >= 0 ? struttura->id(struttura->padre(nodo)) : 0;
    spostamento.newParentId = idDestinazione;
    spostamento.changedAt = QDateTime::currentDateTime();
    if (const fw::GlobalServices *services = m_form.globals()) {
        spostamento.userGroup = services->userGroup();
        spostamento.user = services->user();
    }
    int righe = 0;
    {
        OperazioneStorico operazione(m_form, procedureSposta, QStringLiteral("Spostamento"), m_albero.idTipo());
        if (!operazione.inizia()
            || !m_form.step(
                procedureSposta,
                [&] { righe = m_form.connection()->execute(spostamentostatements::moveStatement(spostamento)); })
            || !operazione.fine())
            return false;
    }
    impostaTagliato(0);
    if (righe == 0) {
        m_form.avviso(QStringLiteral("Il nodo %1 è stato modificato da un altro utente dopo la lettura: "
                                     "non è stato spostato, la distinta viene ricaricata.")
                          .arg(nome));
        m_albero.CaricaDistinta();
        return false;
    }
    m_albero.CaricaDistinta();
    mostraNodoSpostato(idNodo, idDestinazione);
    return true;
}

// A definitive bonus hangs on nodes of the branch: one question names them all.
bool Spostamento::confermaPremiDefinitivi(const StrutturaNodi &struttura, const QList<int> &ramo)
{
    QSet<qint64> conPremio;
    if (!m_form.step(procedureSposta, [&] {
            const db::RecordsetPtr premi = m_form.connection()->openRecordset(
                spostamentostatements::definitiveBonusNodesQuery(m_form.companyCode(), m_albero.idTipo()));
            for (int row = 0; row < premi->recordCount(); ++row)
                conPremio.insert(premi->valueAt(row, 0).toLongLong());
        }))
        return false;
    if (conPremio.isEmpty())
        return true;
    QStringList nomi;
    for (int n : ramo) {
        if (conPremio.contains(struttura.id(n)))
            nomi << nomeNodo(struttura, n);
    }
    if (nomi.isEmpty())
        return true;
    constexpr int Elencati = 10;
    QString elenco = nomi.mid(0, Elencati).join(QStringLiteral("\n"));
    if (nomi.size() > Elencati)
        elenco += QStringLiteral("\ne altri %1").arg(nomi.size() - Elencati);
    const QString testo = (nomi.size() == 1
                               ? QStringLiteral("Il nodo del ramo è usato in un premio definitivo:\n")
                               : QStringLiteral("Questi nodi del ramo sono usati in un premio definitivo:\n"))
        + elenco + QStringLiteral("\nSi vuole proseguire con lo spostamento?");
    return m_form.domanda(testo) == fw::Answer::Yes;
}

void Spostamento::mostraNodoSpostato(qint64 idNodo, qint64 idPadre)
{
    const int riga = m_albero.rigaDelNodo(idNodo);
    const fw::TreeListNode node = riga >= 0 ? m_albero.widget()->nodeOfRow(riga) : fw::TreeListNode();
    if (!node.isValid())
        return;
    if (idPadre != 0 && node.parent().isValid())
        node.parent().expand();
    m_albero.widget()->setFocusedNode(node);
}

} // namespace distinta
