#include "bench/DetailGenerator.h"
#include "support/PairwiseCompaction.h"
#include "support/RepositoryFixture.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/edit/KorOdbcMan.h>

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace {

using pairwise::Contents;
using Compact = KorOdbcCompactDetailsTables;
using Shape = bench::DetailShape;
constexpr eDSN addin = KorDSNDefinitions::kAddin;

struct Case {
    std::string name;
    Shape shape;
};
void PrintTo(const Case& which, std::ostream* out) { *out << which.name; }
const Case cases[] = {
    // seed, rows, duplicates, near duplicates, shared, missing, odd reals, key gap, damaged
    {"Plain", {1, 500, 0.4, 0, 0.5, 0, 0, 1, false}},
    {"AllEqual", {3, 300, 1, 0, 0.5, 0, 0, 1, false}},
    {"Mixed", {2, 1000, 0.3, 0.3, 0.6, 0.05, 0.02, 3, false}},
    {"NoneEqual", {4, 500, 0, 0, 0.6, 0, 0.02, 3, false}},
    {"Damaged", {8, 800, 0.3, 0.3, 0.6, 0.05, 0.02, 3, true}},
    {"OddReals", {19, 1000, 0.3, 0.5, 0.6, 0.05, 0.4, 3, false}},
    {"NearlyAll", {11, 1500, 0.1, 0.85, 0.6, 0.05, 0.02, 3, false}},
    {"NothingShared", {7, 2500, 0, 0.5, 0, 0.05, 0.02, 3, false}},
};

class CompactionPropertyTest : public RepositoryTest, public testing::WithParamInterface<Case> {
protected:
    void TearDown() override
    {
        KorOdbcMan::InitializeStatics::release();
        RepositoryTest::TearDown();
        std::filesystem::remove_all(m_folder);
    }
    /// A generated database behind a data source; the name of its file.
    std::string attach(eDSN dsn, const Shape& shape)
    {
        std::filesystem::create_directories(m_folder);
        const std::string file = m_folder / (std::to_string(++m_files) + ".db");
        bench::generateDetailDatabase(file, shape);
        EXPECT_EQ(KorDatabaseAccess::setConnection(dsn, KorString::fromUtf8(file)), 1);
        KorOdbcMan::InitializeStatics::release();
        KorOdbcMan::InitializeStatics::build();
        EXPECT_EQ(KorOdbcMan::initializeTables(), 1);
        return file;
    }
    /// What the file holds besides the copies that the edit manager keeps, which have to be as before.
    static Contents read(const std::string& file, const Contents& before)
    {
        Contents contents = pairwise::readFile(file);
        for (const auto& [table, rows] : before)
            if (const auto copy = contents.extract(table + "_VELCopy")) {
                EXPECT_TRUE(copy.mapped() == rows) << table;
            }
        return contents;
    }
    void check(Compact::eCompactType type, int deletes, bool setsAlone);

private:
    const std::filesystem::path m_folder =
        std::filesystem::temp_directory_path() / ("korodbc-compaction-" + std::to_string(::getpid()));
    int m_files = 0;
};

void CompactionPropertyTest::check(Compact::eCompactType type, int deletes, bool setsAlone)
{
    const auto& [name, shape] = GetParam();
    const eDSN dsn = type == deletes ? details : addin;
    const std::string other = attach(type == deletes ? addin : details, shape), file = attach(dsn, shape);
    const Contents before = pairwise::readFile(file);
    const auto expected =
        pairwise::compact(before, static_cast<pairwise::Type>(type + 1), deletes != 0, setsAlone);
    StatementRecorder recorder;
    const auto run = setsAlone ? Compact::compactQualifierSets : Compact::startCompactProcess;
    EXPECT_EQ(run(dsn, deletes, type), expected.ambiguous ? 0 : 1);
    if (expected.ambiguous) {
        EXPECT_TRUE(shape.damaged);
        EXPECT_NE(Compact::getFailure().toUtf8().find("have the order"), std::string::npos);
        EXPECT_EQ(pairwise::difference(before, read(file, before)), "");
        return;
    }
    const Texts statements = recorder.take();
    const auto count = [&](const char* word) {
        return std::count_if(statements.begin(), statements.end(),
                             [&](const auto& s) { return s.starts_with(word); });
    };
    const Contents after = read(file, before);
    EXPECT_EQ(pairwise::difference(expected.contents, after), "");
    EXPECT_EQ(pairwise::difference(before, read(other, before)), "") << "the other source";
    EXPECT_EQ(count("UPDATE"), expected.statements);
    if (setsAlone)
        return;
    const bool noneEqual = name == "NoneEqual";
    EXPECT_EQ(count("DELETE") != 0, deletes != 0 && !noneEqual);
    EXPECT_EQ(after == before, noneEqual);

    EXPECT_EQ(run(dsn, deletes, type), 1);
    EXPECT_EQ(recorder.take(), Texts());
    EXPECT_EQ(pairwise::difference(after, read(file, before)), "");
}

TEST_P(CompactionPropertyTest, LeavesWhatComparingAllPairsLeaves)
{
    for (const auto type : {Compact::kCompactDetailStyles, Compact::kCompactDetailProcesses, Compact::kCompactAll})
        for (const int deletes : {0, 1})
            for (const bool setsAlone : {false, true}) {
                SCOPED_TRACE(testing::Message() << type << " " << deletes << " " << setsAlone);
                check(type, deletes, setsAlone);
            }
}

INSTANTIATE_TEST_SUITE_P(Shape, CompactionPropertyTest, testing::ValuesIn(cases),
                         [](const auto& each) { return each.param.name; });

} // namespace
