#pragma once

#include "framework/export/tablewriter.h"

#include <QByteArray>
#include <QSaveFile>
#include <memory>

namespace fw {

// CSV as Italian spreadsheets open it without asking: UTF-8 with a byte-order mark, fields
// separated by semicolons, CR LF line ends, dates as dd/mm/yyyy and decimal commas. A field
// holding a separator, a quote or a line break is quoted, its quotes doubled. The first column
// is the level (1 for the top rows), as a flat file has no other way to keep the hierarchy; a
// flat list has no such column.
class CsvTableWriter : public TableWriter
{
public:
    static constexpr char Separator = ';';

    explicit CsvTableWriter(TableShape shape = TableShape::Tree)
        : m_shape(shape)
    { }

    void open(const QString &path, const QString &title, const QList<ExportColumn> &columns) override;
    void writeRow(int level, const QList<QVariant> &values) override;
    void commit() override;

    static QByteArray field(const QString &text);

private:
    void flush(bool force);
    QString text(const QVariant &value, ExportCellKind kind) const;

    std::unique_ptr<QSaveFile> m_file;
    QString m_path;
    QList<ExportColumn> m_columns;
    QByteArray m_buffer;
    TableShape m_shape;
};

} // namespace fw
