#pragma once

#include "demorandom.h"
#include "sqlitefile.h"

#include <QDate>
#include <QString>

#include <vector>

namespace dbsetup {

struct BankBranch
{
    QString abi;
    QString cab;
};

// State shared by the writers of demo and benchmark data: the open file, the fixed-seed random
// source, the next free general master-data code and the bank branches written so far.
struct DemoContext
{
    DemoContext(SqliteFile &database, std::uint64_t seed)
        : file(database)
        , random(seed)
    { }

    SqliteFile &file;
    DemoRandom random;
    int nextAnagrafica = 1;           // next CG16_CODICE
    std::vector<BankBranch> branches; // CG13 rows, filled by writeSharedReference

    // A guid in the form the database gives (upper case, 8-4-4-4-12), drawn from the seed.
    QString guid()
    {
        const std::uint64_t a = random.next();
        const std::uint64_t b = random.next();
        const QString hex =
            QStringLiteral("%1%2").arg(a, 16, 16, QLatin1Char('0')).arg(b, 16, 16, QLatin1Char('0')).toUpper();
        return hex.mid(0, 8) + QLatin1Char('-') + hex.mid(8, 4) + QStringLiteral("-4") + hex.mid(13, 3)
            + QLatin1Char('-') + QLatin1Char("89AB"[a % 4]) + hex.mid(17, 3) + QLatin1Char('-') + hex.mid(20, 12);
    }
};

// A date as the embedded database stores it: 'YYYY-MM-DD 00:00:00'.
inline QString sqlDate(const QDate &date)
{
    return date.toString(QStringLiteral("yyyy-MM-dd")) + QStringLiteral(" 00:00:00");
}

inline QString sqlDate(int year, int month, int day)
{
    return sqlDate(QDate(year, month, day));
}

// The open end of a validity period.
inline QString openEndDate()
{
    return QStringLiteral("2099-12-31 00:00:00");
}

} // namespace dbsetup
