#include "database/StatementReader.h"

#include <charconv>

namespace korodbc::host {

namespace {

constexpr int deepestBrackets = 50;
constexpr std::size_t mostValues = 256; // of a statement that is worth keeping

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool isWord(wchar_t c)
{
    return isDigit(c) || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_' || c > 127;
}

} // namespace

StatementReader::StatementReader(std::wstring_view text, std::string& pattern, std::vector<Value>& values)
    : m_text(text), m_pattern(pattern), m_values(&values)
{
    pattern.clear();
    values.clear();
}

StatementReader::StatementReader(std::wstring_view text, std::string& pattern,
                                 std::vector<StatementPattern::Kind>& kinds)
    : m_text(text), m_pattern(pattern), m_kinds(&kinds)
{
    pattern.clear();
    kinds.clear();
}

bool StatementReader::readStatement() { return (insertion() || update() || deletion()) && atEnd(); }

bool StatementReader::readCondition() { return condition() && isWhole(); }

bool StatementReader::readName() { return name() && isWhole(); }

bool StatementReader::insertion()
{
    if (!keyword("INSERT") || !keyword("INTO") || !name())
        return false;
    if (symbol("(") && !(list(&StatementReader::name) && symbol(")")))
        return false;
    return keyword("VALUES") && list(&StatementReader::row);
}

bool StatementReader::update()
{
    return keyword("UPDATE") && name() && keyword("SET") && list(&StatementReader::assignment) && where();
}

bool StatementReader::deletion() { return keyword("DELETE") && keyword("FROM") && name() && where(); }

bool StatementReader::list(bool (StatementReader::*element)())
{
    do
        if (!(this->*element)())
            return false;
    while (symbol(","));
    return true;
}

bool StatementReader::row() { return symbol("(") && list(&StatementReader::value) && symbol(")"); }

bool StatementReader::assignment() { return name() && symbol("=") && value(); }

bool StatementReader::where() { return !keyword("WHERE") || condition(); }

bool StatementReader::condition()
{
    do
        if (!comparison())
            return false;
    while (keyword("AND") || keyword("OR"));
    return true;
}

bool StatementReader::comparison()
{
    if (symbol("(")) {
        if (++m_depth > deepestBrackets || !condition())
            return false;
        --m_depth;
        return symbol(")");
    }
    constexpr std::wstring_view always = L"1 = 1";
    if (m_text.substr(m_at).starts_with(always) && !isWord(at(m_at + always.size())) &&
        at(m_at + always.size()) != L'.') {
        copyTo(m_at + always.size());
        return true;
    }
    if (!name())
        return false;
    if (keyword("IS"))
        return (keyword("NOT"), keyword("NULL"));
    if (keyword("LIKE"))
        return text();
    for (const std::string_view sign : {"<=", "<>", "<", ">=", ">", "==", "=", "!="})
        if (symbol(sign))
            return value();
    return false;
}

bool StatementReader::atEnd()
{
    symbol(";");
    return isWhole();
}

bool StatementReader::isWhole()
{
    skipBlanks();
    return m_at == m_text.size() && !m_refused;
}

bool StatementReader::keyword(std::string_view word)
{
    skipBlanks();
    for (std::size_t i = 0; i < word.size(); ++i) {
        const wchar_t c = at(m_at + i);
        const wchar_t upper = c >= L'a' && c <= L'z' ? c - L'a' + L'A' : c;
        if (upper != static_cast<wchar_t>(word[i]))
            return false;
    }
    const wchar_t next = at(m_at + word.size());
    if (isWord(next) || next == L'$')
        return false;
    copyTo(m_at + word.size());
    return true;
}

bool StatementReader::symbol(std::string_view sign)
{
    skipBlanks();
    for (std::size_t i = 0; i < sign.size(); ++i)
        if (at(m_at + i) != static_cast<wchar_t>(sign[i]))
            return false;
    copyTo(m_at + sign.size());
    return true;
}

bool StatementReader::name()
{
    do
        if (!plainName())
            return false;
    while (symbol("."));
    return true;
}

bool StatementReader::plainName()
{
    skipBlanks();
    const wchar_t first = at(m_at);
    if (first == L'[' || first == L'"' || first == L'`')
        return delimitedName(first == L'[' ? L']' : first);
    std::size_t end = m_at;
    while (isWord(at(end)))
        ++end;
    if (end == m_at || isDigit(first))
        return false;
    copyTo(end);
    return true;
}

bool StatementReader::delimitedName(wchar_t closing)
{
    std::size_t end = m_at + 1;
    for (;; end += 2) { // a doubled quote belongs to the name
        end = m_text.find(closing, end);
        if (end == std::wstring_view::npos)
            return false;
        if (closing == L']' || at(end + 1) != closing)
            break;
    }
    copyTo(end + 1);
    return true;
}

bool StatementReader::value()
{
    skipBlanks();
    const wchar_t c = at(m_at);
    if (c == L'\'')
        return text();
    if (c == L'%') {
        const std::size_t type = at(m_at + 1) == L'l' ? m_at + 2 : m_at + 1;
        if (at(type) == L'd' || at(type) == L'i')
            return conversion(StatementPattern::Kind::Integer, type + 1);
        return at(type) == L'f' && conversion(StatementPattern::Kind::Real, type + 1);
    }
    return isDigit(c) || c == L'-' || c == L'.' ? number() : keyword("NULL");
}

bool StatementReader::text()
{
    skipBlanks();
    if (at(m_at) != L'\'')
        return false;
    if (m_kinds != nullptr && m_text.substr(m_at).starts_with(L"'%s'") && at(m_at + 4) != L'\'')
        return conversion(StatementPattern::Kind::Text, m_at + 4);
    std::size_t end = m_at + 1;
    bool doubled = false;
    for (;; end += 2) {
        end = m_text.find(L'\'', end);
        if (end == std::wstring_view::npos)
            return false;
        if (at(end + 1) != L'\'')
            break;
        doubled = true;
    }
    const KorString literal(m_text.substr(m_at + 1, end - m_at - 1));
    if (literal.view().find(L'\0') != std::wstring_view::npos) // ends the statement
        return false;
    return take(doubled ? literal.replace(L"''", L"'") : literal, end + 1);
}

bool StatementReader::number()
{
    char digits[64];
    std::size_t count = 0, end = m_at;
    bool real = false;
    for (; count < sizeof digits; ++end) {
        const wchar_t c = at(end);
        const bool isExponent = c == L'e' || c == L'E';
        const bool isSign = c == L'-' ? count == 0 || (digits[count - 1] | 32) == 'e'
                                      : c == L'+' && count > 0 && (digits[count - 1] | 32) == 'e';
        if (!isDigit(c) && c != L'.' && !isExponent && !isSign)
            break;
        real = real || c == L'.' || isExponent;
        digits[count++] = static_cast<char>(c);
    }
    if (count == sizeof digits || isWord(at(end)))
        return false;
    // a number that no variable holds stays in the statement
    const auto taken = [&](auto number) {
        const auto [stop, error] = std::from_chars(digits, digits + count, number);
        return stop == digits + count && error == std::errc() && take(number, end);
    };
    return real ? taken(double{}) : taken(std::int64_t{});
}

bool StatementReader::conversion(StatementPattern::Kind kind, std::size_t end)
{
    if (m_kinds == nullptr || isWord(at(end)) || at(end) == L'.')
        return false;
    m_kinds->push_back(kind);
    m_pattern += '?';
    m_at = end;
    return true;
}

void StatementReader::skipBlanks()
{
    std::size_t end = m_at;
    while (at(end) == L' ' || at(end) == L'\t' || at(end) == L'\n' || at(end) == L'\r')
        ++end;
    copyTo(end);
}

void StatementReader::copyTo(std::size_t end)
{
    const std::size_t length = m_pattern.size();
    m_pattern.resize(length + (end - m_at));
    char* out = m_pattern.data() + length;
    std::uint32_t all = 0;
    for (std::size_t i = m_at; i < end; ++i) {
        const wchar_t c = m_text[i];
        m_refused = m_refused || c == L'\0' || (c == L'%' && m_kinds != nullptr);
        all |= static_cast<std::uint32_t>(c);
        *out++ = static_cast<char>(c);
    }
    if (all >= 128) {
        m_pattern.resize(length);
        KorString(m_text.substr(m_at, end - m_at)).appendUtf8To(m_pattern);
    }
    m_at = end;
}

bool StatementReader::take(Value literal, std::size_t end)
{
    if (m_values == nullptr) {
        copyTo(end);
        return true;
    }
    if (m_values->size() == mostValues)
        return false;
    m_values->push_back(std::move(literal));
    m_pattern += '?';
    m_at = end;
    return true;
}

bool splitLiterals(std::wstring_view sql, std::string& pattern, std::vector<Value>& values)
{
    return StatementReader(sql, pattern, values).readStatement();
}

bool splitCondition(std::wstring_view condition, std::string& pattern, std::vector<Value>& values)
{
    return StatementReader(condition, pattern, values).readCondition();
}

} // namespace korodbc::host
