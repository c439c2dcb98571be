#pragma once

#include "framework/export/exportfile.h"

#include <QDate>
#include <QObject>
#include <QString>
#include <optional>

namespace fw {

// A module that writes the history of one of its lists, what changed in it between two days, or
// what is wrong in its lists, to a spreadsheet file without opening a window: the host sets the
// contract as for ShowForm.
class HistoryExporter
{
public:
    virtual ~HistoryExporter() = default;

    // The changes of the list named by its code, written from one day to another (both included;
    // none: no bound) by a user (empty: anyone). False when nothing was written; the reason went
    // to the log service.
    virtual bool exportHistory(const QString &code, std::optional<QDate> from, std::optional<QDate> to,
                               const QString &user, const QString &path, ExportFile::Format format) = 0;
    // The differences of the list between day a and day b.
    virtual bool exportComparison(const QString &code, const QDate &a, const QDate &b, const QString &path,
                                  ExportFile::Format format) = 0;
    // What is wrong in the lists of the company today, or only in the list of that code (empty:
    // every list).
    virtual bool exportCheck(const QString &code, const QString &path, ExportFile::Format format) = 0;
};

} // namespace fw

#define HistoryExporter_iid "it.vrax.framework.HistoryExporter/1.1"
Q_DECLARE_INTERFACE(fw::HistoryExporter, HistoryExporter_iid)
