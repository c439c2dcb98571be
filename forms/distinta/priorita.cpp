#include "forms/distinta/priorita.h"

#include "data/modgd_distinta.h"
#include "data/prioritastatements.h"
#include "forms/distinta/albero.h"
#include "forms/listini/frmgd_listini.h"
#include "frame/operazionestorico.h"
#include "frame/formframe.h"
#include "framework/lookupedit.h"
#include "framework/messagestyle.h"
#include "framework/treelist/treelist.h"

#include <QAction>
#include <QLineEdit>

namespace distinta {

namespace {

struct CampoPriorita
{
    const char *field;   // the node's column
    const char *column;  // the tree's column
    const char *invalid; // the refusal of an unknown code
};

const CampoPriorita struttura {"GD02_IDSTRUTTURA_LP09", "trGD02_IDSTRUTTURA_LP09",
                               "Attenzione il codice della priorità listini per struttura non è valido"};
const CampoPriorita localizzata {"GD02_IDLOCALIZZATA_LP09", "trGD02_IDLOCALIZZATA_LP09",
                                 "Attenzione il codice della priorità listini localizzata non è valido"};

const CampoPriorita *campoDiColonna(const QString &column)
{
    if (column == QLatin1String(struttura.column))
        return &struttura;
    if (column == QLatin1String(localizzata.column))
        return &localizzata;
    return nullptr;
}

QLineEdit *campo(const QString &name)
{
    auto *edit = new QLineEdit;
    edit->setObjectName(name);
    return edit;
}

} // namespace

Priorita::Priorita(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , TXT_PRIORITA_STRUTTURA(campo(QStringLiteral("TXT_PRIORITA_STRUTTURA")))
    , TXT_PRIORITA_LOCALIZZATA(campo(QStringLiteral("TXT_PRIORITA_LOCALIZZATA")))
{
    const std::pair<QLineEdit *, const CampoPriorita *> fields[] = {{TXT_PRIORITA_STRUTTURA, &struttura},
                                                                    {TXT_PRIORITA_LOCALIZZATA, &localizzata}};
    for (const auto &[edit, priorita] : fields) {
        const QString field = QLatin1String(priorita->field);
        QAction *picker = fw::LookupEdit::addLookupButton(edit);
        picker->setToolTip(QStringLiteral("Scegli la priorità listini"));
        connect(picker, &QAction::triggered, this, [this, field] {
            if (const std::optional<PrioritaScelta> scelta = ScegliPriorita(field))
                assegnaPriorita(QStringLiteral("TXT_PRIORITA_ButtonClick"), field, qint64(*scelta->IDPriorita));
        });
        connect(edit, &QLineEdit::editingFinished, this, [this, edit, field] { TXT_PRIORITA_Validate(edit, field); });
        edit->setEnabled(false);
    }
    connect(albero.widget(), &fw::TreeList::editButtonClicked, this, &Priorita::TVW_DISTINTA_OnEditButtonClick);
}

// A priority lookup that fails is told under its name, and answers that there is no priority.
void Priorita::segnalaErrorePriorita(const QString &lookup, const std::exception &error, bool *ok)
{
    m_form.message(lookup + QLatin1Char('\n') + QString::fromUtf8(error.what()),
                   fw::MessageStyle::OkOnly + fw::MessageStyle::Critical);
    if (ok)
        *ok = false;
}

QVariant Priorita::Get_MG3G_ID_LP09(const db::ConnectionPtr &connection, const QString &codice, bool *ok)
{
    try {
        const db::RecordsetPtr rows = connection->openRecordset(
            prioritastatements::priorityIdQuery(m_form.companyCode(), codice));
        if (ok)
            *ok = true;
        return rows->isEmpty() ? QVariant() : rows->valueAt(0, 0);
    } catch (const std::exception &error) {
        segnalaErrorePriorita(QStringLiteral("Get_MG3G_ID_LP09:"), error, ok);
        return {};
    }
}

QString Priorita::Get_LP09_CODICE(const db::ConnectionPtr &connection, const QVariant &idPriorita, bool *ok)
{
    if (ok)
        *ok = true;
    if (MODGD_DISTINTA::NvlStringa(idPriorita).isEmpty())
        return {};
    try {
        const db::RecordsetPtr rows = connection->openRecordset(
            prioritastatements::priorityCodeQuery(idPriorita.toLongLong()));
        return rows->isEmpty() ? QString() : MODGD_DISTINTA::NvlStringa(rows->valueAt(0, 0));
    } catch (const std::exception &error) {
        segnalaErrorePriorita(QStringLiteral("Get_LP09_CODICE:"), error, ok);
        return {};
    }
}

std::optional<PrioritaScelta> Priorita::ScegliPriorita(const QString &campo)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    const QVariant attuale = nodi && nodi->currentRow() >= 0 ? nodi->value(campo) : QVariant();
    PrioritaScelta scelta;
    auto *picker = new FRMGD_LISTINI(scelta, attuale);
    picker->setActiveDll(m_form.ActiveDll());
    picker->setEntryClass(m_form.entryClass());
    picker->showModal();
    if (!scelta.IDPriorita)
        return std::nullopt;
    return scelta;
}

void Priorita::TVW_DISTINTA_OnEditButtonClick(const fw::TreeListNode &node, const QString &column)
{
    const CampoPriorita *priorita = campoDiColonna(column);
    if (!priorita || !node.isValid())
        return;
    node.focus();
    if (m_albero.widget()->focusedNode() != node)
        return; // the row it left could not be written
    if (const std::optional<PrioritaScelta> scelta = ScegliPriorita(QLatin1String(priorita->field)))
        assegnaPriorita(QStringLiteral("TVW_DISTINTA_OnEditButtonClick"), QLatin1String(priorita->field),
                        qint64(*scelta->IDPriorita));
}

// A code typed in a priority field becomes the node's priority; an empty field clears it, and so
// does an unknown code, after the user is told that the code was not valid.
void Priorita::TXT_PRIORITA_Validate(QLineEdit *field, const QString &campo)
{
    if (!field->isModified())
        return;
    field->setModified(false);
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->currentRow() < 0)
        return;
    const CampoPriorita &priorita = campo == QLatin1String(struttura.field) ? struttura : localizzata;
    const QString codice = field->text().trimmed();
    QVariant id;
    if (!codice.isEmpty()) {
        bool ok = false;
        id = Get_MG3G_ID_LP09(m_form.connection(), codice, &ok);
        if (!ok) {
            mostraCodiciPriorita();
            return;
        }
        // On purpose: a code that names no priority is said, not quietly stored as "no priority".
        if (id.isNull())
            m_form.avviso(QString::fromUtf8(priorita.invalid));
    }
    assegnaPriorita(field->objectName() + QStringLiteral("_Validate"), campo, id);
}

// Stores the priority on the focused node's row. A row someone else changed meanwhile is not
// overwritten: the user is told and the row is read again.
bool Priorita::assegnaPriorita(const QString &procedure, const QString &campo, const QVariant &idPriorita)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->currentRow() < 0)
        return false;
    std::optional<db::DatabaseError> conflitto;
    bool written = false;
    {
        OperazioneStorico operazione(m_form, procedure, QStringLiteral("Modifica"), m_albero.idTipo());
        if (!operazione.inizia())
            return false;
        written = m_form.writeRow(
            procedure,
            [&] {
                try {
                    nodi->setValue(campo, idPriorita);
                    nodi->update();
                } catch (const db::DatabaseError &) {
                    nodi->cancelUpdate();
                    throw;
                }
            },
            [&](const db::DatabaseError &error) { conflitto = error; });
        written = operazione.fine() && written;
    }
    // Told once the operation is over: no one waits on the write lock while the user reads.
    if (conflitto) {
        m_albero.rileggiNodoInConflitto(*conflitto);
        mostraCodiciPriorita();
        return false;
    }
    if (written && !idPriorita.isNull())
        m_albero.ricordaDescrizionePriorita(procedure, idPriorita.toLongLong());
    m_albero.widget()->refresh();
    mostraCodiciPriorita();
    return written;
}

// The codes of the focused node's priorities, read once for every priority of the loaded rows.
void Priorita::mostraCodiciPriorita()
{
    const fw::TreeListNode node = m_albero.widget()->focusedNode();
    const db::RecordsetPtr nodi = m_albero.nodi();
    const bool onNode = node.isValid() && nodi && nodi->currentRow() >= 0;
    const std::pair<QLineEdit *, const CampoPriorita *> fields[] = {{TXT_PRIORITA_STRUTTURA, &struttura},
                                                                    {TXT_PRIORITA_LOCALIZZATA, &localizzata}};
    for (const auto &[edit, priorita] : fields) {
        edit->setEnabled(onNode);
        edit->setText(onNode ? codicePriorita(node.value(QLatin1String(priorita->column))) : QString());
        edit->setModified(false);
    }
}

QString Priorita::codicePriorita(const QVariant &idPriorita)
{
    bool numeric = false;
    const qint64 id = idPriorita.toLongLong(&numeric);
    if (!numeric)
        return {};
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (m_codiciPrioritaDi.lock() != nodi) {
        m_codiciPriorita.clear();
        m_codiciPrioritaDi = nodi;
    }
    const auto known = m_codiciPriorita.constFind(id);
    if (known != m_codiciPriorita.constEnd())
        return *known;
    bool ok = false;
    const QString code = Get_LP09_CODICE(m_form.connection(), id, &ok);
    if (ok)
        m_codiciPriorita.insert(id, code);
    return code;
}

} // namespace distinta
