// The type's division and price-list priority: the lists the user picks them from, the
// descriptions beside the fields, the lookups between the codes typed and the identifiers the
// row stores, and the texts the grid shows in place of the identifiers.
#include "forms/anagdistinta/frmgd_anagdistinta.h"

#include "data/anagdistintastatements.h"
#include "data/modgd_distinta.h"
#include "framework/lookupedit.h"
#include "framework/recordframe.h"
#include "framework/workflowstatecontrol.h"

#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QSignalBlocker>

namespace {

// The first value of the first row; null when there is no row.
QVariant primoValore(const db::RecordsetPtr &rows)
{
    return rows->isEmpty() ? QVariant() : rows->valueAt(0, 0);
}

bool haValore(const QVariant &value)
{
    return !MODGD_DISTINTA::NvlStringa(value).isEmpty();
}

} // namespace

void FRMGD_ANAGDISTINTA::DIVISIONI_Lookup()
{
    step(QStringLiteral("DIVISIONI_Lookup"), [this] {
        const db::RecordsetPtr rows = connection()->openRecordset(
            anagdistintastatements::divisionLookupQuery(companyCode()));
        TXT_GD01_IDDIV_CO1A->showLookup(
            QStringLiteral("lkp_Divisioni"), QStringLiteral("Divisioni"), rows,
            {{.key = QStringLiteral("CO1A_CODICE"), .caption = QStringLiteral("Codice"), .width = 1200},
             {.key = QStringLiteral("CO1A_DESCR"), .caption = QStringLiteral("Descrizioni"), .width = 3600}},
            QStringLiteral("CO1A_CODICE"));
    });
}

void FRMGD_ANAGDISTINTA::DIVISIONI_Decode()
{
    decodifica(QStringLiteral("DIVISIONI_Decode"), TXT_GD01_IDDIV_CO1A, TXT_DESCRDIV,
               &anagdistintastatements::divisionDecodeQuery, QStringLiteral("CO1A_DESCR"),
               QStringLiteral("La divisione %1 non esiste."));
}

void FRMGD_ANAGDISTINTA::PRIORITA_Lookup()
{
    step(QStringLiteral("PRIORITA_Lookup"), [this] {
        const db::RecordsetPtr rows = connection()->openRecordset(
            anagdistintastatements::priorityLookupQuery(companyCode()));
        TXT_GD01_ID_LP09->showLookup(
            QStringLiteral("lkp_Priorita"), QStringLiteral("Priorità listini"), rows,
            {{.key = QStringLiteral("LP09_CODICE"), .caption = QStringLiteral("Codice"), .width = 1200},
             {.key = QStringLiteral("LP09_DESCR"), .caption = QStringLiteral("Descrizione"), .width = 3600}},
            QStringLiteral("LP09_CODICE"));
    });
}

void FRMGD_ANAGDISTINTA::PRIORITA_Decode()
{
    const int company = companyCode();
    decodifica(
        QStringLiteral("PRIORITA_Decode"), TXT_GD01_ID_LP09, TXT_DESCRLISTINO,
        [company](const QString &code) { return anagdistintastatements::priorityDecodeQuery(company, code); },
        QStringLiteral("LP09_DESCR"), QStringLiteral("La priorità listini %1 non esiste."));
}

// The description the statement finds for the code typed in the field goes to the label; a code
// that finds nothing is told.
void FRMGD_ANAGDISTINTA::decodifica(const QString &procedure, const QLineEdit *field, QLabel *label,
                                    const std::function<QString(const QString &)> &statement,
                                    const QString &descriptionField, const QString &missing)
{
    const QString codice = codiceDigitato(field);
    label->clear();
    if (codice.isEmpty())
        return;
    step(procedure, [&] {
        const db::RecordsetPtr rows = connection()->openRecordset(statement(codice));
        if (rows->isEmpty()) {
            avviso(missing.arg(codice));
            return;
        }
        label->setText(MODGD_DISTINTA::NvlStringa(rows->value(descriptionField)));
    });
}

QVariant FRMGD_ANAGDISTINTA::DecodeCodiceDivisione(const QString &codice)
{
    return primoValore(connection()->openRecordset(anagdistintastatements::divisionIdQuery(companyCode(), codice)));
}

QString FRMGD_ANAGDISTINTA::Get_CodiceDivisione(const QVariant &idDivisione)
{
    if (!haValore(idDivisione))
        return {};
    return MODGD_DISTINTA::NvlStringa(
        primoValore(connection()->openRecordset(anagdistintastatements::divisionCodeQuery(idDivisione.toLongLong()))));
}

QVariant FRMGD_ANAGDISTINTA::Get_MG3G_ID_LP09(const QString &codice)
{
    return primoValore(connection()->openRecordset(anagdistintastatements::priorityIdQuery(companyCode(), codice)));
}

QString FRMGD_ANAGDISTINTA::Get_LP09_CODICE(const QVariant &idPriorita)
{
    if (!haValore(idPriorita))
        return {};
    return MODGD_DISTINTA::NvlStringa(
        primoValore(connection()->openRecordset(anagdistintastatements::priorityCodeQuery(idPriorita.toLongLong()))));
}

// The row the frame shows: the codes of its division and priority, their descriptions and its
// state. What is filled here is no change of the row.
void FRMGD_ANAGDISTINTA::mostraRiga()
{
    fw::RecordFrame *frame = recordFrame();
    const db::RecordsetPtr rows = frame ? frame->recordset() : nullptr;
    const bool onRow = rows && rows->currentRow() >= 0;
    // What the form fills in is no change of the row.
    const QSignalBlocker quietDivision(TXT_GD01_IDDIV_CO1A);
    const QSignalBlocker quietPriority(TXT_GD01_ID_LP09);
    TXT_GD01_IDDIV_CO1A->clear();
    TXT_DESCRDIV->clear();
    TXT_GD01_ID_LP09->clear();
    TXT_DESCRLISTINO->clear();
    cmdAssegnaStato->setEnabled(false);
    step(QStringLiteral("FME_DISTINTE_ChangeRecord"), [&] {
        TXT_GD01_STATO->setGuid(onRow ? MODGD_DISTINTA::NvlStringa(rows->value(QStringLiteral("GD01_GUID")))
                                      : QString());
        if (!onRow)
            return;
        cmdAssegnaStato->setEnabled(TXT_GD01_STATO->state().has_value() && frame->state() == fw::RecordFrame::Browse);

        const QString divisione = Get_CodiceDivisione(rows->value(QStringLiteral("GD01_IDDIV_CO1A")));
        TXT_GD01_IDDIV_CO1A->setText(divisione);
        if (!divisione.isEmpty()) {
            const db::RecordsetPtr decode = connection()->openRecordset(
                anagdistintastatements::divisionDecodeQuery(divisione));
            if (!decode->isEmpty())
                TXT_DESCRDIV->setText(MODGD_DISTINTA::NvlStringa(decode->value(QStringLiteral("CO1A_DESCR"))));
        }

        const QString priorita = Get_LP09_CODICE(rows->value(QStringLiteral("GD01_ID_LP09")));
        TXT_GD01_ID_LP09->setText(priorita);
        if (!priorita.isEmpty()) {
            const db::RecordsetPtr decode = connection()->openRecordset(
                anagdistintastatements::priorityDecodeQuery(companyCode(), priorita));
            if (!decode->isEmpty())
                TXT_DESCRLISTINO->setText(MODGD_DISTINTA::NvlStringa(decode->value(QStringLiteral("LP09_DESCR"))));
        }
    });
}

void FRMGD_ANAGDISTINTA::CaricaDecodificheGriglia()
{
    m_testiDivisione.clear();
    m_testiPriorita.clear();
    fw::RecordFrame *frame = recordFrame();
    const db::RecordsetPtr rows = frame ? frame->recordset() : nullptr;
    if (!rows)
        return;
    const int divisionField = rows->fieldIndex(QStringLiteral("GD01_IDDIV_CO1A"));
    const int priorityField = rows->fieldIndex(QStringLiteral("GD01_ID_LP09"));
    QSet<qint64> divisions;
    QSet<qint64> priorities;
    for (int row = 0; row < rows->recordCount(); ++row) {
        bool ok = false;
        const qint64 division = rows->valueAt(row, divisionField).toLongLong(&ok);
        if (ok)
            divisions.insert(division);
        const qint64 priority = rows->valueAt(row, priorityField).toLongLong(&ok);
        if (ok)
            priorities.insert(priority);
    }
    const QString procedure = QStringLiteral("GRID_TIPODISTINTA_CellDecode");
    for (qint64 division : std::as_const(divisions)) {
        if (!step(procedure, [&] {
                m_testiDivisione.insert(division,
                                        MODGD_DISTINTA::NvlStringa(primoValore(connection()->openRecordset(
                                            anagdistintastatements::gridDivisionQuery(companyCode(), division)))));
            }))
            return;
    }
    for (qint64 priority : std::as_const(priorities)) {
        if (!step(procedure, [&] {
                m_testiPriorita.insert(priority,
                                       MODGD_DISTINTA::NvlStringa(primoValore(connection()->openRecordset(
                                           anagdistintastatements::gridPriorityQuery(priority)))));
            }))
            return;
    }
}

QString FRMGD_ANAGDISTINTA::testoDivisione(const QVariant &idDivisione) const
{
    bool ok = false;
    const qint64 id = idDivisione.toLongLong(&ok);
    return ok ? m_testiDivisione.value(id, idDivisione.toString()) : QString();
}

QString FRMGD_ANAGDISTINTA::testoPriorita(const QVariant &idPriorita) const
{
    bool ok = false;
    const qint64 id = idPriorita.toLongLong(&ok);
    return ok ? m_testiPriorita.value(id, idPriorita.toString()) : QString();
}
