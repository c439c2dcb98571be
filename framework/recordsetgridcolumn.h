#pragma once

#include <QColor>
#include <QString>

namespace fw {

// One column of a RecordsetGrid: the field it shows, or for a button column the key that a
// click reports. Filled with designated initialisers, e.g.
//   {.key = "Seleziona", .caption = "Sel.", .width = 750, .kind = Kind::Check, .readOnly = false}
struct RecordsetGridColumn
{
    enum class Kind {
        Text,    // the field's value as text
        Check,   // a flag field (1 checked, anything else unchecked) shown as a check box
        Button,  // not bound: a push button captioned like the column
    };

    QString key;
    QString caption;            // empty: the key
    int width = 1200;           // twips
    Kind kind = Kind::Text;
    bool readOnly = true;
    QColor background;          // invalid: the grid's own

    QString heading() const { return caption.isEmpty() ? key : caption; }
};

} // namespace fw
