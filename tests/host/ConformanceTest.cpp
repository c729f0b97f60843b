#include "repository/DetailDatabase.h"
#include "support/RepositoryFixture.h"

#include <korodbc/conformance/Conformance.h>

#include <algorithm>

namespace {

class ConformanceTest : public RepositoryTest {
protected:
    static Texts broken()
    {
        Texts lines;
        const int count = conformance::runConformance(conformance::kAll,
                                                      [&](const std::string& line) { lines.push_back(line); });
        EXPECT_EQ(count, static_cast<int>(lines.size()));
        return lines;
    }
};

TEST_F(ConformanceTest, EmbeddedHostKeepsEveryContract)
{
    for (const RecordDescription* type : conformance::scratchTables())
        sql(configuration, {korodbc::host::createStatement(*type)});
    EXPECT_EQ(broken(), Texts());
    EXPECT_EQ(broken(), Texts()); // a run leaves nothing behind that disturbs another
}

/// A table that lacks a row's column, has another in its place, or loses rows breaks the contracts that rely on
/// it.
TEST_F(ConformanceTest, FaultsAreTold)
{
    for (const RecordDescription* type : conformance::scratchTables())
        sql(configuration, {korodbc::host::createStatement(*type)});
    sql(configuration, {"ALTER TABLE ConformanceRows RENAME COLUMN Number TO Later"});
    const Texts lines = broken();
    const auto tells = [&](const std::string& name) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return line.starts_with(name + ": "); });
    };
    EXPECT_TRUE(tells("record as its cells") && tells("single records") && tells("records that hold a value"));
    EXPECT_FALSE(tells("text keys") || tells("items of records") || tells("regular expressions"));
}

} // namespace
