#include "sqlite/Connection.h"
#include "tables/Table.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

/// The file as the engine takes it with parameters behind it.
std::string uriOf(const std::string& path)
{
    std::string uri = "file:";
    for (const char c : path) {
        if (c == '%' || c == '?' || c == '#') {
            char code[8];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(c));
            uri += code;
        } else {
            uri += c;
        }
    }
    return uri;
}

bool hasContent(const std::string& file)
{
    std::error_code code;
    const auto size = fs::file_size(file, code);
    return !code && size > 0;
}

} // namespace

Connection::Connection(const std::string& path) : m_path(path), m_claims(path) {}

std::unique_ptr<Connection> Connection::open(const std::string& path, Access access, std::string& error)
{
    std::unique_ptr<Connection> connection(new Connection(path));
    if (access == Access::Look && path != ":memory:")
        connection->m_refusal = "the database is open for looking only";
    else if (!connection->openFile(access, error)) {
        // A place that cannot be written can still be looked at.
        const int reason =
            connection->m_db == nullptr ? SQLITE_READONLY : sqlite3_errcode(connection->m_db) & 0xff;
        if (access == Access::Create || (reason != SQLITE_CANTOPEN && reason != SQLITE_READONLY))
            return nullptr;
        connection->m_refusal = error;
    }
    if (!connection->m_refusal.empty() && !connection->openForLooking(error))
        return nullptr;
    if (Statement* mode = connection->prepare("PRAGMA journal_mode")) {
        const StatementRun run(*mode);
        connection->m_logsAhead = mode->step() == SQLITE_ROW && mode->bytes(0) != "delete";
    }
    if (access == Access::Create)
        connection->logAhead();
    connection->run("PRAGMA synchronous = FULL");
    return connection;
}

bool Connection::connect(const std::string& name, int flags, std::string& error)
{
    m_statements.clear();
    sqlite3_close(m_db);
    m_db = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &m_db, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        error = m_db == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(m_db);
        return false;
    }
    sqlite3_extended_result_codes(m_db, 1);
    // A file from elsewhere brings data along, no code: its triggers and functions in its schema do not run.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    // What stands between double quotes is a name; an unknown one is an error and never a text.
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_busy_timeout(m_db, 2000);
    sqlite3_set_authorizer(m_db, &Connection::authorize, this);
    sqlite3_update_hook(m_db, &Connection::rowChanged, this);
    // Reading the schema is what tells a database from another file. A file that is only read keeps its journal
    // mode.
    if (run("PRAGMA schema_version"))
        return true;
    error = m_error;
    return false;
}

bool Connection::openFile(Access access, std::string& error)
{
    // Opened all the same, the engine would leave side files that cannot be written either.
    if (std::error_code code;
        access == Access::Write && fs::exists(m_path, code) && ::access(m_path.c_str(), W_OK) != 0) {
        error = sqlite3_errstr(SQLITE_READONLY);
        return false;
    }
    return connect(m_path, SQLITE_OPEN_READWRITE | (access == Access::Create ? SQLITE_OPEN_CREATE : 0), error);
}

bool Connection::openForLooking(std::string& error)
{
    // Who may write takes the engine's side files away when done, who may only read leaves them; a log that is
    // there already stays as it is.
    const bool isLogged = hasContent(m_path + "-wal") || hasContent(m_path + "-journal");
    if (::access(m_path.c_str(), W_OK) != 0) {
        error = std::generic_category().message(errno);
    } else {
        if (connect(m_path, isLogged ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE, error))
            return run("PRAGMA query_only = ON");
        const int reason = sqlite3_errcode(m_db) & 0xff;
        if (reason != SQLITE_CANTOPEN && reason != SQLITE_READONLY && reason != SQLITE_IOERR &&
            reason != SQLITE_FULL)
            return false;
    }
    // Its folder, or a disk that is full, cannot hold what the engine keeps beside it. Without a log the file is all there is; with one,
    // both are looked at elsewhere.
    if (!isLogged) {
        std::string ignored;
        return connect(uriOf(m_path) + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, ignored);
    }
    std::error_code code;
    std::string folder = (fs::temp_directory_path(code) / "korodbc-XXXXXX").string();
    if (code || ::mkdtemp(folder.data()) == nullptr)
        return false;
    m_temporary = folder;
    const std::string copy = (fs::path(folder) / "database").string();
    for (const char* part : {"", "-wal", "-journal"})
        if (hasContent(m_path + part) && !fs::copy_file(m_path + part, copy + part, code))
            return false;
    std::string ignored;
    return connect(copy, SQLITE_OPEN_READWRITE, ignored);
}

Connection::~Connection()
{
    m_pending.reset();
    m_patterns.clear();
    m_statements.clear();
    m_tables.clear();
    sqlite3_close(m_db);
    std::error_code ignored;
    if (!m_temporary.empty())
        fs::remove_all(m_temporary, ignored);
    std::erase(writing, this);
}

} // namespace korodbc::host
