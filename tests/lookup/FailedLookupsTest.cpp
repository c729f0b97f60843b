// Look-ups of what is not there: the outputs stay as they were.

#include "catalogues/Anchors.h"
#include "catalogues/Bolts.h"
#include "catalogues/ObjectTypes.h"
#include "Lookups.h"
#include "repository/KorDatabaseProfileAccess.h"

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
void check(bool hasTables, const char* name, R (*lookUp)(P...))
{
    SCOPED_TRACE(name);
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
#define CHECK(lookUp) check(hasTables, #lookUp, lookUp)
#define CHECK_AS(lookUp, ...) check(hasTables, #lookUp, static_cast<int (*)(__VA_ARGS__)>(lookUp))
    CHECK(kor_odbc_getAutoConnSituationParams);
    CHECK(kor_odbc_getStandardsList);
    CHECK(kor_odbc_getFestigkeitList);
    CHECK(kor_odbc_getGarniturList);
    CHECK(kor_odbc_getDiameterList);
    CHECK(kor_odbc_getBoltComponents);
    CHECK(kor_odbc_getBoltComponentTypes);
    CHECK(Dll::kor_odbc_getNormKey);
    CHECK(Dll::kor_odbc_getNormDescription);
    CHECK(Dll::kor_odbc_getStandardNutsKey);
    CHECK(Dll::kor_odbc_getFestigkeitKey);
    CHECK(Dll::kor_odbc_getGarniturDescription);
    CHECK(Dll::kor_odbc_getAssemblyLocationList);
    CHECK(Dll::kor_odbc_getScrewCoating);
    CHECK(Dll::kor_odbc_getScrewDistance);
    CHECK(Dll::kor_odbc_getScrewDistanceKey);
    CHECK(kor_odbc_getAnchors);
    CHECK(kor_odbc_getSymbolRecord);
    CHECK(kor_odbc_getHelpTag);
    CHECK(kor_odbc_getNotesList);
    CHECK(kor_odbc_getDSTVNamesKey);
    CHECK(kor_odbc_getPlateThicknessList);
    CHECK(kor_odbc_getPlateThicknessKey);
    CHECK(kor_odbc_getPlateThicknessDescription);
    CHECK(kor_odbc_getScaleList);
    CHECK(kor_odbc_getScaleTable);
    CHECK(kor_odbc_getSpecificScale);
    CHECK(kor_odbc_getListScaleDescription);
    CHECK_AS(kor_odbc_getScaleDescription, double, KorString&, StructScale::ScaleUnitType, bool);
    CHECK_AS(kor_odbc_getScaleDescription, KorString, KorString&);
    CHECK(kor_odbc_getMaterialClass);
    CHECK(kor_odbc_getRuleObject);
    CHECK(kor_odbc_getRuleString);
    CHECK(kor_odbc_getRuleIntention);
    CHECK(kor_odbc_getRuleSublistString);
    CHECK(kor_odbc_getRuleVersion);
    CHECK(kor_odbc_mapRuleName);
    CHECK(kor_odbc_getRuleSublist);
    CHECK(kor_odbc_getRules2ndJointName);
    CHECK(kor_odbc_get_ClassTypeName);
    CHECK(kor_odbc_get_ClassRunName);
    CHECK(kor_odbc_get_sec_subtype_name);
    CHECK(kor_odbc_getMaterialForSectionClass);
    check(hasTables, "menu of a class", static_cast<long (*)(long, Names&)>(kor_odbc_get_menu_list));
    check(hasTables, "menu by name", static_cast<long (*)(Text, Names&)>(kor_odbc_get_menu_list));
    CHECK(kor_odbc_get_menu_sublist);
    CHECK(kor_odbc_getSectionAlpha);
    CHECK(kor_odbc_getSectionBehaviourKey);
    CHECK(kor_odbc_getSectionUnwind);
    CHECK(kor_odbc_DSTVstatic_getNumberOfObjects);
    CHECK(kor_odbc_DSTVstatic_getObject);
    CHECK(kor_odbc_DSTVstatic_getNode);
    CHECK(kor_odbc_DSTVstatic_getProfile);
    CHECK(kor_odbc_DSTVstatic_getObjectProperty);
    CHECK(kor_odbc_getBasicWeldingList);
    CHECK(kor_odbc_getWeldTypes);
    CHECK_AS(kor_odbc_getCombiWelding, Text, int&);
    CHECK_AS(kor_odbc_getCombiWelding, int, KorString&);
    CHECK_AS(kor_odbc_getCombiWelding, int, int&, int&);
    CHECK(kor_odbc_getCombiWeldingFor);
    CHECK_AS(kor_odbc_getFaceShapeDescription, Text, int&);
    CHECK(kor_odbc_getTextDescription);
    CHECK(kor_odbc_getWelSeamTextDescriptionList);
    CHECK_AS(kor_odbc_getTableStructure, Text, KorArray<KorColumn>&);
    CHECK(kor_odbc_getTables); // of a data source that there is not
    CHECK(korOdbcGetUserKeys);
    CHECK_AS(kor_odbc_getUserFirstKey, Text, Text, KorString&);
    CHECK_AS(kor_odbc_getUserComboBoxKey, Text, Text, int&);
    CHECK_AS(kor_odbc_getUserComboBoxRunname, Text, Text, KorString&);
    CHECK_AS(kor_odbc_getUserListcontrolKey, int, Text, KorString&);
    CHECK_AS(kor_odbc_getUserListcontrolKey, int, Text, int&);
    CHECK(kor_odbc_getCombinationKey);
    CHECK(kor_odbc_LanguageDependent_getRunname);
    CHECK(kor_odbc_LanguageDependent_getUserUnitUsedForRunname);
    CHECK(KorOdbcObjectLayerAssignment::fillTablesRelation);
    CHECK(KorOdbcSetBolts::getByKey);
    CHECK(KorOdbcSetBolts::getStrengthClassList);
    CHECK(KorOdbcSetBolts::getGarniturList);
    CHECK(KorOdbcSetBolts::getDiameterList);
    CHECK(KorOdbcSetBolts::getDiameters);
    CHECK(KorODBCBolts::getScrewExtension);
    CHECK(KorAnchorsNameUtils::getMaterialList);
    CHECK(KorAnchorsNameUtils::getSetList);
    CHECK(KorAnchorsNameUtils::getDiameterList);
    CHECK(KorAnchorsDefinition::getAvailableLengths);
    CHECK(KorDatabaseProfileAccess::getProfilesSectionNameListByKeysAllSources);
    CHECK(KorDatabaseProfileAccess::getInternalNameByRunNamesAllSources);
    CHECK(KorDatabaseProfileAccess::getCompoundMasterStruct);
    CHECK(KorDatabaseProfileAccess::decomposeInternalName);
    CHECK(KorDatabaseProfileAccess::loadSectionData);
}

INSTANTIATE_TEST_SUITE_P(, FailedLookUpsTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "InEmptyTables" : "WithoutTables"; });

} // namespace
