#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <algorithm>
#include <memory>
#include <unistd.h>
#include <vector>

namespace {

using namespace bench;

constexpr int tables = 300; // in each database

/// A repository whose databases all have 300 tables.
class FullRepository {
public:
    FullRepository()
    {
        std::string error;
        require(korodbc::host::buildRepository(folder(), KORODBC_SOURCE_CATALOGUE,
                                               {{"no", "Norway", "sqlite:norway.db"}}, {}, error),
                error);
        for (const auto& entry : std::filesystem::directory_iterator(folder())) {
            if (entry.path().extension() != ".db")
                continue;
            m_files.push_back(entry.path().string());
            Database database(m_files.back());
            database.run("PRAGMA synchronous = OFF");
            database.run("BEGIN");
            for (long made = database.value("SELECT count(*) FROM sqlite_master WHERE type = 'table'");
                 made < tables; ++made)
                database.run(
                    "CREATE TABLE Site" + std::to_string(made) +
                    " (Key INTEGER PRIMARY KEY, RunName TEXT, OwnerText TEXT, Width REAL, Height REAL, "
                    "Length REAL, Grade TEXT, Standard TEXT, Supplier TEXT, Weight REAL, SortOrder INTEGER)");
            database.run("COMMIT");
        }
        ::sync(); // nothing of this waits for the disk while a run is measured
    }
    std::filesystem::path folder() const { return m_place.folder() / "repository"; }
    const std::vector<std::string>& files() const { return m_files; }

private:
    Workplace m_place;
    std::vector<std::string> m_files;
};

void startLibrary(benchmark::State& state)
{
    const FullRepository repository;
    for (auto _ : state) {
        bool started = false;
        note(state, "start library", seconds([&] {
                 std::string error;
                 started = korodbc::host::openRepository(repository.folder(), error) &&
                           KorOdbcDSNDefinitions::initOEDbConnections() == 1 &&
                           KorOdbcMan::initializeTables() == 1;
             }));
        require(started, "the repository does not start");
        // what a host does at once: look at every data source
        note("start library sources", seconds([] {
                 for (const auto& source : korodbc::host::sources())
                     require(source.usable, source.error);
             }));
        KorOdbcMan::InitializeStatics::release();
        korodbc::host::closeRepository();
    }
}

void startPlain(benchmark::State& state)
{
    const FullRepository repository;
    for (auto _ : state) {
        std::vector<std::unique_ptr<Database>> open;
        long found = 0;
        note(state, "start plain", seconds([&] {
                 for (const std::string& file : repository.files()) {
                     open.push_back(std::make_unique<Database>(file));
                     open.back()->useHostPragmas();
                     Query names = open.back()->prepare("SELECT name FROM sqlite_master WHERE type = 'table'");
                     while (names.step())
                         ++found;
                 }
             }));
        require(found >= tables * static_cast<long>(open.size()), "tables are missing");
    }
}

} // namespace

void registerStartBenchmarks()
{
    const int runs = bench::quick ? 5 : 21;
    const bench::NamedBenchmark all[] = {{"start/library", startLibrary}, {"start/plain", startPlain}};
    for (const auto& [name, run] : all)
        benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
}

void startFigures()
{
    const double library = bench::median("start library"), sources = bench::median("start library sources"),
                 plain = bench::median("start plain");
    if (library < 0 || plain < 0)
        return;
    bench::figure("start: library, all databases opened", (library + sources) * 1e3, 0, "milliseconds");
    bench::figure("start: the same databases opened with the C API", plain * 1e3, 0, "milliseconds");
    bench::figure("start: library beyond opening", std::max(0.0, library + sources - plain) * 1e3, 50,
                  "milliseconds");
}
