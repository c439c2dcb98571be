#include "tests/support/xlsxsheet.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QXmlStreamReader>

QString XlsxSheet::Row::value(const QString &column) const
{
    for (const Cell &cell : cells) {
        if (cell.ref == column + QString::number(number))
            return cell.value;
    }
    return {};
}

bool XlsxSheet::toolAvailable()
{
    return !QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty();
}

XlsxSheet::XlsxSheet(const QString &path)
{
    if (!QFileInfo::exists(path)) {
        m_error = QStringLiteral("no file ") + path;
        return;
    }
    m_sheet = entry(path, QStringLiteral("xl/worksheets/sheet1.xml"));
    m_styles = entry(path, QStringLiteral("xl/styles.xml"));
    m_workbook = entry(path, QStringLiteral("xl/workbook.xml"));
    if (isValid())
        parseSheet();
}

QString XlsxSheet::entry(const QString &path, const QString &name)
{
    QProcess unzip;
    unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), path, name});
    if (!unzip.waitForFinished(60000) || unzip.exitCode() != 0) {
        m_error = QStringLiteral("unzip %1 %2: %3").arg(path, name, QString::fromUtf8(unzip.readAllStandardError()));
        return {};
    }
    return QString::fromUtf8(unzip.readAllStandardOutput());
}

void XlsxSheet::parseSheet()
{
    QXmlStreamReader xml(m_sheet);
    Row *row = nullptr;
    Cell *cell = nullptr;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const auto name = xml.name();
            const QXmlStreamAttributes attributes = xml.attributes();
            if (name == QLatin1String("row")) {
                m_rows.append({attributes.value(QLatin1String("r")).toInt(),
                               attributes.value(QLatin1String("outlineLevel")).toInt(),
                               {}});
                row = &m_rows.last();
            } else if (name == QLatin1String("c") && row) {
                Cell added;
                added.ref = attributes.value(QLatin1String("r")).toString();
                added.type = attributes.hasAttribute(QLatin1String("t"))
                    ? attributes.value(QLatin1String("t")).toString()
                    : QStringLiteral("n");
                added.style = attributes.value(QLatin1String("s")).toInt();
                row->cells.append(added);
                cell = &row->cells.last();
            } else if ((name == QLatin1String("v") || name == QLatin1String("t")) && cell) {
                cell->value += xml.readElementText();
            }
        } else if (xml.isEndElement() && xml.name() == QLatin1String("c")) {
            cell = nullptr;
        }
    }
    if (xml.hasError())
        m_error = xml.errorString();
}

QString XlsxSheet::numberFormat(int style) const
{
    // cellXfs lists the cell formats in order; each names a numFmtId, custom ones in numFmts.
    const qsizetype start = m_styles.indexOf(QLatin1String("<cellXfs"));
    const QRegularExpression xf(QStringLiteral("<xf [^>]*numFmtId=\"(\\d+)\""));
    QRegularExpressionMatchIterator it = xf.globalMatch(m_styles.mid(start));
    for (int i = 0; it.hasNext(); ++i) {
        const QRegularExpressionMatch match = it.next();
        if (i != style)
            continue;
        const QString id = match.captured(1);
        const QRegularExpression custom(QStringLiteral("<numFmt numFmtId=\"%1\" formatCode=\"([^\"]*)\"").arg(id));
        return custom.match(m_styles).captured(1);
    }
    return {};
}

double XlsxSheet::columnWidth(int column) const
{
    const QRegularExpression col(QStringLiteral("<col min=\"(\\d+)\" max=\"(\\d+)\" width=\"([0-9.]+)\""));
    QRegularExpressionMatchIterator it = col.globalMatch(m_sheet);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        if (match.captured(1).toInt() <= column + 1 && column + 1 <= match.captured(2).toInt())
            return match.captured(3).toDouble();
    }
    return 0;
}
