#include "catalogues/CatalogueFixture.h"
#include "GroupingCases.h"

#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KRSettings.h>

#include <algorithm>
#include <random>

using namespace grouping;

namespace {

class GroupingTest : public CatalogueTest {
protected:
    void SetUp() override
    {
        CatalogueTest::SetUp();
        activate({});
    }
    void TearDown() override
    {
        activate({});
        CatalogueTest::TearDown();
    }
    static void activate(const std::vector<int>& profiles)
    {
        KorArray<int> keys;
        for (const int key : profiles)
            keys.append(key);
        Grouping::setPreferredProfiles(keys);
    }
    /// First column of what plain SQL gives; the tables of the add-in and of the sections under their own names.
    Texts plain(const std::string& text) const
    {
        sqlite3* db = nullptr;
        sqlite3_stmt* query = nullptr;
        EXPECT_EQ(sqlite3_open((folder().path() / "configuration.db").c_str(), &db), SQLITE_OK);
        for (const char* name : {"addin", "sections"}) {
            const std::string file =
                (folder().path() / (name == std::string("addin") ? "addin.db" : "profiles.db"));
            sqlite3_exec(db, ("ATTACH '" + file + "' AS " + name).c_str(), nullptr, nullptr, nullptr);
        }
        EXPECT_EQ(sqlite3_prepare_v2(db, text.c_str(), -1, &query, nullptr), SQLITE_OK)
            << text << ": " << sqlite3_errmsg(db);
        Texts texts;
        while (sqlite3_step(query) == SQLITE_ROW)
            texts.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(query, 0)));
        sqlite3_finalize(query);
        sqlite3_close(db);
        return texts;
    }
    Texts joined(const Case& one, int table, const std::string& from, const std::string& profiles) const
    {
        return plain(
            "SELECT c." + std::string(one.column) + " FROM " + from +
            " c WHERE CAST(c.Key AS TEXT) IN (SELECT KeyValue FROM addin.PreferredSizesItems WHERE TypeID = " +
            std::to_string(one.type) + " AND CategoryID = " + std::to_string(one.category) +
            " AND TableID = " + std::to_string(table) + " AND ProfileID IN (" + profiles + ")" +
            (one.masterTable == 0 ? std::string()
                                  : " AND MasterTableID = " + std::to_string(one.masterTable) +
                                        " AND MasterKeyValue = '" + one.master + "'") +
            ") AND " + one.exists + " ORDER BY " + one.order);
    }
    static Texts filled(const Case& one, int& result)
    {
        Names names = korTexts({"old"});
        result = one.fill(names);
        return utf8(names);
    }
};

TEST_F(GroupingTest, ListsAreWhatAPlainJoinGives)
{
    // names of the configuration and of the add-in in their order, so that merging keeps them sorted
    for (const char* table : {"Material", "Coating", "ModelRole"}) {
        const std::string name(table);
        for (const char* file : {"configuration.db", "addin.db"})
            folder().executeOutside(file, "UPDATE " + name + " SET SortOrder = (SELECT count(*) FROM " + name +
                                              " o WHERE o.RunName < " + name + ".RunName)");
        KRRepositoryProxyMan::resetTableCache(0);
    }
    std::mt19937 random(7);
    const auto any = [&](int number) { return static_cast<int>(random() % static_cast<unsigned>(number)); };
    long offered = 0;
    for (int round = 0; round < 12; ++round) {
        std::string rows =
            "DELETE FROM PreferredSizesItems; INSERT INTO PreferredSizesItems (ProfileID, TypeID, "
            "CategoryID, TableID, KeyValue, MasterTableID, MasterKeyValue) VALUES (0, 0, 0, 0, '', 0, '')";
        for (const Case& one : cases()) {
            const Texts own = plain("SELECT CAST(Key AS TEXT) FROM " + std::string(one.from)),
                        junk = {"", "-1", "4711", "it''s", "2.5", "99999999999"};
            for (int i = any(12); i > 0; --i) {
                const bool inAddIn = one.addInTable != 0 && any(2) == 0;
                const std::string key = any(6) == 0 ? junk[static_cast<std::size_t>(any(6))]
                                        : inAddIn
                                            ? std::to_string(1001 + any(6))
                                            : own[static_cast<std::size_t>(any(static_cast<int>(own.size())))];
                const bool fits = one.masterTable != 0 && any(4) != 0;
                rows +=
                    ", (" + std::to_string(1 + any(4)) + ", " + std::to_string(any(9) == 0 ? any(23) : one.type) +
                    ", " + std::to_string(any(9) == 0 ? any(12) : one.category) + ", " +
                    std::to_string(inAddIn ? one.addInTable : one.table) + ", '" + key + "', " +
                    std::to_string(fits ? one.masterTable : any(23)) + ", '" + (fits ? one.master : "2") + "')";
            }
        }
        folder().executeOutside("addin.db", rows);
        for (const auto& [profiles, text] : {std::pair(std::vector{3}, "3"),
                                             {std::vector{4, 1}, "1, 4"},
                                             {std::vector{4, 2, 3, 1}, "1, 2, 3, 4"}}) {
            activate(profiles);
            for (const Case& one : cases()) {
                Texts expected = joined(one, one.table, one.from, text);
                if (one.addInTable != 0)
                    for (const std::string& name :
                         joined(one, one.addInTable, "addin." + std::string(one.from), text))
                        if (std::find(expected.begin(), expected.end(), name) == expected.end())
                            expected.insert(std::upper_bound(expected.begin(), expected.end(), name), name);
                int result = -1;
                EXPECT_EQ(filled(one, result), expected)
                    << one.name << ", profiles " << text << ", round " << round;
                EXPECT_EQ(result != 0, !expected.empty()) << one.name;
                offered += static_cast<long>(expected.size());
            }
        }
    }
    EXPECT_GT(offered, 1000);
}

TEST_F(GroupingTest, ShippedSizesNameRowsOfEveryList)
{
    long items = 0;
    std::vector<std::pair<int, int>> seen;
    for (const Case& one : cases()) {
        for (const int table : {one.table, one.addInTable}) {
            if (table == 0)
                continue;
            const std::string of = " FROM addin.PreferredSizesItems i WHERE TypeID = " + std::to_string(one.type) +
                                   " AND TableID = " + std::to_string(table) +
                                   (one.masterTable == 1 ? " AND MasterKeyValue = 'RHS'" : "");
            const std::string from = (table == one.table ? "" : "addin.") + std::string(one.from);
            EXPECT_EQ(plain("SELECT KeyValue" + of + " AND NOT EXISTS (SELECT 1 FROM " + from +
                            " c WHERE CAST(c.Key AS TEXT) = i.KeyValue)"),
                      Texts{})
                << one.name;
            if (std::find(seen.begin(), seen.end(), std::pair(one.type, table)) == seen.end())
                items += std::stol(plain("SELECT count(*)" + of).front());
            seen.emplace_back(one.type, table);
        }
    }
    items +=
        std::stol(plain("SELECT count(*) FROM addin.PreferredSizesItems WHERE TableID = 20 AND MasterKeyValue "
                        "<> 'RHS'")
                      .front());
    EXPECT_EQ(Texts{std::to_string(items)}, plain("SELECT count(*) FROM addin.PreferredSizesItems"));
}

TEST_F(GroupingTest, AddInNamesGoWhereTheSearchEnds)
{
    sql(configuration,
        {"DELETE FROM Material", "INSERT INTO Material (Key, RunName, SortOrder) VALUES (1, 'M', 1), "
                                 "(2, 'C', 2), (3, 'X', 3), (4, 'A', 4)"});
    sql(addin, {"DELETE FROM Material",
                "INSERT INTO Material (Key, RunName, SortOrder) VALUES (11, 'B', 1), "
                "(12, 'X', 2), (13, 'Z', 3), (14, 'N', 4), (15, 'B', 5)",
                "DELETE FROM PreferredSizesItems"});
    for (int key = 1; key < 16; ++key)
        sql(addin,
            {"INSERT INTO PreferredSizesItems (ProfileID, TypeID, CategoryID, TableID, KeyValue) VALUES (1, 2, "
             "1, " +
             std::string(key < 10 ? "2" : "24") + ", '" + std::to_string(key) + "')"});
    activate({1});
    Names names;
    EXPECT_NE(Grouping::getMaterialList(names, kBeam, 0), 0);
    // M C X A: B is before X and C and M; then Z is behind C, X, A; N is before X, behind M and C
    EXPECT_EQ(utf8(names), (Texts{"B", "M", "C", "N", "X", "A", "Z"}));
    const MissingTable missing(descriptionOf<StructMaterial>());
    EXPECT_EQ(Grouping::getMaterialList(names, kBeam, 0), 0);
    EXPECT_EQ(utf8(names), Texts{});
}

TEST_F(GroupingTest, ConditionsAreRaisedAndTheListGoesOn)
{
    activate({1});
    AssertionRecorder raised;
    Names n;
    const struct {
        std::function<int()> fill;
        const char* condition; // nullptr: none
        bool filled = false;
    } calls[] = {
        {[&] { return Grouping::getMaterialList(n, kBolt, 0); },
         "kBeam == e || kPlate == e || kGrating == e || kWall == e || kSlab == e || kFootingIsolated == e"},
        {[&] { return Grouping::getMaterialList(n, kGrating, 0); }, nullptr, true},
        {[&] { return Grouping::getCoatingList(kWeld, n); }, nullptr, true},
        {[&] { return Grouping::getStandardsList(kAnchor, n); }, "kBolt == e"},
        {[&] { return Grouping::getStrengthClassList(kBolt, L"", n); }, "!normKey.isEmpty() && kBolt == e", true},
        {[&] { return Grouping::getStrengthClassList(kBolt, L"no key", n); }, nullptr},
        {[&] { return Grouping::getDiameterList(kBolt, L"1", L"3", L"", n); },
         "!normKey.isEmpty() && !strengthClassKey.isEmpty() && !setKey.isEmpty() && kBolt == e", true},
        {[&] { return Grouping::getPlateThicknessList(kBeam, n); }, "kPlate == e"},
    };
    for (const auto& [fill, condition, filled] : calls) {
        EXPECT_EQ(fill() != 0, filled) << (condition == nullptr ? "" : condition);
        EXPECT_EQ(raised.take(),
                  condition == nullptr ? Texts{} : Texts{"KorOdbcGrouping: " + std::string(condition)});
    }
}

TEST_F(GroupingTest, ClassesThatArePlainTextAndNoClassAtAll)
{
    activate({1, 2});
    StatementRecorder statements(true);
    Names names, all;
    EXPECT_EQ(Grouping::getGratingItemsGrouping(L"1' OR '1'='1", names), 0);
    statements.take();
    EXPECT_EQ(Grouping::getGratingItemsGrouping(L"", all), 1);
    const Texts asked = statements.take();
    const auto query = std::find_if(asked.begin(), asked.end(), [](const std::string& text) {
        return text.find("[PreferredSizesItems] WHERE") != std::string::npos;
    });
    ASSERT_NE(query, asked.end());
    EXPECT_EQ(query->find("[Master"), std::string::npos) << *query;
    EXPECT_EQ(Grouping::getGratingItemsGrouping(L"1", names), 1);
    EXPECT_EQ(utf8(all), utf8(names));
    // a key means a row of its class alone
    sql(configuration,
        {"INSERT INTO GratingStandardMaster (Key, RunName, TableName) VALUES (2, 'Second', 'Gratings_2')",
         "CREATE TABLE Gratings_2 (Key INTEGER, RunName TEXT, Length REAL, Width REAL, Thickness REAL, "
         "Mass REAL)",
         "INSERT INTO Gratings_2 VALUES (1, 'one', 1, 1, 1, 1), (2, 'two', 1, 1, 1, 1)"});
    sql(addin,
        {"DELETE FROM PreferredSizesItems WHERE TableID = 21 AND KeyValue <> '3'",
         "INSERT INTO PreferredSizesItems (ProfileID, TypeID, CategoryID, TableID, KeyValue, MasterTableID, "
         "MasterKeyValue) VALUES (2, 17, 6, 21, '2', 17, '2')"});
    EXPECT_EQ(Grouping::getGratingItemsGrouping(L"", all), 1);
    EXPECT_EQ(utf8(all), (Texts{"1000x1000/30x3", "two"}));
    EXPECT_EQ(Grouping::GetMenuList(4711, names), 0);
    EXPECT_EQ(utf8(names), Texts{});
    EXPECT_EQ(Grouping::GetMenuSubList(L"", names), 1);
    EXPECT_EQ(names.length(), 7);
}

TEST_F(GroupingTest, ActiveProfiles)
{
    const auto keys = [](const KorArray<int>& array) { return std::vector<int>(array.begin(), array.end()); };
    const auto looksAnew = [] {
        StatementRecorder statements(true);
        KorArray<StructScale> scales;
        StructScaleMarshal::getTable(scales);
        return !statements.take().empty();
    };
    looksAnew();
    KorArray<int> profiles;
    profiles.append(7);
    profiles.append(3);
    Grouping::setPreferredProfiles(profiles);
    EXPECT_EQ(keys(profiles), (std::vector{3, 7}));
    EXPECT_TRUE(looksAnew());
    Grouping::setPreferredProfiles(profiles);
    EXPECT_FALSE(looksAnew());
    EXPECT_EQ(keys(Grouping::getPreferredProfiles()), (std::vector{3, 7}));

    const struct {
        const wchar_t* setting; // nullptr: absent
        int region;
        std::vector<int> active;
    } regions[] = {{L"1", 1, {1}}, {L"2", 2, {3}},           {L"9", 9, {3}},
                   {L"x", 0, {3}}, {L" 1 (Europe)", 1, {1}}, {nullptr, -1, {1}}};
    for (const auto& [setting, region, active] : regions) {
        if (setting != nullptr)
            KRSettings::setValue(L"Region Key", KorString(setting));
        else
            sql(configuration, {"DELETE FROM Settings"});
        EXPECT_EQ(Grouping::getRegionKey(), region);
        Grouping::setDefaultPreferredProfiles();
        EXPECT_EQ(keys(Grouping::getPreferredProfiles()), active) << region;
    }
    const MissingTable missing(descriptionOf<StructPreferredSizesProfiles>());
    Grouping::setDefaultPreferredProfiles();
    EXPECT_EQ(keys(Grouping::getPreferredProfiles()), std::vector{1});
}

TEST_F(GroupingTest, WhateverElseIsInTheRoom)
{
    activate({1});
    const Case& materials = cases().front();
    int result = 0;
    const Texts expected = filled(materials, result);
    EXPECT_EQ(expected, (Texts{"S235JR", "S355JR", "S355J2"}));
    KorDSNManager::getInstance().setCurrent(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    EXPECT_EQ(filled(materials, result), expected);
    // what a batch writes counts until it is undone
    const Texts remove = {"DELETE FROM PreferredSizesItems WHERE KeyValue <> '1'"};
    {
        KorDatabaseBatch batch;
        sql(addin, remove);
        EXPECT_EQ(filled(materials, result), Texts{"S235JR"});
        batch.undo();
    }
    EXPECT_EQ(filled(materials, result), expected);
    // other columns, in another order and of another type
    sql(addin, {"ALTER TABLE PreferredSizesItems RENAME TO Was",
                "CREATE TABLE PreferredSizesItems AS SELECT MasterKeyValue, MasterTableID, TableID, CategoryID, "
                "'x' AS Note, TypeID, ProfileID, CAST(KeyValue AS INTEGER) AS keyvalue, Key FROM Was"});
    EXPECT_EQ(filled(materials, result), expected);
    sql(addin, {"ALTER TABLE PreferredSizesItems DROP COLUMN TypeID"});
    EXPECT_EQ(filled(materials, result), Texts{});
    EXPECT_EQ(result, 0);
    sql(addin, {"DROP TABLE PreferredSizesItems"});
    for (const Case& one : cases()) {
        EXPECT_EQ(filled(one, result), Texts{}) << one.name;
        EXPECT_EQ(result, 0) << one.name;
    }
}

} // namespace
