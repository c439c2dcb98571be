#pragma once

#include "framework/import/importedtable.h"
#include "framework/import/importfileerror.h"

#include <QString>

namespace fw {

// Reads the first visible sheet of an XLSX, or a CSV; decides by content (zip signature), not by extension.
// Opens the file read-only and never writes it. Throws ImportFileError.
ImportedTable readImportFile(const QString &path);

} // namespace fw
