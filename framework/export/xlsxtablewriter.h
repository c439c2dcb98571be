#pragma once

#include "framework/export/tablewriter.h"

#include <QString>
#include <vector>

struct lxw_workbook;
struct lxw_worksheet;
struct lxw_format;

namespace fw {

// An XLSX workbook of one sheet, written with libxlsxwriter in its constant-memory mode (each
// row goes to a temporary file as soon as the next one starts), so that a list of any length
// needs the memory of one row. The header row is bold and frozen, each row carries its level as
// an Excel outline level (the summary row above its details, as a tree shows its parent above
// its children; Excel has 8 levels, deeper rows stay on the last), dates are real dates shown
// dd/mm/yyyy, numbers are numbers, and the columns are as wide as their longest text.
class XlsxTableWriter : public TableWriter
{
public:
    static constexpr int MaxOutlineLevel = 7;
    static constexpr int MaxRows = 1048576;

    explicit XlsxTableWriter(TableShape shape = TableShape::Tree)
        : m_shape(shape)
    { }
    ~XlsxTableWriter() override;
    XlsxTableWriter(const XlsxTableWriter &) = delete;
    XlsxTableWriter &operator=(const XlsxTableWriter &) = delete;

    void open(const QString &path, const QString &title, const QList<ExportColumn> &columns) override;
    void writeRow(int level, const QList<QVariant> &values) override;
    void commit() override;

    // A sheet's name as Excel accepts it: at most 31 characters, none of []:*?/\ .
    static QString sheetName(const QString &title);

private:
    void check(int error);
    void discard();
    void widen(int column, qsizetype characters);

    QString m_path;
    QString m_temporary;
    QList<ExportColumn> m_columns;
    std::vector<qsizetype> m_widths;
    lxw_workbook *m_workbook = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    lxw_format *m_header = nullptr;
    lxw_format *m_date = nullptr;
    int m_row = 0;
    TableShape m_shape;
    int m_first = 1; // the sheet's column of the first of m_columns
};

} // namespace fw
