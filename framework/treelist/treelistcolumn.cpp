#include "framework/treelist/treelistcolumn.h"

#include "platform/db/dayformat.h"

#include <QDateTime>
#include <QFontMetrics>
#include <algorithm>

namespace fw {

namespace {

bool sameComboValue(const QVariant &a, const QVariant &b)
{
    bool okA = false;
    bool okB = false;
    const qint64 numberA = a.toLongLong(&okA);
    const qint64 numberB = b.toLongLong(&okB);
    if (okA && okB)
        return numberA == numberB;
    return a == b;
}

} // namespace

int TreeListColumn::comboIndexOf(const QVariant &value) const
{
    if (value.isNull())
        return -1;
    for (int i = 0; i < comboItems.size(); ++i) {
        if (sameComboValue(comboItems.at(i).value, value))
            return i;
    }
    return -1;
}

const TreeListComboItem *TreeListColumn::comboItemFor(const QVariant &value) const
{
    const int index = comboIndexOf(value);
    return index >= 0 ? &comboItems.at(index) : nullptr;
}

QString TreeListColumn::displayText(const QVariant &value) const
{
    if (value.isNull())
        return {};
    switch (kind) {
    case TreeListColumnKind::Unbound: return {};
    case TreeListColumnKind::ImageCombo: {
        const TreeListComboItem *item = comboItemFor(value);
        return item ? item->description : value.toString();
    }
    case TreeListColumnKind::Date: {
        const QDateTime date = value.toDateTime();
        return date.isValid() ? date.date().toString(db::dayFormat) : value.toString();
    }
    case TreeListColumnKind::Text:
    case TreeListColumnKind::ButtonEdit: break;
    }
    const int type = value.metaType().id();
    if (type == QMetaType::QDateTime)
        return value.toDateTime().date().toString(db::dayFormat);
    if (type == QMetaType::QDate)
        return value.toDate().toString(db::dayFormat);
    return value.toString();
}

int minimumColumnWidth(const TreeListColumn &column, const QFontMetrics &cells, const QFontMetrics &header,
                       int extraIndent)
{
    int value = 0;
    switch (column.kind) {
    case TreeListColumnKind::Date:
        value = cells.horizontalAdvance(wholeDateSample()) + cells.height(); // room for the calendar button
        break;
    case TreeListColumnKind::ImageCombo:
        for (const TreeListComboItem &item : column.comboItems)
            value = std::max(value,
                             cells.horizontalAdvance(item.description) + (item.icon.isNull() ? 0 : cells.height() + 4));
        break;
    case TreeListColumnKind::ButtonEdit:
        value = cells.horizontalAdvance(column.widthSample) + cells.height() + 4; // the "..." button
        break;
    case TreeListColumnKind::Text:
    case TreeListColumnKind::Unbound: value = cells.horizontalAdvance(column.widthSample); break;
    }
    return fw::minimumColumnWidth(column.caption, header, value, extraIndent);
}

} // namespace fw
