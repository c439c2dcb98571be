#include "tests/support/testdatabase.h"

#include "db/demodatabase.h"
#include "platform/db/recordset.h"

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
