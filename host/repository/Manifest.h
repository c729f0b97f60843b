#pragma once

#include "engine/Engine.h"

#include <korodbc/host/CountryAddIn.h>
#include <korodbc/repository/KorDSNDefinitions.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

namespace korodbc::host {

/// What a repository consists of: the file `repository.toml` in its folder.
struct Manifest {
    static constexpr const char* fileName = "repository.toml";

    std::array<std::string, KorDSNDefinitions::kNumberOfDataSources> connections; // by eDSN
    std::vector<CountryAddIn> countryAddIns;                                      // in the order of their slots
    int busyMilliseconds = 2000; // how long to wait for a database that another program writes

    /// One file per data source, named after it.
    static Manifest standard();
    /// Reads a manifest. On failure returns false, with one line in `error` that names the place and the remedy.
    static bool load(const std::filesystem::path& folder, Manifest& manifest, std::string& error);
    bool save(const std::filesystem::path& folder, std::string& error) const;
};

/// What a connection string names.
struct ConnectionTarget {
    std::string file; // ":memory:" for a database in memory
    bool readOnly = false;

    bool inMemory() const { return file == fileEngine().inMemory; }
};

/// The database behind a connection string, its file relative to the repository's folder. On failure returns false
/// with one line in `error`.
bool targetOfConnection(const std::string& connection, const std::filesystem::path& folder,
                        ConnectionTarget& target, std::string& error);

} // namespace korodbc::host
