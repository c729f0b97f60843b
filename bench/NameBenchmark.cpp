#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <algorithm>
#include <vector>

namespace {

using namespace bench;

constexpr int names = 1000; // made unique in one run

std::string series(const char* what, long existing)
{
    return std::string("name ") + what + " " + std::to_string(existing);
}

/// A repository whose point selections have that many names.
class Names {
public:
    explicit Names(long existing)
    {
        {
            Database database((m_repository.folder() / "details.db").string());
            database.run("DELETE FROM DetViewDimPointSelection");
            database.run(
                "INSERT INTO DetViewDimPointSelection (Key, RunName, Type, Objects, GeometricRestrictions, "
                "OutermostOnly, OwnerText) WITH RECURSIVE n(i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n "
                "WHERE i < " +
                std::to_string(existing) +
                ") SELECT i, 'Points of the bolts ' || i, 1, 1, 1, "
                "0, 'VEL' FROM n");
        }
        KorOdbcMan::setCurrentDSN(KorDSNDefinitions::kDetails);
        KorOdbcMan::setCurrentAddIn(KorDSNDefinitions::kBase);
        KorODBCDetailStyleExports::CancelBackupTables(1);
        for (int i = 0; i < names; ++i) {
            m_taken.push_back(
                KorString::format(L"Points of the bolts %d", static_cast<int>(i * 7919L % existing) + 1));
            m_free.push_back(KorString::format(L"Points of the plates %d", i));
        }
        // the rows came past the library; and the first read of the table is not part of naming a row
        StructDetViewDimPointSelectionMarshal::resetTableCache(0);
        KorString first = m_free.front();
        require(KorDetailTableDependencies::GetDefaultNameForRow(KorOdbcMan::kDetViewDimPointSelection, first) ==
                    0,
                "the name is taken");
    }
    ~Names() { KorODBCDetailStyleExports::CancelBackupTables(0); }

    const std::vector<KorString>& of(bool taken) const { return taken ? m_taken : m_free; }

private:
    Repository m_repository;
    std::vector<KorString> m_taken, m_free;
};

void naming(benchmark::State& state, bool taken)
{
    const long existing = state.range(0);
    const Names table(existing);
    for (auto _ : state) {
        int changed = 0;
        note(state, series(taken ? "taken" : "free", existing), seconds([&] {
                 for (KorString name : table.of(taken)) {
                     changed += KorDetailTableDependencies::GetDefaultNameForRow(
                         KorOdbcMan::kDetViewDimPointSelection, name);
                     benchmark::DoNotOptimize(name);
                 }
             }));
        require(changed == (taken ? names : 0), "names are not as expected");
    }
}

void freeNames(benchmark::State& state) { naming(state, false); }
void takenNames(benchmark::State& state) { naming(state, true); }

/// Names made unique while the table grows: a row is stored under each. The time of storing is not counted.
void growing(benchmark::State& state)
{
    const long existing = state.range(0);
    for (auto _ : state) {
        const Names table(existing);
        double spent = 0;
        bool stored = true;
        KorDatabaseBatch batch;
        for (const KorString& wanted : table.of(true)) {
            KorString name = wanted;
            spent += seconds([&] {
                KorDetailTableDependencies::GetDefaultNameForRow(KorOdbcMan::kDetViewDimPointSelection, name);
            });
            KorOdbcMan::m_structDetViewDimPointSelection = {};
            KorOdbcMan::m_structDetViewDimPointSelection.runName = name;
            stored = KorOdbcMan::appendNewRecord(KorOdbcMan::kDetViewDimPointSelection, 0,
                                                 KorOdbcMan::kFirstCopy) > 0 &&
                     stored;
        }
        require(batch.end(1) == 1 && stored, "rows were not stored");
        note(state, series("growing", existing), spent);
    }
}

} // namespace

void registerNameBenchmarks()
{
    for (const long existing : {100L, 1000L, 10000L, 100000L}) {
        if (bench::quick && existing > 10000)
            continue;
        const int runs = bench::quick ? 5 : 31;
        benchmark::RegisterBenchmark("name/free", freeNames)->Arg(existing)->UseManualTime()->Iterations(runs);
        benchmark::RegisterBenchmark("name/taken", takenNames)->Arg(existing)->UseManualTime()->Iterations(runs);
        benchmark::RegisterBenchmark("name/while rows are stored", growing)
            ->Arg(existing)
            ->UseManualTime()
            ->Iterations(bench::quick ? 1 : 5);
    }
}

void nameFigures()
{
    for (const char* what : {"free", "taken", "growing"}) {
        double least = 1e9, most = 0;
        for (const long existing : {100L, 1000L, 10000L, 100000L}) {
            const double time = bench::median(series(what, existing)) / names * 1e6;
            if (time < 0)
                continue;
            least = std::min(least, time);
            most = std::max(most, time);
            bench::figure("name made unique (" + std::string(what) + ") among " + std::to_string(existing), time,
                          5.0, "microseconds");
        }
        if (most > 0)
            bench::figure("name made unique (" + std::string(what) + "): slowest against fastest size",
                          most / least, 0, "times");
    }
}
