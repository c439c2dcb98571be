#include "framework/import/xlsxworkbook.h"

#include "framework/import/importfileerror.h"
#include "framework/import/xlsxdates.h"

#include <QDir>
#include <QXmlStreamReader>

namespace fw {

namespace {

QString folderOf(const QString &part)
{
    const qsizetype slash = part.lastIndexOf(u'/');
    return slash < 0 ? QString() : part.left(slash);
}

// A relationship's target is relative to the folder of its source part, or absolute in the package.
QString resolve(const QString &folder, const QString &target)
{
    if (target.startsWith(u'/'))
        return target.mid(1);
    return QDir::cleanPath(folder.isEmpty() ? target : folder + u'/' + target);
}

// Strings keep the characters XML cannot hold as _xHHHH_ (and a literal "_x" as _x005F_x).
QString unescaped(const QString &text)
{
    if (!text.contains(u"_x"))
        return text;
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == u'_' && i + 6 < text.size() && text.at(i + 1) == u'x' && text.at(i + 6) == u'_') {
            bool hex = false;
            const ushort code = QStringView(text).sliced(i + 2, 4).toUShort(&hex, 16);
            if (hex) {
                result += QChar(code);
                i += 6;
                continue;
            }
        }
        result += text.at(i);
    }
    return result;
}

} // namespace

XlsxWorkbook::XlsxWorkbook(const QString &path)
    : m_path(path)
{
    if (!m_zip.open(path))
        damaged();
    const QString workbook =
        firstOfType(relationships(QString()), u"/officeDocument", QStringLiteral("xl/workbook.xml")).target;
    const QHash<QString, Relationship> parts = relationships(workbook);

    m_sheetEntry = parts.value(readWorkbook(workbook)).target;
    if (m_sheetEntry.isEmpty())
        damaged();
    const QString folder = folderOf(workbook);
    readSharedStrings(firstOfType(parts, u"/sharedStrings", folder + QStringLiteral("/sharedStrings.xml")).target);
    readStyles(firstOfType(parts, u"/styles", folder + QStringLiteral("/styles.xml")).target);
}

XlsxWorkbook::~XlsxWorkbook() = default;

std::unique_ptr<QIODevice> XlsxWorkbook::openSheet()
{
    return open(m_sheetEntry, true);
}

void XlsxWorkbook::damaged() const
{
    throw ImportFileError::damagedWorkbook(m_path);
}

QString XlsxWorkbook::readRichText(QXmlStreamReader &xml)
{
    QString text;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"t") {
            text += xml.readElementText();
        } else if (xml.name() == u"r") {
            while (xml.readNextStartElement()) {
                if (xml.name() == u"t")
                    text += xml.readElementText();
                else
                    xml.skipCurrentElement();
            }
        } else {
            xml.skipCurrentElement(); // phonetic guides and their properties
        }
    }
    return unescaped(text);
}

std::unique_ptr<QIODevice> XlsxWorkbook::open(const QString &entry, bool required)
{
    std::unique_ptr<QIODevice> file = m_zip.openEntry(entry);
    if (!file && required)
        damaged();
    return file;
}

// The relationships of a part (of the package itself for an empty name), by id.
QHash<QString, XlsxWorkbook::Relationship> XlsxWorkbook::relationships(const QString &part)
{
    const QString folder = folderOf(part);
    const QString entry = (folder.isEmpty() ? QString() : folder + u'/') + QStringLiteral("_rels/")
        + part.mid(folder.isEmpty() ? 0 : folder.size() + 1) + QStringLiteral(".rels");
    QHash<QString, Relationship> found;
    const std::unique_ptr<QIODevice> file = open(entry, false);
    if (!file)
        return found;
    QXmlStreamReader xml(file.get());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != u"Relationship")
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (attributes.value(QLatin1StringView("TargetMode")) == u"External")
            continue;
        found.insert(attributes.value(QLatin1StringView("Id")).toString(),
                     {attributes.value(QLatin1StringView("Type")).toString(),
                      resolve(folder, attributes.value(QLatin1StringView("Target")).toString())});
    }
    check(xml);
    return found;
}

XlsxWorkbook::Relationship XlsxWorkbook::firstOfType(const QHash<QString, Relationship> &relationships,
                                                     QStringView type, const QString &fallback) const
{
    for (const Relationship &relationship : relationships) {
        if (relationship.type.endsWith(type))
            return relationship;
    }
    return {QString(), fallback};
}

// The date system, and the first sheet not hidden: its name, and its relationship id returned.
QString XlsxWorkbook::readWorkbook(const QString &part)
{
    const std::unique_ptr<QIODevice> file = open(part, true);
    QXmlStreamReader xml(file.get());
    bool found = false;
    QString id;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == u"workbookPr") {
            const QStringView date1904 = attributes.value(QLatin1StringView("date1904"));
            m_date1904 = date1904 == u"1" || date1904 == u"true";
        } else if (xml.name() == u"sheet" && !found) {
            const QStringView state = attributes.value(QLatin1StringView("state"));
            if (state == u"hidden" || state == u"veryHidden")
                continue;
            found = true;
            m_sheetName = attributes.value(QLatin1StringView("name")).toString();
            for (const QXmlStreamAttribute &attribute : attributes) {
                if (attribute.name() == u"id" && !attribute.namespaceUri().isEmpty())
                    id = attribute.value().toString();
            }
        }
    }
    check(xml);
    if (!found)
        throw ImportFileError::noVisibleSheet(m_path);
    return id;
}

void XlsxWorkbook::readSharedStrings(const QString &part)
{
    const std::unique_ptr<QIODevice> file = open(part, false);
    if (!file)
        return;
    QXmlStreamReader xml(file.get());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"sst")
            m_sharedStrings.reserve(
                std::min(xml.attributes().value(QLatin1StringView("uniqueCount")).toInt(), 1 << 20));
        else if (xml.name() == u"si")
            m_sharedStrings.append(readRichText(xml));
    }
    check(xml);
}

void XlsxWorkbook::readStyles(const QString &part)
{
    const std::unique_ptr<QIODevice> file = open(part, false);
    if (!file)
        return;
    QHash<int, QString> codes;
    std::vector<int> formats; // of each cell style, in order
    QXmlStreamReader xml(file.get());
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"numFmt") {
            const QXmlStreamAttributes attributes = xml.attributes();
            codes.insert(attributes.value(QLatin1StringView("numFmtId")).toInt(),
                         attributes.value(QLatin1StringView("formatCode")).toString());
        } else if (xml.name() == u"cellXfs") {
            while (xml.readNextStartElement()) {
                if (xml.name() == u"xf")
                    formats.push_back(xml.attributes().value(QLatin1StringView("numFmtId")).toInt());
                xml.skipCurrentElement();
            }
        }
    }
    check(xml);
    m_dateStyles.reserve(formats.size());
    for (const int format : formats)
        m_dateStyles.push_back(xlsxdates::isDateFormat(format, codes.value(format)));
}

void XlsxWorkbook::check(const QXmlStreamReader &xml) const
{
    if (xml.hasError())
        damaged();
}

} // namespace fw
