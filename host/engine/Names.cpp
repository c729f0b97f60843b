#include "engine/Names.h"

#include <algorithm>

namespace korodbc::host {

namespace {

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

} // namespace

std::string bracketed(std::string_view name)
{
    if (name.find(']') == std::string_view::npos)
        return "[" + std::string(name) + "]";
    std::string text = "\"";
    for (const char c : name)
        text.append(c == '"' ? 2 : 1, c);
    return text += '"';
}

std::string lowerCase(std::string_view text)
{
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), lower);
    return folded;
}

bool sameName(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return x == y || lower(x) == lower(y); });
}

} // namespace korodbc::host
