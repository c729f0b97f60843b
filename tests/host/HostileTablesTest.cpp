// Tables as other programs may leave them: refused with one line, or right.

#include "../src/edit/DetailTables.h"
#include "support/DetailFixture.h"

#include <korodbc/records/AnyRecord.h>

#include <algorithm>
#include <functional>

using namespace details;

namespace {

using Columns = Texts; // definitions
using Change = void (*)();

/// The columns of a table as it is, as definitions.
Columns definitions(const std::string& table)
{
    static const char* const types[] = {"", "BOOL", "INTEGER", "TEXT", "REAL", "DATE"};
    KorArray<KorColumn> structure;
    KorDatabaseAccess::getTableStructure(KorDSNDefinitions::kDetails, text(table), structure);
    Columns columns;
    for (const KorColumn& column : structure)
        columns.push_back("[" + column.getName().toUtf8() + "] " + types[column.getType()] +
                          (column.isKey() ? " PRIMARY KEY" : ""));
    return columns;
}

void run(const std::string& statement)
{
    ASSERT_EQ(KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kDetails, text(statement)), 1)
        << statement << ": " << korodbc::host::lastError();
}

/// Makes a table anew with other columns, its rows included.
void remake(const std::string& table, const std::function<void(Columns&)>& change, const std::string& options = "")
{
    const Columns before = definitions(table);
    Columns columns = before;
    change(columns);
    const auto nameOf = [](const std::string& column) { return column.substr(0, column.find(']') + 1); };
    std::string names, values, all;
    for (const std::string& column : columns) {
        all += (all.empty() ? "" : ", ") + column;
        const bool isKept = std::any_of(before.begin(), before.end(),
                                        [&](const std::string& old) { return nameOf(old) == nameOf(column); });
        const bool isWanted = column.find("NOT NULL") != std::string::npos;
        if (column.find(" AS (") != std::string::npos || (!isKept && !isWanted))
            continue;
        names += (names.empty() ? "" : ", ") + (isKept ? nameOf(column) : column.substr(0, column.find(' ')));
        values += (values.empty() ? "" : ", ") + (isKept ? nameOf(column) : std::string("0"));
    }
    run("ALTER TABLE " + table + " RENAME TO Before");
    run("CREATE TABLE " + table + " (" + all + ") " + options);
    run("INSERT INTO " + table + " (" + names + ") SELECT " + values + " FROM Before");
    run("DROP TABLE Before");
}

auto placeOf(Columns& columns, const std::string& name)
{
    return std::find_if(columns.begin(), columns.end(),
                        [&](const std::string& column) { return column.starts_with("[" + name + "]"); });
}

/// Puts a column before another one of a table.
void insertBefore(const std::string& table, const std::string& other, const std::string& definition)
{
    remake(table, [&](Columns& columns) { columns.insert(placeOf(columns, other), definition); });
}

/// Declares a column of a table in another way.
void declare(const std::string& table, const std::string& name, const std::string& declaration)
{
    remake(table, [&](Columns& columns) { *placeOf(columns, name) = "[" + name + "] " + declaration; });
}

/// Every record of a type; nothing when they cannot be read.
Texts records(const RecordDescription& type)
{
    Texts lines;
    const int read = RecordAccess::visit(type, [&](const void* record) {
        lines.push_back(shown(type, record, true));
        return true;
    });
    return read == 1 ? lines : Texts();
}

enum Reads { Same, Less, Not }; // what a look at the table shows: its records, parts of them, nothing

struct Case {
    const char* name;
    int type;
    Change change;
    Reads reads;
    const char* misfit;          // "": none
    bool onlyForWriting = false; // the rows can be relied on
    const char* remark = "";     // what is reported and keeps from nothing
};

constexpr int style = 0, reprMap = 4, strategy = 12, linetypes = 22;

const Case cases[] = {
    {"ForeignColumnFirst", style, [] { insertBefore("DetailStyle", "Key", "Note TEXT DEFAULT 'x'"); }, Same,
     "table DetailStyle: the column Note stands in the place of Key", true},
    {"ForeignColumnBeforeTheNumbered", style,
     [] { insertBefore("DetailStyle", "Request1", "Note INT DEFAULT 2"); }, Same,
     "table DetailStyle: the column Note stands in the place of Request1", true},
    {"ForeignColumnInAGroup", strategy,
     [] { insertBefore("DetArrangerStrategy", "MinDistance2", "Note INT DEFAULT 2"); }, Same,
     "table DetArrangerStrategy: the column Note stands in the place of MinDistance2", true},
    {"ForeignColumnLast", style, [] { run("ALTER TABLE DetailStyle ADD [No\nte] INT DEFAULT 2"); }, Same, "",
     false, "table DetailStyle: the column No?te stands where the numbered ones grow"},
    {"ForeignColumnOfANarrowTable", linetypes,
     [] { run("ALTER TABLE Linetypes ADD Note TEXT NOT NULL DEFAULT ''"); }, Same, ""},
    {"NumberedColumnsInAnotherOrder", style,
     [] {
         remake("DetailStyle", [](Columns& columns) {
             std::iter_swap(placeOf(columns, "Request1"), placeOf(columns, "Request2"));
         });
     },
     Same, "table DetailStyle: the column Request2 stands in the place of Request1", true},
    {"NamesInAnotherCase", style, [] { run("ALTER TABLE DetailStyle RENAME COLUMN Request2 TO [rEQUEST2]"); },
     Same, ""},
    {"NumberedColumnMissing", style, [] { run("ALTER TABLE DetailStyle DROP COLUMN Request1"); }, Not,
     "table DetailStyle: no column Request1"},
    {"NumberedColumnsOfOtherNames", style,
     [] {
         remake(
             "DetailStyle",
             [](Columns& columns) {
                 for (std::string& column : columns)
                     if (const std::size_t at = column.find("Request"); at == 1)
                         column.replace(at, 7, "View");
             },
             "");
     },
     Not, "table DetailStyle: in the row of key 1 there are numbered columns for 0 of 2 items"},
    {"GroupCut", strategy,
     [] {
         for (int item = 2; item <= 8; ++item)
             run("ALTER TABLE DetArrangerStrategy DROP COLUMN SearchDirection" + std::to_string(item));
     },
     Not, "table DetArrangerStrategy: in the row of key 1 there are numbered columns for 1 of 2 items", false,
     "table DetArrangerStrategy: no column SearchDirection2"},
    {"MoreItemsThanColumns", style, [] { run("UPDATE DetailStyle SET NumberRequests = 2000000000"); }, Less, ""},
    {"NegativeCount", style, [] { run("UPDATE DetailStyle SET NumberRequests = -3"); }, Less, ""},
    {"ValueColumnMissing", style, [] { run("ALTER TABLE DetailStyle DROP COLUMN TitleFormat"); }, Less,
     "table DetailStyle: no column TitleFormat"},
    {"KeyColumnMissing", linetypes, [] { run("ALTER TABLE Linetypes RENAME COLUMN Key TO Id"); }, Not,
     "table Linetypes: no column Key"},
    {"KeyDeclaredText", linetypes, [] { declare("Linetypes", "Key", "TEXT PRIMARY KEY"); }, Same,
     "table Linetypes: the column Key is declared TEXT and holds whole numbers"},
    {"KeyDeclaredBigint", linetypes, [] { declare("Linetypes", "Key", "BIGINT NOT NULL UNIQUE"); }, Same, ""},
    {"TextKeyDeclaredInteger", 17, [] { declare("DetObjQualifierFilter", "Key", "INTEGER"); }, Same,
     "table DetObjQualifierFilter: the column Key is declared INTEGER and holds texts"},
    {"KeyNull", linetypes,
     [] {
         declare("Linetypes", "Key", "INTEGER");
         run("INSERT INTO Linetypes (RunName) VALUES ('none')");
     },
     Not, "table Linetypes: the column Key is empty in a row"},
    {"KeyTwice", linetypes,
     [] {
         declare("Linetypes", "Key", "INTEGER");
         run("UPDATE Linetypes SET Key = 1");
     },
     Less, "table Linetypes: the column Key holds 1 in several rows"},
    {"KeyBeyond32Bits", linetypes, [] { run("UPDATE Linetypes SET Key = 4294967298 WHERE Key = 2"); }, Not,
     "table Linetypes: the column Key holds 4294967298, which is no whole number of 32 bits"},
    {"KeyNoNumber", linetypes,
     [] {
         declare("Linetypes", "Key", "INT");
         run("UPDATE Linetypes SET Key = 'two' WHERE Key = 2");
     },
     Not, "table Linetypes: the column Key holds two, which is no whole number of 32 bits"},
    {"ValueBeyond32Bits", style, [] { run("UPDATE DetailStyle SET TitlePosition = 4294967296 WHERE Key = 2"); },
     Not,
     "table DetailStyle: in the row of key 2 the column TitlePosition holds 4294967296, which is no whole number "
     "of "
     "32 bits"},
    {"ValueNotWhole", style, [] { run("UPDATE DetailStyle SET TitlePosition = 1.5 WHERE Key = 1"); }, Not,
     "table DetailStyle: in the row of key 1 the column TitlePosition holds 1.5, which is no whole number of 32 "
     "bits"},
    {"NumbersAsText", style, [] { declare("DetailStyle", "TitlePosition", "TEXT"); }, Same, ""},
    {"NoValues", style, [] { run("UPDATE DetailStyle SET TitlePosition = ' ', TitleFormat = NULL"); }, Less, ""},
    {"ColumnComputed", style, [] { declare("DetailStyle", "OwnerText", "TEXT AS ('owner')"); }, Less,
     "table DetailStyle: the column OwnerText is computed", true},
    {"ColumnsCalledLikeRowIds", linetypes,
     [] {
         run("ALTER TABLE Linetypes ADD RowId INT");
         run("ALTER TABLE Linetypes ADD _rowid_ INT");
         run("UPDATE Linetypes SET RowId = -Key, _rowid_ = 9");
     },
     Same, ""},
    {"WithoutRowIds", style,
     [] {
         remake(
             "DetailStyle", [](Columns&) {}, "WITHOUT ROWID");
     },
     Same, ""},
    {"KeyOfTwoColumns", linetypes,
     [] {
         remake("Linetypes", [](Columns& columns) {
             columns[0] = "[Key] INTEGER NOT NULL";
             columns.push_back("PRIMARY KEY (OwnerText, Key)");
         });
     },
     Same, ""},
    {"ColumnsThatMustNotBeEmpty", linetypes,
     [] {
         remake(
             "Linetypes",
             [](Columns& columns) {
                 columns[1] += " NOT NULL";
                 columns.push_back("Size REAL NOT NULL");
                 columns.push_back("Note VARCHAR(9) NOT NULL");
             },
             "");
     },
     Same, ""},
    {"ItemTableMissing", reprMap, [] { run("DROP TABLE DetObjReprMapItems"); }, Not,
     "table DetObjReprMapsNew: there is no table DetObjReprMapItems with its items"},
    {"ItemsWithoutOwner", reprMap,
     [] { remake("DetObjReprMapItems", [](Columns& columns) { columns[0] = "[Owner] INTEGER"; }); }, Not,
     "table DetObjReprMapItems: no column Key"},
    {"ItemsWithoutAValue", reprMap, [] { run("ALTER TABLE DetObjReprMapItems DROP COLUMN Appearance"); }, Less,
     "table DetObjReprMapItems: no column Appearance"},
    {"ItemOfNoOwner", reprMap, [] { run("UPDATE DetObjReprMapItems SET Key = NULL WHERE [Order] = 1"); }, Not,
     "table DetObjReprMapItems: in the row the column Key is empty"},
    {"ItemsWithAColumnThatMustNotBeEmpty", reprMap,
     [] {
         run("DELETE FROM DetObjReprMapItems");
         remake("DetObjReprMapItems", [](Columns& columns) { columns.push_back("Note TEXT NOT NULL"); });
     },
     Less, "table DetObjReprMapItems: the column Note must not be empty", true},
};

class HostileTables : public DetailTest, public testing::WithParamInterface<Case> {
protected:
    static bool fits(const RecordDescription& type, bool forWriting)
    {
        return KorDatabaseAccess::checkTable(details, type, forWriting) == 1;
    }
};

TEST_P(HostileTables, RefusedWithOneLineOrRight)
{
    const Case& c = GetParam();
    AssertionRecorder assertions;
    const RecordDescription& type = korodbc::detailTable(c.type).description();
    const std::string table(type.table), line(c.misfit);
    const KorDSNRequest request(details, base);
    put(details, StructDetObjQualifierFilter{L"F'1", L"filter", L"", L""});
    const Texts before = records(type);
    ASSERT_FALSE(before.empty());
    ASSERT_TRUE(fits(type, true)) << korodbc::host::lastError();
    EXPECT_EQ(korodbc::host::tableDifferences(details, base), "");
    const AnyRecord first(type);
    ASSERT_EQ(type.hasTextKey() ? RecordAccess::readByKey(type, KorString(L"F'1"), first.get())
                                : RecordAccess::readByKey(type, 1, first.get()),
              1);
    c.change();

    // a look
    const Texts read = records(type);
    EXPECT_EQ(read == before, c.reads == Same);
    EXPECT_EQ(read.empty(), c.reads == Not);
    if (c.reads == Not && c.remark[0] == '\0') {
        EXPECT_NE(korodbc::host::lastError().find("table " + table.substr(0, 9)), std::string::npos)
            << korodbc::host::lastError();
    }

    // what is said
    const std::string report = korodbc::host::tableDifferences(details, base);
    EXPECT_NE(report.find(c.remark), std::string::npos) << report;
    EXPECT_NE(report.find(line), std::string::npos) << report;
    if (line.empty() && c.remark[0] == '\0') {
        EXPECT_EQ(report, "");
    }
    for (const bool forWriting : {false, true}) {
        for (int again = 0; again < 2; ++again) {
            const bool refused = !line.empty() && (forWriting || !c.onlyForWriting);
            EXPECT_EQ(fits(type, forWriting), !refused) << forWriting << korodbc::host::lastError();
            if (refused) {
                EXPECT_EQ(korodbc::host::lastError(), line);
            }
        }
    }
    EXPECT_TRUE(fits(descriptionOf<StructDetAnnotationType>(), true)); // another table

    // a new record
    void* record = korodbc::detailTable(c.type).currentRecord();
    type.elements->assign(record, first.get());
    if (!fits(type, true)) {
        // a row of columns that fit is written over one that does not
        const bool columnsFit = !line.starts_with("table " + table + ":") ||
                                (line.find("in the row") != std::string::npos &&
                                 line.find("numbered columns for") == std::string::npos) ||
                                line.find("with its items") != std::string::npos;
        const Texts stored = rows(details, table);
        EXPECT_EQ(KorDatabaseAccess::setRecord(details, text(table), type, KorCellData(1), record) == 1,
                  columnsFit);
        if (!columnsFit) {
            EXPECT_EQ(rows(details, table), stored);
        }
        Man::appendNewRecord(DetailTest::type(c.type), 0, depth(0)); // no crash
        return;
    }
    const int key = Man::appendNewRecord(DetailTest::type(c.type), 0, depth(0));
    ASSERT_GT(key, 1) << korodbc::host::lastError();
    const AnyRecord again(type);
    ASSERT_EQ(RecordAccess::readByKey(type, key, again.get()), 1) << korodbc::host::lastError();
    EXPECT_EQ(shown(type, again.get()), shown(type, first.get()));
    EXPECT_EQ(records(type).size(), before.size() + 1);
    EXPECT_EQ(Man::deleteRecord(DetailTest::type(c.type), KorOdbcKey(key), depth(0)), 1);
    EXPECT_EQ(records(type), read);
    EXPECT_EQ(Man::setStatusOnCancel(DetailTest::type(c.type), depth(0)), 1);
    EXPECT_EQ(records(type), read);
}

INSTANTIATE_TEST_SUITE_P(Tables, HostileTables, testing::ValuesIn(cases),
                         [](const auto& info) { return std::string(info.param.name); });

class HostileKeys : public DetailTest {
protected:
    static int appended(const std::string& table)
    {
        KorCellData key;
        return KorDatabaseAccess::appendNewLine(details, text(table), key, true, false) == 1 ? key.getInt() : 0;
    }
    static int cellSet(const std::string& table, int key, int column, const KorCellData& value)
    {
        return KorDatabaseAccess::setTableColumnValue(details, text(table), L"Key", KorString::format(L"%d", key),
                                                      column, value);
    }
};

TEST_F(HostileKeys, AreFreeAndNewWhileAnyIs)
{
    sql(details,
        {"CREATE TABLE T ([Key] INTEGER PRIMARY KEY, Name TEXT)", "INSERT INTO T VALUES (5,'a'), (7,'b')"});
    EXPECT_EQ(appended("T"), 8);
    sql(details, {"DELETE FROM T WHERE [Key] > 5"});
    EXPECT_EQ(appended("T"), 9); // not those of the deleted rows
    // the largest possible key is taken: on from the largest before it
    sql(details, {"INSERT INTO T VALUES (2147483647, 'top'), (2147483646, 'top')"});
    EXPECT_EQ(appended("T"), 10);
    EXPECT_EQ(appended("T"), 11);
    sql(details, {"DELETE FROM T WHERE [Key] = 11"});
    EXPECT_EQ(appended("T"), 12);
    sql(details, {"DELETE FROM T WHERE [Key] < 2147483646"});
    EXPECT_EQ(appended("T"), 13);
    // no other number than the one that is meant
    for (const char* wrong : {"4294967301", "2147483648", "-2147483649", "x", "5.5", ""}) {
        KorCellData key(text(wrong)), cell(L"kept");
        EXPECT_EQ(KorDatabaseAccess::appendNewLine(details, L"T", key, true, true), 0) << wrong;
        EXPECT_EQ(KorDatabaseAccess::getTableColumnValue(details, L"T", L"Key", key, 1, cell), 0);
        EXPECT_EQ(cell.getStringW(), KorString(L"kept"));
    }
    // keys that other rows refer to are not free, also when no row has them
    sql(details, {"UPDATE DetObjReprMapItems SET LineType = 40 WHERE [Key] = 1",
                  "UPDATE DetailStyle SET Request2 = 50 WHERE [Key] = 1"});
    EXPECT_EQ(appended("Linetypes"), 41);
    EXPECT_EQ(appended("DetViewRequest"), 51);
}

TEST_F(HostileKeys, LargeNumbersStayWhatTheyAre)
{
    sql(details, {"CREATE TABLE T ([Key] INTEGER, Name TEXT, Size INTEGER)",
                  "INSERT INTO T VALUES (4294967297, 'big', 1), (2, 'two', 8589934592)"});
    KorCellData cell(9);
    EXPECT_EQ(KorDatabaseAccess::getKeyAtRunname(L"T", L"big", cell), 0);
    EXPECT_EQ(KorDatabaseAccess::getTableColumnValue(details, L"T", L"Key", KorCellData(2), 2, cell), 0);
    EXPECT_EQ(cell.getInt(), 9);
    EXPECT_NE(korodbc::host::lastError().find("table T: the column Size holds 8589934592"), std::string::npos);
    EXPECT_EQ(KorDatabaseAccess::getTableColumnValue(details, L"T", L"Key", KorCellData(1), 1, cell), 0);
    KorArray<KorCellData> cells;
    KorArray<long> longs;
    EXPECT_NE(KorDatabaseAccess::getColumnValues(details, L"T", {}, L"[Key]", 2, cells), 0);
    EXPECT_EQ(cells[0].getStringW().toUtf8(), "8589934592");
    EXPECT_EQ(cells[0].getInt(), 0);
    KorDatabaseAccess::cellDataArr2LongArr(cells, longs);
    EXPECT_EQ(longs[0], 8589934592L);
    StructLinetypes line;
    EXPECT_EQ(StructLinetypesMarshal::getStructByKey(4294967297L, line), 0);
}

/// Refused writes fail in the call that they belong to.
TEST_F(HostileKeys, ConstraintsAnswerAtOnce)
{
    sql(details,
        {"CREATE TABLE N ([Key] INTEGER PRIMARY KEY, Name TEXT NOT NULL, Size INT NOT NULL)",
         "CREATE TABLE U ([Key] INTEGER PRIMARY KEY, Name TEXT NOT NULL UNIQUE)",
         "CREATE TABLE C ([Key] INTEGER PRIMARY KEY, Size INT CHECK (Size < 9))",
         "CREATE TABLE I ([Key] INTEGER PRIMARY KEY, Name TEXT)", "CREATE UNIQUE INDEX byName ON I (Name)"});
    KorDatabaseBatch batch;
    EXPECT_EQ(appended("N"), 1);
    EXPECT_EQ(cellSet("N", 1, 1, KorCellData()), 0);
    EXPECT_EQ(appended("U"), 1);
    EXPECT_EQ(appended("U"), 0); // two empty names
    EXPECT_EQ(appended("C"), 1);
    EXPECT_EQ(cellSet("C", 1, 1, KorCellData(9)), 0);
    EXPECT_EQ(cellSet("C", 1, 1, KorCellData(8)), 1);
    EXPECT_EQ(appended("I"), 1);
    EXPECT_EQ(cellSet("I", 1, 1, KorCellData(L"a")), 1);
    EXPECT_EQ(appended("I"), 2);
    EXPECT_EQ(cellSet("I", 2, 1, KorCellData(L"a")), 0);
    EXPECT_EQ(batch.end(1), 1);
    EXPECT_EQ(rows(details, "N"), Texts{"1||0"});
    EXPECT_EQ(rows(details, "U"), Texts{"1|"});
    EXPECT_EQ(rows(details, "C"), Texts{"1|8"});
    EXPECT_EQ(rows(details, "I"), (Texts{"1|a", "2|"}));
}

TEST_F(HostileKeys, CopiesOfTablesWithAnyKey)
{
    sql(details, {"CREATE TABLE T (A TEXT, \"B] b\" INT, C, PRIMARY KEY (\"B] b\", A)) WITHOUT ROWID",
                  "INSERT INTO T VALUES ('x', 2, 'c'), ('y', 1, 'd'), ('a', 2, NULL)"});
    const Texts before{"y|1|d", "a|2|", "x|2|c"};
    EXPECT_EQ(rows(details, "T"), before);
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(KorDatabaseAccess::copyTable(details, L"T", L"T_VELCopy", false), 1)
            << korodbc::host::lastError();
    EXPECT_EQ(columns(details, "T_VELCopy"), columns(details, "T"));
    EXPECT_EQ(rows(details, "T_VELCopy").size(), before.size());
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L"INSERT INTO T_VELCopy VALUES ('x', 2, '')"), 0);
}

TEST_F(HostileKeys, ReplacedRowsAreForgotten)
{
    const RecordDescription& type = descriptionOf<StructLinetypes>();
    const KorDSNRequest request(details, base);
    sql(details, {"CREATE UNIQUE INDEX names ON Linetypes (RunName)", "UPDATE Linetypes SET RunName = Key"});
    ASSERT_EQ(records(type).size(), 2u);
    sql(details, {"INSERT OR REPLACE INTO Linetypes (Key, RunName) VALUES (3, '1')"}); // 1 gives way
    EXPECT_EQ(records(type), (Texts{"2 '2' 'owner O''Träger [x] 100%d \"梁\" 🏗)' ", "3 '1' '' "}));
    sql(details, {"UPDATE OR REPLACE Linetypes SET RunName = '2' WHERE Key = 3"});
    EXPECT_EQ(records(type), (Texts{"3 '2' '' "}));
    // a rule of the table does the same
    remake("Linetypes", [](Columns& columns) { columns[1] += " UNIQUE ON CONFLICT REPLACE"; });
    ASSERT_EQ(records(type).size(), 1u);
    sql(details, {"INSERT INTO Linetypes (Key, RunName) VALUES (4, '2')"});
    EXPECT_EQ(records(type), (Texts{"4 '2' '' "}));
    Man::m_structLinetypes = {-1, L"2", L"own"};
    EXPECT_EQ(Man::appendNewRecord(Man::kLinetypes, 0, depth(0)), 5);
    EXPECT_EQ(records(type).size(), 1u);
}

} // namespace
