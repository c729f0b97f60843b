#include "records/detail/NumberingRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

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
                           column<&R::objectType>("ObjectType"),
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
                           column<&R::objectType>("ObjectType"),
                           column<&R::objectSubType>("ObjectSubType"));
    });
}

std::span<const DescriptionFunction> records::numberingRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructNumberingPrefix>,
        &descriptionOf<StructNumberingPrefixProfile>,
        &descriptionOf<StructProfileShapeRunName>,
        &descriptionOf<StructExplodeSettings>,
        &descriptionOf<StructExplodeProfile>,
        &descriptionOf<StructObjectStructure>,
    };
    return types;
}
