#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// A PDF read back as poppler's pdftotext reads it (Debian's poppler-utils).
class PdfText
{
public:
    struct Word
    {
        int page = 0; // from 1
        double x = 0; // left edge, in points from the page's left
        double y = 0; // top edge, in points from the page's top
        QString text;
    };

    // Reads the file; isValid() is false (with error()) when it cannot be read.
    explicit PdfText(const QString &pdfPath);

    static bool toolAvailable();

    bool isValid() const { return m_error.isEmpty(); }
    QString error() const { return m_error; }
    int pageCount() const { return m_pages; }
    const QList<Word> &words() const { return m_words; }

    // Each page's lines, words joined by single blanks, top to bottom.
    QStringList lines(int page) const;
    QStringList allLines() const;
    // The first word of a page (0: any page) equal to text; an invalid word (page 0) when none.
    Word find(const QString &text, int page = 0) const;

private:
    QString m_error;
    int m_pages = 0;
    QList<Word> m_words;
};
