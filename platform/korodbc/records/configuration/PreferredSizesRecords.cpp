#include <korodbc/records/configuration/PreferredSizesRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

namespace {

constexpr DataSources inAddin{KorDSNDefinitions::kAddin};

} // namespace

template <>
const RecordDescription& descriptionOf<StructRegion>()
{
    using R = StructRegion;
    return described([] {
        return describe<R>("StructRegion",
                           "Region",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructCountry>()
{
    using R = StructCountry;
    return described([] {
        return describe<R>("StructCountry",
                           "Country",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::code>("Code"),
                           lookup<&R::region, StructRegion>("Region").noneAllowed());
    });
}

template <>
const RecordDescription& descriptionOf<StructPreferredSizesProfiles>()
{
    using R = StructPreferredSizesProfiles;
    return described([] {
        return describe<R>("StructPreferredSizesProfiles",
                           "PreferredSizesProfiles",
                           inAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::selected>("Selected"),
                           lookup<&R::region, StructRegion>("Region").noneAllowed(),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructPreferredSizesItems>()
{
    using R = StructPreferredSizesItems;
    return described([] {
        return describe<R>("StructPreferredSizesItems",
                           "PreferredSizesItems",
                           inAddin,
                           key<&R::key>("Key"),
                           column<&R::profileID>("ProfileID").names<StructPreferredSizesProfiles>(),
                           column<&R::typeID>("TypeID"),
                           column<&R::categoryID>("CategoryID"),
                           column<&R::tableID>("TableID"),
                           column<&R::keyValue>("KeyValue"),
                           column<&R::masterTableID>("MasterTableID"),
                           column<&R::masterKeyValue>("MasterKeyValue"));
    });
}

std::span<const DescriptionFunction> records::preferredSizesRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructRegion>,
                                                   descriptionOf<StructCountry>,
                                                   descriptionOf<StructPreferredSizesProfiles>,
                                                   descriptionOf<StructPreferredSizesItems>};
    return list;
}
