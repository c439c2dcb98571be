#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <optional>

class QCommandLineParser;
class QTextStream;

// A print without a window asked on the command line:
//   distinta --print <type code> [--level N] --pdf out.pdf [--printed-by ..] [--printed-for ..] [--notes ..]
// N reads as the editor's level combo reads its choice: 0 the roots only, 2 down to level 2.
struct PrintRequest
{
    QString typeCode;
    std::optional<int> level; // none: the editor's own choice after loading (the whole tree)
    QString pdfPath;
    QString printedBy; // empty: the user of the run
    QString printedFor;
    QString notes;

    bool requested() const { return !typeCode.isEmpty(); }

    static QList<QCommandLineOption> options();
    // Takes the options from a parser that has parsed them; false after writing what is wrong.
    bool read(const QCommandLineParser &parser, QTextStream &err);
    // --level, shared with the export: none when absent; false after writing what is wrong.
    static bool readLevel(const QCommandLineParser &parser, QTextStream &err, std::optional<int> &level);
};
