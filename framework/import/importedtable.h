#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace fw {

// One cell as the file holds it; nothing interpreted yet.
struct ImportedCell
{
    enum class Kind { Empty, Text, Number, Date };
    Kind kind = Kind::Empty;
    QString text; // Text: as written (leading zeros kept); Number: its shortest decimal form with '.' ("12", "12.5");
                  // Date: dd/MM/yyyy
    double number = 0; // Number only
    QDate date; // Date only: an XLSX number cell whose style is a date format (serial number, 1900 or 1904 system)
};

struct ImportedRow
{
    int line = 0;              // 1-based row number in the sheet or the file, as a user sees it in the spreadsheet
    QList<ImportedCell> cells; // by column, index 0 = column A / first field; trailing empties may be missing
};

struct ImportedTable
{
    QString sheet;           // the sheet's name; empty for a CSV
    int headingLine = 0;     // 1-based line of the headings
    QStringList headings;    // the first row that has any non-empty cell, each trimmed
    QList<ImportedRow> rows; // the rows after it; wholly empty rows left out
};

} // namespace fw
