#include "tests/support/testdatabase.h"

#include "db/demodatabase.h"
#include "platform/db/recordset.h"

#include <QScopeGuard>

TestDatabase::TestDatabase(Content content)
    : m_path(m_folder.filePath(QStringLiteral("test.sqlite")))
{
    m_connection = db::Connection::open(dbsetup::sqliteConnectionString(m_path));
    dbsetup::createSchema(*m_connection);
    if (content == DemoData)
        dbsetup::insertDemoData(*m_connection);
}

QString TestDatabase::connectionString() const
{
    return dbsetup::sqliteConnectionString(m_path);
}

QVariant TestDatabase::scalar(const QString &sql) const
{
    const db::RecordsetPtr rs = m_connection->openRecordset(sql);
    return rs->isEmpty() ? QVariant() : rs->value(0);
}

void TestDatabase::executeUnchecked(const QString &sql) const
{
    const db::RecordsetPtr checks = m_connection->openRecordset(
        QStringLiteral("SELECT name, sql FROM sqlite_master WHERE type = 'trigger' AND name IN "
                       "('TR_GD02_DISTINTA_INSERT', 'TR_GD02_DISTINTA_UPDATE')"));
    QStringList restore;
    for (checks->moveFirst(); !checks->eof(); checks->moveNext()) {
        m_connection->execute(QStringLiteral("DROP TRIGGER ") + checks->value(0).toString());
        restore << checks->value(1).toString();
    }
    const auto restoreChecks = qScopeGuard([&] {
        for (const QString &trigger : std::as_const(restore))
            m_connection->execute(trigger);
    });
    m_connection->execute(sql);
}
