#include "support/CrashCycle.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>

#include <set>

namespace {

using Compact = KorOdbcCompactDetailsTables;
using Man = KorOdbcMan;
constexpr eDSN inDetails = KorDSNDefinitions::kDetails;

struct Run {
    const char* name;
    int (*act)();
    std::set<int> modified; // table types that it marks by itself
};

const std::set<int> ofStyles = {5, 8, 7, 29, 1, 11, 12, 10, 0, 9, 16, 4, 25, 14, 2, 3, 13, 22};
const std::set<int> ofProcesses = {16, 34, 40, 39, 33, 32, 37, 38};
const std::set<int> ofAll = {5,  8, 7, 29, 1,  11, 12, 10, 0,  9,  16, 4, 25,
                             14, 2, 3, 13, 22, 34, 40, 39, 33, 32, 37, 38};

const Run runs[] = {
    {"Styles", [] { return Compact::startCompactProcess(inDetails, 1, Compact::kCompactDetailStyles); }, ofStyles},
    {"Processes", [] { return Compact::startCompactProcess(inDetails, 1, Compact::kCompactDetailProcesses); },
     ofProcesses},
    {"All", [] { return Compact::startCompactProcess(inDetails, 1, Compact::kCompactAll); }, ofAll},
    {"RedirectedOnly", [] { return Compact::startCompactProcess(inDetails, 0, Compact::kCompactAll); }, ofAll},
    {"QualifierSets",
     [] { return Compact::compactQualifierSets(inDetails, 1, Compact::kCompactDetailStyles); },
     {}},
    {"QualifierSetNumbers",
     [] { return Compact::compactQualifierSets(inDetails, 0, Compact::kCompactDetailProcesses); },
     {}},
};

/// Compactions of a database in a file whose writes fail on demand.
class CompactionFaultsTest : public testing::TestWithParam<Run>, protected crash::FaultyRepository {
protected:
    void SetUp() override
    {
        open();
        crash::fillTwins(inDetails);
    }
    void TearDown() override { close(); }
    static std::set<int> modified()
    {
        std::set<int> types;
        for (int type = 0; type < Man::kTableTypes; ++type)
            if (Man::getStatus(static_cast<Man::eTableType>(type), Man::kFirstCopy) == Man::eModified)
                types.insert(type);
        return types;
    }
    static constexpr const char* separator = "=====\n";
    /// What readers see of the two processes; of the first one's rows none has a twin before it.
    static std::string seen()
    {
        return details::processTree(inDetails, KorDSNDefinitions::kBase, 201, true) + separator +
               details::processTree(inDetails, KorDSNDefinitions::kBase, 301, true);
    }
};

void PrintTo(const Run& run, std::ostream* out) { *out << run.name; }

/// Wherever the disk fails, the run says 0 and nothing of it is left, or 1 and all of it is there; when the disk
/// is well it succeeds.
TEST_P(CompactionFaultsTest, FailingDisk)
{
    const std::string before = state(), seenBefore = seen();
    ASSERT_EQ(seenBefore.find("missing"), std::string::npos);
    int cycles = 0;
    for (const int failure : {SQLITE_FULL, SQLITE_IOERR_WRITE}) {
        for (long n = 1;; n += n < 20 ? 1 : 7) {
            SCOPED_TRACE(n);
            ASSERT_LT(n, 2000);
            ++cycles;
            faults::plan = {.failFrom = n, .failure = failure, .armed = true};
            const int result = GetParam().act();
            const bool failed = faults::plan.calls >= n;
            faults::plan = {};
            ASSERT_EQ(result, failed ? 0 : 1);
            if (!failed)
                break;
            ASSERT_EQ(state(), before) << crash::difference(before, state());
            ASSERT_EQ(seen(), seenBefore);
            ASSERT_EQ(modified(), std::set<int>());
        }
        EXPECT_EQ(modified(), GetParam().modified);
        ASSERT_EQ(crash::compactionEdit().ok(), 1);
        const std::string done = state();
        ASSERT_NE(done, before);
        EXPECT_EQ(done.find("_VEL"), std::string::npos);
        // as if nothing had ever failed
        ASSERT_EQ(GetParam().act(), 1);
        ASSERT_EQ(crash::compactionEdit().ok(), 1);
        korodbc::host::closeRepository();
        std::filesystem::remove(file());
        TearDown();
        SetUp();
        ASSERT_EQ(state(), before);
        ASSERT_EQ(GetParam().act(), 1);
        ASSERT_EQ(crash::compactionEdit().ok(), 1);
        EXPECT_EQ(state(), done) << crash::difference(done, state());
        TearDown();
        SetUp();
    }
    RecordProperty("cycles", cycles);
}

/// While another process writes, nothing happens; a run inside an edit of its tables is cancelled as a whole.
TEST_P(CompactionFaultsTest, LockedThenCancelled)
{
    const std::string before = state(), seenBefore = seen();
    whileLocked([] { EXPECT_EQ(GetParam().act(), 0); });
    EXPECT_EQ(state(), before) << crash::difference(before, state());
    EXPECT_EQ(seen(), seenBefore);
    KorTableEdit edit = crash::compactionEdit();
    ASSERT_EQ(edit.begin(), 1);
    const std::set<int> opened = modified();
    EXPECT_EQ(GetParam().act(), 1);
    EXPECT_EQ(modified(), opened); // the run changes no table but these
    EXPECT_NE(state(), before);
    // only where the rows stay, categories of a merged request join those of the first
    if (std::string(GetParam().name) != "RedirectedOnly") {
        EXPECT_EQ(seen().substr(0, seenBefore.find(separator)), seenBefore.substr(0, seenBefore.find(separator)));
    }
    EXPECT_EQ(edit.cancel(), 1);
    EXPECT_EQ(state(), before) << crash::difference(before, state());
    EXPECT_EQ(seen(), seenBefore);
}

INSTANTIATE_TEST_SUITE_P(Runs, CompactionFaultsTest, testing::ValuesIn(runs),
                         [](const auto& run) { return std::string(run.param.name); });

} // namespace
