// Statements as they reach a database: literals split off, patterns with values, cell writes that wait.

#include "sqlite/Statement.h"
#include "support/RepositoryFixture.h"

#include <cmath>

namespace {

using korodbc::host::splitLiterals;
using korodbc::host::Value;

std::string shown(const std::vector<Value>& values)
{
    std::string text;
    for (const Value& value : values) {
        if (const auto* integer = std::get_if<std::int64_t>(&value))
            text += std::to_string(*integer) + ";";
        else if (const auto* real = std::get_if<double>(&value))
            text += std::to_string(*real) + ";";
        else if (const auto* string = std::get_if<KorString>(&value))
            text += "'" + string->toUtf8() + "';";
    }
    return text;
}

TEST(SplitLiterals, SplitsValuesAndNothingElse)
{
    const struct {
        const wchar_t* statement;
        const char* pattern; // nullptr: runs as it is
        const char* values;
    } cases[] = {
        {L"INSERT INTO T ([Key], [a1]) VALUES ( 1, -2, '%s''x', 0.500000) ",
         "INSERT INTO T ([Key], [a1]) VALUES ( ?, ?, ?, ?) ", "1;-2;'%s'x';0.500000;"},
        {L"UPDATE T SET Request12=3 WHERE [Key]=4;", "UPDATE T SET Request12=? WHERE [Key]=?;", "3;4;"},
        {L"UPDATE T SET a=b-1 WHERE [1 'x]=''", "UPDATE T SET a=b-? WHERE [1 'x]=?", "1;'';"},
        {L"DELETE FROM [Stützen]  WHERE [Key] = 7 OR [Key] = 9;",
         "DELETE FROM [Stützen]  WHERE [Key] = ? OR [Key] = ?;", "7;9;"},
        {L"delete from T where a='柱'", "delete from T where a=?", "'柱';"},
        {L"DELETE FROM T WHERE a='open", nullptr, ""},
        {L"DELETE FROM T WHERE a=x'00'", nullptr, ""},
        {L"DELETE FROM T -- 'x'", nullptr, ""},
        {L"DELETE FROM T WHERE a=? AND b=1", nullptr, ""},
        {L"SELECT 1", nullptr, ""},
        {L"DROP TABLE [T]", nullptr, ""},
        {L"ALTER TABLE T ADD Request4 INT", nullptr, ""},
        {L"UPDATE T SET a=9e999", nullptr, ""}, // more than a variable holds
        {L"UPDATE T SET a=99999999999999999999", nullptr, ""},
    };
    for (const auto& c : cases) {
        std::string pattern;
        std::vector<Value> values;
        const bool split = splitLiterals(c.statement, pattern, values);
        EXPECT_EQ(split, c.pattern != nullptr) << KorString(c.statement).toUtf8();
        if (split && c.pattern != nullptr) {
            EXPECT_EQ(pattern, c.pattern);
            EXPECT_EQ(shown(values), c.values);
        }
    }
}

class StatementsTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        sql(details, {"CREATE TABLE T ([Key] INTEGER PRIMARY KEY, Name TEXT, Size REAL)"});
    }
};

TEST_F(StatementsTest, PatternAndItsTextStoreTheSame)
{
    const wchar_t* pattern = L"INSERT INTO T ([Key], [Name], [Size]) VALUES ( %ld, '%s', %lf) ";
    const struct {
        long key;
        KorString name;
        double size;
    } rows[] = {{1, L"O'Neil's [x] %s 100%", 1.0 / 3},
                {2, L"", -0.0000004},
                {3, KorString::fromUtf8("größer 柱 🏗"), 1e15 / 7},
                {-4, L"';DELETE FROM T;--", 12}};
    StatementRecorder recorder;
    for (const auto& row : rows) {
        const KorFormatArgument values[] = {row.key, row.name, row.size};
        ASSERT_EQ(KorDatabaseAccess::doSQLStatement(details, KorString(pattern), values), 1);
    }
    const Texts texts = recorder.take();
    const Texts stored = this->rows(details, "T");
    ASSERT_EQ(texts.size(), 4u);
    EXPECT_EQ(texts[0], "INSERT INTO T ([Key], [Name], [Size]) VALUES ( 1, 'O''Neil''s [x] %s 100%', 0.333333) ");
    sql(details, {"DELETE FROM T"});
    sql(details, texts);
    EXPECT_EQ(this->rows(details, "T"), stored);
    // a value that no literal can express fails as the text does
    const KorFormatArgument notANumber[] = {9L, KorString(L"x"), std::nan("")};
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, KorString(pattern), notANumber), 0);
}

TEST_F(StatementsTest, OneStatementAtATime)
{
    sql(details, {"INSERT INTO T VALUES (1,'a',0)"});
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L"DELETE FROM T WHERE [Key]=5; DELETE FROM T"), 0);
    EXPECT_EQ(rows(details, "T").size(), 1u);
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L""), 0);
}

TEST_F(StatementsTest, CellWritesOfARowAreOneStatement)
{
    StatementRecorder recorder(true);
    KorDatabaseBatch batch;
    KorCellData key;
    ASSERT_EQ(KorDatabaseAccess::appendNewLine(details, L"T", key, true, false), 1);
    EXPECT_EQ(KorDatabaseAccess::setTableColumnValue(details, L"T", L"Key", L"1", 1, KorCellData(L"one")), 1);
    EXPECT_EQ(KorDatabaseAccess::setTableColumnValue(details, L"T", L"Key", L"1", 2, KorCellData(2.5)), 1);
    // errors come back from the call that caused them
    EXPECT_EQ(KorDatabaseAccess::setTableColumnValue(details, L"T", L"Key", L"1", 3, KorCellData(1)), 0);
    EXPECT_EQ(KorDatabaseAccess::setTableColumnValue(details, L"T", L"Key", L"8", 1, KorCellData(L"x")), 0);
    EXPECT_EQ(batch.end(1), 1);
    int inserts = 0, updates = 0;
    for (const std::string& text : recorder.take()) {
        inserts += text.rfind("INSERT", 0) == 0;
        updates += text.rfind("UPDATE", 0) == 0;
    }
    EXPECT_EQ(inserts, 1);
    EXPECT_EQ(updates, 0);
    EXPECT_EQ(rows(details, "T"), Texts{"1|one|2.5"});
}

TEST_F(StatementsTest, ABatchThatCannotBeStoredTakesBackWhatWasRemembered)
{
    int undone = 0;
    KorDatabaseBatch::whenUndone(details, [&] { ++undone; }); // outside a batch: ignored
    {
        KorDatabaseBatch batch;
        KorDatabaseBatch::whenUndone(details, [&] { ++undone; });
        EXPECT_EQ(batch.end(1), 1);
    }
    EXPECT_EQ(undone, 0);
    KorDatabaseBatch batch;
    KorDatabaseBatch::whenUndone(details, [&] { ++undone; });
    KorCellData key;
    sql(details, {"INSERT INTO T VALUES (1,'a',0)", "PRAGMA max_page_count = 1"}); // no room from here on
    ASSERT_EQ(KorDatabaseAccess::appendNewLine(details, L"T", key, true, false), 1);
    ASSERT_EQ(KorDatabaseAccess::setTableColumnValue(details, L"T", L"Key", key.getStringW(), 1,
                                                     KorCellData(KorString(std::wstring(100000, L'x')))),
              1);
    EXPECT_EQ(batch.end(1), 0);
    EXPECT_EQ(undone, 1);
}

} // namespace
