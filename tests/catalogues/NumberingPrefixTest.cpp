#include "support/DetailRecords.h"
#include "support/RepositoryFixture.h"

#include <korodbc/catalogues/KorOdbcNumberingPrefix.h>

#include <random>

namespace {

using Prefix = StructNumberingPrefix;
using Prefixes = KorOdbcNumberingPrefix;
using Rows = std::vector<Prefix>;

constexpr eDSN addIn = KorDSNDefinitions::kAddin, country = KorDSNDefinitions::kCountryAddin,
               drawing = KorDSNDefinitions::kProject, numbering = KorDSNDefinitions::kNumbering;
constexpr eIndex base = KorDSNDefinitions::kBase, first = KorDSNDefinitions::kFirstAddin;
constexpr auto second = static_cast<eIndex>(2);

bool same(const KorString& a, const KorString& b) { return a.compareNoCase(b) == 0; }

/// The rules, step by step, over the rows of one catalogue. `status` and `current` are those of the selected
/// profile. The key of the record that applies, -1 without one.
int plainWalk(const Rows& rows, const KorNumberingPrefixId& id, int status, int current, int flag)
{
    int level1 = -1, level2 = -1, level3 = -1;
    for (const Prefix& row : rows) {
        if (row.objectType != id.getObjectType())
            continue;
        if (status == 1 && flag != 0 && row.profile != current)
            continue;
        if (status == -1 && flag != 0)
            break;
        if ((status == 1 || status == -1) && flag == 0) {
            if (id.getProfileGiven() == 0)
                break;
            if (row.profile != id.getProfile())
                continue;
        }
        const bool anyRole = same(row.modelRole, L"Not_overridden_role");
        if (same(row.profileSubtype, id.getProfileSubtype()) && same(row.modelRole, id.getModelRole()))
            return row.key;
        if (same(row.profileSubtype, id.getProfileSubtype()) && anyRole)
            level1 = row.key;
        else if (row.profileSubtype.isEmpty() && same(row.modelRole, id.getModelRole()))
            level2 = row.key;
        else if (row.profileSubtype.isEmpty() && anyRole)
            level3 = row.key;
    }
    return level1 != -1 ? level1 : level2 != -1 ? level2 : level3;
}

class NumberingPrefixTest : public RepositoryTest {
protected:
    void TearDown() override
    {
        korodbc::host::setStatementFault({});
        KorDSNManager::getInstance().setCurrent(details, base);
        RepositoryTest::TearDown();
    }

    /// Replaces the rows of a source's table.
    static void fill(eDSN dsn, eIndex index, const Rows& rows)
    {
        const KorDSNRequest request(dsn, index);
        const KorDatabaseBatch batch;
        sql(dsn, {"DELETE FROM NumberingPrefix"});
        for (const Prefix& row : rows)
            details::put(dsn, row);
    }
    static Prefix row(int key, const wchar_t* role, int type, const wchar_t* subtype, int profile = -1)
    {
        return {key, role, L"s", L"m", L"o", type, profile, subtype, L"p"};
    }
    template <class Find>
    static int keyFound(Find find)
    {
        Prefix found;
        found.key = -7;
        const int result = find(found);
        EXPECT_EQ(result, found.key == -7 ? -1 : 1);
        return found.key == -7 ? -1 : found.key;
    }
    static int find(const KorNumberingPrefixId& id, int flag = 0)
    {
        return keyFound([&](Prefix& found) { return Prefixes::findNumberingPrefix(id, flag, found); });
    }
};

TEST_F(NumberingPrefixTest, EqualsAPlainWalkOverEveryTable)
{
    std::mt19937 random(7);
    const auto any = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const wchar_t* const roles[] = {
        L"Column", L"cOLUMN", L"Träger", L"TRÄGER", L"Not_overridden_role", L"NOT_OVERRIDDEN_Role", L""};
    const wchar_t* const subtypes[] = {L"", L"", L"I", L"i", L"Größe", L"GRÖSSE"};
    const auto anyRow = [&](int key) { return row(key, roles[any(7)], any(3), subtypes[any(6)], any(4) - 1); };
    ASSERT_EQ(Prefixes::createDWGNumberingPrefixTable(), 1);
    int cases = 0, found = 0, places[3] = {};
    for (int table = 0; table < 250; ++table) {
        Rows ofDrawing, ofAddIn, ofMain, ofCountry;
        int key = 0;
        for (Rows* rows : {&ofDrawing, &ofAddIn, &ofMain, &ofCountry})
            for (int i = any(rows == &ofDrawing ? 3 : 12); i > 0; --i)
                rows->push_back(anyRow(++key));
        fill(drawing, base, ofDrawing);
        fill(addIn, first, ofAddIn);
        fill(configuration, base, ofMain);
        fill(country, second, ofCountry);
        fill(country, first, {row(9999, L"Column", any(3), L"")});
        sql(addIn, {"DELETE FROM NumberingPrefixProfile"});
        const int selected = any(4) - 1, status = selected < 0 ? -1 : 1;
        for (int profile = 0; profile < 3; ++profile)
            details::put(addIn, StructNumberingPrefixProfile{profile, L"profile", profile == selected ? 1 : 0});
        for (int i = 0; i < 50; ++i, ++cases) {
            const KorNumberingPrefixId id(roles[any(7)], any(3), any(2), any(3), subtypes[any(6)]);
            const int flag = any(2);
            // whatever is current, the places are the same
            const std::pair<eDSN, eIndex> currents[] = {{country, second}, {details, base}, {addIn, first}};
            const auto [dsn, index] = currents[any(3)];
            KorDSNManager::getInstance().setCurrent(dsn, index);

            Rows served;
            for (const Prefix& one : ofDrawing)
                if (id.getProfileGiven() == 0 || one.profile == -1 || one.profile == id.getProfile())
                    served.push_back(one);
            const int expected[] = {plainWalk(served, id, 0, 0, 0), plainWalk(ofAddIn, id, status, selected, flag),
                                    plainWalk(ofMain, id, 0, 0, 0)};
            const auto at = std::find_if(std::begin(expected), std::end(expected), [](int k) { return k != -1; });
            auto place = Prefixes::kDrawing;
            ASSERT_EQ(keyFound([&](Prefix& out) { return Prefixes::findNumberingPrefix(id, flag, out, place); }),
                      at == std::end(expected) ? -1 : *at)
                << table << "/" << i;
            if (at != std::end(expected)) {
                ASSERT_EQ(place, at - std::begin(expected));
                ++places[place];
                ++found;
            }
            const bool ofCurrent = dsn == addIn;
            ASSERT_EQ(keyFound([&](Prefix& out) { return Prefixes::getNumberingPrefix(id, flag, out); }),
                      dsn == country ? plainWalk(ofCountry, id, 0, 0, flag)
                      : ofCurrent    ? expected[1]
                                     : expected[2]);
            ASSERT_EQ(KorDSNManager::getInstance().getCurrentDSN(), dsn);
        }
    }
    EXPECT_GE(cases, 10000);
    EXPECT_GT(found, cases / 3);
    EXPECT_GT(std::min({places[0], places[1], places[2]}), cases / 50);
}

TEST_F(NumberingPrefixTest, TheDrawingKeepsItsOwnTable)
{
    const KorNumberingPrefixId id(L"it's", 1, 0, -1, L"x");
    fill(configuration, base, {row(1, L"Other", 1, L""), row(2, L"Not_overridden_role", 1, L"")});
    Prefix record = row(1, L"IT'S", 1, L"X", 4);
    const Texts main = rows(configuration, "NumberingPrefix");
    // without the table nothing of the catalogue is touched
    EXPECT_EQ(Prefixes::deleteDWGNumberingPrefix(record), 0);
    EXPECT_EQ(Prefixes::appendDWGNumberingPrefix(record), -1);
    EXPECT_EQ(find(id), 2);

    KorDSNManager::getInstance().setCurrent(country, second);
    StatementRecorder statements;
    EXPECT_EQ(Prefixes::createDWGNumberingPrefixTable(), 1);
    EXPECT_EQ(statements.events().front().dsn, drawing);
    EXPECT_EQ(Prefixes::createDWGNumberingPrefixTable(), 0);
    EXPECT_EQ(statements.take().size(), 1u);
    EXPECT_EQ(columns(drawing, "NumberingPrefix"), columns(configuration, "NumberingPrefix"));

    EXPECT_EQ(Prefixes::appendDWGNumberingPrefix(record), 1);
    record.singlePartPrefix = L"梁";
    EXPECT_EQ(Prefixes::appendDWGNumberingPrefix(record), 2);
    EXPECT_EQ(rows(drawing, "NumberingPrefix"), (Texts{"1|IT'S|s|m|o|1|4|X|p", "2|IT'S|梁|m|o|1|4|X|p"}));
    EXPECT_EQ(find(id), 1);                                           // the first exact one
    EXPECT_EQ(find(KorNumberingPrefixId(L"it's", 1, 1, 3, L"x")), 2); // of the catalogue: another profile
    Prefix read;
    EXPECT_EQ(Prefixes::getDWGNumberingPrefix(KorOdbcKey(2), read), 1);
    EXPECT_EQ(read.singlePartPrefix, L"梁");
    EXPECT_EQ(Prefixes::getDWGNumberingPrefix(KorOdbcKey(3), read), 0);
    KorArray<KorNumberingPrefixId> ids;
    EXPECT_EQ(Prefixes::getDWGNumberingPrefixList(ids), 1);
    ASSERT_EQ(ids.length(), 2);
    EXPECT_EQ(ids[1], KorNumberingPrefixId(L"it's", 1, 1, 4, L"x"));
    EXPECT_NE(ids[1], KorNumberingPrefixId(L"it's", 1, 1, 5, L"x"));
    EXPECT_EQ(ids[1], KorNumberingPrefixId(L"it's", 1, 0, 5, L"x"));

    record.key = 1;
    EXPECT_EQ(Prefixes::deleteDWGNumberingPrefix(record), 1);
    EXPECT_EQ(Prefixes::deleteDWGNumberingPrefix(record), 0);
    korodbc::host::setStatementFault([](std::string_view statement) { return statement.find("INSERT") == 0; });
    EXPECT_EQ(Prefixes::appendDWGNumberingPrefix(record), -1);
    korodbc::host::setStatementFault({});
    EXPECT_EQ(rows(drawing, "NumberingPrefix"), Texts{"2|IT'S|梁|m|o|1|4|X|p"});
    EXPECT_EQ(rows(configuration, "NumberingPrefix"), main);
}

TEST_F(NumberingPrefixTest, WhatCannotBeReadIsPassedOver)
{
    const KorNumberingPrefixId id(L"Column", 1, 1, 5, L"");
    fill(configuration, base, {row(1, L"Column", 1, L"")});
    fill(addIn, first, {row(2, L"Column", 1, L"", 5), row(3, L"Column", 2, L"", 6)});
    EXPECT_EQ(find(id), 2);
    KorArray<KorNumberingPrefixId> ids;
    {
        const KorDSNRequest request(addIn, first);
        details::put(addIn, StructNumberingPrefixProfile{6, L"six", 1});
        EXPECT_EQ(Prefixes::getNumberingPrefixList(ids, 1), 1);
        ASSERT_EQ(ids.length(), 1);
        EXPECT_EQ(ids[0].getObjectType(), 2);
    }
    sql(addIn, {"UPDATE NumberingPrefix SET Profile = 'five'"});
    EXPECT_EQ(find(id), 1);
    sql(addIn,
        {"ALTER TABLE NumberingPrefix RENAME TO Gone", "CREATE TABLE NumberingPrefix (ObjectType, ModelRole)",
         "INSERT INTO NumberingPrefix VALUES (1, 'Column')"});
    EXPECT_EQ(find(id), 1);
    sql(configuration, {"DROP TABLE NumberingPrefix"});
    EXPECT_EQ(find(id), -1);
}

TEST_F(NumberingPrefixTest, MethodsOfTheAddInGoFirst)
{
    using Methods = KorOdbcNumberingMethod;
    details::put(numbering, StructNumberingMethod{1, L"Keep", 1, L"base"});
    details::put(numbering, StructNumberingMethod{2, L"it's new", 0, L"base"});
    details::put(addIn, StructNumberingMethod{1, L"Keep", 0, L"add-in"});
    const struct {
        std::function<int(StructNumberingMethod&)> read;
        int result, key, flag;
        const wchar_t* description;
    } cases[] = {
        {[](auto& m) { return Methods::getByKey(1, m); }, 1, 1, 0, L"add-in"},
        {[](auto& m) { return Methods::getByKey(2, m); }, 1, 2, 0, L"base"},
        {[](auto& m) { return Methods::getByKey(-3, m); }, 0, -1, 1, L"No description for key (-3) found"},
        {[](auto& m) { return Methods::getByName(L"Keep", m); }, 1, 1, 0, L"add-in"},
        {[](auto& m) { return Methods::getByName(L"it's new", m); }, 1, 2, 0, L"base"},
        {[](auto& m) { return Methods::getByName(L"' OR ''='", m); }, 0, -1, 1, L"No description found"},
    };
    for (const auto& one : cases) {
        StructNumberingMethod method{8, L"old", 8, L"old"};
        EXPECT_EQ(one.read(method), one.result);
        EXPECT_EQ(method.key, one.key);
        EXPECT_EQ(method.flag, one.flag);
        EXPECT_EQ(method.description, one.description);
    }
    KorArray<KorString> names;
    EXPECT_EQ(Methods::getRunNames(names), 1);
    EXPECT_EQ(names.length(), 2);
}

TEST_F(NumberingPrefixTest, ObjectTypesAndProfiles)
{
    for (const auto& type : {StructObjectType{3, L"Beam", L"{3}", 7, 1}, StructObjectType{1, L"Rod", L"{1}", 7, 2},
                             StructObjectType{2, L"Plate", L"{2}", 8, 1}})
        details::put(configuration, type);
    KorDSNManager::getInstance().setCurrent(country, second); // has no such table
    StructObjectType type;
    long key = -1;
    KorArray<int> keys;
    EXPECT_EQ(Prefixes::getObjectTypeByModelType(7, type), 1);
    EXPECT_EQ(type.key, 1);
    EXPECT_EQ(Prefixes::getObjectTypeByClassId(L"{2}", type), 1);
    EXPECT_EQ(type.key, 2);
    EXPECT_EQ(Prefixes::getObjectTypeByRunname(L"Beam", type), 1);
    EXPECT_EQ(type.key, 3);
    EXPECT_EQ(Prefixes::getObjectType(4, type), 0);
    EXPECT_EQ(Prefixes::getAllObjectTypeKeysByModelType(7, keys), 1);
    EXPECT_EQ(std::vector<int>(keys.begin(), keys.end()), (std::vector<int>{1, 3}));
    EXPECT_EQ(Prefixes::getObjectGroup(1, keys), 1);
    EXPECT_EQ(std::vector<int>(keys.begin(), keys.end()), (std::vector<int>{2, 3}));
    EXPECT_EQ(Prefixes::getAllObjectTypeKeysByModelType(9, keys), 0);
    EXPECT_EQ(keys.length(), 2);

    KorDSNManager::getInstance().setCurrent(details, base);
    details::put(configuration, StructNumberingPrefixProfile{5, L"five", 1});
    EXPECT_EQ(Prefixes::getCurrentProfile(key), 0); // the add-in is not current
    EXPECT_EQ(key, 0);
}

} // namespace
