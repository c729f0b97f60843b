#include "sqlite/StatementPattern.h"

#include "repository/KorColumn.h"

#include <charconv>
#include <cmath>

namespace korodbc::host {

bool readPattern(std::wstring_view pattern, StatementPattern& read)
{
    StatementPattern result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const wchar_t c = pattern[i];
        const bool quoted = c == L'\'';
        if (quoted && pattern.substr(i, 4) == L"'%s'") {
            result.parameters.push_back(StatementPattern::Kind::Text);
            result.sql += '?';
            i += 3;
        } else if (quoted) {
            return false;
        } else if (c == L'%') {
            const std::size_t type = i + 1 < pattern.size() && pattern[i + 1] == L'l' ? i + 2 : i + 1;
            if (type >= pattern.size())
                return false;
            if (pattern[type] == L'd' || pattern[type] == L'i')
                result.parameters.push_back(StatementPattern::Kind::Integer);
            else if (pattern[type] == L'f')
                result.parameters.push_back(StatementPattern::Kind::Real);
            else
                return false;
            result.sql += '?';
            i = type;
        } else if (c < 128 && c != L'\0') {
            result.sql += static_cast<char>(c);
        } else {
            KorString(pattern.substr(i, 1)).appendUtf8To(result.sql);
        }
    }
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
    std::vector<KorFormatArgument> quotedArguments;
    std::size_t from = 0;
    for (const KorFormatArgument& argument : arguments) {
        // the value's place in the pattern tells whether it stands between quotes
        const std::size_t place = pattern.find(L'%', from);
        const bool inQuotes = place != std::wstring_view::npos && place > 0 && pattern[place - 1] == L'\'';
        from = place == std::wstring_view::npos ? place : place + 2;
        if (inQuotes && argument.kind() == KorFormatArgument::Kind::kText) {
            texts.push_back(quoted(KorString(argument.textValue())));
            quotedArguments.emplace_back(texts.back());
        } else {
            quotedArguments.push_back(argument);
        }
    }
    return KorString::formatArguments(pattern, quotedArguments);
}

} // namespace korodbc::host
