#include "forms/anagdistinta/frmgd_anagdistinta.h"

#include "data/anagdistintastatements.h"
#include "framework/globalservices.h"
#include "framework/gridnavigator.h"
#include "framework/lookupedit.h"
#include "framework/recordframe.h"
#include "framework/recordsetgrid.h"
#include "framework/reportengine.h"
#include "framework/workflowstatecontrol.h"
#include "framework/workflowstateservice.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

// The workflow of the classification lists, whose states the types and their nodes take.
const QString flussoDistinta = QStringLiteral("DISTINTA");

} // namespace

FRMGD_ANAGDISTINTA::FRMGD_ANAGDISTINTA(QWidget *parent)
    : FormFrame(parent)
{
    setObjectName(QStringLiteral("FRMGD_ANAGDISTINTA"));
    setWindowTitle(QStringLiteral("Anagrafica distinta"));
    creaControlli();
    collegaEventi();
}

FRMGD_ANAGDISTINTA::~FRMGD_ANAGDISTINTA() = default;

// 5670 twips high, as designed; the rest waits for the first activation.
void FRMGD_ANAGDISTINTA::loadForm()
{
    resize(qMax(width(), 760), 5670 / 15);
}

bool FRMGD_ANAGDISTINTA::activateForm()
{
    if (!step(QStringLiteral("Form_Activate"), [this] {
            CaricaComboTipoSoggetto();
            fw::GlobalServices *services = globals();
            if (const std::shared_ptr<fw::WorkflowStateService> states = statiDelFlusso())
                TXT_GD01_STATO->setWorkflow(states, flussoDistinta);
            // Printing needs the host's report engine; without one "Stampa" stays disabled.
            GRIDNAV->setPrintAvailable(services && services->createReportEngine() != nullptr);
        }))
        return false;
    ImpostaFME_DISTINTE();
    if (!recordFrame())
        return false;
    InizializzaScriptLayout();
    // The frame leaves the rows on the first one once this returns; the chosen type comes after.
    if (m_idDistinta)
        QMetaObject::invokeMethod(this, &FRMGD_ANAGDISTINTA::posizionaSuDistinta, Qt::QueuedConnection);
    return true;
}

void FRMGD_ANAGDISTINTA::ImpostaFME_DISTINTE()
{
    step(QStringLiteral("ImpostaFME_DISTINTE"), [this] {
        fw::RecordFrame *frame = openRecordFrame(anagdistintastatements::typesFrameQuery(companyCode()),
                                                 QStringLiteral("GD01_ID"));
        frame->setObjectName(QStringLiteral("FME_DISTINTE"));
        registraNelloStorico(frame, QStringLiteral("FME_DISTINTE"));
        frame->bind(TXT_GD01_CODICE, QStringLiteral("GD01_CODICE"));
        frame->bind(TXT_GD01_DESCR, QStringLiteral("GD01_DESCR"));
        frame->bind(CMB_GD01_INDTIPOSOGG, QStringLiteral("GD01_INDTIPOSOGG"));
        // The user types codes; the row stores identifiers, written on save.
        frame->watch(TXT_GD01_IDDIV_CO1A);
        frame->watch(TXT_GD01_ID_LP09);
        connect(frame, &fw::RecordFrame::ValidateRecord, this, &FRMGD_ANAGDISTINTA::FME_DISTINTE_ValidateRecord);
        connect(frame, &fw::RecordFrame::BeforeUpdate, this, &FRMGD_ANAGDISTINTA::FME_DISTINTE_BeforeUpdate);
        connect(frame, &fw::RecordFrame::BeforeDelete, this, &FRMGD_ANAGDISTINTA::FME_DISTINTE_BeforeDelete);
        connect(frame, &fw::RecordFrame::rowShown, this, &FRMGD_ANAGDISTINTA::mostraRiga);
        connect(frame, &fw::RecordFrame::recordsetReplaced, this, [this](const db::RecordsetPtr &rows) {
            CaricaDecodificheGriglia();
            GRID_TIPODISTINTA->setRecordset(rows);
        });

        GRID_TIPODISTINTA->setColumns({
            {.key = QStringLiteral("GD01_ID"), .caption = QStringLiteral("ID"), .width = 700},
            {.key = QStringLiteral("GD01_CODICE"), .caption = QStringLiteral("Codice"), .width = 1500},
            {.key = QStringLiteral("GD01_DESCR"), .caption = QStringLiteral("Descrizione"), .width = 4000},
            {.key = QStringLiteral("GD01_IDDIV_CO1A"),
             .caption = QStringLiteral("Divisione"),
             .width = 3000,
             .displayText = [this](const QVariant &value) { return testoDivisione(value); }},
            {.key = QStringLiteral("GD01_ID_LP09"),
             .caption = QStringLiteral("Priorità"),
             .width = 3500,
             .displayText = [this](const QVariant &value) { return testoPriorita(value); }},
        });
        CaricaDecodificheGriglia();
        GRID_TIPODISTINTA->setRecordset(frame->recordset());
        GRIDNAV->attach(frame, [this](const QString &procedure, const std::function<void()> &statement) {
            return stepOnRow(procedure, statement);
        });
        mostraRiga();
    });
}

void FRMGD_ANAGDISTINTA::CaricaComboTipoSoggetto()
{
    CMB_GD01_INDTIPOSOGG->clear();
    CMB_GD01_INDTIPOSOGG->addItem(QStringLiteral("Cliente"), 0);
    CMB_GD01_INDTIPOSOGG->addItem(QStringLiteral("Fornitore"), 1);
    CMB_GD01_INDTIPOSOGG->setCurrentIndex(-1);
}

// A code typed on a new row that belongs to an existing type shows that type at once.
void FRMGD_ANAGDISTINTA::TXT_GD01_CODICE_AfterItem()
{
    if (TXT_GD01_CODICE->text().trimmed().isEmpty())
        return;
    EseguiQuery();
}

// The search runs in the company, and among the types of the kind chosen when one is.
void FRMGD_ANAGDISTINTA::writeFixedFilterFields(db::Recordset &recordset)
{
    recordset.setValue(QStringLiteral("GD01_DITTA_CG18"), companyCode());
    recordset.setValue(QStringLiteral("GD01_INDTIPOSOGG"), CMB_GD01_INDTIPOSOGG->currentData());
}

void FRMGD_ANAGDISTINTA::posizionaSuDistinta()
{
    fw::RecordFrame *frame = recordFrame();
    if (!frame || !m_idDistinta)
        return;
    step(QStringLiteral("Form_Activate"), [&] {
        const db::RecordsetPtr rows = frame->recordset();
        const int key = rows->fieldIndex(QStringLiteral("GD01_ID"));
        for (int row = 0; row < rows->recordCount(); ++row) {
            if (rows->valueAt(row, key).toLongLong() == *m_idDistinta) {
                rows->setCurrentRow(row);
                return;
            }
        }
    });
}

QString FRMGD_ANAGDISTINTA::companyChangeText() const
{
    return QStringLiteral("Cambiando l'azienda di lavoro è necessario chiudere e riaprire il programma.");
}

void FRMGD_ANAGDISTINTA::formClosing()
{
    GRIDNAV->detach();
}

void FRMGD_ANAGDISTINTA::release(Release what)
{
    switch (what) {
    case Release::GridWrapper:
        GRID_TIPODISTINTA->setRowChangeGuard({});
        GRID_TIPODISTINTA->setRecordset(nullptr);
        break;
    case Release::HelperObjects:
        m_testiDivisione.clear();
        m_testiPriorita.clear();
        break;
    case Release::FrameworkObjects: break;
    }
}

bool FRMGD_ANAGDISTINTA::stepOnRow(const QString &procedure, const std::function<void()> &statement)
{
    return writeRow(procedure, statement, [&](const db::DatabaseError &staleRow) {
        avviso(staleRow.message() + QStringLiteral("\nLa distinta è stata riletta dal database."));
        step(procedure, [this] { recordFrame()->requery(); });
    });
}

// Before the grid shows another row, the current one is saved or, new and untouched, dropped.
bool FRMGD_ANAGDISTINTA::lasciaRiga()
{
    fw::RecordFrame *frame = recordFrame();
    bool left = false;
    return frame && stepOnRow(QStringLiteral("GRID_TIPODISTINTA_RowColChange"), [&] { left = frame->leaveRow(); })
        && left;
}

QString FRMGD_ANAGDISTINTA::codiceDigitato(const QLineEdit *field) const
{
    return field->text().trimmed();
}
