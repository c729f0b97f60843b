#pragma once

#include <korodbc/records/RecordDescription.h>
#include <korodbc/references/KorDetailReferences.h>

#include <functional>

namespace korodbc {

/// A reference while the table that holds it is walked through.
struct StoredReference {
    const RecordDescription& from; // type of the row, or of the row that the item belongs to
    const ColumnDescription& column;
    int key; // of the row
    int item;
    int target;     // key
    KorString text; // key, where it is a text
};

/// Appends the references of the current data source that `wanted` selects, fixed catalogue rows included;
/// `wanted` must not read through the service. Returns 1, or 0 when a table that exists could not be read.
int findReferences(const std::function<bool(const StoredReference&)>& wanted,
                   KorArray<KorDetailReference>& references);

} // namespace korodbc
