#include <korodbc/records/configuration/NameMapRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructMapInternToExtern>()
{
    using R = StructMapInternToExtern;
    return described([] {
        return describe<R>("StructMapInternToExtern",
                           "MapInternToExtern",
                           DataSources{KorDSNDefinitions::kConfiguration,
                                       KorDSNDefinitions::kProjectAdvance,
                                       KorDSNDefinitions::kProject,
                                       KorDSNDefinitions::kAddin},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::externalName>("ExternalName"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

std::span<const DescriptionFunction> records::nameMapRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructMapInternToExtern>};
    return list;
}
