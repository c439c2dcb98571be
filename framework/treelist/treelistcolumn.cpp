#include "framework/treelist/treelistcolumn.h"

#include "platform/db/dayformat.h"

#include <QDateTime>
#include <cmath>

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

int twipsToPixels(int twips, int logicalDpi)
{
    return int(std::lround(double(twips) * logicalDpi / 1440.0));
}

int pixelsToTwips(int pixels, int logicalDpi)
{
    return logicalDpi > 0 ? int(std::lround(double(pixels) * 1440.0 / logicalDpi)) : pixels * 15;
}

} // namespace fw
