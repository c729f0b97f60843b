#include "support/CrashCycle.h"
#include "support/OtherProgram.h"
#include "support/RepositoryFixture.h"

#include <korodbc/edit/KorOdbcMan.h>

#include <fstream>
#include <memory>
#include <random>

namespace {

using Batch = KorDatabaseBatch;

class BatchesTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        for (const eDSN dsn : {details, configuration})
            sql(dsn, {"CREATE TABLE T ([Key] INTEGER PRIMARY KEY, Name TEXT)"});
    }
    static void append(eDSN dsn, int key)
    {
        KorCellData cell(key);
        EXPECT_EQ(KorDatabaseAccess::appendNewLine(dsn, L"T", cell, true, true), 1);
    }
    static std::string keys(eDSN dsn)
    {
        std::string text;
        for (const std::string& row : rows(dsn, "T"))
            text += row.substr(0, row.find('|')) + " ";
        return text;
    }
};

/// Random nests of batches over two databases, kept or undone, against lists of keys that are copied at each
/// beginning.
TEST_F(BatchesTest, NestedBatchesKeepOrUndoWhatTheyWrote)
{
    struct State {
        std::string written[2];
        int undone = 0;
    };
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        sql(details, {"DELETE FROM T"});
        sql(configuration, {"DELETE FROM T"});
        std::mt19937 random(seed);
        const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
        const eDSN places[] = {details, configuration};
        State now;
        int undone = 0;
        std::vector<std::pair<std::unique_ptr<Batch>, State>> open;
        std::vector<int> actions; // how many belong to each open batch
        for (int step = 1; step <= 60; ++step) {
            switch (pick(5)) {
            case 0:
                open.emplace_back(std::make_unique<Batch>(), now);
                actions.push_back(0);
                break;
            case 1:
            case 2: {
                const int place = pick(2);
                append(places[place], step);
                now.written[place] += std::to_string(step) + " ";
                if (!open.empty() && pick(2) == 0) {
                    Batch::whenUndone(places[place], [&] { ++undone; });
                    ++actions.back();
                }
                break;
            }
            case 3:
                if (!open.empty()) {
                    EXPECT_EQ(open.back().first->end(7), 7);
                    const int inner = actions.back();
                    actions.pop_back();
                    if (!actions.empty())
                        actions.back() += inner;
                    open.pop_back();
                }
                break;
            case 4:
                if (!open.empty()) {
                    const int before = undone;
                    EXPECT_EQ(open.back().first->undo(3), 3);
                    EXPECT_EQ(undone - before, actions.back());
                    now = open.back().second;
                    actions.pop_back();
                    open.pop_back();
                }
                break;
            }
            for (int place = 0; place < 2; ++place)
                ASSERT_EQ(keys(places[place]), now.written[place]) << "step " << step;
        }
        while (!open.empty())
            open.pop_back(); // kept
        for (int place = 0; place < 2; ++place)
            EXPECT_EQ(keys(places[place]), now.written[place]);
    }
}

TEST_F(BatchesTest, AnExceptionUndoes)
{
    try {
        const Batch batch;
        append(details, 1);
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(keys(details), "");
    for (const char* statement : {"COMMIT", "ROLLBACK", "SAVEPOINT a", "BEGIN"}) {
        Batch batch;
        append(details, 2);
        EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, KorString::fromUtf8(statement)), 0) << statement;
        batch.undo();
    }
    EXPECT_EQ(keys(details), "");
    EXPECT_EQ(Batch::lock(details), 0); // outside a batch
}

/// Databases in files, and another program that has claimed a table.
class ClaimsTest : public testing::Test, protected crash::FaultyRepository {
protected:
    using Man = KorOdbcMan;
    static constexpr eDSN inDetails = KorDSNDefinitions::kDetails;
    static constexpr auto styles = Man::kDetailStyle;
    static constexpr auto first = Man::kFirstCopy;

    void SetUp() override
    {
        open();
        details::fillStyle(inDetails, details::awkward);
    }
    void TearDown() override { close(); }

    void inRepository(const std::function<void()>& act)
    {
        const auto folder = m_folder->path();
        korodbc::host::closeRepository();
        const OtherProgram other([&](const std::string&) {
            crash::start(folder);
            return std::to_string(edit(L"theirs"));
        });
        ASSERT_EQ(other.ask("edit"), "1"); // and is killed in the end
        std::string error;
        ASSERT_TRUE(korodbc::host::openRepository(folder, error)) << error;
        act();
    }
    static int edit(const wchar_t* title)
    {
        return Man::setAttribute(styles, KorOdbcKey(1), 5, KorString(title), 1, first);
    }
    static std::string title()
    {
        StructDetailStyle style;
        RecordAccess::resetCache(descriptionOf<StructDetailStyle>());
        EXPECT_EQ(StructDetailStyleMarshal::getStructByKey(1, style), 1);
        return style.titleFormat.toUtf8();
    }
    bool hasClaims() const { return std::filesystem::exists(file().string() + "-claims"); }
};

TEST_F(ClaimsTest, AreTakenWithTheFirstCopyAndGivenBackWithTheLast)
{
    EXPECT_FALSE(hasClaims());
    EXPECT_EQ(edit(L"a"), 1);
    EXPECT_EQ(Man::setAttribute(styles, KorOdbcKey(1), 5, KorString(L"b"), 1, Man::kThirdCopy), 1);
    EXPECT_EQ(KorDatabaseAccess::isTableClaimed(inDetails, L"DetailStyle"), 1);
    EXPECT_EQ(Man::setStatusOnUpdate(styles, first), 1);
    EXPECT_EQ(Man::setStatusOnCancel(styles, Man::kThirdCopy), 1);
    EXPECT_TRUE(hasClaims());
    {
        Batch batch; // a closing that is undone closes nothing
        EXPECT_EQ(Man::setStatusOnOK(styles, first), 1);
        batch.undo();
    }
    EXPECT_TRUE(Man::isOpen(styles, first));
    EXPECT_TRUE(hasClaims());
    {
        Batch batch; // nor does a new edit in the same batch lose the claim
        EXPECT_EQ(Man::setStatusOnOK(styles, first), 1);
        EXPECT_EQ(edit(L"c"), 1);
        EXPECT_EQ(batch.end(1), 1);
    }
    EXPECT_EQ(KorDatabaseAccess::isTableClaimed(inDetails, L"DetailStyle"), 1);
    EXPECT_EQ(Man::setStatusOnCancel(styles, first), 1);
    EXPECT_FALSE(hasClaims());
    EXPECT_EQ(title(), "a");
    {
        Batch batch; // an edit that is undone never was
        EXPECT_EQ(edit(L"d"), 1);
        EXPECT_TRUE(hasClaims());
        batch.undo();
    }
    EXPECT_FALSE(hasClaims());
    EXPECT_FALSE(Man::isOpen(styles, first));
}

TEST_F(ClaimsTest, KeepOthersOut)
{
    inRepository([] {
        EXPECT_EQ(Man::initializeTables(), 1); // takes nobody's edit back
        EXPECT_EQ(title(), "theirs");
        for (const auto& [name, act] : std::initializer_list<std::pair<const char*, std::function<int()>>>{
                 {"edit", [] { return edit(L"mine"); }},
                 {"delete", [] { return Man::deleteRecord(styles, KorOdbcKey(1), first); }},
                 {"statement",
                  [] { return KorDatabaseAccess::doSQLStatement(inDetails, L"DELETE FROM DetailStyle"); }},
                 {"drop",
                  [] {
                      return KorDatabaseAccess::doSQLStatement(inDetails, L"DROP TABLE [DetailStyle_VELCopy]");
                  }},
                 {"copy",
                  [] {
                      return KorDatabaseAccess::copyTable(inDetails, L"Linetypes", L"DetailStyle_VELCopy", false);
                  }},
                 {"line", [] { return KorDatabaseAccess::deleteLine(L"DetailStyle", KorCellData(1)); }},
             }) {
            EXPECT_EQ(act(), 0) << name;
            const std::string error = korodbc::host::lastError();
            EXPECT_NE(error.find("table DetailStyle is being edited by "), std::string::npos) << name << error;
            EXPECT_NE(error.find("(process "), std::string::npos) << error;
            EXPECT_FALSE(Man::isOpen(styles, first)) << name;
        }
        EXPECT_EQ(Man::appendNewRecord(styles, 0, first), -1);
        // a copy that could not be taken counts as taken, and closing it touches nothing of the other's
        Man::setStatus(styles, Man::eModified, first);
        EXPECT_TRUE(Man::isOpen(styles, first));
        EXPECT_EQ(Man::setStatusOnCancel(styles, first), -1);
        EXPECT_EQ(Man::setStatusOnOK(styles, first), 0);
        EXPECT_FALSE(Man::isOpen(styles, first));
        EXPECT_EQ(KorDatabaseAccess::doesTableExists(inDetails, L"DetailStyle_VELCopy"), 1);
        EXPECT_EQ(title(), "theirs");
        const auto claims = korodbc::host::claimedByOthers(inDetails, KorDSNDefinitions::kBase);
        ASSERT_EQ(claims.size(), 1u);
        EXPECT_EQ(claims[0].table, "DetailStyle");
    });
    // the other was killed: an edit brings its table back first
    EXPECT_TRUE(hasClaims());
    EXPECT_EQ(title(), "theirs");
    EXPECT_EQ(Man::setAttribute(styles, KorOdbcKey(1), 7, KorString(L"cut"), 1, first), 1);
    EXPECT_EQ(title(), "T %s");
    EXPECT_EQ(Man::setStatusOnOK(styles, first), 1);
    EXPECT_FALSE(hasClaims());
}

/// A copy that does not fit its table stays at a start, stops nothing and is put aside for the next edit.
TEST_F(ClaimsTest, CopiesThatDoNotFitArePutAside)
{
    KorDatabaseAccess::doSQLStatement(inDetails, L"CREATE TABLE DetailStyle_VELCopy AS SELECT 1 AS x");
    KorDatabaseAccess::doSQLStatement(inDetails, L"CREATE TABLE Linetypes_VELCopy AS SELECT * FROM Linetypes");
    KorDatabaseAccess::doSQLStatement(inDetails, L"DELETE FROM Linetypes");
    Man::m_bInitializeTables = true;
    EXPECT_EQ(Man::initializeTables(), 1);
    StructLinetypes line;
    EXPECT_EQ(StructLinetypesMarshal::getStructByKey(1, line), 1);
    EXPECT_EQ(title(), "T %s");
    EXPECT_EQ(Man::bringBackLeftCopies(), 0);
    EXPECT_EQ(edit(L"new"), 1);
    EXPECT_EQ(KorDatabaseAccess::doesTableExists(inDetails, L"DetailStyle_LeftCopy1"), 1);
    EXPECT_EQ(Man::setStatusOnCancel(styles, first), 1);
    EXPECT_EQ(title(), "T %s");
    EXPECT_EQ(Man::bringBackLeftCopies(), 1);
}

/// Another program writes: an edit fails as long as it does; a start that could bring nothing back is repeated.
TEST_F(ClaimsTest, WhatIsLockedOutIsDoneLater)
{
    KorDatabaseAccess::doSQLStatement(
        inDetails, L"CREATE TABLE Linetypes_VELCopy AS SELECT * FROM Linetypes WHERE [Key] = 2");
    Man::m_bInitializeTables = true;
    const std::string before = state();
    whileLocked([] {
        EXPECT_EQ(Man::initializeTables(), 0);
        EXPECT_NE(edit(L"mine"), 1);
    });
    EXPECT_EQ(state(), before);
    EXPECT_EQ(Man::initializeTables(), 1);
    EXPECT_EQ(state().find("_VELCopy]"), std::string::npos);
}

TEST_F(ClaimsTest, AnotherRepositoryIsAFreshStart)
{
    EXPECT_EQ(edit(L"left open"), 1);
    const auto folder = m_folder->path();
    korodbc::host::closeRepository();
    EXPECT_EQ(Man::initializeTables(), 0); // none is open
    std::string error;
    ASSERT_TRUE(korodbc::host::openRepository(folder, error)) << error;
    EXPECT_FALSE(Man::isOpen(styles, first));
    EXPECT_TRUE(Man::m_bInitializeTables);
    EXPECT_EQ(Man::initializeTables(), 1);
    EXPECT_EQ(title(), "T %s");
}

/// A repository whose folder cannot be written is looked at whole, its log included, and stays as it is.
TEST_F(ClaimsTest, LookingWhereNothingCanBeWritten)
{
    const auto folder = m_folder->path();
    for (const bool withLog : {false, true}) {
        SCOPED_TRACE(withLog);
        EXPECT_EQ(edit(L"seen"), 1);
        EXPECT_EQ(Man::setStatusOnOK(styles, first), 1);
        const auto copy = folder.parent_path() / (folder.filename().string() + "-fixed");
        if (!withLog)
            korodbc::host::closeRepository(); // folds the log
        crash::copyFolder(folder, copy);
        korodbc::host::closeRepository(); // no open database goes into the child
        for (const char* database : {"details.db", "configuration.db"})
            std::filesystem::remove(copy / (std::string(database) + "-shm"));
        for (const auto& entry : std::filesystem::directory_iterator(copy))
            std::filesystem::permissions(entry, std::filesystem::perms(0444));
        std::filesystem::permissions(copy, std::filesystem::perms(0555));
        const pid_t child = ::fork();
        if (child == 0) {
            faults::remove();
            crash::require(::geteuid() != 0 || ::setuid(65534) == 0, "becoming another user");
            std::string error;
            crash::require(korodbc::host::openRepository(copy, error, korodbc::host::Access::Look), "opening");
            crash::require(title() == "seen", "reading");
            crash::require(edit(L"written") != 1, "refusing");
            crash::require(!korodbc::host::lastError().empty(), "saying why");
            korodbc::host::closeRepository();
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        std::filesystem::permissions(copy, std::filesystem::perms(0755));
        std::filesystem::remove_all(copy);
        std::string error;
        ASSERT_TRUE(korodbc::host::openRepository(folder, error)) << error;
    }
}

} // namespace
