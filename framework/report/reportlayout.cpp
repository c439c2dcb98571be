#include "framework/report/reportlayout.h"

namespace fw {

double ReportBand::height() const
{
    double total = 0;
    for (const ReportRow &row : rows)
        total += row.height;
    return total;
}

QSizeF ReportLayout::pageSizeMm() const
{
    const QSizeF portrait = QPageSize(pageSize).size(QPageSize::Millimeter);
    return orientation == QPageLayout::Landscape ? portrait.transposed() : portrait;
}

double ReportLayout::contentWidth() const
{
    return pageSizeMm().width() - margins.left() - margins.right();
}

bool ReportLayout::declaresParameter(const QString &name) const
{
    for (const ReportParameter &parameter : parameters) {
        if (parameter.name.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QList<ReportFieldReference> ReportLayout::fieldReferences() const
{
    QList<ReportFieldReference> references;
    const auto collect = [&references](const ReportBand &band) {
        if (!band.groupField.isEmpty())
            references.append({band.groupField, band.line});
        for (const ReportRow &row : band.rows) {
            for (const ReportCell &cell : row.cells) {
                if (!cell.indentField.isEmpty())
                    references.append({cell.indentField, cell.line});
                for (const ReportTextPart &part : cell.parts) {
                    if (part.kind == ReportTextPart::Field)
                        references.append({part.text, cell.line});
                }
            }
        }
    };
    collect(title);
    collect(pageHeader);
    for (const ReportBand &group : groups)
        collect(group);
    collect(detail);
    collect(pageFooter);
    return references;
}

} // namespace fw
