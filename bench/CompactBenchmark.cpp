#include "Database.h"
#include "DetailGenerator.h"
#include "PlainCompaction.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <map>
#include <memory>
#include <string_view>
#include <unistd.h>

namespace {

using namespace bench;

const struct {
    const char* name;
    double duplicates;
} kinds[] = {{"half", 0.5}, {"all", 1}, {"none", 0}};

/// Rows of each table, and a number that tells its contents, those of the copies left out.
using Contents = std::map<std::string, std::pair<long, std::uint64_t>>;

Contents contentsOf(const std::string& file)
{
    Database database(file);
    Contents contents;
    Query tables =
        database.prepare("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE '%_VELCopy'");
    while (tables.step()) {
        const std::string name(tables.text(0));
        auto& [count, sum] = contents[name];
        Query rows = database.prepare("SELECT * FROM [" + name + "] ORDER BY rowid");
        for (; rows.step(); ++count)
            for (int column = 0; column < sqlite3_column_count(rows.handle()); ++column) {
                const bool isNull = sqlite3_column_type(rows.handle(), column) == SQLITE_NULL;
                sum = sum * 31 + (isNull ? 7 : std::hash<std::string_view>()(rows.text(column)));
            }
    }
    return contents;
}

std::string difference(const Contents& ours, const Contents& plain)
{
    std::string text;
    for (const auto& [table, rows] : ours)
        if (const auto other = plain.find(table); other == plain.end() || other->second != rows)
            text += " " + table + " (" + std::to_string(rows.first) + " rows against " +
                    std::to_string(other == plain.end() ? -1 : other->second.first) + ")";
    return ours.size() == plain.size() ? text : text + " number of tables";
}

/// A generated database, and the copy of it that a run compacts.
class Files {
public:
    Files(long rows, double duplicates)
    {
        made = generateDetailDatabase(source(), {.seed = 42, .rows = rows, .duplicates = duplicates});
        Database(source()).useHostPragmas();
        ::sync(); // what was generated does not wait for the disk while a run is measured
    }
    std::string source() const { return m_place.file("details.db"); }
    std::string target() const { return m_place.file("target.db"); }
    void freshTarget() const { copyDatabase(source(), target()); }

    /// Library and plain loop have to leave the same rows.
    void check(bool library)
    {
        (library ? m_ours : m_plain) = contentsOf(target());
        if (m_ours.empty() || m_plain.empty())
            return;
        const std::string text = difference(m_ours, m_plain);
        require(text.empty(), "library and plain loop leave different rows:" + text);
    }

    GeneratedDetails made;

private:
    Workplace m_place;
    Contents m_ours, m_plain;
};

Files& files(const benchmark::State& state)
{
    static std::map<std::pair<long, long>, std::unique_ptr<Files>> made;
    auto& of = made[{state.range(0), state.range(1)}];
    if (!of)
        of = std::make_unique<Files>(state.range(0), kinds[state.range(1)].duplicates);
    return *of;
}

std::string series(const char* way, long kind, long rows)
{
    return std::string("compact ") + way + " " + kinds[kind].name + " " + std::to_string(rows);
}

void compactWith(benchmark::State& state, const char* way)
{
    Files& data = files(state);
    Repository repository;
    for (auto _ : state) {
        data.freshTarget();
        repository.use(KorDSNDefinitions::kDetails, data.target());
        int result = 0;
        note(state, series(way, state.range(1), state.range(0)), seconds([&] {
                 result = KorOdbcCompactDetailsTables::startCompactProcess(
                     KorDSNDefinitions::kDetails, 1, KorOdbcCompactDetailsTables::kCompactAll);
             }));
        require(result == 1, "compaction failed");
        korodbc::host::closeRepository();
        data.check(true);
    }
}

void compactLibrary(benchmark::State& state) { compactWith(state, "library"); }

/// The plain loop takes no copies either.
void compactLibraryWithoutCopies(benchmark::State& state)
{
    KorODBCDetailStyleExports::CancelBackupTables(1);
    compactWith(state, "uncopied");
    KorODBCDetailStyleExports::CancelBackupTables(0);
}

void compactPlain(benchmark::State& state)
{
    Files& data = files(state);
    for (auto _ : state) {
        data.freshTarget();
        {
            Database database(data.target());
            database.useHostPragmas();
            note(state, series("plain", state.range(1), state.range(0)),
                 seconds([&] { compactDetails(database); }));
        }
        data.check(false);
    }
}

} // namespace

void registerCompactBenchmarks()
{
    using bench::quick;
    const struct {
        long rows;
        int runs;
    } sizes[] = {{1000, quick ? 5 : 11}, {10000, quick ? 3 : 7}, {100000, 5}};
    for (const auto& [rows, runs] : sizes) {
        if (quick && rows > 10000)
            continue;
        for (long kind = 0; kind < static_cast<long>(std::size(kinds)); ++kind) {
            const bench::NamedBenchmark all[] = {{"compact/library", compactLibrary},
                                                 {"compact/uncopied", compactLibraryWithoutCopies},
                                                 {"compact/plain", compactPlain}};
            for (const auto& [name, run] : all)
                benchmark::RegisterBenchmark(name, run)
                    ->Args({rows, kind})
                    ->ArgNames({"rows", "kind"})
                    ->UseManualTime()
                    ->Iterations(runs)
                    ->Unit(benchmark::kMillisecond);
            const std::string item =
                "compact " + std::to_string(rows) + " rows, " + kinds[kind].name + " of them duplicates";
            const bool isLimited = rows == 100000 && kind == 0;
            bench::compare(item, series("library", kind, rows), series("plain", kind, rows), isLimited ? 3.0 : 0,
                           static_cast<double>(rows), "a row");
            bench::compare(item + ", no edit copies", series("uncopied", kind, rows), series("plain", kind, rows),
                           0, static_cast<double>(rows), "a row");
        }
    }
}

/// Time a row must not grow with the size.
void compactFigures()
{
    for (long kind = 0; kind < static_cast<long>(std::size(kinds)); ++kind) {
        const auto perRow = [&](long rows) {
            return bench::median(series("library", kind, rows)) / static_cast<double>(rows);
        };
        for (const long rows : {1000L, 10000L})
            if (perRow(100000) > 0 && perRow(rows) > 0)
                bench::figure("compact, " + std::string(kinds[kind].name) + ": time a row at 100,000 against " +
                                  std::to_string(rows),
                              perRow(100000) / perRow(rows), 1.5, "times");
    }
}
