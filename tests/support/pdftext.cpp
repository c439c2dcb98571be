#include "tests/support/pdftext.h"

#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

namespace {

QString unescape(QString text)
{
    return text.replace(QLatin1String("&lt;"), QLatin1String("<"))
        .replace(QLatin1String("&gt;"), QLatin1String(">"))
        .replace(QLatin1String("&quot;"), QLatin1String("\""))
        .replace(QLatin1String("&#39;"), QLatin1String("'"))
        .replace(QLatin1String("&apos;"), QLatin1String("'"))
        .replace(QLatin1String("&amp;"), QLatin1String("&"));
}

} // namespace

PdfText::PdfText(const QString &pdfPath)
{
    if (!toolAvailable()) {
        m_error = QStringLiteral("pdftotext non trovato (pacchetto poppler-utils)");
        return;
    }
    QProcess process;
    process.start(
        QStringLiteral("pdftotext"),
        {QStringLiteral("-bbox"), QStringLiteral("-enc"), QStringLiteral("UTF-8"), pdfPath, QStringLiteral("-")});
    if (!process.waitForFinished(120000) || process.exitCode() != 0) {
        m_error = QString::fromUtf8(process.readAllStandardError());
        if (m_error.isEmpty())
            m_error = QStringLiteral("pdftotext non ha letto %1").arg(pdfPath);
        return;
    }
    const QString html = QString::fromUtf8(process.readAllStandardOutput());
    static const QRegularExpression element(
        QStringLiteral("<page |<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\"[^>]*>([^<]*)</word>"));
    for (auto match = element.globalMatch(html); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        if (found.captured(0) == QLatin1String("<page ")) {
            ++m_pages;
            continue;
        }
        m_words.append(
            {m_pages, found.captured(1).toDouble(), found.captured(2).toDouble(), unescape(found.captured(3))});
    }
}

bool PdfText::toolAvailable()
{
    return !QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty();
}

QStringList PdfText::lines(int page) const
{
    // Words whose tops are within a point of each other share a line.
    QMap<int, QList<const Word *>> byLine;
    for (const Word &word : m_words) {
        if (word.page == page)
            byLine[qRound(word.y)].append(&word);
    }
    QStringList result;
    QList<const Word *> current;
    int currentY = -1000;
    const auto flush = [&] {
        if (current.isEmpty())
            return;
        std::sort(current.begin(), current.end(), [](const Word *a, const Word *b) { return a->x < b->x; });
        QStringList texts;
        for (const Word *word : current)
            texts << word->text;
        result << texts.join(QLatin1Char(' '));
        current.clear();
    };
    for (auto it = byLine.cbegin(); it != byLine.cend(); ++it) {
        if (it.key() - currentY > 1)
            flush();
        currentY = it.key();
        current += it.value();
    }
    flush();
    return result;
}

QStringList PdfText::allLines() const
{
    QStringList result;
    for (int page = 1; page <= m_pages; ++page)
        result += lines(page);
    return result;
}

PdfText::Word PdfText::find(const QString &text, int page) const
{
    for (const Word &word : m_words) {
        if (word.text == text && (page == 0 || word.page == page))
            return word;
    }
    return {};
}
