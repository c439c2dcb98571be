#pragma once

#include "connection.h"

namespace db {

// Lets the queries run on a connection while it lives share one read transaction (see
// Backend::holdReadSnapshot): for a burst of small reads, such as the pages that follow the
// focused node.
class ReadSnapshot
{
public:
    explicit ReadSnapshot(const ConnectionPtr &connection);
    ~ReadSnapshot();
    ReadSnapshot(const ReadSnapshot &) = delete;
    ReadSnapshot &operator=(const ReadSnapshot &) = delete;

private:
    ConnectionPtr m_connection;
};

} // namespace db
