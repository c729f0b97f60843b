#include "Database.h"
#include "PlainStyleCopy.h"
#include "repository/DetailDatabase.h"
#include "Results.h"
#include "StyleGenerator.h"
#include "Workplace.h"

#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <algorithm>
#include <map>
#include <memory>
#include <tuple>
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

/// Adds a process with the key 1 that names the style in all its style maps. Returns its number of rows.
long addProcess(const std::string& file, int styleKey, long rows)
{
    const long steps = std::clamp(rows / 50, 4L, 24L);    // a process has columns for 24
    const long mapItems = std::max(rows / steps - 9, 1L); // beside them a step has nine rows
    Database database(file);
    database.run("PRAGMA synchronous = OFF");
    database.run("BEGIN");
    const long sets = database.value("SELECT count(*) FROM DetObjQualifierSet");
    database.run(
        "INSERT INTO DetailProcessCategories (Key, RunName, SortOrder, OwnerText) VALUES (1, 'Shop', 1, 'VEL')");
    const auto fill = [&](const std::string& table, const std::string& columns, const std::string& cells,
                          long count) {
        database.run("INSERT INTO " + table + " (" + columns +
                     ") WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " +
                     std::to_string(count) + ") SELECT " + cells + " FROM n");
    };
    const auto times = [](long count) { return std::to_string(count); };
    fill("DetailFilenameSelector", "Key, RunName, Folder, NameFormat, FirstNumber, Digits, OwnerText",
         "i + 1, 'Files of step ' || i, 'Shop/' || i, '%Position%-%Number%', 1, 3, 'VEL'", steps);
    fill("DetailProcessScales", "Key, RunName, OwnerText, NumberItems", "i + 1, 'Scales ' || i, 'VEL', 4", steps);
    fill("DetailProcessScalesItem", "Key, DetProcScaleId, [Order], Scale, MaxLength",
         "i + 1, i / 4 + 1, i % 4, 5.0 * (i % 4 + 1), 1000.0 * (i % 4)", 4 * steps);
    fill("DetailProcessMain2CutScale",
         "Key, RunName, OwnerText, NumberItems, MainViewScale1, CutScale1, MainViewScale2, CutScale2",
         "i + 1, 'Cuts ' || i, 'VEL', 2, 10, 5, 20, 10", steps);
    fill("DetailStyleMapNew", "Key, RunName, OwnerText, NumberItems",
         "i + 1, 'Map ' || i, 'VEL', " + times(mapItems), steps);
    fill("DetailStyleMapItems", "Key, [Order], Script, ObjQualifierSet, DetailStyle, DetailStyleOverrides",
         "i / " + times(mapItems) + " + 1, i % " + times(mapItems) + ", 'Length > ' || i, i % " + times(sets) +
             " + 1, " + times(styleKey) + ", 0",
         steps * mapItems);
    fill("DetailProcessStep",
         "Key, RunName, Category, FilenameSelector, AlternativeScales, DependOnMainView, StyleMap, Selection, "
         "Sort, StepOrder, DetailsPerSheet, FitSheetToDetails, MarginX, MarginY, DetailGap, OwnerText",
         "i + 1, 'Step ' || i, 1, i + 1, i + 1, i + 1, i + 1, 1, 1, i, 4, 1, 10.0, 10.0, 5.0, 'VEL'", steps);
    std::string columns, cells;
    for (long step = 1; step <= steps; ++step) {
        columns += ", Step" + times(step);
        cells += ", " + times(step);
    }
    database.run("INSERT INTO DetailProcessDefinition (Key, RunName, Category, Description, BitmapId, SortOrder, "
                 "OwnerText, NumberSteps" +
                 columns + ") VALUES (1, 'Shop drawings', 1, 'All beams', 100, 1, 'VEL', " + times(steps) + cells +
                 ")");
    database.run("COMMIT");
    return 2 + steps * (9 + mapItems);
}

/// The files of the runs of one size: a style to move, and the databases to move it into.
class Files {
public:
    /// `others`: rows of another style in the same database. With a process, the style has four of five rows.
    Files(long rows, long others, bool process)
    {
        korodbc::host::HostError error;
        require(korodbc::host::createDetailDatabase(empty(), error), error.text);
        const long processRows = process ? rows / 5 : 0;
        style =
            generateStyleDatabase(source(), {.seed = 42, .rows = rows - processRows, .firstKey = 1, .prefix = {}});
        generated = style.rows + (process ? addProcess(source(), style.key, processRows) : 0);
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
    long generated = 0;       // rows to move
    long moved[2] = {-1, -1}; // rows in the target after an export or import; both ways have to agree

    void check(bool import)
    {
        const long rows = rowsOf(target());
        require(import || rows == generated,
                "exported " + std::to_string(rows) + " rows of " + std::to_string(generated));
        require(moved[import] < 0 || moved[import] == rows, "library and plain loop store " +
                                                                std::to_string(moved[import]) + " and " +
                                                                std::to_string(rows) + " rows");
        moved[import] = rows;
    }

private:
    Workplace m_place;
};

using Exports = KorODBCDetailStyleExports;

constexpr int processKey = 1;

/// What a run moves.
struct Case {
    long rows, others;
    bool process;

    explicit Case(const benchmark::State& state) : Case(state.range(0), state.range(1), state.range(2) != 0) {}
    Case(long ownRows, long otherRows, bool ofProcess) : rows(ownRows), others(otherRows), process(ofProcess) {}

    std::string series(const std::string& what) const
    {
        return what + (process ? " process " : " ") + std::to_string(rows) +
               (others > 0 ? " of " + std::to_string(rows + others) : "");
    }
    Exports::eType type() const { return process ? Exports::kDetailProcess : Exports::kDetailStyle; }
    KorOdbcKey key(const Files& data) const { return KorOdbcKey(process ? processKey : data.style.key); }
    void copy(Database& source, Database& target, const Files& data, bool reuseEqualSets) const
    {
        if (process)
            copyProcess(source, target, processKey, reuseEqualSets);
        else
            copyStyle(source, target, data.style.masterKey, reuseEqualSets);
    }
    Files& files() const
    {
        static std::map<std::tuple<long, long, bool>, std::unique_ptr<Files>> made;
        auto& of = made[{rows, others, process}];
        if (!of)
            of = std::make_unique<Files>(rows, others, process);
        return *of;
    }
};

void exportLibrary(benchmark::State& state)
{
    const Case what(state);
    Files& data = what.files();
    Repository repository;
    for (auto _ : state) {
        data.freshTarget(data.empty());
        repository.use(KorDSNDefinitions::kDetails, data.source());
        int result = 0;
        note(state, what.series("export library"), seconds([&] {
                 result = Exports::exportDetail(what.type(), what.key(data), KorDSNDefinitions::kDetails,
                                                KorDSNDefinitions::kBase, KorString::fromUtf8(data.target()));
             }));
        require(result == 1, "export: " + Exports::m_StandardErrorMessage.toUtf8());
        data.check(false);
    }
}

void exportPlain(benchmark::State& state)
{
    const Case what(state);
    Files& data = what.files();
    for (auto _ : state) {
        data.freshTarget(data.empty());
        note(state, what.series("export plain"), seconds([&] {
                 Database source(data.source()), target(data.target());
                 source.useHostPragmas();
                 target.useHostPragmas();
                 what.copy(source, target, data, false);
                 // an exported file is one file
                 target.run("PRAGMA journal_mode = DELETE");
             }));
        data.check(false);
    }
}

void importLibrary(benchmark::State& state)
{
    const Case what(state);
    Files& data = what.files();
    Repository repository;
    for (auto _ : state) {
        data.freshTarget(data.source());
        repository.use(KorDSNDefinitions::kDetails, data.target());
        KorDatabaseAccess::setConnection(KorDSNDefinitions::kAddin, KorString::fromUtf8(data.source()));
        int result = 0;
        note(state, what.series("import library"), seconds([&] {
                 result = Exports::importDetail(what.type(), what.key(data), KorDSNDefinitions::kAddin,
                                                KorDSNDefinitions::kFirstAddin, KorDSNDefinitions::kDetails,
                                                KorDSNDefinitions::kBase);
             }));
        require(result == 1, "import: " + Exports::m_StandardErrorMessage.toUtf8());
        korodbc::host::closeRepository();
        data.check(true);
    }
}

void importPlain(benchmark::State& state)
{
    const Case what(state);
    Files& data = what.files();
    for (auto _ : state) {
        data.freshTarget(data.source());
        {
            std::unique_ptr<Database> source, target;
            note(state, what.series("import plain"), seconds([&] {
                     source = std::make_unique<Database>(data.source());
                     target = std::make_unique<Database>(data.target());
                     source->useHostPragmas();
                     target->useHostPragmas();
                     what.copy(*source, *target, data, true);
                 }));
        }
        data.check(true);
    }
}

} // namespace

void registerTransferBenchmarks()
{
    using bench::quick;
    KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = 1;
    const struct {
        long rows, others;
        int runs;
        bool process;
    } sizes[] = {
        // a process beside the style that it is held against
        {1000, 0, quick ? 5 : 21, false}, {1000, 0, quick ? 5 : 21, true}, {10000, 0, quick ? 3 : 9, false},
        {10000, 0, quick ? 3 : 9, true},  {100000, 0, 5, false},           {100000, 0, 5, true},
        {1000, 99000, 5, false}};
    for (const auto& [rows, others, runs, process] : sizes) {
        if (quick && rows + others > 10000)
            continue;
        const bench::NamedBenchmark all[] = {{"export/library", exportLibrary},
                                             {"export/plain", exportPlain},
                                             {"import/library", importLibrary},
                                             {"import/plain", importPlain}};
        for (const auto& [name, run] : all)
            benchmark::RegisterBenchmark(name, run)
                ->Args({rows, others, process})
                ->ArgNames({"rows", "others", "process"})
                ->UseManualTime()
                ->Iterations(runs)
                ->Unit(benchmark::kMillisecond);
        const std::string item = std::string(process ? ": process of " : ": style of ") + std::to_string(rows) +
                                 (others > 0 ? " among " + std::to_string(rows + others) : "") + " rows";
        const Case what(rows, others, process);
        for (const std::string way : {"export", "import"})
            bench::compare(way + item, what.series(way + " library"), what.series(way + " plain"),
                           others > 0 ? 0 : 2.0, static_cast<double>(rows), "a row");
    }
}

/// Time a row must not grow with the size, nor be longer for a process than for a style.
void transferFigures()
{
    const auto perRow = [](const std::string& way, long rows, bool process) {
        const Case what(rows, 0, process);
        const double seconds = bench::median(what.series(way + " library"));
        return seconds <= 0 ? 0 : seconds / static_cast<double>(what.files().generated);
    };
    for (const std::string way : {"export", "import"}) {
        for (const bool process : {false, true})
            if (const double some = perRow(way, 10000, process), many = perRow(way, 100000, process);
                some > 0 && many > 0)
                bench::figure(way + (process ? " process" : "") + ": time a row at 100,000 against 10,000",
                              many / some, 1.5, "times");
        for (const long rows : {1000L, 10000L, 100000L})
            if (const double style = perRow(way, rows, false), process = perRow(way, rows, true);
                style > 0 && process > 0)
                bench::figure(way + ": time a row of a process against a style, " + std::to_string(rows) + " rows",
                              process / style, 1.2, "times");
    }
}
