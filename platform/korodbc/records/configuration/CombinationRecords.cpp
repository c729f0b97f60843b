#include <korodbc/records/configuration/CombinationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructAssemblyLocation> R>
constexpr Entry listOf<R>[] = {
    table("AssemblyLocation", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructScrewDistance> R>
constexpr Entry listOf<R>[] = {
    table("BoltsDistances", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::diameter, "Diameter"),
    column(&R::edgeDistance, "EdgeDistance"),
    column(&R::sideDistance, "SideDistance"),
    column(&R::pitch, "Pitch"),
    column(&R::gauge, "Gauge"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructValidCombinations> R>
constexpr Entry listOf<R>[] = {
    table("ValidCombinations", inConfiguration),
    key(&R::key, "Key"),
    column(&R::standard, "Standard"),
    column(&R::strengthClass, "StrengthClass"),
    column(&R::boltSet, "BoltSet"),
    column(&R::diameter, "Diameter"),
    column(&R::coating, "Coating"),
    column(&R::assemblyLocation, "AssemblyLocation"),
};

int StructValidCombinationsMarshal::getKey(const KorString& standard, const KorString& strengthClass,
                                           const KorString& boltSet, const KorString& diameter,
                                           const KorString& coating, const KorString& assemblyLocation, int& key)
{
    StructValidCombinations record;
    const int result = recordThat(
        [&](const StructValidCombinations& row) {
            return row.standard == standard && row.strengthClass == strengthClass && row.boltSet == boltSet &&
                   row.diameter == diameter && row.coating == coating && row.assemblyLocation == assemblyLocation;
        },
        record);
    if (result == 1)
        key = record.key;
    return result;
}

constinit const Family records::combinationRecords =
    family<StructAssemblyLocation, StructScrewDistance, StructValidCombinations>;
