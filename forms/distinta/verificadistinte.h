#pragma once

#include "framework/export/exportfile.h"
#include "framework/export/tablewriter.h"
#include "platform/db/connection.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace distinta {

// One thing wrong in a company's classifications.
struct Anomalia
{
    QString controllo;  // "Soggetto senza distinta", "Legami sovrapposti", ...
    QString codiceTipo; // empty when the node's type is gone, or for a subject missing from a division
    QString distinta;   // "CLI02 Clienti GDO"
    qint64 idNodo = 0;  // 0: no node to show
    QString soggetto;   // "1135 Drogheria Caputo S.r.l."
    QString dettaglio;
};

// The health check of a company's classifications, in the order the checks are told: subjects
// missing from every classification of a division valid on the day, overlapping links of one
// subject in one division, children outside their parent's period, nodes whose subject, type or
// parent is gone, and the campaigns, workflow states and contract conditions of nodes that are
// gone. With a type, only what is about its nodes (the missing subjects of its division and kind;
// rows of nodes that are gone belong to no type).
class VerificaDistinte
{
public:
    // Throws db::DatabaseError.
    static QList<Anomalia> verifica(const db::ConnectionPtr &connection, int company, const QDate &day,
                                    std::optional<qint64> typeId = {});

    static QList<fw::ExportColumn> colonne();
    static QList<QVariant> valori(const Anomalia &anomalia);
    // Throws std::runtime_error with the message for the user.
    static void esporta(const QList<Anomalia> &anomalie, const QString &percorso, fw::ExportFile::Format formato,
                        const QString &titolo);
};

} // namespace distinta
