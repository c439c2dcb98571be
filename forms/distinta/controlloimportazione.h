#pragma once

#include "forms/distinta/contestoimportazione.h"
#include "forms/distinta/pianoimportazione.h"
#include "platform/db/connection.h"

#include <QHash>
#include <QSet>
#include <functional>

namespace distinta {

// The editor's own checks of a link, run on every row an import would write, with the rows of
// the file counted as already written: one subject linked once at a time in a division, never
// under itself, never twice in one branch, and an end never brought before a definitive bonus.
// Changed rows are checked first, then new ones parents first, each against the database and
// against the rows accepted before it.
class ControlloImportazione
{
public:
    ControlloImportazione(db::ConnectionPtr connection, const ContestoImportazione &contesto,
                          const QList<NodoEsistente> &nodi, const QHash<qint64, QString> &ragioniSociali);

    // Refuses in the plan what the editor would refuse; avanza(done) false stops (then false).
    // Throws db::DatabaseError.
    bool verifica(PianoImportazione &piano, const std::function<bool(int)> &avanza);

    // The order rows are checked and written in: changed rows in the file's order, then new
    // ones, each after its parent.
    static QList<int> ordine(const PianoImportazione &piano);

private:
    // A place of the tree as it would be: a node (its id) or a new row of the file (-1 - index).
    struct Posto
    {
        qint64 padre = 0; // 0 for a root
        qint64 codice = 0;
        QDate inizio;
        QDate fine;
    };

    QString controllaNuovo(const PianoImportazione &piano, int indice, qint64 padre);
    QString controllaModifica(const PianoImportazione::Voce &voce);
    // The line of the first link of the subject that overlaps the period, other than escluso:
    // from the database, then from the file.
    QString sovrapposto(qint64 codice, const QDate &inizio, const QDate &fine, std::optional<qint64> escluso);
    qint64 chiave(const PianoImportazione &piano, int indice) const;
    // The places above posto, nearest first, as long as continua(place) says so; a loop of
    // parents among the nodes (another program's doing) ends the walk instead of hanging it.
    void risali(qint64 posto, const std::function<bool(qint64)> &continua) const;

    db::ConnectionPtr m_connection;
    const ContestoImportazione &m_contesto;
    const QHash<qint64, QString> &m_ragioniSociali;
    QHash<qint64, Posto> m_posti;
    QMultiHash<qint64, qint64> m_postiPerSoggetto;
    QSet<qint64> m_nodiNelFile; // nodes whose period the file gives: the database's is not theirs any more
};

} // namespace distinta
