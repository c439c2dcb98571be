#pragma once

#include "data/storicotesti.h"
#include "framework/export/exportfile.h"
#include "framework/export/tablewriter.h"
#include "platform/db/connection.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>

namespace distinta {

// One line of a history: one field of a row that an operation (or another program) changed.
struct VoceStorico
{
    qint64 idOperazione = 0; // 0: written by another program
    QDateTime dataOra;
    QString utente;
    QString gruppo;
    QString computer;
    QString operazione; // "Inserimento", ..., "Modifica esterna"
    qint64 idTipo = 0;
    QString distinta; // "CLI-GDO - Grande distribuzione"
    qint64 idNodo = 0;
    qint64 codiceSoggetto = 0; // of the node's own rows; 0 for its campaigns and states
    QString soggetto;          // "1135 Drogheria Caputo S.r.l."
    storicotesti::Riga riga;
};

// Reads the journal's rows that a query of storicostatements selects and says them as lines,
// with the names of the subjects, nodes, priorities, campaigns and states they keep as codes
// (each name read once per reading).
class LetturaStorico
{
public:
    LetturaStorico(db::ConnectionPtr connection, int company);

    // Throws db::DatabaseError.
    QList<VoceStorico> leggi(const QString &query);

    // The names it finds, for other readings of the same database.
    const storicotesti::Nomi &nomi() const { return m_nomi; }

    // The columns of a history as files hold it, and one line's values for them.
    static QList<fw::ExportColumn> colonne();
    static QList<QVariant> valori(const VoceStorico &voce);
    // Writes the lines to a workbook or a CSV file. Throws std::runtime_error with the message
    // for the user.
    static void esporta(const QList<VoceStorico> &voci, const QString &percorso, fw::ExportFile::Format formato,
                        const QString &titolo);

private:
    QString nomeSoggetto(int tipo, qint64 codice);
    QString nomeNodo(qint64 idNodo);
    QString nomeDa(QHash<qint64, QString> &nomi, qint64 id, const QString &query);

    db::ConnectionPtr m_connection;
    int m_company;
    QHash<QString, QString> m_soggetti;
    QHash<qint64, QString> m_nodi;
    QHash<qint64, QString> m_priorita;
    QHash<qint64, QString> m_campagne;
    QHash<qint64, QString> m_stati;
    storicotesti::Nomi m_nomi;
};

} // namespace distinta
