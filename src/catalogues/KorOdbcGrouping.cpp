#include "catalogues/PreferredSizes.h"

#include <korodbc/catalogues/KorOdbcGrouping.h>
#include <korodbc/records/configuration/AnchorRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/configuration/ConnectorRecords.h>
#include <korodbc/records/configuration/SectionRecords.h>
#include <korodbc/records/configuration/WeldRecords.h>
#include <korodbc/repository/KorDatabaseGratingAccess.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KRSettings.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

using korodbc::PreferredChoice;
using korodbc::PreferredList;

KorArray<int> KorOdbcGrouping::m_preferredProfiles;

namespace {

using Names = KorArray<KorString>;

/// The number that a text is; one that no row has when it is none.
int numberOf(const KorString& text)
{
    const std::string narrow = text.toUtf8();
    int value = 0;
    const auto end = std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    const bool isNumber = end.ec == std::errc() && end.ptr == narrow.data() + narrow.size();
    return isNumber ? value : std::numeric_limits<int>::min();
}

KorArray<long> numbersOf(const Names& keys)
{
    KorArray<long> numbers;
    for (const KorString& key : keys)
        numbers.append(numberOf(key));
    return numbers;
}

// What names the rows of a list

template <class T>
int named(const PreferredChoice& choice, Names& names)
{
    return RecordMarshal<T>::getOrderedRunNameListByKeys(choice.keys, names);
}

int materials(const PreferredChoice& choice, Names& names)
{
    return StructMaterialMarshal::getOrderedRunNameListByKeys(choice.keys, choice.option, names);
}

/// Names of those keys alone that are among the numbers.
template <class T>
int namedAmong(const PreferredChoice& choice, const std::unordered_set<int>& numbers, Names& names)
{
    Names keys;
    for (const KorString& key : choice.keys)
        if (numbers.contains(numberOf(key)))
            keys.append(key);
    return keys.isEmpty() ? 0 : named<T>({keys, {}}, names);
}

/// Shows the rows whose first parts are what was chosen before.
template <class Row, class Act>
void eachExisting(const PreferredChoice& choice, std::initializer_list<int Row::*> parts, Act act)
{
    std::vector<std::pair<int Row::*, int>> chosen;
    auto part = parts.begin();
    for (const KorString& key : choice.chosenBefore) {
        if (!key.isEmpty())
            chosen.emplace_back(*part, numberOf(key));
        ++part;
    }
    RecordAccess::visit(descriptionOf<Row>(), [&](const void* record) {
        const Row& row = *static_cast<const Row*>(record);
        if (std::all_of(chosen.begin(), chosen.end(),
                        [&](const auto& one) { return row.*one.first == one.second; }))
            act(row);
        return true;
    });
}

/// The list is that of the part which follows what was chosen before.
template <class T, class Row, int Row::*... Parts>
int existing(const PreferredChoice& choice, Names& names)
{
    constexpr int Row::*parts[] = {Parts...};
    std::unordered_set<int> numbers;
    eachExisting<Row>(choice, {Parts...},
                      [&](const Row& row) { numbers.insert(row.*parts[choice.chosenBefore.size()]); });
    return namedAmong<T>(choice, numbers, names);
}

template <class T>
constexpr auto ofBolts =
    &existing<T, StructScrew, &StructScrew::standard, &StructScrew::strengthClass, &StructScrew::boltSet>;
template <class T>
constexpr auto ofAnchors =
    &existing<T, StructAnchorsName, &StructAnchorsName::standard, &StructAnchorsName::material,
              &StructAnchorsName::boltSet, &StructAnchorsName::diameter>;
template <class T>
constexpr auto ofStuds = &existing<T, StructConnectorRelations, &StructConnectorRelations::standard,
                                   &StructConnectorRelations::material, &StructConnectorRelations::diameter>;

/// Bolts have their diameters in mm.
int boltDiameters(const PreferredChoice& choice, Names& names)
{
    using Bolt = StructScrew;
    std::vector<double> lengths;
    eachExisting<Bolt>(choice, {&Bolt::standard, &Bolt::strengthClass, &Bolt::boltSet},
                       [&](const Bolt& bolt) { lengths.push_back(bolt.diameter); });
    std::sort(lengths.begin(), lengths.end());
    std::unordered_set<int> numbers;
    RecordAccess::visit(descriptionOf<StructScrewDiameter>(), [&](const void* record) {
        const auto& diameter = *static_cast<const StructScrewDiameter*>(record);
        constexpr double tolerance = 1e-6;
        const auto nearest = std::lower_bound(lengths.begin(), lengths.end(), diameter.diameter - tolerance);
        if (nearest != lengths.end() && *nearest <= diameter.diameter + tolerance)
            numbers.insert(diameter.key);
        return true;
    });
    return namedAmong<StructScrewDiameter>(choice, numbers, names);
}

template <class Class>
int gratings(const PreferredChoice& choice, Names& names)
{
    Class gratingClass;
    if (RecordMarshal<Class>::getStructByKey(choice.chosenBefore.front(), gratingClass) != 1)
        return 0;
    Names found;
    KorDatabaseGratingAccess::getGratingItemsNameListByKeys(gratingClass.tableName, numbersOf(choice.keys), found);
    names = std::move(found);
    return names.isEmpty() ? 0 : 1;
}

int sections(const PreferredChoice& choice, Names& names)
{
    Names found;
    KorDatabaseProfileAccess::getProfilesSectionNameListByKeysAllSources(choice.chosenBefore.front(),
                                                                         numbersOf(choice.keys), found);
    names = std::move(found);
    return names.isEmpty() ? 0 : 1;
}

// The lists: kinds, condition, TypeID, TableID, TableID of the add-in's rows, CategoryID, data source, who names
// the rows; for rows that go with a class: MasterTableID, the classes that have tables of their own.

using enum KorOdbcGrouping::eRole;

constexpr unsigned only(std::initializer_list<KorOdbcGrouping::eRole> kinds)
{
    unsigned bits = 0;
    for (const auto kind : kinds)
        bits |= 1u << kind;
    return bits;
}

constexpr auto inConfiguration = KorDSNDefinitions::kConfiguration;
constexpr auto inProfiles = KorDSNDefinitions::kProfiles;
constexpr int ofKind = 0;

// clang-format off
constexpr PreferredList
    materialsOfKinds{only({kBeam, kPlate, kGrating, kWall, kSlab, kFootingIsolated}),
        "kBeam == e || kPlate == e || kGrating == e || kWall == e || kSlab == e || kFootingIsolated == e",
        2, 2, 24, ofKind, inConfiguration, materials},
    studMaterials{only({kStudShears}), "kStudShears == e",
        2, 10, 0, ofKind, inConfiguration, named<StructMaterialConnector>},
    studMaterialsOfStandard{only({kStudShears}), "kStudShears == e && !standardKey.isEmpty()",
        19, 10, 0, ofKind, inConfiguration, ofStuds<StructMaterialConnector>},
    studDiameters{only({kStudShears}), "kStudShears == e && !standardKey.isEmpty() && !materialKey.isEmpty()",
        8, 9, 0, ofKind, inConfiguration, ofStuds<StructConnectorDiameter>},
    studStandards{only({kStudShears}), "kStudShears == e",
        20, 11, 0, ofKind, inConfiguration, named<StructConnectorStandard>},
    coatings{0, nullptr, 3, 3, 25, ofKind, inConfiguration, named<StructCoating>},
    plateThicknesses{only({kPlate}), "kPlate == e",
        4, 4, 0, ofKind, inConfiguration, named<StructPlateThickness>},
    boltStandards{only({kBolt}), "kBolt == e",
        5, 5, 0, ofKind, inConfiguration, named<StructStandard>},
    strengthClasses{only({kBolt}), "!normKey.isEmpty() && kBolt == e",
        16, 8, 0, ofKind, inConfiguration, ofBolts<StructStrengthClass>},
    boltSets{only({kBolt}), "!normKey.isEmpty() && !strengthClassKey.isEmpty() && kBolt == e",
        6, 6, 0, ofKind, inConfiguration, ofBolts<StructSet>},
    diameters{only({kBolt}),
        "!normKey.isEmpty() && !strengthClassKey.isEmpty() && !setKey.isEmpty() && kBolt == e",
        7, 7, 0, ofKind, inConfiguration, boltDiameters},
    basicWelds{only({kWeld}), "kWeld == e", 12, 15, 0, ofKind, inConfiguration, named<StructWeldSeamBasic>},
    combinedWelds{only({kWeld}), "kWeld == e", 11, 14, 0, ofKind, inConfiguration, named<StructWeldSeam>},
    faceShapes{only({kWeld}), "kWeld == e", 10, 13, 0, ofKind, inConfiguration, named<StructFaceShape>},
    seamExecutions{only({kWeld}), "kWeld == e", 9, 12, 0, ofKind, inConfiguration, named<StructSeamExecuting>},
    modelRoles{0, nullptr, 13, 16, 26, ofKind, inConfiguration, named<StructModelRole>},
    anchorStandards{only({kAnchor}), "kAnchor == e",
        22, 23, 0, ofKind, inConfiguration, named<StructAnchorsStandard>},
    anchorMaterials{only({kAnchor}), "kAnchor == e && !standardKey.isEmpty()",
        16, 8, 0, ofKind, inConfiguration, ofAnchors<StructStrengthClass>},
    anchorSets{only({kAnchor}), "!normKey.isEmpty() && !strengthClassKey.isEmpty() && kAnchor == e",
        6, 6, 0, ofKind, inConfiguration, ofAnchors<StructSet>},
    anchorDiameters{only({kAnchor}),
        "!normKey.isEmpty() && !strengthClassKey.isEmpty() && !setKey.isEmpty() && kAnchor == e",
        7, 7, 0, ofKind, inConfiguration, ofAnchors<StructScrewDiameter>},
    sectionSubtypes{0, nullptr, 21, 22, 0, 1, inProfiles, named<StructProfileSubtype>},
    sectionClasses{0, nullptr, 1, 1, 0, 1, inProfiles, named<StructProfileClass>, 22},
    sectionsOfClass{0, nullptr, 15, 20, 0, 1, inProfiles, sections, 1,
        RecordMarshal<StructProfileClass>::getKeyList<KorString>},
    gratingClasses{0, nullptr, 17, 17, 0, 6, inConfiguration, named<StructGratingStandardMaster>},
    gratingsOfClass{0, nullptr, 17, 21, 0, 6, inConfiguration, gratings<StructGratingStandardMaster>, 17,
        RecordMarshal<StructGratingStandardMaster>::getKeyList<KorString>},
    cutGratingClasses{0, nullptr, 18, 18, 0, 6, inConfiguration, named<StructGratingVariableMaster>},
    cutGratingsOfClass{0, nullptr, 18, 21, 0, 6, inConfiguration, gratings<StructGratingVariableMaster>, 18,
        RecordMarshal<StructGratingVariableMaster>::getKeyList<KorString>},
    scales{0, nullptr, 14, 19, 0, 7, inConfiguration, named<StructScale>};
// clang-format on

int fill(const PreferredList& list, int kind, std::initializer_list<KorString> chosenBefore, Names& names,
         long option = 0)
{
    return korodbc::fillPreferredList(list, KorOdbcGrouping::getPreferredProfiles(), kind, chosenBefore, names,
                                      option);
}

} // namespace

int KorOdbcGrouping::getRegionKey()
{
    KorString text;
    if (KRSettings::getValue(L"Region Key", text) != 1)
        return -1;
    return static_cast<int>(
        std::clamp<long>(text.toInteger(), std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

int KorOdbcGrouping::getSelectedPreferredProfiles(KorArray<StructPreferredSizesProfiles>& profiles)
{
    profiles.removeAll();
    KorArray<StructPreferredSizesProfiles> all;
    const int result = within(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin,
                              [&] { return StructPreferredSizesProfilesMarshal::getTable(all); });
    for (const StructPreferredSizesProfiles& profile : all)
        if (profile.selected != 0)
            profiles.append(profile);
    return result;
}

void KorOdbcGrouping::setPreferredProfiles(KorArray<int>& profiles)
{
    std::sort(profiles.begin(), profiles.end());
    if (std::equal(profiles.begin(), profiles.end(), m_preferredProfiles.begin(), m_preferredProfiles.end()))
        return;
    KRRepositoryProxyMan::resetAllPreferredSizeData();
    m_preferredProfiles = profiles;
}

void KorOdbcGrouping::setDefaultPreferredProfiles()
{
    const int region = getRegionKey();
    KorArray<StructPreferredSizesProfiles> selected;
    getSelectedPreferredProfiles(selected);
    for (const StructPreferredSizesProfiles& profile : selected) {
        if (profile.region != region)
            continue;
        KorArray<int> keys;
        keys.append(profile.key);
        setPreferredProfiles(keys);
        return;
    }
}

int KorOdbcGrouping::getMaterialList(Names& list, eRole e, long option)
{
    return fill(materialsOfKinds, e, {}, list, option);
}

int KorOdbcGrouping::getCoatingList(eRole e, Names& list) { return fill(coatings, e, {}, list); }

int KorOdbcGrouping::getModelRoleList(eRole e, Names& list) { return fill(modelRoles, e, {}, list); }

int KorOdbcGrouping::getPlateThicknessList(eRole e, Names& list) { return fill(plateThicknesses, e, {}, list); }

int KorOdbcGrouping::getConnectorMaterialList(eRole e, Names& list) { return fill(studMaterials, e, {}, list); }

int KorOdbcGrouping::getConnectorMaterialList(eRole e, const KorString& standardKey, Names& list)
{
    return fill(studMaterialsOfStandard, e, {standardKey}, list);
}

int KorOdbcGrouping::getConnectorDiameterList(eRole e, const KorString& standardKey, const KorString& materialKey,
                                              Names& list)
{
    return fill(studDiameters, e, {standardKey, materialKey}, list);
}

int KorOdbcGrouping::getConnectorStandardsList(eRole e, Names& list) { return fill(studStandards, e, {}, list); }

int KorOdbcGrouping::getStandardsList(eRole e, Names& list) { return fill(boltStandards, e, {}, list); }

int KorOdbcGrouping::getStrengthClassList(eRole e, const KorString& normKey, Names& list)
{
    return fill(strengthClasses, e, {normKey}, list);
}

int KorOdbcGrouping::getSetList(eRole e, const KorString& normKey, const KorString& strengthClassKey, Names& list)
{
    return fill(boltSets, e, {normKey, strengthClassKey}, list);
}

int KorOdbcGrouping::getDiameterList(eRole e, const KorString& normKey, const KorString& strengthClassKey,
                                     const KorString& setKey, Names& list)
{
    return fill(diameters, e, {normKey, strengthClassKey, setKey}, list);
}

int KorOdbcGrouping::getAnchorsStandardsList(Names& list, eRole e) { return fill(anchorStandards, e, {}, list); }

int KorOdbcGrouping::getAnchorsMaterialList(Names& list, eRole e, const KorString& standardKey)
{
    return fill(anchorMaterials, e, {standardKey}, list);
}

int KorOdbcGrouping::getAnchorsSetList(Names& list, eRole e, const KorString& normKey,
                                       const KorString& strengthClassKey)
{
    return fill(anchorSets, e, {normKey, strengthClassKey}, list);
}

int KorOdbcGrouping::getAnchorsDiameterList(Names& list, eRole e, const KorString& normKey,
                                            const KorString& strengthClassKey, const KorString& setKey)
{
    return fill(anchorDiameters, e, {normKey, strengthClassKey, setKey}, list);
}

int KorOdbcGrouping::getBasicWeldingList(eRole e, Names& list) { return fill(basicWelds, e, {}, list); }

int KorOdbcGrouping::getCombiWeldingList(eRole e, Names& list) { return fill(combinedWelds, e, {}, list); }

int KorOdbcGrouping::getFaceShapeDescriptionList(eRole e, Names& list) { return fill(faceShapes, e, {}, list); }

int KorOdbcGrouping::getSeamExecutingDescriptionList(eRole e, Names& list)
{
    return fill(seamExecutions, e, {}, list);
}

int KorOdbcGrouping::getGratingClassesGrouping(Names& list) { return fill(gratingClasses, 0, {}, list); }

int KorOdbcGrouping::getGratingItemsGrouping(const KorString& gratingClass, Names& list)
{
    return fill(gratingsOfClass, 0, {gratingClass}, list);
}

int KorOdbcGrouping::getGratingVariableClassesGrouping(Names& list)
{
    return fill(cutGratingClasses, 0, {}, list);
}

int KorOdbcGrouping::getGratingVariableItemsGrouping(const KorString& gratingClass, Names& list)
{
    return fill(cutGratingsOfClass, 0, {gratingClass}, list);
}

int KorOdbcGrouping::getProfileSubTypesList(Names& list) { return fill(sectionSubtypes, 0, {}, list); }

int KorOdbcGrouping::GetMenuSubList(const KorString& menu, Names& list)
{
    return fill(sectionClasses, 0, {menu}, list);
}

int KorOdbcGrouping::GetMenuList(const KorString& menu, Names& list)
{
    return fill(sectionsOfClass, 0, {menu}, list);
}

int KorOdbcGrouping::GetMenuList(long menu, Names& list)
{
    return GetMenuList(KorString::format(L"%ld", menu), list);
}

int KorOdbcGrouping::getScaleTable(KorArray<StructScale>& list)
{
    list.removeAll();
    Names keys;
    if (korodbc::preferredKeys(m_preferredProfiles, scales.category, scales.type, scales.table, 0, {}, keys) == 0)
        return 0;
    return within(scales.dsn, KorDSNDefinitions::kBase,
                  [&] { return StructScaleMarshal::getOrderedTableByKeys(keys, list); });
}

int KorOdbcGrouping::getScaleList(Names& list) { return fill(scales, 0, {}, list); }
