#include "sqlite/Statement.h"

#include <algorithm>
#include <charconv>
#include <cwctype>

namespace korodbc::host {

void Statement::bind(int position, const KorString& text)
{
    const std::size_t slot = static_cast<std::size_t>(position);
    if (m_texts.size() <= slot) // at once for all parameters: what is bound is read where it lies
        m_texts.resize(
            std::max<std::size_t>(slot, static_cast<std::size_t>(sqlite3_bind_parameter_count(m_handle))) + 1);
    std::string& narrow = m_texts[slot];
    narrow.clear();
    text.appendUtf8To(narrow);
    sqlite3_bind_text(m_handle, position, narrow.data(), static_cast<int>(narrow.size()), SQLITE_STATIC);
}

void Statement::bind(int position, const Value& value)
{
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        bind(position, *integer);
    else if (const auto* real = std::get_if<double>(&value))
        bind(position, *real);
    else if (const auto* text = std::get_if<KorString>(&value))
        bind(position, *text);
    else
        bindNull(position);
}

std::string_view Statement::bytes(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, column));
    return text == nullptr
               ? std::string_view{}
               : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column)));
}

namespace {

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool isWord(wchar_t c)
{
    return isDigit(c) || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'_' || c > 127;
}

bool startsWithVerb(std::wstring_view sql)
{
    for (const std::wstring_view verb : {L"INSERT ", L"UPDATE ", L"DELETE "}) {
        if (sql.size() < verb.size())
            continue;
        bool same = true;
        for (std::size_t i = 0; i < verb.size() && same; ++i)
            same = sql[i] == verb[i] || (sql[i] >= L'a' && sql[i] <= L'z' && sql[i] - L'a' + L'A' == verb[i]);
        if (same)
            return true;
    }
    return false;
}

class LiteralSplitter {
public:
    LiteralSplitter(std::wstring_view sql, std::string& pattern, std::vector<Value>& values)
        : m_sql(sql), m_pattern(pattern), m_values(values)
    {
    }

    bool split()
    {
        while (m_at < m_sql.size()) {
            const wchar_t c = m_sql[m_at];
            const wchar_t next = m_at + 1 < m_sql.size() ? m_sql[m_at + 1] : L'\0';
            if (c == L'\0' || c == L'?' || c == L':' || c == L'@' || c == L'$' || (c == L'-' && next == L'-') ||
                (c == L'/' && next == L'*'))
                return false;
            if (c == L'\'') {
                if (!text())
                    return false;
            } else if (c == L'[' || c == L'"' || c == L'`') {
                if (!identifier(c == L'[' ? L']' : c))
                    return false;
            } else if (isDigit(c) || (c == L'.' && isDigit(next)) ||
                       (c == L'-' && isDigit(next) && signAllowed())) {
                if (!number())
                    return false;
            } else if (isWord(c)) {
                if (!word())
                    return false;
            } else {
                copy(m_at, m_at + 1);
                if (c != L' ' && c != L'\t' && c != L'\n')
                    m_last = c;
            }
        }
        return m_values.size() <= 256;
    }

private:
    /// A minus belongs to the number after an opening bracket, a comma or a comparison.
    bool signAllowed() const { return m_last == L'(' || m_last == L',' || m_last == L'='; }

    void copy(std::size_t from, std::size_t to)
    {
        const std::size_t length = m_pattern.size();
        m_pattern.resize(length + (to - from));
        char* out = m_pattern.data() + length;
        std::uint32_t all = 0;
        for (std::size_t i = from; i < to; ++i) {
            all |= static_cast<std::uint32_t>(m_sql[i]);
            *out++ = static_cast<char>(m_sql[i]);
        }
        if (all >= 128) {
            m_pattern.resize(length);
            KorString(m_sql.substr(from, to - from)).appendUtf8To(m_pattern);
        }
        m_at = to;
    }

    void take(Value value)
    {
        m_values.push_back(std::move(value));
        m_pattern += '?';
        m_last = L'?';
    }

    bool text()
    {
        std::size_t end = m_at + 1;
        bool doubled = false;
        for (;; ++end) {
            if (end >= m_sql.size())
                return false;
            if (m_sql[end] != L'\'')
                continue;
            if (end + 1 < m_sql.size() && m_sql[end + 1] == L'\'') {
                doubled = true;
                ++end;
                continue;
            }
            break;
        }
        KorString value(m_sql.substr(m_at + 1, end - m_at - 1));
        take(doubled ? value.replace(L"''", L"'") : value);
        m_at = end + 1;
        return true;
    }

    bool identifier(wchar_t closing)
    {
        const std::size_t end = m_sql.find(closing, m_at + 1);
        if (end == std::wstring_view::npos)
            return false;
        copy(m_at, end + 1);
        m_last = closing;
        return true;
    }

    bool word()
    {
        std::size_t end = m_at;
        while (end < m_sql.size() && isWord(m_sql[end]))
            ++end;
        if (end < m_sql.size() && m_sql[end] == L'\'') // a blob literal
            return false;
        copy(m_at, end);
        m_last = L'a';
        return true;
    }

    bool number()
    {
        char digits[64];
        std::size_t count = 0, end = m_at;
        bool real = false;
        for (; end < m_sql.size() && count < sizeof digits; ++end) {
            const wchar_t c = m_sql[end];
            const bool exponentSign = (c == L'-' || c == L'+') && end > m_at && (digits[count - 1] | 32) == 'e';
            if (!isDigit(c) && c != L'.' && (c | 32) != L'e' && !exponentSign && !(c == L'-' && end == m_at))
                break;
            real = real || c == L'.' || (c | 32) == L'e';
            digits[count++] = static_cast<char>(c);
        }
        if (count == sizeof digits || (end < m_sql.size() && isWord(m_sql[end])))
            return false;
        // a number that no variable holds stays in the statement
        const auto taken = [&](auto value) {
            const auto [stop, error] = std::from_chars(digits, digits + count, value);
            if (stop != digits + count || error != std::errc())
                return false;
            take(value);
            return true;
        };
        if (!(real ? taken(double{}) : taken(std::int64_t{})))
            return false;
        m_at = end;
        return true;
    }

    std::wstring_view m_sql;
    std::string& m_pattern;
    std::vector<Value>& m_values;
    std::size_t m_at = 0;
    wchar_t m_last = L' ';
};

} // namespace

bool splitLiterals(std::wstring_view sql, std::string& pattern, std::vector<Value>& values)
{
    pattern.clear();
    values.clear();
    return startsWithVerb(sql) && LiteralSplitter(sql, pattern, values).split();
}

} // namespace korodbc::host
