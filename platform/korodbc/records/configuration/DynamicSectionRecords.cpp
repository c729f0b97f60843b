#include <korodbc/records/configuration/DynamicSectionRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructProfileDynamicSubtype>()
{
    using R = StructProfileDynamicSubtype;
    return described([] {
        return describe<R>("StructProfileDynamicSubtype",
                           "ProfileDynamicSubtypes",
                           DataSources{KorDSNDefinitions::kProfiles},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::profileSubtype>("ProfileSubtype"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructProfileDynamicClassDesc>()
{
    using R = StructProfileDynamicClassDesc;
    return described([] {
        return describe<R>("StructProfileDynamicClassDesc",
                           "ProfileDynamicClassDesc",
                           DataSources{KorDSNDefinitions::kProfiles},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::subtype, StructProfileDynamicSubtype>("Subtype"),
                           column<&R::dimensions>("Dimensions"));
    });
}

template <>
const RecordDescription& descriptionOf<StructProfileDynamic>()
{
    using R = StructProfileDynamic;
    return described([] {
        return describe<R>("StructProfileDynamic",
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
    });
}

std::span<const DescriptionFunction> records::dynamicSectionRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructProfileDynamicSubtype>,
                                                   descriptionOf<StructProfileDynamicClassDesc>,
                                                   descriptionOf<StructProfileDynamic>};
    return list;
}
