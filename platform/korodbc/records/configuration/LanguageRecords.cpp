#include <korodbc/records/configuration/LanguageRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructLanguageDependet_Strings> R>
constexpr Entry listOf<R>[] = {
    table("LanguageDependet_Strings", DataSources{KorDSNDefinitions::kTexts}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::unitUsed, "UnitUsed"),
    column(&R::displayControl, "DisplayControl"),
};

template <std::same_as<StructNotes> R>
constexpr Entry listOf<R>[] = {
    table("Notes", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<StructHelpButtons> R>
constexpr Entry listOf<R>[] = {
    table("HelpButtons", inConfiguration),
    key(&R::key, "Key"),
    column(&R::helpTag, "HelpTag"),
    column(&R::stringId, "StringId"),
};

namespace {

/// Copies one field of the text with that run name.
template <auto Field>
int fieldOf(const KorString& runName, long& value)
{
    StructLanguageDependet_Strings text;
    const int result = StructLanguageDependet_StringsMarshal::getStructByRunName(runName, text);
    if (result == 1)
        value = text.*Field;
    return result;
}

} // namespace

int StructLanguageDependet_StringsMarshal::getUserUnitUsedForRunname(const KorString& runName, long& unit)
{
    return fieldOf<&StructLanguageDependet_Strings::unitUsed>(runName, unit);
}

int StructLanguageDependet_StringsMarshal::getUserDisplayControl(const KorString& runName, long& control)
{
    return fieldOf<&StructLanguageDependet_Strings::displayControl>(runName, control);
}

constinit const Family records::languageRecords =
    family<StructLanguageDependet_Strings, StructNotes, StructHelpButtons>;
