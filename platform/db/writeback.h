#pragma once

namespace db {

class Connection;
struct RecordsetData;
struct PendingRow;

// Writes the changes of a recordset row to its base table with bound values, the way a client
// cursor does: INSERT for new rows (reading back a generated key), UPDATE by key that also checks
// the original values of the changed columns, DELETE by key. Throws DatabaseError; the caller
// records it on the connection. Internal to platform/db.
class WriteBack
{
public:
    // Returns true when the row's key was generated (and stored into the row).
    static bool insertRow(Connection &connection, RecordsetData &data, int row);
    // Throws the "changed by another user" error when the row no longer holds the original values.
    static void updateRow(Connection &connection, const RecordsetData &data, int row, const PendingRow &pending);
    static void deleteRow(Connection &connection, const RecordsetData &data, int row);
    // Reads the row's base-table columns again by its key; false when the row is gone. Computed
    // columns keep their values.
    static bool rereadRow(Connection &connection, RecordsetData &data, int row);

    static const char *conflictMessage();
};

} // namespace db
