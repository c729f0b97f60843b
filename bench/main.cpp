#include "Results.h"

#include <cstdio>
#include <cstring>
#include <vector>

void registerStoreBenchmarks();
void registerNameBenchmarks();
void nameFigures();
void registerTransferBenchmarks();
void transferFigures();
void registerMemoryBenchmarks(const char* program);
int runMemoryChild(int argc, char** argv);
void registerStartBenchmarks();
void startFigures();
void registerLookUpBenchmarks();
void registerMappingBenchmarks();
void registerReadBenchmarks();
void registerCompactBenchmarks();
void compactFigures();
void registerSharingBenchmarks();
void sharingFigures();
void registerPrefixBenchmarks();
void registerPreferredBenchmarks();

/// korodbc_bench [--quick] [--strict] [options of Google Benchmark]: --strict ends with 1 when a limit is
/// missed.
int main(int argc, char** argv)
{
    if (const int child = runMemoryChild(argc, argv); child >= 0)
        return child;
    bool strict = false;
    std::vector<char*> rest;
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--quick") == 0)
            bench::quick = true;
        else if (std::strcmp(argv[i], "--strict") == 0)
            strict = true;
        else
            rest.push_back(argv[i]);
    }
    int count = static_cast<int>(rest.size());
    benchmark::Initialize(&count, rest.data());
    if (benchmark::ReportUnrecognizedArguments(count, rest.data()))
        return 2;
    registerStoreBenchmarks();
    registerNameBenchmarks();
    registerTransferBenchmarks();
    registerMemoryBenchmarks(argv[0]);
    registerStartBenchmarks();
    registerLookUpBenchmarks();
    registerMappingBenchmarks();
    registerReadBenchmarks();
    registerCompactBenchmarks();
    registerSharingBenchmarks();
    registerPrefixBenchmarks();
    registerPreferredBenchmarks();
    benchmark::RunSpecifiedBenchmarks();
    nameFigures();
    transferFigures();
    startFigures();
    compactFigures();
    sharingFigures();
    const bool kept = bench::printSummary();
    return strict && !kept ? 1 : 0;
}
