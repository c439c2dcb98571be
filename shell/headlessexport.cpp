#include "shell/headlessexport.h"

#include "framework/cinterface.h"
#include "framework/export/exportfile.h"
#include "framework/hostglobalservices.h"
#include "framework/listexporter.h"
#include "framework/unattendedrun.h"
#include "shell/componentcatalog.h"
#include "shell/headlessmodule.h"
#include "shell/shelloptions.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>

bool asksForExport(int argc, char **argv)
{
    return commandLineHas(argc, argv, "--export");
}

int exportWithoutWindow(const ShellOptions &options, fw::HostGlobalServices &globals,
                        const db::ConnectionPtr &connection, const ComponentCatalog &catalog,
                        const QString &programId, const std::shared_ptr<fw::UnattendedRun> &unattended)
{
    QTextStream err(stderr);
    const ExportRequest &request = options.exportList;
    const QString path = QFileInfo(request.path).absoluteFilePath();
    const QString problem = fw::ExportFile::problem(path);
    if (!problem.isEmpty()) {
        err << "distinta: " << problem << Qt::endl;
        return 1;
    }

    const std::unique_ptr<fw::Cinterface> module = createHeadlessModule(catalog, programId, globals, connection);
    auto *exporter = module ? qobject_cast<fw::ListExporter *>(dynamic_cast<QObject *>(module.get())) : nullptr;
    if (!exporter) {
        err << QStringLiteral("distinta: il componente \"%1\" non è installato o non esporta senza finestre.").arg(programId)
            << Qt::endl;
        return 1;
    }

    if (!exporter->exportList(request.typeCode, request.level, request.date, path, request.format)) {
        // A failing statement has already been reported once, as in every run without a user.
        if (unattended && unattended->failed())
            return fw::UnattendedRun::FailureExitCode;
        err << QStringLiteral("distinta: la distinta \"%1\" non è stata esportata.").arg(request.typeCode) << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << QStringLiteral("File scritto: %1").arg(QDir::toNativeSeparators(path)) << Qt::endl;
    return 0;
}
