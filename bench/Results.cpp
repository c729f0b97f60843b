#include "Results.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace bench {

namespace {

std::map<std::string, std::vector<double>> runs;

struct Comparison {
    std::string item, ours, plain;
    double limit, per;
    std::string unit;
};
std::vector<Comparison> comparisons;

struct Figure {
    std::string item;
    double value, limit;
    std::string unit;
};
std::vector<Figure> figures;

const char* verdict(bool kept) { return kept ? "kept" : "MISSED"; }

} // namespace

void note(benchmark::State& state, const std::string& series, double seconds)
{
    state.SetIterationTime(seconds);
    note(series, seconds);
}

void note(const std::string& series, double seconds) { runs[series].push_back(seconds); }

double median(const std::string& series)
{
    const auto found = runs.find(series);
    if (found == runs.end() || found->second.empty())
        return -1;
    std::vector<double> sorted = found->second;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
}

void compare(const std::string& item, const std::string& ours, const std::string& plain, double limit, double per,
             const std::string& unit)
{
    comparisons.push_back({item, ours, plain, limit, per, unit});
}

void figure(const std::string& item, double value, double limit, const std::string& unit)
{
    figures.push_back({item, value, limit, unit});
}

bool printSummary()
{
    bool allKept = true;
    std::printf("\n%-58s %12s %12s %7s %6s\n", "median of the runs, microseconds", "library", "plain", "ratio",
                "limit");
    for (const Comparison& c : comparisons) {
        const double ours = median(c.ours), plain = median(c.plain);
        if (ours < 0 || plain < 0)
            continue;
        const bool kept = c.limit <= 0 || ours <= plain * c.limit;
        allKept = allKept && kept;
        std::printf("%-58s %12.3f %12.3f %7.2f", (c.item + ", " + c.unit).c_str(), ours / c.per * 1e6,
                    plain / c.per * 1e6, ours / plain);
        if (c.limit > 0)
            std::printf(" %6.1f  %s", c.limit, verdict(kept));
        std::printf("\n");
    }
    std::printf("\n%-58s %12s %6s\n", "figures", "", "limit");
    for (const Figure& f : figures) {
        const bool kept = f.limit <= 0 || f.value <= f.limit;
        allKept = allKept && kept;
        if (f.limit > 0)
            std::printf("%-58s %12.3f %6.1f  %s\n", (f.item + ", " + f.unit).c_str(), f.value, f.limit,
                        verdict(kept));
        else
            std::printf("%-58s %12.3f\n", (f.item + ", " + f.unit).c_str(), f.value);
    }
    return allKept;
}

} // namespace bench
