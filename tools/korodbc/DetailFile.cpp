#include "DetailFile.h"

#include "database/Database.h"
#include "engine/DatabaseFile.h"

#include <korodbc/records/Registry.h>

#include <filesystem>
#include <memory>
#include <unistd.h>

using korodbc::host::Database;
using korodbc::host::FailureKind;
using korodbc::host::HostError;
namespace fs = std::filesystem;

namespace {

constexpr const char* tablesOf5_1[] = {"DetObjAnnotationGroup", "DetObjQualifierSetGroup",
                                       "DetViewDimRequestLinearGroup", "DetViewDimStrategyNew",
                                       "DetViewDimStrategyItems"};

std::unique_ptr<Database> openToLook(const std::string& file, HostError& error)
{
    return Database::open(file, Database::Access::Look, error);
}

std::unique_ptr<Database> openSound(const std::string& file, const std::string& source)
{
    HostError error;
    auto database = openToLook(file, error);
    if (database && !database->engine().check().empty())
        error = database->engine().failure();
    if (error.kind == FailureKind::None)
        return database;
    const bool damaged = error.kind == FailureKind::Damaged;
    const std::string advice = damaged && source.empty() ? "; use a good copy of it" : remedy(error, source);
    throw Failure{kFailed, file + (damaged ? " is damaged: " : " cannot be read: ") + error.text + advice};
}

/// A sound database in the existing file.
std::unique_ptr<Database> openDatabase(const std::string& file)
{
    std::error_code code;
    if (fs::is_directory(file, code))
        throw Failure{kFailed, file + " is a folder; name a file in it"};
    if (!fs::is_regular_file(file, code))
        throw Failure{kFailed, file + " is no regular file; name a detail database"};
    if (::access(file.c_str(), R_OK) != 0)
        throw Failure{kFailed, file + " cannot be read; check its permissions"};
    if (!korodbc::host::isDatabaseFile(file))
        throw Failure{
            kFailed, file + " is no detail database; name a file made with: korodbc export-style, export-process"};
    return openSound(file, {});
}

/// Throws unless the database has the tables of detail databases.
void checkDetailTables(const std::string& file, Database& database)
{
    for (const char* table : tablesOf5_1)
        if (database.table(KorString::fromUtf8(table)) == nullptr)
            throw Failure{kFailed, file + " is older than version 5.1: table " + table +
                                       " is missing; use a file exported by version 5.1 or later"};
    for (const auto describe : records::all())
        if (records::isDetailTable(describe()) && database.table(KorString::fromUtf8(describe().table)) == nullptr)
            throw Failure{kFailed, file + " is no complete detail database: table " +
                                       std::string(describe().table) + " is missing; export into a new file"};
}

} // namespace

void checkSound(const std::string& file, const std::string& source)
{
    if (file != ":memory:")
        openSound(file, source);
}

void checkImportFile(const std::string& file)
{
    std::error_code code;
    if (!fs::exists(file, code))
        throw Failure{kFailed,
                      "there is no file " + file + "; make one with: korodbc export-style, export-process"};
    checkDetailTables(file, *openDatabase(file));
}

void checkBackup(const std::string& file, const Source& source)
{
    std::error_code code;
    if (!fs::exists(file, code))
        throw Failure{kFailed, "there is no file " + file + "; name one that compact --backup or restore kept"};
    const auto database = openDatabase(file);
    HostError error;
    const auto current = fs::exists(source.file, code) ? openToLook(source.file, error) : nullptr;
    bool fits = false;
    for (const auto describe : records::all()) {
        const KorString table = KorString::fromUtf8(describe().table);
        const bool isThere = database->table(table) != nullptr;
        fits = fits || (isThere && describe().homes.contains(source.dsn));
        if (!isThere && current && current->table(table) != nullptr)
            throw Failure{kFailed, file + " is no backup of data source " + source.name + ": table " +
                                       table.toUtf8() + " is missing; name another file"};
    }
    if (!fits)
        throw Failure{kFailed, file + " is no backup of data source " + source.name +
                                   ": none of its tables is there; name another file"};
}

bool checkExportTarget(const std::string& file)
{
    std::error_code code;
    const fs::path folder = fs::absolute(file, code).parent_path();
    if (fs::exists(file, code)) {
        checkDetailTables(file, *openDatabase(file));
        if (::access(file.c_str(), W_OK) != 0)
            throw Failure{kFailed, file + " cannot be written; check its permissions"};
        for (const Source& source : usableSources())
            refuseSameFile(file, source);
        return false;
    }
    if (!fs::is_directory(folder, code))
        throw Failure{kFailed, "there is no folder " + folder.string() + "; make it first"};
    if (::access(folder.c_str(), W_OK) != 0)
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
