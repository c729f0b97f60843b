#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace {

using namespace bench;
using Record = StructDetViewDimRequestLinear;

constexpr long rows = 10000;
constexpr long lookUps = 100000; // in one run

/// A cached table of linear dimension requests, 20 columns filled, and the order in which it is asked.
struct Requests {
    Repository repository;
    KorArray<Record> records;
    std::vector<long> keys;
    std::vector<KorString> names;

    Requests()
    {
        Database database((repository.folder() / "details.db").string());
        database.run("DELETE FROM DetViewDimRequestLinear");
        database.run(
            "INSERT INTO DetViewDimRequestLinear (Key, RunName, Direction, AllowCombine, ArrangeAbove, "
            "ArrangeGlobally, GroupRelatedDimensions, OneChainPerObjectInFirstSelection, LabelContents, "
            "LabelPosition, "
            "[Group], SortOrder, OwnerText, NumberPoints, Point1, Point2, Point3, Point4, Point5, Point6) "
            "WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(rows) +
            ") "
            "SELECT i, 'Bolt chain along the beam ' || i, 1, 0, 1, 0, 1, 0, '%Spacing% mm', 1, 2, i, 'VEL', "
            "6, "
            "i, i, i, i, i, i FROM n");
        require(StructDetViewDimRequestLinearMarshal::getTable(records) == 1 && records.length() == rows,
                "the table is not read");
        std::uint64_t state = 7;
        for (long i = 0; i < lookUps; ++i) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            const long row = static_cast<long>((state >> 33) % rows);
            keys.push_back(records[static_cast<int>(row)].key);
            names.push_back(records[static_cast<int>(row)].runName);
        }
    }
};

template <class Find>
void lookUp(benchmark::State& state, const char* series, Find find)
{
    Record record;
    long found = 0;
    for (auto _ : state) {
        found = 0;
        note(state, series, seconds([&] {
                 for (std::size_t i = 0; i < lookUps; ++i) {
                     found += find(i, record);
                     benchmark::DoNotOptimize(record);
                 }
             }));
        require(found == lookUps, "records were not found");
    }
}

void keyLibrary(benchmark::State& state)
{
    const Requests requests;
    lookUp(state, "look-up key library", [&](std::size_t i, Record& record) {
        return StructDetViewDimRequestLinearMarshal::getStructByKey(requests.keys[i], record);
    });
}

void keyPlain(benchmark::State& state)
{
    const Requests requests;
    std::unordered_map<long, Record> map;
    for (const Record& record : requests.records)
        map.emplace(record.key, record);
    lookUp(state, "look-up key plain", [&](std::size_t i, Record& record) {
        const auto found = map.find(requests.keys[i]);
        if (found == map.end())
            return 0;
        record = found->second;
        return 1;
    });
}

void nameLibrary(benchmark::State& state)
{
    const Requests requests;
    lookUp(state, "look-up name library", [&](std::size_t i, Record& record) {
        return StructDetViewDimRequestLinearMarshal::getStructByRunName(requests.names[i], record);
    });
}

void namePlain(benchmark::State& state)
{
    const Requests requests;
    std::unordered_map<KorString, Record> map;
    for (const Record& record : requests.records)
        map.emplace(record.runName, record);
    lookUp(state, "look-up name plain", [&](std::size_t i, Record& record) {
        const auto found = map.find(requests.names[i]);
        if (found == map.end())
            return 0;
        record = found->second;
        return 1;
    });
}

} // namespace

void registerLookUpBenchmarks()
{
    const int runs = bench::quick ? 7 : 31;
    const bench::NamedBenchmark all[] = {{"look-up/key/library", keyLibrary},
                                         {"look-up/key/plain", keyPlain},
                                         {"look-up/run name/library", nameLibrary},
                                         {"look-up/run name/plain", namePlain}};
    for (const auto& [name, run] : all)
        benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
    bench::compare("look-up by key among 10,000", "look-up key library", "look-up key plain", 5.0, lookUps,
                   "a look-up");
    bench::compare("look-up by run name among 10,000", "look-up name library", "look-up name plain", 3.0, lookUps,
                   "a look-up");
}
