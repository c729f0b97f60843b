#include "Output.h"

#include <korodbc/host/ProgressSink.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <unistd.h>

namespace {

struct Range {
    char32_t first, last;
};
constexpr Range wideCharacters[] = {
    {0x1100, 0x115F}, {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x25FD, 0x25FE},
    {0x2614, 0x2615}, {0x2648, 0x2653},   {0x26A1, 0x26A1},   {0x26BD, 0x26BE},   {0x2705, 0x2705},
    {0x2728, 0x2728}, {0x274C, 0x274C},   {0x2753, 0x2755},   {0x2795, 0x2797},   {0x2B50, 0x2B50},
    {0x2E80, 0x303E}, {0x3041, 0x33FF},   {0x3400, 0x4DBF},   {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},
    {0xA960, 0xA97F}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},
    {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};
constexpr Range combiningMarks[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F}, {0x1AB0, 0x1AFF},   {0x1DC0, 0x1DFF},
    {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0x1F3FB, 0x1F3FF},
};

template <std::size_t N>
bool isIn(const Range (&ranges)[N], char32_t character)
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [=](const Range& range) { return character >= range.first && character <= range.last; });
}

int widthOf(char32_t character)
{
    return isIn(combiningMarks, character) ? 0 : isIn(wideCharacters, character) ? 2 : 1;
}

double secondsNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Cells of a number column can hold any text.
bool isJsonNumber(const std::string& text)
{
    const auto number = numberIn<double>(text);
    return number && std::isfinite(*number);
}

class TransferProgress : public korodbc::host::ProgressSink {
public:
    void title(const KorString& title) override { m_title = title.trimmed().toUtf8(); }
    void percentage(int percentage, int) override { m_bar.show(m_title, percentage); }
    void reset() override { m_bar.clear(); }

private:
    ProgressBar m_bar;
    std::string m_title;
};

} // namespace

std::vector<std::string> texts(const KorArray<KorString>& names)
{
    std::vector<std::string> list;
    for (const KorString& name : names)
        list.push_back(name.toUtf8());
    return list;
}

int displayWidth(std::string_view utf8)
{
    const KorString text = KorString::fromUtf8(utf8);
    int width = 0;
    for (const wchar_t character : text.view())
        width += widthOf(static_cast<char32_t>(character));
    return width;
}

std::string fitted(std::string_view utf8, int width)
{
    const KorString text = KorString::fromUtf8(utf8);
    KorString cut;
    int used = 0;
    for (const wchar_t character : text.view()) {
        const int next = widthOf(static_cast<char32_t>(character));
        if (used + next > width)
            break;
        cut += character;
        used += next;
    }
    return cut.toUtf8() + std::string(static_cast<std::size_t>(width - used), ' ');
}

std::string singleLine(std::string_view utf8)
{
    std::string line;
    for (const char character : utf8) {
        if (character == '\n')
            line += "\\n";
        else if (character == '\t')
            line += "\\t";
        else if (static_cast<unsigned char>(character) < 0x20 || character == 0x7f)
            line += '?';
        else
            line += character;
    }
    return line;
}

namespace {

/// As it is: a text may hold a zero.
void printLine(std::string line)
{
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
}

} // namespace

void note(std::string_view text) { std::fprintf(stderr, "korodbc: note: %s\n", singleLine(text).c_str()); }

void printText(const Sheet& sheet)
{
    std::vector<int> widths;
    for (const Sheet::Column& column : sheet.columns)
        widths.push_back(displayWidth(column.name));
    std::vector<std::vector<std::string>> rows = sheet.rows;
    for (std::vector<std::string>& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            row[i] = singleLine(row[i]);
            widths[i] = std::max(widths[i], displayWidth(row[i]));
        }
    }
    const auto print = [&](const auto& textOf) {
        std::string line;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const std::string text = textOf(i);
            const std::string gap(static_cast<std::size_t>(widths[i] - displayWidth(text)), ' ');
            line += (i == 0 ? "" : "  ") + (sheet.columns[i].number ? gap + text : text + gap);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        printLine(line);
    };
    print([&](std::size_t i) { return sheet.columns[i].name; });
    print([&](std::size_t i) { return std::string(static_cast<std::size_t>(widths[i]), '-'); });
    for (const std::vector<std::string>& row : rows)
        print([&](std::size_t i) { return row[i]; });
}

void printCsv(const Sheet& sheet)
{
    const auto print = [](std::size_t count, const auto& textOf) {
        std::string line;
        for (std::size_t i = 0; i < count; ++i) {
            std::string text = textOf(i);
            if (text.find_first_of(",\"\r\n") != std::string::npos) {
                for (std::size_t at = 0; (at = text.find('"', at)) != std::string::npos; at += 2)
                    text.insert(at, 1, '"');
                text = '"' + text + '"';
            }
            line += (i == 0 ? "" : ",") + text;
        }
        printLine(line);
    };
    print(sheet.columns.size(), [&](std::size_t i) { return sheet.columns[i].name; });
    for (const std::vector<std::string>& row : sheet.rows)
        print(row.size(), [&](std::size_t i) { return row[i]; });
}

void printSheet(const Sheet& sheet, Format format)
{
    if (format == Format::Text) {
        printText(sheet);
    } else if (format == Format::Csv) {
        printCsv(sheet);
    } else {
        std::puts("[");
        for (std::size_t i = 0; i < sheet.rows.size(); ++i)
            std::printf("  %s}%s\n", jsonRow(sheet, sheet.rows[i]).c_str(), i + 1 < sheet.rows.size() ? "," : "");
        std::puts("]");
    }
}

std::string jsonText(std::string_view utf8)
{
    std::string json = "\"";
    for (const char character : utf8) {
        char escaped[8];
        if (character == '"' || character == '\\') {
            json += '\\';
            json += character;
        } else if (static_cast<unsigned char>(character) < 0x20) {
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(character));
            json += escaped;
        } else {
            json += character;
        }
    }
    return json + '"';
}

std::string jsonRow(const Sheet& sheet, const std::vector<std::string>& row)
{
    std::string json = "{";
    for (std::size_t i = 0; i < row.size(); ++i) {
        json += (i == 0 ? "" : ", ") + jsonText(sheet.columns[i].name) + ": ";
        json += sheet.columns[i].number && row[i].empty()         ? "null"
                : sheet.columns[i].number && isJsonNumber(row[i]) ? row[i]
                                                                  : jsonText(row[i]);
    }
    return json;
}

ProgressBar::ProgressBar() : m_terminal(isatty(STDERR_FILENO) != 0), m_next(secondsNow() + (m_terminal ? 0.1 : 1))
{
}

void ProgressBar::show(const std::string& label, int percentage)
{
    constexpr int width = 30, mostLines = 5;
    if (secondsNow() < m_next)
        return;
    percentage = std::clamp(percentage, 0, 100);
    if (m_terminal) {
        std::string bar;
        for (int i = 0; i < width; ++i)
            bar += i < percentage * width / 100 ? "█" : "░";
        std::fprintf(stderr, "\r\033[K%s %3d %%  %s", bar.c_str(), percentage, fitted(label, 36).c_str());
        m_shown = true;
        m_next = secondsNow() + 0.05;
    } else if (m_lines < mostLines) {
        std::fprintf(stderr, "%s: %d %%\n", label.c_str(), percentage);
        m_next = secondsNow() + (1 << ++m_lines);
    }
}

void ProgressBar::clear()
{
    if (m_shown)
        std::fputs("\r\033[K", stderr);
    m_shown = false;
}

std::shared_ptr<korodbc::host::ProgressSink> transferProgress() { return std::make_shared<TransferProgress>(); }
