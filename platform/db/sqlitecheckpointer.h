#pragma once

#include <QByteArray>

#include <condition_variable>
#include <mutex>
#include <thread>

struct sqlite3;

namespace db {

// Copies a WAL file's pages back into the database on a thread of its own, so that the
// connection that commits never waits for it: a large commit would otherwise pay, at its end,
// for writing the whole log back. It runs on its own connection to the same file and in
// passive mode, so it never waits for a reader or a writer and never makes one wait.
class SqliteCheckpointer
{
public:
    // Takes over the connection's automatic checkpoint; the connection must outlive this.
    explicit SqliteCheckpointer(sqlite3 *connection);
    ~SqliteCheckpointer();

    SqliteCheckpointer(const SqliteCheckpointer &) = delete;
    SqliteCheckpointer &operator=(const SqliteCheckpointer &) = delete;

private:
    // The size SQLite's own automatic checkpoint waits for.
    static constexpr int PagesBeforeCheckpoint = 1000;

    static int afterCommit(void *self, sqlite3 *connection, const char *database, int pagesInLog);
    void request();
    void run();
    void checkpoint(sqlite3 *&own);

    sqlite3 *m_connection;
    QByteArray m_fileName;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_requested = false;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace db
