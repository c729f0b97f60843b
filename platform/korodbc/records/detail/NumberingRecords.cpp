#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/NumberingRecords.h>
#include <korodbc/records/Registry.h>

#include <algorithm>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructObjectGroup>()
{
    using R = StructObjectGroup;
    return described([] {
        return describe<R>("StructObjectGroup",
                           "ObjectGroup",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructObjectType>()
{
    using R = StructObjectType;
    return described([] {
        return describe<R>("StructObjectType",
                           "ObjectType",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::classId>("ClassID"),
                           lookup<&R::modelType, StructDetModelType>("ModelType"),
                           lookup<&R::objectGroup, StructObjectGroup>("ObjectGroup").noneAllowed());
    });
}

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

template <>
const RecordDescription& descriptionOf<StructNumberingMethod>()
{
    using R = StructNumberingMethod;
    return described([] {
        return describe<R>("StructNumberingMethod",
                           "NumberingMethod",
                           DataSources{KorDSNDefinitions::kNumbering, KorDSNDefinitions::kAddin},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::flag>("Flag"),
                           column<&R::description>("Description"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNumberingPrefix>()
{
    using R = StructNumberingPrefix;
    return described([] {
        return describe<R>("StructNumberingPrefix",
                           "NumberingPrefix",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           column<&R::modelRole>("ModelRole"),
                           column<&R::singlePartPrefix>("SinglePartPrefix"),
                           column<&R::mainPartPrefix>("MainPartPrefix"),
                           owner<&R::ownerText>("OwnerText"),
                           lookup<&R::objectType, StructObjectType>("ObjectType"),
                           lookup<&R::profile, StructNumberingPrefixProfile>("Profile").noneAllowed(),
                           column<&R::profileSubtype>("ProfileSubtype"),
                           column<&R::preliminaryPartPrefix>("PreliminaryPartPrefix"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNumberingPrefixProfile>()
{
    using R = StructNumberingPrefixProfile;
    return described([] {
        return describe<R>("StructNumberingPrefixProfile",
                           "NumberingPrefixProfile",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::selected>("Selected"));
    });
}

template <>
const RecordDescription& descriptionOf<StructProfileShapeRunName>()
{
    using R = StructProfileShapeRunName;
    return described([] {
        return describe<R>("StructProfileShapeRunName",
                           "ProfileShapeRunName",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::profileSubtype>("ProfileSubtype"));
    });
}

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

template <>
const RecordDescription& descriptionOf<StructExplodeObjects>()
{
    using R = StructExplodeObjects;
    return described([] {
        return describe<R>("StructExplodeObjects",
                           "ExplodeObjectsTo",
                           inConfigurationAndAddin,
                           key<&R::name>("Key"),
                           column<&R::solidsTo>("SolidsTo"),
                           column<&R::solidsGrouped>("SolidsGrouped"),
                           column<&R::linesTo>("LinesTo"),
                           column<&R::linesGrouped>("LinesGrouped"),
                           column<&R::textsTo>("TextsTo"),
                           column<&R::textsGrouped>("TextsGrouped"),
                           sortOrder<&R::order>("SortOrder"));
    });
}

int StructExplodeObjectsMarshal::getExplodeObjectsTable(KorArray<StructExplodeObjects>& records, int sorted)
{
    const int result = getTable(records);
    if (result == 1 && sorted != 0)
        std::stable_sort(
            records.begin(), records.end(), [](const auto& a, const auto& b) { return a.order < b.order; });
    return result;
}

template <>
const RecordDescription& descriptionOf<StructExplodeSettings>()
{
    using R = StructExplodeSettings;
    return described([] {
        return describe<R>("StructExplodeSettings",
                           "ExplodeSettings",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           lookup<&R::objectStructure, StructObjectStructure>("ObjectStructure"),
                           lookup<&R::profile, StructExplodeProfile>("Profile"),
                           column<&R::layer>("Layer"),
                           column<&R::color>("Color"),
                           column<&R::lineType>("LineType"),
                           column<&R::on>("On"));
    });
}

template <>
const RecordDescription& descriptionOf<StructExplodeProfile>()
{
    using R = StructExplodeProfile;
    return described([] {
        return describe<R>("StructExplodeProfile",
                           "ExplodeProfile",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::selected>("Selected"));
    });
}

template <>
const RecordDescription& descriptionOf<StructObjectStructure>()
{
    using R = StructObjectStructure;
    return described([] {
        return describe<R>("StructObjectStructure",
                           "ObjectStructure",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           lookup<&R::objectType, StructObjectType>("ObjectType"),
                           lookup<&R::objectSubType, StructObjectSubType>("ObjectSubType"));
    });
}

std::span<const DescriptionFunction> records::numberingRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructObjectGroup>,
        &descriptionOf<StructObjectType>,
        &descriptionOf<StructNumberingMethod>,
        &descriptionOf<StructExplodeObjects>,
        &descriptionOf<StructNumberingPrefix>,
        &descriptionOf<StructNumberingPrefixProfile>,
        &descriptionOf<StructProfileShapeRunName>,
        &descriptionOf<StructExplodeSettings>,
        &descriptionOf<StructExplodeProfile>,
        &descriptionOf<StructObjectStructure>,
    };
    return types;
}
