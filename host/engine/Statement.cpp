#include "engine/Statement.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace korodbc::host {

namespace {

template <class Number>
Number startOf(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    Number number = 0;
    if (first != std::string_view::npos)
        std::from_chars(text.data() + first, text.data() + text.size(), number);
    return number;
}

std::int64_t truncated(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!(value > -limit && value < limit))
        return value > 0   ? std::numeric_limits<std::int64_t>::max()
               : value < 0 ? std::numeric_limits<std::int64_t>::min()
                           : 0;
    return static_cast<std::int64_t>(value);
}

} // namespace

void Statement::bind(int parameter, const KorString& text)
{
    Parameter& p = m_parameters[static_cast<std::size_t>(parameter - 1)];
    p.type = CellType::Text;
    p.text.clear();
    text.appendUtf8To(p.text);
}

void Statement::bind(int parameter, const Value& value)
{
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        bind(parameter, *integer);
    else if (const auto* real = std::get_if<double>(&value))
        bind(parameter, *real);
    else if (const auto* text = std::get_if<KorString>(&value))
        bind(parameter, *text);
    else
        bindNull(parameter);
}

std::int64_t Statement::integer(int column) const
{
    const Cell& c = cell(column);
    switch (c.type) {
    case CellType::Integer:
        return c.integer;
    case CellType::Real:
        return truncated(c.real);
    case CellType::Text:
        return startOf<std::int64_t>(c.text);
    case CellType::Null:
        break;
    }
    return 0;
}

double Statement::real(int column) const
{
    const Cell& c = cell(column);
    switch (c.type) {
    case CellType::Integer:
        return static_cast<double>(c.integer);
    case CellType::Real:
        return c.real;
    case CellType::Text:
        return startOf<double>(c.text);
    case CellType::Null:
        break;
    }
    return 0;
}

} // namespace korodbc::host
