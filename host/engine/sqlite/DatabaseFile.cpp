#include "engine/DatabaseFile.h"

#include "engine/sqlite/SqliteEngine.h"

#include <fstream>
#include <optional>
#include <utility>

namespace korodbc::host {

namespace {

constexpr int patience = 2000; // milliseconds to wait for another program

struct Closing {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
using Handle = std::unique_ptr<sqlite3, Closing>;

HostError lastOf(sqlite3* database)
{
    return SqliteEngine::errorOf(sqlite3_errcode(database), sqlite3_errmsg(database));
}

HostError openRaw(const std::string& file, Handle& opened)
{
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    opened.reset(database);
    if (code != SQLITE_OK)
        return database == nullptr ? SqliteEngine::errorOf(code, sqlite3_errstr(code)) : lastOf(database);
    sqlite3_busy_timeout(database, patience);
    return {};
}

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

/// A copy of one database into another by the engine's means: taken in one piece, undone unless it ends well.
class Copying {
public:
    Copying(sqlite3* from, sqlite3* to) : m_to(to), m_backup(sqlite3_backup_init(to, "main", from, "main")) {}
    ~Copying() { sqlite3_backup_finish(m_backup); }
    Copying(const Copying&) = delete;
    Copying& operator=(const Copying&) = delete;

    /// Locks the target for writing, and the state of the source that is copied.
    HostError lock() { return step(0, SQLITE_OK); }
    HostError run()
    {
        const HostError reason = step(-1, SQLITE_DONE);
        const int finished = sqlite3_backup_finish(std::exchange(m_backup, nullptr));
        return reason.kind == FailureKind::None && finished != SQLITE_OK ? lastOf(m_to) : reason;
    }

private:
    HostError step(int pages, int expected)
    {
        if (m_backup == nullptr)
            return lastOf(m_to);
        const int code = sqlite3_backup_step(m_backup, pages);
        return code == expected || code == SQLITE_DONE ? HostError{}
                                                       : SqliteEngine::errorOf(code, sqlite3_errstr(code));
    }

    sqlite3* const m_to;
    sqlite3_backup* m_backup;
};

sqlite3* handleOf(Engine& engine) { return static_cast<SqliteEngine&>(engine).handle(); }

} // namespace

bool isDatabaseFile(const std::string& file)
{
    constexpr std::string_view start = "SQLite format 3";
    char magic[start.size()] = {};
    std::ifstream(file, std::ios::binary).read(magic, sizeof magic);
    return std::string_view(magic, sizeof magic) == start;
}

HostError whyUnreadable(const std::string& file)
{
    Handle database;
    const HostError reason = openRaw(file, database);
    return reason.kind == FailureKind::None && value(database.get(), "SELECT count(*) FROM sqlite_schema").empty()
               ? lastOf(database.get())
               : reason;
}

HostError copyDatabase(const std::string& from, const std::filesystem::path& to)
{
    HostError reason;
    const auto source = SqliteEngine::open(from, Engine::Access::Look, reason);
    if (!source)
        return reason;
    Handle target;
    reason = openRaw(to.string(), target);
    if (reason.kind == FailureKind::None)
        reason = Copying(handleOf(*source), target.get()).run();
    // one file, without a log beside it
    if (reason.kind == FailureKind::None && value(target.get(), "PRAGMA journal_mode = DELETE") != "delete")
        reason = lastOf(target.get());
    return reason;
}

struct DatabaseReplacement::State {
    std::string from, to;
    std::unique_ptr<Engine> source;
    Handle target;
    std::optional<Copying> copying;
};

DatabaseReplacement::DatabaseReplacement(std::string from, std::string to)
    : m_state(new State{std::move(from), std::move(to), {}, {}, {}})
{
}

DatabaseReplacement::~DatabaseReplacement() = default;

HostError DatabaseReplacement::lock()
{
    State& state = *m_state;
    HostError reason = openRaw(state.to, state.target);
    if (reason.kind != FailureKind::None)
        return reason;
    state.source = SqliteEngine::open(state.from, Engine::Access::Look, reason);
    if (!state.source)
        return reason;
    sqlite3* const from = handleOf(*state.source);
    // with a log, others read on while the lock is held; so does the copy of the state before
    if (value(state.target.get(), "PRAGMA journal_mode = WAL") != "wal")
        return lastOf(state.target.get());
    if (value(from, "PRAGMA page_size") != value(state.target.get(), "PRAGMA page_size"))
        return {FailureKind::Refused, state.from + " has pages of another size than " + state.to +
                                          "; bring them to one size with: VACUUM"};
    state.copying.emplace(from, state.target.get());
    return state.copying->lock();
}

HostError DatabaseReplacement::run() { return m_state->copying->run(); }

} // namespace korodbc::host
