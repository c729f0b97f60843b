#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/NumberingRecords.h>

#include <algorithm>

using namespace records;

template <std::same_as<StructObjectGroup> R>
constexpr Entry listOf<R>[] = {
    table("ObjectGroup", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructObjectType> R>
constexpr Entry listOf<R>[] = {
    table("ObjectType", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::classId, "ClassID"),
    lookup<StructDetModelType>(&R::modelType, "ModelType"),
    lookup<StructObjectGroup>(&R::objectGroup, "ObjectGroup").noneAllowed(),
};

int StructObjectTypeMarshal::getByClassId(const KorString& classId, StructObjectType& type)
{
    return recordWith<&StructObjectType::classId>(classId, type);
}

int StructObjectTypeMarshal::getByModelType(long modelType, StructObjectType& type)
{
    return recordWith<&StructObjectType::modelType>(modelType, type);
}

template <auto Member>
int StructObjectTypeMarshal::keysWith(long value, KorArray<int>& keys)
{
    KorArray<int> found;
    visit([&](const StructObjectType& type) {
        if (type.*Member == value)
            found.append(type.key);
        return true;
    });
    return foundAny(found, keys);
}

int StructObjectTypeMarshal::getAllObjectTypeKeysByModelType(long modelType, KorArray<int>& keys)
{
    return keysWith<&StructObjectType::modelType>(modelType, keys);
}

int StructObjectTypeMarshal::getObjectGroup(int group, KorArray<int>& keys)
{
    return keysWith<&StructObjectType::objectGroup>(group, keys);
}

template <std::same_as<StructNumberingMethod> R>
constexpr Entry listOf<R>[] = {
    table("NumberingMethod", DataSources{KorDSNDefinitions::kNumbering, KorDSNDefinitions::kAddin}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::flag, "Flag"),
    column(&R::description, "Description"),
};

template <std::same_as<StructNumberingPrefix> R>
constexpr Entry listOf<R>[] = {
    table("NumberingPrefix", inConfigurationAndAddin),
    key(&R::key, "Key"),
    column(&R::modelRole, "ModelRole"),
    column(&R::singlePartPrefix, "SinglePartPrefix"),
    column(&R::mainPartPrefix, "MainPartPrefix"),
    owner(&R::ownerText, "OwnerText"),
    lookup<StructObjectType>(&R::objectType, "ObjectType"),
    lookup<StructNumberingPrefixProfile>(&R::profile, "Profile").noneAllowed(),
    column(&R::profileSubtype, "ProfileSubtype"),
    column(&R::preliminaryPartPrefix, "PreliminaryPartPrefix"),
};

template <std::same_as<StructNumberingPrefixProfile> R>
constexpr Entry listOf<R>[] = {
    table("NumberingPrefixProfile", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::selected, "Selected"),
};

template <std::same_as<StructProfileShapeRunName> R>
constexpr Entry listOf<R>[] = {
    table("ProfileShapeRunName", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::profileSubtype, "ProfileSubtype"),
};

int StructProfileShapeRunNameMarshal::getByProfileSubtype(const KorString& profileSubtype,
                                                          StructProfileShapeRunName& record)
{
    KorArray<StructProfileShapeRunName> table;
    getTable(table);
    for (const StructProfileShapeRunName& row : table) {
        if (row.profileSubtype == profileSubtype) {
            record = row;
            return 1;
        }
    }
    return 0;
}

template <std::same_as<StructExplodeObjects> R>
constexpr Entry listOf<R>[] = {
    table("ExplodeObjectsTo", inConfigurationAndAddin),
    key(&R::name, "Key"),
    column(&R::solidsTo, "SolidsTo"),
    column(&R::solidsGrouped, "SolidsGrouped"),
    column(&R::linesTo, "LinesTo"),
    column(&R::linesGrouped, "LinesGrouped"),
    column(&R::textsTo, "TextsTo"),
    column(&R::textsGrouped, "TextsGrouped"),
    sortOrder(&R::order, "SortOrder"),
};

int StructExplodeObjectsMarshal::getExplodeObjectsTable(KorArray<StructExplodeObjects>& records, int sorted)
{
    const int result = getTable(records);
    if (result == 1 && sorted != 0)
        std::stable_sort(
            records.begin(), records.end(), [](const auto& a, const auto& b) { return a.order < b.order; });
    return result;
}

template <std::same_as<StructExplodeSettings> R>
constexpr Entry listOf<R>[] = {
    table("ExplodeSettings", inConfigurationAndAddin),
    key(&R::key, "Key"),
    lookup<StructObjectStructure>(&R::objectStructure, "ObjectStructure"),
    lookup<StructExplodeProfile>(&R::profile, "Profile"),
    column(&R::layer, "Layer"),
    column(&R::color, "Color"),
    column(&R::lineType, "LineType"),
    column(&R::on, "On"),
};

template <std::same_as<StructExplodeProfile> R>
constexpr Entry listOf<R>[] = {
    table("ExplodeProfile", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::selected, "Selected"),
};

template <std::same_as<StructObjectStructure> R>
constexpr Entry listOf<R>[] = {
    table("ObjectStructure", inConfigurationAndAddin),
    key(&R::key, "Key"),
    lookup<StructObjectType>(&R::objectType, "ObjectType"),
    lookup<StructObjectSubType>(&R::objectSubType, "ObjectSubType"),
};

constinit const Family records::numberingRecords =
    family<StructObjectGroup, StructObjectType, StructNumberingMethod, StructExplodeObjects, StructNumberingPrefix,
           StructNumberingPrefixProfile, StructProfileShapeRunName, StructExplodeSettings, StructExplodeProfile,
           StructObjectStructure>;
