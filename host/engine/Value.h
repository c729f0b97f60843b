#pragma once

#include <korodbc/roots/KorString.h>

#include <cstdint>
#include <variant>

namespace korodbc::host {

/// A value of a cell: none, a whole number, a real, a text.
using Value = std::variant<std::monostate, std::int64_t, double, KorString>;

} // namespace korodbc::host
