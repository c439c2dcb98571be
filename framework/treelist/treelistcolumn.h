#pragma once

#include "framework/columnsizing.h"

#include <QIcon>
#include <QList>
#include <QString>
#include <QVariant>

class QFontMetrics;

namespace fw {

enum class TreeListColumnKind {
    Text,       // the bound value as text, edited in a line edit (with the edit mask, if any)
    Date,       // dd/MM/yyyy, edited with a drop-down calendar
    ImageCombo, // shows the description (and icon) of the item whose value is stored
    ButtonEdit, // a button in the cell; its text comes from the draw-time text hook
    Unbound,    // no field: its text comes from the draw-time text hook only
};

struct TreeListComboItem
{
    QVariant value;
    QString description;
    QIcon icon;
};

// One column of a tree list. Filled with designated initialisers, e.g.
//   {.name = "trCODE", .caption = "Codice", .fieldName = "CODE", .alignment = Qt::AlignRight}
struct TreeListColumn
{
    QString name; // how the code addresses the column
    QString caption;
    QString fieldName; // the bound recordset field; empty for Unbound
    TreeListColumnKind kind = TreeListColumnKind::Text;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool readOnly = false;
    bool inPlaceEditor = true; // false: editing only raises editingStarted, no editor opens
    int designWidth = 1200;    // twips; proportions of the width when the tree fills its width
    bool visible = true;
    QString editMask;                    // QLineEdit input mask of Text columns
    QList<TreeListComboItem> comboItems; // ImageCombo
    QIcon buttonGlyph;                   // ButtonEdit; "..." when null
    QString widthSample;                 // a whole value of the column (a code, a name): it stays readable

    bool isBound() const { return kind != TreeListColumnKind::Unbound && !fieldName.isEmpty(); }
    bool isEditable() const
    {
        return !readOnly && kind != TreeListColumnKind::Unbound && kind != TreeListColumnKind::ButtonEdit;
    }

    // The text a cell shows for a stored value, before the draw-time hook.
    QString displayText(const QVariant &value) const;
    const TreeListComboItem *comboItemFor(const QVariant &value) const;
    int comboIndexOf(const QVariant &value) const; // -1 when no item holds the value
};

// The narrowest the column may be: its heading, and a whole value of its kind (a date, the
// longest choice of a combo, the column's width sample), measured with the fonts given.
// extraIndent: what the tree draws before the text of the column (its hierarchy lines).
int minimumColumnWidth(const TreeListColumn &column, const QFontMetrics &cells, const QFontMetrics &header,
                       int extraIndent = 0);

} // namespace fw
