#pragma once

#include "engine/Engine.h"

#include <korodbc/roots/KorString.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

/// A statement pattern ("... ( %ld, '%s', %lf)") as a statement with parameters, and what each value becomes.
struct StatementPattern {
    enum class Kind { Integer, Real, Text };
    std::string sql;
    std::vector<Kind> parameters;
};

/// False when a value of the pattern may be more than a value (a text outside single quotes names a table or is a
/// part of the statement); the statement has to run as text then.
bool readPattern(std::wstring_view pattern, StatementPattern& read);
/// True when the values are what the pattern's conversions expect; otherwise the statement has to run as text.
bool fitsPattern(const StatementPattern& pattern, std::span<const KorFormatArgument> arguments);
/// Binds the values as the text of the statement would have them: reals with the six decimals of "%lf".
void bindPattern(const StatementPattern& pattern, std::span<const KorFormatArgument> arguments,
                 Statement& statement);
/// The text of the statement: the formatted pattern, with the quotes inside its texts doubled.
KorString patternText(std::wstring_view pattern, std::span<const KorFormatArgument> arguments);

} // namespace korodbc::host
