// Loading a classification into the tree: the node rows of the chosen type, the record frame
// that keeps the hidden fields on the focused node, the texts drawn in the cells, and the header
// line that names the classification and its division.
#include "forms/distinta/albero.h"

#include "data/testiregole.h"
#include "data/columnwidths.h"
#include "data/distintastatements.h"
#include "data/modgd_distinta.h"
#include "forms/distinta/alladata.h"
#include "forms/distinta/livelli.h"
#include "forms/distinta/selettore.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/elidedlabel.h"
#include "framework/emptyviewhint.h"
#include "framework/globalservices.h"
#include "framework/recordframe.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"
#include "framework/windowupdatelock.h"

#include <QLabel>
#include <QTreeWidget>

namespace distinta {

namespace {

// The designed colours of the tree's header, footer and header text; the theme replaces them.
const QColor coloreIntestazione {204, 225, 255};
const QColor colorePiede {226, 250, 254};
const QColor coloreTestoIntestazione {0, 0, 128};

const QString nodoEliminatoAltrove = QStringLiteral(
    "Il nodo è stato eliminato da un altro utente dopo la lettura: la distinta viene ricaricata.");

struct CampiTesti
{
    int billing;
    int priorities[2];

    explicit CampiTesti(const db::Recordset &nodi)
        : billing(nodi.fieldIndex(QStringLiteral("GD02_CLIFORFATT_CG44")))
        , priorities {nodi.fieldIndex(QStringLiteral("GD02_IDSTRUTTURA_LP09")),
                      nodi.fieldIndex(QStringLiteral("GD02_IDLOCALIZZATA_LP09"))}
    { }
};

void raccogli(QSet<qint64> &into, const db::Recordset &nodi, int row, int field)
{
    bool ok = false;
    const qint64 number = nodi.valueAt(row, field).toLongLong(&ok);
    if (ok)
        into.insert(number);
}

} // namespace

Albero::Albero(FormFrame &form, Selettore &selettore)
    : m_form(form)
    , m_selettore(selettore)
    , TVW_DISTINTA(new fw::TreeList)
    , lblDescDistinta(new fw::ElidedLabel(QStringLiteral("Struttura distinta")))
{
    TVW_DISTINTA->setObjectName(QStringLiteral("TVW_DISTINTA"));
    lblDescDistinta->setObjectName(QStringLiteral("lblDescDistinta"));
    QFont titleFont = lblDescDistinta->font();
    titleFont.setBold(true);
    lblDescDistinta->setFont(titleFont);
    lblDescDistinta->setTextInteractionFlags(Qt::TextSelectableByMouse);
    creaColonne();
    m_livelli = std::make_unique<Livelli>(form, TVW_DISTINTA);
    m_allaData = std::make_unique<AllaData>(form, TVW_DISTINTA);
    connect(m_allaData.get(), &AllaData::dataCambiata, this, [this] {
        CaricaIntestazioneDistinta();
        CaricaDistinta();
    });
    // A refused write is handled once the tree has finished the edit that caused it.
    connect(TVW_DISTINTA, &fw::TreeList::writeFailed, this, [this](const db::DatabaseError &error) {
        QMetaObject::invokeMethod(
            this, [this, error] { rileggiNodoInConflitto(error); }, Qt::QueuedConnection);
    });

    m_vuoto = new fw::EmptyViewHint(TVW_DISTINTA->view(), [this]() -> QString {
        if (!m_selettore.distintaScelta())
            return QStringLiteral("Scegliere una distinta nella pagina «Distinte».");
        return QStringLiteral(
            "La distinta è vuota: spuntare i soggetti nella pagina «Anagrafiche» e premere «Aggiungi capostipite».");
    });
    // The text follows the chosen type.
    connect(m_selettore.widget(), &QTreeWidget::itemSelectionChanged, m_vuoto, &fw::EmptyViewHint::refresh,
            Qt::QueuedConnection);
}

Albero::~Albero()
{
    delete m_vuoto;
}

// The designed column set of the tree: every other part addresses the columns by these names.
void Albero::creaColonne()
{
    using fw::TreeListColumnKind;
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    QList<fw::TreeListComboItem> billingRules;
    for (int rule = 0; rule < testiregole::regoleFatturazione().size(); ++rule)
        billingRules.append({rule, testiregole::regoleFatturazione().at(rule), {}});

    TVW_DISTINTA->setBandCaption(QStringLiteral("Dettaglio distinta"));
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_CLIFOR_CG44"),
                             .caption = QStringLiteral("Codice"),
                             .fieldName = QStringLiteral("GD02_CLIFOR_CG44"),
                             .alignment = right,
                             .readOnly = true,
                             .inPlaceEditor = false,
                             .designWidth = 1200});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("RagioneSociale"),
                             .caption = QStringLiteral("Ragione Sociale"),
                             .fieldName = QStringLiteral("RagioneSociale"),
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_DATAINIZIOVAL"),
                             .caption = QStringLiteral("Data inizio"),
                             .fieldName = QStringLiteral("GD02_DATAINIZIOVAL"),
                             .kind = TreeListColumnKind::Date,
                             .alignment = right,
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_DATAFINEVAL"),
                             .caption = QStringLiteral("Data fine"),
                             .fieldName = QStringLiteral("GD02_DATAFINEVAL"),
                             .kind = TreeListColumnKind::Date,
                             .alignment = right,
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_TIPOANAGFATT"),
                             .caption = QStringLiteral("Tipo fatturazione"),
                             .fieldName = QStringLiteral("GD02_TIPOANAGFATT"),
                             .kind = TreeListColumnKind::ImageCombo,
                             .designWidth = 300,
                             .comboItems = billingRules});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_CLIFORFATT_CG44"),
                             .caption = QStringLiteral("Codice anagrafica"),
                             .fieldName = QStringLiteral("GD02_CLIFORFATT_CG44"),
                             .inPlaceEditor = false,
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("RagioneSocialeFatt"),
                             .caption = QStringLiteral("Rag. Sociale fatturazione"),
                             .kind = TreeListColumnKind::Unbound,
                             .inPlaceEditor = false,
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_DESCR"),
                             .caption = QStringLiteral("Descrizione"),
                             .fieldName = QStringLiteral("GD02_DESCR"),
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_IDSTRUTTURA_LP09"),
                             .caption = QStringLiteral("Priorità struttura"),
                             .fieldName = QStringLiteral("GD02_IDSTRUTTURA_LP09"),
                             .kind = TreeListColumnKind::ButtonEdit,
                             .readOnly = true,
                             .designWidth = 300});
    TVW_DISTINTA->addColumn({.name = QStringLiteral("trGD02_IDLOCALIZZATA_LP09"),
                             .caption = QStringLiteral("Priorità localizzata"),
                             .fieldName = QStringLiteral("GD02_IDLOCALIZZATA_LP09"),
                             .kind = TreeListColumnKind::ButtonEdit,
                             .readOnly = true,
                             .designWidth = 300});
    TVW_DISTINTA->setFillWidth(true);
    // Whose row it is stays in view while the other columns scroll sideways.
    TVW_DISTINTA->setFrozenColumnCount(2);

    const QFont tahoma(QStringLiteral("Tahoma"));
    TVW_DISTINTA->setFont(tahoma);
    TVW_DISTINTA->setHeaderFont(tahoma);
    // The suite's tree colours, applied on purpose.
    TVW_DISTINTA->setColors(
        {.header = coloreIntestazione, .headerText = coloreTestoIntestazione, .footer = colorePiede});

    // Whole values of the columns whose kind does not say how wide they are.
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_CLIFOR_CG44"), QStringLiteral("9999999"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("RagioneSociale"),
                                       QStringLiteral("Salumeria Rossi & Bianchi S.n.c."));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_CLIFORFATT_CG44"), QStringLiteral("9999999"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("RagioneSocialeFatt"), QStringLiteral("Commerciale Rossi Srl"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_DESCR"), QStringLiteral("Descrizione breve"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_IDSTRUTTURA_LP09"), QStringLiteral("Priorità 99"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_IDLOCALIZZATA_LP09"), QStringLiteral("Priorità 99"));

    connect(TVW_DISTINTA, &fw::TreeList::customDrawCell, this, &Albero::TVW_DISTINTA_OnCustomDrawCell);
}

void Albero::TraduzioneIntestazione_TVW_DISTINTA()
{
    m_form.step(QStringLiteral("TraduzioneIntestazione_TVW_DISTINTA"), [this] {
        TVW_DISTINTA->setBandCaption(m_form.translated(TVW_DISTINTA->bandCaption()));
        for (int i = 0; i < TVW_DISTINTA->columnCount(); ++i) {
            const fw::TreeListColumn &column = TVW_DISTINTA->column(i);
            TVW_DISTINTA->setColumnCaption(column.name, m_form.translated(column.caption));
        }
    });
}

fw::RecordFrame *Albero::frameDistinta() const
{
    return m_frameDistinta;
}

void Albero::CaricaDistinta()
{
    leggiDistinta();
    emit distintaCaricata();
}

void Albero::leggiDistinta()
{
    const QString procedure = QStringLiteral("CaricaDistinta");
    // The previous rows go before the new ones are read, so that a reload needs about the memory
    // of a first load; a load that fails leaves an empty tree behind.
    scaricaDistinta();

    QString sql;
    if (!m_form.step(procedure, [&] { sql = statementDistinta(); }) || sql.isEmpty())
        return;
    db::RecordsetPtr nodi;
    if (!m_form.step(procedure, [&] { nodi = apriNodi(sql); }))
        return;
    m_allaData->filtra(nodi);
    m_livelli->preparaCaricamento();

    if (!nodi || nodi->isEmpty()) {
        // An empty classification is no failure: the tree simply shows nothing.
        m_nodi = nodi;
        return;
    }

    fw::WindowUpdateLock freeze(TVW_DISTINTA);
    caricaTestiDisegno(*nodi);
    if (!m_form.step(procedure, [&] { legaAlbero(nodi, sql); })) {
        scaricaDistinta();
        return;
    }
    espandiTutto();
    m_livelli->CaricaLivelli();
}

void Albero::scaricaDistinta()
{
    DistruggiFrameworkDistinta();
    TVW_DISTINTA->setRecordset(nullptr);
    m_nodi.reset();
    m_ragioniSocialiFatt.clear();
    m_descrizioniPriorita.clear();
    m_livelli->svuota();
}

// The type identifier is the selected key without its first letter; a root's key ("P0", "P1")
// names no type, so choosing a root loads nothing.
QString Albero::statementDistinta()
{
    const QString key = m_selettore.chiaveSelezionata();
    if (key.isEmpty())
        return {};
    m_idDistinta = key.mid(1);
    return distintastatements::nodesQuery(m_form.companyCode(), m_tipoSoggetto, idTipo());
}

db::Recordset::UpdateStamp Albero::timbroModifica(const QString &gruppo, const QString &utente)
{
    const QString group = columnwidths::fitToColumn(QStringLiteral("GD02_GRUPPOVAR"), gruppo);
    const QString user = columnwidths::fitToColumn(QStringLiteral("GD02_UTENTEVAR"), utente);
    return [group, user] {
        return QList<std::pair<QString, QVariant>> {{QStringLiteral("GD02_DATAVAR"), QDateTime::currentDateTime()},
                                                    {QStringLiteral("GD02_GRUPPOVAR"), group},
                                                    {QStringLiteral("GD02_UTENTEVAR"), user}};
    };
}

db::RecordsetPtr Albero::apriNodi(const QString &sql)
{
    return m_form.connection()->openRecordset(sql);
}

// The billing names and the priority descriptions are read once for every distinct value of the
// load, so that drawing a cell never reaches the database.
void Albero::caricaTestiDisegno(const db::Recordset &nodi)
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

void Albero::leggiTestiDisegno(const QSet<qint64> &billingCodes, const QSet<qint64> &priorities)
{
    const QString procedure = QStringLiteral("TVW_DISTINTA_OnCustomDrawCell");
    for (qint64 code : billingCodes) {
        if (!m_form.step(procedure, [&] { m_ragioniSocialiFatt.insert(code, AssegnaRagioneSociale(code)); }))
            return;
    }
    for (qint64 id : priorities) {
        if (!m_form.step(procedure, [&] { m_descrizioniPriorita.insert(id, DescrizionePriorita(id)); }))
            return;
    }
}

void Albero::ricordaDescrizionePriorita(const QString &procedure, qint64 idPriorita)
{
    if (!m_descrizioniPriorita.contains(idPriorita))
        m_form.step(procedure, [&] { m_descrizioniPriorita.insert(idPriorita, DescrizionePriorita(idPriorita)); });
}

QString Albero::AssegnaRagioneSociale(qint64 codice)
{
    const db::RecordsetPtr name = m_form.connection()->openRecordset(
        distintastatements::businessNameQuery(m_form.companyCode(), m_tipoSoggetto, codice));
    return name->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(name->valueAt(0, 0));
}

QString Albero::DescrizionePriorita(qint64 idPriorita)
{
    const db::RecordsetPtr description = m_form.connection()->openRecordset(
        distintastatements::priorityDescriptionQuery(idPriorita));
    return description->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(description->valueAt(0, 0));
}

// The node recordset behind its record frame, which keeps the hidden fields on the focused
// node, and the hierarchy the tree builds from the rows' key and parent fields.
void Albero::legaAlbero(const db::RecordsetPtr &nodi, const QString &sql)
{
    m_nodi = nodi;
    auto *frame = new fw::RecordFrame(m_form.connection(), &m_form);
    frame->setLogService(m_form.logService(), m_form.windowTitle());
    m_frameDistinta = frame;
    frame->attach(nodi, sql, QStringLiteral("GD02_ID"));
    for (const auto &[control, field] : std::as_const(m_controlliLegati))
        frame->bind(control, field);

    // In-tree edits and propagations stamp who changed the node and when.
    const fw::GlobalServices *services = m_form.globals();
    nodi->setUpdateStamp(
        timbroModifica(services ? services->userGroup() : QString(), services ? services->user() : QString()));

    // Each value typed into a cell is one operation of the journal.
    TVW_DISTINTA->model()->setWriteScope([this](const std::function<void()> &write) {
        OperazioneStorico operazione(m_form, QStringLiteral("TVW_DISTINTA_OnEdited"), QStringLiteral("Modifica"),
                                     idTipo());
        if (!operazione.inizia())
            throw db::DatabaseError(m_form.connection()->errors());
        write();
    });
    TVW_DISTINTA->setKeyField(QStringLiteral("GD02_ID"));
    TVW_DISTINTA->setParentField(QStringLiteral("GD02_IDPARENT_GD02"));
    TVW_DISTINTA->setRecordset(nodi);
}

void Albero::espandiTutto()
{
    fw::WindowUpdateLock freeze(TVW_DISTINTA);
    TVW_DISTINTA->expandAll();
}

void Albero::DistruggiFrameworkDistinta()
{
    m_form.step(QStringLiteral("DistruggiFrameworkDistinta"), [this] { delete m_frameDistinta; });
}

void Albero::CaricaIntestazioneDistinta()
{
    m_form.step(QStringLiteral("CaricaIntestazioneDistinta"), [this] {
        const QString key = m_selettore.chiaveSelezionata();
        if (key.isEmpty() || key.startsWith(QLatin1Char('P'))) {
            lblDescDistinta->setFullText(QStringLiteral("Struttura distinta"));
            return;
        }

        // A type without division has no row here: its division stays null.
        m_divisione.reset();
        m_guidDistinta.clear();
        QString descrizioneDivisione;
        const db::RecordsetPtr header = m_form.connection()->openRecordset(
            distintastatements::headerQuery(key.mid(1).toLongLong()));
        if (!header->isEmpty()) {
            header->moveFirst();
            const QVariant division = header->value(QStringLiteral("GD01_IDDIV_CO1A"));
            if (!division.isNull())
                m_divisione = division.toLongLong();
            m_guidDistinta = MODGD_DISTINTA::NvlStringa(header->value(QStringLiteral("GD01_GUID")));
            descrizioneDivisione = MODGD_DISTINTA::NvlStringa(header->value(QStringLiteral("CO1A_DESCR")));
        }

        const QString kindWord = m_form.translated(m_tipoSoggetto == 0 ? QStringLiteral("CLIENTI")
                                                                       : QStringLiteral("FORNITORI"));
        QString title = kindWord + QStringLiteral("      ") + QLatin1Char(' ')
            + m_form.translated(QStringLiteral("DISTINTA")) + QLatin1Char(' ') + m_selettore.testoSelezionato();
        // Our addition to the header, on purpose: the date of a list seen as of a day, before the
        // division, where a narrow window still shows it.
        title += m_allaData->intestazioneData();
        title += QStringLiteral("      (");
        if (m_divisione)
            title += QStringLiteral("Divisione:") + QLatin1Char(' ') + QString::number(*m_divisione)
                + QStringLiteral(" - ") + descrizioneDivisione;
        else
            title += QStringLiteral("Divisioni: tutte");
        title += QLatin1Char(')');
        lblDescDistinta->setFullText(title);
    });
}

// Only the text of the billing name and of the two priority columns changes, from the texts
// read at load.
void Albero::TVW_DISTINTA_OnCustomDrawCell(const fw::TreeListNode &node, const QString &column, QString &text)
{
    const QHash<qint64, QString> *texts = nullptr;
    QVariant value;
    if (column == QLatin1String("RagioneSocialeFatt")) {
        texts = &m_ragioniSocialiFatt;
        value = node.value(QStringLiteral("trGD02_CLIFORFATT_CG44"));
    } else if (column == QLatin1String("trGD02_IDSTRUTTURA_LP09")
               || column == QLatin1String("trGD02_IDLOCALIZZATA_LP09")) {
        texts = &m_descrizioniPriorita;
        value = node.value(column);
    } else {
        return;
    }
    bool ok = false;
    const qint64 key = value.toLongLong(&ok);
    text = ok ? texts->value(key) : QString();
}

qint64 Albero::idDelNodo(const fw::TreeListNode &node) const
{
    if (!node.isValid() || !m_nodi)
        return 0;
    return m_nodi->valueAt(node.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
}

int Albero::rigaDelNodo(qint64 idNodo) const
{
    if (!m_nodi)
        return -1;
    const int field = m_nodi->fieldIndex(QStringLiteral("GD02_ID"));
    for (int row = 0; row < m_nodi->recordCount(); ++row) {
        if (m_nodi->valueAt(row, field).toLongLong() == idNodo)
            return row;
    }
    return -1;
}

qint64 Albero::idNodoCorrente() const
{
    return m_nodi->value(QStringLiteral("GD02_ID")).toLongLong();
}

bool Albero::rigaModificataAltrove(const QString &procedure, bool soloSeEliminato)
{
    db::Recordset::RowState stato = db::Recordset::RowState::Unchanged;
    if (!m_form.step(procedure, [&] { stato = m_nodi->resync(); }))
        return true;
    switch (stato) {
    case db::Recordset::RowState::Unchanged: return false;
    case db::Recordset::RowState::Changed:
        TVW_DISTINTA->refresh();
        if (soloSeEliminato)
            return false;
        m_form.avviso(QStringLiteral("Il nodo è stato modificato da un altro utente dopo la lettura: "
                                     "i suoi dati sono stati riletti, l'operazione non è stata eseguita."));
        return true;
    case db::Recordset::RowState::Gone:
        m_form.avviso(nodoEliminatoAltrove);
        CaricaDistinta();
        return true;
    }
    return true;
}

void Albero::rileggiNodoInConflitto(const db::DatabaseError &error)
{
    if (!error.isStaleRow()) {
        m_form.ErrorHandler(QStringLiteral("TVW_DISTINTA_OnEdited"), error.message(), error.errors());
        return;
    }
    m_form.connection()->clearErrors();
    m_form.avviso(error.message());
    if (!m_nodi || m_nodi->currentRow() < 0)
        return;
    db::Recordset::RowState stato = db::Recordset::RowState::Unchanged;
    if (!m_form.step(QStringLiteral("TVW_DISTINTA_OnEdited"), [&] { stato = m_nodi->resync(); }))
        return;
    if (stato == db::Recordset::RowState::Gone) {
        m_form.avviso(nodoEliminatoAltrove);
        CaricaDistinta();
        return;
    }
    caricaTestiDisegno(*m_nodi);
    TVW_DISTINTA->refresh();
}

} // namespace distinta
