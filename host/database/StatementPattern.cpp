#include "database/StatementPattern.h"

#include "database/StatementReader.h"

#include <korodbc/repository/KorColumn.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace korodbc::host {

bool readPattern(std::wstring_view pattern, StatementPattern& read)
{
    StatementPattern result;
    if (!StatementReader(pattern, result.sql, result.parameters).readStatement())
        return false;
    read = std::move(result);
    return true;
}

bool fitsPattern(const StatementPattern& pattern, std::span<const KorFormatArgument> arguments)
{
    using Kind = KorFormatArgument::Kind;
    if (pattern.parameters.size() != arguments.size())
        return false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Kind kind = arguments[i].kind();
        switch (pattern.parameters[i]) {
        case StatementPattern::Kind::Integer:
            if (kind != Kind::kSigned)
                return false;
            break;
        case StatementPattern::Kind::Real:
            if (kind != Kind::kReal || !std::isfinite(arguments[i].realValue()))
                return false;
            break;
        case StatementPattern::Kind::Text:
            if (kind != Kind::kText)
                return false;
            break;
        }
    }
    return true;
}

void bindPattern(const StatementPattern& pattern, std::span<const KorFormatArgument> arguments,
                 Statement& statement)
{
    int position = 0;
    for (const StatementPattern::Kind kind : pattern.parameters) {
        const KorFormatArgument& value = arguments[static_cast<std::size_t>(position++)];
        switch (kind) {
        case StatementPattern::Kind::Integer:
            statement.bind(position, value.signedValue());
            break;
        case StatementPattern::Kind::Real: {
            double real = value.realValue();
            if (real != std::trunc(real)) {
                char digits[400];
                const auto end = std::to_chars(digits, digits + sizeof digits, real, std::chars_format::fixed, 6);
                std::from_chars(digits, end.ptr, real);
            }
            statement.bind(position, real);
            break;
        }
        case StatementPattern::Kind::Text:
            statement.bind(position, KorString(value.textValue()));
            break;
        }
    }
}

KorString patternText(std::wstring_view pattern, std::span<const KorFormatArgument> arguments)
{
    std::vector<KorString> texts;
    texts.reserve(arguments.size());
    std::vector<KorFormatArgument> quotedArguments(arguments.begin(), arguments.end());
    std::size_t next = 0;
    bool inQuotes = false;
    for (std::size_t i = 0; i < pattern.size() && next < arguments.size(); ++i) {
        inQuotes = inQuotes != (pattern[i] == L'\'');
        if (pattern[i] != L'%')
            continue;
        i = std::min(pattern.find_first_not_of(L"-0123456789.lh", i + 1), pattern.size());
        if (i == pattern.size() || std::wstring_view(L"diufsc").find(pattern[i]) == std::wstring_view::npos)
            continue;
        if (inQuotes && arguments[next].kind() == KorFormatArgument::Kind::kText) {
            texts.push_back(quoted(KorString(arguments[next].textValue())));
            quotedArguments[next] = KorFormatArgument(texts.back());
        }
        ++next;
    }
    return KorString::formatArguments(pattern, quotedArguments);
}

} // namespace korodbc::host
