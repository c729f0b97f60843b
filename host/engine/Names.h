#pragma once

#include <string>
#include <string_view>

namespace korodbc::host {

/// "[name]"; a name that holds a closing bracket stands between double quotes instead.
std::string bracketed(std::string_view name);
/// ASCII letters in lower case.
std::string lowerCase(std::string_view text);
/// True for names that differ in the case of ASCII letters at most.
bool sameName(std::string_view a, std::string_view b);

} // namespace korodbc::host
