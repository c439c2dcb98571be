#pragma once

#include <QString>

namespace fw {

// The host's dictionary of interface texts.
class TranslationService
{
public:
    virtual ~TranslationService() = default;

    // The text of a numeric identifier; defaultText when the dictionary does not hold it.
    virtual QString text(int id, const QString &defaultText) const = 0;

    // The translation of a designed caption; the caption itself when there is none.
    virtual QString translate(const QString &caption) const = 0;
};

} // namespace fw
