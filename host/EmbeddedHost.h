#pragma once

#include "Observer.h"
#include "repository/RepositoryBuilder.h"

#include <filesystem>
#include <string>
#include <vector>

/// The embedded host: opens a repository of SQLite databases and puts it behind the table access service. Errors
/// come back as text for a person; nothing is thrown.
namespace korodbc::host {

/// Opens the repository in `folder` and makes it the one that the table access service works on. On failure
/// returns false, `error` is one line, and nothing is open.
bool openRepository(const std::filesystem::path& folder, std::string& error);
/// Opens a repository that lives in memory only, with every table, empty.
bool openRepositoryInMemory(const std::vector<CountryAddIn>& countryAddIns, std::string& error);
/// Closes the databases.
void closeRepository();

/// Why the last failed operation of the table access service failed; empty when unknown.
std::string lastError();

/// One data source of the open repository.
struct SourceState {
    eDSN dsn;
    eIndex index;
    std::string name;       // data source, and add-in
    std::string connection; // connection string
    bool usable;
    std::string error; // why it cannot be used
    int tables;
};
std::vector<SourceState> sources();

/// What the open tables and their record types do not agree on, one line per table; empty when they agree.
std::string tableDifferences(eDSN dsn, eIndex index);

} // namespace korodbc::host
