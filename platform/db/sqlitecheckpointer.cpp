#include "sqlitecheckpointer.h"

#include <sqlite3.h>

namespace db {

SqliteCheckpointer::SqliteCheckpointer(sqlite3 *connection)
    : m_connection(connection)
    , m_fileName(sqlite3_db_filename(connection, "main"))
{
    sqlite3_wal_hook(m_connection, &SqliteCheckpointer::afterCommit, this);
}

SqliteCheckpointer::~SqliteCheckpointer()
{
    sqlite3_wal_hook(m_connection, nullptr, nullptr);
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

int SqliteCheckpointer::afterCommit(void *self, sqlite3 *, const char *, int pagesInLog)
{
    if (pagesInLog >= PagesBeforeCheckpoint)
        static_cast<SqliteCheckpointer *>(self)->request();
    return SQLITE_OK;
}

void SqliteCheckpointer::request()
{
    {
        const std::lock_guard lock(m_mutex);
        m_requested = true;
    }
    // Most connections never write that much: the thread starts on the first need.
    if (!m_thread.joinable())
        m_thread = std::thread(&SqliteCheckpointer::run, this);
    m_wake.notify_one();
}

void SqliteCheckpointer::run()
{
    sqlite3 *own = nullptr;
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_requested || m_stopping; });
        if (m_stopping)
            break;
        m_requested = false;
        lock.unlock();
        checkpoint(own);
        lock.lock();
    }
    lock.unlock();
    // Closed before the editor's connection, so that the last one to close still cleans the log up.
    sqlite3_close_v2(own);
}

void SqliteCheckpointer::checkpoint(sqlite3 *&own)
{
    if (!own) {
        const int opened = sqlite3_open_v2(m_fileName.constData(), &own, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                           nullptr);
        if (opened != SQLITE_OK) {
            sqlite3_close_v2(own);
            own = nullptr;
            return; // the next commit asks again; the log only grows meanwhile
        }
    }
    // A checkpoint that cannot finish now leaves the pages in the log for the next one.
    sqlite3_wal_checkpoint_v2(own, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

} // namespace db
