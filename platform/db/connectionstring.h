#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Connection strings as ODBC writes them: "key=value;key=value;...". A value in braces may hold
// anything, ';', '=' and outer blanks included, with "}}" standing for '}'; keys and unbraced
// values lose their outer blanks. Every reader and writer of connection strings goes through
// these functions, so that a file name with a ';' names that file and no other.
namespace db::connectionstring {

struct Entry
{
    QString key;
    QString value; // braces and doubled '}' taken away
    QString text;  // the entry as written, without its ';'
};

QList<Entry> parse(const QString &connectionString);

// The value of the first entry whose key is one of keys (case-insensitive); empty when none.
QString value(const QString &connectionString, const QStringList &keys);
bool contains(const QString &connectionString, const QStringList &keys);

// "key=value", the value in braces when it needs them (';', braces, '=' or outer blanks).
QString entry(const QString &key, const QString &value);

// The entries of the string but those of keys, joined by ';' as written.
QString without(const QString &connectionString, const QStringList &keys);

// The string with entry(key, value) added at its end.
QString with(const QString &connectionString, const QString &key, const QString &value);

} // namespace db::connectionstring
