#include "forms/distinta/letturastorico.h"

#include "data/modgd_distinta.h"
#include "data/storicostatements.h"
#include "platform/db/recordset.h"

#include <QJsonDocument>
#include <memory>

namespace distinta {

namespace {

QJsonObject immagine(const QVariant &testo)
{
    return testo.isNull() ? QJsonObject() : QJsonDocument::fromJson(testo.toString().toUtf8()).object();
}

// "CODE - description" of a row whose first two fields are code and description.
QString codiceEDescrizione(const db::Recordset &riga)
{
    const QString descrizione = MODGD_DISTINTA::NvlStringa(riga.valueAt(0, 1));
    return MODGD_DISTINTA::NvlStringa(riga.valueAt(0, 0))
        + (descrizione.isEmpty() ? QString() : QStringLiteral(" - ") + descrizione);
}

} // namespace

LetturaStorico::LetturaStorico(db::ConnectionPtr connection, int company)
    : m_connection(std::move(connection))
    , m_company(company)
{
    m_nomi.soggetto = [this](int tipo, qint64 codice) { return nomeSoggetto(tipo, codice); };
    m_nomi.nodo = [this](qint64 id) { return nomeNodo(id); };
    m_nomi.priorita = [this](qint64 id) { return nomeDa(m_priorita, id, storicostatements::priorityNameQuery(id)); };
    m_nomi.campagna = [this](qint64 id) { return nomeDa(m_campagne, id, storicostatements::campaignNameQuery(id)); };
    m_nomi.stato = [this](qint64 id) {
        if (auto it = m_stati.constFind(id); it != m_stati.cend())
            return *it;
        const db::RecordsetPtr riga = m_connection->openRecordset(storicostatements::stateNameQuery(id));
        return *m_stati.insert(id, riga->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(riga->valueAt(0, 0)));
    };
}

QString LetturaStorico::nomeSoggetto(int tipo, qint64 codice)
{
    const QString chiave = QString::number(tipo) + QLatin1Char('/') + QString::number(codice);
    if (auto it = m_soggetti.constFind(chiave); it != m_soggetti.cend())
        return *it;
    const db::RecordsetPtr riga = m_connection->openRecordset(
        storicostatements::subjectNameQuery(m_company, tipo, codice));
    return *m_soggetti.insert(chiave, riga->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(riga->valueAt(0, 0)));
}

// A node as the clerk knows it, by its subject; a node no longer there has no name.
QString LetturaStorico::nomeNodo(qint64 idNodo)
{
    if (auto it = m_nodi.constFind(idNodo); it != m_nodi.cend())
        return *it;
    const db::RecordsetPtr riga = m_connection->openRecordset(storicostatements::nodeSubjectQuery(idNodo));
    QString nome;
    if (!riga->isEmpty() && !riga->valueAt(0, 1).isNull()) {
        const qint64 codice = riga->valueAt(0, 1).toLongLong();
        const QString soggetto = nomeSoggetto(riga->valueAt(0, 0).toInt(), codice);
        nome = QString::number(codice) + (soggetto.isEmpty() ? QString() : QLatin1Char(' ') + soggetto);
    }
    return *m_nodi.insert(idNodo, nome);
}

QString LetturaStorico::nomeDa(QHash<qint64, QString> &nomi, qint64 id, const QString &query)
{
    if (auto it = nomi.constFind(id); it != nomi.cend())
        return *it;
    const db::RecordsetPtr riga = m_connection->openRecordset(query);
    return *nomi.insert(id, riga->isEmpty() ? QString() : codiceEDescrizione(*riga));
}

QList<VoceStorico> LetturaStorico::leggi(const QString &query)
{
    const db::RecordsetPtr righe = m_connection->openRecordset(query);
    const auto campo = [&](const char *nome) { return righe->fieldIndex(QLatin1String(nome)); };
    const int operazione = campo("GD91_ID_GD90"), tabella = campo("GD91_TABELLA"), azione = campo("GD91_AZIONE"),
              tipoRiga = campo("GD91_ID_GD01"), nodo = campo("GD91_ID_GD02"), tipoSoggetto = campo("GD91_TIPOCF_CG44"),
              soggetto = campo("GD91_CLIFOR_CG44"), dataRiga = campo("GD91_DATAORA"), utenteRiga = campo("GD91_UTENTE"),
              gruppoRiga = campo("GD91_GRUPPO"), prima = campo("GD91_PRIMA"), dopo = campo("GD91_DOPO"),
              nome = campo("GD90_OPERAZIONE"), utente = campo("GD90_UTENTE"), gruppo = campo("GD90_GRUPPO"),
              computer = campo("GD90_COMPUTER"), data = campo("GD90_DATAORA"), tipo = campo("GD90_ID_GD01"),
              codiceTipo = campo("GD01_CODICE"), descrizioneTipo = campo("GD01_DESCR");
    QList<VoceStorico> voci;
    for (int row = 0; row < righe->recordCount(); ++row) {
        const auto valore = [&](int field) { return righe->valueAt(row, field); };
        VoceStorico base;
        base.idOperazione = valore(operazione).toLongLong();
        const bool esterna = base.idOperazione == 0;
        base.dataOra = (esterna ? valore(dataRiga) : valore(data)).toDateTime();
        base.utente = MODGD_DISTINTA::NvlStringa(esterna ? valore(utenteRiga) : valore(utente));
        base.gruppo = MODGD_DISTINTA::NvlStringa(esterna ? valore(gruppoRiga) : valore(gruppo));
        base.computer = MODGD_DISTINTA::NvlStringa(valore(computer));
        base.operazione = esterna ? QStringLiteral("Modifica esterna") : MODGD_DISTINTA::NvlStringa(valore(nome));
        base.idTipo = (valore(tipoRiga).isNull() ? valore(tipo) : valore(tipoRiga)).toLongLong();
        const QString descrizione = MODGD_DISTINTA::NvlStringa(valore(descrizioneTipo));
        base.distinta = MODGD_DISTINTA::NvlStringa(valore(codiceTipo))
            + (descrizione.isEmpty() ? QString() : QStringLiteral(" - ") + descrizione);
        base.idNodo = valore(nodo).toLongLong();

        storicotesti::Voce voce;
        voce.tabella = valore(tabella).toString();
        const QString lettera = valore(azione).toString();
        voce.azione = lettera.isEmpty() ? QChar() : lettera.at(0);
        voce.prima = immagine(valore(prima));
        voce.dopo = immagine(valore(dopo));
        if (voce.azione == QLatin1Char('U'))
            voce.dopo = storicostatements::wholeAfterImage(voce.prima, voce.dopo);
        if (!valore(soggetto).isNull()) {
            const qint64 codice = valore(soggetto).toLongLong();
            base.codiceSoggetto = codice;
            const QString nomeSogg = nomeSoggetto(valore(tipoSoggetto).toInt(), codice);
            base.soggetto = QString::number(codice) + (nomeSogg.isEmpty() ? QString() : QLatin1Char(' ') + nomeSogg);
        } else if (base.idNodo != 0) {
            base.soggetto = nomeNodo(base.idNodo);
        }
        for (const storicotesti::Riga &riga : storicotesti::righe(voce, m_nomi)) {
            VoceStorico linea = base;
            linea.riga = riga;
            voci.append(linea);
        }
    }
    return voci;
}

QList<fw::ExportColumn> LetturaStorico::colonne()
{
    using fw::ExportCellKind;
    return {{QStringLiteral("Data e ora"), ExportCellKind::Text}, {QStringLiteral("Utente"), ExportCellKind::Text},
            {QStringLiteral("Gruppo"), ExportCellKind::Text},     {QStringLiteral("Computer"), ExportCellKind::Text},
            {QStringLiteral("Operazione"), ExportCellKind::Text}, {QStringLiteral("Distinta"), ExportCellKind::Text},
            {QStringLiteral("Soggetto"), ExportCellKind::Text},   {QStringLiteral("Campo"), ExportCellKind::Text},
            {QStringLiteral("Prima"), ExportCellKind::Text},      {QStringLiteral("Dopo"), ExportCellKind::Text}};
}

QList<QVariant> LetturaStorico::valori(const VoceStorico &voce)
{
    return {voce.dataOra.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss")),
            voce.utente,
            voce.gruppo,
            voce.computer,
            voce.operazione,
            voce.distinta,
            voce.soggetto,
            voce.riga.campo,
            voce.riga.prima,
            voce.riga.dopo};
}

void LetturaStorico::esporta(const QList<VoceStorico> &voci, const QString &percorso, fw::ExportFile::Format formato,
                             const QString &titolo)
{
    const std::unique_ptr<fw::TableWriter> writer = fw::ExportFile::writer(formato, fw::TableShape::Flat);
    writer->open(percorso, titolo, colonne());
    for (const VoceStorico &voce : voci)
        writer->writeRow(0, valori(voce));
    writer->commit();
}

} // namespace distinta
