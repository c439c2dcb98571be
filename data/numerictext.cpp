#include "numerictext.h"

namespace numerictext {

bool isNumeric(const QString &text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    const auto skipBlanks = [&] {
        while (i < n && (text.at(i) == u' ' || text.at(i) == u'\t'))
            ++i;
    };

    skipBlanks();
    if (i < n && (text.at(i) == u'+' || text.at(i) == u'-'))
        ++i;

    int digits = 0;
    bool point = false;
    for (; i < n; ++i) {
        const QChar c = text.at(i);
        if (c >= u'0' && c <= u'9') {
            ++digits;
        } else if (c == u'.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    skipBlanks();
    return digits > 0 && i == n;
}

} // namespace numerictext
