// Reads of records through the embedded host: caches, large tables, several sources, other processes.

#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

namespace {

class RecordReadsTest : public RepositoryTest {
protected:
    /// Qualifier sets 1..count named "Set <key>", each with two items whose stored order is the reverse of their
    /// order.
    void fill(int count)
    {
        KorDatabaseBatch batch;
        for (int key = 1; key <= count; ++key) {
            const std::string k = std::to_string(key);
            sql(details,
                {"INSERT INTO DetObjQualifierSet ([Key],[RunName],[NumberItems]) VALUES (" + k + ",'Set " + k +
                     "',2)",
                 "INSERT INTO DetObjQualifierSetItem ([IdDetObjQualifierSet],[Order],[ModelRole]) VALUES (" + k +
                     ",1,'second')",
                 "INSERT INTO DetObjQualifierSetItem ([IdDetObjQualifierSet],[Order],[ModelRole]) VALUES (" + k +
                     ",0,'first " + k + "')"});
        }
        batch.end(1);
    }
    static std::string set(long key)
    {
        StructDetObjQualifierSet record;
        if (StructDetObjQualifierSetMarshal::getStructByKey(key, record) != 1)
            return "none";
        std::string text = record.runName.toUtf8();
        for (const StructDetObjQualifierSetItem& item : record.items)
            text += "/" + item.modelRole.toUtf8();
        return text;
    }
    static long selects(const StatementRecorder& recorder, const std::string& table)
    {
        long count = 0;
        for (const auto& event : recorder.events()) {
            const std::string text = event.sql.toUtf8();
            count += text.rfind("SELECT", 0) == 0 && text.find("[" + table + "]") != std::string::npos;
        }
        return count;
    }
};

TEST_F(RecordReadsTest, RowByRowAndWholeTableGiveTheSame)
{
    fill(2000);
    // a single row of a large table does not cost the table
    StatementRecorder recorder(true);
    EXPECT_EQ(set(700), "Set 700/first 700/second");
    EXPECT_EQ(set(2001), "none");
    for (const auto& event : recorder.events())
        EXPECT_EQ(event.sql.toUtf8().find("SELECT rowid, * FROM [DetObjQualifierSet] ORDER"), std::string::npos);
    // many rows do, and then look-ups read nothing more
    for (long key = 1; key <= 2000; ++key)
        ASSERT_EQ(set(key), "Set " + std::to_string(key) + "/first " + std::to_string(key) + "/second");
    recorder.take();
    EXPECT_EQ(set(1234), "Set 1234/first 1234/second");
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"Set 1999"), 1);
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"set 1999"), 0);
    EXPECT_TRUE(recorder.events().empty());
}

TEST_F(RecordReadsTest, NamesOfALargeTableFollowItsRows)
{
    fill(1000);
    StructDetObjQualifierSet record;
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"Set 1000"), 1);
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"Set 1001"), 0);
    KorCellData key;
    KorDatabaseBatch batch;
    ASSERT_EQ(KorDatabaseAccess::appendNewLine(details, L"DetObjQualifierSet", key, true, false), 1);
    EXPECT_EQ(key.getInt(), 1001);
    record.key = key.getInt();
    record.runName = L"Set 1001";
    ASSERT_EQ(KorDatabaseAccess::setRecord(details, L"DetObjQualifierSet",
                                           descriptionOf<StructDetObjQualifierSet>(), key, &record),
              1);
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"Set 1001"), 1);
    sql(details, {"DELETE FROM DetObjQualifierSet WHERE [Key]=1001",
                  "UPDATE DetObjQualifierSet SET [RunName]='New' WHERE [Key]=5"});
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"Set 1001"), 0);
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"New"), 1);
    EXPECT_EQ(StructDetObjQualifierSetMarshal::hasRunName(L"Set 5"), 0);
    EXPECT_EQ(batch.end(1), 1);
}

TEST_F(RecordReadsTest, CachedRowsFollowOwnStatements)
{
    fill(3);
    KorArray<StructDetObjQualifierSet> all;
    const auto names = [&] {
        std::string text;
        EXPECT_EQ(StructDetObjQualifierSetMarshal::getTable(all), 1);
        for (const auto& record : all)
            text += record.runName.toUtf8() + "(" + std::to_string(record.items.length()) + ") ";
        return text;
    };
    ASSERT_EQ(names(), "Set 1(2) Set 2(2) Set 3(2) ");
    const struct {
        const char* statement;
        const char* expected;
        long reads; // of the table of sets
    } cases[] = {
        {"UPDATE DetObjQualifierSet SET [RunName]='Two' WHERE [Key]=2", "Set 1(2) Two(2) Set 3(2) ", 1},
        {"DELETE FROM DetObjQualifierSet WHERE [Key]=1", "Two(2) Set 3(2) ", 1},
        {"INSERT INTO DetObjQualifierSet ([Key],[RunName]) VALUES (9,'Nine')", "Two(2) Set 3(2) Nine(0) ", 1},
        {"INSERT INTO DetObjQualifierSet ([Key],[RunName]) VALUES (1,'One')", "One(2) Two(2) Set 3(2) Nine(0) ",
         2},
        {"DELETE FROM DetObjQualifierSetItem WHERE [IdDetObjQualifierSet]=3", "One(2) Two(2) Set 3(0) Nine(0) ",
         0},
        {"DELETE FROM DetObjQualifierSet", "", 1},
    };
    for (const auto& c : cases) {
        sql(details, {c.statement});
        StatementRecorder recorder(true);
        EXPECT_EQ(names(), c.expected) << c.statement;
        EXPECT_EQ(selects(recorder, "DetObjQualifierSet"), c.reads) << c.statement;
        EXPECT_EQ(names(), c.expected);
        EXPECT_EQ(selects(recorder, "DetObjQualifierSet"), c.reads) << "read again: " << c.statement;
    }
}

TEST_F(RecordReadsTest, VisitShowsRecordsInTableOrderUntilItIsStopped)
{
    const auto visited = [](int most) {
        std::string text;
        const int result = RecordAccess::visit(descriptionOf<StructDetObjQualifierSet>(), [&](const void* shown) {
            const auto& record = *static_cast<const StructDetObjQualifierSet*>(shown);
            text += record.runName.toUtf8();
            for (const StructDetObjQualifierSetItem& item : record.items)
                text += "/" + item.modelRole.toUtf8();
            text += ' ';
            return --most > 0;
        });
        return std::to_string(result) + ": " + text;
    };
    EXPECT_EQ(visited(9), "1: ");
    fill(3);
    sql(details, {"DELETE FROM DetObjQualifierSetItem WHERE [IdDetObjQualifierSet]=2"});
    EXPECT_EQ(visited(9), "1: Set 1/first 1/second Set 2 Set 3/first 3/second ");
    EXPECT_EQ(visited(2), "1: Set 1/first 1/second Set 2 ");
    EXPECT_EQ(visited(1), "1: Set 1/first 1/second ");
    // one walk sees what the statements before it did
    sql(details, {"UPDATE DetObjQualifierSet SET [RunName]='Two' WHERE [Key]=2",
                  "UPDATE DetObjQualifierSetItem SET [ModelRole]='last' WHERE [ModelRole]='second'"});
    EXPECT_EQ(visited(9), "1: Set 1/first 1/last Two Set 3/first 3/last ");
    sql(details, {"DROP TABLE DetObjQualifierSet"});
    EXPECT_EQ(visited(9), "1: ") << "the add-in has the table as well";
    const KorDSNRequest request(details, KorDSNDefinitions::kBase);
    EXPECT_EQ(visited(9), "0: ");
}

TEST_F(RecordReadsTest, AllSourcesReadsAddInsBeforeTheBase)
{
    const auto insert = [&](eDSN dsn, eIndex index, int key, const char* name) {
        const KorDSNRequest request(dsn, index);
        sql(dsn, {"INSERT INTO Linetypes ([Key],[RunName],[OwnerText]) VALUES (" + std::to_string(key) + ",'" +
                  name + "','" + std::to_string(dsn) + "." + std::to_string(index) + "')"});
    };
    insert(details, KorDSNDefinitions::kBase, 1, "Continuous");
    insert(details, KorDSNDefinitions::kBase, 2, "Dashed");
    insert(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, 1, "Addin");
    insert(KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(2), 3, "France");
    KorArray<KorString> names;
    ASSERT_EQ(StructLinetypesMarshal::getRunNameListAllSources(names), 1);
    EXPECT_EQ(names.length(), 4);
    StructLinetypes record;
    ASSERT_EQ(StructLinetypesMarshal::getStructByKeyAllSources(1, record), 1);
    EXPECT_EQ(record.runName, L"Addin");
    ASSERT_EQ(StructLinetypesMarshal::getStructByKey(1, record), 1);
    EXPECT_EQ(record.runName, L"Continuous");
    ASSERT_EQ(StructLinetypesMarshal::getStructByKeyAllSources(3, record), 1);
    EXPECT_EQ(record.ownerText, L"15.2");
    EXPECT_EQ(StructLinetypesMarshal::getStructByKeyAllSources(7, record), 0);
    EXPECT_EQ(record.ownerText, L"15.2");
    KorPartialTable table;
    ASSERT_EQ(KorDatabaseAccess::getTableAllSources(details, L"Linetypes", table), 1);
    KorString first;
    ASSERT_EQ(table.getData().getAt(1).getAt(0, first), 1);
    EXPECT_EQ(first, L"Addin");
    EXPECT_EQ(table.getData().getAt(1).length(), 4);
}

TEST(OtherProcessTest, ItsChangesShowAfterAReset)
{
    const RepositoryFolder folder;
    folder.executeOutside("details.db", "INSERT INTO Linetypes VALUES (1,'Before','VEL')");
    StructLinetypes record;
    ASSERT_EQ(StructLinetypesMarshal::getStructByKey(1, record), 1);
    folder.executeOutside(
        "details.db",
        "UPDATE Linetypes SET RunName='After'; CREATE TABLE Extra (Key INTEGER PRIMARY KEY, Name TEXT)");
    StructLinetypesMarshal::resetTableCache(0);
    ASSERT_EQ(StructLinetypesMarshal::getStructByKey(1, record), 1);
    EXPECT_EQ(record.runName, L"After");
    EXPECT_EQ(KorDatabaseAccess::doesTableExists(KorDSNDefinitions::kDetails, L"Extra"), 1);
    // a write sees what the other process did, reset or not
    folder.executeOutside("details.db", "INSERT INTO Linetypes VALUES (40,'Forty','VEL')");
    KorCellData key;
    ASSERT_EQ(KorDatabaseAccess::appendNewLine(KorDSNDefinitions::kDetails, L"Linetypes", key, true, false), 1);
    EXPECT_EQ(key.getInt(), 41);
}

TEST(OtherProcessTest, AFileBringsNoCodeAlong)
{
    const RepositoryFolder folder;
    folder.executeOutside("details.db",
                          "CREATE TRIGGER Trap AFTER INSERT ON Linetypes BEGIN DELETE FROM DetailStyle; END;"
                          "INSERT INTO DetailStyle ([Key],[RunName]) VALUES (1,'Kept')");
    ASSERT_EQ(KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kDetails,
                                                L"INSERT INTO Linetypes ([Key],[RunName]) VALUES (1,'x')"),
              1);
    KorCellData name;
    EXPECT_EQ(KorDatabaseAccess::getTableColumnValue(KorDSNDefinitions::kDetails, L"DetailStyle", L"Key",
                                                     KorCellData(1), 1, name),
              1);
    EXPECT_EQ(
        KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kDetails, L"ATTACH DATABASE '/tmp/x.db' AS other"),
        0);
}

/// A row whose key changed is not there any more under the old one.
TEST_F(RecordReadsTest, KeysThatChange)
{
    fill(3);
    const auto keys = [] {
        KorArray<StructDetObjQualifierSet> sets;
        EXPECT_EQ(StructDetObjQualifierSetMarshal::getTable(sets), 1);
        std::vector<int> list;
        for (const StructDetObjQualifierSet& one : sets)
            list.push_back(one.key);
        return list;
    };
    EXPECT_EQ(keys(), (std::vector<int>{1, 2, 3}));
    const KorFormatArgument values[] = {9, 2};
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(details, L"UPDATE DetObjQualifierSet SET [Key]=%d WHERE [Key]=%d",
                                                values),
              1);
    EXPECT_EQ(keys(), (std::vector<int>{1, 3, 9}));
    sql(details, {"UPDATE DetObjQualifierSet SET [Key]=[Key]+10"});
    EXPECT_EQ(keys(), (std::vector<int>{11, 13, 19}));
    EXPECT_EQ(set(3), "none");
    EXPECT_EQ(
        KorDatabaseAccess::setTableColumnValue(details, L"DetObjQualifierSet", L"Key", L"11", 0, KorCellData(4)),
        1);
    EXPECT_EQ(keys(), (std::vector<int>{4, 13, 19}));
}

} // namespace
