#include "framework/export/xlsxtablewriter.h"

#include "framework/export/exportfile.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <algorithm>
#include <stdexcept>
#include <xlsxwriter.h>

namespace fw {

namespace {

[[noreturn]] void fail(const QString &message)
{
    throw std::runtime_error(message.toStdString());
}

// Excel's widths count characters of the default font; a little room for the filter arrows
// and the outline's indent, and no column wider than a screen.
constexpr double MinWidth = 6;
constexpr double MaxWidth = 80;

// The writer library words its errors in English; the user reads why a file was not written in
// the language of the rest of the message.
QString reasonOf(lxw_error error)
{
    switch (error) {
    case LXW_ERROR_MEMORY_MALLOC_FAILED: return QStringLiteral("memoria insufficiente.");
    case LXW_ERROR_CREATING_XLSX_FILE:
        return QStringLiteral("il file non si può creare (permessi della cartella o disco pieno).");
    case LXW_ERROR_CREATING_TMPFILE:
    case LXW_ERROR_READING_TMPFILE:
        return QStringLiteral("un file temporaneo non si può scrivere o leggere (disco pieno?).");
    case LXW_ERROR_ZIP_FILE_OPERATION:
    case LXW_ERROR_ZIP_FILE_ADD:
    case LXW_ERROR_ZIP_CLOSE: return QStringLiteral("errore di scrittura del file (disco pieno?).");
    default:
        return QStringLiteral("errore interno nella scrittura del foglio (%1).")
            .arg(QString::fromUtf8(lxw_strerror(error)));
    }
}

} // namespace

XlsxTableWriter::~XlsxTableWriter()
{
    discard();
}

void XlsxTableWriter::open(const QString &path, const QString &title, const QList<ExportColumn> &columns)
{
    discard();
    m_path = path;
    m_columns = columns;
    m_widths.assign(size_t(columns.size()) + (m_shape == TableShape::Tree ? 1 : 0), 0);
    m_row = 0;

    // The workbook is written beside the target and takes its name only when complete.
    {
        QTemporaryFile temporary(QFileInfo(path).dir().filePath(QStringLiteral(".esportazione-XXXXXX.xlsx")));
        temporary.setAutoRemove(false);
        if (!temporary.open())
            fail(ExportFile::cannotWrite(path, temporary.errorString()));
        m_temporary = temporary.fileName();
    }
    lxw_workbook_options options {};
    options.constant_memory = LXW_TRUE;
    m_workbook = workbook_new_opt(QFile::encodeName(m_temporary).constData(), &options);
    if (!m_workbook)
        fail(ExportFile::cannotWrite(path, QStringLiteral("la cartella di lavoro non si può creare.")));
    m_sheet = workbook_add_worksheet(m_workbook, sheetName(title).toUtf8().constData());
    if (!m_sheet)
        fail(ExportFile::cannotWrite(path, QStringLiteral("il foglio non si può creare.")));

    m_header = workbook_add_format(m_workbook);
    format_set_bold(m_header);
    m_date = workbook_add_format(m_workbook);
    format_set_num_format(m_date, "dd/mm/yyyy");

    worksheet_freeze_panes(m_sheet, 1, 0);
    worksheet_outline_settings(m_sheet, LXW_TRUE, LXW_FALSE, LXW_TRUE, LXW_FALSE);

    m_first = m_shape == TableShape::Tree ? 1 : 0;
    if (m_shape == TableShape::Tree) {
        const QString levelCaption = QStringLiteral("Livello");
        check(worksheet_write_string(m_sheet, 0, 0, levelCaption.toUtf8().constData(), m_header));
        widen(0, levelCaption.size());
    }
    for (int i = 0; i < columns.size(); ++i) {
        check(worksheet_write_string(m_sheet, 0, lxw_col_t(i + m_first), columns.at(i).caption.toUtf8().constData(),
                                     m_header));
        widen(i + m_first, columns.at(i).caption.size());
    }
    m_row = 1;
}

void XlsxTableWriter::writeRow(int level, const QList<QVariant> &values)
{
    if (m_row >= MaxRows)
        fail(QStringLiteral("Il foglio di Excel contiene al massimo %1 righe: esportare meno livelli.")
                 .arg(MaxRows - 1));
    if (m_shape == TableShape::Tree) {
        lxw_row_col_options outline {};
        outline.level = uint8_t(std::clamp(level, 0, MaxOutlineLevel));
        check(worksheet_set_row_opt(m_sheet, lxw_row_t(m_row), LXW_DEF_ROW_HEIGHT, nullptr, &outline));
        check(worksheet_write_number(m_sheet, lxw_row_t(m_row), 0, level + 1, nullptr));
    }
    for (int i = 0; i < m_columns.size() && i < values.size(); ++i) {
        const QVariant &value = values.at(i);
        if (value.isNull())
            continue;
        const auto column = lxw_col_t(i + m_first);
        switch (m_columns.at(i).kind) {
        case ExportCellKind::Number: {
            const double number = value.toDouble();
            check(worksheet_write_number(m_sheet, lxw_row_t(m_row), column, number, nullptr));
            widen(i + m_first, QString::number(number, 'g', 15).size());
            break;
        }
        case ExportCellKind::Date: {
            const QDate date = value.toDate();
            if (!date.isValid())
                break;
            lxw_datetime when {date.year(), date.month(), date.day(), 0, 0, 0};
            check(worksheet_write_datetime(m_sheet, lxw_row_t(m_row), column, &when, m_date));
            widen(i + m_first, 10);
            break;
        }
        case ExportCellKind::Text: {
            const QString text = value.toString();
            if (text.isEmpty())
                break;
            check(worksheet_write_string(m_sheet, lxw_row_t(m_row), column, text.toUtf8().constData(), nullptr));
            widen(i + m_first, text.size());
            break;
        }
        }
    }
    ++m_row;
}

void XlsxTableWriter::commit()
{
    for (size_t i = 0; i < m_widths.size(); ++i) {
        const double width = std::clamp(double(m_widths[i]) + 2, MinWidth, MaxWidth);
        check(worksheet_set_column(m_sheet, lxw_col_t(i), lxw_col_t(i), width, nullptr));
    }
    const lxw_error closed = workbook_close(m_workbook);
    m_workbook = nullptr;
    if (closed != LXW_NO_ERROR) {
        discard();
        fail(ExportFile::cannotWrite(m_path, reasonOf(closed)));
    }
    // The temporary file is private to its owner; the workbook gets the permissions of the file
    // it replaces, or those of a new file.
    const QFileDevice::Permissions permissions = QFile::exists(m_path)
        ? QFile::permissions(m_path)
        : QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
    QFile::setPermissions(m_temporary, permissions);
    if (QFile::exists(m_path) && !QFile::remove(m_path)) {
        discard();
        fail(ExportFile::cannotWrite(m_path, QStringLiteral("il file esistente non si può sostituire.")));
    }
    if (!QFile::rename(m_temporary, m_path)) {
        discard();
        fail(ExportFile::cannotWrite(m_path, QStringLiteral("il file non si può rinominare.")));
    }
    m_temporary.clear();
}

// An unfinished workbook is closed without keeping anything: its temporary file goes.
void XlsxTableWriter::discard()
{
    if (m_workbook) {
        workbook_close(m_workbook);
        m_workbook = nullptr;
    }
    m_sheet = nullptr;
    if (!m_temporary.isEmpty()) {
        QFile::remove(m_temporary);
        m_temporary.clear();
    }
}

void XlsxTableWriter::check(int error)
{
    if (error == LXW_NO_ERROR)
        return;
    fail(ExportFile::cannotWrite(m_path, reasonOf(lxw_error(error))));
}

void XlsxTableWriter::widen(int column, qsizetype characters)
{
    m_widths[size_t(column)] = std::max(m_widths[size_t(column)], characters);
}

QString XlsxTableWriter::sheetName(const QString &title)
{
    QString name;
    for (QChar c : title) {
        if (!QStringLiteral("[]:*?/\\").contains(c))
            name += c;
    }
    // Excel allows 31 characters: a longer title is cut after its last whole word that fits.
    constexpr int longest = 31;
    name = name.trimmed();
    if (name.size() > longest) {
        const qsizetype blank = name.lastIndexOf(QLatin1Char(' '), longest);
        name = name.left(blank > 0 ? blank : longest).trimmed();
    }
    if (name.startsWith(QLatin1Char('\'')) || name.endsWith(QLatin1Char('\'')))
        name.remove(QLatin1Char('\''));
    return name.isEmpty() ? QStringLiteral("Distinta") : name;
}

} // namespace fw
