#pragma once

#include <string>

namespace korodbc::host {

/// An installed country add-in.
struct CountryAddIn {
    std::string id;
    std::string name;
    std::string connection; // as connectionTo() has it, in the folder of the repository
};

} // namespace korodbc::host
