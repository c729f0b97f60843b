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
    explicit Files(long rows)
    {
        std::string error;
        require(korodbc::host::createDetailDatabase(empty(), error), error);
        style = generateStyleDatabase(source(), {.seed = 42, .rows = rows, .firstKey = 1, .prefix = {}});
        Database(source()).useHostPragmas();
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
        require(moved[import] < 0 || moved[import] == rows,
                "library and plain loop store " + std::to_string(moved[import]) + " and " + std::to_string(rows) + " rows");
        moved[import] = rows;
    }

private:
    Workplace m_place;
};

Files& files(long rows)
{
    static std::map<long, std::unique_ptr<Files>> made;
    auto& of = made[rows];
    if (!of)
        of = std::make_unique<Files>(rows);
    return *of;
}

std::string series(const char* what, long rows) { return std::string(what) + " " + std::to_string(rows); }

void exportLibrary(benchmark::State& state)
{
    const long rows = state.range(0);
    Files& data = files(rows);
    Repository repository;
    for (auto _ : state) {
        data.freshTarget(data.empty());
        repository.use(KorDSNDefinitions::kDetails, data.source());
        int result = 0;
        note(state, series("export library", rows), seconds([&] {
                 result = KorODBCDetailStyleExports::exportDetail(
                     KorODBCDetailStyleExports::kDetailStyle, KorOdbcKey(data.style.key), KorDSNDefinitions::kDetails,
                     KorDSNDefinitions::kBase, KorString::fromUtf8(data.target()));
             }));
        require(result == 1, "export: " + KorODBCDetailStyleExports::m_StandardErrorMessage.toUtf8());
        data.check(false);
    }
}

void exportPlain(benchmark::State& state)
{
    const long rows = state.range(0);
    Files& data = files(rows);
    for (auto _ : state) {
        data.freshTarget(data.empty());
        note(state, series("export plain", rows), seconds([&] {
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
    const long rows = state.range(0);
    Files& data = files(rows);
    Repository repository;
    for (auto _ : state) {
        data.freshTarget(data.source());
        repository.use(KorDSNDefinitions::kDetails, data.target());
        KorDatabaseAccess::setConnection(KorDSNDefinitions::kAddin, KorString::fromUtf8(data.source()));
        int result = 0;
        note(state, series("import library", rows), seconds([&] {
                 result = KorODBCDetailStyleExports::importDetail(
                     KorODBCDetailStyleExports::kDetailStyle, KorOdbcKey(data.style.key), KorDSNDefinitions::kAddin,
                     KorDSNDefinitions::kFirstAddin, KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
             }));
        require(result == 1, "import: " + KorODBCDetailStyleExports::m_StandardErrorMessage.toUtf8());
        korodbc::host::closeRepository();
        data.check(true);
    }
}

void importPlain(benchmark::State& state)
{
    const long rows = state.range(0);
    Files& data = files(rows);
    for (auto _ : state) {
        data.freshTarget(data.source());
        {
            std::unique_ptr<Database> source, target;
            note(state, series("import plain", rows), seconds([&] {
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
    for (const long rows : {1000L, 10000L, 100000L}) {
        if (quick && rows > 10000)
            continue;
        const int runs = rows == 1000 ? (quick ? 5 : 21) : rows == 10000 ? (quick ? 3 : 9) : 5;
        const bench::NamedBenchmark all[] = {{"export/library", exportLibrary},
                                             {"export/plain", exportPlain},
                                             {"import/library", importLibrary},
                                             {"import/plain", importPlain}};
        for (const auto& [name, run] : all)
            benchmark::RegisterBenchmark(name, run)->Arg(rows)->UseManualTime()->Iterations(runs)->Unit(
                benchmark::kMillisecond);
        for (const char* way : {"export", "import"})
            bench::compare(std::string(way) + ": style of " + std::to_string(rows) + " rows",
                           std::string(way) + " library " + std::to_string(rows),
                           std::string(way) + " plain " + std::to_string(rows), 2.0, static_cast<double>(rows), "a row");
    }
}

/// Time a row must not grow with the size: the largest style against the slower of the two smaller ones.
void transferFigures()
{
    for (const char* way : {"export", "import"}) {
        const auto perRow = [&](long rows) {
            return bench::median(std::string(way) + " library " + std::to_string(rows)) / static_cast<double>(rows);
        };
        if (perRow(100000) > 0 && perRow(1000) > 0 && perRow(10000) > 0)
            bench::figure(std::string(way) + ": time a row at 100,000 against 10,000", perRow(100000) / perRow(10000),
                          1.5, "times");
    }
}
