#include "repository/Csv.h"

namespace korodbc::host {

bool readCsv(std::string_view text, CsvTable& table, std::string& error, char separator)
{
    if (text.substr(0, 3) == "\xEF\xBB\xBF")
        text.remove_prefix(3);
    CsvTable read;
    int line = 1, rowLine = 1;
    std::vector<std::string> cells;
    std::string cell;
    bool any = false, wasQuoted = false;
    const auto endCell = [&] {
        cells.push_back(std::move(cell));
        cell.clear();
        wasQuoted = false;
    };
    const auto endRow = [&]() -> bool {
        const bool blank = cells.empty() && cell.empty() && !any;
        endCell();
        if (blank) {
            cells.clear();
        } else if (read.header.empty()) {
            read.header = std::move(cells);
        } else if (cells.size() != read.header.size()) {
            error = "line " + std::to_string(rowLine) + " has " + std::to_string(cells.size()) +
                    " cells, the header " + std::to_string(read.header.size());
            return false;
        } else {
            read.rows.push_back({rowLine, std::move(cells)});
        }
        cells.clear();
        any = false;
        rowLine = line;
        return true;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' && cell.empty() && !wasQuoted) {
            any = wasQuoted = true;
            const int opened = line;
            for (++i;; ++i) {
                if (i >= text.size()) {
                    error = "line " + std::to_string(opened) + ": a quoted cell is not closed";
                    return false;
                }
                if (text[i] == '"' && (i + 1 >= text.size() || text[i + 1] != '"'))
                    break;
                if (text[i] == '"')
                    ++i;
                line += text[i] == '\n';
                cell += text[i];
            }
        } else if (c == separator) {
            any = true;
            endCell();
        } else if (c == '\n') {
            ++line;
            if (!endRow())
                return false;
        } else if (c != '\r' || (i + 1 < text.size() && text[i + 1] != '\n')) {
            if (wasQuoted) {
                error = "line " + std::to_string(line) + ": text follows a quoted cell";
                return false;
            }
            any = true;
            cell += c;
        }
    }
    if ((any || !cells.empty()) && !endRow())
        return false;
    if (read.header.empty()) {
        error = "there is no header line";
        return false;
    }
    table = std::move(read);
    return true;
}

std::string csvCell(std::string_view text)
{
    if (text.find_first_of(",\"\n\r") == std::string_view::npos)
        return std::string(text);
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted += '"';
}

} // namespace korodbc::host
