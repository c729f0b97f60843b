#include "lookup/UserTableRows.h"

#include "support/RepositoryFixture.h"

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
    struct Case {
        const char* table;
        int kind;
        const wchar_t* text;
        int number;
        bool keepKey;
        int result, newKind;
        const wchar_t* newText;
        int newNumber;
        std::size_t rows;
    };
    for (const Case& one : {
             Case{"ByText", kTextKey, L"it's 板🔩", 0, true, 1, kTextKey, L"it's 板🔩", 0, 2},
             {"ByText", kTextKey, L"old", 0, true, 0, kTextKey, L"old", 0, 1}, // taken
             {"ByNumber", kIntKey, L"", 12, true, 1, kIntKey, L"", 12, 2},
             {"ByNumber", kIntKey, L"", 7, true, 0, kIntKey, L"", 7, 1}, // taken
             {"ByNumber", kIntKey, L"", 7, false, 1, kIntKey, L"", 8, 2},
             {"Alias", kIntKey, L"", -1, false, 1, kIntKey, L"", 8, 2},
             {"ByNumber", kTextKey, L"21", 5, true, 1, kIntKey, L"21", 21, 2}, // the table's keys are numbers
             {"Missing", kIntKey, L"", 12, true, 0, kIntKey, L"", 12, 1},
         }) {
        SCOPED_TRACE(one.table);
        RepositoryTest::TearDown();
        SetUp();
        int kind = one.kind, number = one.number;
        KorString text(one.text);
        EXPECT_EQ(appendUserTableRow(KorString::fromUtf8(one.table), kind, text, number, one.keepKey), one.result);
        EXPECT_EQ(kind, one.newKind);
        EXPECT_EQ(text, KorString(one.newText));
        EXPECT_EQ(number, one.newNumber);
        EXPECT_EQ(rows(configuration, std::string(one.table) == "ByText" ? "ByText" : "ByNumber").size(),
                  one.rows);
    }
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
    struct Case {
        const wchar_t *table, *key;
        int column;
        KorCellData value;
        int result;
        const char* row; // the first of the table
    };
    for (const Case& one : {
             Case{L"ByText", L"old", 1, KorCellData(L"it's [1] 板🔩 100%"), 1, "old|it's [1] 板🔩 100%|1"},
             {L"ByText", L"old", 2, KorCellData(5), 1, "old|x|5"},
             {L"ByText", L"none", 2, KorCellData(5), 0, "old|x|1"},
             {L"ByText", L"old", 3, KorCellData(5), 0, "old|x|1"},
             {L"ByText", L"old", -1, KorCellData(5), 0, "old|x|1"},
             {L"ByNumber", L"7", 2, KorCellData(5), 1, "7|x|5"},
             {L"Alias", L"7", 1, KorCellData(L"ü"), 1, "7|ü|1"},
             {L"ByNumber", L"seven", 2, KorCellData(5), 0, "7|x|1"},
         }) {
        RepositoryTest::TearDown();
        SetUp();
        const bool byText = KorString(one.table) == L"ByText";
        EXPECT_EQ(setUserTableCell(one.table, one.key, one.column, one.value), one.result) << one.row;
        EXPECT_EQ(rows(configuration, byText ? "ByText" : "ByNumber")[0], one.row);
    }
    EXPECT_EQ(setUserTableCell(L"Missing", L"1", 0, KorCellData(5)), 0);
}

} // namespace
