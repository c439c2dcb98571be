// Editing a node in the tree's cells. Every commit of a cell checks the node as it would be
// saved (its period, its other links, its priorities) before anything is written; a refusal
// is told to the user and the cell keeps the stored value. The billing rule decides whether a
// billing code is kept on the node: only "Manuale" keeps one, typed in TXT_ALFA.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "framework/treelist/treelist.h"

#include <QLineEdit>

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

bool FRMGD_DISTINTA::TVW_DISTINTA_OnEdited(const fw::TreeListNode &node, const QString &column, const QVariant &value,
                                           bool valid)
{
    m_nonImportate.clear();
    if (vuoto(valoreDopo(node, column, value, colonnaRegola)) && vuoto(valoreDopo(node, column, value, colonnaCodiceFatt))) {
        TXT_ALFA->hide();
        return true;
    }

    const QDate inizio = dataCella(valoreDopo(node, column, value, colonnaInizio));
    if (!inizio.isValid() || (column == colonnaInizio && !valid)) {
        avviso(QStringLiteral("Attenzione data validità inizio errata o non caricata"));
        return false;
    }
    const QDate fine = dataCella(valoreDopo(node, column, value, colonnaFine));
    if (!fine.isValid() || (column == colonnaFine && !valid)) {
        avviso(QStringLiteral("Attenzione data validità fine errata o non caricata"));
        return false;
    }
    // One day is a period: equal dates pass.
    if (inizio > fine) {
        avviso(QStringLiteral("Attenzione data validità inizio deve essere inferiore di data validità fine"));
        return false;
    }

    bool letto = step(QStringLiteral("TVW_DISTINTA_OnEdited"), [&] {
        const int row = node.row();
        m_verifica = {};
        m_verifica.idNodo = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        m_verifica.idPadre = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_IDPARENT_GD02"))).toLongLong();
        m_verifica.haPadre = m_verifica.idPadre != 0;
        m_verifica.codice = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"))).toLongLong();
        m_verifica.dataInizio = inizio;
        m_verifica.dataFine = fine;
    });
    if (!letto)
        return false;
    if (!VerificaNodo(QStringLiteral("Edit"))) {
        avviso(m_rifiutoPremioDefinitivo ? m_ultimoMessaggioControllo
                                         : QStringLiteral("Anagrafica non modificata:\n") + m_nonImportate);
        return false;
    }

    const QVariant struttura = valoreDopo(node, column, value, colonnaStruttura);
    if (!vuoto(struttura) && DescrizionePrioritaDigitata(struttura.toString()).isEmpty()) {
        avviso(QStringLiteral("Attenzione il codice della priorità listini per struttura non è valido"));
        return false;
    }
    const QVariant localizzata = valoreDopo(node, column, value, colonnaLocalizzata);
    if (!vuoto(localizzata) && DescrizionePrioritaDigitata(localizzata.toString()).isEmpty()) {
        avviso(QStringLiteral("Attenzione il codice della priorità listini localizzata non è valido"));
        return false;
    }
    return true;
}

// The commit of a cell: the node is checked as it would be saved, then the column's own rule.
// A refusal keeps the stored value and writes nothing.
void FRMGD_DISTINTA::TVW_DISTINTA_OnValidateEdit(const fw::TreeListNode &node, const QString &column, QVariant &value,
                                                 bool &accept, QString &error)
{
    const bool valid = accept;
    error.clear();
    // What the date editor itself cannot read is never stored, whatever the node's billing rule.
    if (!valid && (column == colonnaInizio || column == colonnaFine)) {
        avviso(column == colonnaInizio ? QStringLiteral("Attenzione data validità inizio errata o non caricata")
                                       : QStringLiteral("Attenzione data validità fine errata o non caricata"));
        return;
    }
    accept = TVW_DISTINTA_OnEdited(node, column, value, valid);
    if (!accept)
        return;
    if (column == colonnaRegola) {
        if (value.toInt() == regolaManuale)
            GestioneTXTAnagrafica(QStringLiteral("Tendina"));
        else
            azzeraCodiceFatturazione(node);
    } else if (column == colonnaStruttura || column == colonnaLocalizzata) {
        if (DescrizionePrioritaDigitata(value.toString()).isEmpty())
            value = QVariant();
    }
}

// Starting to edit a filled billing code: "Manuale" opens the code editor, any other rule wipes
// the code, which only "Manuale" keeps.
void FRMGD_DISTINTA::TVW_DISTINTA_OnEditing(const fw::TreeListNode &node, const QString &column, bool &)
{
    if (column != colonnaCodiceFatt || vuoto(node.value(colonnaCodiceFatt)))
        return;
    if (node.value(colonnaRegola).toInt() == regolaManuale)
        GestioneTXTAnagrafica(QStringLiteral("Anagr"));
    else
        azzeraCodiceFatturazione(node);
}

void FRMGD_DISTINTA::TVW_DISTINTA_OnEditCloseUp(const fw::TreeListNode &node, const QString &column, const QVariant &value)
{
    if (column != colonnaRegola && column != colonnaCodiceFatt)
        return;
    const int regola = column == colonnaCodiceFatt ? node.value(colonnaRegola).toInt() : value.toInt();
    if (regola == regolaManuale)
        GestioneTXTAnagrafica(QStringLiteral("Tendina"));
    else
        azzeraCodiceFatturazione(node);
}

void FRMGD_DISTINTA::azzeraCodiceFatturazione(const fw::TreeListNode &node)
{
    if (!node.value(colonnaCodiceFatt).isNull())
        TVW_DISTINTA->setValue(node, colonnaCodiceFatt, QVariant());
}

QString FRMGD_DISTINTA::DescrizionePrioritaDigitata(const QString &codice)
{
    QString descrizione;
    step(QStringLiteral("TVW_DISTINTA_OnEdited"), [&] {
        const db::RecordsetPtr priorita = connection()->openRecordset(nodistatements::priorityLookupQuery(codice));
        if (!priorita->isEmpty())
            descrizione = MODGD_DISTINTA::NvlStringa(priorita->valueAt(0, 0));
    });
    return descrizione;
}
