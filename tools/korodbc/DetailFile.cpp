#include "DetailFile.h"

#include "records/Registry.h"
#include "sqlite/Connection.h"
#include "sqlite/Statement.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* tablesOf5_1[] = {"DetObjAnnotationGroup", "DetObjQualifierSetGroup",
                                       "DetViewDimRequestLinearGroup", "DetViewDimStrategyNew",
                                       "DetViewDimStrategyItems"};

std::unique_ptr<korodbc::host::Connection> openSound(const std::string& file)
{
    const std::string damaged = file + " is damaged; put a good copy of it there: ";
    std::string error;
    auto database = korodbc::host::Connection::open(file, korodbc::host::Connection::Access::Look, error);
    if (!database)
        throw Failure{kFailed, damaged + error};
    korodbc::host::Statement* check = database->prepare("PRAGMA quick_check(1)");
    if (check == nullptr)
        throw Failure{kFailed, damaged + database->lastError()};
    const korodbc::host::StatementRun run(*check);
    const std::string result(check->step() == SQLITE_ROW ? check->bytes(0)
                                                         : std::string_view("it cannot be read"));
    if (result != "ok")
        throw Failure{kFailed, damaged + result};
    return database;
}

/// Throws unless the existing file is a sound detail database.
void checkDatabase(const std::string& file)
{
    std::error_code code;
    if (fs::is_directory(file, code))
        throw Failure{kFailed, file + " is a folder; name a file in it"};
    if (!fs::is_regular_file(file, code))
        throw Failure{kFailed, file + " is no regular file; name a detail database"};
    if (access(file.c_str(), R_OK) != 0)
        throw Failure{kFailed, file + " cannot be read; check its permissions"};
    char magic[16] = {};
    std::ifstream(file, std::ios::binary).read(magic, sizeof magic);
    if (std::string_view(magic, 15) != "SQLite format 3")
        throw Failure{
            kFailed, file + " is no detail database; name a file made with: korodbc export-style, export-process"};
    const auto database = openSound(file);
    for (const char* table : tablesOf5_1)
        if (database->table(KorString::fromUtf8(table)) == nullptr)
            throw Failure{kFailed, file + " is older than version 5.1: table " + table +
                                       " is missing; use a file exported by version 5.1 or later"};
    for (const auto describe : records::all())
        if (records::isDetailTable(describe()) &&
            database->table(KorString::fromUtf8(describe().table)) == nullptr)
            throw Failure{kFailed, file + " is no complete detail database: table " +
                                       std::string(describe().table) + " is missing; export into a new file"};
}

} // namespace

void checkSound(const std::string& file)
{
    if (file != ":memory:")
        openSound(file);
}

void checkImportFile(const std::string& file)
{
    std::error_code code;
    if (!fs::exists(file, code))
        throw Failure{kFailed,
                      "there is no file " + file + "; make one with: korodbc export-style, export-process"};
    checkDatabase(file);
}

bool checkExportTarget(const std::string& file)
{
    std::error_code code;
    const fs::path folder = fs::absolute(file, code).parent_path();
    if (fs::exists(file, code)) {
        checkDatabase(file);
        if (access(file.c_str(), W_OK) != 0)
            throw Failure{kFailed, file + " cannot be written; check its permissions"};
        for (const Source& source : usableSources())
            refuseSameFile(file, source);
        return false;
    }
    if (!fs::is_directory(folder, code))
        throw Failure{kFailed, "there is no folder " + folder.string() + "; make it first"};
    if (access(folder.c_str(), W_OK) != 0)
        throw Failure{kFailed, "folder " + folder.string() + " cannot be written; check its permissions"};
    return true;
}

void refuseSameFile(const std::string& file, const Source& source)
{
    std::error_code code;
    if (fs::equivalent(file, source.file, code))
        throw Failure{kFailed,
                      file + " is the database of data source " + source.name + " itself; name another file"};
}

std::string backUp(const std::string& file)
{
    const auto refused = [&](const std::string& why) {
        return Failure{kFailed, "no backup of " + file + " could be made: " + why +
                                    "; make room in its folder, or go on without --backup"};
    };
    if (file == ":memory:")
        throw refused("it has no file");
    std::string copy, error;
    std::error_code code;
    for (int number = 1; copy.empty() || fs::exists(copy, code); ++number)
        copy = file + ".backup-" + std::to_string(number);
    const std::string fresh = copy + ".new-" + std::to_string(::getpid());
    const auto from = korodbc::host::Connection::open(file, korodbc::host::Connection::Access::Look, error);
    if (!from)
        throw refused(error);
    sqlite3* to = nullptr;
    int result = sqlite3_open(fresh.c_str(), &to);
    if (result == SQLITE_OK) {
        sqlite3_backup* backup = sqlite3_backup_init(to, "main", from->handle(), "main");
        sqlite3_backup_step(backup, -1);
        result = backup == nullptr ? sqlite3_errcode(to) : sqlite3_backup_finish(backup);
    }
    if (result == SQLITE_OK) // one file, without a log beside it
        result = sqlite3_exec(to, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    error = sqlite3_errmsg(to);
    sqlite3_close(to);
    if (result == SQLITE_OK) {
        fs::rename(fresh, copy, code);
        error = code.message();
    }
    if (result != SQLITE_OK || code) {
        fs::remove(fresh, code);
        throw refused(error);
    }
    return copy;
}
