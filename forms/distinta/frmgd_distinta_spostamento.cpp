// Moving a branch: a node, with everything under it, goes under another node of the same
// classification or becomes a root, by drag and drop or by cut (Ctrl+X) and paste (Ctrl+V,
// Ctrl+Maiusc+V for a root). The checks run on the classification's rows in memory; the move
// itself is one UPDATE of the node's parent, so ids, dates, billing rules, promotions and
// states of the branch stay as they are.
#include "forms/distinta/frmgd_distinta.h"

#include "data/spostamentostatements.h"
#include "forms/distinta/strutturanodi.h"
#include "framework/globalservices.h"
#include "framework/logservice.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistnodemover.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTimer>

namespace {

const QString procedureSposta = QStringLiteral("SpostaNodo");

} // namespace

QLayout *FRMGD_DISTINTA::creaComandiSpostamento()
{
    CMD_TAGLIANODO = new QPushButton(QStringLiteral("&Taglia"));
    CMD_TAGLIANODO->setObjectName(QStringLiteral("CMD_TAGLIANODO"));
    CMD_TAGLIANODO->setToolTip(QStringLiteral("Taglia il nodo selezionato, con i suoi figli, per spostarlo (Alt+T, Ctrl+X)"));
    CMD_INCOLLANODO = new QPushButton(QStringLiteral("I&ncolla"));
    CMD_INCOLLANODO->setObjectName(QStringLiteral("CMD_INCOLLANODO"));
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(CMD_TAGLIANODO);
    layout->addWidget(CMD_INCOLLANODO);
    return layout;
}

void FRMGD_DISTINTA::collegaSpostamento()
{
    auto *trascina = new fw::TreeListNodeMover(TVW_DISTINTA);
    // The move runs once the drop is over: its questions and the reload do not belong inside
    // the platform's drag loop.
    connect(trascina, &fw::TreeListNodeMover::moveRequested, this,
            [this](const fw::TreeListNode &node, const fw::TreeListNode &target) {
                const qint64 id = idDelNodo(node);
                const qint64 destinazione = target.isValid() ? idDelNodo(target) : 0;
                QTimer::singleShot(0, this, [this, id, destinazione] { SpostaNodo(id, destinazione); });
            });
    connect(trascina, &fw::TreeListNodeMover::foreignNodeDropped, this, [this] {
        avviso(QStringLiteral("Il nodo appartiene a un'altra distinta: un nodo si sposta solo all'interno della sua distinta."));
    });

    connect(trascina, &fw::TreeListNodeMover::cutRequested, this, &FRMGD_DISTINTA::CMD_TAGLIANODO_Click);
    connect(trascina, &fw::TreeListNodeMover::pasteRequested, this, [this](bool capostipite) {
        if (capostipite)
            incollaComeCapostipite();
        else
            CMD_INCOLLANODO_Click();
    });
    connect(CMD_TAGLIANODO, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_TAGLIANODO_Click);
    connect(CMD_INCOLLANODO, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_INCOLLANODO_Click);

    // Incolla says which node it would move.
    const auto aggiorna = [this] {
        CMD_TAGLIANODO->setEnabled(TVW_DISTINTA->count() > 0);
        CMD_INCOLLANODO->setEnabled(TVW_DISTINTA->count() > 0 && m_nodoTagliato != 0);
        const int riga = m_nodoTagliato != 0 ? rigaDelNodo(m_nodoTagliato) : -1;
        QString nodo = QStringLiteral("il nodo tagliato");
        if (riga >= 0)
            nodo = m_nodi->valueAt(riga, m_nodi->fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"))).toString()
                   + QStringLiteral(" - ")
                   + m_nodi->valueAt(riga, m_nodi->fieldIndex(QStringLiteral("RAGIONESOCIALE"))).toString();
        CMD_INCOLLANODO->setToolTip(QStringLiteral("Sposta %1 sotto il nodo selezionato (Alt+N, Ctrl+V); "
                                                   "come capostipite: Ctrl+Maiusc+V").arg(nodo));
    };
    connect(TVW_DISTINTA->model(), &QAbstractItemModel::modelReset, this, aggiorna);
    connect(this, &FRMGD_DISTINTA::nodoTagliatoCambiato, this, aggiorna);
    aggiorna();
}

qint64 FRMGD_DISTINTA::idDelNodo(const fw::TreeListNode &node) const
{
    if (!node.isValid() || !m_nodi)
        return 0;
    return m_nodi->valueAt(node.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
}

void FRMGD_DISTINTA::CMD_TAGLIANODO_Click()
{
    m_nodoTagliato = idDelNodo(TVW_DISTINTA->focusedNode());
    emit nodoTagliatoCambiato();
}

void FRMGD_DISTINTA::CMD_INCOLLANODO_Click()
{
    const qint64 destinazione = idDelNodo(TVW_DISTINTA->focusedNode());
    if (m_nodoTagliato != 0 && destinazione != 0)
        SpostaNodo(m_nodoTagliato, destinazione);
}

void FRMGD_DISTINTA::incollaComeCapostipite()
{
    if (m_nodoTagliato != 0)
        SpostaNodo(m_nodoTagliato, 0);
}

// "code - name" of a loaded node, as the questions name it.
QString FRMGD_DISTINTA::nomeNodo(const StrutturaNodi &struttura, int indice) const
{
    QString nome;
    const int row = rigaDelNodo(struttura.id(indice));
    if (row >= 0)
        nome = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("RAGIONESOCIALE"))).toString();
    return QString::number(struttura.codice(indice)) + QStringLiteral(" - ") + nome;
}

int FRMGD_DISTINTA::rigaDelNodo(qint64 idNodo) const
{
    if (!m_nodi)
        return -1;
    const int field = m_nodi->fieldIndex(QStringLiteral("GD02_ID"));
    for (int row = 0; row < m_nodi->recordCount(); ++row) {
        if (m_nodi->valueAt(row, field).toLongLong() == idNodo)
            return row;
    }
    return -1;
}

// The refusals, in the order a user would want to hear them: what cannot be done at all
// first, then what the database says, then the questions.
bool FRMGD_DISTINTA::SpostaNodo(qint64 idNodo, qint64 idDestinazione)
{
    if (!m_nodi || m_nodi->isEmpty() || m_eliminazioneInCorso)
        return false;
    std::shared_ptr<const StrutturaNodi> struttura = m_strutturaAllaData;
    if (!struttura && !step(procedureSposta, [&] { struttura = std::make_shared<StrutturaNodi>(*m_nodi); }))
        return false;

    const int nodo = struttura->indice(idNodo);
    if (nodo < 0) {
        avviso(QStringLiteral("Il nodo da spostare non è più nella distinta: tagliarlo di nuovo."));
        m_nodoTagliato = 0;
        emit nodoTagliatoCambiato();
        return false;
    }
    const int destinazione = idDestinazione != 0 ? struttura->indice(idDestinazione) : -1;
    if (idDestinazione != 0 && destinazione < 0) {
        avviso(QStringLiteral("Il nodo di destinazione non è nella distinta aperta: un nodo si sposta solo "
                              "all'interno della sua distinta."));
        return false;
    }
    const QString nome = nomeNodo(*struttura, nodo);
    const QString nomeDestinazione = destinazione >= 0 ? nomeNodo(*struttura, destinazione) : QString();
    if (nodo == destinazione) {
        avviso(QStringLiteral("Il nodo %1 non può essere spostato sotto sé stesso.").arg(nome));
        return false;
    }
    const QList<int> ramo = struttura->ramo(nodo);
    if (destinazione >= 0 && ramo.contains(destinazione)) {
        avviso(QStringLiteral("Il nodo %1 è nel ramo di %2: un ramo non può essere spostato sotto uno dei suoi nodi.")
                   .arg(nomeDestinazione, nome));
        return false;
    }
    if (struttura->padre(nodo) == destinazione) {
        avviso(destinazione >= 0 ? QStringLiteral("Il nodo %1 è già sotto %2.").arg(nome, nomeDestinazione)
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
                avviso((m_tipoSoggetto != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente "))
                       + QString::number(struttura->codice(n))
                       + QStringLiteral(" del ramo da spostare è già tra i nodi padre di %1: il ramo non può "
                                        "essere spostato lì.").arg(nomeDestinazione));
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
    if (domanda(domandaSposta) != fw::Answer::Yes)
        return false;

    // What was read must still hold: the node as it was, its new parent still there.
    const int rigaNodo = rigaDelNodo(idNodo);
    if (rigaNodo >= 0) {
        m_nodi->setCurrentRow(rigaNodo);
        if (rigaModificataAltrove(procedureSposta))
            return false;
    }
    const int rigaDestinazione = destinazione >= 0 ? rigaDelNodo(idDestinazione) : -1;
    if (rigaDestinazione >= 0) {
        m_nodi->setCurrentRow(rigaDestinazione);
        db::Recordset::RowState stato = db::Recordset::RowState::Unchanged;
        if (!step(procedureSposta, [&] { stato = m_nodi->resync(); }))
            return false;
        if (stato == db::Recordset::RowState::Gone) {
            avviso(QStringLiteral("Il nodo %1 è stato eliminato da un altro utente dopo la lettura: "
                                  "il ramo non è stato spostato, la distinta viene ricaricata.").arg(nomeDestinazione));
            CaricaDistinta();
            return false;
        }
    }

    spostamentostatements::Spostamento spostamento;
    spostamento.company = companyCode();
    spostamento.nodeId = idNodo;
    spostamento.oldParentId = struttura->padre(nodo) >= 0 ? struttura->id(struttura->padre(nodo)) : 0;
    spostamento.newParentId = idDestinazione;
    spostamento.changedAt = QDateTime::currentDateTime();
    if (const fw::GlobalServices *services = globals()) {
        spostamento.userGroup = services->userGroup();
        spostamento.user = services->user();
    }
    int righe = 0;
    if (!step(procedureSposta, [&] { righe = connection()->execute(spostamentostatements::moveStatement(spostamento)); }))
        return false;
    m_nodoTagliato = 0;
    emit nodoTagliatoCambiato();
    if (righe == 0) {
        avviso(QStringLiteral("Il nodo %1 è stato modificato da un altro utente dopo la lettura: "
                              "non è stato spostato, la distinta viene ricaricata.").arg(nome));
        CaricaDistinta();
        return false;
    }
    CaricaDistinta();
    mostraNodoSpostato(idNodo, idDestinazione);
    return true;
}

// A definitive bonus hangs on nodes of the branch: one question names them all.
bool FRMGD_DISTINTA::confermaPremiDefinitivi(const StrutturaNodi &struttura, const QList<int> &ramo)
{
    QSet<qint64> conPremio;
    if (!step(procedureSposta, [&] {
            const db::RecordsetPtr premi = connection()->openRecordset(
                spostamentostatements::definitiveBonusNodesQuery(companyCode(), m_idDistinta.toLongLong()));
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
    const QString testo = (nomi.size() == 1 ? QStringLiteral("Il nodo del ramo è usato in un premio definitivo:\n")
                                            : QStringLiteral("Questi nodi del ramo sono usati in un premio definitivo:\n"))
                          + elenco + QStringLiteral("\nSi vuole proseguire con lo spostamento?");
    return domanda(testo) == fw::Answer::Yes;
}

void FRMGD_DISTINTA::mostraNodoSpostato(qint64 idNodo, qint64 idPadre)
{
    const int riga = rigaDelNodo(idNodo);
    const fw::TreeListNode node = riga >= 0 ? TVW_DISTINTA->nodeOfRow(riga) : fw::TreeListNode();
    if (!node.isValid())
        return;
    if (idPadre != 0 && node.parent().isValid())
        node.parent().expand();
    TVW_DISTINTA->setFocusedNode(node);
}
