#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace fw {

// What a column of an exported table holds: spreadsheets sort and sum numbers and dates only
// when they are written as such.
enum class ExportCellKind { Text, Number, Date };

// A tree's rows carry their level (a first column, and an outline in a workbook); a flat list's
// rows are its columns only.
enum class TableShape { Tree, Flat };

struct ExportColumn
{
    QString caption;
    ExportCellKind kind = ExportCellKind::Text;
};

// A table written to a file row by row, each row at a level of a hierarchy (0 for the top),
// so that a list shaped as a tree keeps its shape. Values: numbers for Number columns, QDate
// for Date columns, text otherwise; a null value leaves the cell empty.
//
// Every failure throws std::runtime_error with a message for the user. The file named in open()
// appears only when commit() succeeds: until then an older file of that name stays as it was.
class TableWriter
{
public:
    virtual ~TableWriter() = default;

    virtual void open(const QString &path, const QString &title, const QList<ExportColumn> &columns) = 0;
    virtual void writeRow(int level, const QList<QVariant> &values) = 0;
    virtual void commit() = 0;
};

} // namespace fw
