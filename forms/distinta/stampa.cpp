#include "forms/distinta/stampa.h"

#include "data/columnwidths.h"
#include "data/stampastatements.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/livelli.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/export/exportfile.h"
#include "framework/globalservices.h"
#include "framework/reportengine.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/workprogress.h"
#include "platform/os/systeminfo.h"

#include <QDir>
#include <QPushButton>
#include <stdexcept>

namespace distinta {

namespace {

const QString procedureStampa = QStringLiteral("Stampa");
const QString titoloStampa = QStringLiteral("Distinta di Classificazione anagrafiche");
const QString fileStampa = QStringLiteral("VRAX_DISTINTA.rpt");
constexpr int LunghezzaNome = 99;

std::optional<QDate> giorno(const QVariant &value)
{
    if (value.isNull() || !value.toDate().isValid())
        return std::nullopt;
    return value.toDate();
}

} // namespace

Stampa::Stampa(FormFrame &form, Albero &albero, Selettore &selettore)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , CMD_STAMPA(new QPushButton(QStringLiteral("&Stampa")))
{
    CMD_STAMPA->setObjectName(QStringLiteral("CMD_STAMPA"));
    CMD_STAMPA->setToolTip(QStringLiteral("Stampa la distinta fino al livello scelto (Alt+S, Ctrl+P)"));
    connect(CMD_STAMPA, &QPushButton::clicked, this, &Stampa::CMD_STAMPA_Click);
    // Nothing to print without nodes: the button follows the tree.
    fw::TreeList *tree = albero.widget();
    const auto aggiorna = [this, tree] { CMD_STAMPA->setEnabled(tree->count() > 0); };
    QAbstractItemModel *model = tree->model();
    connect(model, &QAbstractItemModel::modelReset, this, aggiorna);
    connect(model, &QAbstractItemModel::rowsInserted, this, aggiorna);
    connect(model, &QAbstractItemModel::rowsRemoved, this, aggiorna);
    aggiorna();
}

Stampa::~Stampa() = default;

void Stampa::rilascia()
{
    PclsReport.reset();
}

void Stampa::CMD_STAMPA_Click()
{
    StampaDistinta(m_albero.livelli().testoLivello());
}

bool Stampa::StampaDistinta(const QString &testoLivello)
{
    return preparaStampa(testoLivello) && InvocaStampa();
}

// The work rows of the print: the key, the level limit, the rows of the previous print with this
// key cleared, the nodes written. False when there is nothing to print or it was abandoned.
bool Stampa::preparaStampa(const QString &testoLivello)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->isEmpty())
        return false;
    short limite = 1;
    if (!m_form.step(procedureStampa, [&] {
            m_chiaveStampa = columnwidths::fitToColumn(QStringLiteral("GD04_KEY"), NomeComputer() + NomeUtente());
            limite = Livelli::limite(testoLivello);
        }))
        return false;
    m_livelloStampa = testoLivello;
    return PulisciStampa() && scriviRigheStampa(limite);
}

bool Stampa::PulisciStampa()
{
    return m_form.step(procedureStampa, [&] {
        m_form.connection()->execute(stampastatements::deleteWorkRowsStatement(m_chiaveStampa, m_form.companyCode()));
    });
}

// One row per node above the limit, in tree order; a failing row goes to the error dialog,
// where Ignore skips it and Abort leaves the rows written so far for the next print to clear.
bool Stampa::scriviRigheStampa(short limite)
{
    const int count = m_albero.nodi()->recordCount();
    fw::WorkProgress progress(&m_form, QStringLiteral("Preparazione della stampa..."), count, false);
    stampastatements::RigaStampa riga;
    riga.key = m_chiaveStampa;
    riga.company = m_form.companyCode();
    riga.typeId = m_albero.idTipo();
    riga.subjectKind = m_albero.tipoSoggetto();
    const QString colonnaCodice = QStringLiteral("trGD02_CLIFOR_CG44");
    const QString colonnaInizio = QStringLiteral("trGD02_DATAINIZIOVAL");
    const QString colonnaFine = QStringLiteral("trGD02_DATAFINEVAL");

    fw::TreeListNode node = m_albero.widget()->firstNode();
    for (int i = 0; i < count && node.isValid(); ++i, node = node.next()) {
        if (node.level() < limite) {
            riga.level = node.level();
            riga.subjectCode = node.value(colonnaCodice).toLongLong();
            riga.start = giorno(node.value(colonnaInizio));
            riga.end = giorno(node.value(colonnaFine));
            const QString sql = stampastatements::insertWorkRowStatement(riga);
            if (!m_form.step(procedureStampa, [&] { m_form.connection()->execute(sql); }))
                return false;
        }
        progress.advance(i + 1);
    }
    return true;
}

bool Stampa::InvocaStampa()
{
    const QString procedure = QStringLiteral("InvocaStampa");
    if (!m_form.step(procedure, [&] {
            PclsReport.reset();
            fw::GlobalServices *services = m_form.globals();
            PclsReport = services ? services->createReportEngine() : nullptr;
            if (!PclsReport)
                throw std::runtime_error("Il programma non ha un motore di stampa.");
            connect(PclsReport.get(), &fw::ReportEngine::BeforePrintReport, this,
                    &Stampa::PclsReport_BeforePrintReport);
            PclsReport->setTitle(titoloStampa);
            // A PDF is proposed under the name of the list printed.
            const QString distinta = m_selettore.testoSelezionato();
            PclsReport->setProposedPdfName(fw::ExportFile::fileNameFor(distinta.isEmpty() ? titoloStampa : distinta)
                                           + QStringLiteral(".pdf"));
            PclsReport->setReportFile(fileStampa);
            PclsReport->setConnection(m_form.connection());
            PclsReport->setQuery(stampastatements::reportDataQuery(m_chiaveStampa, m_form.companyCode()));
        }))
        return false;
    if (!m_form.step(procedure, [&] { PclsReport->run(); }))
        return false;
    if (const QString pdf = PclsReport->writtenPdf(); !pdf.isEmpty())
        m_form.notifica(QStringLiteral("Distinta stampata nel file \"%1\".").arg(QDir::toNativeSeparators(pdf)));
    return true;
}

// The engine reads every table of the report through the connection it was given, so there is
// no logon to pass on to sub-reports: only the parameter fields are filled in.
void Stampa::PclsReport_BeforePrintReport()
{
    PreparaLimiti();
    PreparaNote();
}

void Stampa::PreparaLimiti()
{
    m_form.step(QStringLiteral("PreparaLimiti"), [&] {
        PclsReport->setParameter(QStringLiteral("FINOALIVELLO"),
                                 QString::number(Livelli::numeroIniziale(m_livelloStampa)));
    });
}

void Stampa::PreparaNote()
{
    m_form.step(QStringLiteral("PreparaNote"), [&] {
        PclsReport->setParameter(QStringLiteral("ESEGUITODA"), PclsReport->printedBy());
        PclsReport->setParameter(QStringLiteral("DESTINATOA"), PclsReport->printedFor());
        PclsReport->setParameter(QStringLiteral("NOTE"), PclsReport->notes());
    });
}

QString Stampa::NomeComputer()
{
    return os::computerName().left(LunghezzaNome);
}

QString Stampa::NomeUtente()
{
    return os::userName().left(LunghezzaNome);
}

} // namespace distinta
