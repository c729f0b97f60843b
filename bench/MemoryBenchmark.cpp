#include "Database.h"
#include "PlainStyleCopy.h"
#include "repository/DetailDatabase.h"
#include "Results.h"
#include "StyleGenerator.h"
#include "Workplace.h"

#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <malloc.h>
#include <string>

namespace {

using namespace bench;

/// The most memory that this process has had, in bytes.
long peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::stol(line.substr(6)) * 1024;
    return 0;
}

/// Counts the peak from here on: memory let go of before is given back first.
long startPeak()
{
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
    return peakMemory();
}

/// Exports a generated style and prints by how many bytes the peak memory grew; runs in a process of its own.
void exportOnce(bool plain, long rows)
{
    const Workplace place;
    const std::string source = place.file("style.db"), target = place.file("target.db");
    const GeneratedStyle style =
        generateStyleDatabase(source, {.seed = 42, .rows = rows, .firstKey = 1, .prefix = {}});
    korodbc::host::HostError error;
    require(korodbc::host::createDetailDatabase(target, error), error.text);
    long before = 0;
    if (plain) {
        before = startPeak();
        Database from(source), to(target);
        from.useHostPragmas();
        to.useHostPragmas();
        copyStyle(from, to, style.masterKey, false);
    } else {
        Repository repository;
        repository.use(KorDSNDefinitions::kDetails, source);
        before = startPeak();
        require(KorODBCDetailStyleExports::exportDetail(
                    KorODBCDetailStyleExports::kDetailStyle, KorOdbcKey(style.key), KorDSNDefinitions::kDetails,
                    KorDSNDefinitions::kBase, KorString::fromUtf8(target)) == 1,
                "the export failed");
    }
    std::printf("%ld %ld\n", peakMemory() - before, style.rows);
}

std::string program;

void memory(benchmark::State& state)
{
    const bool plain = state.range(0) != 0;
    const long rows = state.range(1);
    for (auto _ : state) {
        const std::string command =
            "'" + program + "' --memory-child " + (plain ? "plain " : "library ") + std::to_string(rows);
        std::FILE* child = ::popen(command.c_str(), "r");
        long grown = 0, moved = 0;
        const bool read = child != nullptr && std::fscanf(child, "%ld %ld", &grown, &moved) == 2;
        require(child != nullptr && ::pclose(child) == 0 && read, "the child process failed");
        const double perRow = static_cast<double>(grown) / static_cast<double>(moved);
        state.counters["bytes a row"] = perRow;
        figure(std::string("export, peak memory of the ") + (plain ? "plain loop" : "library") + " at " +
                   std::to_string(rows) + " rows",
               perRow, 0, "bytes a row");
    }
}

} // namespace

int runMemoryChild(int argc, char** argv)
{
    if (argc != 4 || std::strcmp(argv[1], "--memory-child") != 0)
        return -1;
    exportOnce(std::strcmp(argv[2], "plain") == 0, std::stol(argv[3]));
    return 0;
}

void registerMemoryBenchmarks(const char* self)
{
    program = self;
    for (const long rows : {10000L, 100000L})
        for (const long plain : {0L, 1L})
            if (!bench::quick || rows <= 10000)
                benchmark::RegisterBenchmark("memory", memory)
                    ->Args({plain, rows})
                    ->ArgNames({"plain", "rows"})
                    ->Iterations(1);
}
