#include "engine/sqlite/FileClaims.h"
#include "support/CrashCycle.h"
#include "tools/CommandLine.h"

#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <vector>

namespace {

/// What the commands do when they are not alone, may not write, or fail on the way.
class SharedRepository : public CommandLine {
protected:
    fs::path details() const { return m_folder / "work/details.db"; }
    /// Every database file as text, so that a folded log makes no difference.
    std::map<std::string, std::string> rows() const
    {
        std::map<std::string, std::string> dumps;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder))
            if (!entry.is_directory() && !matches(entry.path().filename().string(), "-(wal|shm|claims)$"))
                dumps[fs::relative(entry.path(), m_folder).string()] =
                    entry.path().extension() == ".db" ? crash::dump(entry.path()) : contents(entry.path());
        return dumps;
    }
    static int largestKey(const fs::path& file, const std::string& table)
    {
        sqlite3* db = nullptr;
        sqlite3_stmt* query = nullptr;
        sqlite3_open(file.c_str(), &db);
        sqlite3_prepare_v2(db, ("SELECT max([Key]) FROM " + table).c_str(), -1, &query, nullptr);
        const int key = sqlite3_step(query) == SQLITE_ROW ? sqlite3_column_int(query, 0) : -1;
        sqlite3_finalize(query);
        sqlite3_close(db);
        return key;
    }
};

const char* const looking[] = {"styles",
                               "processes",
                               "groups",
                               "tree 1",
                               "tables",
                               "sources",
                               "status",
                               "check",
                               "shared DetObjQualifierSet 1",
                               "show DetailStyle",
                               "get Material 1",
                               "list Standard",
                               "find Material Key=1",
                               "section HEA200",
                               "bolts",
                               "compact --dry-run"};

} // namespace

TEST_F(SharedRepository, WhoLooksNeedsNoPermissionToWrite)
{
    std::map<std::string, std::string> outputs;
    for (const char* command : looking)
        outputs[command] = output(command);
    sql(m_folder / "one.db", "PRAGMA journal_mode = WAL");
    fs::permissions(m_folder, fs::perms(0555));
    for (const auto& entry : fs::recursive_directory_iterator(m_folder))
        fs::permissions(entry.path(), fs::perms(entry.is_directory() ? 0555 : 0444));
    const auto before = files();
    for (const char* command : looking) {
        const Outcome outcome = runAsGuest(command);
        EXPECT_EQ(outcome.code, 0) << command;
        EXPECT_EQ(outcome.err, "") << command;
        EXPECT_EQ(outcome.out, outputs[command]) << command;
    }
    const fs::path elsewhere = fs::temp_directory_path() / ("exported-" + std::to_string(::getpid()) + ".db");
    const Outcome exported = runAsGuest("export-style 1 " + elsewhere.string());
    EXPECT_EQ(exported.code, 0) << exported.err;
    EXPECT_EQ(exported.err, "");
    EXPECT_TRUE(fs::remove(elsewhere));
    for (const char* command :
         {"edit DetailStyle 1 TitleFormat x", "import-style one.db",
          "import-csv Mine work/repository.toml --separator tab", "restore one.db --source Addin"}) {
        const Outcome outcome = runAsGuest(command);
        EXPECT_EQ(outcome.code, 1) << command;
        EXPECT_TRUE(matches(outcome.err, "^korodbc: [^\\n]*; make the file and its folder writable [^\\n]*\\n$"))
            << outcome.err;
        EXPECT_FALSE(matches(outcome.err, "damaged")) << outcome.err;
    }
    EXPECT_TRUE(files() == before);
    fs::permissions(m_folder / "work", fs::perms::all);
    for (const char* command : {"styles", "check", "edit DetailStyle 1 TitleFormat x"})
        runAsGuest(command);
    EXPECT_TRUE(files() == before) << "no side files that nobody could write";
    for (const auto& entry : fs::recursive_directory_iterator(m_folder / "work"))
        fs::permissions(entry.path(), fs::perms::all);
    const std::string source = contents(m_folder / "one.db");
    EXPECT_EQ(runAsGuest("import-style one.db").code, 0) << "from a folder that cannot be written";
    fs::permissions(m_folder, fs::perms(0755));
    fs::permissions(m_folder / "one.db", fs::perms(0644));
    output("import-style one.db");
    EXPECT_EQ(contents(m_folder / "one.db"), source) << "a source is not changed";
    EXPECT_FALSE(fs::exists(m_folder / "one.db-wal") || fs::exists(m_folder / "one.db-shm"));
}

TEST_F(SharedRepository, ATableThatAnotherProgramEditsIsRefusedAndNamed)
{
    fs::copy_file(details(), m_folder / "good.db");
    output("edit DetailStyle 1 TitleFormat 'not yet' --leave-open");
    const auto before = rows();
    korodbc::host::FileClaims other(details().string());
    korodbc::host::HostError reason;
    ASSERT_TRUE(other.take("DetailStyle", reason)) << reason.text;
    const struct {
        const char *command, *error;
    } refused[] = {
        {"edit DetailStyle 2 TitleFormat x", "the value was not written: .*; try again when that edit is closed"},
        {"import-style one.db", "was not imported: "},
        {"compact --backup", "DetailStyle is being edited by "},
        {"restore good.db", "was not restored: table DetailStyle is being edited by .*; try again"},
    };
    for (const auto& entry : refused) {
        const Outcome outcome = run(entry.command);
        EXPECT_EQ(outcome.code, 1) << entry.command;
        EXPECT_TRUE(matches(outcome.err, std::string("^korodbc: [^\\n]*(") + entry.error + ")[^\\n]*\\n$"))
            << entry.command << "\n"
            << outcome.err;
    }
    EXPECT_TRUE(matches(run("edit DetailStyle 2 TitleFormat x").err, "process " + std::to_string(::getpid())));
    EXPECT_TRUE(matches(output("status"),
                        "\\nBeing edited:\\n[^\\n]*\\n[^\\n]*\\nDetails  DetailStyle  [^\\n]* \\(process " +
                            std::to_string(::getpid()) + "\\), since [^\\n]*\\nNo edit was left open"));
    EXPECT_TRUE(matches(run("styles").err, "^korodbc: note: being edited in Details[^\\n]*DetailStyle by "));
    EXPECT_TRUE(matches(output("recover"), "Nothing to bring back"));
    EXPECT_TRUE(rows() == before);
    output("edit DetViewRequest 1 ScaleFactor 2"); // another table
    other.giveBack("DetailStyle");
    EXPECT_TRUE(matches(output("recover"), "DetailStyle in Details"));

    output("edit DetailStyle 1 TitleFormat 'not yet' --leave-open");
    sql(details(), "DROP TABLE DetailStyle_VELCopy; CREATE TABLE DetailStyle_VELCopy (other)");
    const Outcome stuck = run("edit DetViewRequest 1 ScaleFactor 3");
    EXPECT_EQ(stuck.code, 0);
    EXPECT_TRUE(
        matches(stuck.err, "^korodbc: note: [^\\n]*could not be taken back: DetailStyle[^\\n]*recover\\n$"))
        << stuck.err;
    EXPECT_TRUE(
        matches(run("edit DetailStyle 1 TitleFormat x").err, "was left open and could not be brought back"));
    const Outcome failed = run("recover");
    EXPECT_EQ(failed.code, 1);
    EXPECT_TRUE(matches(failed.err, "^korodbc: [^\\n]* DetailStyle [^\\n]*korodbc recover --discard\\n$"))
        << failed.err;
    EXPECT_TRUE(matches(output("recover --discard"), "Put aside: DetailStyle_VELCopy .Details., as table "));
    EXPECT_TRUE(matches(output("status"), "No edit is open"));
    EXPECT_TRUE(matches(title(), "not yet"));
}

TEST_F(SharedRepository, ARestoreBringsEverythingBackAndKeepsWhatWas)
{
    output("edit DetailStyle 1 TitleFormat before");
    output("import-style one.db");
    output("compact --backup");
    const fs::path backup = m_folder / "work/details.db.backup-1", garbage = m_folder / "garbage.db";
    write(garbage, std::string(5000, 'x'));
    const std::string kept = crash::dump(backup);
    output("edit DetailStyle 1 TitleFormat after");
    // what stands in the log of another program belongs to the state that is kept, and none of it comes through
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(details().c_str(), &other), SQLITE_OK);
    sqlite3_exec(other, "PRAGMA wal_autocheckpoint = 0; UPDATE DetailStyle SET TitleFormat = 'in the log'",
                 nullptr, nullptr, nullptr);
    EXPECT_TRUE(matches(output("restore work/details.db.backup-1"),
                        "data source Details from work/details.db.backup-1.\\nIts state before is kept in "
                        "work/details.db.backup-2.\\n$"));
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    const Outcome locked = run("restore work/details.db.backup-2");
    EXPECT_EQ(locked.code, 1);
    EXPECT_TRUE(
        matches(locked.err, "^korodbc: [^\\n]* was not restored: database is locked; try again [^\\n]*\\n$"))
        << locked.err;
    sqlite3_close(other);
    EXPECT_TRUE(crash::dump(details()) == kept);
    EXPECT_FALSE(fs::exists(m_folder / "work/details.db.backup-3"));
    output("restore work/details.db.backup-2");
    EXPECT_TRUE(matches(title(), "in the log"));
    const std::function<void()> losses[] = {
        [&] { fs::remove(details()); }, [&] { damage(details()); },
        [&] { fs::copy_file(garbage, details(), fs::copy_options::overwrite_existing); }};
    for (const auto& lose : losses) {
        lose();
        output("restore work/details.db.backup-1");
        EXPECT_TRUE(crash::dump(details()) == kept);
        output("check");
    }
    EXPECT_TRUE(contents(m_folder / "work/details.db.backup-5") == contents(garbage))
        << "also what is no database";
}

TEST_F(SharedRepository, ATransferThatFailsLeavesEveryRowAsItWas)
{
    output("export-process 1 full.db");
    for (const fs::path& file : {m_folder / "two.db", details()}) // the second new row there is one too many
        sql(file, "CREATE UNIQUE INDEX once ON DetViewRequest ([Key] > 0) WHERE [Key] > " +
                      std::to_string(largestKey(file, "DetViewRequest")));
    const auto before = rows();
    for (const char* command : {"import-style two.db --style 1", "import-process full.db", "export-style 1 two.db",
                                "export-process 1 two.db"}) {
        const Outcome outcome = run(command);
        EXPECT_EQ(outcome.code, 1) << command;
        EXPECT_TRUE(matches(outcome.err, "^korodbc: [^\\n]* was not (im|ex)ported: [^\\n]*\\n$")) << outcome.err;
        EXPECT_TRUE(rows() == before) << command;
    }
    const Outcome full = runIn(m_folder, "export-style 1 new.db", "trap '' XFSZ; ulimit -f 200;");
    EXPECT_EQ(full.code, 1);
    EXPECT_TRUE(matches(full.err, "^korodbc: [^\\n]*I/O error[^\\n]*full[^\\n]*\\n$")) << full.err;
    EXPECT_FALSE(matches(full.err, "writable")) << full.err;
    EXPECT_TRUE(rows() == before) << "a new file is not there at all";
}

TEST_F(SharedRepository, LeftOversOfKilledRunsGoAndThoseOfRunningOnesStay)
{
    const std::vector<std::string> leftOvers = {"new.db.korodbc-new-abcdef", "made.korodbc-new-abcdef",
                                                "work/details.db.backup.korodbc-new-abcdef"};
    for (const std::string& name : leftOvers) {
        fs::create_directories(m_folder / name / "inner");
        write(m_folder / name / "inner/file", "half");
    }
    const int running = ::open((m_folder / leftOvers[0]).c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(::flock(running, LOCK_EX), 0);
    output("export-style 1 new.db");
    EXPECT_TRUE(fs::exists(m_folder / leftOvers[0] / "inner/file"));
    ::close(running);
    fs::remove(m_folder / "new.db");
    output("export-style 1 new.db");
    output("import-style new.db");
    output("init made");
    output("compact --backup");
    for (const std::string& name : leftOvers)
        EXPECT_FALSE(fs::exists(m_folder / name)) << name;
    EXPECT_FALSE(fs::exists(m_folder / "made.db"));
}

TEST_F(SharedRepository, ABrokenDatabaseStopsNothingThatDoesNotNeedIt)
{
    write(m_folder / "work/addin.db", std::string(5000, 'x'));
    output("styles");
    const Outcome edited = run("edit DetailStyle 1 TitleFormat x");
    EXPECT_EQ(edited.code, 0);
    EXPECT_TRUE(matches(edited.err, "^korodbc: note: [^\\n]*addin.db[^\\n]*restore FILE --source \"Addin\"\\n$"))
        << edited.err;
    EXPECT_EQ(run("import-style one.db").code, 0);
    EXPECT_EQ(run("recover").code, 3);
    expectRefused("styles --source Addin", 3, "addin.db: file is not a database; [^\\n]*restore");
}
