// Any text as a CSV file: refused with one line, or read, and then the same after it was written.

#include "repository/Csv.h"

#include "Fuzz.h"

using korodbc::host::CsvTable;

namespace {

std::string line(const std::vector<std::string>& cells)
{
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i)
        text += (i == 0 ? "" : ",") + korodbc::host::csvCell(cells[i]);
    return (text.empty() ? "\"\"" : text) + "\n"; // an empty line is none
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CsvTable table, again;
    std::string error;
    if (!korodbc::host::readCsv(textOf(data, size), table, error)) {
        require(!error.empty() && error.find('\n') == std::string::npos, "the error is no line: " + error);
        return 0;
    }
    std::string text = "\xEF\xBB\xBF" + line(table.header);
    for (const CsvTable::Row& row : table.rows) {
        require(row.cells.size() == table.header.size(), "a row of another length");
        text += line(row.cells);
    }
    require(korodbc::host::readCsv(text, again, error), "what was written is refused: " + error);
    require(again.header == table.header && again.rows.size() == table.rows.size(), "other rows after writing");
    for (std::size_t i = 0; i < table.rows.size(); ++i)
        require(again.rows[i].cells == table.rows[i].cells, "another row after writing");
    return 0;
}
