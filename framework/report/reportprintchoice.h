#pragma once

#include "framework/reportengine.h"

#include <QString>

namespace fw {

// What the user answers in the print dialog: the texts for the report's header and where the
// report goes.
struct ReportPrintChoice
{
    QString printedBy;
    QString printedFor;
    QString notes;
    ReportEngine::RunMode mode = ReportEngine::RunMode::Preview;
    QString pdfPath;
};

} // namespace fw
