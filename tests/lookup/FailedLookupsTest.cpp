// Look-ups of what is not there: the outputs stay as they were.

#include "Lookups.h"

#include <korodbc/catalogues/Anchors.h>
#include <korodbc/catalogues/Bolts.h>
#include <korodbc/catalogues/KorOdbcGlobals.h>
#include <korodbc/catalogues/ObjectTypes.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>

#include <tuple>

namespace {

template <class T>
constexpr bool isOutput = std::is_lvalue_reference_v<T> && !std::is_const_v<std::remove_reference_t<T>>;

/// What an output holds before, told apart from what a read gives.
template <class T>
T kept()
{
    if constexpr (std::is_same_v<T, KorString>)
        return L"kept";
    else if constexpr (std::is_enum_v<T> || std::is_arithmetic_v<T>)
        return static_cast<T>(1);
    else if constexpr (requires(T value) { value.key; }) {
        T record;
        record.key = kept<decltype(record.key)>();
        return record;
    } else if constexpr (requires(T value) { value.append(value[0]); }) {
        T list;
        list.append(kept<std::remove_cvref_t<decltype(list[0])>>());
        return list;
    } else
        return T();
}

template <class T>
bool isKept(const T& value)
{
    if constexpr (requires { value.key; })
        return value.key == kept<T>().key;
    else if constexpr (requires { value[0].key; })
        return value.length() == 1 && isKept(value[0]);
    else if constexpr (requires { value == value; })
        return value == kept<T>();
    else
        return value.length() == 1;
}

template <class T>
T missing()
{
    if constexpr (std::is_same_v<T, KorString>)
        return KorString(L"No\x00a7Such");
    else if constexpr (std::is_arithmetic_v<T>)
        return static_cast<T>(4711);
    else
        return T();
}

/// Calls a look-up with inputs that lead nowhere. Without its table it must fail.
template <class R, class... P>
void checkOne(bool hasTables, R (*lookUp)(P...))
{
    std::tuple<std::remove_cvref_t<P>...> values{
        (isOutput<P> ? kept<std::remove_cvref_t<P>>() : missing<std::remove_cvref_t<P>>())...};
    const R result = std::apply([&](auto&... value) { return lookUp(static_cast<P>(value)...); }, values);
    const bool read = std::is_same_v<R, long> ? hasTables : result == 1; // a long is a number of entries
    EXPECT_TRUE(hasTables || !read);
    if (!read) {
        EXPECT_TRUE(
            std::apply([](const auto&... value) { return ((!isOutput<P> || isKept(value)) && ...); }, values));
    }
}

/// Which of the look-ups fails is told by its number.
template <class... LookUp>
void check(bool hasTables, LookUp... lookUps)
{
    int number = 0;
    const auto one = [&](auto lookUp) {
        SCOPED_TRACE(++number);
        checkOne(hasTables, lookUp);
    };
    (one(lookUps), ...);
}

class FailedLookUpsTest : public RepositoryTest, public testing::WithParamInterface<bool> {};

TEST_P(FailedLookUpsTest, LeaveTheirOutputs)
{
    const bool hasTables = GetParam();
    for (unsigned dsn = 0; !hasTables && dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn) {
        KorArray<KorString> tables;
        KorDatabaseAccess::getTablesNames(static_cast<eDSN>(dsn), tables);
        for (const KorString& table : tables)
            sql(static_cast<eDSN>(dsn), {"DROP TABLE [" + table.toUtf8() + "]"});
    }
    using Dll = KorODBCScrewsDll;
    using Text = const KorString&;
    check(hasTables, kor_odbc_getAutoConnSituationParams, kor_odbc_getStandardsList, kor_odbc_getFestigkeitList,
          kor_odbc_getGarniturList, kor_odbc_getDiameterList, kor_odbc_getBoltComponents,
          kor_odbc_getBoltComponentTypes, Dll::kor_odbc_getNormKey, Dll::kor_odbc_getNormDescription,
          Dll::kor_odbc_getStandardNutsKey, Dll::kor_odbc_getFestigkeitKey, Dll::kor_odbc_getGarniturDescription,
          Dll::kor_odbc_getAssemblyLocationList, Dll::kor_odbc_getScrewCoating, Dll::kor_odbc_getScrewDistance,
          Dll::kor_odbc_getScrewDistanceKey, kor_odbc_getAnchors, kor_odbc_getSymbolRecord, kor_odbc_getHelpTag,
          kor_odbc_getNotesList, kor_odbc_getDSTVNamesKey, kor_odbc_getPlateThicknessList,
          kor_odbc_getPlateThicknessKey, kor_odbc_getPlateThicknessDescription, kor_odbc_getScaleList,
          kor_odbc_getScaleTable, kor_odbc_getSpecificScale, kor_odbc_getListScaleDescription,
          kor_odbc_getMaterialClass, kor_odbc_getRuleObject, kor_odbc_getRuleString, kor_odbc_getRuleIntention,
          kor_odbc_getRuleSublistString, kor_odbc_getRuleVersion, kor_odbc_mapRuleName, kor_odbc_getRuleSublist,
          kor_odbc_getRules2ndJointName, kor_odbc_get_ClassTypeName, kor_odbc_get_ClassRunName,
          kor_odbc_get_sec_subtype_name, kor_odbc_getMaterialForSectionClass, kor_odbc_get_menu_sublist,
          kor_odbc_getSectionAlpha, kor_odbc_getSectionBehaviourKey, kor_odbc_getSectionUnwind,
          kor_odbc_DSTVstatic_getNumberOfObjects, kor_odbc_DSTVstatic_getObject, kor_odbc_DSTVstatic_getNode,
          kor_odbc_DSTVstatic_getProfile, kor_odbc_DSTVstatic_getObjectProperty, kor_odbc_getBasicWeldingList,
          kor_odbc_getWeldTypes, kor_odbc_getCombiWeldTypes, kor_odbc_getWeldShapes, kor_odbc_getWeldDesign,
          kor_odbc_getRenderMaterials, kor_odbc_getAnchorDefinitions, kor_odbc_getStrengthClasss, kor_odbc_getSets,
          kor_odbc_getSources, kor_odbc_getDSTVNamesTable, kor_odbc_getCombiWeldingFor,
          kor_odbc_getTextDescription, kor_odbc_getWelSeamTextDescriptionList, kor_odbc_getTables,
          korOdbcGetUserKeys, kor_odbc_getCombinationKey, kor_odbc_LanguageDependent_getRunname,
          kor_odbc_LanguageDependent_getUserUnitUsedForRunname, KorOdbcObjectLayerAssignment::fillTablesRelation,
          KorOdbcSetBolts::getByKey, KorOdbcSetBolts::getStrengthClassList, KorOdbcSetBolts::getGarniturList,
          KorOdbcSetBolts::getDiameterList, KorOdbcSetBolts::getDiameters, KorODBCBolts::getScrewExtension,
          KorAnchorsNameUtils::getMaterialList, KorAnchorsNameUtils::getSetList,
          KorAnchorsNameUtils::getDiameterList, KorAnchorsDefinition::getAvailableLengths,
          KorDatabaseProfileAccess::getProfilesSectionNameListByKeysAllSources,
          KorDatabaseProfileAccess::getInternalNameByRunNamesAllSources,
          KorDatabaseProfileAccess::getCompoundMasterStruct, KorDatabaseProfileAccess::decomposeInternalName,
          KorDatabaseProfileAccess::loadSectionData, KorOdbcGlobals::getDeveloperIDRange);
    check(hasTables, static_cast<int (*)(double, KorString&, StructScale::ScaleUnitType, bool)>(
                         kor_odbc_getScaleDescription));
    check(hasTables, static_cast<int (*)(KorString, KorString&)>(kor_odbc_getScaleDescription));
    check(hasTables, static_cast<int (*)(Text, int&)>(kor_odbc_getCombiWelding));
    check(hasTables, static_cast<int (*)(int, KorString&)>(kor_odbc_getCombiWelding));
    check(hasTables, static_cast<int (*)(int, int&, int&)>(kor_odbc_getCombiWelding));
    check(hasTables, static_cast<int (*)(Text, int&)>(kor_odbc_getFaceShapeDescription));
    check(hasTables, static_cast<int (*)(Text, KorArray<KorColumn>&)>(kor_odbc_getTableStructure));
    check(hasTables, static_cast<int (*)(Text, Text, KorString&)>(kor_odbc_getUserFirstKey));
    check(hasTables, static_cast<int (*)(Text, Text, int&)>(kor_odbc_getUserComboBoxKey));
    check(hasTables, static_cast<int (*)(Text, Text, KorString&)>(kor_odbc_getUserComboBoxRunname));
    check(hasTables, static_cast<int (*)(int, Text, KorString&)>(kor_odbc_getUserListcontrolKey));
    check(hasTables, static_cast<int (*)(int, Text, int&)>(kor_odbc_getUserListcontrolKey));
    check(hasTables, static_cast<long (*)(long, Names&)>(kor_odbc_get_menu_list));
    check(hasTables, static_cast<long (*)(Text, Names&)>(kor_odbc_get_menu_list));
}

INSTANTIATE_TEST_SUITE_P(, FailedLookUpsTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "InEmptyTables" : "WithoutTables"; });

} // namespace
