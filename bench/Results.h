#pragma once

#include <benchmark/benchmark.h>
#include <chrono>
#include <string>
#include <utility>

namespace bench {

inline bool quick = false; // smaller sizes, fewer repetitions

/// Seconds of one run of `act`.
template <class Act>
double seconds(Act act)
{
    const auto start = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

using NamedBenchmark = std::pair<const char*, void (*)(benchmark::State&)>;

/// Notes one measured run of a series, and hands it to the benchmark as its iteration time.
void note(benchmark::State& state, const std::string& series, double seconds);
void note(const std::string& series, double seconds);
/// Median of a series in seconds; negative when it was not run.
double median(const std::string& series);

/// Series `ours` is to take at most `limit` times as long as series `plain`, both for `per` units of work; a
/// limit of 0: for information.
void compare(const std::string& item, const std::string& ours, const std::string& plain, double limit, double per,
             const std::string& unit);
/// A figure with a limit of its own; a limit of 0: for information.
void figure(const std::string& item, double value, double limit, const std::string& unit);
/// Prints what was compared; true when every limit is kept.
bool printSummary();

} // namespace bench
