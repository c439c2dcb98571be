#pragma once

#include "framework/export/exportfile.h"

#include <QObject>
#include <QString>

namespace fw {

// A module that reads rows from a spreadsheet into one of its lists without opening a window:
// the host sets the contract as for ShowForm.
class ListImporter
{
public:
    virtual ~ListImporter() = default;

    enum Outcome { Done = 0, NotDone = 1, SomeRefused = 4 };

    // The file's rows into the list named by its code, checked first and written unless dryRun;
    // the fate of each row written to reportPath. SomeRefused: the other rows were written (or
    // would be). NotDone: nothing was; the reason went to the log service.
    virtual Outcome importList(const QString &code, const QString &file, bool dryRun, const QString &reportPath,
                               ExportFile::Format format) = 0;
};

} // namespace fw

#define ListImporter_iid "it.vrax.framework.ListImporter/1.0"
Q_DECLARE_INTERFACE(fw::ListImporter, ListImporter_iid)
