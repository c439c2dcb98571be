#include "corpusfile.h"

#include <QStringList>

namespace corpus {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString header =
    uR"header(-- Statement corpus: statements of the module exactly as it sends them (T-SQL, as SQL Server
-- receives them), with concrete values in place of company, subject kind, type and division.
-- tests/corpus/tst_corpus.cpp runs every entry, in file order, on ONE connection to a fresh demo
-- database (company 1: types 1 CLI-GDO without division, 2 CLI-ALI of division 1 "ALI",
-- 3 CLI-HOR of division 2 "BEV", 4 CLI-EXP with no nodes, 5 FOR-MP suppliers with NULL-parent
-- roots, 6 FOR-SRV of division 1; company 2: type 7), through the T-SQL compatibility layer.
-- Temporary tables and rows written by an entry stay for the entries after it. The last entries are
-- those of the default workflow-state service (framework/), which the module's state control uses.
--
-- Written from tests/corpus/corpusentries.cpp, where each entry calls the statement's own builder:
-- do not edit it. After changing a builder or an entry, write it again with
--     build/bin/tst_corpus --write tests/corpus/statements.sql
-- (tst_corpus fails while the file differs from what the entries write).
--
-- Format:
--   * entries are separated by a line holding only GO;
--   * each entry begins with a comment line naming it: "-- <procedure>: <what>";
--   * optional comment lines then say what the entry must give:
--       -- expect: rows          a result with at least one row
--       -- expect: rows = N      a result with exactly N rows
--       -- expect: empty         a result with no row
--       -- expect: execute       no result: run with Connection::execute (the default for
--                                statements not beginning with SELECT, and for SELECT ... INTO)
--       -- filled: COL, COL      every row has a non-empty value in each column named
--     a SELECT with no expect line only has to run;
--   * then the statement, verbatim: everything up to the GO line, without the line break that
--     ends its last line (trailing blanks are part of the statement and are kept); a statement
--     whose lines are joined by CR LF is written with plain line breaks.

)header"_s;

QString expectLine(const Expectation &expect)
{
    switch (expect.kind) {
    case Expectation::Anything: return {};
    case Expectation::SomeRows: return u"-- expect: rows\n"_s;
    case Expectation::RowCount: return u"-- expect: rows = %1\n"_s.arg(expect.rows);
    case Expectation::NoRows: return u"-- expect: empty\n"_s;
    case Expectation::Executes: return u"-- expect: execute\n"_s;
    }
    return {};
}

QString writtenStatement(const QString &statement)
{
    return QString(statement).replace(u"\r\n"_s, u"\n"_s);
}

} // namespace

QString fileText(const QList<Entry> &entries)
{
    QString text = header;
    for (const Entry &entry : entries) {
        text += u"-- "_s + entry.name + u'\n' + expectLine(entry.expect);
        if (!entry.filled.isEmpty())
            text += u"-- filled: "_s + entry.filled.join(u", "_s) + u'\n';
        text += writtenStatement(entry.statement) + u"\nGO\n"_s;
    }
    return text;
}

QString unwritable(const Entry &entry)
{
    if (entry.name.contains(u'\n') || entry.name.trimmed().isEmpty())
        return u"the name must be one line of text"_s;
    const QString statement = writtenStatement(entry.statement);
    if (statement.contains(u'\r'))
        return u"a carriage return outside a CR LF line break"_s;
    const QStringList lines = statement.split(u'\n');
    if (lines.first().trimmed().isEmpty() || lines.first().startsWith(u"--"_s))
        return u"the first line would not be read as the statement's"_s;
    for (const QString &line : lines) {
        if (line.trimmed() == u"GO"_s)
            return u"a line holding only GO would end the entry"_s;
    }
    return {};
}

} // namespace corpus
