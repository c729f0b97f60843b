#include <korodbc/records/configuration/NameMapRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructMapInternToExtern> R>
constexpr Entry listOf<R>[] = {
    table("MapInternToExtern", DataSources{KorDSNDefinitions::kConfiguration,
                                           KorDSNDefinitions::kProjectAdvance,
                                           KorDSNDefinitions::kProject,
                                           KorDSNDefinitions::kAddin}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::externalName, "ExternalName"),
    owner(&R::ownerText, "OwnerText"),
};

constinit const Family records::nameMapRecords = family<StructMapInternToExtern>;
