#pragma once

#include <korodbc/records/RecordDescription.h>

#include <array>
#include <string>
#include <vector>

namespace korodbc::host {

class Table;

/// What a table is used for as a table of a record type. Each use asks for all that the ones before it ask for.
enum class Use {
    Look,   // its records are shown, as far as they can be told
    Read,   // every row and column counts: a transfer, a comparison
    Write,  // rows and cells are written, cells by their position
    Report, // nothing; what only a person should know belongs here
};
constexpr std::size_t uses = 4;

/// Where a record type's columns stand in a table, settled once. All columns are found by their names, numbered
/// ones by the names that their pattern gives.
struct Layout {
    std::vector<int> columns;    // column index by description column, -1: the table has no such column
    std::vector<int> writeOrder; // description columns in the order in which they are written, the key excepted
    std::vector<int> numbered;   // column index by item and column of the numbered group
    int numberedItems = 0;       // items for which the table has all columns
    bool itemsCut = false;       // it has other columns, too, that may hold what is left of further items
    bool declarationsJudged = false, rowsJudged = false;
    std::string rowMisfit; // a row that does not fit, one line

    /// What the table lacks for that use, in one line that names it; empty when it fits.
    const std::string& misfit(Use use) const { return m_misfits[static_cast<std::size_t>(use)]; }
    /// Adds what keeps `table` from that use and from all that ask for more.
    void differs(Use from, const Table& table, const std::string& what);

private:
    std::array<std::string, uses> m_misfits;
};

/// Settles where the columns stand. Asks for names alone, so that a first read costs nothing more.
Layout settledLayout(Table& table, const RecordDescription& type);
/// Judges what the columns are declared as.
void judgeDeclarations(Table& table, const RecordDescription& type, Layout& layout);

/// A name as it stands in a line of text.
std::string shown(std::string_view name);

} // namespace korodbc::host
