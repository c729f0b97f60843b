#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/catalogues/KorOdbcNumberingPrefix.h>

#include <cstdint>
#include <vector>

namespace {

using namespace bench;
using Record = StructNumberingPrefix;

constexpr long rows = 10000;
constexpr int types = 20, roles = 25, subtypes = 21; // the last subtype of a table is the empty one
constexpr long lookUps = 2000;                       // in one run

/// The prefixes of the main catalogue, and the objects that they are looked for: of every type, most with a role
/// or subtype that the table knows.
struct Prefixes {
    Repository repository;
    KorArray<Record> records;
    std::vector<KorNumberingPrefixId> ids;

    Prefixes()
    {
        Database database((repository.folder() / "configuration.db").string());
        database.run("DELETE FROM NumberingPrefix");
        const auto one = [](int count, int every) {
            return "(i / " + std::to_string(every) + ") % " + std::to_string(count);
        };
        const std::string role = one(roles, types), subtype = one(subtypes, types * roles);
        database.run(
            "INSERT INTO NumberingPrefix WITH RECURSIVE n(i) AS (VALUES (0) UNION ALL SELECT i + 1 FROM n "
            "WHERE i + 1 < " +
            std::to_string(rows) + ") SELECT i + 1, CASE WHEN " + role +
            " = 0 THEN 'Not_overridden_role' ELSE 'Role of beams ' || " + role +
            " END, 's' || i, 'm' || i, 'VEL', i % " + std::to_string(types) + ", 1, CASE WHEN " + subtype +
            " = 0 THEN '' ELSE 'Section family ' || " + subtype + " END, 'p' FROM n");
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        require(StructNumberingPrefixMarshal::getTable(records) == 1 && records.length() == rows,
                "the table is not read");
        std::uint64_t state = 5;
        const auto random = [&](int count) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            return static_cast<int>((state >> 33) % static_cast<unsigned>(count));
        };
        for (long i = 0; i < lookUps; ++i)
            ids.emplace_back(KorString::format(L"role of beams %d", random(roles + 5)), random(types), 0, -1,
                             KorString::format(L"section family %d", random(subtypes + 5)));
    }
};

/// The walk as it stands in the rules.
int plainLoop(const KorArray<Record>& records, const KorNumberingPrefixId& id, Record& out)
{
    static const KorString anyRole = L"Not_overridden_role";
    const Record* levels[3] = {};
    for (const Record& record : records) {
        if (record.objectType != id.getObjectType())
            continue;
        const bool sameSubtype = record.profileSubtype.compareNoCase(id.getProfileSubtype()) == 0;
        if (!sameSubtype && !record.profileSubtype.isEmpty())
            continue;
        const bool sameRole = record.modelRole.compareNoCase(id.getModelRole()) == 0;
        if (sameSubtype && sameRole) {
            out = record;
            return 1;
        }
        if (sameRole)
            levels[1] = &record;
        else if (record.modelRole.compareNoCase(anyRole) == 0)
            levels[sameSubtype ? 0 : 2] = &record;
    }
    for (const Record* record : levels) {
        if (record == nullptr)
            continue;
        out = *record;
        return 1;
    }
    return -1;
}

template <class Find>
void lookUp(benchmark::State& state, const char* series, const Prefixes& prefixes, Find find)
{
    long keys = 0, expected = 0;
    Record record;
    for (const KorNumberingPrefixId& id : prefixes.ids)
        expected += plainLoop(prefixes.records, id, record) == 1 ? record.key : -1;
    for (auto _ : state) {
        keys = 0;
        note(state, series, seconds([&] {
                 for (const KorNumberingPrefixId& id : prefixes.ids)
                     keys += find(id, record) == 1 ? record.key : -1;
             }));
        require(keys == expected, "another prefix was found");
    }
}

void prefixLibrary(benchmark::State& state)
{
    const Prefixes prefixes;
    lookUp(state, "prefix library", prefixes, [](const KorNumberingPrefixId& id, Record& record) {
        return KorOdbcNumberingPrefix::findNumberingPrefix(id, 1, record);
    });
}

void prefixPlain(benchmark::State& state)
{
    const Prefixes prefixes;
    lookUp(state, "prefix plain", prefixes, [&](const KorNumberingPrefixId& id, Record& record) {
        return plainLoop(prefixes.records, id, record);
    });
}

} // namespace

void registerPrefixBenchmarks()
{
    const int runs = bench::quick ? 7 : 31;
    const bench::NamedBenchmark all[] = {{"prefix/library", prefixLibrary}, {"prefix/plain", prefixPlain}};
    for (const auto& [name, run] : all)
        benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
    bench::compare("numbering prefix among 10,000", "prefix library", "prefix plain", 1.5, lookUps, "a look-up");
}
