#include "support/CrashOperations.h"

#include <korodbc/transfer/KorODBCDetailStyleExports.h>

using namespace crash;
using Exports = KorODBCDetailStyleExports;

namespace {

class KilledProcessTest : public testing::TestWithParam<Operation> {
protected:
    static void SetUpTestSuite() { makeRepositories(); }
    static void TearDownTestSuite() { fs::remove_all(scratch()); }

    /// A fresh repository in `work`, in which the operation runs until it is killed or done.
    static End run(const Operation& operation, long killAt, bool prepareOnly = false, long* calls = nullptr)
    {
        copyFolder(operation.onTwins ? twins() : base(), work());
        return inChild(
            killAt,
            [&] {
                repository = work();
                start(work());
                if (operation.prepare != nullptr)
                    operation.prepare();
                faults::plan.armed = true;
                if (!prepareOnly)
                    operation.act();
            },
            calls);
    }
    /// The next start of the application, in `work`.
    static End recover(long killAt = 0, long* calls = nullptr)
    {
        return inChild(
            killAt,
            [] {
                faults::plan.armed = true;
                start(work());
                korodbc::host::closeRepository();
            },
            calls);
    }
    /// Before or after, file by file: false and a report when it is neither. In `isAfter` a file never goes back.
    static bool isBeforeOrAfter(const State& found, const State& before, const State& after,
                                std::map<std::string, bool>& isAfter, const std::string& where)
    {
        bool good = true;
        for (const auto& [file, content] : found) {
            // a transfer file that has just been made holds the tables and no row
            const bool fresh = before.at(file) == "absent" && content == m_emptyDetails;
            const bool asBefore = content == before.at(file) || fresh, asAfter = content == after.at(file);
            if ((!asBefore && !asAfter) || (isAfter[file] && !asAfter)) {
                ADD_FAILURE() << where << ": " << file << " is neither before nor after: "
                              << difference(isAfter[file] ? after.at(file) : before.at(file), content);
                good = false;
            }
            isAfter[file] = isAfter[file] || !asBefore;
        }
        return good;
    }

    static inline std::string m_emptyDetails;
};

TEST_P(KilledProcessTest, LeavesBeforeOrAfter)
{
    const Operation& operation = GetParam();
    copyFolder(base(), work());
    ASSERT_TRUE(
        done([] { CRASH_REQUIRE(Exports::CreateDbFile(details::text((work() / "empty.db").string())) == 1); }));
    m_emptyDetails = dump(work() / "empty.db");

    ASSERT_EQ(run(operation, 0, true), End::Done);
    ASSERT_EQ(recover(), End::Done);
    const State before = state(work());
    const std::set<std::string> toNothing = dangling(work(), operation.announced);
    long calls = 0;
    ASSERT_EQ(run(operation, 0, false, &calls), End::Done);
    ASSERT_EQ(recover(), End::Done);
    const State after = state(work());
    ASSERT_GT(calls, 0);
    if (operation.keepsReferences) {
        for (const std::string& reference : dangling(work(), {}))
            EXPECT_TRUE(toNothing.contains(reference)) << reference;
    }
    for (const auto& [file, content] : after) {
        ASSERT_TRUE(content == "absent" || content.starts_with("ok|\n")) << file << ": " << content.substr(0, 200);
        ASSERT_EQ(content.find("_VEL"), std::string::npos) << file << " has a copy left over";
    }
    if (operation.leaves == Operation::Nothing)
        for (const auto& [file, content] : after)
            ASSERT_EQ(content, before.at(file)) << difference(before.at(file), content);
    else
        ASSERT_NE(after, before);

    std::map<std::string, bool> isAfter;
    int failures = 0;
    const std::vector<long> numbers = sampled(calls);
    for (const long n : numbers) {
        const std::string where = "killed at call " + std::to_string(n) + " of " + std::to_string(calls);
        ASSERT_EQ(run(operation, n), End::Died) << where;
        ASSERT_EQ(recover(), End::Done) << where;
        if (!isBeforeOrAfter(state(work()), before, after, isAfter, where) && ++failures == 3)
            FAIL() << "and so on";
    }

    // the start after that is killed, too
    int cycles = static_cast<int>(numbers.size());
    for (const long n : {calls / 2, calls}) {
        run(operation, n);
        copyFolder(work(), killed());
        long recoveryCalls = 0;
        ASSERT_EQ(recover(0, &recoveryCalls), End::Done);
        const State recovered = state(work());
        for (const long m : sampled(recoveryCalls, 9 * ends / 4)) {
            ++cycles;
            copyFolder(killed(), work());
            const std::string where = "killed at call " + std::to_string(n) + ", recovery at call " +
                                      std::to_string(m) + " of " + std::to_string(recoveryCalls);
            ASSERT_EQ(recover(m), End::Died) << where;
            ASSERT_EQ(recover(), End::Done) << where;
            const State found = state(work());
            for (const auto& [file, content] : found)
                ASSERT_EQ(content, recovered.at(file)) << where << ": " << difference(recovered.at(file), content);
        }
    }
    RecordProperty("calls", static_cast<int>(calls));
    RecordProperty("cycles", cycles);
    if (std::getenv("KORODBC_CRASH_REPORT") != nullptr)
        std::printf("%ld calls, %d cycles\n", calls, cycles);
}

INSTANTIATE_TEST_SUITE_P(Operations, KilledProcessTest, testing::ValuesIn(operations()),
                         [](const auto& operation) { return plainName(operation.param.name); });

} // namespace
