#include "benchtable.h"

#include <QTextStream>
#include <cmath>
#include <cstdio>

namespace bench {

BenchTable::BenchTable(const QString &title)
    : m_title(title)
{ }

void BenchTable::addRow(const QString &figure, double value, const QString &unit, std::optional<double> floor,
                        const QString &note)
{
    std::optional<double> ratio;
    if (floor && *floor > 0)
        ratio = value / *floor;
    m_rows.append({figure, value, unit, ratio, note});
}

QString BenchTable::formatValue(double value)
{
    if (value == std::floor(value) && std::abs(value) < 1e15)
        return QString::number(qint64(value));
    if (std::abs(value) >= 100)
        return QString::number(value, 'f', 1);
    if (std::abs(value) >= 1)
        return QString::number(value, 'f', 2);
    return QString::number(value, 'f', 3);
}

QList<QStringList> BenchTable::cells() const
{
    bool withNotes = false;
    for (const Row &row : m_rows)
        withNotes = withNotes || !row.note.isEmpty();

    QList<QStringList> result;
    QStringList header {QStringLiteral("Figure"), QStringLiteral("Value"), QStringLiteral("Unit"),
                        QStringLiteral("Ratio to floor")};
    if (withNotes)
        header << QStringLiteral("Note");
    result.append(header);

    for (const Row &row : m_rows) {
        QStringList line {row.figure, formatValue(row.value), row.unit,
                          row.ratio ? QString::number(*row.ratio, 'f', 2) + u'x' : QStringLiteral("-")};
        if (withNotes)
            line << row.note;
        result.append(line);
    }
    return result;
}

QString BenchTable::toText() const
{
    const QList<QStringList> table = cells();
    QList<qsizetype> widths(table.first().size(), 0);
    for (const QStringList &line : table)
        for (qsizetype c = 0; c < line.size(); ++c)
            widths[c] = std::max(widths[c], line[c].size());

    // Figures and units read left to right, numbers line up on the right.
    const auto format = [&](const QStringList &line) {
        QStringList padded;
        for (qsizetype c = 0; c < line.size(); ++c) {
            const bool number = c == 1 || c == 3;
            padded << (number ? line[c].rightJustified(widths[c]) : line[c].leftJustified(widths[c]));
        }
        return padded.join(QStringLiteral("  ")).trimmed() + u'\n';
    };

    QString text = m_title + u'\n';
    text += format(table.first());
    qsizetype total = 2 * (widths.size() - 1);
    for (qsizetype w : widths)
        total += w;
    text += QString(total, u'-') + u'\n';
    for (qsizetype r = 1; r < table.size(); ++r)
        text += format(table[r]);
    return text;
}

QString BenchTable::toMarkdown() const
{
    const QList<QStringList> table = cells();
    const auto escape = [](QString cell) { return cell.replace(u'|', QStringLiteral("\\|")); };

    QString text = QStringLiteral("### ") + m_title + QStringLiteral("\n\n");
    QStringList header;
    QStringList rule;
    for (qsizetype c = 0; c < table.first().size(); ++c) {
        header << escape(table.first()[c]);
        rule << (c == 1 || c == 3 ? QStringLiteral("---:") : QStringLiteral("---"));
    }
    const QString separator = QStringLiteral(" | ");
    text += QStringLiteral("| ") + header.join(separator) + QStringLiteral(" |\n");
    text += u'|' + rule.join(u'|') + QStringLiteral("|\n");
    for (qsizetype r = 1; r < table.size(); ++r) {
        QStringList line;
        for (const QString &cell : table[r])
            line << escape(cell);
        text += QStringLiteral("| ") + line.join(separator) + QStringLiteral(" |\n");
    }
    return text;
}

void BenchTable::print() const
{
    QTextStream out(stdout);
    out << toText() << '\n' << toMarkdown() << '\n';
    out.flush();
}

} // namespace bench
