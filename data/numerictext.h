#pragma once

#include <QString>

namespace numerictext {

// True when text reads as a number the way the suite's code boxes accept one: optional blanks,
// an optional sign, digits with at most one decimal point, optional blanks ("12", " -3 ", "+4.",
// ".5"). Empty text, letters, a lone sign or point, and a decimal comma are not numeric, so a
// text that passes can be written bare into a statement.
bool isNumeric(const QString &text);

} // namespace numerictext
