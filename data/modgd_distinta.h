#pragma once

#include "data/conversionerror.h"

#include <QString>
#include <QVariant>

// Null-safe readers of database values shared by every form of the module.
namespace MODGD_DISTINTA {

// "" when value is empty, null or ""; otherwise its text with trailing blanks removed.
// Dates read as "dd/mm/yyyy" (with the time when there is one).
QString NvlStringa(const QVariant &value);

// The 16-bit integer 0 (a QVariant holding short) when value is empty, null or ""; otherwise the
// value as a decimal number (a QVariant holding double). Text must read as a number ("12",
// " -3.5 ", "4,25"); anything else, blanks included, throws ConversionError. Dates give their
// serial day number (days since 30/12/1899), booleans -1 and 0, as the suite's numbers do.
QVariant NvlNumero(const QVariant &value);

// defaultValue when value is empty, null, or blank once trimmed; otherwise its text with leading
// and trailing blanks removed. Never throws: a value that has no text gives an empty QVariant.
QVariant NvlTrim(const QVariant &value, const QVariant &defaultValue);

} // namespace MODGD_DISTINTA
