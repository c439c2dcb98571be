#include "readsnapshot.h"

#include "backend.h"

namespace db {

ReadSnapshot::ReadSnapshot(const ConnectionPtr &connection)
    : m_connection(connection)
{
    if (m_connection)
        m_connection->backend().holdReadSnapshot();
}

ReadSnapshot::~ReadSnapshot()
{
    if (m_connection)
        m_connection->backend().releaseReadSnapshot();
}

} // namespace db
