#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructDefaultString> R>
constexpr Entry listOf<R>[] = {
    table("Default_STR", DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject}),
    key(&R::key, "Key"),
    column(&R::value, "Value"),
};

template <std::same_as<StructDefaultInteger> R>
constexpr Entry listOf<R>[] = {
    table("Default_INT", DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject}),
    key(&R::key, "Key"),
    column(&R::value, "Value"),
};

template <std::same_as<StructDefaultReal> R>
constexpr Entry listOf<R>[] = {
    table("Default_DBL", DataSources{KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kProject}),
    key(&R::key, "Key"),
    column(&R::value, "Value"),
};

template <std::same_as<StructPrompt> R>
constexpr Entry listOf<R>[] = {
    table("Prompts", inConfiguration),
    key(&R::key, "Key"),
    column(&R::module, "Module"),
    column(&R::number, "Number"),
    column(&R::text, "Text"),
};

template <std::same_as<StructTableAlias> R>
constexpr Entry listOf<R>[] = {
    table("TableAliases", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::alias, "Alias"),
    column(&R::tableName, "TableName"),
};

template <std::same_as<StructSetting> R>
constexpr Entry listOf<R>[] = {
    table("Settings", inConfiguration),
    key(&R::key, "Key"),
    column(&R::value, "Value"),
};

constinit const Family records::defaultRecords =
    family<StructDefaultString, StructDefaultInteger, StructDefaultReal, StructPrompt, StructTableAlias,
           StructSetting>;
