#include "sqlite/Statement.h"

#include "sqlite/StatementReader.h"

#include <algorithm>

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

bool splitLiterals(std::wstring_view sql, std::string& pattern, std::vector<Value>& values)
{
    return StatementReader(sql, pattern, values).readStatement();
}

bool splitCondition(std::wstring_view condition, std::string& pattern, std::vector<Value>& values)
{
    return StatementReader(condition, pattern, values).readCondition();
}

} // namespace korodbc::host
