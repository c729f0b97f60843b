#include "records/detail/NumberingRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructNumberingPrefix>()
{
    using R = StructNumberingPrefix;
    static constexpr auto list =
        describe<R>("StructNumberingPrefix",
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
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNumberingPrefixProfile>()
{
    using R = StructNumberingPrefixProfile;
    static constexpr auto list = describe<R>("StructNumberingPrefixProfile",
                                             "NumberingPrefixProfile",
                                             inConfigurationAndAddin,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::selected>("Selected"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructProfileShapeRunName>()
{
    using R = StructProfileShapeRunName;
    static constexpr auto list = describe<R>("StructProfileShapeRunName",
                                             "ProfileShapeRunName",
                                             inConfigurationAndAddin,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::profileSubtype>("ProfileSubtype"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
    static constexpr auto list = describe<R>("StructExplodeSettings",
                                             "ExplodeSettings",
                                             inConfigurationAndAddin,
                                             key<&R::key>("Key"),
                                             lookup<&R::objectStructure, StructObjectStructure>("ObjectStructure"),
                                             lookup<&R::profile, StructExplodeProfile>("Profile"),
                                             column<&R::layer>("Layer"),
                                             column<&R::color>("Color"),
                                             column<&R::lineType>("LineType"),
                                             column<&R::on>("On"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructExplodeProfile>()
{
    using R = StructExplodeProfile;
    static constexpr auto list = describe<R>("StructExplodeProfile",
                                             "ExplodeProfile",
                                             inConfigurationAndAddin,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::selected>("Selected"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructObjectStructure>()
{
    using R = StructObjectStructure;
    static constexpr auto list = describe<R>("StructObjectStructure",
                                             "ObjectStructure",
                                             inConfigurationAndAddin,
                                             key<&R::key>("Key"),
                                             column<&R::objectType>("ObjectType"),
                                             column<&R::objectSubType>("ObjectSubType"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
