#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace bench {

// The result table every benchmark prints: one row per figure, with its value, its unit and,
// when a floor is given, the ratio value / floor (the floor is measured in the same run).
//
//   BenchTable table(QStringLiteral("Caricamento distinta"));
//   table.addRow(QStringLiteral("floor 100k"), floorMs, QStringLiteral("ms"));
//   table.addRow(QStringLiteral("query 100k"), queryMs, QStringLiteral("ms"), floorMs);
//   table.print();   // aligned text, then the same table in Markdown
class BenchTable
{
public:
    explicit BenchTable(const QString &title);

    // floor: the value the ratio is taken against; none (or not positive) leaves the ratio blank.
    // note: free text shown in a last column (a target, a remark); the column appears only
    // when some row has one.
    void addRow(const QString &figure, double value, const QString &unit, std::optional<double> floor = std::nullopt,
                const QString &note = {});

    QString toText() const;     // columns padded to a common width
    QString toMarkdown() const; // a GitHub-style pipe table under a "### title" line
    void print() const;         // both, on standard output

private:
    struct Row
    {
        QString figure;
        double value;
        QString unit;
        std::optional<double> ratio;
        QString note;
    };

    QList<QStringList> cells() const; // header first
    static QString formatValue(double value);

    QString m_title;
    QList<Row> m_rows;
};

} // namespace bench
