#include "shell/headlessprint.h"

#include "framework/cinterface.h"
#include "framework/hostglobalservices.h"
#include "framework/listprinter.h"
#include "framework/unattendedrun.h"
#include "framework/report/defaultreportengine.h"
#include "shell/componentcatalog.h"
#include "shell/headlessmodule.h"
#include "shell/shelloptions.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

bool asksForPrint(int argc, char **argv)
{
    return commandLineHas(argc, argv, "--print");
}

int printWithoutWindow(const ShellOptions &options, fw::HostGlobalServices &globals,
                       const db::ConnectionPtr &connection, const ComponentCatalog &catalog,
                       const QString &programId, const std::shared_ptr<fw::UnattendedRun> &unattended)
{
    QTextStream err(stderr);
    const PrintRequest &request = options.print;
    const QString pdf = QFileInfo(request.pdfPath).absoluteFilePath();
    const QString problem = fw::DefaultReportEngine::pdfPathProblem(pdf);
    if (!problem.isEmpty()) {
        err << "distinta: " << problem << Qt::endl;
        return 1;
    }

    globals.setReportEngineFactory([&] {
        auto engine = std::make_unique<fw::DefaultReportEngine>(options.user);
        engine->setInteractive(false);
        engine->setRunMode(fw::ReportEngine::RunMode::Pdf);
        engine->setOutputFile(pdf);
        engine->setPrintValues(request.printedBy.isEmpty() ? options.user : request.printedBy, request.printedFor,
                               request.notes);
        return engine;
    });

    const std::unique_ptr<fw::Cinterface> module = createHeadlessModule(catalog, programId, globals, connection);
    auto *printer = module ? qobject_cast<fw::ListPrinter *>(dynamic_cast<QObject *>(module.get())) : nullptr;
    if (!printer) {
        err << QStringLiteral("distinta: il componente \"%1\" non è installato o non stampa senza finestre.").arg(programId)
            << Qt::endl;
        return 1;
    }

    if (!printer->printList(request.typeCode, request.level)) {
        // A failing statement has already been reported once, as in every run without a user.
        if (unattended && unattended->failed())
            return fw::UnattendedRun::FailureExitCode;
        err << QStringLiteral("distinta: la distinta \"%1\" non è stata stampata.").arg(request.typeCode) << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << QStringLiteral("PDF scritto: %1").arg(QDir::toNativeSeparators(pdf)) << Qt::endl;
    return 0;
}
