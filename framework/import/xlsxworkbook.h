#pragma once

#include "framework/import/ziparchive.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

class QIODevice;
class QXmlStreamReader;

namespace fw {

// The parts of an XLSX package around its first visible sheet: the sheet's name and entry, the
// shared strings, which cell styles show dates, and the date system. Read when constructed;
// the sheet itself is left to stream (openSheet). Throws ImportFileError naming path.
class XlsxWorkbook
{
public:
    explicit XlsxWorkbook(const QString &path);
    ~XlsxWorkbook();
    XlsxWorkbook(const XlsxWorkbook &) = delete;
    XlsxWorkbook &operator=(const XlsxWorkbook &) = delete;

    const QString &path() const { return m_path; }
    const QString &sheetName() const { return m_sheetName; }
    const QStringList &sharedStrings() const { return m_sharedStrings; }
    bool isDateStyle(qsizetype style) const
    {
        return style >= 0 && size_t(style) < m_dateStyles.size() && m_dateStyles[size_t(style)];
    }
    bool uses1904() const { return m_date1904; }

    // The sheet's XML, open for reading.
    std::unique_ptr<QIODevice> openSheet();
    [[noreturn]] void damaged() const;

    // The text of a shared or inline string (<si>, <is>) the reader stands on: its own text or
    // its runs', without the phonetic guides; ends on its end element.
    static QString readRichText(QXmlStreamReader &xml);

private:
    struct Relationship
    {
        QString type;
        QString target; // the part's entry in the package
    };

    std::unique_ptr<QIODevice> open(const QString &entry, bool required);
    QHash<QString, Relationship> relationships(const QString &part);
    Relationship firstOfType(const QHash<QString, Relationship> &relationships, QStringView type,
                             const QString &fallback) const;
    QString readWorkbook(const QString &part);
    void readSharedStrings(const QString &part);
    void readStyles(const QString &part);
    void check(const QXmlStreamReader &xml) const;

    QString m_path;
    ZipArchive m_zip;
    QString m_sheetName;
    QString m_sheetEntry;
    QStringList m_sharedStrings;
    std::vector<bool> m_dateStyles;
    bool m_date1904 = false;
};

} // namespace fw
