#pragma once

#include "repository/Manifest.h"
#include "support/DetailRecords.h"
#include "support/FaultVfs.h"
#include "support/RepositoryFolder.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/host/EmbeddedHost.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <sys/mman.h>
#include <sys/wait.h>

/// Kills a process at every write of an operation and looks at what the next start finds.
namespace crash {

namespace fs = std::filesystem;
using Man = KorOdbcMan;

/// In a child process: what another program refuses it is no news.
inline bool mayBeRefused = false;

/// In a child process: ends it with a complaint when something that must succeed does not.
inline void require(bool ok, const char* what)
{
    if (ok)
        return;
    if (!mayBeRefused)
        std::fprintf(stderr, "in the child: %s failed: %s\n", what, korodbc::host::lastError().c_str());
    ::_exit(3);
}
#define CRASH_REQUIRE(condition) crash::require((condition), #condition)

/// A folder for this process and its children, in memory where there is some; asked for before the first child.
inline const fs::path& scratch()
{
    static const fs::path folder = [] {
        const fs::path memory = ::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : fs::temp_directory_path();
        return memory / ("korodbc-crash-" + std::to_string(::getpid()));
    }();
    return folder;
}

enum class End { Died, Done, Failed };

/// Runs `act` in a child with the file system shim, killed at call `killAt`; `calls` tells how many calls it made.
inline End inChild(long killAt, const std::function<void()>& act, long* calls = nullptr)
{
    void* shared = ::mmap(nullptr, sizeof(long), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        faults::install();
        faults::plan.killAt = killAt;
        act();
        *static_cast<long*>(shared) = faults::plan.calls;
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    if (calls != nullptr)
        *calls = *static_cast<long*>(shared);
    ::munmap(shared, sizeof(long));
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        return End::Died;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? End::Done : End::Failed;
}

/// Runs `act`, which must succeed, in a child.
inline bool done(const std::function<void()>& act) { return inChild(0, act) == End::Done; }

/// Starts the library on the repository as the application does; leftover copies come back.
inline void start(const fs::path& folder)
{
    std::string error;
    if (!korodbc::host::openRepository(folder, error)) {
        std::fprintf(stderr, "in the child: %s\n", error.c_str());
        ::_exit(3);
    }
    Man::InitializeStatics::release();
    Man::InitializeStatics::build();
    Man::setCurrentDSN(KorDSNDefinitions::kDetails);
    Man::setCurrentAddIn(KorDSNDefinitions::kBase);
    CRASH_REQUIRE(Man::initializeTables() == 1);
}

/// Every table of an open database as text, rows in stored order, and what the engine thinks of it.
inline std::string dump(sqlite3* db)
{
    std::string out;
    const auto query = [&](const std::string& sql, const std::function<void(sqlite3_stmt*)>& row) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            out += "unreadable: " + sql + ": " + sqlite3_errmsg(db);
        while (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW)
            row(statement);
        sqlite3_finalize(statement);
    };
    const auto cells = [&](sqlite3_stmt* statement) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const unsigned char* cell = sqlite3_column_text(statement, i);
            out += cell == nullptr ? "NULL" : reinterpret_cast<const char*>(cell);
            out += '|';
        }
        out += '\n';
    };
    query("PRAGMA integrity_check", cells);
    std::vector<std::string> tables;
    query("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name", [&](sqlite3_stmt* statement) {
        tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
    });
    for (const std::string& table : tables) {
        out += "[" + table + "]\n";
        query("SELECT group_concat(name) FROM pragma_table_info('" + table + "')", cells);
        query("SELECT * FROM [" + table + "] ORDER BY rowid", cells);
    }
    return out;
}

/// The same of a database file.
inline std::string dump(const fs::path& file)
{
    if (!fs::exists(file))
        return "absent";
    sqlite3* db = nullptr;
    const std::string out = sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK
                                ? dump(db)
                                : "cannot be opened";
    sqlite3_close(db);
    return out;
}

/// Two styles, each with a process, that are equal but for their keys, beside what the database holds.
inline void fillTwins(eDSN dsn)
{
    const int first = 200, second = 300;
    for (const int base : {first, second}) {
        details::fillStyle(dsn, details::awkward, base);
        details::fillProcess(dsn, details::awkward, base);
    }
    // what a compaction never merges they share
    const std::pair<const char*, const char*> references[] = {{"DetObjReprMapItems", "Appearance"},
                                                              {"DetObjReprMapItems", "LineType"},
                                                              {"DetObjAnnotationStrategy", "[Group]"},
                                                              {"DetViewRequestCategories", "BaseCategory"},
                                                              {"DetailProcessStep", "Category"}};
    for (const auto& [table, column] : references)
        CRASH_REQUIRE(KorDatabaseAccess::doSQLStatement(
                          dsn, details::text(std::string("UPDATE ") + table + " SET " + column + " = " + column +
                                             " - 100 WHERE " + column + " > 300")) == 1);
}

/// The edit that a compaction is: of every table that one may change, those of items among them.
inline KorTableEdit compactionEdit()
{
    using enum Man::eTableType;
    const auto editOf = [](auto... types) { return KorTableEdit({types...}, Man::kFirstCopy); };
    return editOf(kDetailStyle, kDetViewArrangeStrategy, kDetViewRequest, kDetViewRequestCategories,
                  kDetObjReprMap, kDetViewSystemAndBox, kDetViewDimStrategy, kDetViewLengthClip,
                  kDetObjAnnotationStrategy, kDetAnnotationType, kDetArrangerControl, kDetArrangerStrategy,
                  kDetViewDimRequestLinear, kDetViewDimPointSelection, kDetObjQualifierSet, kLinetypes,
                  kDetailProcessDefinition, kDetailProcessStep, kDetailFilenameSelector, kDetailStyleMap,
                  kDetailProcessScales, kDetailProcessMain2CutScale);
}

using State = std::map<std::string, std::string>; // database file to its dump

/// The databases of a repository folder and the transfer file in it.
inline State state(const fs::path& folder)
{
    State files;
    for (const char* file : {"details.db", "addin.db", "configuration.db", "project.db", "transfer.db"})
        files[file] = dump(folder / file);
    return files;
}

/// A repository in files whose writes fail on demand, and which another process may lock.
class FaultyRepository {
protected:
    void open()
    {
        faults::install();
        m_folder.emplace();
        std::string error;
        korodbc::host::Manifest manifest;
        ASSERT_TRUE(korodbc::host::Manifest::load(m_folder->path(), manifest, error)) << error;
        manifest.busyMilliseconds = 1;
        ASSERT_TRUE(manifest.save(m_folder->path(), error)) << error;
        start(m_folder->path());
        details::fillConfiguration();
    }
    void close()
    {
        Man::InitializeStatics::release();
        m_folder.reset();
        faults::remove();
    }
    fs::path file() const { return m_folder->path() / "details.db"; }
    std::string state() const { return dump(file()); }
    /// Acts while another process writes to the details.
    void whileLocked(const std::function<void()>& act) const
    {
        sqlite3* other = nullptr;
        ASSERT_EQ(sqlite3_open(file().c_str(), &other), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        act();
        EXPECT_FALSE(korodbc::host::lastError().empty());
        sqlite3_close(other);
    }

    std::optional<RepositoryFolder> m_folder;
};

/// The first line in which two dumps differ.
inline std::string difference(const std::string& expected, const std::string& found)
{
    std::size_t at = 0, line = 0, table = 0;
    while (at < expected.size() && at < found.size() && expected[at] == found[at]) {
        if (expected[at] == '\n') {
            line = at + 1;
            if (at + 1 < expected.size() && expected[at + 1] == '[')
                table = at + 1;
        }
        ++at;
    }
    const auto lineFrom = [](const std::string& text, std::size_t from) {
        return from >= text.size() ? "(end)" : text.substr(from, text.find('\n', from) - from);
    };
    return lineFrom(expected, table) + "\n  expected " + lineFrom(expected, line) + "\n  found    " +
           lineFrom(found, line);
}

inline void copyFolder(const fs::path& from, const fs::path& to)
{
    fs::remove_all(to);
    fs::copy(from, to, fs::copy_options::recursive);
}

constexpr bool isSlow = KORODBC_SANITIZED; // every try starts processes, which the sanitizers make slow
constexpr long ends = isSlow ? 3 : 20;

/// Which of `count` calls to try: all, or those at both ends and a spread of the others.
inline std::vector<long> sampled(long count, long most = 3 * ends, long atEnds = ends)
{
    std::vector<long> numbers;
    const long step = count <= most ? 1 : (count - 2 * atEnds) / std::max(1L, most - 2 * atEnds) + 1;
    for (long n = 1; n <= count; ++n)
        if (n <= atEnds || n > count - atEnds || n % step == 0)
            numbers.push_back(n);
    return numbers;
}

} // namespace crash
