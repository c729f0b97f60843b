#include "engine/Names.h"
#include "engine/sqlite/SqliteEngine.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

constexpr const char* memory = ":memory:";

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

std::unique_ptr<Engine> SqliteEngine::open(const std::string& path, Access access, HostError& error)
{
    std::unique_ptr<SqliteEngine> engine(new SqliteEngine(path));
    if (access == Access::Look && path != memory)
        engine->m_refusal = {FailureKind::ReadOnly, "the database is open for looking only"};
    else if (!engine->openFile(access)) {
        // A place that cannot be written can still be looked at.
        error = engine->m_failure;
        if (access == Access::Create ||
            (error.kind != FailureKind::Unreachable && error.kind != FailureKind::ReadOnly))
            return nullptr;
        engine->m_refusal = error;
    }
    if (engine->m_refusal.kind != FailureKind::None && !engine->openForLooking()) {
        error = engine->m_failure;
        return nullptr;
    }
    if (Statement* mode = engine->kept("PRAGMA journal_mode")) {
        const StatementRun run(*mode);
        engine->m_logsAhead = mode->step() == Step::Row && mode->bytes(0) != "delete";
    }
    if (access == Access::Create)
        engine->logAhead();
    engine->run("PRAGMA synchronous = FULL");
    return engine;
}

bool SqliteEngine::connect(const std::string& name, int flags)
{
    m_kept.clear();
    sqlite3_close(m_db);
    m_db = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &m_db, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        m_failure = errorOf(code, m_db == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(m_db));
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
    sqlite3_set_authorizer(m_db, &SqliteEngine::authorize, this);
    sqlite3_update_hook(m_db, &SqliteEngine::rowChanged, this);
    // Reading the schema is what tells a database from another file. A file that is only read keeps its journal
    // mode.
    return run("PRAGMA schema_version");
}

bool SqliteEngine::openFile(Access access)
{
    // Opened all the same, the engine would leave side files that cannot be written either.
    if (std::error_code code;
        access == Access::Write && fs::exists(m_path, code) && ::access(m_path.c_str(), W_OK) != 0) {
        m_failure = errorOf(SQLITE_READONLY, sqlite3_errstr(SQLITE_READONLY));
        return false;
    }
    return connect(m_path, SQLITE_OPEN_READWRITE | (access == Access::Create ? SQLITE_OPEN_CREATE : 0));
}

bool SqliteEngine::openForLooking()
{
    // Who may write takes the engine's side files away when done, who may only read leaves them; a log that is
    // there already stays as it is.
    const bool isLogged = hasContent(m_path + "-wal") || hasContent(m_path + "-journal");
    if (::access(m_path.c_str(), W_OK) != 0) {
        m_failure = {failureOfSystem(errno), std::generic_category().message(errno)};
    } else {
        if (connect(m_path, isLogged ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE))
            return run("PRAGMA query_only = ON");
        if (m_failure.kind != FailureKind::Unreachable && m_failure.kind != FailureKind::ReadOnly &&
            m_failure.kind != FailureKind::Disk && m_failure.kind != FailureKind::Full)
            return false;
    }
    // Its folder, or a disk that is full, cannot hold what the engine keeps beside it.
    const HostError reason = m_failure;
    if (openElsewhere(isLogged))
        return true;
    m_failure = reason;
    return false;
}

/// Without a log the file is all there is; with one, both are looked at in another folder.
bool SqliteEngine::openElsewhere(bool isLogged)
{
    if (!isLogged)
        return connect(uriOf(m_path) + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    std::error_code code;
    std::string folder = (fs::temp_directory_path(code) / "korodbc-XXXXXX").string();
    if (code || ::mkdtemp(folder.data()) == nullptr)
        return false;
    m_temporary = folder;
    const std::string copy = (fs::path(folder) / "database").string();
    for (const char* part : {"", "-wal", "-journal"})
        if (hasContent(m_path + part) && !fs::copy_file(m_path + part, copy + part, code))
            return false;
    return connect(copy, SQLITE_OPEN_READWRITE);
}

SqliteEngine::~SqliteEngine()
{
    m_kept.clear();
    sqlite3_close(m_db);
    std::error_code ignored;
    if (!m_temporary.empty())
        fs::remove_all(m_temporary, ignored);
}

const EngineKind& fileEngine()
{
    static const EngineKind kind{"sqlite:",
                                 "sqlite-readonly:",
                                 memory,
                                 &SqliteEngine::open,
                                 [](std::string_view table) { return sameName(table.substr(0, 7), "sqlite_"); },
                                 [] { return sqlite3_libversion_number() >= 3035000; }};
    return kind;
}

} // namespace korodbc::host
