#include <korodbc/records/configuration/LanguageRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructLanguageDependet_Strings>()
{
    using R = StructLanguageDependet_Strings;
    return described([] {
        return describe<R>("StructLanguageDependet_Strings",
                           "LanguageDependet_Strings",
                           DataSources{KorDSNDefinitions::kTexts},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::unitUsed>("UnitUsed"),
                           column<&R::displayControl>("DisplayControl"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNotes>()
{
    using R = StructNotes;
    return described([] {
        return describe<R>(
            "StructNotes", "Notes", inConfigurationAndAddin, key<&R::key>("Key"), runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructHelpButtons>()
{
    using R = StructHelpButtons;
    return described([] {
        return describe<R>("StructHelpButtons",
                           "HelpButtons",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::helpTag>("HelpTag"),
                           column<&R::stringId>("StringId"));
    });
}

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

std::span<const DescriptionFunction> records::languageRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructLanguageDependet_Strings>,
                                                   descriptionOf<StructNotes>,
                                                   descriptionOf<StructHelpButtons>};
    return list;
}
