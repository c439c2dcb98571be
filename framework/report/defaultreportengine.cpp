#include "framework/report/defaultreportengine.h"

#include "framework/report/reportdialogmemory.h"
#include "framework/report/reportlayoutreader.h"
#include "framework/report/reportprintdialog.h"
#include "framework/report/reportrenderer.h"
#include "framework/workprogress.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QScreen>
#include <QStandardPaths>
#include <stdexcept>

namespace fw {

namespace {

[[noreturn]] void fail(const QString &reason)
{
    throw std::runtime_error(reason.toStdString());
}

} // namespace

DefaultReportEngine::DefaultReportEngine(const QString &user, QObject *parent)
    : ReportEngine(parent)
    , m_user(user)
    , m_reportFolder(defaultReportFolder())
    , m_settingsFile(ReportDialogMemory::defaultSettingsFile())
{ }

DefaultReportEngine::~DefaultReportEngine() = default;

void DefaultReportEngine::setTitle(const QString &title)
{
    m_title = title;
}
void DefaultReportEngine::setReportFile(const QString &fileName)
{
    m_reportFile = fileName;
}
void DefaultReportEngine::setConnection(const db::ConnectionPtr &connection)
{
    m_connection = connection;
}
void DefaultReportEngine::setQuery(const QString &sql)
{
    m_query = sql;
}
void DefaultReportEngine::setRunMode(RunMode mode)
{
    m_mode = mode;
}
void DefaultReportEngine::setOutputFile(const QString &path)
{
    m_outputFile = path;
}
QString DefaultReportEngine::printedBy() const
{
    return m_printedBy;
}
QString DefaultReportEngine::printedFor() const
{
    return m_printedFor;
}
QString DefaultReportEngine::notes() const
{
    return m_notes;
}
void DefaultReportEngine::setInteractive(bool interactive)
{
    m_interactive = interactive;
}
void DefaultReportEngine::setReportFolder(const QString &folder)
{
    m_reportFolder = folder;
}
void DefaultReportEngine::setSettingsFile(const QString &path)
{
    m_settingsFile = path;
}
void DefaultReportEngine::setPrinterName(const QString &name)
{
    m_printerName = name;
}
void DefaultReportEngine::setProgressDelay(int milliseconds)
{
    m_progressDelay = milliseconds;
}

void DefaultReportEngine::setPrintValues(const QString &printedBy, const QString &printedFor, const QString &notes)
{
    m_printedBy = printedBy;
    m_printedFor = printedFor;
    m_notes = notes;
}

void DefaultReportEngine::setParameter(const QString &name, const QVariant &value)
{
    if (m_layout && !m_layout->declaresParameter(name))
        throw std::invalid_argument(QStringLiteral("Il modello di stampa \"%1\" non ha il parametro %2.")
                                        .arg(m_layout->fileName, name)
                                        .toStdString());
    m_parameters.insert(name.toUpper(), value.toString());
}

QString DefaultReportEngine::layoutPath() const
{
    return QDir(m_reportFolder).filePath(layoutFileName(m_reportFile));
}

QString DefaultReportEngine::defaultReportFolder()
{
    const QString configured = qEnvironmentVariable("DISTINTA_REPORT_DIR");
    return configured.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/reports") : configured;
}

QString DefaultReportEngine::layoutFileName(const QString &reportFile)
{
    return QFileInfo(reportFile).completeBaseName() + QStringLiteral(".layout");
}

QString DefaultReportEngine::pdfPathProblem(const QString &path)
{
    if (path.trimmed().isEmpty())
        return QStringLiteral("Non è stato indicato il file PDF da scrivere.");
    if (QFileInfo(path).isDir())
        return QStringLiteral("Impossibile scrivere il file PDF \"%1\": è una cartella.").arg(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QStringLiteral("Impossibile scrivere il file PDF \"%1\": %2").arg(path, file.errorString());
    file.cancelWriting();
    return {};
}

void DefaultReportEngine::run()
{
    m_cancelled = false;
    m_writtenPdf.clear();
    m_pageCount = 0;
    m_layout.reset();
    if (!m_connection || m_query.trimmed().isEmpty())
        fail(QStringLiteral("Stampa \"%1\": mancano la connessione o la query dei dati.").arg(m_title));

    m_window = m_interactive ? QApplication::activeWindow() : nullptr;
    m_layout = std::make_unique<ReportLayout>(ReportLayoutReader::readFile(layoutPath()));
    if (m_interactive && !askUser()) {
        m_cancelled = true;
        return;
    }
    if (m_mode == RunMode::Preview && !m_interactive)
        fail(QStringLiteral("L'anteprima di stampa richiede una finestra: indicare un file PDF o una stampante."));
    if (m_mode == RunMode::Pdf) {
        const QString problem = pdfPathProblem(m_outputFile);
        if (!problem.isEmpty())
            fail(problem);
    }

    // Only the fields the layout shows are kept: a report query is often a SELECT * of a wide
    // work table, and the other columns would double the time and the memory of a long print.
    QStringList shownFields;
    for (const ReportFieldReference &reference : m_layout->fieldReferences())
        shownFields << reference.name;
    const db::RecordsetPtr rows = m_connection->openRecordset(m_query, shownFields);
    emit BeforePrintReport();

    ReportValues values {m_title, m_parameters, QDateTime::currentDateTime()};
    ReportRenderer renderer(*m_layout, *rows, values);
    m_pageCount = renderer.pageCount();
    switch (m_mode) {
    case RunMode::Pdf: toPdf(renderer); break;
    case RunMode::Print: toPrinter(renderer); break;
    case RunMode::Preview: toPreview(renderer); break;
    }
}

// The dialog proposes the user's last answers; the first time, the user's own name as the one
// who prints. Returns false when the user cancels.
bool DefaultReportEngine::askUser()
{
    ReportDialogMemory memory(m_settingsFile);
    ReportPrintChoice proposed = memory.recall(m_user);
    if (proposed.printedBy.isEmpty())
        proposed.printedBy = m_printedBy.isEmpty() ? m_user : m_printedBy;
    // The name of what is printed goes in the folder of the last PDF: the last file itself
    // belonged to another print.
    if (!m_outputFile.isEmpty()) {
        proposed.pdfPath = m_outputFile;
    } else if (!m_proposedPdfName.isEmpty()) {
        const QString folder = proposed.pdfPath.isEmpty()
            ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)
            : QFileInfo(proposed.pdfPath).absolutePath();
        proposed.pdfPath = QDir(folder).filePath(m_proposedPdfName);
    }

    ReportPrintDialog dialog(m_title, proposed, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const ReportPrintChoice choice = dialog.choice();
    memory.remember(m_user, choice);
    setPrintValues(choice.printedBy, choice.printedFor, choice.notes);
    m_mode = choice.mode;
    m_outputFile = choice.pdfPath;
    return true;
}

void DefaultReportEngine::toPdf(ReportRenderer &renderer)
{
    // Written aside and put in place at the end: a cancelled or failed print leaves the file
    // that was there, if any.
    QSaveFile file(m_outputFile);
    if (!file.open(QIODevice::WriteOnly))
        fail(QStringLiteral("Impossibile scrivere il file PDF \"%1\": %2").arg(m_outputFile, file.errorString()));
    bool complete = false;
    {
        QPdfWriter writer(&file);
        writer.setTitle(m_title);
        writer.setCreator(QStringLiteral("VRAX_DISTINTA"));
        writer.setResolution(600);
        ReportRenderer::preparePage(writer, *m_layout);
        QPainter painter;
        if (!painter.begin(&writer))
            fail(QStringLiteral("Impossibile scrivere il file PDF \"%1\".").arg(m_outputFile));
        WorkProgress progress(m_window, QStringLiteral("Stampa in corso: %1").arg(m_title), renderer.rowCount(), true,
                              m_progressDelay);
        complete = renderer.render(painter, writer, [&progress](int rows) { return progress.advance(rows); });
        painter.end();
    }
    if (!complete) {
        file.cancelWriting();
        m_cancelled = true;
        return;
    }
    if (!file.commit())
        fail(QStringLiteral("Impossibile scrivere il file PDF \"%1\": %2").arg(m_outputFile, file.errorString()));
    if (m_interactive)
        m_writtenPdf = m_outputFile;
}

void DefaultReportEngine::toPrinter(ReportRenderer &renderer)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setDocName(m_title);
    if (m_interactive) {
        if (!m_printerName.isEmpty())
            printer.setPrinterName(m_printerName);
        QPrintDialog dialog(&printer, m_window);
        dialog.setWindowTitle(QStringLiteral("Stampa - ") + m_title);
        if (dialog.exec() != QDialog::Accepted) {
            m_cancelled = true;
            return;
        }
    } else {
        const QString name = m_printerName.isEmpty() ? QPrinterInfo::defaultPrinterName() : m_printerName;
        if (name.isEmpty())
            fail(QStringLiteral("Nessuna stampante disponibile."));
        if (!QPrinterInfo::availablePrinterNames().contains(name))
            fail(QStringLiteral("Stampante non disponibile: \"%1\".").arg(name));
        printer.setPrinterName(name);
    }
    // The layout keeps its own page, whatever the printer proposed.
    ReportRenderer::preparePage(printer, *m_layout);
    const QString printerName = printer.outputFormat() == QPrinter::PdfFormat ? printer.outputFileName()
                                                                              : printer.printerName();
    QPainter painter;
    if (!printer.isValid() || !painter.begin(&printer))
        fail(QStringLiteral("Impossibile avviare la stampa su \"%1\".").arg(printerName));
    WorkProgress progress(m_window, QStringLiteral("Stampa in corso: %1").arg(m_title), renderer.rowCount(), true,
                          m_progressDelay);
    const bool complete = renderer.render(painter, printer, [&progress](int rows) { return progress.advance(rows); });
    if (!complete) {
        printer.abort();
        m_cancelled = true;
    }
    painter.end();
    if (complete && printer.printerState() == QPrinter::Error)
        fail(QStringLiteral("La stampa su \"%1\" non è stata completata: la stampante ha segnalato un errore.")
                 .arg(printerName));
}

void DefaultReportEngine::toPreview(ReportRenderer &renderer)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setDocName(m_title);
    ReportRenderer::preparePage(printer, *m_layout);
    QPrintPreviewDialog preview(&printer, m_window);
    preview.setObjectName(QStringLiteral("FRM_ANTEPRIMA"));
    preview.setWindowTitle(QStringLiteral("Anteprima di stampa - ") + m_title);
    // Most of the screen, maximized where a window manager allows it.
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        preview.resize(screen->availableGeometry().size() * 0.85);
    preview.setWindowState(Qt::WindowMaximized);
    connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter *target) {
        QPainter painter(target);
        WorkProgress progress(m_window, QStringLiteral("Anteprima in corso: %1").arg(m_title), renderer.rowCount(),
                              true, m_progressDelay);
        if (!renderer.render(painter, *target, [&progress](int rows) { return progress.advance(rows); })) {
            m_cancelled = true;
            QMetaObject::invokeMethod(&preview, &QDialog::reject, Qt::QueuedConnection);
        }
    });
    preview.exec();
}

} // namespace fw
