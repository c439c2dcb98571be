// Export of the classification as the tree shows it (down to the chosen level, as of the chosen
// date) to a spreadsheet: an XLSX workbook whose rows group like the tree, or a CSV file. The
// tree's own columns and texts go out, codes as numbers and dates as dates.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/export/csvtablewriter.h"
#include "framework/export/exportfile.h"
#include "framework/export/xlsxtablewriter.h"
#include "framework/logservice.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/workprogress.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QToolButton>
#include <QTreeWidget>

namespace {

const QString procedureEsporta = QStringLiteral("Esporta");

// The columns that hold subject codes go out as numbers, so that a spreadsheet sorts them.
bool colonnaCodice(const QString &name)
{
    return name == QLatin1String("trGD02_CLIFOR_CG44") || name == QLatin1String("trGD02_CLIFORFATT_CG44");
}

QVariant comeData(const QVariant &value)
{
    if (value.isNull())
        return {};
    const QDate date = value.metaType().id() == QMetaType::QDateTime ? value.toDateTime().date() : value.toDate();
    return date.isValid() ? QVariant(date) : QVariant();
}

} // namespace

QToolButton *FRMGD_DISTINTA::creaCMD_ESPORTA()
{
    CMD_ESPORTA = new QToolButton;
    CMD_ESPORTA->setObjectName(QStringLiteral("CMD_ESPORTA"));
    CMD_ESPORTA->setText(QStringLiteral("Esp&orta"));
    CMD_ESPORTA->setToolTip(QStringLiteral("Esporta la distinta come è mostrata (livelli e data) in Excel o in CSV (Alt+O)"));
    CMD_ESPORTA->setPopupMode(QToolButton::InstantPopup);
    CMD_ESPORTA->setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto *menu = new QMenu(CMD_ESPORTA);
    menu->addAction(QStringLiteral("Cartella di lavoro &Excel (XLSX)..."), this,
                    [this] { CMD_ESPORTA_Click(fw::ExportFile::Format::Xlsx); });
    menu->addAction(QStringLiteral("Testo &CSV (separato da punto e virgola)..."), this,
                    [this] { CMD_ESPORTA_Click(fw::ExportFile::Format::Csv); });
    CMD_ESPORTA->setMenu(menu);
    return CMD_ESPORTA;
}

void FRMGD_DISTINTA::collegaEsportazione()
{
    // Nothing to export without nodes: the button follows the tree, as the print's does.
    const auto aggiorna = [this] { CMD_ESPORTA->setEnabled(TVW_DISTINTA->count() > 0); };
    QAbstractItemModel *model = TVW_DISTINTA->model();
    connect(model, &QAbstractItemModel::modelReset, this, aggiorna);
    connect(model, &QAbstractItemModel::rowsInserted, this, aggiorna);
    connect(model, &QAbstractItemModel::rowsRemoved, this, aggiorna);
    aggiorna();
    m_sceltaFileEsportazione = [this](fw::ExportFile::Format formato, const QString &proposto) {
        return fw::ExportFile::choose(this, formato, proposto);
    };
}

void FRMGD_DISTINTA::CMD_ESPORTA_Click(fw::ExportFile::Format formato)
{
    if (!m_nodi || m_nodi->isEmpty())
        return;
    QString nome = TVW_SELDISTINTE->currentItem() ? TVW_SELDISTINTE->currentItem()->text(0) : QStringLiteral("Distinta");
    if (m_dataValidita)
        nome += QStringLiteral(" al ") + m_dataValidita->toString(QStringLiteral("yyyy-MM-dd"));
    nome.replace(QRegularExpression(QStringLiteral("[\\\\/:*?\"<>|]")), QStringLiteral("_"));
    const QString cartella = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString proposto = QDir(cartella).filePath(nome + QLatin1Char('.') + fw::ExportFile::extension(formato));
    const QString percorso = m_sceltaFileEsportazione ? m_sceltaFileEsportazione(formato, proposto) : QString();
    if (percorso.isEmpty())
        return;
    if (EsportaDistinta(percorso, formato, CMB_LIVELLO->currentText())) {
        if (fw::LogService *log = logService())
            log->showMessage(QStringLiteral("Distinta esportata nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)),
                             windowTitle(), fw::MessageStyle::Notice);
    }
}

// The columns of the export: a level column, then the tree's visible columns in their order.
QList<fw::ExportColumn> FRMGD_DISTINTA::colonneEsportazione(QStringList &nomi) const
{
    QList<fw::ExportColumn> colonne;
    for (int i = 0; i < TVW_DISTINTA->columnCount(); ++i) {
        const fw::TreeListColumn &column = TVW_DISTINTA->column(i);
        if (!column.visible)
            continue;
        fw::ExportCellKind kind = fw::ExportCellKind::Text;
        if (colonnaCodice(column.name))
            kind = fw::ExportCellKind::Number;
        else if (column.kind == fw::TreeListColumnKind::Date)
            kind = fw::ExportCellKind::Date;
        colonne << fw::ExportColumn{column.caption, kind};
        nomi << column.name;
    }
    return colonne;
}

// The nodes above the level limit, in tree order. A path that cannot be written is told before
// any work; a failure or a cancel midway leaves no file behind and an older one as it was.
bool FRMGD_DISTINTA::EsportaDistinta(const QString &percorso, fw::ExportFile::Format formato, const QString &testoLivello)
{
    if (!m_nodi || m_nodi->isEmpty())
        return false;
    const QString problema = fw::ExportFile::problem(percorso);
    if (!problema.isEmpty()) {
        avviso(problema);
        return false;
    }
    short limite = 1;
    if (!step(procedureEsporta, [&] { limite = limiteLivello(testoLivello); }))
        return false;

    QStringList nomi;
    const QList<fw::ExportColumn> colonne = colonneEsportazione(nomi);
    std::unique_ptr<fw::TableWriter> writer;
    if (formato == fw::ExportFile::Format::Xlsx)
        writer = std::make_unique<fw::XlsxTableWriter>();
    else
        writer = std::make_unique<fw::CsvTableWriter>();

    const QString titolo = TVW_SELDISTINTE->currentItem() ? TVW_SELDISTINTE->currentItem()->text(0) : QString();
    const int count = TVW_DISTINTA->count();
    bool annullata = false;
    const bool scritta = step(procedureEsporta, [&] {
        writer->open(percorso, titolo, colonne);
        fw::WorkProgress progress(this, QStringLiteral("Esportazione della distinta..."), count, true);
        QList<QVariant> valori(colonne.size());
        fw::TreeListNode node = TVW_DISTINTA->firstNode();
        for (int i = 0; node.isValid(); ++i, node = node.next()) {
            if (node.level() < limite) {
                for (qsizetype c = 0; c < colonne.size(); ++c) {
                    switch (colonne.at(c).kind) {
                    case fw::ExportCellKind::Number: valori[c] = node.value(nomi.at(c)); break;
                    case fw::ExportCellKind::Date: valori[c] = comeData(node.value(nomi.at(c))); break;
                    case fw::ExportCellKind::Text: valori[c] = TVW_DISTINTA->displayText(node, nomi.at(c)); break;
                    }
                }
                writer->writeRow(node.level(), valori);
            }
            if (!progress.advance(i + 1)) {
                annullata = true;
                return;
            }
        }
        writer->commit();
    });
    return scritta && !annullata;
}

// For an export without a window: the date in force first, then the type chosen as a click
// would choose it, then its tree written down to the level given (else the whole tree).
bool FRMGD_DISTINTA::EsportaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello,
                                          std::optional<QDate> data, const QString &percorso,
                                          fw::ExportFile::Format formato)
{
    const QString codice = codiceTipo.trimmed().toUpper();
    const QString problema = fw::ExportFile::problem(percorso);
    if (!problema.isEmpty()) {
        avviso(problema);
        return false;
    }
    m_dataValidita = data;
    if (data)
        TXT_DATAVALIDITA->setText(data->toString(QStringLiteral("dd/MM/yyyy")));
    if (!scegliTipoSenzaFinestra(codice, procedureEsporta))
        return false;
    if (!m_nodi || m_nodi->isEmpty()) {
        avviso(data ? QStringLiteral("La distinta \"%1\" non ha nodi validi al %2 da esportare.")
                          .arg(codice, data->toString(QStringLiteral("dd/MM/yyyy")))
                    : QStringLiteral("La distinta \"%1\" non ha nodi da esportare.").arg(codice));
        return false;
    }
    return EsportaDistinta(percorso, formato, livello ? QString::number(*livello) : CMB_LIVELLO->currentText());
}
