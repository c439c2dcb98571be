// The two price-list priorities of the focused node: shown as codes in the fields of the
// promotions page, typed there or picked from the structural priorities (also from the buttons
// of the tree's priority cells), and stored on the node through the bound recordset.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "data/prioritastatements.h"
#include "forms/listini/frmgd_listini.h"
#include "framework/logservice.h"
#include "framework/lookupedit.h"
#include "framework/treelist/treelist.h"

#include <QAction>
#include <QLineEdit>

namespace {

struct CampoPriorita
{
    const char *field;        // the node's column
    const char *column;       // the tree's column
    const char *invalid;      // the refusal of an unknown code
};

const CampoPriorita struttura{"GD02_IDSTRUTTURA_LP09", "trGD02_IDSTRUTTURA_LP09",
                              "Attenzione il codice della priorità listini per struttura non è valido"};
const CampoPriorita localizzata{"GD02_IDLOCALIZZATA_LP09", "trGD02_IDLOCALIZZATA_LP09",
                                "Attenzione il codice della priorità listini localizzata non è valido"};

const CampoPriorita *campoDiColonna(const QString &column)
{
    if (column == QLatin1String(struttura.column))
        return &struttura;
    if (column == QLatin1String(localizzata.column))
        return &localizzata;
    return nullptr;
}

} // namespace

void FRMGD_DISTINTA::collegaPriorita()
{
    const std::pair<QLineEdit *, const CampoPriorita *> fields[] = {{TXT_PRIORITA_STRUTTURA, &struttura},
                                                                    {TXT_PRIORITA_LOCALIZZATA, &localizzata}};
    for (const auto &[edit, campo] : fields) {
        const QString field = QLatin1String(campo->field);
        QAction *picker = fw::LookupEdit::addLookupButton(edit);
        picker->setToolTip(QStringLiteral("Scegli la priorità listini"));
        connect(picker, &QAction::triggered, this, [this, field] {
            if (const std::optional<PrioritaScelta> scelta = ScegliPriorita())
                assegnaPriorita(QStringLiteral("TXT_PRIORITA_ButtonClick"), field, qint64(*scelta->IDPriorita));
        });
        connect(edit, &QLineEdit::editingFinished, this, [this, edit, field] { TXT_PRIORITA_Validate(edit, field); });
        edit->setEnabled(false);
    }
    connect(TVW_DISTINTA, &fw::TreeList::focusedNodeChanged, this, &FRMGD_DISTINTA::mostraCodiciPriorita);
    connect(TVW_DISTINTA, &fw::TreeList::editButtonClicked, this, &FRMGD_DISTINTA::TVW_DISTINTA_OnEditButtonClick);
}

// A priority lookup that fails is told under its name, and answers that there is no priority.
void FRMGD_DISTINTA::segnalaErrorePriorita(const QString &lookup, const std::exception &error, bool *ok)
{
    if (fw::LogService *log = logService())
        log->showMessage(lookup + QLatin1Char('\n') + QString::fromUtf8(error.what()), windowTitle(),
                         fw::MessageStyle::OkOnly + fw::MessageStyle::Critical);
    if (ok)
        *ok = false;
}

QVariant FRMGD_DISTINTA::Get_MG3G_ID_LP09(const db::ConnectionPtr &connection, const QString &codice, bool *ok)
{
    try {
        const db::RecordsetPtr rows = connection->openRecordset(prioritastatements::priorityIdQuery(companyCode(), codice));
        if (ok)
            *ok = true;
        return rows->isEmpty() ? QVariant() : rows->valueAt(0, 0);
    } catch (const std::exception &error) {
        segnalaErrorePriorita(QStringLiteral("Get_MG3G_ID_LP09:"), error, ok);
        return {};
    }
}

QString FRMGD_DISTINTA::Get_LP09_CODICE(const db::ConnectionPtr &connection, const QVariant &idPriorita, bool *ok)
{
    if (ok)
        *ok = true;
    if (MODGD_DISTINTA::NvlStringa(idPriorita).isEmpty())
        return {};
    try {
        const db::RecordsetPtr rows = connection->openRecordset(prioritastatements::priorityCodeQuery(idPriorita.toLongLong()));
        return rows->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(rows->valueAt(0, 0));
    } catch (const std::exception &error) {
        segnalaErrorePriorita(QStringLiteral("Get_LP09_CODICE:"), error, ok);
        return {};
    }
}

std::optional<PrioritaScelta> FRMGD_DISTINTA::ScegliPriorita()
{
    PrioritaScelta scelta;
    auto *picker = new FRMGD_LISTINI(scelta);
    picker->setActiveDll(ActiveDll());
    picker->setEntryClass(entryClass());
    picker->showModal();
    if (!scelta.IDPriorita)
        return std::nullopt;
    return scelta;
}

void FRMGD_DISTINTA::TVW_DISTINTA_OnEditButtonClick(const fw::TreeListNode &node, const QString &column)
{
    const CampoPriorita *campo = campoDiColonna(column);
    if (!campo || !node.isValid())
        return;
    node.focus();
    if (TVW_DISTINTA->focusedNode() != node)
        return;   // the row it left could not be written
    if (const std::optional<PrioritaScelta> scelta = ScegliPriorita())
        assegnaPriorita(QStringLiteral("TVW_DISTINTA_OnEditButtonClick"), QLatin1String(campo->field),
                        qint64(*scelta->IDPriorita));
}

// A code typed in a priority field becomes the node's priority; an empty field clears it, and so
// does an unknown code, after the user is told that the code was not valid.
void FRMGD_DISTINTA::TXT_PRIORITA_Validate(QLineEdit *field, const QString &campo)
{
    if (!field->isModified())
        return;
    field->setModified(false);
    if (!m_nodi || m_nodi->currentRow() < 0)
        return;
    const CampoPriorita &priorita = campo == QLatin1String(struttura.field) ? struttura : localizzata;
    const QString codice = field->text().trimmed();
    QVariant id;
    if (!codice.isEmpty()) {
        bool ok = false;
        id = Get_MG3G_ID_LP09(connection(), codice, &ok);
        if (!ok) {
            mostraCodiciPriorita();
            return;
        }
        if (id.isNull()) {
            if (fw::LogService *log = logService())
                log->showMessage(QString::fromUtf8(priorita.invalid), windowTitle(), fw::MessageStyle::Warning);
        }
    }
    assegnaPriorita(field->objectName() + QStringLiteral("_Validate"), campo, id);
}

// Stores the priority on the focused node's row. A row someone else changed meanwhile is not
// overwritten: the user is told and the row is read again.
bool FRMGD_DISTINTA::assegnaPriorita(const QString &procedure, const QString &campo, const QVariant &idPriorita)
{
    if (!m_nodi || m_nodi->currentRow() < 0)
        return false;
    std::optional<db::DatabaseError> staleRow;
    const bool written = step(procedure, [&] {
        try {
            m_nodi->setValue(campo, idPriorita);
            m_nodi->update();
        } catch (const db::DatabaseError &error) {
            m_nodi->cancelUpdate();
            if (!error.isStaleRow())
                throw;
            staleRow = error;
        }
    });
    if (staleRow) {
        rileggiNodoInConflitto(*staleRow);
        mostraCodiciPriorita();
        return false;
    }
    if (written && !idPriorita.isNull() && !m_descrizioniPriorita.contains(idPriorita.toLongLong()))
        step(procedure, [&] { m_descrizioniPriorita.insert(idPriorita.toLongLong(), DescrizionePriorita(idPriorita.toLongLong())); });
    TVW_DISTINTA->refresh();
    mostraCodiciPriorita();
    return written;
}

// The codes of the focused node's priorities, read once for every priority of the loaded rows.
void FRMGD_DISTINTA::mostraCodiciPriorita()
{
    const fw::TreeListNode node = TVW_DISTINTA->focusedNode();
    const bool onNode = node.isValid() && m_nodi && m_nodi->currentRow() >= 0;
    const std::pair<QLineEdit *, const CampoPriorita *> fields[] = {{TXT_PRIORITA_STRUTTURA, &struttura},
                                                                    {TXT_PRIORITA_LOCALIZZATA, &localizzata}};
    for (const auto &[edit, campo] : fields) {
        edit->setEnabled(onNode);
        edit->setText(onNode ? codicePriorita(node.value(QLatin1String(campo->column))) : QString());
        edit->setModified(false);
    }
}

QString FRMGD_DISTINTA::codicePriorita(const QVariant &idPriorita)
{
    bool numeric = false;
    const qint64 id = idPriorita.toLongLong(&numeric);
    if (!numeric)
        return {};
    if (m_codiciPrioritaDi.lock() != m_nodi) {
        m_codiciPriorita.clear();
        m_codiciPrioritaDi = m_nodi;
    }
    const auto known = m_codiciPriorita.constFind(id);
    if (known != m_codiciPriorita.constEnd())
        return *known;
    bool ok = false;
    const QString code = Get_LP09_CODICE(connection(), id, &ok);
    if (ok)
        m_codiciPriorita.insert(id, code);
    return code;
}
