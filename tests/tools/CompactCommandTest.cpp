#include "tools/CommandLine.h"

namespace {

/// Commands on a Details that has the style "Beam, single part" twice, with two qualifier sets of other names.
class CompactCommand : public CommandLine {
protected:
    void SetUp() override
    {
        CommandLine::SetUp();
        output("edit DetObjQualifierSet 1 RunName 'Hauptträger'");
        output("edit DetObjQualifierSet 33 RunName Löcher");
        output("import-style two.db --style 1");
    }

    fs::path details() const { return m_folder / "work/details.db"; }
    /// The tree of the beam without its keys.
    std::string beam(const std::string& source = "Details") const
    {
        return std::regex_replace(output("tree 'Beam, single part' --source " + source),
                                  std::regex("([A-Za-z]) [0-9]+\\]"), "$1]");
    }
    /// The numbers of a line of the table that compact prints: rows, duplicates, redirected, deleted.
    static std::vector<int> numbers(const std::string& out, const std::string& table)
    {
        std::smatch match;
        const std::regex line("\\n" + table + " +([0-9]+) +([0-9]+) +([0-9]+) +([0-9]+)\\n");
        EXPECT_TRUE(std::regex_search(out, match, line)) << table << "\n" << out;
        std::vector<int> values;
        for (std::size_t i = 1; i < match.size(); ++i)
            values.push_back(std::stoi(match[i]));
        values.resize(4);
        return values;
    }
    int rows(const std::string& table) const
    {
        const std::string csv = output("show " + table + " --source Details --csv");
        return static_cast<int>(std::count(csv.begin(), csv.end(), '\n')) - 1;
    }
    void expectClosed() const
    {
        EXPECT_TRUE(matches(output("status"), "No edit is open"));
        EXPECT_TRUE(matches(output("check"), "^Details: [0-9]+ references, all lead somewhere\\n"));
    }
};

} // namespace

TEST_F(CompactCommand, ADryRunSaysWhatTheRunDoesAndChangesNothing)
{
    for (const char* what : {"styles", "all"}) {
        CompactCommand::SetUp();
        const std::string command = std::string("compact ") + what, tree = beam();
        const auto before = files();
        const std::string planned = output(command + " --dry-run");
        EXPECT_EQ(files(), before);
        const std::vector<int> plan = numbers(planned, "Total");
        EXPECT_GT(plan[2], 20) << planned;
        EXPECT_GT(plan[3], 20) << planned;
        EXPECT_TRUE(matches(planned, "\\nNothing was changed\\. The run would redirect " +
                                         std::to_string(plan[2]) + " references and delete " +
                                         std::to_string(plan[3]) + " of "))
            << planned;
        const int points = rows("DetViewDimPointSelection");
        const std::string done = output(command);
        for (const char* table : {"Total", "DetObjQualifierSet", "DetViewDimPointSelection", "DetailStyle"})
            EXPECT_EQ(numbers(done, table), numbers(planned, table)) << what << " " << table;
        EXPECT_EQ(rows("DetViewDimPointSelection"), points - numbers(done, "DetViewDimPointSelection")[3]);
        EXPECT_EQ(numbers(done, "DetObjQualifierSet")[3], 2);
        EXPECT_EQ(beam(), tree) << "what the style is made of reads the same";
        expectClosed();
        const auto after = files();
        EXPECT_TRUE(matches(output(command), "Details has nothing to compact; nothing was changed\\.\\n"));
        EXPECT_EQ(files(), after);
    }
}

TEST_F(CompactCommand, ARunThatWouldLeaveReferencesToDeletedRowsIsRefused)
{
    expectRefused("compact processes", 1,
                  "[0-9]+ references to rows that would be deleted are not redirected by compacting processes "
                  ".DetViewDimPointSelection [0-9]+ \"[^\"]+\" Objects -> DetObjQualifierSet [0-9]+; .*; "
                  "\\.\\.\\..; run \"korodbc compact all\"");
    const auto before = files();
    EXPECT_TRUE(
        matches(output("compact processes --dry-run"), "\\n[0-9]+ references would be left to deleted rows"));
    EXPECT_TRUE(matches(output("compact processes --dry-run --json"),
                        "\"DetObjQualifierSet\", [^\\n]*\"Left\": [1-9][0-9]*, \"Left references\": \"Det"));
    EXPECT_EQ(files(), before);
    EXPECT_EQ(numbers(output("compact processes --keep"), "Total")[3], 0);
    expectClosed();
    EXPECT_TRUE(matches(output("compact processes --force"), "\\n[0-9]+ references were left to deleted rows"));
    const Outcome check = run("check");
    EXPECT_EQ(check.code, 1);
    EXPECT_TRUE(matches(check.out, "\\nDetails: DetObjReprMapItems [^\\n]* -> DetObjQualifierSet [0-9]+, which"));
    EXPECT_FALSE(matches(check.out, "DetailStyleMapItems"));
    EXPECT_TRUE(matches(output("status"), "No edit is open"));
}

TEST_F(CompactCommand, QualifierSetsAreMergedAndNumberedFromOne)
{
    const std::string tree = beam(), process = output("tree 1 --process");
    sql(details(), "UPDATE DetObjQualifierSet SET [Key] = 77 WHERE [Key] = 20;"
                   "UPDATE DetObjQualifierSetItem SET IdDetObjQualifierSet = 77 WHERE IdDetObjQualifierSet = 20;"
                   "UPDATE DetObjReprMapItems SET ObjQualifier = 77 WHERE ObjQualifier = 20;"
                   "UPDATE DetViewDimPointSelection SET Objects = 77 WHERE Objects = 20;"
                   "UPDATE DetailStyleMapItems SET ObjQualifierSet = 77 WHERE ObjQualifierSet = 20");
    output("check");
    const auto before = files();
    const std::string planned = output("compact qualifier-sets --dry-run");
    EXPECT_TRUE(matches(planned, "\\nQualifier sets would be numbered from 1\\.\\n")) << planned;
    EXPECT_EQ(files(), before);
    const std::string done = output("compact qualifier-sets");
    EXPECT_EQ(numbers(done, "DetObjQualifierSet"), (std::vector<int>{42, 2, 0, 2}));
    EXPECT_EQ(numbers(done, "Total"), numbers(planned, "Total"));
    EXPECT_EQ(beam(), tree);
    expectClosed();
    EXPECT_TRUE(matches(output("compact qualifier-sets"), "nothing to compact"));
    sql(details(), "UPDATE DetailStyleMapItems SET ObjQualifierSet = 41 WHERE [Key] = 5;"
                   "UPDATE DetObjQualifierSet SET [Key] = 45 WHERE [Key] = 40;"
                   "UPDATE DetObjQualifierSetItem SET IdDetObjQualifierSet = 45 WHERE IdDetObjQualifierSet = 40");
    expectRefused("compact qualifier-sets", 1,
                  "to qualifier sets that do not exist would name others .*DetailStyleMapItems 5 .*korodbc check");
}

TEST_F(CompactCommand, BackupsAreNumbered)
{
    EXPECT_TRUE(matches(output("compact --backup"),
                        "\\nA backup was kept in work/details\\.db\\.backup-1\\. Bring it back with: korodbc "
                        "restore work/details\\.db\\.backup-1\\n$"));
    fs::copy_file(m_folder / "work/details.db.backup-1", details(), fs::copy_options::overwrite_existing);
    EXPECT_TRUE(matches(output("compact --backup --csv"),
                        "\nTotal,[0-9]+,[0-9]+,[0-9]+,[0-9]+,0,,done,work/details\\.db\\.backup-2\n$"));
    output("compact --backup");
    EXPECT_FALSE(fs::exists(m_folder / "work/details.db.backup-3")) << "nothing was compacted";
}

TEST_F(CompactCommand, ARunAndItsConfirmationAreOneTransaction)
{
    for (const char* what : {"all", "qualifier-sets"}) {
        CompactCommand::SetUp();
        const Outcome traced = run(std::string("--trace compact ") + what);
        EXPECT_EQ(traced.code, 0);
        const auto times = [&](const std::string& text) {
            int number = 0;
            for (std::size_t at = 0; (at = traced.err.find(text, at)) != std::string::npos; ++at)
                ++number;
            return number;
        };
        EXPECT_EQ(times("ok      COMMIT\n"), 1) << what;
        EXPECT_EQ(times("_VELCopy"), 0) << "nobody sees a copy";
        EXPECT_EQ(times("FAILED"), 0) << what;
    }
}

TEST_F(CompactCommand, BadInputIsRefusedInOneLineAndChangesNothing)
{
    expectRefused({
        {"compact everything", 2, "\"everything\" cannot be compacted; name styles, processes, all or qual"},
        {"compact --source no", 2, "compacted in Details or Addin, not in CountryAddin Norway"},
        {"compact --source Detials", 4, "did you mean \"Details\""},
        {"compact --dry-run --backup", 2, "a dry run changes nothing"},
        {"compact --depth 1", 2, "--depth"},
    });
}

TEST_F(CompactCommand, ABadDatabaseIsRefusedInOneLineAndStaysAsItIs)
{
    const fs::path good = m_folder / "good.db";
    fs::copy_file(details(), good);
    const struct {
        std::function<void()> spoil;
        std::string arguments, error;
    } cases[] = {
        {[&] { damage(details()); }, "compact", "malformed"},
        {[&] { damageTable(details(), "DetailStyle"); }, "compact --dry-run", "details.db is damaged"},
        {[&] { sql(details(), "DROP TABLE DetViewDimStrategyNew"); }, "compact",
         "tables of Details cannot be read: table DetViewDimStrategyNew is missing; see: korodbc status"},
        {[&] { sql(details(), "DROP TABLE DetViewDimStrategyNew"); }, "compact qualifier-sets --dry-run",
         "tables of Details cannot be read: table DetViewDimStrategyNew is missing; see: korodbc status"},
        {[&] { makeReadOnly(details()); }, "compact", "Details was not compacted: .*readonly.*writable"},
    };
    for (const auto& entry : cases) {
        fs::copy_file(good, details(), fs::copy_options::overwrite_existing);
        entry.spoil();
        expectRefused(entry.arguments, entry.error == "malformed" ? 3 : 1, entry.error);
    }
    fs::copy_file(good, details(), fs::copy_options::overwrite_existing);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(details().c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    const Outcome locked = run("compact --backup");
    EXPECT_EQ(locked.code, 1);
    EXPECT_TRUE(matches(locked.err, "^korodbc: Details was not compacted: [^\\n]*locked[^\\n]*\\n$"))
        << locked.err;
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_GT(numbers(output("compact --dry-run"), "Total")[3], 20) << "all is still to be done";
    expectClosed();
}
