#include "forms/distinta/verificadistinte.h"

#include "data/sqltext.h"
#include "data/verificastatements.h"
#include "platform/db/recordset.h"

#include <memory>

namespace distinta {

namespace {

// The columns every statement of a node begins with.
enum ColonnaNodo { Id, IdTipo, CodiceTipo, DescrizioneTipo, TipoSoggetto, CodiceSoggetto, RagioneSociale, Altre };

QString testo(const db::Recordset &righe, int row, int column)
{
    return righe.valueAt(row, column).toString().trimmed();
}

QString codiceERagione(const QVariant &codice, const QString &ragione)
{
    if (codice.isNull())
        return {};
    return codice.toString() + (ragione.isEmpty() ? QString() : QLatin1Char(' ') + ragione);
}

QString data(const QVariant &value)
{
    return value.isNull() ? QStringLiteral("?") : sqltext::dayMonthYear(value.toDateTime());
}

// An empty end is open, and told as the open end is written.
QString periodo(const QVariant &inizio, const QVariant &fine)
{
    return QStringLiteral("dal %1 al %2").arg(data(inizio), fine.isNull() ? QStringLiteral("31/12/2099") : data(fine));
}

QString nomeSoggetto(int tipo)
{
    return tipo == 1 ? QStringLiteral("fornitore") : QStringLiteral("cliente");
}

// A finding about the node of the row, with its type and subject.
Anomalia delNodo(const db::Recordset &righe, int row, const QString &controllo, const QString &dettaglio)
{
    Anomalia anomalia;
    anomalia.controllo = controllo;
    anomalia.codiceTipo = testo(righe, row, CodiceTipo);
    anomalia.distinta = anomalia.codiceTipo.isEmpty()
        ? QString()
        : anomalia.codiceTipo + QLatin1Char(' ') + testo(righe, row, DescrizioneTipo);
    anomalia.idNodo = righe.valueAt(row, Id).toLongLong();
    anomalia.soggetto = codiceERagione(righe.valueAt(row, CodiceSoggetto), testo(righe, row, RagioneSociale));
    anomalia.dettaglio = dettaglio;
    return anomalia;
}

void soggettiSenzaDistinta(const db::ConnectionPtr &connection, int company, const QDate &day,
                           std::optional<qint64> typeId, QList<Anomalia> &anomalie)
{
    const db::RecordsetPtr righe = connection->openRecordset(
        verificastatements::missingSubjectsQuery(company, day, typeId));
    for (int row = 0; row < righe->recordCount(); ++row) {
        const QString soggetti = righe->valueAt(row, 0).toInt() == 1 ? QStringLiteral("dei fornitori")
                                                                     : QStringLiteral("dei clienti");
        const QString divisione = righe->valueAt(row, 3).isNull()
            ? QStringLiteral("senza divisione")
            : QStringLiteral("della divisione %1 %2").arg(testo(*righe, row, 4), testo(*righe, row, 5));
        anomalie.append({QStringLiteral("Soggetto senza distinta"),
                         {},
                         {},
                         0,
                         codiceERagione(righe->valueAt(row, 1), testo(*righe, row, 2)),
                         QStringLiteral("Non è in nessuna distinta %1 %2 valida al %3.")
                             .arg(soggetti, divisione.trimmed(), sqltext::dayMonthYear(day))});
    }
}

void legamiSovrapposti(const db::ConnectionPtr &connection, int company, std::optional<qint64> typeId,
                       QList<Anomalia> &anomalie)
{
    const db::RecordsetPtr righe = connection->openRecordset(
        verificastatements::overlappingLinksQuery(company, typeId));
    for (int row = 0; row < righe->recordCount(); ++row) {
        const auto valore = [&](int offset) { return righe->valueAt(row, Altre + offset); };
        anomalie.append(delNodo(*righe, row, QStringLiteral("Legami sovrapposti"),
                                QStringLiteral("%1 si sovrappone al nodo %2 della distinta %3 (%4)")
                                    .arg(periodo(valore(0), valore(1)), valore(2).toString(),
                                         valore(3).toString().trimmed(), periodo(valore(4), valore(5)))));
    }
}

void periodiFuoriDalPadre(const db::ConnectionPtr &connection, int company, std::optional<qint64> typeId,
                          QList<Anomalia> &anomalie)
{
    const db::RecordsetPtr righe = connection->openRecordset(
        verificastatements::childrenOutsideParentQuery(company, typeId));
    for (int row = 0; row < righe->recordCount(); ++row) {
        const auto valore = [&](int offset) { return righe->valueAt(row, Altre + offset); };
        const QString tipo = nomeSoggetto(righe->valueAt(row, TipoSoggetto).toInt());
        anomalie.append(delNodo(*righe, row, QStringLiteral("Periodo fuori dal padre"),
                                QStringLiteral("%1 esce dal periodo del nodo padre %2 (%3 %4), %5")
                                    .arg(periodo(valore(0), valore(1)), valore(2).toString(), tipo,
                                         valore(3).toString(), periodo(valore(4), valore(5)))));
    }
}

void nodiOrfani(const db::ConnectionPtr &connection, int company, std::optional<qint64> typeId,
                QList<Anomalia> &anomalie)
{
    const db::RecordsetPtr righe = connection->openRecordset(verificastatements::orphanNodesQuery(company, typeId));
    for (int row = 0; row < righe->recordCount(); ++row) {
        const auto valore = [&](int offset) { return righe->valueAt(row, Altre + offset); };
        const QString tipo = nomeSoggetto(righe->valueAt(row, TipoSoggetto).toInt());
        if (valore(1).toInt() == 1)
            anomalie.append(delNodo(*righe, row, QStringLiteral("Soggetto inesistente"),
                                    righe->valueAt(row, CodiceSoggetto).isNull()
                                        ? QStringLiteral("Il nodo non indica il %1.").arg(tipo)
                                        : QStringLiteral("Il %1 %2 non esiste nelle anagrafiche della ditta.")
                                              .arg(tipo, righe->valueAt(row, CodiceSoggetto).toString())));
        if (valore(2).toInt() == 1)
            anomalie.append(delNodo(*righe, row, QStringLiteral("Tipo distinta inesistente"),
                                    QStringLiteral("Il tipo di distinta %1 del nodo non esiste.")
                                        .arg(righe->valueAt(row, IdTipo).toString())));
        if (valore(3).toInt() == 1)
            anomalie.append(delNodo(*righe, row, QStringLiteral("Padre inesistente"),
                                    QStringLiteral("Il nodo padre %1 non esiste.").arg(valore(0).toString())));
    }
}

// Rows of nodes that are gone: the node's id is shown, there is nothing to go to.
void righeSenzaNodo(const db::ConnectionPtr &connection, int company, QList<Anomalia> &anomalie)
{
    const db::RecordsetPtr promozioni = connection->openRecordset(verificastatements::orphanPromotionsQuery(company));
    for (int row = 0; row < promozioni->recordCount(); ++row) {
        const QString campagna = promozioni->valueAt(row, 3).isNull()
            ? promozioni->valueAt(row, 2).toString()
            : testo(*promozioni, row, 3) + QLatin1Char(' ') + testo(*promozioni, row, 4);
        anomalie.append({QStringLiteral("Promozione senza nodo"),
                         {},
                         {},
                         promozioni->valueAt(row, 1).toLongLong(),
                         {},
                         QStringLiteral("La campagna %1 è assegnata al nodo %2, che non esiste.")
                             .arg(campagna, promozioni->valueAt(row, 1).toString())});
    }
    const db::RecordsetPtr stati = connection->openRecordset(verificastatements::orphanStatesQuery());
    for (int row = 0; row < stati->recordCount(); ++row)
        anomalie.append({QStringLiteral("Stato senza nodo"),
                         {},
                         {},
                         0,
                         {},
                         QStringLiteral("Lo stato \"%1\" è registrato per la riga %2, che non è un nodo esistente.")
                             .arg(testo(*stati, row, 2), testo(*stati, row, 1))});
    const db::RecordsetPtr contratti = connection->openRecordset(
        verificastatements::orphanContractConditionsQuery(company));
    for (int row = 0; row < contratti->recordCount(); ++row)
        anomalie.append(
            {QStringLiteral("Contratto senza nodo"),
             {},
             {},
             contratti->valueAt(row, 1).toLongLong(),
             codiceERagione(contratti->valueAt(row, 6), testo(*contratti, row, 7)),
             QStringLiteral("La condizione %1 del contratto %2 versione %3 è riferita al nodo %4, che non esiste.")
                 .arg(contratti->valueAt(row, 4).toString(), testo(*contratti, row, 2),
                      contratti->valueAt(row, 3).toString(), contratti->valueAt(row, 1).toString())});
}

} // namespace

QList<Anomalia> VerificaDistinte::verifica(const db::ConnectionPtr &connection, int company, const QDate &day,
                                           std::optional<qint64> typeId)
{
    QList<Anomalia> anomalie;
    soggettiSenzaDistinta(connection, company, day, typeId, anomalie);
    legamiSovrapposti(connection, company, typeId, anomalie);
    periodiFuoriDalPadre(connection, company, typeId, anomalie);
    nodiOrfani(connection, company, typeId, anomalie);
    if (!typeId)
        righeSenzaNodo(connection, company, anomalie);
    return anomalie;
}

QList<fw::ExportColumn> VerificaDistinte::colonne()
{
    return {{QStringLiteral("Controllo"), fw::ExportCellKind::Text},
            {QStringLiteral("Distinta"), fw::ExportCellKind::Text},
            {QStringLiteral("Nodo"), fw::ExportCellKind::Text},
            {QStringLiteral("Soggetto"), fw::ExportCellKind::Text},
            {QStringLiteral("Dettaglio"), fw::ExportCellKind::Text}};
}

QList<QVariant> VerificaDistinte::valori(const Anomalia &anomalia)
{
    return {anomalia.controllo, anomalia.distinta, anomalia.idNodo == 0 ? QString() : QString::number(anomalia.idNodo),
            anomalia.soggetto, anomalia.dettaglio};
}

void VerificaDistinte::esporta(const QList<Anomalia> &anomalie, const QString &percorso, fw::ExportFile::Format formato,
                               const QString &titolo)
{
    const std::unique_ptr<fw::TableWriter> writer = fw::ExportFile::writer(formato, fw::TableShape::Flat);
    writer->open(percorso, titolo, colonne());
    for (const Anomalia &anomalia : anomalie)
        writer->writeRow(0, valori(anomalia));
    writer->commit();
}

} // namespace distinta
