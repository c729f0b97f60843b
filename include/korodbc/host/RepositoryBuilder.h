#pragma once

#include <korodbc/host/CountryAddIn.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace korodbc::host {

/// Called with the progress of the work: what is made, how many of how many.
using BuildProgress = std::function<void(const std::string& what, int done, int total)>;

/// Makes a repository in `folder` from the catalogue, a folder of text files `<data source>/<table>.csv`. The
/// folder must be new or empty; it appears complete or not at all. On failure returns false, `error` one line or
/// several.
bool buildRepository(const std::filesystem::path& folder, const std::filesystem::path& catalogue,
                     const std::vector<CountryAddIn>& countryAddIns, const BuildProgress& progress,
                     std::string& error);

} // namespace korodbc::host
