#include "connectionstring.h"

namespace db::connectionstring {

namespace {

bool hasKey(const Entry &entry, const QStringList &keys)
{
    for (const QString &key : keys) {
        if (entry.key.compare(key, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool needsBraces(const QString &value)
{
    return value.contains(QLatin1Char(';')) || value.contains(QLatin1Char('{')) || value.contains(QLatin1Char('}'))
        || value.contains(QLatin1Char('=')) || value != value.trimmed();
}

} // namespace

QList<Entry> parse(const QString &connectionString)
{
    QList<Entry> entries;
    const qsizetype size = connectionString.size();
    qsizetype at = 0;
    while (at < size) {
        const qsizetype start = at;
        Entry entry;
        const qsizetype equals = connectionString.indexOf(QLatin1Char('='), at);
        const qsizetype semicolon = connectionString.indexOf(QLatin1Char(';'), at);
        if (equals < 0 || (semicolon >= 0 && semicolon < equals)) {
            // A piece without '=' (or an empty one between two ';') carries no value.
            at = semicolon < 0 ? size : semicolon + 1;
            continue;
        }
        entry.key = connectionString.mid(at, equals - at).trimmed();
        at = equals + 1;
        while (at < size && connectionString.at(at).isSpace())
            ++at;
        if (at < size && connectionString.at(at) == QLatin1Char('{')) {
            ++at;
            while (at < size) {
                const QChar c = connectionString.at(at);
                if (c == QLatin1Char('}')) {
                    if (at + 1 < size && connectionString.at(at + 1) == QLatin1Char('}')) {
                        entry.value += c;
                        at += 2;
                        continue;
                    }
                    ++at;
                    break;
                }
                entry.value += c;
                ++at;
            }
            // Whatever follows the closing brace up to the ';' belongs to no value.
            const qsizetype end = connectionString.indexOf(QLatin1Char(';'), at);
            at = end < 0 ? size : end;
        } else {
            const qsizetype end = connectionString.indexOf(QLatin1Char(';'), at);
            const qsizetype stop = end < 0 ? size : end;
            entry.value = connectionString.mid(at, stop - at).trimmed();
            at = stop;
        }
        entry.text = connectionString.mid(start, at - start);
        if (at < size)
            ++at; // the ';'
        if (!entry.key.isEmpty())
            entries.append(entry);
    }
    return entries;
}

QString value(const QString &connectionString, const QStringList &keys)
{
    for (const Entry &entry : parse(connectionString)) {
        if (hasKey(entry, keys))
            return entry.value;
    }
    return {};
}

bool contains(const QString &connectionString, const QStringList &keys)
{
    for (const Entry &entry : parse(connectionString)) {
        if (hasKey(entry, keys))
            return true;
    }
    return false;
}

QString entry(const QString &key, const QString &value)
{
    if (!needsBraces(value))
        return key + QLatin1Char('=') + value;
    return key + QStringLiteral("={") + QString(value).replace(QLatin1Char('}'), QStringLiteral("}}"))
        + QLatin1Char('}');
}

QString without(const QString &connectionString, const QStringList &keys)
{
    QStringList kept;
    for (const Entry &entry : parse(connectionString)) {
        if (!hasKey(entry, keys))
            kept << entry.text;
    }
    return kept.isEmpty() ? QString() : kept.join(QLatin1Char(';')) + QLatin1Char(';');
}

QString with(const QString &connectionString, const QString &key, const QString &value)
{
    QString result = connectionString;
    if (!result.trimmed().isEmpty() && !result.trimmed().endsWith(QLatin1Char(';')))
        result += QLatin1Char(';');
    return result + entry(key, value) + QLatin1Char(';');
}

} // namespace db::connectionstring
