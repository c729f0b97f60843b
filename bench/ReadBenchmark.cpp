#include "Database.h"
#include "Results.h"
#include "service/Service.h"
#include "Workplace.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/records/AnyRecord.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/RecordAccess.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <map>
#include <memory>
#include <variant>
#include <vector>

namespace {

using namespace bench;
using Record = StructDetViewDimRequestLinear;
using Marshal = StructDetViewDimRequestLinearMarshal;

constexpr int rows = 100000;
constexpr int points = 6;
constexpr int fixedColumns = 14; // before the points

void close()
{
    KorOdbcMan::InitializeStatics::release();
    korodbc::host::closeRepository();
}

/// Starts the repository with nothing read and every database open.
void start(const std::filesystem::path& folder)
{
    std::string error;
    require(korodbc::host::openRepository(folder, error), error);
    require(KorOdbcDSNDefinitions::initOEDbConnections() == 1 && KorOdbcMan::initializeTables() == 1,
            "the repository does not start");
    for (const auto& source : korodbc::host::sources())
        require(source.usable, source.error);
}

/// A database opened with the C API, its tables known.
std::unique_ptr<Database> openPlain(const std::string& file)
{
    auto database = std::make_unique<Database>(file);
    database->useHostPragmas();
    require(database->value("SELECT count(*) FROM sqlite_master") > 0, "no tables in " + file);
    return database;
}

/// A table of linear dimension requests that has just 20 columns, all filled.
class LargeTable {
public:
    LargeTable()
    {
        Database database(file());
        database.run("PRAGMA synchronous = OFF");
        database.run("DELETE FROM DetViewDimRequestLinear");
        for (const char* unused : {"Point7", "Point8"})
            database.run(std::string("ALTER TABLE DetViewDimRequestLinear DROP COLUMN ") + unused);
        require(database.value("SELECT count(*) FROM pragma_table_info('DetViewDimRequestLinear')") ==
                    fixedColumns + points,
                "the table has other columns");
        database.run("WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n WHERE i < " +
                     std::to_string(rows) +
                     ") INSERT INTO DetViewDimRequestLinear "
                     "SELECT i, 'Bolt chain along the beam ' || i, 1, 0, 1, 0, 1, 0, '%Spacing% mm', 1, 2, i, "
                     "'VEL', 6, i, i + 1, i + 2, i + 3, i + 4, i + 5 FROM n");
    }
    std::string file() const { return (folder() / "details.db").string(); }
    std::filesystem::path folder() const { return m_repository.folder(); }

private:
    Repository m_repository;
};

bool isComplete(const Record& record, int row)
{
    return record.key == row + 1 && record.sortOrder == row + 1 && record.ownerText == L"VEL" &&
           record.runName == KorString::format(L"Bolt chain along the beam %d", row + 1) &&
           record.points.length() == points && record.points[points - 1] == row + points;
}

template <class Records>
void requireComplete(const Records& records, std::size_t length)
{
    require(length == static_cast<std::size_t>(rows), "records are missing");
    for (const int row : {0, rows / 2, rows - 1})
        require(isComplete(records[static_cast<std::size_t>(row)], row), "a record is not as it was stored");
}

void coldLibrary(benchmark::State& state)
{
    const LargeTable table;
    for (auto _ : state) {
        close();
        start(table.folder());
        KorArray<Record> records;
        note(state, "read cold library", seconds([&] { Marshal::getTable(records); }));
        requireComplete(records, static_cast<std::size_t>(records.length()));
    }
}

std::vector<Record> readPlain(Database& database)
{
    Query query = database.prepare("SELECT * FROM DetViewDimRequestLinear ORDER BY rowid");
    std::vector<Record> records;
    while (query.step()) {
        Record& record = records.emplace_back();
        int column = 0;
        const auto integer = [&] { return static_cast<int>(query.integer(column++)); };
        const auto text = [&] { return KorString::fromUtf8(query.text(column++)); };
        record.key = integer();
        record.runName = text();
        record.direction = integer();
        record.allowCombine = integer();
        record.arrangeAbove = integer();
        record.arrangeGlobally = integer();
        record.groupRelatedDimensions = integer();
        record.oneChainPerObjectInFirstSelection = integer();
        record.labelContents = text();
        record.labelPosition = integer();
        record.group = integer();
        record.sortOrder = integer();
        record.ownerText = text();
        record.numberPoints = integer();
        record.points.setLogicalLength(record.numberPoints);
        for (int& point : record.points)
            point = integer();
    }
    return records;
}

void coldPlain(benchmark::State& state)
{
    const LargeTable table;
    close();
    for (auto _ : state) {
        const auto database = openPlain(table.file());
        std::vector<Record> records;
        note(state, "read cold plain", seconds([&] { records = readPlain(*database); }));
        requireComplete(records, records.size());
    }
}

void warmLibrary(benchmark::State& state)
{
    const LargeTable table;
    close();
    start(table.folder());
    KorArray<Record> first;
    require(Marshal::getTable(first) == 1, "the table is not read");
    for (auto _ : state) {
        KorArray<Record> records;
        note(state, "read warm library", seconds([&] { Marshal::getTable(records); }));
        requireComplete(records, static_cast<std::size_t>(records.length()));
    }
}

void warmPlain(benchmark::State& state)
{
    const LargeTable table;
    const auto database = openPlain(table.file());
    const std::vector<Record> first = readPlain(*database);
    for (auto _ : state) {
        std::vector<Record> records;
        note(state, "read warm plain", seconds([&] { records = first; }));
        requireComplete(records, records.size());
    }
}

/// Where the readable tables of the shipped catalogue are, one entry for each record type.
struct Catalogue {
    struct Place {
        const RecordDescription* type;
        std::string file, table;
    };
    Repository repository;
    std::vector<Place> places;
    long rows = 0;
    long unreadable = 0; // types that no data source has a table of

    Catalogue()
    {
        close();
        start(repository.folder());
        for (const records::DescriptionFunction description : records::all()) {
            const RecordDescription& type = description();
            const AnyRecords list(type);
            if (RecordAccess::readTable(type, list.get()) != 1) {
                ++unreadable;
                continue;
            }
            korodbc::host::Table* table = korodbc::host::service().tableOf(type);
            require(table != nullptr, "a table was read that is not there");
            places.push_back(
                {&type, table->database().path(), korodbc::host::service().physicalName(type).toUtf8()});
            rows += list.length();
        }
    }
};

void catalogueLibrary(benchmark::State& state)
{
    const Catalogue catalogue;
    for (auto _ : state) {
        close();
        const double opening = seconds([&] { start(catalogue.repository.folder()); });
        long read = 0;
        const double reads = seconds([&] {
            for (const Catalogue::Place& place : catalogue.places) {
                const AnyRecords list(*place.type);
                RecordAccess::readTable(*place.type, list.get());
                read += list.length();
            }
        });
        note(state, "read catalogue library", reads);
        note("read catalogue started library", opening + reads);
        require(read == catalogue.rows, "records are missing");
    }
    state.counters["tables"] = static_cast<double>(catalogue.places.size());
    state.counters["unreadable"] = static_cast<double>(catalogue.unreadable);
    state.counters["rows"] = static_cast<double>(catalogue.rows);
}

using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

void take(const Query& query, int column, Value& value)
{
    switch (sqlite3_column_type(query.handle(), column)) {
    case SQLITE_INTEGER:
        value = query.integer(column);
        break;
    case SQLITE_FLOAT:
        value = query.real(column);
        break;
    case SQLITE_NULL:
        value = std::monostate();
        break;
    default:
        value.emplace<std::string>(query.text(column));
    }
}

/// Reads the catalogue with the C API; `keep` holds the values of a table until all of it is read.
void catalogueWithApi(benchmark::State& state, bool keep, const std::string& series)
{
    const Catalogue catalogue;
    close();
    for (auto _ : state) {
        std::map<std::string, std::unique_ptr<Database>> open;
        const double opening = seconds([&] {
            for (const Catalogue::Place& place : catalogue.places)
                if (auto& database = open[place.file]; !database)
                    database = openPlain(place.file);
        });
        long read = 0;
        const double reads = seconds([&] {
            std::vector<Value> values;
            for (const Catalogue::Place& place : catalogue.places) {
                Query query = open[place.file]->prepare("SELECT * FROM [" + place.table + "]");
                const int columns = sqlite3_column_count(query.handle());
                values.clear();
                while (query.step()) {
                    const std::size_t first = keep ? values.size() : 0;
                    values.resize(first + static_cast<std::size_t>(columns));
                    for (int column = 0; column < columns; ++column)
                        take(query, column, values[first + static_cast<std::size_t>(column)]);
                    benchmark::DoNotOptimize(values.data());
                    ++read;
                }
            }
        });
        note(state, series, reads);
        note(series + " started", opening + reads);
        require(read == catalogue.rows, "rows are missing");
    }
}

void cataloguePlain(benchmark::State& state) { catalogueWithApi(state, false, "read catalogue plain"); }
void catalogueKept(benchmark::State& state) { catalogueWithApi(state, true, "read catalogue plain kept"); }

} // namespace

void registerReadBenchmarks()
{
    const int runs = bench::quick ? 5 : 21;
    const bench::NamedBenchmark all[] = {{"read/cold/library", coldLibrary},
                                         {"read/cold/plain", coldPlain},
                                         {"read/warm/library", warmLibrary},
                                         {"read/warm/plain", warmPlain},
                                         {"read/catalogue/library", catalogueLibrary},
                                         {"read/catalogue/plain", cataloguePlain},
                                         {"read/catalogue/plain, rows kept", catalogueKept}};
    for (const auto& [name, run] : all)
        benchmark::RegisterBenchmark(name, run)->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
    bench::compare("table of 100,000 rows, 20 columns, first read", "read cold library", "read cold plain", 1.5,
                   rows, "a row");
    bench::compare("table of 100,000 rows, 20 columns, read again", "read warm library", "read warm plain", 3.0,
                   rows, "a row");
    bench::compare("all tables of the catalogue, first read", "read catalogue library", "read catalogue plain",
                   2.0, 1, "in all");
    bench::compare("the same, the C API keeping the rows", "read catalogue library", "read catalogue plain kept",
                   0, 1, "in all");
    bench::compare("the same, with opening the databases", "read catalogue started library",
                   "read catalogue plain started", 0, 1, "in all");
}
