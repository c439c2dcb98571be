#include "framework/export/csvtablewriter.h"

#include "framework/export/exportfile.h"
#include "platform/db/dayformat.h"

#include <QDate>
#include <QLocale>
#include <QStringList>
#include <stdexcept>

namespace fw {

namespace {

constexpr qsizetype BufferSize = 1 << 16;

[[noreturn]] void fail(const QString &message)
{
    throw std::runtime_error(message.toStdString());
}

} // namespace

void CsvTableWriter::open(const QString &path, const QString &, const QList<ExportColumn> &columns)
{
    m_path = path;
    m_columns = columns;
    m_file = std::make_unique<QSaveFile>(path);
    if (!m_file->open(QIODevice::WriteOnly))
        fail(ExportFile::cannotWrite(path, m_file->errorString()));
    m_buffer = QByteArrayLiteral("\xEF\xBB\xBF");
    QStringList captions;
    if (m_shape == TableShape::Tree)
        captions << QStringLiteral("Livello");
    for (const ExportColumn &column : columns)
        captions << column.caption;
    for (qsizetype i = 0; i < captions.size(); ++i)
        m_buffer += (i > 0 ? QByteArray(1, Separator) : QByteArray()) + field(captions.at(i));
    m_buffer += "\r\n";
}

void CsvTableWriter::writeRow(int level, const QList<QVariant> &values)
{
    if (m_shape == TableShape::Tree)
        m_buffer += QByteArray::number(level + 1);
    for (qsizetype i = 0; i < m_columns.size(); ++i) {
        if (i > 0 || m_shape == TableShape::Tree)
            m_buffer += Separator;
        if (i < values.size())
            m_buffer += field(text(values.at(i), m_columns.at(i).kind));
    }
    m_buffer += "\r\n";
    flush(false);
}

void CsvTableWriter::commit()
{
    flush(true);
    if (!m_file->commit())
        fail(ExportFile::cannotWrite(m_path, m_file->errorString()));
    m_file.reset();
}

void CsvTableWriter::flush(bool force)
{
    if (!force && m_buffer.size() < BufferSize)
        return;
    if (m_file->write(m_buffer) != m_buffer.size())
        fail(ExportFile::cannotWrite(m_path, m_file->errorString()));
    m_buffer.clear();
}

QString CsvTableWriter::text(const QVariant &value, ExportCellKind kind) const
{
    if (value.isNull())
        return {};
    switch (kind) {
    case ExportCellKind::Date: return value.toDate().toString(db::dayFormat);
    case ExportCellKind::Number: {
        bool whole = false;
        const qint64 number = value.toLongLong(&whole);
        if (whole && double(number) == value.toDouble())
            return QString::number(number);
        static const QLocale italian(QLocale::Italian, QLocale::Italy);
        QLocale plain = italian;
        plain.setNumberOptions(QLocale::OmitGroupSeparator);
        return plain.toString(value.toDouble(), 'g', 15);
    }
    case ExportCellKind::Text: break;
    }
    return value.toString();
}

QByteArray CsvTableWriter::field(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    if (!utf8.contains(Separator) && !utf8.contains('"') && !utf8.contains('\n') && !utf8.contains('\r'))
        return utf8;
    QByteArray quoted;
    quoted.reserve(utf8.size() + 2);
    quoted += '"';
    for (char c : utf8) {
        if (c == '"')
            quoted += '"';
        quoted += c;
    }
    quoted += '"';
    return quoted;
}

} // namespace fw
