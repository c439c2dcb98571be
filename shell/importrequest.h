#pragma once

#include "framework/export/exportfile.h"

#include <QCommandLineOption>
#include <QList>
#include <QString>

class QCommandLineParser;
class QTextStream;

// An import without a window asked on the command line:
//   distinta --import FILE --type <type code> [--dry-run] --report report.csv | report.xlsx
struct ImportRequest
{
    QString file;
    QString typeCode;
    bool dryRun = false;
    QString reportPath;
    fw::ExportFile::Format reportFormat = fw::ExportFile::Format::Csv;

    bool requested() const { return !file.isEmpty(); }

    static QList<QCommandLineOption> options();
    // Takes the options from a parser that has parsed them; false after writing what is wrong.
    bool read(const QCommandLineParser &parser, QTextStream &err);
};
