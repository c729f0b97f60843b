#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/catalogues/KorOdbcGrouping.h>
#include <korodbc/records/configuration/MaterialRecords.h>
#include <korodbc/repository/KorDSNManager.h>

#include <algorithm>
#include <charconv>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using namespace bench;
using Item = StructPreferredSizesItems;

constexpr int materials = 20000;
constexpr int preferred = 10000; // of them, by one of two profiles
constexpr int profile = 1;

/// A catalogue of materials, half of which are preferred, among as many sizes of other lists and of the other
/// profile.
struct Sizes {
    Repository repository;
    KorArray<StructMaterial> catalogue;
    KorArray<Item> items;

    Sizes()
    {
        const auto numbers = [](int count) {
            return " WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < " +
                   std::to_string(count) + ") ";
        };
        Database configuration((repository.folder() / "configuration.db").string());
        configuration.run("DELETE FROM Material");
        configuration.run("INSERT INTO Material (Key, RunName, SortOrder)" + numbers(materials) +
                          "SELECT i, 'S' || i || ' +N', i FROM n");
        Database addin((repository.folder() / "addin.db").string());
        addin.run("DELETE FROM PreferredSizesItems");
        for (const char* other : {"1, 2, 1, 2", "2, 2, 1, 2", "1, 2, 2, 2"})
            addin.run("INSERT INTO PreferredSizesItems (ProfileID, TypeID, CategoryID, TableID, KeyValue)" +
                      numbers(preferred) + "SELECT " + other + ", (i * 7919 % 10000) * 2 + 1 FROM n");
        const KorDSNRequest sizes(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
        require(StructPreferredSizesItemsMarshal::getTable(items) == 1 && items.length() == 3 * preferred,
                "the preferred sizes are not read");
        const KorDSNRequest main(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        require(StructMaterialMarshal::getTable(catalogue) == 1 && catalogue.length() == materials,
                "the materials are not read");
        KorArray<int> active;
        active.append(profile);
        KorOdbcGrouping::setPreferredProfiles(active);
    }
    ~Sizes()
    {
        KorArray<int> none;
        KorOdbcGrouping::setPreferredProfiles(none);
    }
};

/// The loop over the same records: keys that are preferred, then the names of the catalogue's rows that have them.
void plainList(const Sizes& sizes, KorArray<KorString>& names)
{
    names.removeAll();
    std::unordered_set<int> keys;
    keys.reserve(preferred);
    for (const Item& item : sizes.items) {
        if (item.typeID != 2 || item.categoryID != 1 || item.tableID != 2 || item.profileID != profile)
            continue;
        const std::string text = item.keyValue.toUtf8();
        int key = 0;
        const auto end = std::from_chars(text.data(), text.data() + text.size(), key);
        if (end.ec == std::errc() && end.ptr == text.data() + text.size())
            keys.insert(key);
    }
    std::vector<const StructMaterial*> order;
    order.reserve(materials);
    for (const StructMaterial& material : sizes.catalogue)
        if (keys.contains(material.key))
            order.push_back(&material);
    const auto before = [](const StructMaterial* a, const StructMaterial* b) {
        return a->sortOrder < b->sortOrder;
    };
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::stable_sort(order.begin(), order.end(), before);
    for (const StructMaterial* material : order)
        names.append(material->runName);
}

template <class Fill>
void list(benchmark::State& state, const char* series, Fill fill)
{
    const Sizes sizes;
    KorArray<KorString> names, expected;
    plainList(sizes, expected);
    fill(sizes, names);
    fill(sizes, names); // as a dialog that is opened again
    for (auto _ : state)
        note(state, series, seconds([&] { fill(sizes, names); }));
    require(expected.length() == preferred &&
                std::equal(names.begin(), names.end(), expected.begin(), expected.end()),
            "the lists differ");
}

void ofLibrary(const Sizes&, KorArray<KorString>& names)
{
    KorOdbcGrouping::getMaterialList(names, KorOdbcGrouping::kBeam, 0);
}

void listLibrary(benchmark::State& state) { list(state, "preferred library", ofLibrary); }

void listPlain(benchmark::State& state) { list(state, "preferred plain", plainList); }

/// The first list after a change of the sizes.
void firstLibrary(benchmark::State& state)
{
    const Sizes sizes;
    Database addin((sizes.repository.folder() / "addin.db").string());
    KorArray<KorString> names;
    for (auto _ : state) {
        addin.run("UPDATE PreferredSizesItems SET MasterKeyValue = '' WHERE Key = 1");
        note(state, "preferred first", seconds([&] { ofLibrary(sizes, names); }));
    }
}

} // namespace

void registerPreferredBenchmarks()
{
    const int runs = bench::quick ? 7 : 31;
    const bench::NamedBenchmark all[] = {{"preferred/list/library", listLibrary},
                                         {"preferred/list/plain", listPlain},
                                         {"preferred/first list/library", firstLibrary}};
    for (const auto& [name, run] : all)
        benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
    bench::compare("a restricted list of 10,000 names", "preferred library", "preferred plain", 1.5, 1, "a list");
    bench::compare("the same after the sizes changed", "preferred first", "preferred plain", 0, 1, "a list");
}
