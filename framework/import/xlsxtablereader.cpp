#include "framework/import/xlsxtablereader.h"

#include "framework/import/importedtablebuilder.h"
#include "framework/import/importfileerror.h"
#include "framework/import/xlsxdates.h"
#include "framework/import/xlsxworkbook.h"
#include "platform/db/dayformat.h"

#include <QXmlStreamReader>

namespace fw {

namespace {

constexpr int MaxColumns = 16384;
constexpr int MaxRows = 1048576;

ImportedCell textCell(const QString &text)
{
    ImportedCell cell;
    if (!text.isEmpty()) {
        cell.kind = ImportedCell::Kind::Text;
        cell.text = text;
    }
    return cell;
}

ImportedCell numberCell(double number)
{
    ImportedCell cell;
    cell.kind = ImportedCell::Kind::Number;
    cell.number = number;
    cell.text = QString::number(number, 'f', QLocale::FloatingPointShortest);
    return cell;
}

ImportedCell dateCell(QDate date)
{
    ImportedCell cell;
    cell.kind = ImportedCell::Kind::Date;
    cell.date = date;
    cell.text = date.toString(db::dayFormat);
    return cell;
}

// What a cell's "t" attribute says its value is.
enum class ValueType { Number, Shared, Inline, FormulaText, Boolean, Error, IsoDate };

ValueType valueType(QStringView type)
{
    if (type == u"s")
        return ValueType::Shared;
    if (type == u"inlineStr")
        return ValueType::Inline;
    if (type == u"str")
        return ValueType::FormulaText;
    if (type == u"b")
        return ValueType::Boolean;
    if (type == u"e")
        return ValueType::Error;
    if (type == u"d")
        return ValueType::IsoDate;
    return ValueType::Number;
}

class SheetReader
{
public:
    explicit SheetReader(XlsxWorkbook &workbook)
        : m_workbook(workbook)
    { }

    ImportedTable read()
    {
        const std::unique_ptr<QIODevice> file = m_workbook.openSheet();
        QXmlStreamReader xml(file.get());
        ImportedTableBuilder builder(m_workbook.sheetName());
        QStringList merged;
        int nextLine = 1;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (xml.name() == u"row") {
                ImportedRow row = readRow(xml, nextLine);
                nextLine = row.line + 1;
                builder.add(std::move(row));
            } else if (xml.name() == u"mergeCell") {
                merged << xml.attributes().value(QLatin1StringView("ref")).toString();
            }
        }
        if (xml.hasError())
            m_workbook.damaged();
        for (const QString &range : std::as_const(merged)) {
            if (overlapsData(range))
                throw ImportFileError::mergedCells(m_workbook.sheetName(), range);
        }
        return builder.take(m_workbook.path());
    }

private:
    ImportedRow readRow(QXmlStreamReader &xml, int nextLine)
    {
        ImportedRow row;
        row.line = nextLine;
        if (const QStringView r = xml.attributes().value(QLatin1StringView("r")); !r.isEmpty()) {
            bool number = false;
            row.line = r.toInt(&number);
            if (!number || row.line < 1 || row.line > MaxRows)
                m_workbook.damaged();
        }
        int nextColumn = 0;
        int lastFilled = -1;
        while (xml.readNextStartElement()) {
            if (xml.name() != u"c") {
                xml.skipCurrentElement();
                continue;
            }
            // The attributes are taken apart before the reader moves on, so that none holds its buffer.
            int column = nextColumn;
            ValueType type = ValueType::Number;
            qsizetype style = 0;
            {
                const QXmlStreamAttributes attributes = xml.attributes();
                int line = 0;
                const QStringView r = attributes.value(QLatin1StringView("r"));
                if (!r.isEmpty() && !XlsxTableReader::parseReference(r, column, line))
                    m_workbook.damaged();
                if (column >= MaxColumns)
                    m_workbook.damaged();
                type = valueType(attributes.value(QLatin1StringView("t")));
                style = attributes.value(QLatin1StringView("s")).toInt();
            }
            ImportedCell cell = readCell(xml, type, style, column, row.line);
            if (cell.kind == ImportedCell::Kind::Empty) {
                nextColumn = column + 1;
                continue;
            }
            if (column >= row.cells.size())
                row.cells.resize(column + 1);
            row.cells[column] = std::move(cell);
            lastFilled = std::max(lastFilled, column);
            nextColumn = column + 1;
        }
        if (lastFilled >= 0) {
            if (m_firstLine == 0)
                m_firstLine = row.line;
            m_lastLine = row.line;
            m_lastColumn = std::max(m_lastColumn, lastFilled);
        }
        return row;
    }

    ImportedCell readCell(QXmlStreamReader &xml, ValueType type, qsizetype style, int column, int line)
    {
        QString value;
        bool hasValue = false;
        bool hasFormula = false;
        while (xml.readNextStartElement()) {
            if (xml.name() == u"v") {
                value = xml.readElementText();
                hasValue = true;
            } else if (xml.name() == u"is") {
                value = XlsxWorkbook::readRichText(xml);
                hasValue = true;
                type = ValueType::Inline;
            } else {
                hasFormula = hasFormula || xml.name() == u"f";
                xml.skipCurrentElement();
            }
        }
        if (hasFormula && !hasValue)
            throw ImportFileError::formulaWithoutValue(m_workbook.sheetName(),
                                                       XlsxTableReader::reference(column, line));
        if (!hasValue)
            return {};
        switch (type) {
        case ValueType::Inline:
        case ValueType::FormulaText: return textCell(value);
        case ValueType::Shared: {
            bool number = false;
            const qsizetype index = value.toLongLong(&number);
            if (!number || index < 0 || index >= m_workbook.sharedStrings().size())
                m_workbook.damaged();
            return textCell(m_workbook.sharedStrings().at(index));
        }
        case ValueType::Boolean:
            return textCell(value.trimmed() == u"1" ? QStringLiteral("VERO") : QStringLiteral("FALSO"));
        case ValueType::Error:
            throw ImportFileError::errorCell(m_workbook.sheetName(), XlsxTableReader::reference(column, line), value);
        case ValueType::IsoDate: {
            const QDate date = QDate::fromString(value.left(10), Qt::ISODate);
            return date.isValid() ? dateCell(date) : textCell(value);
        }
        case ValueType::Number: break;
        }
        if (value.isEmpty())
            return {};
        bool number = false;
        const double amount = value.toDouble(&number);
        if (!number)
            m_workbook.damaged();
        if (m_workbook.isDateStyle(style)) {
            const QDate date = xlsxdates::dateOfSerial(amount, m_workbook.uses1904());
            if (date.isValid())
                return dateCell(date);
        }
        return numberCell(amount);
    }

    // Merged cells matter where the table lies: from its first row with a value to its last,
    // from column A to the last column with a value.
    bool overlapsData(const QString &range) const
    {
        if (m_firstLine == 0)
            return false;
        const QStringList corners = range.split(u':');
        int firstColumn = 0, firstLine = 0;
        if (!XlsxTableReader::parseReference(corners.constFirst(), firstColumn, firstLine))
            return false;
        int lastColumn = firstColumn, lastLine = firstLine;
        if (corners.size() > 1 && !XlsxTableReader::parseReference(corners.at(1), lastColumn, lastLine))
            return false;
        return firstLine <= m_lastLine && lastLine >= m_firstLine && firstColumn <= m_lastColumn;
    }

    XlsxWorkbook &m_workbook;
    int m_firstLine = 0;
    int m_lastLine = 0;
    int m_lastColumn = -1;
};

} // namespace

ImportedTable XlsxTableReader::read(const QString &path)
{
    XlsxWorkbook workbook(path);
    return SheetReader(workbook).read();
}

bool XlsxTableReader::parseReference(QStringView reference, int &column, int &row)
{
    qsizetype i = 0;
    int letters = 0;
    for (; i < reference.size() && reference.at(i) >= u'A' && reference.at(i) <= u'Z'; ++i) {
        if (i == 3)
            return false;
        letters = letters * 26 + (reference.at(i).unicode() - u'A' + 1);
    }
    if (i == 0 || i == reference.size() || letters > MaxColumns || !reference.at(i).isDigit())
        return false;
    bool number = false;
    const int line = reference.sliced(i).toInt(&number);
    if (!number || line < 1 || line > MaxRows)
        return false;
    column = letters - 1;
    row = line;
    return true;
}

QString XlsxTableReader::reference(int column, int row)
{
    QString letters;
    for (int n = column + 1; n > 0; n = (n - 1) / 26)
        letters.prepend(QChar(u'A' + (n - 1) % 26));
    return letters + QString::number(row);
}

} // namespace fw
