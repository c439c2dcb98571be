#pragma once

#include "platform/db/connection.h"

#include <QString>
#include <QTemporaryDir>

// A fresh SQLite database in a temporary folder, removed with the object: the real schema,
// with or without the demo companies, and a connection opened on it.
class TestDatabase
{
public:
    enum Content { SchemaOnly, DemoData };

    explicit TestDatabase(Content content = SchemaOnly);
    TestDatabase(const TestDatabase &) = delete;
    TestDatabase &operator=(const TestDatabase &) = delete;

    QString path() const { return m_path; }
    QString connectionString() const;
    db::ConnectionPtr connection() const { return m_connection; }

    // A value read with a query, for checks after a form has written ("SELECT COUNT(*) ...").
    QVariant scalar(const QString &sql) const;

    // Runs a statement with the checks that keep the trees valid suspended, to write rows as they
    // may be found in a database of the suite made before those checks existed (a parent that
    // is gone, a node of another company's type), which the editor must still show.
    void executeUnchecked(const QString &sql) const;

private:
    QTemporaryDir m_folder;
    QString m_path;
    db::ConnectionPtr m_connection;
};
