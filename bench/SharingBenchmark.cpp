#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDSNManager.h>

#include <memory>

namespace {

using namespace bench;

constexpr int rows = 10000; // that refer, in each table
constexpr int shared = rows + 1, unshared = rows, unused = rows + 2;

/// Row i of each table refers to key i; only the last two rows refer to the shared key.
std::unique_ptr<Repository> filled()
{
    auto repository = std::make_unique<Repository>();
    Database database((repository->folder() / "details.db").string());
    database.run("BEGIN");
    const std::string n = " WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                          std::to_string(rows + 2) + ") SELECT ";
    const std::string to = "iif(i > " + std::to_string(rows) + ", " + std::to_string(shared) + ", i)";
    const auto fill = [&](const std::string& table, const std::string& columns, const std::string& cells) {
        database.run("DELETE FROM " + table);
        database.run("INSERT INTO " + table + " (" + columns + ")" + n + cells + " FROM n");
    };
    const std::string named = "Key, RunName, OwnerText, ", name = "i, 'Row ' || i, 'VEL', ";
    fill("DetObjReprMapsNew", named + "NumberItems", name + "1");
    fill("DetObjReprMapItems", "Key, [Order], OwnerText, ObjQualifier, AnnotationStrategy, Appearance, LineType",
         "i, 0, 'VEL', " + to + ", " + to + ", i, -1");
    fill("DetViewDimPointSelection", named + "Type, Objects", name + "1, " + to);
    fill("DetViewDimStrategyNew", named + "NumberItems", name + "1");
    fill("DetViewDimStrategyItems", "Key, [Order], OwnerText, Type, RequestLinear", "i, 0, 'VEL', 1, " + to);
    fill("DetViewDimRequestLinear", named + "NumberPoints, Point1", name + "1, " + to);
    fill("DetailStyle", named + "ViewArrangeStrategy, NumberRequests, Request1", name + to + ", 1, " + to);
    fill("DetViewRequest", named + "SystemAndBox, ObjReprMap, DimStrategy, LengthClipXY",
         name + to + ", " + to + ", " + to + ", " + to);
    fill("DetObjAnnotationStrategy", named + "AnnotationType, ArrangerControl, ArrangerStrategy",
         name + to + ", " + to + ", " + to);
    database.run("COMMIT");
    return repository;
}

const struct {
    const char* name;
    bool (*ask)(const KorOdbcKey& key);
} questions[] = {
    {"isAnnotationStrategyShared", &KorOdbcGUI::isAnnotationStrategyShared},
    {"isQualifierSetShared", &KorOdbcGUI::isQualifierSetShared},
    {"isDimensionRequestShared", &KorOdbcGUI::isDimensionRequestShared},
    {"isDimPointSelectionShared", &KorOdbcGUI::isDimPointSelectionShared},
    {"isViewRequestShared", &KorOdbcGUI::isViewRequestShared},
    {"isViewArrangeStrategyShared", &KorOdbcGUI::isViewArrangeStrategyShared},
    {"isViewLengthClipShared", &KorOdbcGUI::isViewLengthClipShared},
    {"isObjReprMapRuleShared", &KorOdbcGUI::isObjReprMapRuleShared},
    {"isViewDimStrategyShared", &KorOdbcGUI::isViewDimStrategyShared},
    {"isSystemAndBoxShared", &KorOdbcGUI::isSystemAndBoxShared},
    {"isArrangerControlShared", &KorOdbcGUI::isArrangerControlShared},
    {"isAnnotationTypeShared", &KorOdbcGUI::isAnnotationTypeShared},
    {"isArrangerStrategyShared", &KorOdbcGUI::isArrangerStrategyShared},
};

void askWarm(benchmark::State& state)
{
    static const std::unique_ptr<Repository> repository = filled();
    repository->use(KorDSNDefinitions::kDetails, (repository->folder() / "details.db").string());
    const KorDSNRequest request(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
    const auto& [name, ask] = questions[state.range(0)];
    // the first questions read the tables
    require(ask(KorOdbcKey(shared)) && !ask(KorOdbcKey(unshared)) && !ask(KorOdbcKey(unused)),
            std::string(name) + " gives a wrong answer");
    // every row is looked at for keys that one row refers to, or none
    constexpr int times = 20;
    for (auto _ : state)
        note(state, name, seconds([&, ask = ask] {
                              for (int i = 0; i < times; ++i)
                                  benchmark::DoNotOptimize(ask(KorOdbcKey(i % 2 == 0 ? unshared : unused)));
                          }) / times);
}

} // namespace

void registerSharingBenchmarks()
{
    for (std::size_t question = 0; question < std::size(questions); ++question)
        benchmark::RegisterBenchmark("sharing", askWarm)
            ->Arg(static_cast<long>(question))
            ->UseManualTime()
            ->Iterations(bench::quick ? 5 : 15)
            ->Unit(benchmark::kMicrosecond);
}

void sharingFigures()
{
    for (const auto& [name, ask] : questions)
        if (const double time = bench::median(name); time >= 0)
            bench::figure(std::string(name) + " among 10,000 rows", time * 1e6, 1000, "microseconds");
}
