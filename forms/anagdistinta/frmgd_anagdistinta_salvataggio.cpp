// Saving and deleting a type through the record frame, with the checks that keep bad input out
// of the database; the navigator's buttons, the print of the types and the type's state.
#include "forms/anagdistinta/frmgd_anagdistinta.h"

#include "data/anagdistintastatements.h"
#include "data/modgd_distinta.h"
#include "frame/operazionestorico.h"
#include "framework/globalservices.h"
#include "framework/lookupedit.h"
#include "framework/messagestyle.h"
#include "framework/recordframe.h"
#include "framework/reportengine.h"
#include "framework/waitcursor.h"
#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QDateTime>
#include <QLineEdit>
#include <QPushButton>

namespace {

const QString nonCancellabile = QStringLiteral(
    "Non è possibile cancellare l'anagrafica distinta perchè legata a dei nodi.");

// Stamps are kept to the second, as the database keeps them.
QDateTime adesso()
{
    QDateTime now = QDateTime::currentDateTime();
    now.setTime(QTime(now.time().hour(), now.time().minute(), now.time().second()));
    return now;
}

} // namespace

bool FRMGD_ANAGDISTINTA::rifiuta(const QString &text, QWidget *focus)
{
    avviso(text);
    if (focus)
        focus->setFocus();
    return false;
}

// Everything the user typed must make a valid row before anything is written.
void FRMGD_ANAGDISTINTA::FME_DISTINTE_ValidateRecord(bool &cancel)
{
    fw::RecordFrame *frame = recordFrame();
    const db::RecordsetPtr rows = frame->recordset();
    const QString codice = MODGD_DISTINTA::NvlStringa(rows->value(QStringLiteral("GD01_CODICE"))).trimmed();
    const QString descrizione = MODGD_DISTINTA::NvlStringa(rows->value(QStringLiteral("GD01_DESCR"))).trimmed();
    const QVariant tipo = rows->value(QStringLiteral("GD01_INDTIPOSOGG"));
    const QVariant id = rows->value(QStringLiteral("GD01_ID"));
    const QString divisione = codiceDigitato(TXT_GD01_IDDIV_CO1A);
    const QString priorita = codiceDigitato(TXT_GD01_ID_LP09);

    bool valid = false;
    const bool checked = step(QStringLiteral("FME_DISTINTE_ValidateRecord"), [&] {
        if (codice.isEmpty()) {
            valid = rifiuta(QStringLiteral("Inserire il codice della distinta."), TXT_GD01_CODICE);
            return;
        }
        if (codice.contains(QLatin1Char('\''))) {
            valid = rifiuta(QStringLiteral("Il codice della distinta non può contenere apici."), TXT_GD01_CODICE);
            return;
        }
        if (descrizione.isEmpty()) {
            valid = rifiuta(QStringLiteral("Inserire la descrizione della distinta."), TXT_GD01_DESCR);
            return;
        }
        if (MODGD_DISTINTA::NvlStringa(tipo).isEmpty()) {
            valid = rifiuta(QStringLiteral("Scegliere il tipo distinta: Cliente o Fornitore."), CMB_GD01_INDTIPOSOGG);
            return;
        }
        const db::RecordsetPtr same = connection()->openRecordset(
            anagdistintastatements::sameCodeQuery(companyCode(), codice, id.isNull() ? 0 : id.toLongLong()));
        if (!same->isEmpty()) {
            valid = rifiuta(QStringLiteral("Esiste già una distinta con il codice %1: %2.")
                                .arg(codice, MODGD_DISTINTA::NvlStringa(same->value(QStringLiteral("GD01_DESCR")))),
                            TXT_GD01_CODICE);
            return;
        }
        if (!id.isNull()) {
            // The nodes of a type are customers or suppliers as the type is.
            const db::RecordsetPtr nodes = connection()->openRecordset(
                anagdistintastatements::typeNodesQuery(id.toLongLong()));
            if (!nodes->isEmpty() && nodes->value(QStringLiteral("GD01_INDTIPOSOGG")).toInt() != tipo.toInt()) {
                valid = rifiuta(
                    QStringLiteral(
                        "Non è possibile cambiare il tipo dell'anagrafica distinta perchè legata a dei nodi."),
                    CMB_GD01_INDTIPOSOGG);
                return;
            }
        }
        if (!divisione.isEmpty() && DecodeCodiceDivisione(divisione).isNull()) {
            valid = rifiuta(QStringLiteral("La divisione %1 non esiste.").arg(divisione), TXT_GD01_IDDIV_CO1A);
            return;
        }
        if (!priorita.isEmpty() && Get_MG3G_ID_LP09(priorita).isNull()) {
            valid = rifiuta(QStringLiteral("La priorità listini %1 non esiste.").arg(priorita), TXT_GD01_ID_LP09);
            return;
        }
        valid = true;
    });
    cancel = !checked || !valid;
}

// The stamps, the company, and the identifiers of the codes typed.
void FRMGD_ANAGDISTINTA::FME_DISTINTE_BeforeUpdate(bool &cancel)
{
    fw::RecordFrame *frame = recordFrame();
    const db::RecordsetPtr rows = frame->recordset();
    const bool nuova = frame->state() == fw::RecordFrame::Insert;
    const QString divisione = codiceDigitato(TXT_GD01_IDDIV_CO1A);
    const QString priorita = codiceDigitato(TXT_GD01_ID_LP09);
    fw::GlobalServices *services = globals();
    const QString utente = services ? services->user() : QString();
    const QString gruppo = services ? services->userGroup() : QString();

    const bool written = step(QStringLiteral("FME_DISTINTE_BeforeUpdate"), [&] {
        const QVariant idPriorita = priorita.isEmpty() ? QVariant() : Get_MG3G_ID_LP09(priorita);
        const QDateTime now = adesso();
        rows->setValue(QStringLiteral("GD01_DITTA_CG18"), companyCode());
        if (nuova) {
            rows->setValue(QStringLiteral("GD01_DATACRE"), now);
            rows->setValue(QStringLiteral("GD01_GRUPPOCRE"), gruppo);
            rows->setValue(QStringLiteral("GD01_UTENTECRE"), utente);
        }
        rows->setValue(QStringLiteral("GD01_DATAVAR"), now);
        rows->setValue(QStringLiteral("GD01_GRUPPOVAR"), gruppo);
        rows->setValue(QStringLiteral("GD01_UTENTEVAR"), utente);
        // An empty division field leaves the stored division as it is: a type belongs to every
        // division only as it was created, and the row read again after the save shows which.
        if (!divisione.isEmpty())
            rows->setValue(QStringLiteral("GD01_IDDIV_CO1A"), DecodeCodiceDivisione(divisione));
        // The priority field is bound to its column: what it shows is what is stored.
        rows->setValue(QStringLiteral("GD01_ID_LP09"), idPriorita);
    });
    cancel = !written;
    if (written) {
        // Once written, the row is read again for what the database gave it (key, guid).
        QMetaObject::invokeMethod(this, &FRMGD_ANAGDISTINTA::dopoSalvataggio, Qt::QueuedConnection);
    }
}

void FRMGD_ANAGDISTINTA::dopoSalvataggio()
{
    fw::RecordFrame *frame = recordFrame();
    if (!frame || frame->state() != fw::RecordFrame::Browse)
        return;
    stepOnRow(QStringLiteral("FME_DISTINTE_AfterUpdate"), [frame] { frame->requery(); });
}

void FRMGD_ANAGDISTINTA::FME_DISTINTE_BeforeDelete(bool &cancel)
{
    const db::RecordsetPtr rows = recordFrame()->recordset();
    cancel = true;
    step(QStringLiteral("FME_DISTINTE_BeforeDelete"), [&] {
        const qint64 id = rows->value(QStringLiteral("GD01_ID")).toLongLong();
        if (!connection()->openRecordset(anagdistintastatements::typeNodesQuery(id))->isEmpty()) {
            avviso(nonCancellabile);
            return;
        }
        const QString tipo = MODGD_DISTINTA::NvlStringa(rows->value(QStringLiteral("GD01_CODICE")))
            + QStringLiteral(" - ") + MODGD_DISTINTA::NvlStringa(rows->value(QStringLiteral("GD01_DESCR")));
        // Asked on purpose, though the type has no nodes: a removed type cannot be brought back,
        // and users expect to be asked first.
        cancel = message(QStringLiteral("Cancellare l'anagrafica distinta %1?").arg(tipo),
                         fw::MessageStyle::YesNoQuestion)
            != fw::Answer::Yes;
    });
}

void FRMGD_ANAGDISTINTA::GRIDNAV_ButtonClick(const QString &button, bool &cancel)
{
    if (button == QLatin1String("Stampa")) {
        cancel = true;
        StampaTipiDistinta();
    }
}

void FRMGD_ANAGDISTINTA::GRIDNAV_AfterButtonClick(const QString &button)
{
    if (button == QLatin1String("Nuovo")) {
        TXT_GD01_CODICE->setFocus();
    } else if (button == QLatin1String("Elimina")) {
        fw::RecordFrame *frame = recordFrame();
        stepOnRow(QStringLiteral("GRIDNAV_ButtonClick"), [frame] { frame->requery(); });
    }
}

void FRMGD_ANAGDISTINTA::StampaTipiDistinta()
{
    step(QStringLiteral("GRIDNAV_ButtonClick"), [this] {
        fw::GlobalServices *services = globals();
        const std::unique_ptr<fw::ReportEngine> engine = services ? services->createReportEngine() : nullptr;
        if (!engine)
            return;
        engine->setTitle(QStringLiteral("Tipi Distinta"));
        engine->setReportFile(QStringLiteral("MO09_TIPODIST_01.rpt"));
        engine->setConnection(connection());
        engine->setQuery(anagdistintastatements::printQuery());
        engine->setRunMode(fw::ReportEngine::RunMode::Preview);
        engine->run();
    });
}

void FRMGD_ANAGDISTINTA::TXT_GD01_STATO_AfterItem(bool changedByUser)
{
    fw::RecordFrame *frame = recordFrame();
    const db::RecordsetPtr rows = frame ? frame->recordset() : nullptr;
    // The control holds a guid only while a type is shown.
    if (changedByUser && rows && !rows->bof() && !rows->eof() && !TXT_GD01_STATO->guid().isEmpty()) {
        const QString procedure = QStringLiteral("TXT_GD01_STATO_AfterItem");
        OperazioneStorico operation(*this, procedure, QStringLiteral("Modifica"),
                                    rows->value(QStringLiteral("GD01_ID")).toLongLong());
        if (operation.iniziaPerStati())
            step(procedure, [this] { TXT_GD01_STATO->ConfermaStato(); });
    }
    cmdAssegnaStato->setEnabled(TXT_GD01_STATO->state().has_value() && frame
                                && frame->state() == fw::RecordFrame::Browse);
}

// Hands the type's state on to every node of the type.
void FRMGD_ANAGDISTINTA::cmdAssegnaStato_Click()
{
    fw::RecordFrame *frame = recordFrame();
    const QString guid = TXT_GD01_STATO->guid();
    if (!frame || !logService() || guid.isEmpty() || !TXT_GD01_STATO->state())
        return;
    const db::RecordsetPtr rows = frame->recordset();
    const QString codice = MODGD_DISTINTA::NvlStringa(rows->value(QStringLiteral("GD01_CODICE")));
    if (message(QStringLiteral("Assegnare lo stato %1 a tutti i nodi della distinta %2?")
                    .arg(TXT_GD01_STATO->stateDescription(), codice),
                fw::MessageStyle::YesNoQuestion)
        != fw::Answer::Yes)
        return;

    const QString procedure = QStringLiteral("cmdAssegnaStato_Click");
    db::RecordsetPtr nodes;
    if (!step(procedure,
              [&] {
                  nodes = connection()->openRecordset(anagdistintastatements::typeNodeGuidsQuery(
                      companyCode(), rows->value(QStringLiteral("GD01_ID")).toLongLong()));
              })
        || !nodes) // ignored: there is nothing to assign the state to
        return;
    int assigned = 0;
    {
        OperazioneStorico operation(*this, procedure, QStringLiteral("Propagazione"),
                                    rows->value(QStringLiteral("GD01_ID")).toLongLong());
        if (!operation.iniziaPerStati())
            return;
        fw::WaitCursor wait(this);
        const int guidField = nodes->fieldIndex(QStringLiteral("gd02_guid"));
        for (int row = 0; row < nodes->recordCount(); ++row) {
            const QString nodeGuid = MODGD_DISTINTA::NvlStringa(nodes->valueAt(row, guidField));
            if (nodeGuid.isEmpty())
                continue;
            if (!step(procedure, [&] { TXT_GD01_STATO->DuplicaStato(guid, nodeGuid); }))
                break;
            ++assigned;
        }
    }
    notifica(QStringLiteral("Stato %1 assegnato a %2 nodi.").arg(TXT_GD01_STATO->stateDescription()).arg(assigned));
}
