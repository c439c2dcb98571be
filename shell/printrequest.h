#pragma once

#include <QCommandLineOption>
#include <QDate>
#include <QList>
#include <QString>
#include <optional>

class QCommandLineParser;
class QTextStream;

// A print without a window asked on the command line:
//   distinta --print <type code> [--level N] [--date dd/mm/yyyy] --pdf out.pdf [--printed-by ..]
//            [--printed-for ..] [--notes ..]
// --level and --date read as for --export (shell/listoptions.h).
struct PrintRequest
{
    QString typeCode;
    std::optional<int> level; // none: the editor's own choice after loading (the whole tree)
    std::optional<QDate> date;
    QString pdfPath;
    QString printedBy; // empty: the user of the run
    QString printedFor;
    QString notes;

    bool requested() const { return !typeCode.isEmpty(); }

    static QList<QCommandLineOption> options();
    // Takes the options from a parser that has parsed them; false after writing what is wrong.
    bool read(const QCommandLineParser &parser, QTextStream &err);
};
