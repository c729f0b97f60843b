#include "support/DetailRecords.h"
#include "support/RepositoryFixture.h"

#include <korodbc/catalogues/KorODBCExplodeObjects.h>
#include <korodbc/edit/KorOdbcMan.h>

namespace {

using Objects = KorODBCExplodeObjects;
using Settings = KorODBCExplodeSettings;

constexpr eDSN addIn = KorDSNDefinitions::kAddin;
constexpr eIndex base = KorDSNDefinitions::kBase, first = KorDSNDefinitions::kFirstAddin;

class ExplodeTest : public RepositoryTest {
protected:
    void TearDown() override
    {
        korodbc::host::setStatementFault({});
        current(KorDSNDefinitions::kDetails, base);
        KorDSNManager::getInstance().setCurrent(details, base);
        RepositoryTest::TearDown();
    }
    static void current(eDSN dsn, eIndex index)
    {
        KorOdbcMan::setCurrentDSN(dsn);
        KorOdbcMan::setCurrentAddIn(index);
    }
    static StructExplodeObjects object(const wchar_t* name, const wchar_t* to, int order = 0)
    {
        return {name, to, 1, L"it's \"l\"", 2, L"", 3, order};
    }
    static Texts list(int (*read)(KorArray<StructExplodeObjects>&, int), int sorted)
    {
        KorArray<StructExplodeObjects> objects;
        objects.append({});
        Texts texts;
        if (read(objects, sorted) == 1)
            for (const StructExplodeObjects& one : objects)
                texts.push_back((one.name + L" " + one.solidsTo).toUtf8());
        else
            EXPECT_EQ(objects.length(), 1);
        return texts;
    }
};

TEST_F(ExplodeTest, UsersRowsAreMergedIntoTheDefaults)
{
    const auto merged = [](int sorted = 0) { return list(&Objects::getExplodeObjectsTable, sorted); };
    for (const auto& one : {object(L"a", L"1", 3), object(L"b", L"1", 1), object(L"c", L"1", 2)})
        details::put(configuration, one);
    EXPECT_EQ(merged(), (Texts{"a 1", "b 1", "c 1"}));
    EXPECT_EQ(merged(1), (Texts{"b 1", "c 1", "a 1"}));
    details::put(addIn, object(L"C", L"2"));
    details::put(addIn, object(L"a", L"2"));
    EXPECT_EQ(merged(), (Texts{"a 2", "b 1", "c 1"})); // names count as written
    EXPECT_EQ(merged(1), (Texts{"b 1", "c 1", "a 2"}));
    StructExplodeObjects found;
    EXPECT_EQ(Objects::getExplodeObjects(L"a", found), 1);
    EXPECT_EQ(found.solidsTo, L"2");
    EXPECT_EQ(Objects::getExplodeObjects(L"b", found), 1);
    EXPECT_EQ(found.solidsTo, L"1");
    EXPECT_EQ(Objects::getExplodeObjects(L"b", found, addIn, first), 0);
    EXPECT_EQ(Objects::getExplodeObjects(L"a", found, configuration, base), 1);
    EXPECT_EQ(found.order, 3);
    details::put(addIn, object(L"d", L"2", -1));
    EXPECT_EQ(merged(), (Texts{"C 2", "a 2", "d 2"})); // as many as the defaults
    EXPECT_EQ(merged(1), (Texts{"d 2", "C 2", "a 2"}));
    sql(addIn, {"DROP TABLE ExplodeObjectsTo"});
    EXPECT_EQ(merged(), (Texts{"a 1", "b 1", "c 1"}));
    const StructExplodeObjects early = object(L"z", L"", -2147483647), late = object(L"a", L"", 2);
    EXPECT_EQ(Objects::compareExplodeObjects(&early, &late), -1);
    EXPECT_EQ(Objects::compareExplodeObjects(&late, &early), 1);
    EXPECT_EQ(Objects::compareExplodeObjects(&late, &late), 0);
}

TEST_F(ExplodeTest, ARowIsWrittenOnceAndWhole)
{
    KorDSNManager::getInstance().setCurrent(KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(2));
    const auto stored = [] { return rows(addIn, "ExplodeObjectsTo"); };
    details::put(configuration, object(L"it's", L"main"));
    EXPECT_EQ(Objects::setExplodeObjects(L"it's", object(L"other", L"梁", 9)), 1);
    const Texts one = {"it's|梁|1|it's \"l\"|2||3|"};
    EXPECT_EQ(stored(), one);
    EXPECT_EQ(Objects::setExplodeObjects(L"it's", object(L"it's", L"new")), 0);
    EXPECT_EQ(stored(), one);
    EXPECT_EQ(Objects::setExplodeObjects(L"", object(L"", L"new")), 1);
    const Texts two = {one[0], "1|new|1|it's \"l\"|2||3|"};
    EXPECT_EQ(stored(), two);

    KorArray<StructExplodeObjects> list;
    for (const auto& row : {object(L"p", L"1"), object(L"it's", L"1"), object(L"q", L"1")})
        list.append(row);
    const auto failAt = [](int which) {
        korodbc::host::setStatementFault([which, seen = 0](std::string_view) mutable { return ++seen == which; });
    };
    for (const int which : {1, 2}) {
        failAt(which);
        EXPECT_EQ(Objects::setExplodeObjectsTable(list), -1) << which;
        korodbc::host::setStatementFault({});
        EXPECT_EQ(stored(), two) << which;
    }
    EXPECT_EQ(Objects::setExplodeObjectsTable(list), 1);
    EXPECT_EQ(stored().size(), 4u);
    // columns of another make are not filled by halves
    sql(addIn,
        {"DROP TABLE ExplodeObjectsTo", "CREATE TABLE ExplodeObjectsTo ([Key] TEXT PRIMARY KEY, SolidsTo TEXT)"});
    EXPECT_EQ(Objects::setExplodeObjects(L"x", object(L"x", L"1")), -1);
    EXPECT_EQ(stored(), Texts{});
    sql(addIn, {"DROP TABLE ExplodeObjectsTo", "CREATE TABLE ExplodeObjectsTo ([Key] TEXT PRIMARY KEY, Own TEXT, "
                                               "SolidsTo, SolidsGrouped, LinesTo, LinesGrouped, TextsTo, "
                                               "TextsGrouped, [Order])"});
    EXPECT_EQ(Objects::setExplodeObjects(L"x", object(L"x", L"1")), -1);
    EXPECT_EQ(stored(), Texts{});
    sql(configuration, {"DROP TABLE Default_INT",
                        "CREATE TABLE Default_INT (Description TEXT, [Key] TEXT PRIMARY KEY, Value INTEGER)",
                        "INSERT INTO Default_INT VALUES ('', 'C40_UseExplodeSettings', 1)"});
    EXPECT_EQ(Settings::setUsedExplodeSettingsDefault(0), 0);
    EXPECT_EQ(Settings::getUsedExplodeSettingsDefault(), 1);
}

TEST_F(ExplodeTest, SettingsAreFoundByStructureAndSelectedProfile)
{
    for (const auto& type : {StructObjectType{1, L"a", L"", 7, -1}, StructObjectType{2, L"b", L"", 7, -1},
                             StructObjectType{3, L"c", L"", 8, -1}})
        details::put(configuration, type);
    // key 1 is another structure in each source
    details::put(addIn, StructObjectStructure{1, 3, 5});
    details::put(configuration, StructObjectStructure{1, 2, 4});
    details::put(configuration, StructObjectStructure{2, 1, 5});
    details::put(addIn, StructExplodeSettings{10, 1, 1, L"unselected", 1, L"x", 1});
    details::put(addIn, StructExplodeSettings{11, 1, 2, L"user's", 2, L"x", 0});
    details::put(addIn, StructExplodeSettings{12, 2, 2, L"no structure", 2, L"x", 0});
    details::put(configuration, StructExplodeSettings{20, 1, 2, L"main", 3, L"x", 1});
    details::put(configuration, StructExplodeSettings{21, 2, 3, L"third", 4, L"x", 1});
    details::put(configuration, StructExplodeSettings{22, 1, 3, L"later", 4, L"x", 1});
    const struct {
        std::vector<int> selected;
        long modelType, subType;
        const wchar_t* layer;
        eDSN leaves;
    } cases[] = {
        {{2, 3}, 8, 5, L"user's", addIn},
        {{2, 3}, 7, 4, L"main", configuration},
        {{2, 3}, 7, 5, L"third", configuration},
        {{3}, 7, 4, L"later", configuration},
        {{3}, 8, 5, L"ExplodeDefaultLayer", configuration},
        {{1}, 8, 5, L"unselected", addIn},
        {{}, 8, 5, L"ExplodeDefaultLayer", configuration},
        {{2, 3}, 9, 5, L"ExplodeDefaultLayer", configuration},
        {{2, 3}, 7, -1, L"ExplodeDefaultLayer", configuration},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(KorString(one.layer).toUtf8());
        sql(configuration, {"DELETE FROM ExplodeProfile"});
        for (int key = 1; key <= 3; ++key)
            details::put(
                configuration,
                StructExplodeProfile{key, L"p",
                                     static_cast<int>(std::count(one.selected.begin(), one.selected.end(), key))});
        current(details, base);
        StructExplodeSettings found{5, 5, 5, L"old", 5, L"old", 5};
        const bool fallback = one.layer == KorString(L"ExplodeDefaultLayer");
        EXPECT_EQ(Settings::getExplodeSettingsForObjectStructure(one.modelType, one.subType, found),
                  fallback ? 0 : 1);
        EXPECT_EQ(found.layer, one.layer);
        if (fallback) {
            EXPECT_EQ(found.color, 253);
            EXPECT_EQ(found.lineType, L"ByLayer");
            EXPECT_EQ(found.on, 1);
            EXPECT_EQ(found.key, -1);
        }
        EXPECT_EQ(KorOdbcMan::getCurrentDSN(), one.leaves);
        EXPECT_EQ(KorOdbcMan::getCurrentAddIn(), one.leaves == addIn ? first : base);
        EXPECT_EQ(KorDSNManager::getInstance().getCurrentDSN(), details);
    }
    // without its table the user has none
    sql(addIn, {"DROP TABLE ExplodeSettings"});
    StructExplodeSettings found;
    EXPECT_EQ(Settings::getExplodeSettingsForObjectStructure(8, 5, found), 0);
}

} // namespace
