#include "Lookups.h"

namespace {

/// The shipped catalogue, read through the flat operations.
class ShippedLookupsTest : public testing::Test {
    const RepositoryFolder m_folder{KORODBC_SOURCE_CATALOGUE};
};

TEST_F(ShippedLookupsTest, NoListOrTableIsEmpty)
{
    for (int (*list)(Names&) : {kor_odbc_getPlateThicknessList, kor_odbc_getBasicWeldingList,
                                kor_odbc_getWelSeamTextDescriptionList, kor_odbc_getNotesList}) {
        Names names;
        EXPECT_EQ(list(names), 1);
        EXPECT_GT(names.length(), 0);
    }
    const auto filled = []<class... T>(int (*... tables)(KorArray<T>&)) {
        const auto one = []<class R>(int (*table)(KorArray<R>&)) {
            KorArray<R> records;
            EXPECT_EQ(table(records), 1);
            EXPECT_GT(records.length(), 0) << descriptionOf<R>().table;
        };
        (one(tables), ...);
    };
    filled(kor_odbc_getBoltComponents, kor_odbc_getBoltComponentTypes, kor_odbc_getCombiWeldTypes,
           kor_odbc_getWeldShapes, kor_odbc_getWeldDesign, kor_odbc_getRenderMaterials, kor_odbc_getAuthors,
           kor_odbc_getAnchors, kor_odbc_getAnchorDefinitions, kor_odbc_getSources, kor_odbc_getDSTVNamesTable,
           StructSymbolsMarshal::getTable, StructHelpButtonsMarshal::getTable,
           StructScrewDistanceMarshal::getTable, StructValidCombinationsMarshal::getTable,
           StructRulesCategoryMarshal::getTable, StructRuleNameMappingMarshal::getTable);
    KorArray<AutoConnParamSetSituationStruct> params;
    EXPECT_EQ(kor_odbc_getAutoConnSituationParams(1, L"AutoConnectionParamSetItems", params), 1);
    KorString text;
    EXPECT_EQ(kor_odbc_LanguageDependent_getRunname(L"Diameter", text), 1);
    long objects = 0;
    EXPECT_EQ(kor_odbc_DSTVstatic_getNumberOfObjects(objects), 1);
    EXPECT_GT(objects, 0);
}

TEST_F(ShippedLookupsTest, EverySectionHasItsValues)
{
    KorArray<KorString> classes, sections;
    ASSERT_GT(kor_odbc_get_menu_list(-1, classes), 0);
    for (int i = 0; i < classes.length(); ++i) {
        SCOPED_TRACE(classes[i].toUtf8());
        ASSERT_GT(kor_odbc_get_menu_list(i, sections), 0);
        StructProfileClass profileClass;
        ASSERT_EQ(StructProfileClassMarshal::getStructByRunName(classes[i], profileClass), 1);
        for (const KorString& section : sections) {
            const KorString name = profileClass.key + KorString(L"@") + section;
            KorArray<double> params;
            double alpha = -1;
            EXPECT_EQ(kor_odbc_getSectionCalculationParams(params, name), 1) << name.toUtf8();
            EXPECT_EQ(kor_odbc_getSectionAlpha(alpha, name), 1) << name.toUtf8();
            ASSERT_EQ(params.length(), 18);
            EXPECT_EQ(alpha, params[7]);
        }
        long behaviour = 0;
        int unwind = -1;
        EXPECT_EQ(kor_odbc_getSectionBehaviourKey(profileClass.key, behaviour), 1);
        EXPECT_EQ(kor_odbc_getSectionUnwind(unwind, behaviour), 1);
    }
}

TEST_F(ShippedLookupsTest, NamesLeadToRows)
{
    KorArray<StructRulesCategory> entries;
    ASSERT_EQ(StructRulesCategoryMarshal::getTable(entries), 1);
    for (const StructRulesCategory& entry : entries) {
        KorString rule, name;
        EXPECT_EQ(kor_odbc_getRuleInternalName(entry.runName, rule), 1) << entry.runName.toUtf8();
        EXPECT_EQ(rule, entry.rule);
        kor_odbc_getRuleRunbezeichnungUse2nd(entry.category, entry.rule, name);
        EXPECT_EQ(name, entry.runName);
    }
    KorArray<StructRuleNameMapping> mappings;
    ASSERT_EQ(StructRuleNameMappingMarshal::getTable(mappings), 1);
    StructRules rule;
    for (const StructRuleNameMapping& mapping : mappings)
        EXPECT_EQ(kor_odbc_getRuleObject(mapping.mappedName, rule), 1) << mapping.mappedName.toUtf8();

    KorArray<StructValidCombinations> combinations;
    ASSERT_EQ(StructValidCombinationsMarshal::getTable(combinations), 1);
    for (const StructValidCombinations& row : combinations) {
        KorString key;
        EXPECT_EQ(KorODBCScrewsDll::kor_odbc_getNormKey(row.standard, key), 1);
        EXPECT_EQ(KorODBCScrewsDll::kor_odbc_getFestigkeitKey(row.strengthClass, key), 1);
        EXPECT_EQ(KorODBCScrewsDll::kor_odbc_getGarniturKey(row.boltSet, key), 1);
        EXPECT_EQ(KorODBCScrewsDll::kor_odbc_getAssemblyLocationKey(row.assemblyLocation, key), 1);
        EXPECT_EQ(StructScrewDiameterMarshal::getKeyByRunName(row.diameter, key), 1);
        EXPECT_EQ(StructScrewCoatingMarshal::getKeyByRunName(row.coating, key), 1);
        int found = -1;
        EXPECT_EQ(kor_odbc_getCombinationKey(found, row.standard, row.strengthClass, row.boltSet, row.diameter,
                                             row.coating, row.assemblyLocation),
                  1);
        EXPECT_EQ(found, row.key);
    }
}

} // namespace
