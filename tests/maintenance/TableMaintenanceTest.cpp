#include "support/RepositoryFixture.h"

#include <korodbc/maintenance/KorOdbcGUI.h>

#include <algorithm>
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

TEST_F(TableMaintenanceTest, StatementsAndResults)
{
    using Gui = KorOdbcGUI;
    const KorString table(L"Plates"), alias(L"MyPlates"), missing(L"Missing");
    const auto erase = [](const auto&... args) { return Gui::deleteTableInformation(args...); };
    const auto change = [](const auto&... args) { return Gui::updateTableInformation(args...); };
    const auto add = [](const KorString& to, const Texts& columns, auto... dsn) {
        return Gui::setNewColumns(to, korTexts(columns), dsn...);
    };
    const Texts all = plates;
    int number = 0;
    const auto check = [&](const auto& call, int result, const Texts& statements, const Texts& rowsAfter) {
        SCOPED_TRACE(number++);
        RepositoryTest::TearDown();
        SetUp();
        StatementRecorder recorder;
        EXPECT_EQ(call(), result);
        EXPECT_EQ(recorder.take(), statements);
        EXPECT_EQ(rows(details, "Plates"), rowsAfter);
    };
    check([&] { return erase(table); }, 1, {"DELETE FROM [Plates] "}, {});
    check([&] { return erase(alias, L"WHERE [Key]=3"); }, 1, {"DELETE FROM [Plates] WHERE [Key]=3"},
          {all[0], all[1]});
    check([&] { return erase(table, L"WHERE [Name]='ä[b]%d'", details); }, 1,
          {"DELETE FROM [Plates] WHERE [Name]='ä[b]%d'"}, {all[0], all[2]});
    check([&] { return erase(table, L"WHERE [No]=3"); }, 0, {"DELETE FROM [Plates] WHERE [No]=3"}, all);
    check([&] { return erase(table, KorDSNDefinitions::kProfiles); }, 0, {"DELETE FROM [Plates] "}, all);
    check([&] { return erase(KorString(L"Loop")); }, 0, {}, all);
    check([&] { return change(alias, L"[Name]='100% %s'", L"[Key]=1"); }, 1,
          {"UPDATE [Plates] SET [Name]='100% %s' WHERE [Key]=1"}, {"1|100% %s|10", all[1], all[2]});
    check([&] { return change(table, L"[No]=1", L"[Key]=1"); }, 0, {"UPDATE [Plates] SET [No]=1 WHERE [Key]=1"},
          all);
    check([&] { return Gui::dropTable(alias); }, 1, {"DROP TABLE [Plates]"}, {});
    check([&] { return Gui::dropTable(missing, details); }, 0, {"DROP TABLE [Missing]"}, all);
    check([&] { return Gui::dropColumn(alias, L"Name"); }, 1, {"ALTER TABLE Plates DROP COLUMN Name"},
          {"1|10", "2|20", "3|30"});
    check([&] { return Gui::dropColumn(table, L"Width", details); }, 1, {"ALTER TABLE Plates DROP COLUMN Width"},
          {"1|it's", "2|ä[b]%d", "3|板🔩"});
    check([&] { return Gui::dropColumn(table, L"No"); }, 0, {"ALTER TABLE Plates DROP COLUMN No"}, all);
    check([&] { return add(table, {}); }, -1, {}, all);
    check([&] { return add(missing, {"A INTEGER"}); }, 0, {}, all);
    check(
        [&] {
            return add(alias, {"[A b] INTEGER", "C TEXT"});
        },
        1, {"ALTER TABLE Plates ADD [A b] INTEGER", "ALTER TABLE Plates ADD C TEXT"},
        {all[0] + "||", all[1] + "||", all[2] + "||"});
    check(
        [&] {
            return add(table, {"A INTEGER", "A INTEGER", "C TEXT"}, details);
        },
        0, Texts(2, "ALTER TABLE Plates ADD A INTEGER"), all);
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

TEST_F(TableMaintenanceTest, RestoringFromACopyWithOtherColumns)
{
    for (const char* copyColumns : {"Key, Name", "Key, A, B, C"}) {
        SCOPED_TRACE(copyColumns);
        RepositoryTest::TearDown();
        SetUp();
        sql(details, {"CREATE TABLE Plates_Copy (" + std::string(copyColumns) + ")"});
        StatementRecorder statements;
        EXPECT_EQ(KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy", details), -1);
        EXPECT_EQ(statements.take(), Texts{});
        EXPECT_EQ(rows(details, "Plates"), plates);

        // without a data source nothing is compared, but the rows stay, and the copy for another attempt
        EXPECT_EQ(KorOdbcGUI::restoreTable(L"Plates", L"Plates_Copy"), 0);
        EXPECT_EQ(statements.take().size(), 2u);
        EXPECT_EQ(rows(details, "Plates"), plates);
        EXPECT_TRUE(exists(details, "Plates_Copy"));
    }
}

TEST_F(TableMaintenanceTest, SurplusColumnsGoFromTheEnd)
{
    struct Case {
        const char* copy; // columns of the copy
        int result;
        Texts statements, columns;
    };
    const Texts drops = {"ALTER TABLE Plates DROP COLUMN Width", "ALTER TABLE Plates DROP COLUMN Name"};
    const Texts all = {"Key", "Name", "Width"};
    for (const bool inSource : {false, true})
        for (const Case& one : {Case{"A", 1, drops, {"Key"}}, // by count and position, whatever the names
                                {"Key, Width", 1, {drops[0]}, {"Key", "Name"}},
                                {"A, B, C, D, E", 1, {}, all},
                                {"", 0, {}, all}}) { // no copy
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
    EXPECT_EQ(KorOdbcGUI::restoreTableStructure(L"Missing", L"Plates"), 0);
    EXPECT_EQ(KorOdbcGUI::restoreTableStructure(L"Plates", L"Plates", KorDSNDefinitions::kUnresolved), 0);
}

} // namespace
