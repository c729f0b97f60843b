#include "DetailFile.h"
#include "engine/DatabaseFile.h"
#include "repository/NewPath.h"

#include <korodbc/host/EmbeddedHost.h>

#include <filesystem>
#include <memory>

namespace fs = std::filesystem;
using korodbc::host::FailureKind;
using korodbc::host::HostError;
using korodbc::host::NewPath;

namespace {

/// Puts a file into the first free place of a backup; throws a reason.
std::string placeAsBackup(NewPath& made, const std::string& file)
{
    std::error_code code;
    for (int number = 1;; ++number) {
        const std::string backup = file + ".backup-" + std::to_string(number);
        HostError error;
        if (fs::exists(backup, code))
            continue;
        const NewPath::Placed placed = made.place(backup, error);
        if (placed == NewPath::Placed::Yes)
            return backup;
        if (placed == NewPath::Placed::Failed)
            throw error;
    }
}

Failure notRestored(const Source& source, const HostError& reason)
{
    return {kFailed, source.file + " was not restored" + advised(reason, source.name)};
}

/// In the place of a file that is missing, or damaged beyond use: what is there is moved away.
std::string restoreAnew(const std::string& from, const Source& source)
{
    NewPath copy(source.file);
    HostError error = copy.error();
    if (error.kind == FailureKind::None)
        error = korodbc::host::copyDatabase(from, copy.path());
    if (error.kind != FailureKind::None)
        throw notRestored(source, error);
    std::string backup;
    std::error_code code;
    if (fs::exists(source.file, code)) {
        NewPath old(source.file + ".backup");
        fs::rename(source.file, old.path(), code);
        if (code)
            throw notRestored(source, {korodbc::host::failureOfSystem(code.value()), code.message()});
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
            throw HostError{FailureKind::Refused, "it has no file"};
        NewPath fresh(file + ".backup");
        const HostError error = fresh.error().kind == FailureKind::None
                                    ? korodbc::host::copyDatabase(file, fresh.path())
                                    : fresh.error();
        if (error.kind != FailureKind::None)
            throw error;
        return placeAsBackup(fresh, file);
    } catch (const HostError& reason) {
        throw Failure{kFailed, "no backup of " + file + " could be made" + advised(reason)};
    }
}

std::string restoreFrom(const std::string& from, const Source& source)
{
    std::error_code code;
    if (!fs::exists(source.file, code))
        return restoreAnew(from, source);
    HostError error = korodbc::host::whyUnreadable(source.file);
    if (error.kind == FailureKind::Damaged)
        return restoreAnew(from, source);
    korodbc::host::DatabaseReplacement replacement(from, source.file);
    if (error.kind == FailureKind::None)
        error = replacement.lock();
    if (error.kind != FailureKind::None)
        throw notRestored(source, error);
    for (const auto& claim : korodbc::host::claimedByOthers(source.dsn, source.index))
        throw notRestored(source,
                          {FailureKind::Edited, "table " + claim.table + " is being edited by " + claim.holder +
                                                    "; try again when that edit is closed"});
    const std::string before = backUp(source.file);
    error = replacement.run();
    if (error.kind != FailureKind::None) {
        fs::remove(before, code);
        throw notRestored(source, error);
    }
    return before;
}
