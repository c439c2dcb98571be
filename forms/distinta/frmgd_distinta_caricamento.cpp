// Loading a classification into the tree: the node rows of the chosen type, the record frame
// that keeps the hidden fields on the focused node, the texts drawn in the cells, and the header
// line that names the classification and its division.
#include "forms/distinta/frmgd_distinta.h"

#include "data/columnwidths.h"
#include "data/distintastatements.h"
#include "data/modgd_distinta.h"
#include "framework/globalservices.h"
#include "framework/recordframe.h"
#include "framework/treelist/treelist.h"
#include "platform/os/windowupdatelock.h"

#include <QLabel>
#include <QPushButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSet>
#include <QTreeWidget>

void FRMGD_DISTINTA::CaricaDistinta()
{
    const QString procedure = QStringLiteral("CaricaDistinta");
    // The previous rows go before the new ones are read, so that a reload needs about the memory
    // of a first load; a load that fails leaves an empty tree behind.
    scaricaDistinta();

    QString sql;
    if (!step(procedure, [&] { sql = statementDistinta(); }) || sql.isEmpty())
        return;
    db::RecordsetPtr nodi;
    if (!step(procedure, [&] { nodi = apriNodi(sql); }))
        return;
    filtraAllaData(nodi);
    CMD_ESPANDICOLLASSA->setText(testo(94563, QStringLiteral("ESPANDI/COMPRIMI")));

    if (!nodi || nodi->isEmpty()) {
        // An empty classification is no failure: the tree simply shows nothing.
        m_nodi = nodi;
        return;
    }

    os::WindowUpdateLock freeze(TVW_DISTINTA);
    caricaTestiDisegno(*nodi);
    if (!step(procedure, [&] { legaAlbero(nodi, sql); })) {
        scaricaDistinta();
        return;
    }
    espandiTutto();
    CaricaLivelli();
}

// Lets go of the loaded classification: its record frame, the tree's rows, the texts drawn in
// its cells and its levels.
void FRMGD_DISTINTA::scaricaDistinta()
{
    DistruggiFrameworkDistinta();
    TVW_DISTINTA->setRecordset(nullptr);
    m_nodi.reset();
    m_ragioniSocialiFatt.clear();
    m_descrizioniPriorita.clear();
    CMB_LIVELLO->clear();
}

// The type identifier is the selected key without its first letter; a root's key ("P0", "P1")
// names no type, so choosing a root loads nothing.
QString FRMGD_DISTINTA::statementDistinta()
{
    const QString key = chiaveSelezionata();
    if (key.isEmpty())
        return {};
    m_idDistinta = key.mid(1);
    return distintastatements::nodesQuery(companyCode(), m_tipoSoggetto, m_idDistinta.toLongLong());
}

db::RecordsetPtr FRMGD_DISTINTA::apriNodi(const QString &sql)
{
    return connection()->openRecordset(sql);
}

namespace {

struct CampiTesti
{
    int billing;
    int priorities[2];

    explicit CampiTesti(const db::Recordset &nodi)
        : billing(nodi.fieldIndex(QStringLiteral("GD02_CLIFORFATT_CG44")))
        , priorities{nodi.fieldIndex(QStringLiteral("GD02_IDSTRUTTURA_LP09")),
                     nodi.fieldIndex(QStringLiteral("GD02_IDLOCALIZZATA_LP09"))}
    {
    }
};

void raccogli(QSet<qint64> &into, const db::Recordset &nodi, int row, int field)
{
    bool ok = false;
    const qint64 number = nodi.valueAt(row, field).toLongLong(&ok);
    if (ok)
        into.insert(number);
}

} // namespace

// The billing names and the priority descriptions are read once for every distinct value of the
// load, so that drawing a cell never reaches the database.
void FRMGD_DISTINTA::caricaTestiDisegno(const db::Recordset &nodi)
{
    m_ragioniSocialiFatt.clear();
    m_descrizioniPriorita.clear();
    const CampiTesti campi(nodi);
    QSet<qint64> billingCodes;
    QSet<qint64> priorities;
    for (int row = 0; row < nodi.recordCount(); ++row) {
        raccogli(billingCodes, nodi, row, campi.billing);
        for (int field : campi.priorities)
            raccogli(priorities, nodi, row, field);
    }
    leggiTestiDisegno(billingCodes, priorities);
}

void FRMGD_DISTINTA::completaTestiDisegno(const db::Recordset &nodi, int row)
{
    const CampiTesti campi(nodi);
    QSet<qint64> billingCodes;
    QSet<qint64> priorities;
    raccogli(billingCodes, nodi, row, campi.billing);
    for (int field : campi.priorities)
        raccogli(priorities, nodi, row, field);
    billingCodes.removeIf([this](qint64 code) { return m_ragioniSocialiFatt.contains(code); });
    priorities.removeIf([this](qint64 id) { return m_descrizioniPriorita.contains(id); });
    leggiTestiDisegno(billingCodes, priorities);
}

void FRMGD_DISTINTA::leggiTestiDisegno(const QSet<qint64> &billingCodes, const QSet<qint64> &priorities)
{
    const QString procedure = QStringLiteral("TVW_DISTINTA_OnCustomDrawCell");
    for (qint64 code : billingCodes) {
        if (!step(procedure, [&] { m_ragioniSocialiFatt.insert(code, AssegnaRagioneSociale(code)); }))
            return;
    }
    for (qint64 id : priorities) {
        if (!step(procedure, [&] { m_descrizioniPriorita.insert(id, DescrizionePriorita(id)); }))
            return;
    }
}

QString FRMGD_DISTINTA::AssegnaRagioneSociale(qint64 codice)
{
    const db::RecordsetPtr name = connection()->openRecordset(
        distintastatements::businessNameQuery(companyCode(), m_tipoSoggetto, codice));
    return name->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(name->valueAt(0, 0));
}

QString FRMGD_DISTINTA::DescrizionePriorita(qint64 idPriorita)
{
    const db::RecordsetPtr description = connection()->openRecordset(
        distintastatements::priorityDescriptionQuery(idPriorita));
    return description->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(description->valueAt(0, 0));
}

// The node recordset behind its record frame, which keeps the hidden fields on the focused
// node, and the hierarchy the tree builds from the rows' key and parent fields.
void FRMGD_DISTINTA::legaAlbero(const db::RecordsetPtr &nodi, const QString &sql)
{
    m_nodi = nodi;
    auto *frame = new fw::RecordFrame(connection(), this);
    frame->setLogService(logService(), windowTitle());
    m_frameDistinta = frame;
    frame->attach(nodi, sql, QStringLiteral("GD02_ID"));
    frame->bind(TXT_IDPRIORITA_STRUTTURA, QStringLiteral("GD02_IDSTRUTTURA_LP09"));
    frame->bind(TXT_IDPRIORITA_LOCALIZZATA, QStringLiteral("GD02_IDLOCALIZZATA_LP09"));
    frame->bind(CBO_EREPROMO, QStringLiteral("GD02_INDEREPROMO"));
    frame->bind(TXT_GD02_ID, QStringLiteral("GD02_ID"));

    // In-tree edits and propagations stamp who changed the node and when.
    const fw::GlobalServices *services = globals();
    const QString group = columnwidths::fitToColumn(QStringLiteral("GD02_GRUPPOVAR"), services ? services->userGroup() : QString());
    const QString user = columnwidths::fitToColumn(QStringLiteral("GD02_UTENTEVAR"), services ? services->user() : QString());
    nodi->setUpdateStamp([group, user] {
        return QList<std::pair<QString, QVariant>>{{QStringLiteral("GD02_DATAVAR"), QDateTime::currentDateTime()},
                                                   {QStringLiteral("GD02_GRUPPOVAR"), group},
                                                   {QStringLiteral("GD02_UTENTEVAR"), user}};
    });

    TVW_DISTINTA->setKeyField(QStringLiteral("GD02_ID"));
    TVW_DISTINTA->setParentField(QStringLiteral("GD02_IDPARENT_GD02"));
    TVW_DISTINTA->setRecordset(nodi);
}

void FRMGD_DISTINTA::espandiTutto()
{
    TVW_DISTINTA->beginUpdate();
    TVW_DISTINTA->expandAll();
    TVW_DISTINTA->endUpdate();
}

void FRMGD_DISTINTA::DistruggiFrameworkDistinta()
{
    step(QStringLiteral("DistruggiFrameworkDistinta"), [this] { delete m_frameDistinta; });
}

void FRMGD_DISTINTA::CaricaIntestazioneDistinta()
{
    step(QStringLiteral("CaricaIntestazioneDistinta"), [this] {
        const QString key = chiaveSelezionata();
        if (key.isEmpty() || key.startsWith(QLatin1Char('P'))) {
            lblDescDistinta->setText(QStringLiteral("Struttura distinta"));
            return;
        }

        // A type without division has no row here: its division stays null.
        m_divisione.reset();
        m_guidDistinta.clear();
        QString descrizioneDivisione;
        const db::RecordsetPtr header = connection()->openRecordset(distintastatements::headerQuery(key.mid(1).toLongLong()));
        if (!header->isEmpty()) {
            header->moveFirst();
            const QVariant division = header->value(QStringLiteral("GD01_IDDIV_CO1A"));
            if (!division.isNull())
                m_divisione = division.toLongLong();
            m_guidDistinta = MODGD_DISTINTA::NvlStringa(header->value(QStringLiteral("GD01_GUID")));
            descrizioneDivisione = MODGD_DISTINTA::NvlStringa(header->value(QStringLiteral("CO1A_DESCR")));
        }

        const QString kindWord = traduci(m_tipoSoggetto == 0 ? QStringLiteral("CLIENTI") : QStringLiteral("FORNITORI"));
        QString title = kindWord + QStringLiteral("      ") + QLatin1Char(' ') + traduci(QStringLiteral("DISTINTA"))
                        + QLatin1Char(' ') + TVW_SELDISTINTE->currentItem()->text(0);
        // The date of a list seen as of a day comes before the division, where a narrow window
        // still shows it.
        title += intestazioneData();
        title += QStringLiteral("      (");
        if (m_divisione)
            title += QStringLiteral("Divisione:") + QLatin1Char(' ') + QString::number(*m_divisione)
                     + QStringLiteral(" - ") + descrizioneDivisione;
        else
            title += QStringLiteral("Divisioni: tutte");
        title += QLatin1Char(')');
        lblDescDistinta->setText(title);
    });
}

// Only the text of the billing name and of the two priority columns changes, from the texts
// read at load.
void FRMGD_DISTINTA::TVW_DISTINTA_OnCustomDrawCell(const fw::TreeListNode &node, const QString &column, QString &text)
{
    const QHash<qint64, QString> *texts = nullptr;
    QVariant value;
    if (column == QLatin1String("RagioneSocialeFatt")) {
        texts = &m_ragioniSocialiFatt;
        value = node.value(QStringLiteral("trGD02_CLIFORFATT_CG44"));
    } else if (column == QLatin1String("trGD02_IDSTRUTTURA_LP09") || column == QLatin1String("trGD02_IDLOCALIZZATA_LP09")) {
        texts = &m_descrizioniPriorita;
        value = node.value(column);
    } else {
        return;
    }
    bool ok = false;
    const qint64 key = value.toLongLong(&ok);
    text = ok ? texts->value(key) : QString();
}
