#include <korodbc/records/configuration/CombinationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAssemblyLocation>()
{
    using R = StructAssemblyLocation;
    return described([] {
        return describe<R>("StructAssemblyLocation",
                           "AssemblyLocation",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructScrewDistance>()
{
    using R = StructScrewDistance;
    return described([] {
        return describe<R>("StructScrewDistance",
                           "BoltsDistances",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::diameter>("Diameter"),
                           column<&R::edgeDistance>("EdgeDistance"),
                           column<&R::sideDistance>("SideDistance"),
                           column<&R::pitch>("Pitch"),
                           column<&R::gauge>("Gauge"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructValidCombinations>()
{
    using R = StructValidCombinations;
    return described([] {
        return describe<R>("StructValidCombinations",
                           "ValidCombinations",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::standard>("Standard"),
                           column<&R::strengthClass>("StrengthClass"),
                           column<&R::boltSet>("BoltSet"),
                           column<&R::diameter>("Diameter"),
                           column<&R::coating>("Coating"),
                           column<&R::assemblyLocation>("AssemblyLocation"));
    });
}

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

std::span<const DescriptionFunction> records::combinationRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructAssemblyLocation>,
                                                   descriptionOf<StructScrewDistance>,
                                                   descriptionOf<StructValidCombinations>};
    return list;
}
