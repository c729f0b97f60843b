#include "records/configuration/DefaultRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDefaultString>()
{
    using R = StructDefaultString;
    static constexpr auto list =
        describe<R>("StructDefaultString",
                    "Default_STR",
                    DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject},
                    key<&R::key>("Key"),
                    column<&R::value>("Value"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructDefaultInteger>()
{
    using R = StructDefaultInteger;
    static constexpr auto list =
        describe<R>("StructDefaultInteger",
                    "Default_INT",
                    DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject},
                    key<&R::key>("Key"),
                    column<&R::value>("Value"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructDefaultReal>()
{
    using R = StructDefaultReal;
    static constexpr auto list =
        describe<R>("StructDefaultReal",
                    "Default_DBL",
                    DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject},
                    key<&R::key>("Key"),
                    column<&R::value>("Value"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructPrompt>()
{
    using R = StructPrompt;
    static constexpr auto list = describe<R>("StructPrompt",
                                             "Prompts",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             column<&R::module>("Module"),
                                             column<&R::number>("Number"),
                                             column<&R::text>("Text"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructTableAlias>()
{
    using R = StructTableAlias;
    static constexpr auto list = describe<R>("StructTableAlias",
                                             "TableAliases",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::alias>("Alias"),
                                             column<&R::tableName>("TableName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructSetting>()
{
    using R = StructSetting;
    static constexpr auto list =
        describe<R>("StructSetting", "Settings", inConfiguration, key<&R::key>("Key"), column<&R::value>("Value"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
