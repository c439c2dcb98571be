#pragma once

#include "framework/export/exportfile.h"

#include <QCommandLineOption>
#include <QDate>
#include <QList>
#include <QString>
#include <optional>

class QCommandLineParser;
class QTextStream;

// A classification's history, its differences between two days, or the check of the company's
// classifications, asked on the command line:
//   distinta --history <type code> [--from dd/mm/yyyy] [--to dd/mm/yyyy] [--user U] --csv f.csv | --xlsx f.xlsx
//   distinta --compare <type code> --from A --to B --csv f.csv | --xlsx f.xlsx
//   distinta --check [--type <type code>] --csv f.csv | --xlsx f.xlsx
// With --history, --user (the session's user) also keeps only that user's changes.
struct HistoryRequest
{
    enum class Kind { None, History, Compare, Check };
    Kind kind = Kind::None;
    QString typeCode; // --check: empty for every type
    std::optional<QDate> from;
    std::optional<QDate> to;
    QString user; // --history: only this user's changes; empty: anyone's
    QString path;
    fw::ExportFile::Format format = fw::ExportFile::Format::Xlsx;

    bool requested() const { return kind != Kind::None; }

    static QList<QCommandLineOption> options();
    // Takes the options from a parser that has parsed them; false after writing what is wrong.
    bool read(const QCommandLineParser &parser, QTextStream &err);

private:
    // withHistory: --history or --compare asked too.
    bool readCheck(const QCommandLineParser &parser, QTextStream &err, bool withHistory);
    // The file of --xlsx or --csv, for the command of option.
    bool readFile(const QCommandLineParser &parser, QTextStream &err, const QString &option);
};
