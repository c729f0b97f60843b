#include "maintenance/KorOdbcGUI.h"
#include "support/RepositoryFixture.h"

#include <functional>

namespace {

/// A table "Plates" with its copy "Plates_Copy", and the alias "MyPlates" for it.
class TableMaintenanceTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        sql(configuration, {"INSERT INTO TableAliases VALUES (1, 'MyPlates', 'Plates'), (2, 'Loop', 'Loop')"});
        sql(details, {"CREATE TABLE Plates (Key INTEGER PRIMARY KEY, Name TEXT, Width INTEGER)",
                      "INSERT INTO Plates VALUES (1, 'it''s', 10), (2, 'ä[b]%d', 20), (3, '板🔩', 30)"});
    }
    static const Texts plates;
};
const Texts TableMaintenanceTest::plates = {"1|it's|10", "2|ä[b]%d|20", "3|板🔩|30"};

/// Counts the transactions that were stored.
int commits(const StatementRecorder& statements)
{
    int count = 0;
    for (const auto& event : statements.events())
        count += event.sql == L"COMMIT" ? 1 : 0;
    return count;
}

TEST_F(TableMaintenanceTest, StatementsAndResults)
{
    using Gui = KorOdbcGUI;
    const KorString plates(L"Plates"), alias(L"MyPlates"), missing(L"Missing");
    struct Case {
        std::function<int()> call;
        int result;
        Texts statements;
        Texts rows; // of "Plates" afterwards
    };
    const Texts all = TableMaintenanceTest::plates;
    const std::vector<Case> cases = {
        {[&] { return Gui::deleteTableInformation(plates); }, 1, {"DELETE FROM [Plates] "}, {}},
        {[&] { return Gui::deleteTableInformation(plates, details); }, 1, {"DELETE FROM [Plates] "}, {}},
        {[&] { return Gui::deleteTableInformation(alias); }, 1, {"DELETE FROM [Plates] "}, {}},
        {[&] { return Gui::deleteTableInformation(alias, details); }, 1, {"DELETE FROM [Plates] "}, {}},
        {[&] { return Gui::deleteTableInformation(plates, L"WHERE [Key]=3"); },
         1,
         {"DELETE FROM [Plates] WHERE [Key]=3"},
         {all[0], all[1]}},
        {[&] { return Gui::deleteTableInformation(alias, L"WHERE [Name]='ä[b]%d'", details); },
         1,
         {"DELETE FROM [Plates] WHERE [Name]='ä[b]%d'"},
         {all[0], all[2]}},
        {[&] { return Gui::deleteTableInformation(plates, L"WHERE [No]=3"); },
         0,
         {"DELETE FROM [Plates] WHERE [No]=3"},
         all},
        {[&] { return Gui::deleteTableInformation(plates, KorDSNDefinitions::kProfiles); },
         0,
         {"DELETE FROM [Plates] "},
         all},
        {[&] { return Gui::deleteTableInformation(missing); }, 0, {}, all},
        {[&] { return Gui::deleteTableInformation(L"Loop"); }, 0, {}, all},
        {[&] { return Gui::updateTableInformation(alias, L"[Name]='100% %s'", L"[Key]=1"); },
         1,
         {"UPDATE [Plates] SET [Name]='100% %s' WHERE [Key]=1"},
         {"1|100% %s|10", all[1], all[2]}},
        {[&] { return Gui::updateTableInformation(plates, L"[Width]=[Width]+1", L"[Key]>1"); },
         1,
         {"UPDATE [Plates] SET [Width]=[Width]+1 WHERE [Key]>1"},
         {all[0], "2|ä[b]%d|21", "3|板🔩|31"}},
        {[&] { return Gui::updateTableInformation(plates, L"[No]=1", L"[Key]=1"); },
         0,
         {"UPDATE [Plates] SET [No]=1 WHERE [Key]=1"},
         all},
        {[&] { return Gui::updateTableInformation(missing, L"[No]=1", L"[Key]=1"); }, 0, {}, all},
        {[&] { return Gui::dropTable(alias); }, 1, {"DROP TABLE [Plates]"}, {}},
        {[&] { return Gui::dropTable(plates, details); }, 1, {"DROP TABLE [Plates]"}, {}},
        {[&] { return Gui::dropTable(missing, details); }, 0, {"DROP TABLE [Missing]"}, all},
        {[&] { return Gui::dropTable(missing); }, 0, {}, all},
        {[&] { return Gui::dropColumn(alias, L"Name"); },
         1,
         {"ALTER TABLE Plates DROP COLUMN Name"},
         {"1|10", "2|20", "3|30"}},
        {[&] { return Gui::dropColumn(plates, L"Width", details); },
         1,
         {"ALTER TABLE Plates DROP COLUMN Width"},
         {"1|it's", "2|ä[b]%d", "3|板🔩"}},
        {[&] { return Gui::dropColumn(plates, L"No"); }, 0, {"ALTER TABLE Plates DROP COLUMN No"}, all},
        {[&] { return Gui::setNewColumns(plates, korTexts({})); }, -1, {}, all},
        {[&] { return Gui::setNewColumns(missing, korTexts({}), details); }, -1, {}, all},
        {[&] { return Gui::setNewColumns(missing, korTexts({"A INTEGER"})); }, 0, {}, all},
        {[&] {
             return Gui::setNewColumns(alias, korTexts({"[A b] INTEGER", "C TEXT"}));
         },
         1,
         {"ALTER TABLE Plates ADD [A b] INTEGER", "ALTER TABLE Plates ADD C TEXT"},
         {all[0] + "||", all[1] + "||", all[2] + "||"}},
        {[&] {
             return Gui::setNewColumns(plates, korTexts({"A INTEGER", "A INTEGER", "C TEXT"}), details);
         },
         0,
         {"ALTER TABLE Plates ADD A INTEGER", "ALTER TABLE Plates ADD A INTEGER"},
         {all[0] + "|", all[1] + "|", all[2] + "|"}},
    };
    for (std::size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(i);
        RepositoryTest::TearDown();
        SetUp();
        StatementRecorder statements;
        EXPECT_EQ(cases[i].call(), cases[i].result);
        EXPECT_EQ(statements.take(), cases[i].statements);
        EXPECT_EQ(rows(details, "Plates"), cases[i].rows);
    }
}

TEST_F(TableMaintenanceTest, OperationsGoToTheGivenDataSource)
{
    sql(configuration,
        {"CREATE TABLE Plates (Key INTEGER PRIMARY KEY, Name TEXT)", "INSERT INTO Plates VALUES (7, 'other')"});
    StatementRecorder statements;
    KorOdbcGUI::deleteTableInformation(L"Plates", configuration);
    EXPECT_EQ(statements.events().at(0).dsn, configuration);
    EXPECT_EQ(rows(details, "Plates"), plates);
    EXPECT_EQ(rows(configuration, "Plates"), Texts{});

    const KorDSNRequest request(configuration, KorDSNDefinitions::kBase); // now found there first
    EXPECT_EQ(KorOdbcGUI::dropTable(L"Plates"), 1);
    EXPECT_FALSE(exists(configuration, "Plates"));
    EXPECT_TRUE(exists(details, "Plates"));
}

TEST_F(TableMaintenanceTest, BackupAndRestore)
{
    for (const bool inSource : {false, true}) {
        SCOPED_TRACE(inSource);
        const KorString table(L"MyPlates"), copy(L"Plates_Copy");
        EXPECT_EQ(inSource ? KorOdbcGUI::backupTable(table, copy, details) : KorOdbcGUI::backupTable(table, copy),
                  1);
        EXPECT_EQ(rows(details, "Plates_Copy"), plates);
        sql(details, {"DELETE FROM Plates WHERE Key > 1", "UPDATE Plates SET Name = 'edited'",
                      "INSERT INTO Plates VALUES (9, 'new', 0)"});

        StatementRecorder statements;
        EXPECT_EQ(
            inSource ? KorOdbcGUI::restoreTable(table, copy, details) : KorOdbcGUI::restoreTable(table, copy), 1);
        EXPECT_EQ(statements.take(),
                  (Texts{"DELETE FROM [Plates] ", "INSERT INTO [Plates] SELECT * FROM  [Plates_Copy]",
                         "DROP TABLE [Plates_Copy]"}));
        EXPECT_EQ(rows(details, "Plates"), plates);
        EXPECT_FALSE(exists(details, "Plates_Copy"));
    }
}

TEST_F(TableMaintenanceTest, BackupReplacesAnOlderCopyAndNeedsATable)
{
    sql(details, {"CREATE TABLE Plates_Copy (Old TEXT)"});
    EXPECT_EQ(KorOdbcGUI::backupTable(L"Plates", L"Plates_Copy"), 1);
    EXPECT_EQ(columns(details, "Plates_Copy"), columns(details, "Plates"));
    EXPECT_EQ(KorOdbcGUI::backupTable(L"Missing", L"Missing_Copy"), 0);
    EXPECT_EQ(KorOdbcGUI::backupTable(L"Plates", L"Plates_Copy", KorDSNDefinitions::kProfiles), 0);
    EXPECT_EQ(KorOdbcGUI::backupTable(L"Plates", L"Plates_Copy", KorDSNDefinitions::kUnresolved), 0);
}

TEST_F(TableMaintenanceTest, RestoringFromACopyWithOtherColumns)
{
    const Texts copies[] = {{"CREATE TABLE Plates_Copy (Key INTEGER PRIMARY KEY, Name TEXT)"},
                            {"CREATE TABLE Plates_Copy (Key INTEGER PRIMARY KEY, A TEXT, B TEXT, C TEXT)"}};
    for (const Texts& copy : copies) {
        SCOPED_TRACE(copy[0]);
        RepositoryTest::TearDown();
        SetUp();
        sql(details, copy);
        StatementRecorder statements;
        EXPECT_EQ(KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy", details), -1);
        EXPECT_EQ(statements.take(), Texts{});
        EXPECT_EQ(rows(details, "Plates"), plates);

        // without a data source the rows are gone, and the copy stays for another attempt
        EXPECT_EQ(KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy"), 0);
        EXPECT_EQ(statements.take(),
                  (Texts{"DELETE FROM [Plates] ", "INSERT INTO [Plates] SELECT * FROM  [Plates_Copy]"}));
        EXPECT_EQ(rows(details, "Plates"), Texts{});
        EXPECT_TRUE(exists(details, "Plates_Copy"));
    }
}

TEST_F(TableMaintenanceTest, FailedInsertKeepsTheCopy)
{
    // as many columns, but a row that the table refuses
    sql(details, {"CREATE TABLE Plates_Copy (Key TEXT, Name TEXT, Width INTEGER)",
                  "INSERT INTO Plates_Copy VALUES ('no number', 'x', 1)"});
    EXPECT_EQ(KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy", details), 0);
    EXPECT_EQ(rows(details, "Plates_Copy"), Texts{"no number|x|1"});
    sql(details, {"UPDATE Plates_Copy SET Key = 5"});
    EXPECT_EQ(KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy", details), 1);
    EXPECT_EQ(rows(details, "Plates"), Texts{"5|x|1"});
    // nothing to restore from, nothing to restore into
    EXPECT_EQ(KorOdbcGUI::restoreTable(L"Missing", L"Missing_Copy", details), 0);
    EXPECT_EQ(KorOdbcGUI::restoreTable(L"Missing", L"Missing_Copy"), 0);
}

TEST_F(TableMaintenanceTest, SurplusColumnsGoFromTheEnd)
{
    struct Case {
        const char* copy; // columns of the copy
        int result;
        Texts statements;
        Texts columns;
    };
    const Texts drops = {"ALTER TABLE Plates DROP COLUMN Width", "ALTER TABLE Plates DROP COLUMN Name"};
    const Texts all = {"Key", "Name", "Width"};
    for (const bool inSource : {false, true}) {
        for (const Case& one : {
                 Case{"A", 1, drops, {"Key"}}, // by count and position, whatever the names
                 {"Key, Width", 1, {drops[0]}, {"Key", "Name"}},
                 {"A, B, C", 1, {}, all},
                 {"A, B, C, D, E", 1, {}, all},
                 {"", 0, {}, all}, // no copy
             }) {
            SCOPED_TRACE(one.copy);
            RepositoryTest::TearDown();
            SetUp();
            if (*one.copy != 0)
                sql(details, {"CREATE TABLE Plates_Copy (" + std::string(one.copy) + ")"});
            StatementRecorder statements;
            EXPECT_EQ(inSource ? KorOdbcGUI::restoreTableStructure(L"MyPlates", L"Plates_Copy", details)
                               : KorOdbcGUI::restoreTableStructure(L"MyPlates", L"Plates_Copy"),
                      one.result);
            EXPECT_EQ(statements.take(), one.statements);
            EXPECT_EQ(columns(details, "Plates"), one.columns);
            EXPECT_EQ(rows(details, "Plates").size(), 3u);
        }
    }
    EXPECT_EQ(KorOdbcGUI::restoreTableStructure(L"Missing", L"Plates"), 0);
    EXPECT_EQ(KorOdbcGUI::restoreTableStructure(L"Plates", L"Plates", KorDSNDefinitions::kUnresolved), 0);
}

TEST_F(TableMaintenanceTest, TwelveColumnsBackToTen)
{
    sql(details, {"CREATE TABLE Wide (Key INTEGER PRIMARY KEY, C2, C3, C4, C5, C6, C7, C8, C9, C10)",
                  "INSERT INTO Wide(Key, C10) VALUES (1, 'x')"});
    EXPECT_EQ(KorOdbcGUI::backupTable(L"Wide", L"Wide_Copy"), 1);
    EXPECT_EQ(KorOdbcGUI::setNewColumns(L"Wide", korTexts({"C11 TEXT", "C12 TEXT"})), 1);
    sql(details, {"UPDATE Wide SET C11 = 'y', C10 = 'z'"});
    StatementRecorder statements;
    EXPECT_EQ(KorOdbcGUI::restoreTableStructure(L"Wide", L"Wide_Copy"), 1);
    EXPECT_EQ(statements.take(), (Texts{"ALTER TABLE Wide DROP COLUMN C12", "ALTER TABLE Wide DROP COLUMN C11"}));
    EXPECT_EQ(KorOdbcGUI::restoreTable(L"Wide", L"Wide_Copy", details), 1);
    EXPECT_EQ(rows(details, "Wide"), Texts{"1|||||||||x"});
}

TEST_F(TableMaintenanceTest, NamesAreNamesAndNothingElse)
{
    for (const std::string name : {"it's 100% %s", "Träger 板", "🔩", "a [b", "x; --"}) {
        SCOPED_TRACE(name);
        const KorString table = KorString::fromUtf8(name), copy = table + L"_VELCopy";
        sql(details, {"CREATE TABLE [" + name + "] (Key INTEGER PRIMARY KEY, Name TEXT)",
                      "INSERT INTO [" + name + "] VALUES (1, 'a')"});
        EXPECT_EQ(KorOdbcGUI::backupTable(table, copy), 1);
        EXPECT_EQ(KorOdbcGUI::updateTableInformation(table, L"[Name]='b'", L"[Key]=1"), 1);
        EXPECT_EQ(rows(details, name), Texts{"1|b"});
        EXPECT_EQ(KorOdbcGUI::restoreTable(table, copy, details), 1);
        EXPECT_EQ(rows(details, name), Texts{"1|a"});
        EXPECT_EQ(KorOdbcGUI::dropTable(table), 1);
    }
    // a closing bracket ends the name: the statement fails and harms no other table
    for (const wchar_t* name : {L"Plates] ; DROP TABLE [Plates", L"a]b"}) {
        EXPECT_EQ(KorOdbcGUI::dropTable(name, details), 0);
        EXPECT_EQ(KorOdbcGUI::deleteTableInformation(name, details), 0);
    }
    EXPECT_EQ(rows(details, "Plates"), plates);
}

TEST_F(TableMaintenanceTest, EachOperationIsStoredAtOnce)
{
    sql(details, {"CREATE TABLE One_Copy (Key)"});
    const std::function<int()> operations[] = {
        [] { return KorOdbcGUI::backupTable(L"Plates", L"Plates_Copy"); },
        [] {
            return KorOdbcGUI::setNewColumns(L"Plates", korTexts({"A TEXT", "B TEXT"}));
        },
        [] { return KorOdbcGUI::restoreTableStructure(L"Plates", L"Plates_Copy"); },
        [] { return KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy"); },
        [] { return KorOdbcGUI::backupTable(L"Plates", L"Plates_Copy", details); },
        [] { return KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy", details); },
        [] { return KorOdbcGUI::restoreTableStructure(L"Plates", L"One_Copy", details); },
    };
    int i = 0;
    for (const auto& operation : operations) {
        SCOPED_TRACE(i++);
        StatementRecorder statements(true);
        EXPECT_EQ(operation(), 1);
        EXPECT_EQ(commits(statements), 1);
    }
    EXPECT_EQ(columns(details, "Plates"), Texts{"Key"});
}

TEST_F(TableMaintenanceTest, RecordsFollowTheirTable)
{
    // a described table, read through its records before and after
    const KorString copy(L"Authors_VELCopy");
    sql(configuration, {"INSERT INTO Authors VALUES ('ACME', 'Acme')"});
    EXPECT_EQ(KorOdbcGUI::backupTable(L"Authors", copy), 1);
    KorCellData name;
    const auto companyName = [&] {
        return KorDatabaseAccess::getTableColumnValue(configuration, L"Authors", L"CompanyText", L"ACME", 1,
                                                      name) == 1
                   ? name.getStringW().toUtf8()
                   : "none";
    };
    EXPECT_EQ(KorOdbcGUI::updateTableInformation(L"Authors", L"[CompanyName]='edited'", L"1=1"), 1);
    EXPECT_EQ(companyName(), "edited");
    EXPECT_EQ(KorOdbcGUI::restoreTable(L"Authors", copy), 1);
    EXPECT_EQ(companyName(), "Acme");
    EXPECT_EQ(KorOdbcGUI::deleteTableInformation(L"Authors"), 1);
    EXPECT_EQ(companyName(), "none");
}

} // namespace
