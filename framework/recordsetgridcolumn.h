#pragma once

#include <QColor>
#include <QString>
#include <QVariant>
#include <functional>

class QFontMetrics;

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
    QString caption;     // empty: the key
    int width = 1200;    // twips; proportions of the width when the grid fills its width
    QString widthSample; // a whole value of the column (a code, a date): it stays readable
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

// The narrowest the column may be: its heading, and a whole value of its kind (the check box,
// the mark, the width sample), measured with the fonts given; extraIndent: what the view draws
// before the column's text.
int minimumColumnWidth(const RecordsetGridColumn &column, const QFontMetrics &cells, const QFontMetrics &header,
                       int checkBoxWidth, int extraIndent = 0);
// What that width depends on besides the fonts, as the key a WidthMemo keeps it under.
QString declaredWidthKey(const RecordsetGridColumn &column, int extraIndent = 0);

} // namespace fw
