#pragma once

#include "platform/db/recordset.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <memory>
#include <optional>

class FormFrame;
class QWidget;

namespace fw {
class ElidedLabel;
class EmptyViewHint;
class RecordFrame;
class TreeList;
class TreeListNode;
} // namespace fw

namespace distinta {

class AllaData;
class Livelli;
class Selettore;

// The open classification: the tree TVW_DISTINTA bound to the node rows of the type chosen in
// the selector, the record frame that keeps the hidden controls on the focused node, the texts
// drawn in its cells, its header line, its levels and the date it is shown as of.
class Albero : public QObject
{
    Q_OBJECT

public:
    Albero(FormFrame &form, Selettore &selettore);
    ~Albero() override;

    fw::TreeList *widget() const { return TVW_DISTINTA; }
    fw::ElidedLabel *intestazione() const { return lblDescDistinta; }
    Livelli &livelli() const { return *m_livelli; }
    AllaData &allaData() const { return *m_allaData; }

    // --- the classification loaded
    int tipoSoggetto() const { return m_tipoSoggetto; } // 0 customers, 1 suppliers
    void setTipoSoggetto(int tipo) { m_tipoSoggetto = tipo; }
    QString idDistinta() const { return m_idDistinta; } // GD01_ID of the chosen type
    qint64 idTipo() const { return m_idDistinta.toLongLong(); }
    db::RecordsetPtr nodi() const { return m_nodi; } // the rows the tree shows
    // Who changed a node and when, written by every change of a node's row.
    static db::Recordset::UpdateStamp timbroModifica(const QString &gruppo, const QString &utente);
    fw::RecordFrame *frameDistinta() const;
    std::optional<qint64> divisione() const { return m_divisione; }
    QString guidDistinta() const { return m_guidDistinta; }
    // The controls the record frame keeps on the focused node, with their fields.
    void setControlliLegati(const QList<std::pair<QWidget *, QString>> &controlli) { m_controlliLegati = controlli; }

    // The band and column captions through the host's translation service.
    void TraduzioneIntestazione_TVW_DISTINTA();

    // --- loading: CaricaDistinta reads the statement, opens the rows, sets aside those of other
    // days, reads the texts drawn, binds the tree, expands it and fills the levels
    void CaricaDistinta(); // then distintaCaricata(), whatever the outcome
    // Lets go of the loaded classification: its record frame, the tree's rows, the texts drawn
    // in its cells and its levels.
    void scaricaDistinta();
    // The statement of the type selected, whose identifier becomes the current one; empty when
    // nothing is selected.
    QString statementDistinta();
    db::RecordsetPtr apriNodi(const QString &sql);
    // Reads the texts drawn in the unbound and priority columns, once per load.
    void caricaTestiDisegno(const db::Recordset &nodi);
    void legaAlbero(const db::RecordsetPtr &nodi, const QString &sql);
    void espandiTutto();
    void DistruggiFrameworkDistinta();
    void CaricaIntestazioneDistinta();
    QString AssegnaRagioneSociale(qint64 codice);
    QString DescrizionePriorita(qint64 idPriorita);
    // Texts learnt after the load: a billing code typed, a priority chosen.
    void ricordaRagioneSocialeFatt(qint64 codice, const QString &nome) { m_ragioniSocialiFatt.insert(codice, nome); }
    void ricordaDescrizionePriorita(const QString &procedure, qint64 idPriorita);

    // --- nodes
    qint64 idDelNodo(const fw::TreeListNode &node) const; // 0 for no node
    int rigaDelNodo(qint64 idNodo) const;                 // -1 when not loaded
    qint64 idNodoCorrente() const;                        // of the rows' current row

    // --- another clerk's changes: the editor keeps no lock
    // Reads the current row again. True (and the user told) when another clerk changed it
    // since it was read, or removed it. With soloSeEliminato a change is taken in silently and
    // only a removal stops the caller.
    bool rigaModificataAltrove(const QString &procedure, bool soloSeEliminato = false);
    // A write through the tree was refused: another clerk's change is read again and told, any
    // other failure goes to the error handler.
    void rileggiNodoInConflitto(const db::DatabaseError &error);

    // Work that walks or takes away nodes (a propagation, a removal) moves the focus silently:
    // what follows the focus waits until the last such work is over.
    class Lavoro
    {
    public:
        explicit Lavoro(Albero &albero)
            : m_albero(albero)
        {
            ++m_albero.m_lavori;
        }
        ~Lavoro() { --m_albero.m_lavori; }
        Lavoro(const Lavoro &) = delete;
        Lavoro &operator=(const Lavoro &) = delete;

    private:
        Albero &m_albero;
    };
    bool lavoroInCorso() const { return m_lavori > 0; }

signals:
    // The tree was read again (or emptied by a load that failed).
    void distintaCaricata();

private:
    void leggiDistinta();
    void leggiTestiDisegno(const QSet<qint64> &billingCodes, const QSet<qint64> &priorities);
    void creaColonne();
    void TVW_DISTINTA_OnCustomDrawCell(const fw::TreeListNode &node, const QString &column, QString &text);

    FormFrame &m_form;
    Selettore &m_selettore;
    fw::TreeList *TVW_DISTINTA;
    fw::ElidedLabel *lblDescDistinta;
    std::unique_ptr<Livelli> m_livelli;
    std::unique_ptr<AllaData> m_allaData;
    int m_tipoSoggetto = 0;
    QString m_idDistinta;
    db::RecordsetPtr m_nodi;
    QPointer<fw::RecordFrame> m_frameDistinta;
    QList<std::pair<QWidget *, QString>> m_controlliLegati;
    std::optional<qint64> m_divisione;
    QString m_guidDistinta;
    QHash<qint64, QString> m_ragioniSocialiFatt;  // by GD02_CLIFORFATT_CG44
    QHash<qint64, QString> m_descrizioniPriorita; // by LP09_ID
    int m_lavori = 0;
    QPointer<fw::EmptyViewHint> m_vuoto; // asks this part for its text: goes with it
};

} // namespace distinta
