// Statements as they reach a database: literals split off, patterns with values, cell writes that wait.

#include "database/StatementPattern.h"
#include "database/StatementReader.h"
#include "support/RepositoryFixture.h"

#include <cmath>
#include <sqlite3.h>

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
        {L"INSERT INTO T VALUES (1,NULL),(.5e3,5.)", "INSERT INTO T VALUES (?,NULL),(?,?)",
         "1;500.000000;5.000000;"},
        {L"UPDATE T SET Request12=3 WHERE [Key]=4;", "UPDATE T SET Request12=? WHERE [Key]=?;", "3;4;"},
        {L"UPDATE [T] SET a=-9223372036854775808, \"b\"\"\"='柱' WHERE ([1 'x]='' AND b IS NULL) OR c LIKE 'x%'",
         "UPDATE [T] SET a=?, \"b\"\"\"=? WHERE ([1 'x]=? AND b IS NULL) OR c LIKE ?",
         "-9223372036854775808;'柱';'';'x%';"},
        {L"DELETE FROM [Stützen]  WHERE [Stützen].Key = 7 OR [Key] <> 9;",
         "DELETE FROM [Stützen]  WHERE [Stützen].Key = ? OR [Key] <> ?;", "7;9;"},
        {L"delete from T", "delete from T", ""},
        {L"DELETE FROM T WHERE a='open", nullptr, ""},
        {L"DELETE FROM T WHERE a=x'00'", nullptr, ""},
        {L"DELETE FROM T -- 'x'", nullptr, ""},
        {L"DELETE FROM T WHERE a=? AND b=1", nullptr, ""},
        {L"DELETE FROM T WHERE a=5 COLLATE NOCASE", nullptr, ""},
        {L"DELETE FROM T WHERE a IN (1, 2)", nullptr, ""},
        {L"DELETE FROM T WHERE length(a)=5", nullptr, ""},
        {L"DELETE FROM T WHERE a=5 RETURNING 1", nullptr, ""},
        {L"DELETE FROM T WHERE a=1; DELETE FROM T", nullptr, ""},
        {L"DELETE FROM T WHERE a BETWEEN 1 AND 2", nullptr, ""},
        {L"SELECT 1", nullptr, ""},
        {L"DROP TABLE [T]", nullptr, ""},
        {L"ALTER TABLE T ADD Request4 INT", nullptr, ""},
        {L"INSERT INTO T SELECT a, 1 FROM T ORDER BY 2 LIMIT 1", nullptr, ""},
        {L"INSERT INTO T VALUES (1) ON CONFLICT DO UPDATE SET a=1", nullptr, ""},
        {L"INSERT INTO T VALUES (CAST(12 AS VARCHAR(10)))", nullptr, ""},
        {L"INSERT INTO T VALUES ('a' || 'b')", nullptr, ""},
        {L"UPDATE T SET a=b-1", nullptr, ""},
        {L"UPDATE T SET a=--1\n5", nullptr, ""},
        {L"UPDATE T SET a=0x10", nullptr, ""},
        {L"UPDATE T SET a=1_000", nullptr, ""},
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

TEST(SplitLiterals, PatternsTakeValuesWhereTheyAreNothingElse)
{
    const struct {
        const wchar_t* pattern;
        const char* statement; // nullptr: runs as text
    } cases[] = {
        {L"INSERT INTO T ([Key], a) VALUES ( %ld, '%s', %lf, 'x', 1) ",
         "INSERT INTO T ([Key], a) VALUES ( ?, ?, ?, 'x', 1) "},
        {L"DELETE FROM T WHERE [Key] = %d OR [Key] = %i;", "DELETE FROM T WHERE [Key] = ? OR [Key] = ?;"},
        {L"DELETE FROM [%s]", nullptr},
        {L"UPDATE T SET a='x%s'", nullptr},
        {L"UPDATE T SET a=-%d", nullptr},
        {L"UPDATE T SET a=%d5", nullptr},
        {L"UPDATE T SET a=CAST(%d AS VARCHAR(10))", nullptr},
        {L"INSERT INTO T SELECT a FROM T ORDER BY %d", nullptr},
    };
    for (const auto& c : cases) {
        korodbc::host::StatementPattern read;
        EXPECT_EQ(korodbc::host::readPattern(c.pattern, read), c.statement != nullptr);
        EXPECT_EQ(read.sql, c.statement != nullptr ? c.statement : "");
    }
    const KorString values[] = {L"a'b", L"c'd"};
    const KorFormatArgument arguments[] = {values[0], values[1]};
    EXPECT_EQ(korodbc::host::patternText(L"UPDATE [%s] SET a='x%s'", arguments), L"UPDATE [a'b] SET a='xc''d'");
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

TEST_F(StatementsTest, WhatALiteralStandsForStays)
{
    sql(details, {"INSERT INTO T VALUES (1, 'b', 2), (2, 'a', 1)", "CREATE TABLE U (A, B TEXT)",
                  "INSERT INTO U SELECT [Key], Name FROM T ORDER BY 2 LIMIT 1",
                  "INSERT INTO U VALUES (CAST('123456' AS VARCHAR(3)), 5.0)", "UPDATE U SET A = 0x10 WHERE A = 2",
                  "UPDATE U SET B = B || 'x' WHERE B = 5.0"});
    EXPECT_EQ(rows(details, "U"), (Texts{"16|a", "123456|5.0x"}));
}

// However many texts differ, what is kept of them does not grow.
TEST_F(StatementsTest, ConditionsLeaveNothingBehind)
{
    sql(details, {"INSERT INTO T VALUES (1, 'it''s 7', 0.1), (2, 'x', 5)"});
    const auto found = [](const KorString& where) {
        KorArray<KorCellData> values;
        EXPECT_EQ(KorDatabaseAccess::getColumnValues(details, L"T", where, {}, 0, values), 1);
        return values.length();
    };
    const wchar_t* shapes[] = {L"[Name] = 'it''s %d' AND ( 1 = 1)", L"([Size] > %d.5 OR [Key]=%d)",
                               L"Name LIKE 'x%d'", L"[Key] + 1 = %d", L"[Key] IN (%d)"};
    constexpr int splitShapes = 3;
    long matches = 0;
    sqlite3_int64 before = 0;
    StatementRecorder recorder(true);
    for (int i = 0; i < 400; ++i) {
        if (i == 50)
            before = sqlite3_memory_used();
        for (const wchar_t* shape : shapes)
            matches += found(KorString::format(shape, i, i));
    }
    EXPECT_EQ(matches, 1 + 6 + 0 + 2 + 2); // the sizes: 5 above 0.5 to 4.5, and the keys 1 and 2
    EXPECT_LT(sqlite3_memory_used() - before, 50000);
    int compiled = 0;
    for (const StatementRecorder::Event& event : recorder.events())
        compiled += event.prepared && event.sql.find(L"?") >= 0 && event.sql.find(L"FROM [T]") >= 0 ? 1 : 0;
    EXPECT_EQ(compiled, splitShapes);
    KorArray<KorCellData> values;
    for (const wchar_t* text : {L"1=1; DELETE FROM T", L"1=", L"[Missing] = 1"})
        EXPECT_EQ(KorDatabaseAccess::getColumnValues(details, L"T", text, {}, 0, values), 0);
    EXPECT_EQ(rows(details, "T").size(), 2u);
}

TEST_F(StatementsTest, OneStatementAtATime)
{
    sql(details, {"INSERT INTO T VALUES (1,'a',0)"});
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L"DELETE FROM T WHERE [Key]=5; DELETE FROM T"), 0);
    EXPECT_EQ(rows(details, "T").size(), 1u);
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L""), 0);
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L"DELETE FROM T WHERE [Key]=?"), 0) << "no value for it";
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
