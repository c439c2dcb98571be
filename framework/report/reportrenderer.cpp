#include "framework/report/reportrenderer.h"

#include "framework/report/reportlayoutreader.h"
#include "platform/db/dayformat.h"
#include "platform/db/recordset.h"

#include <QFontMetricsF>
#include <QLocale>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>
#include <array>
#include <optional>

namespace fw {

namespace {

constexpr int ProgressEvery = 200; // rows between two progress calls

// The level a value stands for: the number it holds ("...3" is 3), 0 when none.
int levelOf(const QVariant &value)
{
    if (value.isNull())
        return 0;
    const QString text = value.toString();
    int level = 0;
    bool digits = false;
    for (const QChar c : text) {
        if (c.isDigit()) {
            level = level * 10 + c.digitValue();
            digits = true;
            if (level > 1000)
                break;
        } else if (digits) {
            break;
        }
    }
    return level;
}

bool breaksLine(QChar c)
{
    return c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QLatin1Char('\t');
}

QString oneLine(QString text)
{
    if (std::none_of(text.cbegin(), text.cend(), breaksLine))
        return text;
    for (QChar &c : text) {
        if (breaksLine(c))
            c = QLatin1Char(' ');
    }
    return text;
}

} // namespace

// The query's field numbers of every field the layout names.
struct ReportRenderer::Bound
{
    QHash<QString, int> fields; // by name as the layout writes it
    QList<int> groupFields;     // parallel to layout.groups

    int field(const QString &name) const { return fields.value(name, -1); }
};

ReportRenderer::ReportRenderer(const ReportLayout &layout, const db::Recordset &rows, const ReportValues &values)
    : m_layout(layout)
    , m_rows(rows)
    , m_values(values)
    , m_bound(std::make_unique<Bound>())
{
    for (const ReportFieldReference &reference : layout.fieldReferences()) {
        const int index = rows.fieldIndex(reference.name);
        if (index < 0)
            throw ReportLayoutError(
                layout.fileName, reference.line,
                QStringLiteral("il campo %1 non è tra quelli letti dalla stampa").arg(reference.name));
        m_bound->fields.insert(reference.name, index);
    }
    for (const ReportBand &group : layout.groups)
        m_bound->groupFields.append(m_bound->field(group.groupField));

    struct Counter
    {
        int pages = 0;
        bool beginPage(int page)
        {
            pages = page;
            return true;
        }
        void band(const ReportBand &, int, double, int) { }
        bool endPage(int, int) { return true; }
        bool afterRow(int) { return true; }
    } counter;
    paginate(counter);
    m_pageCount = counter.pages;
}

ReportRenderer::~ReportRenderer() = default;

int ReportRenderer::rowCount() const
{
    return m_rows.recordCount();
}

void ReportRenderer::preparePage(QPagedPaintDevice &device, const ReportLayout &layout)
{
    device.setPageLayout(
        QPageLayout(QPageSize(layout.pageSize), layout.orientation, QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
}

int ReportRenderer::firstChangedGroup(int row) const
{
    if (row == 0)
        return 0;
    for (int g = 0; g < m_bound->groupFields.size(); ++g) {
        const int field = m_bound->groupFields.at(g);
        if (m_rows.valueAt(row, field) != m_rows.valueAt(row - 1, field))
            return g;
    }
    return int(m_bound->groupFields.size());
}

// Walks the report as it is printed: pages, and on each the bands at their heights.
template<typename Visitor>
void ReportRenderer::paginate(Visitor &visitor) const
{
    const double top = m_layout.margins.top();
    const double bottom = m_layout.pageSizeMm().height() - m_layout.margins.bottom() - m_layout.pageFooter.height();
    const int rows = m_rows.recordCount();
    int page = 1;
    double y = top;
    bool detailOnPage = false;

    const auto place = [&](const ReportBand &band, int row) {
        if (band.isEmpty())
            return;
        visitor.band(band, row, y, page);
        y += band.height();
    };
    if (!visitor.beginPage(page))
        return;
    place(m_layout.title, rows > 0 ? 0 : -1);
    place(m_layout.pageHeader, rows > 0 ? 0 : -1);

    for (int row = 0; row < rows; ++row) {
        const int changed = firstChangedGroup(row);
        double needed = m_layout.detail.height();
        for (int g = changed; g < m_layout.groups.size(); ++g)
            needed += m_layout.groups.at(g).height();
        if (detailOnPage && y + needed > bottom + 1e-6) {
            if (!visitor.endPage(page, row - 1))
                return;
            ++page;
            y = top;
            detailOnPage = false;
            if (!visitor.beginPage(page))
                return;
            place(m_layout.pageHeader, row);
        }
        for (int g = changed; g < m_layout.groups.size(); ++g)
            place(m_layout.groups.at(g), row);
        place(m_layout.detail, row);
        detailOnPage = true;
        if ((row + 1) % ProgressEvery == 0 && !visitor.afterRow(row + 1))
            return;
    }
    visitor.endPage(page, rows - 1);
}

QString ReportRenderer::formatValue(const ReportCell &cell, int field, int row) const
{
    if (row < 0 || field < 0)
        return {};
    const QVariant value = m_rows.valueAt(row, field);
    if (value.isNull())
        return {};
    switch (value.metaType().id()) {
    case QMetaType::QDateTime: {
        // Few distinct dates, many rows: each is formatted once. The key is the date and time as
        // they read, which needs no time-zone lookup.
        const QDateTime dateTime = value.toDateTime();
        const qint64 when = dateTime.date().toJulianDay() * 86400000 + dateTime.time().msecsSinceStartOfDay();
        const auto key = std::make_pair(when, cell.dateFormat.constData());
        auto found = m_dateTexts.constFind(key);
        if (found == m_dateTexts.cend()) {
            if (m_dateTexts.size() > 4096)
                m_dateTexts.clear();
            found = m_dateTexts.insert(key, dateTime.toString(cell.dateFormat));
        }
        return *found;
    }
    case QMetaType::QDate: return value.toDate().toString(cell.dateFormat);
    case QMetaType::Double:
    case QMetaType::Float:
        if (cell.decimals >= 0)
            return QLocale(QLocale::Italian, QLocale::Italy).toString(value.toDouble(), 'f', cell.decimals);
        return QString::number(value.toDouble(), 'g', 15);
    case QMetaType::QString: {
        QString text = value.toString();
        qsizetype end = text.size();
        while (end > 0 && text.at(end - 1).isSpace())
            --end;
        text.truncate(end);
        return text;
    }
    default:
        if (cell.decimals >= 0 && value.canConvert<double>())
            return QLocale(QLocale::Italian, QLocale::Italy).toString(value.toDouble(), 'f', cell.decimals);
        return value.toString();
    }
}

QString ReportRenderer::cellText(const ReportCell &cell, int row, int page) const
{
    if (cell.parts.size() == 1 && cell.parts.first().kind == ReportTextPart::Field)
        return oneLine(formatValue(cell, m_bound->field(cell.parts.first().text), row));
    QString text;
    for (const ReportTextPart &part : cell.parts) {
        switch (part.kind) {
        case ReportTextPart::Literal: text += part.text; break;
        case ReportTextPart::Field: text += formatValue(cell, m_bound->field(part.text), row); break;
        case ReportTextPart::Parameter: text += m_values.parameters.value(part.text.toUpper()); break;
        case ReportTextPart::Title: text += m_values.title; break;
        case ReportTextPart::Page: text += QString::number(page); break;
        case ReportTextPart::Pages: text += QString::number(m_pageCount); break;
        case ReportTextPart::PrintDate: text += m_values.printedAt.toString(db::dayFormat); break;
        case ReportTextPart::PrintTime: text += m_values.printedAt.toString(QStringLiteral("HH:mm")); break;
        }
    }
    return oneLine(text);
}

bool ReportRenderer::render(QPainter &painter, QPagedPaintDevice &device, const std::function<bool(int)> &progress)
{
    // Fonts and their metrics are made once per cell style, and found by the cell.
    struct Style
    {
        QFont font;
        QFontMetricsF metrics;
        std::array<double, 256> advances; // Latin-1 characters, measured on first use (-1 before)

        // The text's width without shaping it: the fonts are used without ligatures or kerning,
        // so the characters' advances add up to it.
        double width(const QString &text)
        {
            double total = 0;
            for (const QChar c : text) {
                const char16_t code = c.unicode();
                if (code > 0xFF)
                    return metrics.horizontalAdvance(text);
                if (advances[code] < 0)
                    advances[code] = metrics.horizontalAdvance(c);
                total += advances[code];
            }
            return total;
        }
    };
    QList<std::shared_ptr<Style>> styles;
    QHash<const ReportCell *, Style *> styleOfCell;
    const auto prepareStyles = [&](const ReportBand &band) {
        for (const ReportRow &line : band.rows) {
            for (const ReportCell &cell : line.cells) {
                const double size = cell.pointSize > 0 ? cell.pointSize : m_layout.fontSize;
                Style *found = nullptr;
                for (const auto &style : std::as_const(styles)) {
                    if (style->font.pointSizeF() == size && style->font.bold() == cell.bold
                        && style->font.italic() == cell.italic)
                        found = style.get();
                }
                if (!found) {
                    QFont font(m_layout.fontFamily);
                    font.setPointSizeF(size);
                    font.setBold(cell.bold);
                    font.setItalic(cell.italic);
                    // No ligatures: the text of the PDF is searched and copied as it was written.
                    font.setStyleStrategy(QFont::PreferNoShaping);
                    styles.append(std::make_shared<Style>(Style {font, QFontMetricsF(font, &device), {}}));
                    found = styles.last().get();
                    found->advances.fill(-1);
                }
                styleOfCell.insert(&cell, found);
            }
        }
    };
    prepareStyles(m_layout.title);
    prepareStyles(m_layout.pageHeader);
    for (const ReportBand &group : m_layout.groups)
        prepareStyles(group);
    prepareStyles(m_layout.detail);
    prepareStyles(m_layout.pageFooter);

    const double scale = device.logicalDpiX() / 25.4; // device units per mm
    const double left = m_layout.margins.left();
    const double contentWidth = m_layout.contentWidth();
    QPen rule(Qt::black);
    rule.setWidthF(0.2 * scale);
    const QFont *currentFont = nullptr;

    // One cell on one line: its text, moved right by its indentation, cut with an ellipsis where
    // it would run past its width, placed by its alignment.
    const auto drawCell = [&](const ReportCell &cell, int row, int page, double top, double height) {
        QString text = cellText(cell, row, page);
        if (text.isEmpty())
            return;
        Style &style = *styleOfCell.value(&cell);
        if (currentFont != &style.font) {
            painter.setFont(style.font);
            currentFont = &style.font;
        }
        double x = (left + cell.x) * scale;
        double width = cell.width * scale;
        if (!cell.indentField.isEmpty() && row >= 0) {
            const int level = levelOf(m_rows.valueAt(row, m_bound->field(cell.indentField)));
            const double indent = std::min(std::max(level - 1, 0) * cell.indentStep, std::max(cell.width - 10.0, 0.0))
                * scale;
            x += indent;
            width -= indent;
        }
        double advance = style.width(text);
        if (advance > width) {
            text = style.metrics.elidedText(text, Qt::ElideRight, width);
            advance = style.width(text);
        }
        if (cell.alignment & Qt::AlignRight)
            x += width - advance;
        else if (cell.alignment & Qt::AlignHCenter)
            x += (width - advance) / 2;
        const double baseline = top + (height - style.metrics.height()) / 2 + style.metrics.ascent();
        painter.drawText(QPointF(x, baseline), text);
    };

    // The visitor of paginate() that draws: a new page on the device, each band where it falls,
    // the footer at the foot of the page, and a progress call every few rows.
    struct Drawer
    {
        const ReportRenderer &report;
        QPagedPaintDevice &device;
        const std::function<bool(int)> &progress;
        const std::function<void(const ReportBand &, int, double, int)> drawBand;
        bool stopped = false;

        bool beginPage(int page) { return page == 1 || device.newPage(); }
        void band(const ReportBand &band, int row, double y, int page) { drawBand(band, row, y, page); }
        bool endPage(int page, int lastRow)
        {
            const ReportLayout &layout = report.m_layout;
            if (!layout.pageFooter.isEmpty()) {
                const double y = layout.pageSizeMm().height() - layout.margins.bottom() - layout.pageFooter.height();
                drawBand(layout.pageFooter, lastRow, y, page);
            }
            return true;
        }
        bool afterRow(int rows)
        {
            stopped = progress && !progress(rows);
            return !stopped;
        }
    };
    const auto drawBand = [&](const ReportBand &band, int row, double y, int page) {
        for (const ReportRow &line : band.rows) {
            const double top = y * scale;
            const double height = line.height * scale;
            if (line.ruleAbove || line.ruleBelow) {
                painter.setPen(rule);
                const double from = left * scale;
                const double to = (left + contentWidth) * scale;
                if (line.ruleAbove)
                    painter.drawLine(QPointF(from, top), QPointF(to, top));
                if (line.ruleBelow)
                    painter.drawLine(QPointF(from, top + height), QPointF(to, top + height));
                painter.setPen(Qt::black);
            }
            for (const ReportCell &cell : line.cells)
                drawCell(cell, row, page, top, height);
            y += line.height;
        }
    };
    Drawer visitor {*this, device, progress, drawBand};
    paginate(visitor);
    if (!visitor.stopped && progress)
        visitor.stopped = !progress(m_rows.recordCount());
    return !visitor.stopped;
}

} // namespace fw
