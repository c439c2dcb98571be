#include "framework/recordsetgridcolumn.h"

#include "framework/columnsizing.h"

#include <QFontMetrics>

namespace fw {

int minimumColumnWidth(const RecordsetGridColumn &column, const QFontMetrics &cells, const QFontMetrics &header,
                       int checkBoxWidth, int extraIndent)
{
    int value = 0;
    switch (column.kind) {
    case RecordsetGridColumn::Kind::Check: value = checkBoxWidth; break;
    case RecordsetGridColumn::Kind::Mark: value = cells.horizontalAdvance(QStringLiteral("\u2713")); break;
    case RecordsetGridColumn::Kind::Button: value = cells.horizontalAdvance(column.heading()); break;
    case RecordsetGridColumn::Kind::Text: value = cells.horizontalAdvance(column.widthSample); break;
    }
    return fw::minimumColumnWidth(column.heading(), header, value, extraIndent);
}

QString declaredWidthKey(const RecordsetGridColumn &column, int extraIndent)
{
    return QString::number(int(column.kind)) + u'|' + QString::number(extraIndent) + u'|' + column.heading() + u'|'
        + column.widthSample;
}

} // namespace fw
