#include "records/configuration/LanguageRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructLanguageDependet_Strings>()
{
    using R = StructLanguageDependet_Strings;
    static constexpr auto list = describe<R>("StructLanguageDependet_Strings",
                                             "LanguageDependet_Strings",
                                             DataSources{KorDSNDefinitions::kTexts},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::unitUsed>("UnitUsed"),
                                             column<&R::displayControl>("DisplayControl"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNotes>()
{
    using R = StructNotes;
    static constexpr auto list = describe<R>(
        "StructNotes", "Notes", inConfigurationAndAddin, key<&R::key>("Key"), runName<&R::runName>("RunName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructHelpButtons>()
{
    using R = StructHelpButtons;
    static constexpr auto list = describe<R>("StructHelpButtons",
                                             "HelpButtons",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             column<&R::helpTag>("HelpTag"),
                                             column<&R::stringId>("StringId"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
