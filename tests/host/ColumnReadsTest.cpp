#include "catalogues/CatalogueFixture.h"

namespace {

class ColumnReadsTest : public CatalogueTest {
protected:
    static Texts read(const KorString& where = L"[UnitType] = 0 AND [Key] < 4")
    {
        KorArray<KorCellData> cells;
        EXPECT_EQ(KorDatabaseAccess::getColumnValues(configuration, L"Scale", where, {}, 1, cells), 1);
        KorArray<KorString> texts;
        KorDatabaseAccess::cellDataArr2StringArr(cells, texts);
        return utf8(texts);
    }
    /// A column that is read again without a change costs no query, but is always that of now.
    static void expect(const Texts& values, const std::string& after)
    {
        for (int time = 0; time < 4; ++time)
            EXPECT_EQ(read(), values) << after;
        StatementRecorder statements(true);
        EXPECT_EQ(read(), values) << after;
        EXPECT_EQ(statements.take(), Texts{}) << after;
    }
};

TEST_F(ColumnReadsTest, ColumnsReadAgainAreThoseOfNow)
{
    expect({"20:1", "10:1", "5:1"}, "the start");
    sql(configuration, {"UPDATE Scale SET RunName = 'x' WHERE Key = 2"});
    expect({"20:1", "x", "5:1"}, "an own write");
    {
        KorDatabaseBatch batch;
        sql(configuration, {"DELETE FROM Scale WHERE Key = 1"});
        expect({"x", "5:1"}, "a write in a batch");
        batch.undo();
    }
    expect({"20:1", "x", "5:1"}, "it was undone");
    KorCellData key;
    KorDatabaseAccess::appendNewLine(configuration, L"Scale", key, true, false);
    KorDatabaseAccess::setTableColumnValue(configuration, L"Scale", L"Key", key.getStringW(), 3, KorCellData(0));
    EXPECT_EQ(read(L"[Key] >= " + key.getStringW()), Texts{""});
    EXPECT_EQ(read(L"[Key] >= " + key.getStringW()), Texts{""});
    KorDatabaseAccess::setTableColumnValue(configuration, L"Scale", L"Key", key.getStringW(), 1, L"new");
    EXPECT_EQ(read(L"[Key] >= " + key.getStringW()), Texts{"new"});
    folder().executeOutside("configuration.db", "UPDATE Scale SET RunName = 'theirs' WHERE Key = 3");
    expect({"20:1", "x", "theirs"}, "another program's write"); // without any reset
    sql(configuration, {"DROP TABLE Scale", "CREATE TABLE Scale (Key INTEGER, RunName TEXT, UnitType INTEGER)"});
    expect({}, "another table of that name");
    sql(configuration, {"INSERT INTO Scale VALUES (1, 'a', 0)", "DELETE FROM Scale"});
    expect({}, "all rows were deleted");
    // what depends on more than the rows of the table is asked each time
    const KorString others = L"[UnitType] = 0 OR (SELECT count(*) FROM Sets) > 3";
    sql(configuration, {"INSERT INTO Scale VALUES (1, 'a', 0)"});
    read(others);
    read(others);
    StatementRecorder statements(true);
    EXPECT_EQ(read(others), Texts{"a"});
    EXPECT_EQ(statements.take().size(), 1u);
}

} // namespace
