#pragma once

#include <korodbc/records/RecordDescription.h>

#include <vector>

namespace korodbc {

struct ComparedColumns;

/// Which columns of a record type make two records duplicates: all values, but neither keys nor names. Columns
/// that are described as tolerant are equal within 1e-10, all others exactly; a value that is no number equals
/// nothing.
class DuplicateRule {
public:
    explicit DuplicateRule(const RecordDescription& type);
    DuplicateRule(const RecordDescription& type, const ComparedColumns& columns);

    bool equal(const void* a, const void* b) const;

    /// For each record of a list in key order the index of the record that stands for it: the first one that
    /// equals it and for which no other stands. What comparing each record with all behind it would give, in time
    /// that grows with the number of records.
    std::vector<long> survivors(ListOperations list, const void* records) const;

private:
    friend class SurvivorIndex;
    using Compared = std::vector<const ColumnDescription*>;

    const ColumnDescription& m_key;
    Compared m_exact, m_tolerant, m_itemColumns;
    const ColumnDescription* m_loose = nullptr;
    const MemberList* m_items = nullptr;
};

} // namespace korodbc
