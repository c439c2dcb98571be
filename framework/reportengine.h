#pragma once

#include "platform/db/connection.h"

#include <QObject>
#include <QString>
#include <QVariant>

namespace fw {

// The host's report engine: renders a report template over a data query.
class ReportEngine : public QObject
{
    Q_OBJECT

public:
    enum class RunMode { Preview, Print, Pdf };

    using QObject::QObject;

    virtual void setTitle(const QString &title) = 0;
    virtual void setReportFile(const QString &fileName) = 0; // looked up in the host's report folder
    virtual void setConnection(const db::ConnectionPtr &connection) = 0;
    virtual void setQuery(const QString &sql) = 0;
    virtual void setRunMode(RunMode mode) = 0;
    virtual void setOutputFile(const QString &path) = 0; // for RunMode::Pdf
    // The name the print dialog proposes for a PDF, in the folder of the user's last one, when no
    // output file was set.
    virtual void setProposedPdfName(const QString &fileName) = 0;

    // Values of the template's parameter fields; meant for BeforePrintReport.
    virtual void setParameter(const QString &name, const QVariant &value) = 0;

    // What the user typed in the engine's print dialog.
    virtual QString printedBy() const = 0;
    virtual QString printedFor() const = 0;
    virtual QString notes() const = 0;

    // Runs the report; throws db::DatabaseError when the query fails, std::runtime_error with the
    // reason when the report cannot be produced (its template, its destination).
    virtual void run() = 0;
    // The PDF file the user chose in the print dialog and the last run wrote; empty otherwise.
    virtual QString writtenPdf() const = 0;

signals:
    // Emitted by run() once the data is read, before rendering.
    void BeforePrintReport();
};

} // namespace fw
