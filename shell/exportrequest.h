#pragma once

#include "framework/export/exportfile.h"

#include <QCommandLineOption>
#include <QDate>
#include <QList>
#include <QString>
#include <optional>

class QCommandLineParser;
class QTextStream;

// An export without a window asked on the command line:
//   distinta --export <type code> [--level N] [--date dd/mm/yyyy] --xlsx out.xlsx | --csv out.csv
// --level and --date read as for --print (shell/listoptions.h).
struct ExportRequest
{
    QString typeCode;
    std::optional<int> level;
    std::optional<QDate> date;
    QString path;
    fw::ExportFile::Format format = fw::ExportFile::Format::Xlsx;

    bool requested() const { return !typeCode.isEmpty(); }

    static QList<QCommandLineOption> options();
    // Takes the options from a parser that has parsed them; false after writing what is wrong.
    bool read(const QCommandLineParser &parser, QTextStream &err);
};
