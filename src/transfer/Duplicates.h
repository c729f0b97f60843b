#pragma once

#include "records/RecordDescription.h"

#include <vector>

namespace korodbc {

/// Which columns of a record type make two records duplicates: all values, but neither keys nor names. Columns
/// that are described as tolerant are equal within 1e-10, all others exactly; a value that is no number equals
/// nothing.
class DuplicateRule {
public:
    /// `ignored`: a column that is not compared. `loose`: a text of the items that counts only where it is longer
    /// than 2 characters in both records. `owner`: the key of the owner counts, too.
    explicit DuplicateRule(const RecordDescription& type, std::string_view ignored = {},
                           std::string_view loose = {}, bool owner = false);

    bool equal(const void* a, const void* b) const;

    /// For each record of a list in key order the index of the record that stands for it: the first one that
    /// equals it and for which no other stands. What comparing each record with all behind it would give, in time
    /// that grows with the number of records.
    std::vector<long> survivors(const ListOperations& list, const void* records) const;

private:
    friend class SurvivorIndex;
    using Columns = std::vector<const ColumnDescription*>;

    const ColumnDescription& m_key;
    Columns m_exact, m_tolerant, m_itemColumns;
    const ColumnDescription* m_loose = nullptr;
    const MemberList* m_items = nullptr;
};

} // namespace korodbc
