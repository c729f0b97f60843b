#pragma once

#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <charconv>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {
class ProgressSink;
}

enum class Format { Text, Csv, Json };

/// Rows and columns to print. All texts are UTF-8.
struct Sheet {
    struct Column {
        std::string name;
        bool number = false; // aligned to the right; bare in JSON
    };
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
};

/// The number that a text is, as a whole.
template <class Number>
std::optional<Number> numberIn(std::string_view text)
{
    Number number{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    return end.ec == std::errc() && end.ptr == text.data() + text.size() ? std::optional(number) : std::nullopt;
}
std::vector<std::string> texts(const KorArray<KorString>& names);
/// Terminal cells that a text takes: two for wide East Asian characters and emoji, none for combining marks.
int displayWidth(std::string_view utf8);
/// Cuts and fills a text to that many terminal cells.
std::string fitted(std::string_view utf8, int width);
/// Control characters made visible, so that a text stays on its line.
std::string singleLine(std::string_view utf8);

/// Says something beside the result, in one line on stderr.
void note(std::string_view text);
void printText(const Sheet& sheet);
void printCsv(const Sheet& sheet);
void printSheet(const Sheet& sheet, Format format);
std::string jsonText(std::string_view utf8);
/// An object of the row's columns, without the closing brace.
std::string jsonRow(const Sheet& sheet, const std::vector<std::string>& row);

/// A bar on a terminal; otherwise a few plain lines, once the work has taken a while. Both go to stderr.
class ProgressBar {
public:
    ProgressBar();
    ~ProgressBar() { clear(); }
    void show(const std::string& label, int percentage);
    void clear();

private:
    bool m_terminal;
    bool m_shown = false;
    int m_lines = 0;
    double m_next; // seconds
};
std::shared_ptr<korodbc::host::ProgressSink> transferProgress();
