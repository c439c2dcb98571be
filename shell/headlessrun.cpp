#include "shell/headlessrun.h"

#include "framework/cinterface.h"
#include "framework/export/exportfile.h"
#include "framework/hostcontext.h"
#include "framework/historyexporter.h"
#include "framework/hostglobalservices.h"
#include "framework/listexporter.h"
#include "framework/listimporter.h"
#include "framework/listprinter.h"
#include "framework/report/defaultreportengine.h"
#include "framework/unattendedrun.h"
#include "shell/componentcatalog.h"
#include "shell/shelloptions.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <functional>
#include <optional>

namespace {

// True when the command line holds the option, as "--name" or "--name=value".
bool commandLineHas(int argc, char **argv, const char *option)
{
    const QByteArray name(option);
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == name || argument.startsWith(name + '='))
            return true;
    }
    return false;
}

// What a print and an export do differently: the file, the module's work and the words that
// tell how it went.
struct Job
{
    QString path;    // absolute
    QString problem; // why the file cannot be written; empty when it can
    QString typeCode;
    QString notOffered; // %1: the component
    QString notWritten; // %1: the list's code
    QString written;    // %1: the file
    // The work done by the module; nothing when the module does not offer it.
    std::function<std::optional<bool>(QObject *module)> work;
};

// The module of programId created from the catalog and given the host contract as ShowForm
// would get it; null when the catalog does not have it.
std::unique_ptr<fw::Cinterface> createModule(const ComponentCatalog &catalog, const QString &programId,
                                             fw::HostGlobalServices &globals, const db::ConnectionPtr &connection)
{
    std::unique_ptr<fw::Cinterface> module = catalog.create(programId);
    if (!module)
        return nullptr;
    fw::HostContext context;
    context.globals = &globals;
    context.connection = connection;
    context.caption = QStringLiteral("Distinta di classificazione");
    context.menuModulo = QStringLiteral("GD");
    context.menuPadre = QStringLiteral("GD00");
    context.menuProg = QStringLiteral("GD01");
    fw::fillHostContract(*module, context);
    return module;
}

int run(const Job &job, fw::HostGlobalServices &globals, const db::ConnectionPtr &connection,
        const ComponentCatalog &catalog, const QString &programId, const std::shared_ptr<fw::UnattendedRun> &unattended)
{
    QTextStream err(stderr);
    if (!job.problem.isEmpty()) {
        err << "distinta: " << job.problem << Qt::endl;
        return 1;
    }

    const std::unique_ptr<fw::Cinterface> module = createModule(catalog, programId, globals, connection);
    const std::optional<bool> done = module ? job.work(dynamic_cast<QObject *>(module.get())) : std::nullopt;
    if (!done) {
        err << job.notOffered.arg(programId) << Qt::endl;
        return 1;
    }
    if (!*done) {
        // A failing statement has already been reported once, as in every run without a user.
        if (unattended && unattended->failed())
            return fw::UnattendedRun::FailureExitCode;
        err << job.notWritten.arg(job.typeCode) << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << job.written.arg(QDir::toNativeSeparators(job.path)) << Qt::endl;
    return 0;
}

Job printJob(const ShellOptions &options, fw::HostGlobalServices &globals)
{
    const PrintRequest &request = options.print;
    const QString pdf = QFileInfo(request.pdfPath).absoluteFilePath();
    globals.setReportEngineFactory([&options, pdf] {
        const PrintRequest &print = options.print;
        auto engine = std::make_unique<fw::DefaultReportEngine>(options.user);
        engine->setInteractive(false);
        engine->setRunMode(fw::ReportEngine::RunMode::Pdf);
        engine->setOutputFile(pdf);
        engine->setPrintValues(print.printedBy.isEmpty() ? options.user : print.printedBy, print.printedFor,
                               print.notes);
        return engine;
    });
    return {
        .path = pdf,
        .problem = fw::DefaultReportEngine::pdfPathProblem(pdf),
        .typeCode = request.typeCode,
        .notOffered = QStringLiteral("distinta: il componente \"%1\" non è installato o non stampa senza finestre."),
        .notWritten = QStringLiteral("distinta: la distinta \"%1\" non è stata stampata."),
        .written = QStringLiteral("PDF scritto: %1"),
        .work = [&request](QObject *module) -> std::optional<bool> {
            auto *printer = qobject_cast<fw::ListPrinter *>(module);
            if (!printer)
                return std::nullopt;
            return printer->printList(request.typeCode, request.level, request.date);
        }};
}

Job exportJob(const ShellOptions &options)
{
    const ExportRequest &request = options.exportList;
    const QString path = QFileInfo(request.path).absoluteFilePath();
    return {
        .path = path,
        .problem = fw::ExportFile::problem(path),
        .typeCode = request.typeCode,
        .notOffered = QStringLiteral("distinta: il componente \"%1\" non è installato o non esporta senza finestre."),
        .notWritten = QStringLiteral("distinta: la distinta \"%1\" non è stata esportata."),
        .written = QStringLiteral("File scritto: %1"),
        .work = [&request, path](QObject *module) -> std::optional<bool> {
            auto *exporter = qobject_cast<fw::ListExporter *>(module);
            if (!exporter)
                return std::nullopt;
            return exporter->exportList(request.typeCode, request.level, request.date, path, request.format);
        }};
}

Job checkJob(const ShellOptions &options)
{
    const HistoryRequest &request = options.history;
    const QString path = QFileInfo(request.path).absoluteFilePath();
    return {.path = path,
            .problem = fw::ExportFile::problem(path),
            .typeCode = request.typeCode,
            .notOffered = QStringLiteral(
                "distinta: il componente \"%1\" non è installato o non verifica le distinte senza finestre."),
            .notWritten = request.typeCode.isEmpty()
                ? QStringLiteral("distinta: la verifica delle distinte non è stata scritta.")
                : QStringLiteral("distinta: la verifica della distinta \"%1\" non è stata scritta."),
            .written = QStringLiteral("File scritto: %1"),
            .work = [&request, path](QObject *module) -> std::optional<bool> {
                auto *exporter = qobject_cast<fw::HistoryExporter *>(module);
                if (!exporter)
                    return std::nullopt;
                return exporter->exportCheck(request.typeCode, path, request.format);
            }};
}

Job historyJob(const ShellOptions &options)
{
    if (options.history.kind == HistoryRequest::Kind::Check)
        return checkJob(options);
    const HistoryRequest &request = options.history;
    const QString path = QFileInfo(request.path).absoluteFilePath();
    const bool history = request.kind == HistoryRequest::Kind::History;
    return {
        .path = path,
        .problem = fw::ExportFile::problem(path),
        .typeCode = request.typeCode,
        .notOffered = history
            ? QStringLiteral("distinta: il componente \"%1\" non è installato o non scrive lo storico senza finestre.")
            : QStringLiteral("distinta: il componente \"%1\" non è installato o non confronta date senza finestre."),
        .notWritten = history ? QStringLiteral("distinta: lo storico della distinta \"%1\" non è stato scritto.")
                              : QStringLiteral("distinta: il confronto della distinta \"%1\" non è stato scritto."),
        .written = QStringLiteral("File scritto: %1"),
        .work = [&request, path, history](QObject *module) -> std::optional<bool> {
            auto *exporter = qobject_cast<fw::HistoryExporter *>(module);
            if (!exporter)
                return std::nullopt;
            if (history)
                return exporter->exportHistory(request.typeCode, request.from, request.to, request.user, path,
                                               request.format);
            return exporter->exportComparison(request.typeCode, *request.from, *request.to, path, request.format);
        }};
}

// The import answers with more than done or not: some rows may be refused.
int runImport(const ImportRequest &request, fw::HostGlobalServices &globals, const db::ConnectionPtr &connection,
              const ComponentCatalog &catalog, const QString &programId,
              const std::shared_ptr<fw::UnattendedRun> &unattended)
{
    QTextStream err(stderr);
    const std::unique_ptr<fw::Cinterface> module = createModule(catalog, programId, globals, connection);
    auto *importer = module ? qobject_cast<fw::ListImporter *>(dynamic_cast<QObject *>(module.get())) : nullptr;
    if (!importer) {
        err << QStringLiteral("distinta: il componente \"%1\" non è installato o non importa senza finestre.")
                   .arg(programId)
            << Qt::endl;
        return 1;
    }
    const QString report = QFileInfo(request.reportPath).absoluteFilePath();
    const fw::ListImporter::Outcome outcome = importer->importList(
        request.typeCode, QFileInfo(request.file).absoluteFilePath(), request.dryRun, report, request.reportFormat);
    if (outcome == fw::ListImporter::NotDone) {
        if (unattended && unattended->failed())
            return fw::UnattendedRun::FailureExitCode;
        err << QStringLiteral("distinta: l'importazione nella distinta \"%1\" non è stata eseguita.")
                   .arg(request.typeCode)
            << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << QStringLiteral("File scritto: %1").arg(QDir::toNativeSeparators(report)) << Qt::endl;
    return outcome;
}

} // namespace

bool asksForRunWithoutWindow(int argc, char **argv)
{
    return commandLineHas(argc, argv, "--print") || commandLineHas(argc, argv, "--export")
        || commandLineHas(argc, argv, "--history") || commandLineHas(argc, argv, "--compare")
        || commandLineHas(argc, argv, "--check") || commandLineHas(argc, argv, "--import");
}

int runWithoutWindow(const ShellOptions &options, fw::HostGlobalServices &globals, const db::ConnectionPtr &connection,
                     const ComponentCatalog &catalog, const QString &programId,
                     const std::shared_ptr<fw::UnattendedRun> &unattended)
{
    if (options.importFile.requested())
        return runImport(options.importFile, globals, connection, catalog, programId, unattended);
    const Job job = options.print.requested() ? printJob(options, globals)
        : options.history.requested()         ? historyJob(options)
                                              : exportJob(options);
    return run(job, globals, connection, catalog, programId, unattended);
}
