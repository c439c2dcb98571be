#pragma once

#include "framework/export/exportfile.h"
#include "framework/export/tablewriter.h"
#include "platform/db/connection.h"

#include <QDate>
#include <QList>
#include <QString>

namespace distinta {

// One difference of a classification between two days.
struct Differenza
{
    QString esito; // "Aggiunto", "Terminato", "Spostato", "Modificato"
    qint64 codice = 0;
    QString soggetto; // "1135 Drogheria Caputo S.r.l."
    qint64 idNodo = 0;
    QString dettaglio; // "sotto 1100 Alimentari Rossi dal 01/01/2025 al 31/12/2099", "Data fine: ... → ..."
};

// What changed in a classification from day A to day B: the links valid on B and not on A
// ("Aggiunto"), on A and not on B ("Terminato"), a subject under another parent ("Spostato"),
// and, from the journal of the days after A up to B, the billing, priorities or description
// changed ("Modificato"); a move written in the journal is a "Spostato" too.
class Confronto
{
public:
    // Why the two days cannot be compared; empty when they can.
    static QString problemaDate(const QDate &a, const QDate &b);
    // Throws db::DatabaseError.
    static QList<Differenza> confronta(const db::ConnectionPtr &connection, int company, qint64 typeId, int subjectKind,
                                       const QDate &a, const QDate &b);

    static QList<fw::ExportColumn> colonne();
    static QList<QVariant> valori(const Differenza &differenza);
    // Throws std::runtime_error with the message for the user.
    static void esporta(const QList<Differenza> &differenze, const QString &percorso, fw::ExportFile::Format formato,
                        const QString &titolo);
};

} // namespace distinta
