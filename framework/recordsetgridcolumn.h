#pragma once

#include <QColor>
#include <QString>
#include <QVariant>
#include <functional>

namespace fw {

// One column of a RecordsetGrid: the field it shows, or for a button column the key that a
// click reports. Filled with designated initialisers, e.g.
//   {.key = "Seleziona", .caption = "Sel.", .width = 750, .kind = Kind::Check, .readOnly = false}
struct RecordsetGridColumn
{
    enum class Kind {
        Text,   // the field's value as text
        Check,  // a flag field (1 checked, anything else unchecked) shown as a check box
        Button, // not bound: a push button captioned like the column
        Mark,   // a flag field shown as a read-only mark (1 marked, anything else blank)
    };

    QString key;
    QString caption;  // empty: the key
    int width = 1200; // twips
    Kind kind = Kind::Text;
    bool readOnly = true;
    QColor background; // invalid: the grid's own
    bool visible = true;
    // The text shown for a stored value (a code or a description in place of an identifier,
    // a date in its format). Called at paint time: it reads texts prepared once per load and
    // never runs a statement.
    std::function<QString(const QVariant &)> displayText;

    QString heading() const { return caption.isEmpty() ? key : caption; }
};

} // namespace fw
