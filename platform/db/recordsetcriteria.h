#pragma once

#include <QString>
#include <memory>

namespace db {

struct RecordsetData;

// A Filter or Find criterion of a recordset: comparisons of a field with a literal
// (=, <>, <, >, <=, >=, LIKE with % or * wildcards, case-insensitive for text) joined by
// AND/OR, with parentheses. Internal to platform/db.
class RecordsetCriteria
{
public:
    // Throws DatabaseError (source "Recordset") for a criterion it cannot read.
    static std::unique_ptr<RecordsetCriteria> parse(const QString &text, const RecordsetData &data);
    ~RecordsetCriteria();

    bool matches(const RecordsetData &data, int storedRow) const;

    struct Node;

private:
    RecordsetCriteria();
    std::unique_ptr<Node> m_root;
};

} // namespace db
