#pragma once

#include <korodbc/host/HostError.h>

#include <filesystem>
#include <memory>
#include <string>

namespace korodbc::host {

// Whole files of the file engine. Reasons are of no kind where nothing went wrong.

/// True for a file that begins as a database does.
bool isDatabaseFile(const std::string& file);
/// Why the tables of a database in a file that is there cannot be listed.
HostError whyUnreadable(const std::string& file);
/// Copies a database, as it is stored now, into a file to be made.
HostError copyDatabase(const std::string& from, const std::filesystem::path& to);

/// Puts what is in one database in the place of what is in another, in one piece, while others go on reading it.
class DatabaseReplacement {
public:
    DatabaseReplacement(std::string from, std::string to);
    ~DatabaseReplacement();
    DatabaseReplacement(const DatabaseReplacement&) = delete;
    DatabaseReplacement& operator=(const DatabaseReplacement&) = delete;

    /// Shuts other writers out of the target, until this object goes.
    HostError lock();
    /// Replaces; what others read changes at once, or nothing changes.
    HostError run();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace korodbc::host
