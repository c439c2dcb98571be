#pragma once

#include "platform/db/dayformat.h"

#include <QList>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QSizeF>
#include <QString>

namespace fw {

// A report layout as read from its file (reportlayoutreader.h describes the file format).
// Sizes and positions are millimetres; a cell's x is measured from the left margin.
// Every element remembers the line of the file that declared it, so that a problem found
// later (a field the query does not give) can name the place to fix.

// One piece of a cell's content: literal text, or a value filled in while printing.
struct ReportTextPart
{
    enum Kind { Literal, Field, Parameter, Title, Page, Pages, PrintDate, PrintTime };

    Kind kind = Literal;
    QString text; // the literal, or the field's or parameter's name
};

struct ReportCell
{
    double x = 0;
    double width = 0;
    QList<ReportTextPart> parts;
    bool bold = false;
    bool italic = false;
    double pointSize = 0; // 0: the layout's font size
    Qt::Alignment alignment = Qt::AlignLeft;
    QString dateFormat = db::dayFormat.toString();
    int decimals = -1;     // numbers: -1 as they come, else fixed decimals
    QString indentField;   // empty: no indentation
    double indentStep = 0; // mm per level past the first
    int line = 0;
};

struct ReportRow
{
    double height = 0;
    bool ruleAbove = false;
    bool ruleBelow = false;
    QList<ReportCell> cells;
    int line = 0;
};

struct ReportBand
{
    enum Kind { Title, PageHeader, GroupHeader, Detail, PageFooter };

    Kind kind = Detail;
    QString groupField; // GroupHeader: printed when this field changes
    QList<ReportRow> rows;
    int line = 0;

    double height() const;
    bool isEmpty() const { return rows.isEmpty(); }
};

struct ReportParameter
{
    QString name;
    int line = 0;
};

// A field named by the layout, with where.
struct ReportFieldReference
{
    QString name;
    int line = 0;
};

struct ReportLayout
{
    QString fileName;
    QPageSize::PageSizeId pageSize = QPageSize::A4;
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    QMarginsF margins {12, 12, 12, 12}; // left, top, right, bottom
    QString fontFamily = QStringLiteral("DejaVu Sans");
    double fontSize = 8;
    QList<ReportParameter> parameters;

    ReportBand title {ReportBand::Title, {}, {}, 0};
    ReportBand pageHeader {ReportBand::PageHeader, {}, {}, 0};
    QList<ReportBand> groups; // outermost first
    ReportBand detail {ReportBand::Detail, {}, {}, 0};
    ReportBand pageFooter {ReportBand::PageFooter, {}, {}, 0};

    QSizeF pageSizeMm() const;   // in the layout's orientation
    double contentWidth() const; // between the side margins
    bool declaresParameter(const QString &name) const;
    // Every field a cell shows, indents by or groups on, in the order of the file.
    QList<ReportFieldReference> fieldReferences() const;
};

} // namespace fw
