#pragma once

#include <string>

namespace korodbc::host {

/// An installed country add-in.
struct CountryAddIn {
    std::string id;
    std::string name;
    std::string connection; // "sqlite:addins/norway.db"
};

} // namespace korodbc::host
