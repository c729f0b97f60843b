#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

/// A comma-separated text: quoted fields may hold separators, line ends and doubled quotes.
struct CsvTable {
    struct Row {
        int line; // of the file, counted from 1
        std::vector<std::string> cells;
    };
    std::vector<std::string> header;
    std::vector<Row> rows;
};

/// Reads UTF-8 text with one header line. On failure returns false; `error` names the line and what is wrong with
/// it.
bool readCsv(std::string_view text, CsvTable& table, std::string& error, char separator = ',');
/// The cell as it stands in a file: quoted where it has to be.
std::string csvCell(std::string_view text);

} // namespace korodbc::host
