// Printing the loaded classification: its nodes down to the chosen level go, in tree order, into
// the work table GD04_STDISTINTA under the key of this workstation and user; the host's report
// engine then prints "VRAX_DISTINTA.rpt" over those rows, with who printed it, for whom, the
// notes and the level in its header.
#include "forms/distinta/frmgd_distinta.h"

#include "data/columnwidths.h"
#include "data/stampastatements.h"
#include "framework/globalservices.h"
#include "framework/logservice.h"
#include "framework/reportengine.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/workprogress.h"
#include "platform/os/systeminfo.h"

#include <QComboBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <limits>
#include <stdexcept>

namespace {

const QString procedureStampa = QStringLiteral("Stampa");
const QString titoloStampa = QStringLiteral("Distinta di Classificazione anagrafiche");
const QString fileStampa = QStringLiteral("VRAX_DISTINTA.rpt");

// The names are read into buffers of 100 characters, the last one for the terminator.
constexpr int LunghezzaNome = 99;

// The number a text begins with, as the level combo's items ("3° livello") are read: blanks,
// a sign and digits; 0 when there is none.
qint64 numeroIniziale(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    bool negative = false;
    if (i < text.size() && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        negative = text.at(i++) == QLatin1Char('-');
    qint64 value = 0;
    for (; i < text.size() && text.at(i).isDigit(); ++i) {
        value = value * 10 + text.at(i).digitValue();
        if (value > std::numeric_limits<qint32>::max())
            break;
    }
    return negative ? -value : value;
}

} // namespace

void FRMGD_DISTINTA::collegaStampa()
{
    connect(CMD_STAMPA, &QPushButton::clicked, this, &FRMGD_DISTINTA::CMD_STAMPA_Click);
    // Nothing to print without nodes: the button follows the tree.
    QAbstractItemModel *model = TVW_DISTINTA->model();
    connect(model, &QAbstractItemModel::modelReset, this, &FRMGD_DISTINTA::aggiornaStampa);
    connect(model, &QAbstractItemModel::rowsInserted, this, &FRMGD_DISTINTA::aggiornaStampa);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &FRMGD_DISTINTA::aggiornaStampa);
    aggiornaStampa();
}

void FRMGD_DISTINTA::aggiornaStampa()
{
    CMD_STAMPA->setEnabled(TVW_DISTINTA->count() > 0);
}

void FRMGD_DISTINTA::CMD_STAMPA_Click()
{
    StampaDistinta(CMB_LIVELLO->currentText());
}

bool FRMGD_DISTINTA::StampaDistinta(const QString &testoLivello)
{
    return preparaStampa(testoLivello) && InvocaStampa();
}

// The work rows of the print: the key, the level limit, the rows of the previous print with
// this key cleared, the nodes written. False when there is nothing to print or it was abandoned.
bool FRMGD_DISTINTA::preparaStampa(const QString &testoLivello)
{
    if (!m_nodi || m_nodi->isEmpty())
        return false;
    short limite = 1;
    if (!step(procedureStampa, [&] {
            m_chiaveStampa = columnwidths::fitToColumn(QStringLiteral("GD04_KEY"), NomeComputer() + NomeUtente());
            limite = limiteLivello(testoLivello);
        }))
        return false;
    m_livelloStampa = testoLivello;
    return PulisciStampa() && scriviRigheStampa(limite);
}

// The levels printed are those below the value of the level text plus one: an empty text or
// "0" prints the roots only, "2" the levels 0, 1 and 2. The limit is a 16-bit number.
short FRMGD_DISTINTA::limiteLivello(const QString &testoLivello)
{
    const qint64 limite = numeroIniziale(testoLivello) + 1;
    if (limite > std::numeric_limits<qint16>::max() || limite < std::numeric_limits<qint16>::min())
        throw std::overflow_error("Overflow");
    return static_cast<short>(limite);
}

bool FRMGD_DISTINTA::PulisciStampa()
{
    return step(procedureStampa, [&] {
        connection()->execute(stampastatements::deleteWorkRowsStatement(m_chiaveStampa, companyCode()));
    });
}

// One row per node above the limit, in tree order; a failing row goes to the error dialog,
// where Ignore skips it and Abort leaves the rows written so far for the next print to clear.
bool FRMGD_DISTINTA::scriviRigheStampa(short limite)
{
    const int count = m_nodi->recordCount();
    fw::WorkProgress progress(this, QStringLiteral("Preparazione della stampa..."), count, false);
    stampastatements::RigaStampa riga;
    riga.key = m_chiaveStampa;
    riga.company = companyCode();
    riga.typeId = m_idDistinta.toLongLong();
    riga.subjectKind = m_tipoSoggetto;
    const QString colonnaCodice = QStringLiteral("trGD02_CLIFOR_CG44");
    const QString colonnaInizio = QStringLiteral("trGD02_DATAINIZIOVAL");
    const QString colonnaFine = QStringLiteral("trGD02_DATAFINEVAL");
    const auto data = [](const QVariant &value) -> std::optional<QDate> {
        if (value.isNull() || !value.toDate().isValid())
            return std::nullopt;
        return value.toDate();
    };

    fw::TreeListNode node = TVW_DISTINTA->firstNode();
    for (int i = 0; i < count && node.isValid(); ++i, node = node.next()) {
        if (node.level() < limite) {
            riga.level = node.level();
            riga.subjectCode = node.value(colonnaCodice).toLongLong();
            riga.start = data(node.value(colonnaInizio));
            riga.end = data(node.value(colonnaFine));
            const QString sql = stampastatements::insertWorkRowStatement(riga);
            if (!step(procedureStampa, [&] { connection()->execute(sql); }))
                return false;
        }
        progress.advance(i + 1);
    }
    return true;
}

bool FRMGD_DISTINTA::InvocaStampa()
{
    const QString procedure = QStringLiteral("InvocaStampa");
    if (!step(procedure, [&] {
            PclsReport.reset();
            fw::GlobalServices *services = globals();
            PclsReport = services ? services->createReportEngine() : nullptr;
            if (!PclsReport)
                throw std::runtime_error("Il programma non ha un motore di stampa.");
            connect(PclsReport.get(), &fw::ReportEngine::BeforePrintReport, this,
                    &FRMGD_DISTINTA::PclsReport_BeforePrintReport);
            PclsReport->setTitle(titoloStampa);
            PclsReport->setReportFile(fileStampa);
            PclsReport->setConnection(connection());
            PclsReport->setQuery(stampastatements::reportDataQuery(m_chiaveStampa, companyCode()));
        }))
        return false;
    return step(procedure, [&] { PclsReport->run(); });
}

// The engine reads every table of the report through the connection it was given, so there is
// no logon to pass on to sub-reports: only the parameter fields are filled in.
void FRMGD_DISTINTA::PclsReport_BeforePrintReport()
{
    PreparaLimiti();
    PreparaNote();
}

void FRMGD_DISTINTA::PreparaLimiti()
{
    step(QStringLiteral("PreparaLimiti"), [&] {
        PclsReport->setParameter(QStringLiteral("FINOALIVELLO"), QString::number(numeroIniziale(m_livelloStampa)));
    });
}

void FRMGD_DISTINTA::PreparaNote()
{
    step(QStringLiteral("PreparaNote"), [&] {
        PclsReport->setParameter(QStringLiteral("ESEGUITODA"), PclsReport->printedBy());
        PclsReport->setParameter(QStringLiteral("DESTINATOA"), PclsReport->printedFor());
        PclsReport->setParameter(QStringLiteral("NOTE"), PclsReport->notes());
    });
}

QString FRMGD_DISTINTA::NomeComputer()
{
    return os::computerName().left(LunghezzaNome);
}

QString FRMGD_DISTINTA::NomeUtente()
{
    return os::userName().left(LunghezzaNome);
}

// For a print without a window: the type named by its code is chosen in the selector as a
// click would choose it, and its list printed down to the level given, else down to the level
// the combo proposes after the load.
bool FRMGD_DISTINTA::StampaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello)
{
    const QString codice = codiceTipo.trimmed().toUpper();
    if (!scegliTipoSenzaFinestra(codice, procedureStampa))
        return false;
    if (!m_nodi || m_nodi->isEmpty()) {
        avviso(QStringLiteral("La distinta \"%1\" non ha nodi da stampare.").arg(codice));
        return false;
    }
    return StampaDistinta(livello ? QString::number(*livello) : CMB_LIVELLO->currentText());
}

// The type of that code chosen in the selector and loaded, as a click would; false (the reason
// told) when the company has no such type.
bool FRMGD_DISTINTA::scegliTipoSenzaFinestra(const QString &codice, const QString &procedura)
{
    QString chiave;
    if (!step(procedura, [&] {
            const db::RecordsetPtr tipo =
                connection()->openRecordset(stampastatements::typeByCodeQuery(companyCode(), codice));
            if (tipo->isEmpty())
                return;
            const QString prefisso = tipo->valueAt(0, tipo->fieldIndex(QStringLiteral("GD01_INDTIPOSOGG"))).toInt() == 0
                                         ? QStringLiteral("C")
                                         : QStringLiteral("F");
            chiave = prefisso + tipo->valueAt(0, tipo->fieldIndex(QStringLiteral("GD01_ID"))).toString();
        }))
        return false;

    QTreeWidgetItem *voce = nullptr;
    for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it && !chiave.isEmpty(); ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == chiave)
            voce = *it;
    }
    if (!voce) {
        avviso(QStringLiteral("La distinta \"%1\" non esiste nella ditta %2.").arg(codice).arg(companyCode()));
        return false;
    }
    TVW_SELDISTINTE->setCurrentItem(voce);
    TVW_SELDISTINTE_Click();
    return true;
}
