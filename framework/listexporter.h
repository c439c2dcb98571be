#pragma once

#include "framework/export/exportfile.h"

#include <QDate>
#include <QObject>
#include <QString>
#include <optional>

namespace fw {

// A module that writes one of its lists to a spreadsheet file without opening a window, for
// scheduled jobs: the host sets the contract as for ShowForm.
class ListExporter
{
public:
    virtual ~ListExporter() = default;

    // The list named by its code, down to level (none: the whole list), as it stood on date
    // (none: as it is), written to path. False when nothing was written; the reason went to
    // the log service.
    virtual bool exportList(const QString &code, std::optional<int> level, std::optional<QDate> date,
                            const QString &path, ExportFile::Format format) = 0;
};

} // namespace fw

#define ListExporter_iid "it.vrax.framework.ListExporter/1.0"
Q_DECLARE_INTERFACE(fw::ListExporter, ListExporter_iid)
