#include "sqlitefunctions.h"

#include "databaseerror.h"
#include "tsqldates.h"

#include <QString>
#include <sqlite3.h>

namespace db {

namespace {

QString argumentText(sqlite3_value *value)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return QString::fromUtf8(text, sqlite3_value_bytes(value));
}

void resultText(sqlite3_context *context, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(context, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

// tsql_convert_datetime(text, style): CONVERT(DateTime, text, style) of a value known only
// when the statement runs. A text that is no date fails the statement, as on the server.
void convertDatetime(sqlite3_context *context, int, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const QString text = argumentText(argv[0]);
    const auto stored = tsqlTextToStoredDate(text, sqlite3_value_int(argv[1]));
    if (!stored || sqlite3_value_type(argv[0]) != SQLITE_TEXT) {
        const QByteArray message = QStringLiteral("Conversione in data non riuscita: '%1'").arg(text).toUtf8();
        sqlite3_result_error(context, message.constData(), int(message.size()));
        return;
    }
    resultText(context, *stored);
}

// tsql_format_datetime(value, style): CONVERT(VarChar, date, style). Values that are not
// stored dates come back as text, since the server applies a style to dates only.
void formatDatetime(sqlite3_context *context, int, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const QString text = argumentText(argv[0]);
    resultText(context, storedDateToTsqlText(text, sqlite3_value_int(argv[1])).value_or(text));
}

bool isAscii(const unsigned char *text, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        if (text[i] >= 0x80)
            return false;
    return true;
}

// upper() and lower() for every letter, not only ASCII ones: "perché" becomes "PERCHÉ".
template<bool Upper>
void changeCase(sqlite3_context *context, int, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const unsigned char *text = sqlite3_value_text(argv[0]);
    const int bytes = sqlite3_value_bytes(argv[0]);
    if (isAscii(text, bytes)) {
        QByteArray out(reinterpret_cast<const char *>(text), bytes);
        for (char &c : out) {
            if (Upper && c >= 'a' && c <= 'z')
                c = char(c - 'a' + 'A');
            else if (!Upper && c >= 'A' && c <= 'Z')
                c = char(c - 'A' + 'a');
        }
        sqlite3_result_text(context, out.constData(), bytes, SQLITE_TRANSIENT);
        return;
    }
    const QString value = argumentText(argv[0]);
    resultText(context, Upper ? value.toUpper() : value.toLower());
}

// One element of a LIKE pattern at p: its length and whether it matches c.
bool matchElement(QStringView pattern, qsizetype p, QChar c, QChar escape, qsizetype &length)
{
    const QChar pc = pattern[p];
    if (!escape.isNull() && pc == escape && p + 1 < pattern.size()) {
        length = 2;
        return pattern[p + 1] == c;
    }
    if (pc == u'_') {
        length = 1;
        return true;
    }
    if (pc == u'[') {
        qsizetype q = p + 1;
        const bool negated = q < pattern.size() && pattern[q] == u'^';
        if (negated)
            ++q;
        const qsizetype close = pattern.indexOf(u']', q + 1 <= pattern.size() ? q + 1 : q);
        if (close < 0) {
            length = 1;
            return c == u'[';
        }
        bool inSet = false;
        for (qsizetype r = q; r < close; ++r) {
            if (r + 2 < close && pattern[r + 1] == u'-') {
                inSet = inSet || (c >= pattern[r] && c <= pattern[r + 2]);
                r += 2;
            } else {
                inSet = inSet || pattern[r] == c;
            }
        }
        length = close - p + 1;
        return inSet != negated;
    }
    length = 1;
    return pc == c;
}

// The server's LIKE: % and _, [set], [^set] and [a-z], an optional escape character, and
// no difference between upper and lower case. Every element but % matches one character,
// so going back to the last % is enough.
bool likeMatches(QStringView pattern, QStringView value, QChar escape)
{
    qsizetype p = 0, i = 0, starP = -1, starI = 0;
    while (i < value.size()) {
        if (p < pattern.size() && pattern[p] == u'%' && pattern[p] != escape) {
            starP = ++p;
            starI = i;
            continue;
        }
        qsizetype length = 0;
        if (p < pattern.size() && matchElement(pattern, p, value[i], escape, length)) {
            p += length;
            ++i;
            continue;
        }
        if (starP < 0)
            return false;
        p = starP;
        i = ++starI;
    }
    while (p < pattern.size() && pattern[p] == u'%')
        ++p;
    return p == pattern.size();
}

void deletePattern(void *pattern)
{
    delete static_cast<QString *>(pattern);
}

void like(sqlite3_context *context, int argc, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL
        || (argc == 3 && sqlite3_value_type(argv[2]) == SQLITE_NULL)) {
        sqlite3_result_null(context);
        return;
    }
    QChar escape;
    if (argc == 3) {
        const QString text = argumentText(argv[2]);
        if (text.size() != 1) {
            sqlite3_result_error(context, "ESCAPE richiede un solo carattere", -1);
            return;
        }
        escape = text[0].toCaseFolded();
    }
    // The pattern is usually a constant: fold it once per statement.
    auto *pattern = static_cast<QString *>(sqlite3_get_auxdata(context, 0));
    if (!pattern) {
        pattern = new QString(argumentText(argv[0]).toCaseFolded());
        sqlite3_set_auxdata(context, 0, pattern, deletePattern);
        pattern = static_cast<QString *>(sqlite3_get_auxdata(context, 0));
        if (!pattern) {
            sqlite3_result_error_nomem(context);
            return;
        }
    }
    const QString value = argumentText(argv[1]).toCaseFolded();
    sqlite3_result_int(context, likeMatches(*pattern, value, escape) ? 1 : 0);
}

} // namespace

void registerSqliteFunctions(sqlite3 *handle)
{
    struct Function
    {
        const char *name;
        int arguments;
        void (*call)(sqlite3_context *, int, sqlite3_value **);
    };
    static const Function functions[] = {
        {"tsql_convert_datetime", 2, convertDatetime},
        {"tsql_format_datetime", 2, formatDatetime},
        {"upper", 1, changeCase<true>},
        {"lower", 1, changeCase<false>},
        {"like", 2, like},
        {"like", 3, like},
    };
    for (const Function &f : functions) {
        const int rc = sqlite3_create_function_v2(handle, f.name, f.arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                                  nullptr, f.call, nullptr, nullptr, nullptr);
        if (rc != SQLITE_OK) {
            DbError error;
            error.description = QString::fromUtf8(sqlite3_errmsg(handle));
            error.source = QStringLiteral("SQLite");
            error.nativeError = rc;
            throw DatabaseError({error});
        }
    }
}

} // namespace db
