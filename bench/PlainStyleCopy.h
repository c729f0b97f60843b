#pragma once

#include <string>

namespace bench {

class Database;

/// What the library's export and import compete with: a loop over the C API that copies a style with all it
/// refers to, row by row along the references, in one transaction. Rows get new keys and names that are free
/// in the target; groups, base categories and line types of a known name are reused, with `reuseEqualSets`
/// also qualifier sets that are the same in every field. Returns the number of rows read for it.
long copyStyle(Database& source, Database& target, int masterKey, bool reuseEqualSets);

/// The same for a detail process with the styles that it names and their masters.
long copyProcess(Database& source, Database& target, int processKey, bool reuseEqualSets);

} // namespace bench
