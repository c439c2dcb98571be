#include "forms/distinta/modificanodo.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/numerictext.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controllilegami.h"
#include "forms/distinta/verifica.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"

#include <QLineEdit>
#include <QScopedValueRollback>
#include <QShortcut>

namespace distinta {

namespace {

const QString colonnaInizio = QStringLiteral("trGD02_DATAINIZIOVAL");
const QString colonnaFine = QStringLiteral("trGD02_DATAFINEVAL");
const QString colonnaRegola = QStringLiteral("trGD02_TIPOANAGFATT");
const QString colonnaCodiceFatt = QStringLiteral("trGD02_CLIFORFATT_CG44");
const QString colonnaStruttura = QStringLiteral("trGD02_IDSTRUTTURA_LP09");
const QString colonnaLocalizzata = QStringLiteral("trGD02_IDLOCALIZZATA_LP09");
constexpr int regolaManuale = 4;

bool vuoto(const QVariant &value)
{
    return MODGD_DISTINTA::NvlTrim(value, QString()).toString().isEmpty();
}

// A cell's date; invalid when empty or not a date.
QDate dataCella(const QVariant &value)
{
    if (value.isNull())
        return {};
    const int type = value.metaType().id();
    if (type == QMetaType::QDate || type == QMetaType::QDateTime)
        return value.toDate();
    return {};
}

// The value a cell would hold once the edit is stored.
QVariant valoreDopo(const fw::TreeListNode &node, const QString &edited, const QVariant &value, const QString &column)
{
    return column == edited ? value : node.value(column);
}

} // namespace

ModificaNodo::ModificaNodo(FormFrame &form, Albero &albero, Verifica &verifica)
    : m_form(form)
    , m_albero(albero)
    , m_verifica(verifica)
{
    fw::TreeList *tree = albero.widget();
    connect(tree, &fw::TreeList::editingStarted, this, &ModificaNodo::TVW_DISTINTA_OnEditing);
    connect(tree, &fw::TreeList::editCloseUp, this, &ModificaNodo::TVW_DISTINTA_OnEditCloseUp);
    connect(tree, &fw::TreeList::validateEdit, this, &ModificaNodo::TVW_DISTINTA_OnValidateEdit);
    creaTXT_ALFA();
}

bool ModificaNodo::TVW_DISTINTA_OnEdited(const fw::TreeListNode &node, const QString &column, const QVariant &value,
                                         bool valid)
{
    if (vuoto(valoreDopo(node, column, value, colonnaRegola))
        && vuoto(valoreDopo(node, column, value, colonnaCodiceFatt))) {
        TXT_ALFA->hide();
        return true;
    }

    const QDate inizio = dataCella(valoreDopo(node, column, value, colonnaInizio));
    if (!inizio.isValid() || (column == colonnaInizio && !valid)) {
        m_form.avviso(QStringLiteral("Attenzione data validità inizio errata o non caricata"));
        return false;
    }
    const QDate fine = dataCella(valoreDopo(node, column, value, colonnaFine));
    if (!fine.isValid() || (column == colonnaFine && !valid)) {
        m_form.avviso(QStringLiteral("Attenzione data validità fine errata o non caricata"));
        return false;
    }
    // One day is a period: equal dates pass.
    if (inizio > fine) {
        m_form.avviso(QStringLiteral("Attenzione data validità inizio deve essere inferiore di data validità fine"));
        return false;
    }

    Verifica::Nodo nodo;
    const bool letto = m_form.step(QStringLiteral("TVW_DISTINTA_OnEdited"), [&] {
        const db::RecordsetPtr nodi = m_albero.nodi();
        const int row = node.row();
        nodo.idNodo = nodi->valueAt(row, nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        nodo.idPadre = nodi->valueAt(row, nodi->fieldIndex(QStringLiteral("GD02_IDPARENT_GD02"))).toLongLong();
        nodo.codice = nodi->valueAt(row, nodi->fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong();
        nodo.dataInizio = inizio;
        nodo.dataFine = fine;
    });
    if (!letto)
        return false;
    const Verifica::Esito esito = m_verifica.VerificaNodo(Verifica::Modo::Modifica, nodo);
    if (!esito.valido) {
        m_form.avviso(esito.rifiutoPremioDefinitivo ? ControlliLegami::messaggioPremioDefinitivo(true)
                                                    : QStringLiteral("Anagrafica non modificata:\n") + esito.righe);
        return false;
    }

    const QVariant struttura = valoreDopo(node, column, value, colonnaStruttura);
    if (!vuoto(struttura) && DescrizionePrioritaDigitata(struttura.toString()).isEmpty()) {
        m_form.avviso(QStringLiteral("Attenzione il codice della priorità listini per struttura non è valido"));
        return false;
    }
    const QVariant localizzata = valoreDopo(node, column, value, colonnaLocalizzata);
    if (!vuoto(localizzata) && DescrizionePrioritaDigitata(localizzata.toString()).isEmpty()) {
        m_form.avviso(QStringLiteral("Attenzione il codice della priorità listini localizzata non è valido"));
        return false;
    }
    return true;
}

// The commit of a cell: the node is checked as it would be saved, then the column's own rule.
// A refusal keeps the stored value and writes nothing.
void ModificaNodo::TVW_DISTINTA_OnValidateEdit(const fw::TreeListNode &node, const QString &column, QVariant &value,
                                               bool &accept, QString &error)
{
    const bool valid = accept;
    error.clear();
    // What the date editor itself cannot read is never stored, whatever the node's billing rule:
    // checked before the edit's early exit for nodes without billing values, on purpose, since the
    // schema would refuse such a date anyway.
    if (!valid && (column == colonnaInizio || column == colonnaFine)) {
        m_form.avviso(column == colonnaInizio ? QStringLiteral("Attenzione data validità inizio errata o non caricata")
                                              : QStringLiteral("Attenzione data validità fine errata o non caricata"));
        return;
    }
    accept = TVW_DISTINTA_OnEdited(node, column, value, valid);
    if (!accept)
        return;
    if (column == colonnaRegola) {
        if (value.toInt() == regolaManuale)
            GestioneTXTAnagrafica(Apertura::Tendina);
        else
            azzeraCodiceFatturazione(node);
    } else if (column == colonnaStruttura || column == colonnaLocalizzata) {
        if (DescrizionePrioritaDigitata(value.toString()).isEmpty())
            value = QVariant();
    }
}

// Starting to edit a filled billing code: "Manuale" opens the code editor, any other rule wipes
// the code, which only "Manuale" keeps.
void ModificaNodo::TVW_DISTINTA_OnEditing(const fw::TreeListNode &node, const QString &column, bool &)
{
    if (column != colonnaCodiceFatt || vuoto(node.value(colonnaCodiceFatt)))
        return;
    if (node.value(colonnaRegola).toInt() == regolaManuale)
        GestioneTXTAnagrafica(Apertura::Anagrafica);
    else
        azzeraCodiceFatturazione(node);
}

void ModificaNodo::TVW_DISTINTA_OnEditCloseUp(const fw::TreeListNode &node, const QString &column,
                                              const QVariant &value)
{
    if (column != colonnaRegola && column != colonnaCodiceFatt)
        return;
    const int regola = column == colonnaCodiceFatt ? node.value(colonnaRegola).toInt() : value.toInt();
    if (regola == regolaManuale)
        GestioneTXTAnagrafica(Apertura::Tendina);
    else
        azzeraCodiceFatturazione(node);
}

void ModificaNodo::azzeraCodiceFatturazione(const fw::TreeListNode &node)
{
    if (!node.value(colonnaCodiceFatt).isNull())
        m_albero.widget()->setValue(node, colonnaCodiceFatt, QVariant());
}

QString ModificaNodo::DescrizionePrioritaDigitata(const QString &codice)
{
    QString descrizione;
    m_form.step(QStringLiteral("TVW_DISTINTA_OnEdited"), [&] {
        const db::RecordsetPtr priorita = m_form.connection()->openRecordset(
            nodistatements::priorityLookupQuery(codice));
        if (!priorita->isEmpty())
            descrizione = MODGD_DISTINTA::NvlStringa(priorita->valueAt(0, 0));
    });
    return descrizione;
}

void ModificaNodo::creaTXT_ALFA()
{
    TXT_ALFA = new QLineEdit(m_albero.widget());
    TXT_ALFA->setObjectName(QStringLiteral("TXT_ALFA"));
    TXT_ALFA->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    TXT_ALFA->setToolTip(QStringLiteral("Codice dell'anagrafica di fatturazione: Invio conferma, Esc annulla"));
    TXT_ALFA->hide();
    connect(TXT_ALFA, &QLineEdit::returnPressed, this, &ModificaNodo::TXT_ALFA_Invio);
    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), TXT_ALFA, nullptr, nullptr, Qt::WidgetShortcut);
    connect(escape, &QShortcut::activated, this, &ModificaNodo::TXT_ALFA_Annulla);
    // Leaving the field (not by Enter) drops what was typed.
    connect(TXT_ALFA, &QLineEdit::editingFinished, this, [this] {
        if (TXT_ALFA->isVisible() && !TXT_ALFA->hasFocus() && !m_messaggioTXT_ALFA)
            TXT_ALFA->hide();
    });
}

void ModificaNodo::chiudiEditorCodice()
{
    if (TXT_ALFA->isVisible())
        TXT_ALFA->hide();
}

// Both ways lay the editor over the focused node's billing-code cell with the stored code. It
// opens once the tree has finished the edit or the drop-down that asked for it, so that the tree
// does not take the focus back.
void ModificaNodo::GestioneTXTAnagrafica(Apertura)
{
    const fw::TreeListNode node = m_albero.widget()->focusedNode();
    if (!node.isValid() || !m_albero.nodi())
        return;
    m_idNodoTXT_ALFA = m_albero.idDelNodo(node);
    QMetaObject::invokeMethod(
        this,
        [this] {
            fw::TreeList *albero = m_albero.widget();
            const fw::TreeListNode focused = albero->focusedNode();
            if (!focused.isValid() || !m_albero.nodi() || m_albero.idDelNodo(focused) != m_idNodoTXT_ALFA)
                return;
            const QRect cell = albero->cellRect(focused, colonnaCodiceFatt);
            if (!cell.isValid())
                return;
            TXT_ALFA->setGeometry(cell);
            TXT_ALFA->setText(MODGD_DISTINTA::NvlTrim(focused.value(colonnaCodiceFatt), QString()).toString());
            TXT_ALFA->show();
            TXT_ALFA->raise();
            TXT_ALFA->setFocus();
            TXT_ALFA->selectAll();
        },
        Qt::QueuedConnection);
}

// The code must be a subject of the company and kind.
void ModificaNodo::TXT_ALFA_Invio()
{
    fw::TreeList *albero = m_albero.widget();
    const fw::TreeListNode node = albero->focusedNode();
    if (!node.isValid() || m_albero.idDelNodo(node) != m_idNodoTXT_ALFA) {
        TXT_ALFA->hide();
        return;
    }
    const QString testo = TXT_ALFA->text().trimmed();
    QVariant codice;
    if (!testo.isEmpty()) {
        bool intero = false;
        const qint64 numero = testo.toLongLong(&intero);
        QScopedValueRollback messaggio(m_messaggioTXT_ALFA, true);
        if (!numerictext::isNumeric(testo) || !intero || numero <= 0) {
            m_form.avviso(QStringLiteral("Il codice anagrafica deve essere un numero intero positivo."));
            TXT_ALFA->setFocus();
            return;
        }
        QString nome;
        if (!m_form.step(QStringLiteral("TXT_ALFA_KeyDown"), [&] { nome = m_albero.AssegnaRagioneSociale(numero); }))
            return;
        if (nome.isEmpty()) {
            m_form.avviso((m_albero.tipoSoggetto() != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente "))
                          + testo + QStringLiteral(" non trovato tra le anagrafiche della ditta."));
            TXT_ALFA->setFocus();
            return;
        }
        m_albero.ricordaRagioneSocialeFatt(numero, nome);
        codice = numero;
    }
    TXT_ALFA->hide();
    albero->setValue(node, colonnaCodiceFatt, codice);
    albero->refresh();
    albero->setFocus();
}

void ModificaNodo::TXT_ALFA_Annulla()
{
    TXT_ALFA->hide();
    m_albero.widget()->setFocus();
}

} // namespace distinta
