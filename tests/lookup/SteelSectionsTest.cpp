#include "Lookups.h"

#include <korodbc/roots/KorStringSeparators.h>

namespace {

constexpr eDSN profiles = KorDSNDefinitions::kProfiles;
constexpr eDSN userSections = KorDSNDefinitions::kUserSections;

KorString internalName(const char* classKey, const char* section)
{
    return KorString::fromUtf8(classKey) + KorString(KorStringSeparators::kStrSectionNameSeparator) +
           KorString::fromUtf8(section);
}

class SteelSectionsTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        makeClasses(profiles, "'HEA', 'Wide', 'Type''s', 'S235', 'Sections_A', 'Subtype'", "Sections_A", 30);
        makeClasses(profiles, "'Empty', 'Empty ones', 'E', '', 'Sections_E', ''", "Sections_E", 0);
        makeClasses(profiles, "'Lost', 'Lost ones', '', '', 'Sections_Lost', ''", "", 0);
    }
    void TearDown() override
    {
        KorDSNManager::getInstance().setCurrent(details, KorDSNDefinitions::kBase);
        RepositoryTest::TearDown();
    }
    /// A class and, where it has one, its table; `alpha` 0 leaves the table empty.
    static void makeClasses(eDSN dsn, const std::string& row, const std::string& table, int alpha)
    {
        if (!exists(dsn, "ProfileMasterTable"))
            sql(dsn, {"CREATE TABLE ProfileMasterTable ([Key] TEXT, RunName TEXT, TypeName TEXT, Material TEXT, "
                      "TableName TEXT, SubtypeName TEXT)"});
        sql(dsn, {"INSERT INTO ProfileMasterTable ([Key], RunName, TypeName, Material, TableName, SubtypeName) "
                  "VALUES (" +
                  row + ")"});
        if (table.empty())
            return;
        sql(dsn,
            {"CREATE TABLE " + table +
             " ([Key] INTEGER, SectionName TEXT, h REAL, b REAL, tw REAL, tf REAL, r REAL, Area REAL, Mass REAL, "
             "Alpha REAL, Iy REAL, Iz REAL, Wely REAL, Welz REAL, Wply REAL, Wplz REAL, RadiusY REAL, "
             "RadiusZ REAL, It REAL, Iw REAL)"});
        if (alpha == 0)
            return;
        int key = 0;
        for (const char* name : {"zzzzzzzzzExtern", "HEA''120", "Ähnlich", "hea100"}) {
            ++key;
            sql(dsn, {"INSERT INTO " + table + " VALUES (" + std::to_string(key) + ", '" + name +
                      "', 1,2,3,4,5,6,7," + std::to_string(alpha + key) + ",9,10,11,12,13,14,15,16,17,18)"});
        }
    }
    static Texts menu(const auto& which, long count)
    {
        KorArray<KorString> names = korTexts({"kept"});
        EXPECT_EQ(kor_odbc_get_menu_list(which, names), count);
        return texts(names);
    }
};

TEST_F(SteelSectionsTest, MenuLists)
{
    const Texts classes{"Wide", "Empty ones", "Lost ones"}, sections{"HEA'120", "hea100", "Ähnlich"};
    for (const long index : {-1L, 3L, 99L})
        EXPECT_EQ(menu(index, 3), classes);
    EXPECT_EQ(menu(0L, 3), sections);
    EXPECT_EQ(menu(1L, 0), Texts{});
    EXPECT_EQ(menu(2L, 1), Texts{"kept"}); // its table is missing
    EXPECT_EQ(menu(KorString(L"Wide"), 3), sections);
    EXPECT_EQ(menu(KorString(L"wide"), 1), Texts{"kept"});
}

TEST_F(SteelSectionsTest, FieldsOfAClass)
{
    makeClasses(KorDSNDefinitions::kAddin, "'ADD', 'Added', 'From the add-in', '', '', ''", "", 0);
    const auto check = [](auto read, const KorString& argument, const char* expected) {
        KorString text(L"kept");
        EXPECT_EQ(shown(read(argument, text), text), expected) << argument.toUtf8();
    };
    const auto typeName = [](const auto& name, KorString& text) { return kor_odbc_get_ClassTypeName(name, text); };
    const auto runName = [](const auto& name, KorString& text) { return kor_odbc_get_ClassRunName(name, text); };
    check(typeName, L"Wide", "1 Type's");
    check(typeName, L"HEA", "0 kept");
    check(typeName, L"Added", "1 From the add-in");
    check(runName, L"HEA", "1 Wide");
    check(runName, L"Type's", "0 kept");
    check(kor_odbc_get_sec_subtype_name, internalName("HEA", "any"), "1 Subtype");
    check(kor_odbc_get_sec_subtype_name, internalName("HEA", "a@b"), "1 Subtype");
    check(kor_odbc_get_sec_subtype_name, internalName("", "any"), "0 kept");
    check(kor_odbc_get_sec_subtype_name, internalName("HEA", ""), "0 kept");
    check(kor_odbc_get_sec_subtype_name, L"HEA", "0 kept");
    check(kor_odbc_getMaterialForSectionClass, internalName("HEA", "any"), "1 S235");
    check(kor_odbc_getMaterialForSectionClass, internalName("HE'A", "any"), "0 kept");
    check(kor_odbc_getMaterialForSectionClass, L"HEA", "-1 kept");
}

TEST_F(SteelSectionsTest, CalculationValues)
{
    const auto check = [](const KorString& name, double alphaThere) {
        SCOPED_TRACE(name.toUtf8());
        const int result = alphaThere < 0 ? 0 : 1;
        double alpha = -1;
        EXPECT_EQ(kor_odbc_getSectionAlpha(alpha, name), result);
        EXPECT_EQ(alpha, alphaThere);
        KorArray<double> params;
        params.append(99);
        EXPECT_EQ(kor_odbc_getSectionCalculationParams(params, name), result);
        ASSERT_EQ(params.length(), result == 1 ? 18 : 0);
        EXPECT_GE(params.physicalLength(), 18);
        for (int i = 0; i < params.length(); ++i)
            EXPECT_EQ(params[i], i == 7 ? alpha : i + 1);
    };
    // without regard to case, but class keys are exact
    check(internalName("HEA", "HEA100"), 34);
    check(internalName("HEA", "hea'120"), 32);
    check(internalName("HEA", "äHNLICH"), 33);
    check(internalName("HEA", "ZZZZzzzzzextern"), 31);
    for (const auto& [classKey, section] : {std::pair("HEA", "HEA 100"),
                                            {"HEA", "' OR 1 --"},
                                            {"hea", "HEA100"},
                                            {"Empty", "HEA100"},
                                            {"Lost", "HEA100"},
                                            {"", "HEA100"},
                                            {"HEA", ""}})
        check(internalName(classKey, section), -1);
    check(L"HEA100", -1);
    check(L"", -1);
}

TEST_F(SteelSectionsTest, AlphaComesFromTheProfilesFirst)
{
    makeClasses(userSections, "'HEA', 'Wide', '', '', 'Sections_U', ''", "Sections_U", 60);
    makeClasses(userSections, "'OWN', 'Own', '', '', 'Sections_O', ''", "Sections_O", 70);
    KorDSNManager::getInstance().setCurrent(userSections, KorDSNDefinitions::kBase);
    double alpha = 0;
    EXPECT_EQ(kor_odbc_getSectionAlpha(alpha, internalName("HEA", "HEA100")), 1);
    EXPECT_EQ(alpha, 34);
    EXPECT_EQ(kor_odbc_getSectionAlpha(alpha, internalName("OWN", "HEA100")), 1);
    EXPECT_EQ(alpha, 74);
    EXPECT_EQ(KorDSNManager::getInstance().getCurrentDSN(), userSections);
    KorArray<double> params; // these are the current data source's
    EXPECT_EQ(kor_odbc_getSectionCalculationParams(params, internalName("HEA", "HEA100")), 1);
    EXPECT_EQ(params[7], 64);
}

TEST_F(SteelSectionsTest, Behaviour)
{
    sql(configuration, {"INSERT INTO SectionBehaviour VALUES (4, 'Bent', 2)",
                        "INSERT INTO SectionBehaviourAssignment VALUES (1, 'C''s', 4)"});
    long behaviour = 9;
    int unwind = 9;
    EXPECT_EQ(kor_odbc_getSectionBehaviourKey(L"C", behaviour), 0);
    EXPECT_EQ(kor_odbc_getSectionUnwind(unwind, behaviour), 0);
    EXPECT_EQ(behaviour + unwind, 18);
    EXPECT_EQ(kor_odbc_getSectionBehaviourKey(L"C's", behaviour), 1);
    EXPECT_EQ(shown(kor_odbc_getSectionUnwind(unwind, behaviour), behaviour, unwind), "1 4 2");
}

} // namespace
