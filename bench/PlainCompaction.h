#pragma once

namespace bench {

class Database;

struct PlainCompaction {
    long redirected = 0; // rows and items
    long deleted = 0;    // rows without their items
};

/// What the library's compaction competes with: a loop over the C API that reads each table once, those that are
/// referred to first, finds equal rows in a hash map of their contents, redirects the references of the rows that
/// stay, and deletes the others, all in one transaction. Reals and texts are compared exactly.
PlainCompaction compactDetails(Database& database);

} // namespace bench
