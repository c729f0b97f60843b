#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace bench {

/// What a generated detail style looks like.
struct StyleShape {
    std::uint64_t seed = 1;
    long rows = 1000;   // over all tables, items included; at least 200
    int firstKey = 1;   // keys of every table start here
    std::string prefix; // of every row name, to tell two styles of one database apart
};

/// What was made.
struct GeneratedStyle {
    int key = -1;       // of the style
    int masterKey = -1; // of its detail master
    long rows = 0;
    std::map<std::string, long> rowsOfTable;
};

/// Fills a detail database that has its tables already with one style. Every row that is made is reached from
/// the style, and components are shared the way real styles share them: an object qualifier set serves two or
/// three rules and point selections, hatch settings five appearances, and so on. The same shape makes the
/// same rows, on every machine.
GeneratedStyle generateStyle(const std::string& databaseFile, const StyleShape& shape);

/// The same into a new detail database.
GeneratedStyle generateStyleDatabase(const std::string& newFile, const StyleShape& shape);

} // namespace bench
