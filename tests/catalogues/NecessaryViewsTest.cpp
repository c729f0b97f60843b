#include "support/DetailRecords.h"
#include "support/RepositoryFixture.h"

#include <korodbc/catalogues/KorODBCNecessaryViewsConfiguration.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/SettingsStore.h>
#include <korodbc/roots/KRSettings.h>

#include <random>

namespace {

using Rule = StructNecessaryViewsConfiguration;
using Views = KorODBCNecessaryViewsConfiguration;

constexpr eDSN addIn = KorDSNDefinitions::kAddin, country = KorDSNDefinitions::kCountryAddin;
constexpr eIndex base = KorDSNDefinitions::kBase, first = KorDSNDefinitions::kFirstAddin;
constexpr auto second = static_cast<eIndex>(2), third = static_cast<eIndex>(3);

class NecessaryViewsTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        Views::restoreODBCDBSValue(details, base);
    }
    void TearDown() override
    {
        korodbc::host::setSettingsStore(nullptr);
        Views::restoreODBCDBSValue(details, base);
        KorDSNManager::getInstance().setCurrent(details, base);
        RepositoryTest::TearDown();
    }
    static void choose(const KorString& setting)
    {
        KRSettings::setValue(L"Settings\\NecessaryViewsConfig\\DefaultDataSource", setting);
    }
    static void fill(eDSN dsn, eIndex index, const std::vector<Rule>& rules)
    {
        const KorDSNRequest request(dsn, index);
        const KorDatabaseBatch batch;
        sql(dsn, {"DELETE FROM NecessaryViewsConfiguration"});
        for (const Rule& rule : rules)
            details::put(dsn, rule);
    }
    static Rule rule(int key, int number) { return {key, L"rule", -1, -1, 0, -1, 0, number, L"o"}; }
};

TEST_F(NecessaryViewsTest, ApplyAsAPlainWalkSays)
{
    std::mt19937 random(11);
    const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    choose(L"France_1/kDetailsCurrent");
    int cases = 0, applied = 0;
    for (int table = 0; table < 100; ++table) {
        std::vector<Rule> rules;
        for (int key = 1; key <= table % 9; ++key)
            rules.push_back({key, L"rule", any(4) - 1, any(4) - 1, any(3), any(9), any(3), any(99), L"o"});
        fill(country, second, rules);
        for (int i = 0; i < 100; ++i, ++cases) {
            const int view = any(5) - 1, beam = any(5) - 1;
            std::vector<std::tuple<int, int, bool>> expected, found;
            for (const Rule& one : rules) {
                if (one.viewType != view && one.viewType != -1)
                    continue;
                if (one.notBeamType == 0 ? one.beamType != beam && one.beamType != -1
                                         : one.beamType == beam || one.beamType == -1)
                    continue;
                expected.emplace_back(one.rule, one.detObjQualifierSet, one.notDetObjQualifierSet == 1);
            }
            KorArray<StructResultRules> applicable;
            applicable.append({});
            ASSERT_EQ(Views::getApplicableRules(view, beam, applicable), 1);
            for (const StructResultRules& one : applicable)
                found.emplace_back(one.rule, one.detObjQualifierSet, one.notDetObjQualifierSet);
            ASSERT_EQ(found, expected) << table << "/" << i;
            applied += static_cast<int>(found.size());
        }
    }
    EXPECT_EQ(cases, 10000);
    EXPECT_GT(applied, cases / 3);
}

TEST_F(NecessaryViewsTest, TheSettingSaysWhereTheyAreRead)
{
    fill(details, base, {rule(1, 10)});
    fill(addIn, first, {rule(1, 20)});
    fill(country, first, {rule(1, 31)});
    fill(country, second, {rule(1, 32)});
    const struct {
        const wchar_t* setting;
        int rule; // 0: nothing is read
        eDSN dsn;
        eIndex index;
        eIndex slot; // of a country add-in
    } cases[] = {
        {L"", 10, details, base, base},
        {L"kAddin", 10, details, base, base}, // no kind
        {L"/kaddin", 10, details, base, base},
        {L"France_1/", 10, details, base, base},
        {L"a/b/kAddin", 10, details, base, base}, // split at the first
        {L"/kAddin", 20, addIn, first, base},
        {L"Norway_0/kAddin", 20, addIn, first, base},
        {L"Norway_0/kDetailsCurrent", 31, country, third, first},
        {L"fRANCE_1/kDetailsCurrent", 32, country, third, second},
        {L"France_0/kDetailsCurrent", 0, details, second, base}, // what is current
        {L"France/kDetailsCurrent", 0, details, second, base},
        {L"/kDetailsCurrent", 0, details, second, base},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(KorString(one.setting).toUtf8());
        choose(one.setting);
        // the second country add-in is current for the service, the base for the manager
        KorDSNManager::getInstance().setCurrent(country, second);
        Views::restoreODBCDBSValue(details, base);
        AssertionRecorder assertions;
        eDSN dsn{}, savedDsn{};
        eIndex index{}, saved{};
        EXPECT_EQ(Views::getODBCDSNValue(dsn, index, saved, savedDsn), one.rule == 0 ? 0 : 1);
        EXPECT_EQ(dsn, one.dsn);
        EXPECT_EQ(index, one.index);
        EXPECT_EQ(saved, one.slot);
        EXPECT_EQ(savedDsn, details);
        EXPECT_EQ(KorOdbcMan::getCurrentAddIn(), base);
        KorArray<Rule> rules;
        EXPECT_EQ(Views::getAllRecords(rules), one.rule == 0 ? 0 : 1);
        EXPECT_EQ(rules.isEmpty() ? 0 : rules[0].rule, one.rule);
        Rule single;
        EXPECT_EQ(Views::getNecessaryViewsConfiguration(1, single), one.rule == 0 ? 0 : 1);
        EXPECT_EQ(single.rule, one.rule);
        EXPECT_EQ(assertions.take().size(), one.rule == 0 ? 3u : 0u);
        // the add-in that was read stays current, anything else as it was
        EXPECT_EQ(KorOdbcMan::getCurrentDSN(), details);
        EXPECT_EQ(KorOdbcMan::getCurrentAddIn(), one.slot);
        EXPECT_EQ(KorDSNManager::getInstance().getCurrentIndex(), one.slot == first ? first : second);
        EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
    }
    const AssertionRecorder ignored;
    choose(L"Sweden_2/kDetailsCurrent");
    KorArray<StructResultRules> applicable;
    applicable.append({});
    EXPECT_EQ(Views::getApplicableRules(1, 1, applicable), 0);
    EXPECT_EQ(applicable.length(), 0);
    choose(L"/kAddin");
    sql(addIn, {"DROP TABLE NecessaryViewsConfiguration"});
    EXPECT_EQ(Views::getApplicableRules(1, 1, applicable), 0);
}

} // namespace
