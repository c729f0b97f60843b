#pragma once

#include "repository/KorDSNDefinitions.h"

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace korodbc::host {

/// An installed country add-in.
struct CountryAddIn {
    std::string id;
    std::string name;
    std::string connection; // "sqlite:addins/norway.db"
};

/// What a repository consists of: the file `repository.toml` in its folder.
struct Manifest {
    static constexpr const char* fileName = "repository.toml";

    std::array<std::string, KorDSNDefinitions::kNumberOfDataSources> connections; // by eDSN
    std::vector<CountryAddIn> countryAddIns;                                      // in the order of their slots
    int busyMilliseconds = 2000; // how long to wait for a database that another process writes

    /// One SQLite file per data source, named after it.
    static Manifest standard();
    /// Reads a manifest. On failure returns false, with one line in `error` that names the place and the remedy.
    static bool load(const std::filesystem::path& folder, Manifest& manifest, std::string& error);
    bool save(const std::filesystem::path& folder, std::string& error) const;
};

/// The file behind a connection string, relative to the repository's folder; ":memory:" for a database in memory.
/// On failure returns false with one line in `error`.
bool fileOfConnection(const std::string& connection, const std::filesystem::path& folder, std::string& file,
                      std::string& error);

} // namespace korodbc::host
