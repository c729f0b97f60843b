#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <vector>

namespace {

using namespace bench;

constexpr int recordCount = 1000; // in one batch
constexpr int points = 6;         // of a linear dimension request: 14 fixed columns and these
constexpr int itemsPerRow = 5;    // of a dimension strategy

StructDetViewDimRequestLinear linearRequest()
{
    StructDetViewDimRequestLinear record;
    record.direction = 1;
    record.allowCombine = record.arrangeAbove = record.groupRelatedDimensions = 1;
    record.labelContents = L"%Spacing% mm";
    record.labelPosition = 1;
    record.group = 2;
    record.sortOrder = 7;
    for (int point = 0; point < points; ++point)
        record.points.append(100 + point);
    return record;
}

StructDetViewDimStrategy strategy()
{
    StructDetViewDimStrategy record;
    record.oneChainPerBoltDiam = 1;
    for (int i = 0; i < itemsPerRow; ++i) {
        StructDetViewDimStrategyItem item;
        item.description = L"chain of bolts";
        item.ownerText = L"VEL";
        item.type = 1;
        item.requestLinear = 10 + i;
        item.groupEqualDistances = 1;
        record.items.append(item);
    }
    return record;
}

std::vector<KorString> wideNames()
{
    std::vector<KorString> names;
    for (int i = 0; i < recordCount; ++i)
        names.push_back(KorString::format(L"Bolt chain along the beam %d", i));
    return names;
}

/// Appends the record with each name inside one batch, over and over, with an empty table at each start.
template <class Record>
void storeWithLibrary(benchmark::State& state, KorOdbcMan::eTableType type, Record& current, const Record& record,
                      const char* series, std::initializer_list<const wchar_t*> tables)
{
    const Repository repository;
    const std::vector<KorString> names = wideNames();
    KorOdbcMan::setCurrentDSN(KorDSNDefinitions::kDetails);
    KorOdbcMan::setCurrentAddIn(KorDSNDefinitions::kBase);
    // the tables have been copied by the first edit already
    KorODBCDetailStyleExports::CancelBackupTables(1);
    for (auto _ : state) {
        for (const wchar_t* table : tables)
            KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kDetails,
                                              KorString::format(L"DELETE FROM [%s]", KorString(table)));
        bool stored = true;
        current = record;
        note(state, series, seconds([&] {
                 KorDatabaseBatch batch;
                 for (const KorString& name : names) {
                     current.runName = name;
                     stored = KorOdbcMan::appendNewRecord(type, 0, KorOdbcMan::kFirstCopy) > 0 && stored;
                 }
                 stored = batch.end(1) == 1 && stored;
             }));
        require(stored, "records were not stored");
    }
    KorODBCDetailStyleExports::CancelBackupTables(0);
}

void linearLibrary(benchmark::State& state)
{
    storeWithLibrary(state, KorOdbcMan::kDetViewDimRequestLinear, KorOdbcMan::m_structDetViewDimRequestLinear,
                     linearRequest(), "store linear library", {L"DetViewDimRequestLinear"});
}

void strategyLibrary(benchmark::State& state)
{
    storeWithLibrary(state, KorOdbcMan::kDetViewDimStrategy, KorOdbcMan::m_structDetViewDimStrategy, strategy(),
                     "store strategy library", {L"DetViewDimStrategyNew", L"DetViewDimStrategyItems"});
}

struct PlainTarget {
    Repository repository;
    Database database{(repository.folder() / "details.db").string()};
    std::vector<std::string> names;

    PlainTarget()
    {
        database.useHostPragmas();
        for (const KorString& name : wideNames())
            names.push_back(name.toUtf8());
    }
};

void linearPlain(benchmark::State& state)
{
    PlainTarget target;
    Query insert =
        target.database.prepare("INSERT INTO DetViewDimRequestLinear (Key, RunName, Direction, AllowCombine, "
                                "ArrangeAbove, ArrangeGlobally, "
                                "GroupRelatedDimensions, OneChainPerObjectInFirstSelection, LabelContents, "
                                "LabelPosition, [Group], SortOrder, "
                                "OwnerText, NumberPoints, Point1, Point2, Point3, Point4, Point5, Point6) "
                                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    const std::string label = "%Spacing% mm", owner = "VEL";
    for (auto _ : state) {
        target.database.run("DELETE FROM DetViewDimRequestLinear");
        note(state, "store linear plain", seconds([&] {
                 target.database.run("BEGIN IMMEDIATE");
                 int key = 0;
                 for (const std::string& name : target.names) {
                     insert.bind(1, std::int64_t{++key}).bind(2, std::string_view(name));
                     const int values[] = {1, 1, 1, 0, 1, 0};
                     for (int i = 0; i < 6; ++i)
                         insert.bind(3 + i, std::int64_t{values[i]});
                     insert.bind(9, std::string_view(label)).bind(10, std::int64_t{1}).bind(11, std::int64_t{2});
                     insert.bind(12, std::int64_t{7}).bind(13, std::string_view(owner));
                     insert.bind(14, std::int64_t{points});
                     for (int point = 0; point < points; ++point)
                         insert.bind(15 + point, std::int64_t{100 + point});
                     insert.run();
                 }
                 target.database.run("COMMIT");
             }));
    }
}

void strategyPlain(benchmark::State& state)
{
    PlainTarget target;
    Query header = target.database.prepare("INSERT INTO DetViewDimStrategyNew (Key, RunName, OneChainPerBoltDiam, "
                                           "OwnerText, NumberItems) VALUES (?, ?, ?, ?, ?)");
    Query item = target.database.prepare(
        "INSERT INTO DetViewDimStrategyItems (Key, [Order], Description, OwnerText, Type, RequestLinear, "
        "GroupEqualDistances, BrokenRunningDimension, RunningDimensionTextAlignment, HideDimensionPoint) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    const std::string description = "chain of bolts", owner = "VEL";
    for (auto _ : state) {
        target.database.run("DELETE FROM DetViewDimStrategyNew");
        target.database.run("DELETE FROM DetViewDimStrategyItems");
        note(state, "store strategy plain", seconds([&] {
                 target.database.run("BEGIN IMMEDIATE");
                 std::int64_t key = 0;
                 for (const std::string& name : target.names) {
                     header.bind(1, ++key).bind(2, std::string_view(name)).bind(3, std::int64_t{1});
                     header.bind(4, std::string_view(owner)).bind(5, std::int64_t{itemsPerRow}).run();
                     for (int i = 0; i < itemsPerRow; ++i) {
                         item.bind(1, key).bind(2, std::int64_t{i}).bind(3, std::string_view(description));
                         item.bind(4, std::string_view(owner))
                             .bind(5, std::int64_t{1})
                             .bind(6, std::int64_t{10 + i});
                         item.bind(7, std::int64_t{1}).bind(8, std::int64_t{0}).bind(9, std::int64_t{0});
                         item.bind(10, std::int64_t{0}).run();
                     }
                 }
                 target.database.run("COMMIT");
             }));
    }
}

} // namespace

void registerStoreBenchmarks()
{
    const int runs = bench::quick ? 15 : 101;
    const bench::NamedBenchmark all[] = {{"store/20 columns/library", linearLibrary},
                                         {"store/20 columns/plain", linearPlain},
                                         {"store/with 5 items/library", strategyLibrary},
                                         {"store/with 5 items/plain", strategyPlain}};
    for (const auto& [name, run] : all)
        benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
    bench::compare("store: record of 20 columns", "store linear library", "store linear plain", 2.0, recordCount,
                   "a record");
    bench::compare("store: record with 5 rows of items", "store strategy library", "store strategy plain", 2.0,
                   recordCount, "a record");
}
