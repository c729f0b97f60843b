#include <korodbc/records/configuration/DynamicSectionRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructProfileDynamicSubtype> R>
constexpr Entry listOf<R>[] = {
    table("ProfileDynamicSubtypes", DataSources{KorDSNDefinitions::kProfiles}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::profileSubtype, "ProfileSubtype"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructProfileDynamicClassDesc> R>
constexpr Entry listOf<R>[] = {
    table("ProfileDynamicClassDesc", DataSources{KorDSNDefinitions::kProfiles}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructProfileDynamicSubtype>(&R::subtype, "Subtype"),
    column(&R::dimensions, "Dimensions"),
};

template <std::same_as<StructProfileDynamic> R>
constexpr Entry listOf<R>[] = {
    table("ProfileDynamic", DataSources{KorDSNDefinitions::kProfiles}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructProfileDynamicClassDesc>(&R::classDesc, "ClassDesc"),
    column(&R::height, "h"),
    column(&R::width, "b"),
    column(&R::webThickness, "tw"),
    column(&R::flangeThickness, "tf"),
    column(&R::material, "Material"),
    owner(&R::ownerText, "OwnerText"),
};

constinit const Family records::dynamicSectionRecords =
    family<StructProfileDynamicSubtype, StructProfileDynamicClassDesc, StructProfileDynamic>;
