#pragma once

#include <QCommandLineOption>
#include <QDate>
#include <QList>
#include <optional>

class QCommandLineParser;
class QTextStream;

// What a print and an export without a window share: how deep the list goes (--level N, read
// as the editor's level combo reads its choice: 0 the roots only) and the day it is shown as of
// (--date dd/mm/yyyy).
namespace listoptions {

QList<QCommandLineOption> options();

// Both options for a print or an export; false after writing what is wrong.
bool read(const QCommandLineParser &parser, QTextStream &err, std::optional<int> &level, std::optional<QDate> &date);

// Without --print or --export the options mean nothing: false after saying so.
bool readAlone(const QCommandLineParser &parser, QTextStream &err);

} // namespace listoptions
