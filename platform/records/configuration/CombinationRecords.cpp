#include "records/configuration/CombinationRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAssemblyLocation>()
{
    using R = StructAssemblyLocation;
    static constexpr auto list = describe<R>("StructAssemblyLocation",
                                             "AssemblyLocation",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructScrewDistance>()
{
    using R = StructScrewDistance;
    static constexpr auto list = describe<R>("StructScrewDistance",
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
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructValidCombinations>()
{
    using R = StructValidCombinations;
    static constexpr auto list = describe<R>("StructValidCombinations",
                                             "ValidCombinations",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             column<&R::standard>("Standard"),
                                             column<&R::strengthClass>("StrengthClass"),
                                             column<&R::boltSet>("BoltSet"),
                                             column<&R::diameter>("Diameter"),
                                             column<&R::coating>("Coating"),
                                             column<&R::assemblyLocation>("AssemblyLocation"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
