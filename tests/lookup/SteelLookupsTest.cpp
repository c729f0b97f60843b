#include "Lookups.h"
#include "support/DetailRecords.h"

#include <korodbc/foundation/KorOdbcTables.h>
#include <korodbc/lookup/KorOdbcSteelObsolete.h>

namespace {

constexpr eDSN addin = KorDSNDefinitions::kAddin;
using Dll = KorODBCScrewsDll;

class SteelLookupsTest : public RepositoryTest {
protected:
    static void insert(const std::string& table, const std::string& columns, const std::string& rows,
                       eDSN dsn = configuration)
    {
        sql(dsn, {"INSERT INTO [" + table + "] (" + columns + ") VALUES " + rows});
    }
    /// A table as the add-in may have it.
    static void insertIntoAddin(const std::string& table, const std::string& columns, const std::string& row)
    {
        sql(addin,
            {"CREATE TABLE [" + table + "] (" + columns + ")", "INSERT INTO [" + table + "] VALUES " + row});
    }
};

TEST_F(SteelLookupsTest, Lists)
{
    const auto check = [](const std::string& table, int (*list)(Names&), bool ordered, bool allSources) {
        SCOPED_TRACE(table);
        insert(table, ordered ? "[Key], RunName, SortOrder" : "[Key], RunName",
               ordered ? "(1, 'it''s [2]', 2), (2, 'Ö1', 1)" : "(1, 'Ö1'), (2, 'it''s [2]')");
        Texts expected{"Ö1", "it's [2]"};
        if (allSources) {
            insertIntoAddin(table, "[Key] INTEGER, RunName TEXT, SortOrder INTEGER", "(1, 'added', 9)");
            expected.insert(expected.begin(), "added");
        }
        Names names = korTexts({"kept"});
        EXPECT_EQ(list(names), 1);
        EXPECT_EQ(texts(names), expected);
    };
    // in what order, and from which sources
    check("Standard", kor_odbc_getStandardsList, true, true);
    check("StrengthClass", kor_odbc_getFestigkeitList, true, true);
    check("Sets", kor_odbc_getGarniturList, true, true);
    check("BoltsDiameters", kor_odbc_getDiameterList, true, true);
    check("AssemblyLocation", Dll::kor_odbc_getAssemblyLocationList, true, false);
    check("BoltsCoating", Dll::kor_odbc_getScrewCoatingList, false, false);
    check("WeldType", kor_odbc_getBasicWeldingList, true, false);
    check("CombiWelding", kor_odbc_getCombiWeldingList, true, false);
    check("WeldShape", kor_odbc_getFaceShapeDescriptionList, false, false);
    check("WeldDesign", kor_odbc_getSeamExecutingDescriptionList, false, false);
}

TEST_F(SteelLookupsTest, ComponentsOfAllSources)
{
    insert("SetNutsBolts", "[Key]", "(7), (3)");
    insertIntoAddin("SetNutsBolts", "[Key] INTEGER", "(5)");
    KorArray<StructSetNutsBolts> components;
    components.append({}); // replaced
    EXPECT_EQ(kor_odbc_getBoltComponents(components), 1);
    std::vector<int> keys;
    for (const StructSetNutsBolts& component : components)
        keys.push_back(component.key);
    EXPECT_EQ(keys, (std::vector{5, 3, 7}));
}

TEST_F(SteelLookupsTest, KeysAndRunNames)
{
    using TextOperation = int (*)(const KorString&, KorString&);
    const auto check = [](const char* table, TextOperation key, TextOperation runName) { // nullptr: there is none
        SCOPED_TRACE(table);
        insert(table, "[Key], RunName", "(7, 'it''s [7] ü'), (9, 'other')");
        KorString text(L"kept");
        if (key != nullptr) {
            EXPECT_EQ(shown(key(L"It's [7] ü", text), text), "0 kept");
            EXPECT_EQ(shown(key(L"it's [7] ü", text), text), "1 7");
        }
        if (runName == nullptr)
            return;
        text = L"kept";
        EXPECT_EQ(shown(runName(L"8", text), text), "0 kept");
        EXPECT_EQ(shown(runName(L"7 OR 1", text), text), "0 kept");
        EXPECT_EQ(shown(runName(L"7", text), text), "1 it's [7] ü");
    };
    check("Standard", Dll::kor_odbc_getNormKey, Dll::kor_odbc_getNormDescription);
    check("StandardNuts", Dll::kor_odbc_getStandardNutsKey, Dll::kor_odbc_getStandardNutsDescription);
    check("StrengthClass", Dll::kor_odbc_getFestigkeitKey, Dll::kor_odbc_getFestigkeitDescription);
    check("Sets", Dll::kor_odbc_getGarniturKey, Dll::kor_odbc_getGarniturDescription);
    check("AssemblyLocation", Dll::kor_odbc_getAssemblyLocationKey, Dll::kor_odbc_getAssemblyLocationDescription);
    check("BoltsCoating", nullptr, Dll::kor_odbc_getScrewCoatingRunname);
    check("BoltsDistances", Dll::kor_odbc_getScrewDistanceKey, nullptr);
    check("BoltsDiameters", nullptr, Dll::kor_odbc_getScrewDiameterDescription);
    check("DSTVNames", kor_odbc_getDSTVNamesKey, kor_odbc_getDSTVNamesDescription);
    check("Scale", nullptr,
          [](const KorString& key, KorString& text) { return kor_odbc_getScaleDescription(key, text); });
}

TEST_F(SteelLookupsTest, Records)
{
    insert("BoltsCoating", "[Key], RunName, Thickness", "(7, 'Zinc', 40)");
    insert("BoltsDistances", "[Key], RunName, Pitch", "(7, 'M20', 48.4)");
    insert("Symbols", "[Key], RunName, FileName", "(7, 'it''s [1]', 'a.svg')");
    insert("HelpButtons", "[Key], HelpTag, StringId", "('Beam''s', 'beams', 4)");

    // what is not found stays as it was
    const auto read = []<class T>(int (*of)(const KorString&, T&), const wchar_t* missing, const wchar_t* there) {
        T record;
        EXPECT_EQ(of(missing, record), 0);
        EXPECT_EQ(record.key, -1);
        EXPECT_EQ(of(there, record), 1);
        return record;
    };
    EXPECT_EQ(read(Dll::kor_odbc_getScrewCoating, L"8", L"7").thickness, 40);
    EXPECT_EQ(read(Dll::kor_odbc_getScrewDistance, L"8", L"7").pitch, 48.4);
    EXPECT_EQ(read(kor_odbc_getSymbolRecord, L"it's", L"it's [1]").fileName, KorString(L"a.svg"));
    for (const auto of : {kor_odbc_getHelpTag, kor_odbc_getButtonStringId}) {
        StructHelpButtons button;
        EXPECT_EQ(of(L"beam's", button), 0);
        EXPECT_EQ(button.key, KorString());
        EXPECT_EQ(of(L"Beam's", button), 1);
        EXPECT_EQ(button.helpTag, KorString(L"beams"));
        EXPECT_EQ(button.stringId, 4);
    }
}

TEST_F(SteelLookupsTest, PlateThicknesses)
{
    insert("PlateThickness", "[Key], RunName, Thickness",
           "(1, 'Any ''thickness''', 0.1), (2, 'Two tenths', 0.2), (3, 'Twelve', 12), (4, 'Near', 0.10000001),"
           "(5, 'Nearly', 0.099999)");
    for (const auto list :
         {kor_odbc_getPlateThicknessList, kor_odbc_getSlabThicknessList, kor_odbc_getWallThicknessList}) {
        Names names;
        EXPECT_EQ(list(names), 1);
        EXPECT_EQ(texts(names), (Texts{"Any 'thickness'", "0.200000", "12.000000", "Near", "0.099999"}));
    }
    double thickness = -1;
    EXPECT_EQ(kor_odbc_getPlateThicknessKey(L"Twelve", thickness), 1);
    EXPECT_EQ(thickness, 12);
    KorString name(L"kept");
    EXPECT_EQ(shown(kor_odbc_getPlateThicknessDescription(0.11, name), name), "0 kept");
    EXPECT_EQ(shown(kor_odbc_getPlateThicknessDescription(0.2, name), name), "1 Two tenths");
}

TEST_F(SteelLookupsTest, Scales)
{
    insert("Scale", "[Key], RunName, Factor, UnitType",
           "(1, '1:10', 0.1, 0), (2, '1:96', 0.0104166666, 1), (3, '1:20', 0.05, 0), (4, '1''', 0.05, 1)");
    constexpr auto metric = StructScale::kMetric, imperial = StructScale::kImperial;
    Names names = korTexts({"kept"});
    EXPECT_EQ(kor_odbc_getScaleList(metric, names), 1);
    EXPECT_EQ(texts(names), (Texts{"1:10", "1:20"}));
    KorArray<StructScale> scales;
    EXPECT_EQ(kor_odbc_getScaleTable(imperial, scales), 1);
    ASSERT_EQ(scales.length(), 2);
    EXPECT_EQ(scales[1].key, 4);
    StructScale scale;
    EXPECT_EQ(kor_odbc_getSpecificScale(L"1:96", imperial, scale), 1);
    EXPECT_EQ(scale.key, 2);
    insert("Scale", "[Key], RunName, Factor, UnitType", "(9, '1:96', 96, 0)"); // in both unit systems
    EXPECT_EQ(kor_odbc_getSpecificScale(L"1:96", metric, scale), 1);
    EXPECT_EQ(scale.key, 9);
    sql(configuration, {"DELETE FROM Scale WHERE [Key]=9"});

    const auto described = [](double factor, StructScale::ScaleUnitType unit, bool anyUnit) {
        KorString text(L"kept");
        return shown(kor_odbc_getScaleDescription(factor, text, unit, anyUnit), text);
    };
    EXPECT_EQ(described(0.05, metric, false), "1 1:20");
    EXPECT_EQ(described(0.05, imperial, true), "1 1'");
    EXPECT_EQ(described(0.1, imperial, true), "1 1:10");
    EXPECT_EQ(described(0.1, imperial, false), "0 kept");
    EXPECT_EQ(described(0.07, metric, true), "0 kept");
    EXPECT_EQ(kor_odbc_getListScaleDescription(details::list({0.07, 0.05}), names, metric, false), 1);
    EXPECT_EQ(texts(names), (Texts{"", "1:20"}));
}

TEST_F(SteelLookupsTest, MaterialClasses)
{
    insert("MaterialClass", "[Key], Name, ClassNumber", "(3, 'Steel', 1), (4, '', 2)");
    int number = 9;
    EXPECT_EQ(kor_odbc_getMaterialClass(4, number), 0); // a class without a name is none
    EXPECT_EQ(shown(kor_odbc_getMaterialClass(5, number), number), "0 9");
    EXPECT_EQ(shown(kor_odbc_getMaterialClass(3, number), number), "1 1");
}

TEST_F(SteelLookupsTest, Welds)
{
    insert("WeldType", "[Key], RunName", "(1, 'Fillet'), (1000, 'Last'), (1001, 'not basic')");
    insert("CombiWelding", "[Key], RunName, FirstWeld, SecondWeld",
           "(1001, 'Both', 1, 1000), (1002, 'One', 1, -1), (1000, 'not combined', 1, 1)");
    insert("WeldShape", "[Key], RunName", "(2, 'Convex')");
    insert("WeldDesign", "[Key], RunName", "(3, 'On site')");
    const std::string unknown = "key not found";
    for (const auto& [key, text] : {std::pair<int, std::string>(1, "Fillet"),
                                    {1000, "Last"},
                                    {1001, "Both"},
                                    {2, unknown},
                                    {1003, unknown},
                                    {-5, unknown}})
        EXPECT_EQ(kor_odbc_getWeldingDescription(key).toUtf8(), text);

    int key = 9, first = 9, second = 9;
    KorString name(L"kept");
    EXPECT_EQ(kor_odbc_getCombiWeldingFor(1000, 1, key), 0); // the order counts
    EXPECT_EQ(kor_odbc_getFaceShapeDescription(3), KorString());
    EXPECT_EQ(kor_odbc_getSeamExecutingDescription(2), KorString());

    const auto found = [&](int result) { return result == 1 ? key : -1; };
    EXPECT_EQ(found(kor_odbc_getCombiWelding(L"Both", key)), 1001);
    EXPECT_EQ(found(kor_odbc_getCombiWeldingFor(1, -1, key)), 1002);
    EXPECT_EQ(found(kor_odbc_getFaceShapeDescription(L"Convex", key)), 2);
    EXPECT_EQ(found(kor_odbc_getSeamExecutingDescription(L"On site", key)), 3);
    EXPECT_EQ(shown(kor_odbc_getCombiWelding(1001, first, second), first, second), "1 1 1000");
    EXPECT_EQ(shown(kor_odbc_getCombiWelding(1002, name), name), "1 One");
    EXPECT_EQ(kor_odbc_getFaceShapeDescription(2), KorString(L"Convex"));
    EXPECT_EQ(kor_odbc_getSeamExecutingDescription(3), KorString(L"On site"));

    sql(configuration, {"DROP TABLE WeldType", "DROP TABLE WeldShape"});
    EXPECT_EQ(kor_odbc_getWeldingDescription(1), KorString(L"access denied"));
    EXPECT_EQ(kor_odbc_getWeldingDescription(1001), KorString(L"Both"));
    EXPECT_EQ(kor_odbc_getFaceShapeDescription(2), KorString());
}

TEST_F(SteelLookupsTest, TextsOfTwoSources)
{
    Names keys = korTexts({"kept"});
    EXPECT_EQ(kor_odbc_getWelSeamTextDescriptionList(keys), 0);
    EXPECT_EQ(kor_odbc_getNotesList(keys), 0);
    EXPECT_EQ(texts(keys), Texts{"kept"});
    for (const char* table : {"Texts", "Notes"}) {
        insert(table, "[Key], RunName", "('b', 'base b'), ('it''s', 'base [1]'), ('Ärger', 'base ä')");
        insert(table, "[Key], RunName", "('A', 'added a'), ('b', 'added b')", addin);
    }
    // a request of the caller's makes no difference
    const KorDSNRequest elsewhere(KorDSNDefinitions::kProfiles, KorDSNDefinitions::kBase);
    EXPECT_EQ(kor_odbc_getWelSeamTextDescriptionList(keys), 1);
    EXPECT_EQ(texts(keys), (Texts{"b", "it's", "Ärger", "A", "b"}));
    EXPECT_EQ(kor_odbc_getNotesList(keys), 1);
    EXPECT_EQ(texts(keys), (Texts{"A", "b", "b", "it's", "Ärger"}));

    KorString text(L"kept");
    EXPECT_EQ(shown(kor_odbc_getTextDescription(L"a", text), text), "0 kept");
    for (const auto& [key, expected] : {std::pair(L"b", L"base b"), {L"A", L"added a"}, {L"it's", L"base [1]"}}) {
        EXPECT_EQ(kor_odbc_getTextDescription(key, text), 1);
        EXPECT_EQ(text, KorString(expected));
    }
}

TEST_F(SteelLookupsTest, StaticAnalysis)
{
    long number = 9;
    EXPECT_EQ(shown(kor_odbc_DSTVstatic_getNumberOfObjects(number), number), "1 0");
    insert("DSTV_Static_In_B01", "[Key], RunName, StartNode", "(1, 'Column', 4), (2, 'Beam', 5)");
    insert("DSTV_Static_In_B02", "[Key], X, Y, Z", "(4, 1.5, 2.5, 3.5)");
    insert("DSTV_Static_In_B03", "[Key], ObjectNumber, ProfileName, ReferenceAxis",
           "(1, 2, 'IPE''s', 1), (2, 2, 'second', 0), (3, 1, 'HEA', 0)");
    insert("DSTV_Static_In_B04", "[Key], ObjectNumber, PropertyName, Value",
           "(1, 1, 'Role', 'Column'), (2, 2, 'Role', 'it''s'), (3, 2, 'Camber', '10')");
    EXPECT_EQ(shown(kor_odbc_DSTVstatic_getNumberOfObjects(number), number), "1 2");
    StructDSTVStaticInB01 object;
    EXPECT_EQ(kor_odbc_DSTVstatic_getObject(2, object), 1);
    EXPECT_EQ(object.runName, KorString(L"Beam"));
    StructDSTVStaticInB02 node;
    EXPECT_EQ(kor_odbc_DSTVstatic_getNode(4, node), 1);
    EXPECT_EQ(node.z, 3.5);
    KorString text(L"kept");
    auto axis = StructDSTVStaticInB03::kStrongAxis;
    EXPECT_EQ(shown(kor_odbc_DSTVstatic_getObjectProperty(1, L"Camber", text), text), "0 kept");
    EXPECT_EQ(shown(kor_odbc_DSTVstatic_getProfile(2, text, axis), text), "1 IPE's");
    EXPECT_EQ(axis, StructDSTVStaticInB03::kWeakAxis);
    EXPECT_EQ(shown(kor_odbc_DSTVstatic_getObjectProperty(2, L"Role", text), text), "1 it's");
}

TEST_F(SteelLookupsTest, ObsoleteOperations)
{
    KorArray<KorColumn> columns;
    columns.append(KorColumn(L"kept", KorItemType::kInt));
    KorArray<KorColumnData> data;
    data.append(KorColumnData());
    KorString text(L"kept");
    AssertionRecorder assertions;
    const auto obsolete = [&](int result) {
        EXPECT_EQ(result, 0);
        EXPECT_EQ(assertions.take(), Texts{"KorSignRules: thisMethodIsObsolete"});
    };
    obsolete(kor_odbc_getColumnBaseRecord(1, columns));
    obsolete(kor_odbc_getColumnBaseTable(data, columns));
    obsolete(kor_odbc_getPlantPartSubtypename(1, text));
    EXPECT_EQ(columns.length() + data.length(), 2);
    EXPECT_EQ(text, KorString(L"kept"));
}

} // namespace
