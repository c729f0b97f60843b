#include "Lookups.h"

#include <korodbc/lookup/UserTableRows.h>

using namespace korodbc;

namespace {

class UserTableRowsTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        sql(configuration, {"CREATE TABLE ByText (Id TEXT PRIMARY KEY NOT NULL, Name TEXT, Size INTEGER)",
                            "INSERT INTO ByText VALUES ('old', 'x', 1)",
                            "CREATE TABLE ByNumber (Id INTEGER PRIMARY KEY, Name TEXT, Size INTEGER)",
                            "INSERT INTO ByNumber VALUES (7, 'x', 1)",
                            "INSERT INTO TableAliases VALUES (1, 'Alias', 'ByNumber')"});
    }
};

TEST_F(UserTableRowsTest, AppendsRows)
{
    // the result and the key that the row got
    const auto check = [this](const wchar_t* table, int kind, KorString key, int number, bool keepKey,
                              const char* after, std::size_t count) {
        SCOPED_TRACE(after);
        RepositoryTest::TearDown();
        SetUp();
        const int result = appendUserTableRow(table, kind, key, number, keepKey);
        EXPECT_EQ(shown(result, kind, key, number), after);
        EXPECT_EQ(rows(configuration, KorString(table) == L"ByText" ? "ByText" : "ByNumber").size(), count);
    };
    check(L"ByText", kTextKey, L"it's 板🔩", 0, true, "1 0 it's 板🔩 0", 2);
    check(L"ByText", kTextKey, L"old", 0, true, "0 0 old 0", 1); // taken
    check(L"ByNumber", kIntKey, L"", 12, true, "1 1  12", 2);
    check(L"ByNumber", kIntKey, L"", 7, true, "0 1  7", 1); // taken
    check(L"ByNumber", kIntKey, L"", 7, false, "1 1  8", 2);
    check(L"Alias", kIntKey, L"", -1, false, "1 1  8", 2);
    check(L"ByNumber", kTextKey, L"21", 5, true, "1 1 21 21", 2); // the table's keys are numbers
    check(L"Missing", kIntKey, L"", 12, true, "0 1  12", 1);
}

TEST_F(UserTableRowsTest, KeyOfAnotherKindIsRefused)
{
    AssertionRecorder assertions;
    int kind = 2, number = 12;
    KorString text(L"key");
    EXPECT_EQ(appendUserTableRow(L"ByNumber", kind, text, number, true), 0);
    EXPECT_EQ(kind, kNoKey);
    EXPECT_EQ(assertions.take(), Texts{"korUserConnectionsAndCombinations: false"});
    EXPECT_EQ(assertions.lastLine(), 954);
    EXPECT_EQ(rows(configuration, "ByNumber"), Texts{"7|x|1"});
}

TEST_F(UserTableRowsTest, WritesCells)
{
    // the first row of the table afterwards
    const auto check = [this](const wchar_t* table, const wchar_t* key, int column, const KorCellData& value,
                              int result, const char* row) {
        RepositoryTest::TearDown();
        SetUp();
        EXPECT_EQ(setUserTableCell(table, key, column, value), result) << row;
        EXPECT_EQ(rows(configuration, KorString(table) == L"ByText" ? "ByText" : "ByNumber")[0], row);
    };
    check(L"ByText", L"old", 1, KorCellData(L"it's [1] 板🔩 100%"), 1, "old|it's [1] 板🔩 100%|1");
    check(L"ByText", L"none", 2, KorCellData(5), 0, "old|x|1");
    check(L"ByText", L"old", 3, KorCellData(5), 0, "old|x|1");
    check(L"ByText", L"old", -1, KorCellData(5), 0, "old|x|1");
    check(L"ByNumber", L"7", 2, KorCellData(5), 1, "7|x|5");
    check(L"Alias", L"7", 1, KorCellData(L"ü"), 1, "7|ü|1");
    check(L"ByNumber", L"seven", 2, KorCellData(5), 0, "7|x|1");
    EXPECT_EQ(setUserTableCell(L"Missing", L"1", 0, KorCellData(5)), 0);
}

} // namespace
