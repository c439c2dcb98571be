#include "framework/import/csvtablereader.h"

#include "framework/import/importedtablebuilder.h"
#include "framework/import/importfileerror.h"

#include <QStringDecoder>

namespace fw {

namespace {

constexpr QByteArrayView ByteOrderMark = "\xEF\xBB\xBF";

// Splits the bytes into records and fields. The bytes that structure a CSV are ASCII, so the
// split works on UTF-8 and Latin-1 alike and each field is decoded on its own.
class CsvParser
{
public:
    CsvParser(QByteArrayView bytes, char separator, bool utf8)
        : m_bytes(bytes)
        , m_separator(separator)
        , m_utf8(utf8)
    { }

    bool atEnd() const { return m_at >= m_bytes.size(); }

    QList<ImportedCell> record()
    {
        QList<ImportedCell> cells;
        for (;;) {
            const bool more = field();
            cells.append(cell());
            if (!more)
                return cells;
        }
    }

private:
    // Reads one field into m_field; false when it ended its record.
    bool field()
    {
        m_field.clear();
        if (!atEnd() && m_bytes[m_at] == '"') {
            ++m_at;
            while (!atEnd()) {
                const char c = m_bytes[m_at++];
                if (c != '"') {
                    m_field += c;
                } else if (!atEnd() && m_bytes[m_at] == '"') {
                    m_field += '"';
                    ++m_at;
                } else {
                    break;
                }
            }
        }
        // After a closing quote, anything up to the separator is kept as written.
        while (!atEnd()) {
            const char c = m_bytes[m_at++];
            if (c == m_separator)
                return true;
            if (c == '\n')
                return false;
            if (c == '\r') {
                if (!atEnd() && m_bytes[m_at] == '\n')
                    ++m_at;
                return false;
            }
            m_field += c;
        }
        return false;
    }

    ImportedCell cell() const
    {
        ImportedCell result;
        if (m_field.isEmpty())
            return result;
        result.kind = ImportedCell::Kind::Text;
        result.text = m_utf8 ? QString::fromUtf8(m_field) : QString::fromLatin1(m_field);
        return result;
    }

    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    char m_separator;
    bool m_utf8;
    QByteArray m_field;
};

} // namespace

ImportedTable CsvTableReader::read(const QByteArray &bytes, const QString &path)
{
    QByteArrayView text(bytes);
    if (text.startsWith(ByteOrderMark))
        text = text.sliced(ByteOrderMark.size());
    if (!looksLikeText(text))
        throw ImportFileError::notATable(path);
    CsvParser parser(text, separatorOf(text), isUtf8(text));
    ImportedTableBuilder builder;
    for (int line = 1; !parser.atEnd(); ++line)
        builder.add({line, parser.record()});
    return builder.take(path);
}

// Text has no control characters but tabs and line ends; any binary file has some soon.
bool CsvTableReader::looksLikeText(QByteArrayView bytes)
{
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 && c != '\t' && c != '\n' && c != '\r')
            return false;
    }
    return true;
}

bool CsvTableReader::isUtf8(QByteArrayView bytes)
{
    constexpr qsizetype chunk = 1 << 16;
    QStringDecoder decoder(QStringDecoder::Utf8);
    QList<QChar> buffer(decoder.requiredSpace(chunk));
    for (qsizetype at = 0; at < bytes.size() && !decoder.hasError(); at += chunk)
        decoder.appendToBuffer(buffer.data(), bytes.sliced(at, std::min(chunk, bytes.size() - at)));
    return !decoder.hasError();
}

// The separator of the heading line, the first that holds anything but blanks.
char CsvTableReader::separatorOf(QByteArrayView bytes)
{
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf('\n', start);
        if (end < 0)
            end = bytes.size();
        const QByteArrayView line = bytes.sliced(start, end - start).trimmed();
        if (!line.isEmpty())
            return line.contains(';') || !line.contains(',') ? ';' : ',';
        start = end + 1;
    }
    return ';';
}

} // namespace fw
