#include "Advice.h"

#include <korodbc/host/EmbeddedHost.h>

#include <sqlite3.h>
#include <string_view>

Trouble troubleOf(const std::string& reason)
{
    const struct {
        std::string_view text;
        Trouble trouble;
    } reasons[] = {
        {sqlite3_errstr(SQLITE_FULL), Trouble::Full},
        {"No space left on device", Trouble::Full},
        {"Disk quota exceeded", Trouble::Full},
        {sqlite3_errstr(SQLITE_IOERR), Trouble::Disk},
        {"is being edited", Trouble::Edited},
        {"was left open", Trouble::LeftOpen},
        {sqlite3_errstr(SQLITE_BUSY), Trouble::Busy},
        {sqlite3_errstr(SQLITE_LOCKED), Trouble::Busy},
        {"table is locked", Trouble::Busy},
        {sqlite3_errstr(SQLITE_READONLY), Trouble::ReadOnly},
        {"Read-only file system", Trouble::ReadOnly},
        {"Permission denied", Trouble::ReadOnly},
        {sqlite3_errstr(SQLITE_PERM), Trouble::ReadOnly},
        {sqlite3_errstr(SQLITE_AUTH), Trouble::ReadOnly},
        {"the file is missing", Trouble::Missing},
        {"No such file or directory", Trouble::Missing},
        {sqlite3_errstr(SQLITE_CANTOPEN), Trouble::Unreachable},
        {sqlite3_errstr(SQLITE_CORRUPT), Trouble::Damaged},
        {sqlite3_errstr(SQLITE_NOTADB), Trouble::Damaged},
        {"malformed database schema", Trouble::Damaged},
        {"no such table", Trouble::Layout},
        {"there is no table", Trouble::Layout},
        {"no such column", Trouble::Layout},
        {": no column", Trouble::Layout},
        {"is missing", Trouble::Layout},
        {"differs from", Trouble::Layout},
        {"does not fit", Trouble::Layout},
    };
    for (const auto& known : reasons)
        if (reason.find(known.text) != std::string::npos)
            return known.trouble;
    return Trouble::Unknown;
}

std::string remedy(const std::string& reason, const std::string& source)
{
    const std::string restore =
        "korodbc restore FILE" + (source.empty() || source == "Details" ? "" : " --source \"" + source + '"');
    switch (troubleOf(reason)) {
    case Trouble::Full:
        return "; make room on the disk and try again";
    case Trouble::Disk:
        return "; look whether the disk is full or failing";
    case Trouble::Busy:
        return "; try again when the other program is done with it";
    case Trouble::Edited: // the line says it
        break;
    case Trouble::LeftOpen:
        return "; see: korodbc recover";
    case Trouble::ReadOnly:
        return "; make the file and its folder writable for you";
    case Trouble::Unreachable:
        return "; look whether you may use the file and its folder";
    case Trouble::Missing:
        return "; correct the connection in repository.toml, or bring back a backup with: " + restore;
    case Trouble::Damaged:
        return "; bring back a backup with: " + restore;
    case Trouble::Layout:
        return "; see: korodbc status";
    case Trouble::Unknown:
        break;
    }
    return {};
}

std::string advised(const std::string& reason, const std::string& source)
{
    return reason.empty() ? "" : ": " + reason + remedy(reason, source);
}

std::string bareReason()
{
    const std::string error = korodbc::host::lastError();
    return error.empty() ? "" : ": " + error;
}

std::string because() { return advised(korodbc::host::lastError()); }
