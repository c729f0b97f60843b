#include "records/configuration/DynamicSectionRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructProfileDynamicSubtype>()
{
    using R = StructProfileDynamicSubtype;
    static constexpr auto list = describe<R>("StructProfileDynamicSubtype",
                                             "ProfileDynamicSubtypes",
                                             DataSources{KorDSNDefinitions::kProfiles},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::profileSubtype>("ProfileSubtype"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructProfileDynamicClassDesc>()
{
    using R = StructProfileDynamicClassDesc;
    static constexpr auto list = describe<R>("StructProfileDynamicClassDesc",
                                             "ProfileDynamicClassDesc",
                                             DataSources{KorDSNDefinitions::kProfiles},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::subtype, StructProfileDynamicSubtype>("Subtype"),
                                             column<&R::dimensions>("Dimensions"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructProfileDynamic>()
{
    using R = StructProfileDynamic;
    static constexpr auto list = describe<R>("StructProfileDynamic",
                                             "ProfileDynamic",
                                             DataSources{KorDSNDefinitions::kProfiles},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::classDesc, StructProfileDynamicClassDesc>("ClassDesc"),
                                             column<&R::height>("h"),
                                             column<&R::width>("b"),
                                             column<&R::webThickness>("tw"),
                                             column<&R::flangeThickness>("tf"),
                                             column<&R::material>("Material"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::dynamicSectionRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructProfileDynamicSubtype>,
                                                   descriptionOf<StructProfileDynamicClassDesc>,
                                                   descriptionOf<StructProfileDynamic>};
    return list;
}
