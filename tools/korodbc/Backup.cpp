#include "DetailFile.h"
#include "repository/NewPath.h"
#include "sqlite/Claims.h"
#include "sqlite/Connection.h"
#include "sqlite/Statement.h"

#include <filesystem>
#include <memory>

namespace fs = std::filesystem;
using korodbc::host::Connection;
using korodbc::host::NewPath;

namespace {

constexpr int patience = 2000; // milliseconds to wait for another program

struct Closing {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Database = std::unique_ptr<sqlite3, Closing>;

Database openRaw(const fs::path& file, std::string& error)
{
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    Database opened(database);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(database, patience);
        return opened;
    }
    error = database == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(database);
    return nullptr;
}

/// A copy of one database into another by the engine's means: taken in one piece, undone unless it ends well.
class Copying {
public:
    Copying(sqlite3* from, sqlite3* to) : m_to(to), m_backup(sqlite3_backup_init(to, "main", from, "main")) {}
    ~Copying() { sqlite3_backup_finish(m_backup); }
    Copying(const Copying&) = delete;
    Copying& operator=(const Copying&) = delete;

    /// Locks the target for writing, and the state of the source that is copied; empty or the reason.
    std::string lock() { return step(0, SQLITE_OK); }
    std::string run()
    {
        const std::string reason = step(-1, SQLITE_DONE);
        const int finished = sqlite3_backup_finish(std::exchange(m_backup, nullptr));
        return reason.empty() && finished != SQLITE_OK ? sqlite3_errmsg(m_to) : reason;
    }

private:
    std::string step(int pages, int expected)
    {
        if (m_backup == nullptr)
            return sqlite3_errmsg(m_to);
        const int code = sqlite3_backup_step(m_backup, pages);
        return code == expected || code == SQLITE_DONE ? std::string() : sqlite3_errstr(code);
    }

    sqlite3* const m_to;
    sqlite3_backup* m_backup;
};

/// The one value that a statement gives, as text.
std::string value(sqlite3* database, const char* statement)
{
    std::string text;
    sqlite3_exec(
        database, statement,
        [](void* out, int, char** cells, char**) {
            *static_cast<std::string*>(out) = cells[0] == nullptr ? "" : cells[0];
            return 0;
        },
        &text, nullptr);
    return text;
}

/// Writes the copy of a database to a file that is being made; empty or the reason.
std::string copyTo(const fs::path& fresh, const std::string& file)
{
    std::string error;
    const auto from = Connection::open(file, Connection::Access::Look, error);
    const Database to = from ? openRaw(fresh, error) : nullptr;
    if (!to)
        return error;
    error = Copying(from->handle(), to.get()).run();
    // one file, without a log beside it
    if (error.empty() && value(to.get(), "PRAGMA journal_mode = DELETE") != "delete")
        error = sqlite3_errmsg(to.get());
    return error;
}

/// Puts a file into the first free place of a backup; throws a reason.
std::string placeAsBackup(NewPath& made, const std::string& file)
{
    std::error_code code;
    for (int number = 1;; ++number) {
        const std::string backup = file + ".backup-" + std::to_string(number);
        std::string error;
        if (fs::exists(backup, code))
            continue;
        const NewPath::Placed placed = made.place(backup, error);
        if (placed == NewPath::Placed::Yes)
            return backup;
        if (placed == NewPath::Placed::Failed)
            throw error;
    }
}

Failure notRestored(const Source& source, const std::string& reason)
{
    return {kFailed, source.file + " was not restored" + advised(reason, source.name)};
}

/// In the place of a file that is missing, or damaged beyond use: what is there is moved away.
std::string restoreAnew(const std::string& from, const Source& source)
{
    NewPath copy(source.file);
    std::string error = copy.error().empty() ? copyTo(copy.path(), from) : copy.error(), backup;
    if (!error.empty())
        throw notRestored(source, error);
    std::error_code code;
    if (fs::exists(source.file, code)) {
        NewPath old(source.file + ".backup");
        fs::rename(source.file, old.path(), code);
        if (code)
            throw notRestored(source, code.message());
        backup = placeAsBackup(old, source.file);
        // the log of what is no database belongs to nothing
        for (const char* side : {"-wal", "-shm"})
            if (fs::exists(source.file + side, code))
                fs::rename(source.file + side, backup + side, code);
    }
    if (copy.place(error) != NewPath::Placed::Yes)
        throw notRestored(source, error);
    return backup;
}

} // namespace

std::string backUp(const std::string& file)
{
    try {
        if (file == ":memory:")
            throw std::string("it has no file");
        NewPath fresh(file + ".backup");
        const std::string error = fresh.error().empty() ? copyTo(fresh.path(), file) : fresh.error();
        if (!error.empty())
            throw error;
        return placeAsBackup(fresh, file);
    } catch (const std::string& reason) {
        throw Failure{kFailed, "no backup of " + file + " could be made" + advised(reason)};
    }
}

std::string restoreFrom(const std::string& from, const Source& source)
{
    std::string error;
    std::error_code code;
    const bool isThere = fs::exists(source.file, code);
    Database target = isThere ? openRaw(source.file, error) : nullptr;
    if (isThere && !target)
        throw notRestored(source, error);
    if (isThere && value(target.get(), "SELECT count(*) FROM sqlite_schema").empty()) {
        error = sqlite3_errmsg(target.get());
        if (troubleOf(error) != Trouble::Damaged)
            throw notRestored(source, error);
    }
    if (!isThere || !error.empty()) {
        target.reset();
        return restoreAnew(from, source);
    }
    const auto backup = Connection::open(from, Connection::Access::Look, error);
    if (!backup)
        throw notRestored(source, error);
    // with a log, others read on while the lock is held; so does the copy of the state before
    if (value(target.get(), "PRAGMA journal_mode = WAL") != "wal")
        throw notRestored(source, sqlite3_errmsg(target.get()));
    if (value(backup->handle(), "PRAGMA page_size") != value(target.get(), "PRAGMA page_size"))
        throw Failure{kFailed, from + " has pages of another size than " + source.file +
                                   "; bring them to one size with: VACUUM"};
    Copying copying(backup->handle(), target.get());
    if (error = copying.lock(); !error.empty())
        throw notRestored(source, error);
    for (const auto& claim : korodbc::host::Claims(source.file).ofOthers())
        throw notRestored(source, "table " + claim.table + " is being edited by " + claim.holder +
                                      "; try again when that edit is closed");
    const std::string before = backUp(source.file);
    if (error = copying.run(); !error.empty()) {
        fs::remove(before, code);
        throw notRestored(source, error);
    }
    return before;
}
