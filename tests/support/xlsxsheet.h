#pragma once

#include <QList>
#include <QString>

// The first sheet of an XLSX workbook as its XML says it, read back for tests with the unzip
// tool: rows with their outline level, cells with their type, style and value.
class XlsxSheet
{
public:
    struct Cell
    {
        QString ref;   // "B2"
        QString type;  // "n" (number, also dates), "inlineStr", "s", ...
        int style = 0; // index into the workbook's cell formats
        QString value;
    };
    struct Row
    {
        int number = 0;
        int outlineLevel = 0;
        QList<Cell> cells;
        QString value(const QString &column) const; // by column letter
    };

    explicit XlsxSheet(const QString &path);

    static bool toolAvailable();
    bool isValid() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }

    const QList<Row> &rows() const { return m_rows; }
    QString sheetXml() const { return m_sheet; }
    QString stylesXml() const { return m_styles; }
    QString workbookXml() const { return m_workbook; }
    // The number format code of a cell style ("dd/mm/yyyy"), empty for the general format.
    QString numberFormat(int style) const;
    // Width of the columns (0-based), as <cols> sets them; 0 when not set.
    double columnWidth(int column) const;

private:
    QString entry(const QString &path, const QString &name);
    void parseSheet();

    QString m_error;
    QString m_sheet;
    QString m_styles;
    QString m_workbook;
    QList<Row> m_rows;
};
