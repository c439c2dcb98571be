#pragma once

#include "framework/report/reportlayout.h"

#include <QDateTime>
#include <QHash>
#include <QString>
#include <functional>
#include <memory>

class QPainter;
class QPagedPaintDevice;

namespace db {
class Recordset;
}

namespace fw {

// What a report prints besides its rows.
struct ReportValues
{
    QString title;
    QHash<QString, QString> parameters; // by name in upper case
    QDateTime printedAt;
};

// Lays out the rows of a query on pages as a layout says and draws them, page after page,
// straight onto a printer or a PDF writer: nothing is kept per page or per row beyond the
// query's own rows, so memory does not grow with the length of the report.
//
// Pagination is worked out first (bands have fixed heights, so this only reads the group
// fields), which gives "Pagina N di M" its M before the first page is drawn.
class ReportRenderer
{
public:
    // Throws ReportLayoutError when the layout names a field the query does not give.
    ReportRenderer(const ReportLayout &layout, const db::Recordset &rows, const ReportValues &values);
    ~ReportRenderer();

    int pageCount() const { return m_pageCount; }
    int rowCount() const;

    // Page size and orientation of the layout, no device margins (the layout keeps its own).
    static void preparePage(QPagedPaintDevice &device, const ReportLayout &layout);

    // Draws every page; the painter is active on device, which is prepared. progress is called
    // every few rows with the rows drawn so far and stops the drawing by returning false.
    // Returns false when stopped.
    bool render(QPainter &painter, QPagedPaintDevice &device, const std::function<bool(int)> &progress = {});

    // The text a cell shows for a row (-1: no row), on a page: what render() draws, for the
    // benchmark's floor and the tests.
    QString cellText(const ReportCell &cell, int row, int page) const;

private:
    struct Bound;
    template<typename Visitor>
    void paginate(Visitor &visitor) const;
    int firstChangedGroup(int row) const;
    QString formatValue(const ReportCell &cell, int field, int row) const;

    const ReportLayout &m_layout;
    const db::Recordset &m_rows;
    ReportValues m_values;
    std::unique_ptr<Bound> m_bound;
    int m_pageCount = 0;
    mutable QHash<std::pair<qint64, const QChar *>, QString> m_dateTexts;
};

} // namespace fw
