#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The statement corpus: every statement the module sends, made by its real builder with concrete
// values, in the order tst_corpus runs them on one demo database. tests/corpus/statements.sql is
// written from these entries (corpusfile.h) and must not be edited by hand.
namespace corpus {

// What running an entry must give. Anything: a statement that only has to run (a SELECT whose
// rows are not checked, or a statement without result); the format's default applies.
struct Expectation
{
    enum Kind { Anything, SomeRows, RowCount, NoRows, Executes };
    Kind kind = Anything;
    int rows = 0; // for RowCount
};

struct Entry
{
    QString name; // "<procedure>: <what>"
    Expectation expect;
    QStringList filled; // columns that must hold a non-empty value in every row
    QString statement;
};

QList<Entry> entries();
// Their last part: the journal's, the history's, the check's, the import's and "Dove è usato"'s
// entries (corpusjournalentries.cpp), run after the editor's.
QList<Entry> journalEntries();

} // namespace corpus
