#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDefaultString>()
{
    using R = StructDefaultString;
    return described([] {
        return describe<R>("StructDefaultString",
                           "Default_STR",
                           DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject},
                           key<&R::key>("Key"),
                           column<&R::value>("Value"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDefaultInteger>()
{
    using R = StructDefaultInteger;
    return described([] {
        return describe<R>("StructDefaultInteger",
                           "Default_INT",
                           DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject},
                           key<&R::key>("Key"),
                           column<&R::value>("Value"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDefaultReal>()
{
    using R = StructDefaultReal;
    return described([] {
        return describe<R>("StructDefaultReal",
                           "Default_DBL",
                           DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject},
                           key<&R::key>("Key"),
                           column<&R::value>("Value"));
    });
}

template <>
const RecordDescription& descriptionOf<StructPrompt>()
{
    using R = StructPrompt;
    return described([] {
        return describe<R>("StructPrompt",
                           "Prompts",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::module>("Module"),
                           column<&R::number>("Number"),
                           column<&R::text>("Text"));
    });
}

template <>
const RecordDescription& descriptionOf<StructTableAlias>()
{
    using R = StructTableAlias;
    return described([] {
        return describe<R>("StructTableAlias",
                           "TableAliases",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::alias>("Alias"),
                           column<&R::tableName>("TableName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSetting>()
{
    using R = StructSetting;
    return described([] {
        return describe<R>(
            "StructSetting", "Settings", inConfiguration, key<&R::key>("Key"), column<&R::value>("Value"));
    });
}

std::span<const DescriptionFunction> records::defaultRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructDefaultString>,
                                                   descriptionOf<StructDefaultInteger>,
                                                   descriptionOf<StructDefaultReal>,
                                                   descriptionOf<StructPrompt>,
                                                   descriptionOf<StructTableAlias>,
                                                   descriptionOf<StructSetting>};
    return list;
}
