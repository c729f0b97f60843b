#pragma once

#include <korodbc/records/RecordDescription.h>

namespace korodbc {

/// True when two records of a type are equal in every column but their keys, and item by item; of items in a table
/// of their own, the columns that tie them to their owner are left out too. Reals are compared exactly.
bool equalRecords(const RecordDescription& type, const void* a, const void* b);

} // namespace korodbc
