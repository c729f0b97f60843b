#pragma once

#include <korodbc/host/HostError.h>
#include <korodbc/host/Observer.h>
#include <korodbc/host/RepositoryBuilder.h>

#include <filesystem>
#include <string>
#include <vector>

/// The embedded host: opens a repository of database files and puts it behind the table access service. Errors
/// come back as text for a person; nothing is thrown. Threads: one, the same for the host and the library; a
/// repository is opened and closed outside batches, requests and callbacks.
namespace korodbc::host {

/// What a program wants of a repository.
enum class Access {
    Write, // its databases are read and written
    Look,  // the databases are opened for reading, also where nothing can be written; every write fails
};
/// Opens the repository in `folder` and makes it the one that the table access service works on, after closing
/// another. On failure returns false, `error` is one line, and nothing is open.
bool openRepository(const std::filesystem::path& folder, std::string& error, Access access = Access::Write);
/// Opens a repository in memory, with every table, empty; closing it drops it.
bool openRepositoryInMemory(const std::vector<CountryAddIn>& countryAddIns, std::string& error);
/// Closes the databases. The library forgets what it knew of them.
void closeRepository();

/// Why the last failed operation of the table access service failed, to be asked before the next operation; empty
/// when unknown.
std::string lastError();
/// The same with its kind.
const HostError& lastFailure();

/// The connection string of a database file; `onlyRead`: no byte of it changes.
std::string connectionTo(const std::string& file, bool onlyRead = false);
/// True for names that no table of a user can have.
bool isReservedName(const std::string& table);

/// What reads found missing since the last call, one line each: a table that is in none of its data sources, a
/// column, a row that cannot be read. The reads went on with what there is, as a table without such rows.
std::vector<std::string> takeReadGaps();

/// One data source of the open repository.
struct SourceState {
    eDSN dsn;
    eIndex index;
    std::string name;       // data source, and add-in
    std::string connection; // connection string
    bool usable;
    std::string error;                       // why it cannot be used
    FailureKind trouble = FailureKind::None; // the kind of it
    int tables;
};
std::vector<SourceState> sources();

/// A table that another program edits under copies at present.
struct ClaimedTable {
    eDSN dsn;
    eIndex index;
    std::string table;
    std::string holder; // "anna on PC7, korodbc (process 1234), since 2026-11-21 17:03"
};
std::vector<ClaimedTable> claimedByOthers(eDSN dsn, eIndex index);

/// What the open tables and their record types do not agree on, one line per table; empty when they agree.
std::string tableDifferences(eDSN dsn, eIndex index);

} // namespace korodbc::host
