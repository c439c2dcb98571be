#pragma once

#include <QString>

#include <stdexcept>

namespace MODGD_DISTINTA {

// A value that cannot be read as the type asked for (the run-time "type mismatch" of the
// module's helpers); the form's error handler reports it like any other failure.
class ConversionError : public std::invalid_argument
{
public:
    explicit ConversionError(const QString &message)
        : std::invalid_argument(message.toStdString())
        , m_message(message)
    { }

    const QString &message() const { return m_message; }

private:
    QString m_message;
};

} // namespace MODGD_DISTINTA
