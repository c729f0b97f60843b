#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace bench {

/// What a generated detail database looks like. Shares go from 0 to 1.
struct DetailShape {
    std::uint64_t seed = 1;
    long rows = 1000;        // over all tables, items included; the tables with few rows come on top
    double duplicates = 0.3; // rows equal to an earlier one but for key, name and owner text; they refer to rows
                             // equal to those that the earlier one refers to. 1: all rows of a table are equal
    double nearDuplicates =
        0;                // rows copied from an earlier one and changed in one place, by little where possible
    double shared = 0.5;  // references to a row that is referred to already, while others are left
    double missing = 0;   // references to nothing: -1, or a key that no row has
    double oddReals = 0;  // reals that are infinite, NULL, -0, huge or tiny
    int keyGap = 1;       // keys, and orders of items, grow by 1 to that
    bool damaged = false; // item counts that are wrong, values behind the count, items with equal orders
};

/// What was made.
struct GeneratedDetails {
    long rows = 0;
    std::map<std::string, long> rowsOfTable;
};

/// Fills a detail database that has its tables already, all of them empty, with detail styles, detail processes
/// and what they refer to. With neither duplicates nor near-duplicates no two rows of a table are equal. The same
/// shape makes the same rows, on every machine.
///
/// SQLite has no NaN: one that is bound is stored as NULL, and NULL reads as the default of the record's field. So
/// records that were read never hold a NaN. They do hold infinities, whose difference is one.
GeneratedDetails generateDetails(const std::string& databaseFile, const DetailShape& shape);

/// The same into a new detail database.
GeneratedDetails generateDetailDatabase(const std::string& newFile, const DetailShape& shape);

} // namespace bench
