#include <korodbc/records/configuration/PreferredSizesRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

namespace {

constexpr DataSources inAddin{KorDSNDefinitions::kAddin};

} // namespace

template <std::same_as<StructRegion> R>
constexpr Entry listOf<R>[] = {
    table("Region", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructCountry> R>
constexpr Entry listOf<R>[] = {
    table("Country", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::code, "Code"),
    lookup<StructRegion>(&R::region, "Region").noneAllowed(),
};

template <std::same_as<StructPreferredSizesProfiles> R>
constexpr Entry listOf<R>[] = {
    table("PreferredSizesProfiles", inAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::selected, "Selected"),
    lookup<StructRegion>(&R::region, "Region").noneAllowed(),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructPreferredSizesItems> R>
constexpr Entry listOf<R>[] = {
    table("PreferredSizesItems", inAddin),
    key(&R::key, "Key"),
    names<StructPreferredSizesProfiles>(&R::profileID, "ProfileID"),
    column(&R::typeID, "TypeID"),
    column(&R::categoryID, "CategoryID"),
    column(&R::tableID, "TableID"),
    column(&R::keyValue, "KeyValue"),
    column(&R::masterTableID, "MasterTableID"),
    column(&R::masterKeyValue, "MasterKeyValue"),
};

constinit const Family records::preferredSizesRecords =
    family<StructRegion, StructCountry, StructPreferredSizesProfiles, StructPreferredSizesItems>;
