#include "forms/distinta/annullamento.h"

#include "data/modgd_distinta.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controllilegami.h"
#include "forms/distinta/verifica.h"
#include "frame/formframe.h"
#include "frame/operazionestorico.h"
#include "framework/globalservices.h"
#include "framework/messagestyle.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/storedvalues.h"

#include <QJsonDocument>
#include <QPushButton>
#include <QSet>
#include <functional>

namespace distinta {

namespace {

const QString procedura = QStringLiteral("CMD_ANNULLA_Click");
// Keys per statement that reads, checks or removes rows; rows per INSERT.
constexpr qsizetype blocco = 500;
constexpr qsizetype bloccoRighe = 100;
const QString tabellaNodi = QStringLiteral("GD02_DISTINTA");

std::optional<QJsonObject> immagine(const QVariant &testo)
{
    if (testo.isNull())
        return std::nullopt;
    return QJsonDocument::fromJson(testo.toString().toUtf8()).object();
}

// An undone removal of a large branch reads tens of thousands of dates: the stored form is read
// by the database layer's own parser, and only another one by Qt's.
QDateTime comeData(const QVariant &value)
{
    if (value.metaType().id() == QMetaType::QDateTime)
        return value.toDateTime();
    const QString text = value.toString();
    const QDateTime stored = db::storedvalues::parseDateTime(text);
    return stored.isValid() ? stored : QDateTime::fromString(text, Qt::ISODateWithMs);
}

// A value of the journal as the statements write it back.
QVariant valore(const QString &colonna, const QJsonValue &json)
{
    if (json.isNull() || json.isUndefined())
        return {};
    if (json.isBool())
        return qlonglong(json.toBool() ? 1 : 0);
    if (json.isDouble()) {
        const double number = json.toDouble();
        return number == double(qlonglong(number)) ? QVariant(qlonglong(number)) : QVariant(number);
    }
    if (storicostatements::isDateColumn(colonna))
        return comeData(json.toString());
    return json.toString();
}

// One text per value, so that the journal's value and the database's compare whatever types the
// two readings gave them.
QString confrontabile(const QString &colonna, const QVariant &value)
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("\x01");
    if (storicostatements::isDateColumn(colonna))
        return comeData(value).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    switch (value.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Double: return QString::number(value.toDouble(), 'g', 15);
    default: return value.toString();
    }
}

storicostatements::Riga riga(const QString &tabella, const QJsonObject &valori)
{
    storicostatements::Riga row;
    row.table = tabella;
    for (auto it = valori.constBegin(); it != valori.constEnd(); ++it)
        row.values.append({it.key(), valore(it.key(), it.value())});
    return row;
}

// The columns of an image laid over another's.
QJsonObject sovrapposta(QJsonObject sotto, const QJsonObject &sopra)
{
    for (auto it = sopra.constBegin(); it != sopra.constEnd(); ++it)
        sotto.insert(it.key(), it.value());
    return sotto;
}

// Whether setting a node back moves it or changes its period.
bool spostaIlLegame(const QJsonObject &prima, const QJsonObject &dopo)
{
    for (const char *colonna : {"GD02_IDPARENT_GD02", "GD02_DATAINIZIOVAL", "GD02_DATAFINEVAL"}) {
        const QString nome = QLatin1String(colonna);
        if (valore(nome, prima.value(nome)) != valore(nome, dopo.value(nome)))
            return true;
    }
    return false;
}

// Parents before their children, so that each re-inserted node finds its parent.
QList<storicostatements::Riga> inOrdineDiPadre(QList<storicostatements::Riga> nodi)
{
    const auto campo = [](const storicostatements::Riga &nodo, const QString &nome) {
        for (const auto &[colonna, value] : nodo.values) {
            if (colonna.compare(nome, Qt::CaseInsensitive) == 0)
                return value.toLongLong();
        }
        return qint64(0);
    };
    QSet<qint64> attesi;
    for (const storicostatements::Riga &nodo : std::as_const(nodi))
        attesi.insert(campo(nodo, QStringLiteral("GD02_ID")));
    QList<storicostatements::Riga> ordinati;
    QSet<qint64> scritti;
    while (!nodi.isEmpty()) {
        const qsizetype prima = nodi.size();
        for (qsizetype i = 0; i < nodi.size();) {
            const qint64 padre = campo(nodi.at(i), QStringLiteral("GD02_IDPARENT_GD02"));
            if (padre == 0 || !attesi.contains(padre) || scritti.contains(padre)) {
                scritti.insert(campo(nodi.at(i), QStringLiteral("GD02_ID")));
                ordinati.append(nodi.takeAt(i));
            } else {
                ++i;
            }
        }
        if (nodi.size() == prima) { // a cycle the journal cannot hold: written as it comes
            ordinati.append(nodi);
            break;
        }
    }
    return ordinati;
}

} // namespace

Annullamento::Annullamento(FormFrame &form, Albero &albero, Verifica &verifica, ControlliLegami &legami)
    : m_form(form)
    , m_albero(albero)
    , m_verifica(verifica)
    , m_legami(legami)
    , CMD_ANNULLA(new QPushButton(QStringLiteral("Ann&ulla")))
    , CMD_RIPETI(new QPushButton(QStringLiteral("R&ipeti")))
{
    CMD_ANNULLA->setObjectName(QStringLiteral("CMD_ANNULLA"));
    CMD_ANNULLA->setToolTip(QStringLiteral("Annulla la tua ultima operazione su questa distinta (Alt+U, Ctrl+Z)"));
    CMD_RIPETI->setObjectName(QStringLiteral("CMD_RIPETI"));
    CMD_RIPETI->setToolTip(
        QStringLiteral("Ripete la tua ultima operazione annullata su questa distinta (Alt+I, Ctrl+Y)"));
    CMD_ANNULLA->setEnabled(false);
    CMD_RIPETI->setEnabled(false);
    connect(CMD_ANNULLA, &QPushButton::clicked, this, &Annullamento::CMD_ANNULLA_Click);
    connect(CMD_RIPETI, &QPushButton::clicked, this, &Annullamento::CMD_RIPETI_Click);
}

void Annullamento::aggiornaComandi()
{
    const bool pronto = m_albero.idTipo() > 0 && m_form.connection() && !m_form.connection()->isReadOnly()
        && m_form.connection()->hasTable(QString::fromLatin1(storicostatements::OperationsTable));
    CMD_ANNULLA->setEnabled(pronto && ultimaAnnullabile().has_value());
    CMD_RIPETI->setEnabled(pronto && ultimaRipetibile().has_value());
}

void Annullamento::CMD_ANNULLA_Click()
{
    if (const std::optional<qint64> id = ultimaAnnullabile())
        inverti(*id);
    aggiornaComandi();
}

void Annullamento::CMD_RIPETI_Click()
{
    if (const std::optional<qint64> id = ultimaRipetibile())
        inverti(*id);
    aggiornaComandi();
}

std::optional<qint64> Annullamento::ultimaAnnullabile()
{
    std::optional<qint64> id;
    const fw::GlobalServices *services = m_form.globals();
    FormFrame::quietly([&] {
        const db::RecordsetPtr righe = m_form.connection()->openRecordset(storicostatements::lastUndoableQuery(
            services ? services->user() : QString(), m_form.companyCode(), m_albero.idTipo()));
        if (!righe->isEmpty())
            id = righe->valueAt(0, 0).toLongLong();
    });
    return id;
}

std::optional<qint64> Annullamento::ultimaRipetibile()
{
    std::optional<qint64> id;
    const fw::GlobalServices *services = m_form.globals();
    FormFrame::quietly([&] {
        const db::RecordsetPtr righe = m_form.connection()->openRecordset(storicostatements::lastRedoCandidateQuery(
            services ? services->user() : QString(), m_form.companyCode(), m_albero.idTipo()));
        if (!righe->isEmpty() && righe->valueAt(0, 1).toInt() == int(storicostatements::TipoOperazione::Annullamento))
            id = righe->valueAt(0, 0).toLongLong();
    });
    return id;
}

std::optional<Annullamento::Operazione> Annullamento::leggiOperazione(qint64 idOperazione)
{
    std::optional<Operazione> letta;
    m_form.step(procedura, [&] {
        const db::ConnectionPtr connection = m_form.connection();
        const db::RecordsetPtr testata = connection->openRecordset(storicostatements::operationQuery(idOperazione));
        if (testata->isEmpty())
            return;
        Operazione operazione;
        operazione.nome = MODGD_DISTINTA::NvlStringa(testata->value(QStringLiteral("GD90_OPERAZIONE")));
        operazione.descrizione = MODGD_DISTINTA::NvlStringa(testata->value(QStringLiteral("GD90_DESCR")));
        operazione.tipo = testata->value(QStringLiteral("GD90_INDTIPO")).toInt();
        operazione.invertita = !testata->value(QStringLiteral("GD90_ID_GD90ANNULLA")).isNull();

        // A row touched more than once (inserted, then given its guid) counts once: as the
        // operation found it and as it left it. An update's images hold only the columns it
        // changed (the before-image also those that name the row), so the images of one row are
        // laid one on another.
        QHash<QString, qsizetype> posizione;
        const db::RecordsetPtr righe = connection->openRecordset(storicostatements::operationRowsQuery(idOperazione));
        for (righe->moveFirst(); !righe->eof(); righe->moveNext()) {
            const QString tabella = righe->value(QStringLiteral("GD91_TABELLA")).toString();
            const qint64 chiave = righe->value(QStringLiteral("GD91_CHIAVE")).toLongLong();
            const QString id = tabella + QLatin1Char('/') + QString::number(chiave);
            std::optional<QJsonObject> prima = immagine(righe->value(QStringLiteral("GD91_PRIMA")));
            std::optional<QJsonObject> dopo = immagine(righe->value(QStringLiteral("GD91_DOPO")));
            if (prima && dopo) {
                // A node's update that left its link alone names its subject in the row's columns.
                if (tabella == tabellaNodi && !prima->contains(QStringLiteral("GD02_CLIFOR_CG44"))) {
                    prima->insert(QStringLiteral("GD02_TIPOCF_CG44"),
                                  QJsonValue::fromVariant(righe->value(QStringLiteral("GD91_TIPOCF_CG44"))));
                    prima->insert(QStringLiteral("GD02_CLIFOR_CG44"),
                                  QJsonValue::fromVariant(righe->value(QStringLiteral("GD91_CLIFOR_CG44"))));
                }
                dopo = storicostatements::wholeAfterImage(*prima, *dopo);
            }
            if (auto it = posizione.constFind(id); it != posizione.cend()) {
                Cambio &cambio = operazione.cambi[*it];
                if (cambio.prima && prima)
                    cambio.prima = sovrapposta(*prima, *cambio.prima);
                cambio.dopo = cambio.dopo && dopo ? std::optional(sovrapposta(*cambio.dopo, *dopo)) : dopo;
                continue;
            }
            posizione.insert(id, operazione.cambi.size());
            operazione.cambi.append({tabella, chiave, prima, dopo});
        }
        letta = operazione;
    });
    return letta;
}

// A row named as the clerk knows it; a row known by its key alone (one the undo would take with
// it) is named by its table's kind and key.
QString Annullamento::descriviRiga(const QString &tabella, qint64 chiave, const QJsonObject &valori)
{
    const auto testo = [&](const char *colonna) { return valori.value(QLatin1String(colonna)).toVariant().toString(); };
    if (valori.isEmpty()) {
        const QString genere = tabella == tabellaNodi       ? QStringLiteral("Nodo")
            : tabella == QLatin1String("GD12_PROMO")        ? QStringLiteral("Campagna in fattura")
            : tabella == QLatin1String("WF02_STATORIGA")    ? QStringLiteral("Stato")
            : tabella == QLatin1String("GD01_TIPODISTINTA") ? QStringLiteral("Tipo distinta")
                                                            : QStringLiteral("Parametri della ditta");
        return genere + QLatin1Char(' ') + QString::number(chiave);
    }
    if (tabella == tabellaNodi) {
        const QString soggetto = valori.value(QStringLiteral("GD02_TIPOCF_CG44")).toInt() != 0
            ? QStringLiteral("Fornitore ")
            : QStringLiteral("Cliente ");
        return QStringLiteral("Nodo %1 (%2%3)").arg(chiave).arg(soggetto, testo("GD02_CLIFOR_CG44"));
    }
    if (tabella == QLatin1String("GD12_PROMO"))
        return QStringLiteral("Campagna in fattura %1 del nodo %2").arg(testo("GD12_ID_MG94"), testo("GD12_ID_GD02"));
    if (tabella == QLatin1String("WF02_STATORIGA"))
        return QStringLiteral("Stato della riga %1").arg(testo("WF02_GUID"));
    if (tabella == QLatin1String("GD01_TIPODISTINTA"))
        return QStringLiteral("Tipo distinta %1").arg(testo("GD01_CODICE"));
    return QStringLiteral("Parametri della ditta %1").arg(chiave);
}

// The rows are read a few hundred at a time: an undone removal of a large branch brings back
// tens of thousands.
QString Annullamento::righeCambiate(const QList<Cambio> &cambi)
{
    const db::ConnectionPtr connection = m_form.connection();
    QHash<QString, QList<qint64>> chiavi;
    for (const Cambio &cambio : cambi)
        chiavi[cambio.tabella].append(cambio.chiave);
    // table/key -> the row as it stands, each value as it compares
    QHash<QString, QHash<QString, QString>> attuali;
    for (auto it = chiavi.cbegin(); it != chiavi.cend(); ++it) {
        const QString chiave = storicostatements::keyColumn(it.key());
        for (qsizetype start = 0; start < it->size(); start += blocco) {
            const db::RecordsetPtr righe = connection->openRecordset(
                storicostatements::selectRowsQuery(it.key(), it->mid(start, blocco)));
            const int campoChiave = righe->fieldIndex(chiave);
            for (int row = 0; row < righe->recordCount(); ++row) {
                QHash<QString, QString> valori;
                for (int field = 0; field < righe->fieldCount(); ++field) {
                    const QString nome = righe->field(field).name;
                    valori.insert(nome.toUpper(), confrontabile(nome, righe->valueAt(row, field)));
                }
                attuali.insert(it.key() + QLatin1Char('/')
                                   + QString::number(righe->valueAt(row, campoChiave).toLongLong()),
                               valori);
            }
        }
    }
    QString righe;
    for (const Cambio &cambio : cambi) {
        const auto attuale = attuali.constFind(cambio.tabella + QLatin1Char('/') + QString::number(cambio.chiave));
        bool uguale = (attuale == attuali.cend()) == !cambio.dopo.has_value();
        if (uguale && cambio.dopo) {
            for (auto it = cambio.dopo->constBegin(); uguale && it != cambio.dopo->constEnd(); ++it)
                uguale = confrontabile(it.key(), valore(it.key(), it.value())) == attuale->value(it.key().toUpper());
        }
        if (!uguale)
            righe += descriviRiga(cambio.tabella, cambio.chiave, cambio.dopo ? *cambio.dopo : *cambio.prima)
                + QLatin1Char('\n');
    }
    return righe;
}

// The checks run only where they can refuse: the definitive bonus on nodes a condition reaches,
// the overlap on subjects that have another link now; both sets are found a few hundred at a time.
QString Annullamento::verificaLegami(const QList<Cambio> &cambi)
{
    const db::ConnectionPtr connection = m_form.connection();
    QList<qint64> daTogliere;
    QList<qint64> soggetti;
    for (const Cambio &cambio : cambi) {
        if (cambio.tabella != tabellaNodi)
            continue;
        if (!cambio.prima)
            daTogliere.append(cambio.chiave);
        else if (!cambio.dopo)
            soggetti.append(valore(QString(), cambio.prima->value(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong());
    }
    const auto trovati = [&](const QList<qint64> &chiavi, const std::function<QString(const QList<qint64> &)> &query) {
        QSet<qint64> found;
        for (qsizetype start = 0; start < chiavi.size(); start += blocco) {
            const db::RecordsetPtr righe = connection->openRecordset(query(chiavi.mid(start, blocco)));
            for (int row = 0; row < righe->recordCount(); ++row)
                found.insert(righe->valueAt(row, 0).toLongLong());
        }
        return found;
    };
    const QSet<qint64> conCondizioni = trovati(daTogliere, &storicostatements::nodesWithConditionsQuery);
    const QSet<qint64> legati = trovati(soggetti, [&](const QList<qint64> &codici) {
        return storicostatements::linkedSubjectsQuery(m_form.companyCode(), m_albero.tipoSoggetto(), codici);
    });

    for (const Cambio &cambio : cambi) {
        if (cambio.tabella != tabellaNodi)
            continue;
        if (!cambio.prima) {
            // Removing what the operation inserted: as a removal, never under a definitive bonus.
            if (conCondizioni.contains(cambio.chiave) && m_legami.PremioDefinitivo(cambio.chiave, std::nullopt))
                return ControlliLegami::messaggioPremioDefinitivo(false);
            continue;
        }
        const QJsonObject &prima = *cambio.prima;
        const QVariant codice = valore(QString(), prima.value(QStringLiteral("GD02_CLIFOR_CG44")));
        if (codice.isNull() || (!cambio.dopo && !legati.contains(codice.toLongLong())))
            continue;
        // Setting back billing, priorities or description leaves the link as the rules found it.
        if (cambio.dopo && !spostaIlLegame(prima, *cambio.dopo))
            continue;
        Verifica::Nodo nodo;
        nodo.idNodo = cambio.chiave;
        nodo.idPadre = valore(QString(), prima.value(QStringLiteral("GD02_IDPARENT_GD02"))).toLongLong();
        nodo.codice = codice.toLongLong();
        nodo.dataInizio = comeData(prima.value(QStringLiteral("GD02_DATAINIZIOVAL")).toString()).date();
        nodo.dataFine = comeData(prima.value(QStringLiteral("GD02_DATAFINEVAL")).toString()).date();
        const Verifica::Esito esito = m_verifica.VerificaNodo(Verifica::Modo::Modifica, nodo);
        if (!esito.valido)
            return esito.rifiutoPremioDefinitivo ? ControlliLegami::messaggioPremioDefinitivo(true) : esito.righe;
    }
    return {};
}

// Rows the operation changed are set back, rows it removed come back (parents first, with their
// ids and guids), rows it inserted go (the last inserted first).
void Annullamento::scrivi(const QList<Cambio> &cambi)
{
    const db::ConnectionPtr connection = m_form.connection();
    for (const Cambio &cambio : cambi) {
        if (cambio.prima && cambio.dopo)
            connection->execute(
                storicostatements::updateRowStatement(riga(cambio.tabella, *cambio.prima), cambio.chiave));
    }
    QHash<QString, QList<storicostatements::Riga>> daReinserire;
    for (const Cambio &cambio : cambi) {
        if (cambio.prima && !cambio.dopo)
            daReinserire[cambio.tabella].append(riga(cambio.tabella, *cambio.prima));
    }
    const bool identita = !connection->translatesTsql();
    for (const QString &tabella : {QStringLiteral("GD01_TIPODISTINTA"), tabellaNodi, QStringLiteral("GD03_PARAMETRI"),
                                   QStringLiteral("GD12_PROMO"), QStringLiteral("WF02_STATORIGA")}) {
        const QList<storicostatements::Riga> righe = tabella == tabellaNodi
            ? inOrdineDiPadre(daReinserire.value(tabella))
            : daReinserire.value(tabella);
        if (righe.isEmpty())
            continue;
        const bool chiaveGenerata = identita && storicostatements::hasGeneratedKey(tabella);
        if (chiaveGenerata)
            connection->execute(storicostatements::identityInsertStatement(tabella, true));
        for (qsizetype start = 0; start < righe.size(); start += bloccoRighe)
            connection->execute(storicostatements::insertRowsStatement(righe.mid(start, bloccoRighe)));
        if (chiaveGenerata)
            connection->execute(storicostatements::identityInsertStatement(tabella, false));
    }
    // The last inserted first; a run of one table goes in one statement.
    QString tabella;
    QList<qint64> chiavi;
    const auto togli = [&] {
        if (!chiavi.isEmpty())
            connection->execute(storicostatements::deleteRowsStatement(tabella, chiavi));
        chiavi.clear();
    };
    for (auto it = cambi.crbegin(); it != cambi.crend(); ++it) {
        if (it->prima || !it->dopo)
            continue;
        if (it->tabella != tabella || chiavi.size() == blocco) {
            togli();
            tabella = it->tabella;
        }
        chiavi.append(it->chiave);
    }
    togli();
}

bool Annullamento::inverti(qint64 idOperazione)
{
    const std::optional<Operazione> operazione = leggiOperazione(idOperazione);
    if (!operazione)
        return false;
    const bool ripristino = operazione->tipo == int(storicostatements::TipoOperazione::Annullamento);
    const QString esito = ripristino ? QStringLiteral("Operazione non ripetuta")
                                     : QStringLiteral("Operazione non annullata");
    if (operazione->invertita) {
        m_form.avviso(
            esito
            + (ripristino ? QStringLiteral(": è già stata ripetuta.") : QStringLiteral(": è già stata annullata.")));
        return false;
    }
    const db::ConnectionPtr connection = m_form.connection();

    // Writing a generated key on the server needs a right that is checked before anything changes.
    if (!connection->translatesTsql()) {
        QSet<QString> tabelle;
        for (const Cambio &cambio : operazione->cambi) {
            if (cambio.prima && !cambio.dopo && storicostatements::hasGeneratedKey(cambio.tabella))
                tabelle.insert(cambio.tabella);
        }
        for (const QString &tabella : std::as_const(tabelle)) {
            bool permesso = false;
            if (!m_form.step(procedura, [&] {
                    permesso = connection->openRecordset(storicostatements::identityInsertPermissionQuery(tabella))
                                   ->valueAt(0, 0)
                                   .toInt()
                        == 1;
                }))
                return false;
            if (!permesso) {
                m_form.avviso(esito
                              + QStringLiteral(": per riportare le righe con i loro identificativi serve il "
                                               "permesso ALTER sulla tabella ")
                              + tabella + QStringLiteral(", che l'utente del database non ha."));
                return false;
            }
        }
    }

    OperazioneStorico nuova(m_form, procedura,
                            ripristino ? QStringLiteral("Ripristino") : QStringLiteral("Annullamento"),
                            m_albero.idTipo(), operazione->nome);
    nuova.setReverses(ripristino ? storicostatements::TipoOperazione::Ripristino
                                 : storicostatements::TipoOperazione::Annullamento,
                      idOperazione);
    if (!nuova.inizia() || !nuova.isActive())
        return false;

    // From here the transaction holds the write lock: what is read stays true until the commit.
    QString rifiuto;
    if (!m_form.step(procedura, [&] { rifiuto = righeCambiate(operazione->cambi); })) {
        nuova.annulla();
        return false;
    }
    if (!rifiuto.isEmpty()) {
        nuova.annulla();
        m_form.avviso(esito + QStringLiteral(": dopo di essa sono cambiate queste righe:\n") + rifiuto);
        return false;
    }
    rifiuto = verificaLegami(operazione->cambi);
    if (!rifiuto.isEmpty()) {
        nuova.annulla();
        m_form.avviso(esito + QStringLiteral(":\n") + rifiuto);
        return false;
    }

    // Never half an undo: a statement that fails rolls the whole of it back before the error
    // dialog, and Retry starts it again from the journal.
    QString altreRighe;
    bool giaInvertita = false;
    std::optional<db::DatabaseError> errore;
    try {
        scrivi(operazione->cambi);
        // A removal cascades: what hung on a node since the operation would go with it.
        QSet<QString> attese;
        for (const Cambio &cambio : operazione->cambi)
            attese.insert(cambio.tabella + QLatin1Char('/') + QString::number(cambio.chiave));
        const db::RecordsetPtr registrate = connection->openRecordset(
            storicostatements::recordedKeysQuery(*nuova.id()));
        for (registrate->moveFirst(); !registrate->eof(); registrate->moveNext()) {
            const QString tabella = registrate->value(0).toString();
            const qint64 chiave = registrate->value(1).toLongLong();
            if (!attese.contains(tabella + QLatin1Char('/') + QString::number(chiave)))
                altreRighe += descriviRiga(tabella, chiave, {}) + QLatin1Char('\n');
        }
        if (altreRighe.isEmpty())
            giaInvertita = connection->execute(storicostatements::markReversedStatement(idOperazione, *nuova.id()))
                == 0;
    } catch (const db::DatabaseError &error) {
        errore = error;
    }
    if (errore) {
        nuova.annulla();
        if (m_form.ErrorHandler(procedura, errore->message(), errore->errors()) == fw::Answer::Retry)
            return inverti(idOperazione);
        return false;
    }
    if (!altreRighe.isEmpty() || giaInvertita) {
        nuova.annulla();
        if (!altreRighe.isEmpty())
            m_form.avviso(esito + QStringLiteral(": toccherebbe anche righe aggiunte dopo di essa:\n") + altreRighe);
        else if (giaInvertita)
            m_form.avviso(esito
                          + (ripristino ? QStringLiteral(": è già stata ripetuta.")
                                        : QStringLiteral(": è già stata annullata.")));
        return false;
    }
    if (!nuova.fine())
        return false;
    emit distintaCambiata();
    return true;
}

} // namespace distinta
