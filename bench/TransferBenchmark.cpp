#include "Database.h"
#include "EmbeddedHost.h"
#include "PlainStyleCopy.h"
#include "repository/DetailDatabase.h"
#include "repository/KorDatabaseAccess.h"
#include "Results.h"
#include "StyleGenerator.h"
#include "transfer/KorODBCDetailStyleExports.h"
#include "Workplace.h"

#include <map>
#include <memory>
#include <unistd.h>

namespace {

using namespace bench;

long rowsOf(const std::string& file)
{
    Database database(file);
    long rows = 0;
    Query tables = database.prepare("SELECT name FROM sqlite_master WHERE type = 'table'");
    while (tables.step())
        rows += database.value("SELECT count(*) FROM [" + std::string(tables.text(0)) + "]");
    return rows;
}

/// The files of the runs of one size: a style to move, and the databases to move it into.
class Files {
public:
    /// `others`: rows of another style in the same database.
    Files(long rows, long others)
    {
        std::string error;
        require(korodbc::host::createDetailDatabase(empty(), error), error);
        style = generateStyleDatabase(source(), {.seed = 42, .rows = rows, .firstKey = 1, .prefix = {}});
        if (others > 0)
            generateStyle(source(), {.seed = 43, .rows = others, .firstKey = 1000000, .prefix = "Other "});
        Database(source()).useHostPragmas();
        ::sync(); // what was generated does not wait for the disk while a run is measured
    }
    std::string source() const { return m_place.file("style.db"); }
    std::string empty() const { return m_place.file("empty.db"); }
    std::string target() const { return m_place.file("target.db"); }
    /// The next run writes into a fresh copy of a database.
    void freshTarget(const std::string& from) const { copyDatabase(from, target()); }

    GeneratedStyle style;
    long moved[2] = {-1, -1}; // rows in the target after an export or import; both ways have to agree

    void check(bool import)
    {
        const long rows = rowsOf(target());
        require(moved[import] < 0 || moved[import] == rows, "library and plain loop store " +
                                                                std::to_string(moved[import]) + " and " +
                                                                std::to_string(rows) + " rows");
        moved[import] = rows;
    }

private:
    Workplace m_place;
};

Files& files(const benchmark::State& state)
{
    static std::map<std::pair<long, long>, std::unique_ptr<Files>> made;
    auto& of = made[{state.range(0), state.range(1)}];
    if (!of)
        of = std::make_unique<Files>(state.range(0), state.range(1));
    return *of;
}

std::string series(const std::string& what, long rows, long others)
{
    return what + " " + std::to_string(rows) + (others > 0 ? " of " + std::to_string(rows + others) : "");
}
std::string series(const char* what, const benchmark::State& state)
{
    return series(what, state.range(0), state.range(1));
}

void exportLibrary(benchmark::State& state)
{
    Files& data = files(state);
    Repository repository;
    for (auto _ : state) {
        data.freshTarget(data.empty());
        repository.use(KorDSNDefinitions::kDetails, data.source());
        int result = 0;
        note(state, series("export library", state), seconds([&] {
                 result = KorODBCDetailStyleExports::exportDetail(
                     KorODBCDetailStyleExports::kDetailStyle, KorOdbcKey(data.style.key),
                     KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase, KorString::fromUtf8(data.target()));
             }));
        require(result == 1, "export: " + KorODBCDetailStyleExports::m_StandardErrorMessage.toUtf8());
        data.check(false);
    }
}

void exportPlain(benchmark::State& state)
{
    Files& data = files(state);
    for (auto _ : state) {
        data.freshTarget(data.empty());
        note(state, series("export plain", state), seconds([&] {
                 Database source(data.source()), target(data.target());
                 source.useHostPragmas();
                 target.useHostPragmas();
                 copyStyle(source, target, data.style.masterKey, false);
                 // an exported file is one file
                 target.run("PRAGMA journal_mode = DELETE");
             }));
        data.check(false);
    }
}

void importLibrary(benchmark::State& state)
{
    Files& data = files(state);
    Repository repository;
    for (auto _ : state) {
        data.freshTarget(data.source());
        repository.use(KorDSNDefinitions::kDetails, data.target());
        KorDatabaseAccess::setConnection(KorDSNDefinitions::kAddin, KorString::fromUtf8(data.source()));
        int result = 0;
        note(state, series("import library", state), seconds([&] {
                 result = KorODBCDetailStyleExports::importDetail(
                     KorODBCDetailStyleExports::kDetailStyle, KorOdbcKey(data.style.key),
                     KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, KorDSNDefinitions::kDetails,
                     KorDSNDefinitions::kBase);
             }));
        require(result == 1, "import: " + KorODBCDetailStyleExports::m_StandardErrorMessage.toUtf8());
        korodbc::host::closeRepository();
        data.check(true);
    }
}

void importPlain(benchmark::State& state)
{
    Files& data = files(state);
    for (auto _ : state) {
        data.freshTarget(data.source());
        {
            std::unique_ptr<Database> source, target;
            note(state, series("import plain", state), seconds([&] {
                     source = std::make_unique<Database>(data.source());
                     target = std::make_unique<Database>(data.target());
                     source->useHostPragmas();
                     target->useHostPragmas();
                     copyStyle(*source, *target, data.style.masterKey, true);
                 }));
        }
        data.check(true);
    }
}

} // namespace

void registerTransferBenchmarks()
{
    using bench::quick;
    const struct {
        long rows, others;
        int runs;
    } sizes[] = {{1000, 0, quick ? 5 : 21}, {10000, 0, quick ? 3 : 9}, {100000, 0, 5}, {1000, 99000, 5}};
    for (const auto& [rows, others, runs] : sizes) {
        if (quick && rows + others > 10000)
            continue;
        const bench::NamedBenchmark all[] = {{"export/library", exportLibrary},
                                             {"export/plain", exportPlain},
                                             {"import/library", importLibrary},
                                             {"import/plain", importPlain}};
        for (const auto& [name, run] : all)
            benchmark::RegisterBenchmark(name, run)
                ->Args({rows, others})
                ->ArgNames({"rows", "others"})
                ->UseManualTime()
                ->Iterations(runs)
                ->Unit(benchmark::kMillisecond);
        const std::string item = ": style of " + std::to_string(rows) +
                                 (others > 0 ? " among " + std::to_string(rows + others) : "") + " rows";
        for (const std::string way : {"export", "import"})
            bench::compare(way + item, series(way + " library", rows, others),
                           series(way + " plain", rows, others), others > 0 ? 0 : 2.0, static_cast<double>(rows),
                           "a row");
    }
}

/// Time a row must not grow with the size.
void transferFigures()
{
    for (const char* way : {"export", "import"}) {
        const auto perRow = [&](long rows) {
            return bench::median(std::string(way) + " library " + std::to_string(rows)) /
                   static_cast<double>(rows);
        };
        if (perRow(100000) > 0 && perRow(1000) > 0 && perRow(10000) > 0)
            bench::figure(std::string(way) + ": time a row at 100,000 against 10,000",
                          perRow(100000) / perRow(10000), 1.5, "times");
    }
}
