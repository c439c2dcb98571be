#pragma once

#include "framework/reportengine.h"

#include <QHash>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace fw {

struct ReportLayout;
class ReportRenderer;

// The report engine of a standalone installation: a layout of our own format per report
// (reportlayoutreader.h), found in the report folder by the report's name ("VRAX_DISTINTA.rpt"
// is "VRAX_DISTINTA.layout"), printed to the preview, a printer of the system or a PDF file.
//
// run(): reads the layout (a missing or malformed file is an error naming it, before anything
// is asked or printed); asks the print dialog (interactive only; its answers are remembered per
// user); runs the query; emits BeforePrintReport, where the caller sets the parameter fields;
// lays the rows out and draws them page by page, with a progress box and "Annulla" for long
// reports (interactive only). A cancel leaves no file behind and is no error.
//
// Failures throw: db::DatabaseError for the query, ReportLayoutError for the layout, and
// std::runtime_error with the reason for a destination that cannot be written or printed on.
class DefaultReportEngine : public ReportEngine
{
    Q_OBJECT

public:
    // user: whose last answers the print dialog proposes.
    explicit DefaultReportEngine(const QString &user, QObject *parent = nullptr);
    ~DefaultReportEngine() override;

    void setTitle(const QString &title) override;
    void setReportFile(const QString &fileName) override;
    void setConnection(const db::ConnectionPtr &connection) override;
    void setQuery(const QString &sql) override;
    void setRunMode(RunMode mode) override;
    void setOutputFile(const QString &path) override;
    void setProposedPdfName(const QString &fileName) override { m_proposedPdfName = fileName; }
    // Throws std::invalid_argument for a name the loaded layout does not declare.
    void setParameter(const QString &name, const QVariant &value) override;
    QString printedBy() const override;
    QString printedFor() const override;
    QString notes() const override;
    void run() override;

    // --- set by the host
    // Unattended: no dialog, no progress box; the run mode, output file and texts as set.
    void setInteractive(bool interactive);
    void setPrintValues(const QString &printedBy, const QString &printedFor, const QString &notes);
    void setReportFolder(const QString &folder);
    void setSettingsFile(const QString &path); // where the dialog's answers are kept
    void setPrinterName(const QString &name);  // the printer of an unattended print
    void setProgressDelay(int milliseconds);   // how long a report runs before its progress shows

    // --- after run()
    bool wasCancelled() const { return m_cancelled; }
    QString writtenPdf() const override { return m_writtenPdf; }
    int pageCount() const { return m_pageCount; }
    QString layoutPath() const;

    // DISTINTA_REPORT_DIR when set, else the "reports" folder next to the program.
    static QString defaultReportFolder();
    // The layout file of a report as the suite names it: "VRAX_DISTINTA.rpt" -> "VRAX_DISTINTA.layout".
    static QString layoutFileName(const QString &reportFile);
    // Why a PDF cannot be written at path; empty when it can. Nothing is left at path.
    static QString pdfPathProblem(const QString &path);

private:
    bool askUser();
    void toPdf(ReportRenderer &renderer);
    void toPrinter(ReportRenderer &renderer);
    void toPreview(ReportRenderer &renderer);

    QString m_user;
    QString m_title;
    QString m_reportFile;
    db::ConnectionPtr m_connection;
    QString m_query;
    RunMode m_mode = RunMode::Preview;
    QString m_outputFile;
    QHash<QString, QString> m_parameters;
    QString m_printedBy;
    QString m_printedFor;
    QString m_notes;
    bool m_interactive = true;
    QString m_reportFolder;
    QString m_settingsFile;
    QString m_printerName;
    int m_progressDelay = 1000;
    QPointer<QWidget> m_window; // the window the dialogs stand over
    std::unique_ptr<ReportLayout> m_layout;
    bool m_cancelled = false;
    QString m_writtenPdf;
    QString m_proposedPdfName;
    int m_pageCount = 0;
};

} // namespace fw
