#include "forms/distinta/confronto.h"

#include "data/sqltext.h"
#include "data/storicostatements.h"
#include "forms/distinta/letturastorico.h"
#include "platform/db/recordset.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <memory>

namespace distinta {

namespace {

// The dates stay as read: only the few that differ are ever shown.
struct Legame
{
    qint64 idNodo = 0;
    qint64 codicePadre = 0; // 0: a root
    QVariant inizio;
    QVariant fine;
};

struct Legami
{
    QHash<qint64, Legame> soloPrimo;   // by subject: valid on the first day and not on the second
    QHash<qint64, Legame> soloSecondo; // valid on the second day and not on the first
};

// A subject has at most one link valid on a day in a classification: a subject whose link is
// valid on both days is unchanged there, and only the links valid on one day are read.
Legami legamiCambiati(const db::ConnectionPtr &connection, int company, qint64 typeId, const QDate &a, const QDate &b)
{
    const db::RecordsetPtr righe = connection->openRecordset(
        storicostatements::linksValidOnOneDayQuery(company, typeId, a, b));
    Legami legami;
    for (int row = 0; row < righe->recordCount(); ++row) {
        if (righe->valueAt(row, 1).isNull())
            continue;
        (righe->valueAt(row, 5).toInt() == 1 ? legami.soloPrimo : legami.soloSecondo)
            .insert(righe->valueAt(row, 1).toLongLong(),
                    {righe->valueAt(row, 0).toLongLong(), righe->valueAt(row, 4).toLongLong(), righe->valueAt(row, 2),
                     righe->valueAt(row, 3)});
    }
    return legami;
}

const QStringList &ordineEsiti()
{
    static const QStringList order {QStringLiteral("Aggiunto"), QStringLiteral("Terminato"), QStringLiteral("Spostato"),
                                    QStringLiteral("Modificato")};
    return order;
}

} // namespace

QString Confronto::problemaDate(const QDate &a, const QDate &b)
{
    if (!a.isValid() || !b.isValid())
        return QStringLiteral("Indicare le due date da confrontare nel formato gg/mm/aaaa.");
    if (a > b)
        return QStringLiteral("La prima data (%1) è successiva alla seconda (%2): indicare prima la data più vecchia.")
            .arg(sqltext::dayMonthYear(a), sqltext::dayMonthYear(b));
    return {};
}

QList<Differenza> Confronto::confronta(const db::ConnectionPtr &connection, int company, qint64 typeId, int subjectKind,
                                       const QDate &a, const QDate &b)
{
    LetturaStorico lettura(connection, company);
    const auto nome = [&](qint64 codice) {
        const QString soggetto = lettura.nomi().soggetto(subjectKind, codice);
        return QString::number(codice) + (soggetto.isEmpty() ? QString() : QLatin1Char(' ') + soggetto);
    };
    const auto testoData = [](const QVariant &value) {
        return value.isNull() ? QString() : sqltext::dayMonthYear(value.toDateTime());
    };
    const auto dove = [&](const Legame &legame) {
        return (legame.codicePadre == 0 ? QStringLiteral("come capostipite")
                                        : QStringLiteral("sotto ") + nome(legame.codicePadre))
            + QStringLiteral(" dal %1 al %2").arg(testoData(legame.inizio), testoData(legame.fine));
    };

    const Legami legami = legamiCambiati(connection, company, typeId, a, b);
    const QHash<qint64, Legame> &primo = legami.soloPrimo;
    const QHash<qint64, Legame> &secondo = legami.soloSecondo;
    QList<Differenza> differenze;
    QSet<qint64> spiegati;
    for (auto it = secondo.cbegin(); it != secondo.cend(); ++it) {
        const auto prima = primo.constFind(it.key());
        if (prima == primo.cend())
            differenze.append({QStringLiteral("Aggiunto"), it.key(), nome(it.key()), it->idNodo, dove(*it)});
        else if (prima->codicePadre != it->codicePadre)
            differenze.append(
                {QStringLiteral("Spostato"), it.key(), nome(it.key()), it->idNodo,
                 QStringLiteral("Padre: ")
                     + (prima->codicePadre == 0 ? QStringLiteral("capostipite") : nome(prima->codicePadre))
                     + QStringLiteral(" → ")
                     + (it->codicePadre == 0 ? QStringLiteral("capostipite") : nome(it->codicePadre))});
        else
            continue;
        spiegati.insert(it.key());
    }
    for (auto it = primo.cbegin(); it != primo.cend(); ++it) {
        if (!secondo.contains(it.key())) {
            differenze.append({QStringLiteral("Terminato"), it.key(), nome(it.key()), it->idNodo, dove(*it)});
            spiegati.insert(it.key());
        }
    }

    // What the rows' dates cannot tell: the changes written after A, up to B included.
    if (a < b && connection->hasTable(QString::fromLatin1(storicostatements::OperationsTable))) {
        storicostatements::FiltroStorico filtro;
        filtro.company = company;
        filtro.typeId = typeId;
        filtro.from = a.addDays(1);
        filtro.to = b;
        static const QStringList modifiche {QStringLiteral("Tipo fatturazione"), QStringLiteral("Codice fatturazione"),
                                            QStringLiteral("Priorità struttura"),
                                            QStringLiteral("Priorità localizzata"), QStringLiteral("Descrizione")};
        const QList<VoceStorico> voci = lettura.leggi(storicostatements::classificationHistoryQuery(filtro));
        for (auto it = voci.crbegin(); it != voci.crend(); ++it) { // oldest first
            const qint64 codice = it->codiceSoggetto;
            const bool spostamento = it->riga.campo == QLatin1String("Padre");
            if (spostamento && !spiegati.contains(codice)) {
                differenze.append({QStringLiteral("Spostato"), codice, it->soggetto, it->idNodo, it->riga.testo});
                spiegati.insert(codice);
            } else if (modifiche.contains(it->riga.campo)) {
                differenze.append({QStringLiteral("Modificato"), codice, it->soggetto, it->idNodo, it->riga.testo});
            }
        }
    }
    std::stable_sort(differenze.begin(), differenze.end(), [](const Differenza &x, const Differenza &y) {
        const qsizetype ex = ordineEsiti().indexOf(x.esito), ey = ordineEsiti().indexOf(y.esito);
        return ex != ey ? ex < ey : x.codice < y.codice;
    });
    return differenze;
}

QList<fw::ExportColumn> Confronto::colonne()
{
    return {{QStringLiteral("Differenza"), fw::ExportCellKind::Text},
            {QStringLiteral("Soggetto"), fw::ExportCellKind::Text},
            {QStringLiteral("Dettaglio"), fw::ExportCellKind::Text}};
}

QList<QVariant> Confronto::valori(const Differenza &differenza)
{
    return {differenza.esito, differenza.soggetto, differenza.dettaglio};
}

void Confronto::esporta(const QList<Differenza> &differenze, const QString &percorso, fw::ExportFile::Format formato,
                        const QString &titolo)
{
    const std::unique_ptr<fw::TableWriter> writer = fw::ExportFile::writer(formato, fw::TableShape::Flat);
    writer->open(percorso, titolo, colonne());
    for (const Differenza &differenza : differenze)
        writer->writeRow(0, valori(differenza));
    writer->commit();
}

} // namespace distinta
