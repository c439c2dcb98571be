#include "framework/report/reportlayoutreader.h"

#include <QFile>
#include <QHash>
#include <QStringList>

namespace fw {

namespace {

QString describe(const QString &fileName, int line, const QString &problem)
{
    const QString where = line > 0 ? QStringLiteral("Modello di stampa \"%1\", riga %2: ").arg(fileName).arg(line)
                                   : QStringLiteral("Modello di stampa \"%1\": ").arg(fileName);
    return where + problem;
}

struct Token
{
    QString text;
    bool quoted = false;
};

const QHash<QString, QPageSize::PageSizeId> &pageSizes()
{
    static const QHash<QString, QPageSize::PageSizeId> sizes = {
        {QStringLiteral("A3"), QPageSize::A3},       {QStringLiteral("A4"), QPageSize::A4},
        {QStringLiteral("A5"), QPageSize::A5},       {QStringLiteral("LETTER"), QPageSize::Letter},
        {QStringLiteral("LEGAL"), QPageSize::Legal},
    };
    return sizes;
}

// Reads the statements of one file into a layout; every problem is thrown with its line.
class Parser
{
public:
    Parser(const QString &fileName)
        : m_fileName(fileName)
    {
        m_layout.fileName = fileName;
    }

    ReportLayout parse(const QString &text);

private:
    [[noreturn]] void fail(const QString &problem) const { fail(m_line, problem); }
    [[noreturn]] void fail(int line, const QString &problem) const
    {
        throw ReportLayoutError(m_fileName, line, problem);
    }

    QList<Token> tokenize(const QString &line) const;
    void statement(const QList<Token> &tokens);
    void bandStatement(const QList<Token> &tokens);
    void openBand(ReportBand::Kind kind, const QList<Token> &tokens);
    void cell(const QList<Token> &tokens, bool isField);
    void cellOptions(ReportCell &cell, const QList<Token> &tokens, int from);
    QList<ReportTextPart> parts(const QString &content);
    void closeBand();
    void check();

    double number(const QList<Token> &tokens, int index, const QString &what) const;
    QString word(const QList<Token> &tokens, int index, const QString &what) const;

    QString m_fileName;
    ReportLayout m_layout;
    int m_line = 0;
    bool m_versionSeen = false;
    int m_pageLine = 0;
    ReportBand *m_band = nullptr; // the band being read
    QList<std::pair<QString, int>> m_parameterUses;
    QHash<int, int> m_bandLines; // kind -> line, for repeated bands
};

ReportLayout Parser::parse(const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        m_line = i + 1;
        const QList<Token> tokens = tokenize(lines.at(i));
        if (tokens.isEmpty())
            continue;
        if (!m_versionSeen) {
            if (tokens.size() != 2 || tokens.at(0).text != QLatin1String("layout"))
                fail(QStringLiteral("il file deve iniziare con \"layout 1\""));
            if (tokens.at(1).text != QLatin1String("1"))
                fail(QStringLiteral("versione del formato non gestita: %1").arg(tokens.at(1).text));
            m_versionSeen = true;
            continue;
        }
        if (m_band)
            bandStatement(tokens);
        else
            statement(tokens);
    }
    if (!m_versionSeen)
        fail(0, QStringLiteral("il file è vuoto (deve iniziare con \"layout 1\")"));
    if (m_band)
        fail(m_band->line, QStringLiteral("manca \"end\" alla fine della sezione"));
    check();
    return m_layout;
}

QList<Token> Parser::tokenize(const QString &line) const
{
    QList<Token> tokens;
    int i = 0;
    const int n = int(line.size());
    while (i < n) {
        const QChar c = line.at(i);
        if (c.isSpace()) {
            ++i;
        } else if (c == QLatin1Char('#')) {
            break;
        } else if (c == QLatin1Char('"')) {
            Token token {{}, true};
            ++i;
            bool closed = false;
            while (i < n) {
                if (line.at(i) == QLatin1Char('"')) {
                    if (i + 1 < n && line.at(i + 1) == QLatin1Char('"')) {
                        token.text += QLatin1Char('"');
                        i += 2;
                        continue;
                    }
                    closed = true;
                    ++i;
                    break;
                }
                token.text += line.at(i++);
            }
            if (!closed)
                fail(QStringLiteral("testo senza le virgolette di chiusura"));
            tokens << token;
        } else {
            Token token;
            while (i < n && !line.at(i).isSpace() && line.at(i) != QLatin1Char('"'))
                token.text += line.at(i++);
            tokens << token;
        }
    }
    return tokens;
}

double Parser::number(const QList<Token> &tokens, int index, const QString &what) const
{
    if (index >= tokens.size())
        fail(QStringLiteral("manca %1").arg(what));
    bool ok = false;
    const double value = tokens.at(index).text.toDouble(&ok);
    if (!ok || tokens.at(index).quoted)
        fail(QStringLiteral("%1 non è un numero: \"%2\"").arg(what, tokens.at(index).text));
    return value;
}

QString Parser::word(const QList<Token> &tokens, int index, const QString &what) const
{
    if (index >= tokens.size() || tokens.at(index).text.isEmpty())
        fail(QStringLiteral("manca %1").arg(what));
    return tokens.at(index).text;
}

void Parser::statement(const QList<Token> &tokens)
{
    const QString keyword = tokens.at(0).text;
    if (keyword == QLatin1String("page")) {
        const QString size = word(tokens, 1, QStringLiteral("il formato della pagina")).toUpper();
        if (!pageSizes().contains(size))
            fail(
                QStringLiteral("formato di pagina sconosciuto: %1 (A3, A4, A5, Letter, Legal)").arg(tokens.at(1).text));
        m_layout.pageSize = pageSizes().value(size);
        if (tokens.size() > 2) {
            const QString orientation = tokens.at(2).text;
            if (orientation == QLatin1String("portrait"))
                m_layout.orientation = QPageLayout::Portrait;
            else if (orientation == QLatin1String("landscape"))
                m_layout.orientation = QPageLayout::Landscape;
            else
                fail(QStringLiteral("orientamento sconosciuto: %1 (portrait o landscape)").arg(orientation));
        }
        if (tokens.size() > 3)
            fail(QStringLiteral("parola in più dopo l'orientamento: %1").arg(tokens.at(3).text));
        m_pageLine = m_line;
    } else if (keyword == QLatin1String("margins")) {
        if (tokens.size() < 3 || tokens.size() % 2 == 0)
            fail(QStringLiteral("i margini si scrivono a coppie: left 12 top 12 right 12 bottom 14"));
        for (int i = 1; i + 1 < tokens.size(); i += 2) {
            const QString side = tokens.at(i).text;
            const double value = number(tokens, i + 1, QStringLiteral("il margine"));
            if (value < 0)
                fail(QStringLiteral("margine negativo: %1").arg(value));
            if (side == QLatin1String("left"))
                m_layout.margins.setLeft(value);
            else if (side == QLatin1String("top"))
                m_layout.margins.setTop(value);
            else if (side == QLatin1String("right"))
                m_layout.margins.setRight(value);
            else if (side == QLatin1String("bottom"))
                m_layout.margins.setBottom(value);
            else
                fail(QStringLiteral("margine sconosciuto: %1 (left, top, right, bottom)").arg(side));
        }
    } else if (keyword == QLatin1String("font")) {
        if (tokens.size() != 3)
            fail(QStringLiteral("il carattere si scrive: font \"Famiglia\" dimensione"));
        m_layout.fontFamily = tokens.at(1).text;
        m_layout.fontSize = number(tokens, 2, QStringLiteral("la dimensione del carattere"));
        if (m_layout.fontSize <= 0)
            fail(QStringLiteral("dimensione del carattere non valida: %1").arg(tokens.at(2).text));
    } else if (keyword == QLatin1String("parameter")) {
        if (tokens.size() != 2)
            fail(QStringLiteral("un parametro si dichiara: parameter NOME"));
        m_layout.parameters.append({tokens.at(1).text, m_line});
    } else if (keyword == QLatin1String("title")) {
        openBand(ReportBand::Title, tokens);
    } else if (keyword == QLatin1String("header")) {
        openBand(ReportBand::PageHeader, tokens);
    } else if (keyword == QLatin1String("group")) {
        openBand(ReportBand::GroupHeader, tokens);
    } else if (keyword == QLatin1String("detail")) {
        openBand(ReportBand::Detail, tokens);
    } else if (keyword == QLatin1String("footer")) {
        openBand(ReportBand::PageFooter, tokens);
    } else if (keyword == QLatin1String("end")) {
        fail(QStringLiteral("\"end\" senza una sezione aperta"));
    } else if (keyword == QLatin1String("row") || keyword == QLatin1String("text")
               || keyword == QLatin1String("field")) {
        fail(QStringLiteral("\"%1\" fuori da una sezione (title, header, group, detail, footer)").arg(keyword));
    } else {
        fail(QStringLiteral("parola chiave sconosciuta: %1").arg(keyword));
    }
}

void Parser::openBand(ReportBand::Kind kind, const QList<Token> &tokens)
{
    ReportBand *band = nullptr;
    switch (kind) {
    case ReportBand::Title: band = &m_layout.title; break;
    case ReportBand::PageHeader: band = &m_layout.pageHeader; break;
    case ReportBand::Detail: band = &m_layout.detail; break;
    case ReportBand::PageFooter: band = &m_layout.pageFooter; break;
    case ReportBand::GroupHeader:
        if (tokens.size() != 2)
            fail(QStringLiteral("un gruppo si apre con: group CAMPO"));
        m_layout.groups.append({ReportBand::GroupHeader, tokens.at(1).text, {}, m_line});
        m_band = &m_layout.groups.last();
        return;
    }
    if (tokens.size() != 1)
        fail(QStringLiteral("parola in più dopo \"%1\": %2").arg(tokens.at(0).text, tokens.at(1).text));
    if (m_bandLines.contains(kind))
        fail(QStringLiteral("la sezione \"%1\" è già dichiarata alla riga %2")
                 .arg(tokens.at(0).text)
                 .arg(m_bandLines.value(kind)));
    m_bandLines.insert(kind, m_line);
    band->line = m_line;
    m_band = band;
}

void Parser::bandStatement(const QList<Token> &tokens)
{
    const QString keyword = tokens.at(0).text;
    if (keyword == QLatin1String("end")) {
        closeBand();
    } else if (keyword == QLatin1String("row")) {
        ReportRow row;
        row.line = m_line;
        row.height = number(tokens, 1, QStringLiteral("l'altezza della riga"));
        if (row.height <= 0)
            fail(QStringLiteral("altezza della riga non valida: %1").arg(tokens.at(1).text));
        for (int i = 2; i < tokens.size(); ++i) {
            if (tokens.at(i).text == QLatin1String("rule-above"))
                row.ruleAbove = true;
            else if (tokens.at(i).text == QLatin1String("rule-below"))
                row.ruleBelow = true;
            else
                fail(QStringLiteral("opzione della riga sconosciuta: %1 (rule-above, rule-below)")
                         .arg(tokens.at(i).text));
        }
        m_band->rows.append(row);
    } else if (keyword == QLatin1String("text") || keyword == QLatin1String("field")) {
        if (m_band->rows.isEmpty())
            fail(QStringLiteral("\"%1\" prima della prima \"row\" della sezione").arg(keyword));
        cell(tokens, keyword == QLatin1String("field"));
    } else if (QStringList {QStringLiteral("title"), QStringLiteral("header"), QStringLiteral("group"),
                            QStringLiteral("detail"), QStringLiteral("footer")}
                   .contains(keyword)) {
        fail(QStringLiteral("la sezione aperta alla riga %1 non è chiusa da \"end\"").arg(m_band->line));
    } else {
        fail(QStringLiteral("parola chiave sconosciuta in una sezione: %1 (row, text, field, end)").arg(keyword));
    }
}

void Parser::closeBand()
{
    if (m_band->rows.isEmpty())
        fail(QStringLiteral("sezione senza righe"));
    m_band = nullptr;
}

void Parser::cell(const QList<Token> &tokens, bool isField)
{
    ReportCell cell;
    cell.line = m_line;
    cell.x = number(tokens, 1, QStringLiteral("la posizione"));
    cell.width = number(tokens, 2, QStringLiteral("la larghezza"));
    if (cell.x < 0 || cell.width <= 0)
        fail(QStringLiteral("posizione o larghezza non valida: %1 %2").arg(tokens.at(1).text, tokens.at(2).text));
    if (isField) {
        const QString name = word(tokens, 3, QStringLiteral("il nome del campo"));
        if (tokens.at(3).quoted)
            fail(QStringLiteral("il nome del campo va scritto senza virgolette: %1").arg(name));
        cell.parts.append({ReportTextPart::Field, name});
    } else {
        if (tokens.size() < 4 || !tokens.at(3).quoted)
            fail(QStringLiteral("manca il testo tra virgolette"));
        cell.parts = parts(tokens.at(3).text);
    }
    cellOptions(cell, tokens, 4);
    m_band->rows.last().cells.append(cell);
}

void Parser::cellOptions(ReportCell &cell, const QList<Token> &tokens, int from)
{
    for (int i = from; i < tokens.size(); ++i) {
        const QString option = tokens.at(i).text;
        if (option == QLatin1String("bold")) {
            cell.bold = true;
        } else if (option == QLatin1String("italic")) {
            cell.italic = true;
        } else if (option == QLatin1String("left")) {
            cell.alignment = Qt::AlignLeft;
        } else if (option == QLatin1String("center")) {
            cell.alignment = Qt::AlignHCenter;
        } else if (option == QLatin1String("right")) {
            cell.alignment = Qt::AlignRight;
        } else if (option == QLatin1String("size")) {
            cell.pointSize = number(tokens, ++i, QStringLiteral("la dimensione del carattere"));
            if (cell.pointSize <= 0)
                fail(QStringLiteral("dimensione del carattere non valida: %1").arg(tokens.at(i).text));
        } else if (option == QLatin1String("date")) {
            if (i + 1 >= tokens.size() || !tokens.at(i + 1).quoted)
                fail(QStringLiteral("il formato della data va tra virgolette: date \"dd/MM/yyyy\""));
            cell.dateFormat = tokens.at(++i).text;
        } else if (option == QLatin1String("decimals")) {
            const double decimals = number(tokens, ++i, QStringLiteral("il numero di decimali"));
            if (decimals < 0 || decimals > 9 || decimals != int(decimals))
                fail(QStringLiteral("numero di decimali non valido: %1").arg(tokens.at(i).text));
            cell.decimals = int(decimals);
        } else if (option == QLatin1String("indent")) {
            cell.indentField = word(tokens, ++i, QStringLiteral("il campo del rientro"));
            cell.indentStep = number(tokens, ++i, QStringLiteral("il rientro per livello"));
            if (cell.indentStep < 0)
                fail(QStringLiteral("rientro negativo: %1").arg(tokens.at(i).text));
        } else {
            fail(QStringLiteral("opzione sconosciuta: %1").arg(option));
        }
    }
}

QList<ReportTextPart> Parser::parts(const QString &content)
{
    static const QHash<QString, ReportTextPart::Kind> builtIns = {
        {QStringLiteral("title"), ReportTextPart::Title},    {QStringLiteral("page"), ReportTextPart::Page},
        {QStringLiteral("pages"), ReportTextPart::Pages},    {QStringLiteral("date"), ReportTextPart::PrintDate},
        {QStringLiteral("time"), ReportTextPart::PrintTime},
    };
    QList<ReportTextPart> result;
    QString literal;
    const auto flush = [&] {
        if (!literal.isEmpty())
            result.append({ReportTextPart::Literal, literal});
        literal.clear();
    };
    for (int i = 0; i < content.size(); ++i) {
        const QChar c = content.at(i);
        if ((c == QLatin1Char('{') || c == QLatin1Char('}')) && i + 1 < content.size() && content.at(i + 1) == c) {
            literal += c;
            ++i;
        } else if (c == QLatin1Char('{')) {
            const int close = int(content.indexOf(QLatin1Char('}'), i));
            if (close < 0)
                fail(QStringLiteral("segnaposto senza \"}\": %1").arg(content.mid(i)));
            const QString name = content.mid(i + 1, close - i - 1).trimmed();
            flush();
            if (builtIns.contains(name)) {
                result.append(ReportTextPart {builtIns.value(name), QString()});
            } else if (name.startsWith(QLatin1String("field:")) && name.size() > 6) {
                result.append({ReportTextPart::Field, name.mid(6).trimmed()});
            } else if (name.startsWith(QLatin1String("param:")) && name.size() > 6) {
                result.append({ReportTextPart::Parameter, name.mid(6).trimmed()});
                m_parameterUses.append({name.mid(6).trimmed(), m_line});
            } else {
                fail(QStringLiteral(
                         "segnaposto sconosciuto: {%1} (title, page, pages, date, time, param:NOME, field:NOME)")
                         .arg(name));
            }
            i = close;
        } else if (c == QLatin1Char('}')) {
            fail(QStringLiteral("\"}\" senza \"{\" (per una graffa scrivere }})"));
        } else {
            literal += c;
        }
    }
    flush();
    return result;
}

// What can only be judged on the whole file: the detail band, the room on the page, the cells
// within the margins, the parameters used and declared.
void Parser::check()
{
    if (m_layout.detail.isEmpty())
        fail(0, QStringLiteral("manca la sezione \"detail\""));

    const QSizeF page = m_layout.pageSizeMm();
    const double width = m_layout.contentWidth();
    const double height = page.height() - m_layout.margins.top() - m_layout.margins.bottom();
    if (width <= 0 || height <= 0)
        fail(m_pageLine, QStringLiteral("i margini non lasciano spazio sulla pagina"));

    double needed = m_layout.title.height() + m_layout.pageHeader.height() + m_layout.detail.height()
        + m_layout.pageFooter.height();
    for (const ReportBand &group : std::as_const(m_layout.groups))
        needed += group.height();
    if (needed > height)
        fail(m_pageLine,
             QStringLiteral("le sezioni (%1 mm) non stanno nell'altezza utile della pagina (%2 mm)")
                 .arg(needed, 0, 'f', 1)
                 .arg(height, 0, 'f', 1));

    const auto checkBand = [&](const ReportBand &band) {
        for (const ReportRow &row : band.rows) {
            for (const ReportCell &cell : row.cells) {
                if (cell.x + cell.width > width + 0.01)
                    fail(cell.line,
                         QStringLiteral("la cella esce dal margine destro (%1 + %2 mm, spazio utile %3 mm)")
                             .arg(cell.x)
                             .arg(cell.width)
                             .arg(width, 0, 'f', 1));
            }
        }
    };
    checkBand(m_layout.title);
    checkBand(m_layout.pageHeader);
    for (const ReportBand &group : std::as_const(m_layout.groups))
        checkBand(group);
    checkBand(m_layout.detail);
    checkBand(m_layout.pageFooter);

    for (const auto &[name, line] : std::as_const(m_parameterUses)) {
        if (!m_layout.declaresParameter(name))
            fail(line, QStringLiteral("parametro non dichiarato: %1 (manca \"parameter %1\")").arg(name));
    }
}

} // namespace

ReportLayoutError::ReportLayoutError(const QString &fileName, int line, const QString &problem)
    : std::runtime_error(describe(fileName, line, problem).toStdString())
    , m_fileName(fileName)
    , m_line(line)
    , m_problem(problem)
{ }

ReportLayout ReportLayoutReader::readFile(const QString &path)
{
    QFile file(path);
    if (!file.exists())
        throw ReportLayoutError(path, 0, QStringLiteral("il file non esiste"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw ReportLayoutError(path, 0, QStringLiteral("impossibile leggere il file (%1)").arg(file.errorString()));
    return read(QString::fromUtf8(file.readAll()), path);
}

ReportLayout ReportLayoutReader::read(const QString &text, const QString &fileName)
{
    return Parser(fileName).parse(text);
}

} // namespace fw
