#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorString.h>

namespace korodbc {

/// Where a logical table name leads to.
struct ResolvedTable {
    KorString name;                            // physical name
    eDSN dsn = KorDSNDefinitions::kUnresolved; // all bits set when no data source has the table
};

/// Follows a logical name through its aliases to a physical name and a data source.
ResolvedTable resolveTable(const KorString& logical);

} // namespace korodbc
