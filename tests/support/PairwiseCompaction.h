#pragma once

#include <map>
#include <string>
#include <vector>

/// Compaction of detail tables as plainly as it can be said: every row is compared with every later one, column by
/// column. Shares nothing with the library: it works on the cells of a database file. For tests, of small
/// databases.
namespace pairwise {

/// The cells of a row by column: numbers as they print, texts behind an apostrophe, nothing for NULL.
using Row = std::map<std::string, std::string>;
using Contents = std::map<std::string, std::vector<Row>>; // by table, rows by row id

/// Every table of a database file, read past the host.
Contents readFile(const std::string& file);
/// The tables in which the actual contents differ from the expected ones; empty when they are equal.
std::string difference(const Contents& expected, const Contents& actual);

enum Type { kStyles = 1, kProcesses = 2, kAll = 3 };
struct Outcome {
    Contents contents;
    long statements = 0;    // of the redirections
    bool ambiguous = false; // one of them gives another item a reference that is not its own
};
/// What a compaction leaves: that of the tables of a type, or that of qualifier sets alone.
Outcome compact(const Contents& before, Type type, bool deletes, bool setsAlone = false);

} // namespace pairwise
