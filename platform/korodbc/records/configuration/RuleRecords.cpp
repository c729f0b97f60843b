#include <korodbc/records/configuration/RuleRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

#include <algorithm>

using namespace records;

template <std::same_as<StructRules> R>
constexpr Entry listOf<R>[] = {
    table("RulesNew", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::internalName, "InternalName"),
    column(&R::module, "Module"),
    column(&R::function, "Function"),
    column(&R::dialog, "Dialog"),
    column(&R::intention, "Intention"),
    column(&R::jointName, "JointName"),
    column(&R::symbol, "Symbol"),
    column(&R::helpTag, "HelpTag"),
    column(&R::toolTip, "ToolTip"),
    column(&R::parameters, "Parameters"),
    column(&R::sublist, "Sublist"),
    column(&R::description, "Description"),
    column(&R::version, "Version"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructRulesCategory> R>
constexpr Entry listOf<R>[] = {
    table("Rules2nd", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::category, "Category"),
    column(&R::rule, "Rule"),
    column(&R::jointName, "JointName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructRuleNameMapping> R>
constexpr Entry listOf<R>[] = {
    table("RuleNameMapping", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::mappedName, "MappedName"),
};

namespace {

/// Copies one text of the record with that run name.
template <class Record, auto Field>
int textWithName(const KorString& runName, KorString& text)
{
    Record record;
    const int result = RecordMarshal<Record>::getStructByRunName(runName, record);
    if (result == 1)
        text = record.*Field;
    return result;
}

} // namespace

const KorString* StructRulesMarshal::textOf(const StructRules& rule, int content)
{
    using R = StructRules;
    static constexpr KorString R::*texts[R::kNumberOfContents] = {&R::internalName,
                                                                  &R::module,
                                                                  &R::function,
                                                                  &R::dialog,
                                                                  &R::intention,
                                                                  &R::jointName,
                                                                  &R::symbol,
                                                                  &R::helpTag,
                                                                  &R::toolTip,
                                                                  &R::parameters,
                                                                  &R::sublist,
                                                                  &R::description};
    return content < 0 || content >= R::kNumberOfContents ? nullptr : &(rule.*texts[content]);
}

int StructRulesMarshal::getIntention(const KorString& runName, KorString& intention)
{
    return textWithName<StructRules, &StructRules::intention>(runName, intention);
}

int StructRulesMarshal::getInternalName(const KorString& runName, KorString& internalName)
{
    return textWithName<StructRules, &StructRules::internalName>(runName, internalName);
}

int StructRulesCategoryMarshal::entriesOf(const KorString& category, KorArray<StructRulesCategory>& entries)
{
    const int result = recordsWith<&StructRulesCategory::category>(category, entries);
    const auto before = [](const auto& a, const auto& b) { return a.sortOrder < b.sortOrder; };
    if (result == 1 && !std::is_sorted(entries.begin(), entries.end(), before))
        std::stable_sort(entries.begin(), entries.end(), before);
    return result;
}

int StructRulesCategoryMarshal::getRuleSublistUse2nd(const KorString& category, KorArray<KorString>& runNames)
{
    KorArray<StructRulesCategory> entries;
    const int result = entriesOf(category, entries);
    if (result != 1)
        return result;
    runNames.removeAll();
    for (const StructRulesCategory& entry : entries)
        runNames.append(entry.runName);
    return result;
}

int StructRulesCategoryMarshal::getRuleKeyUse2nd(const KorString& category, int position, KorString& rule)
{
    KorArray<StructRulesCategory> entries;
    const int result = position < 0 ? 0 : entriesOf(category, entries);
    if (result != 1)
        return result;
    if (position >= entries.length())
        return 0;
    rule = entries[position].rule;
    return 1;
}

int StructRulesCategoryMarshal::getRunNameUse2nd(const KorString& category, const KorString& rule,
                                                 KorString& runName)
{
    StructRulesCategory entry;
    const int result = recordThat(
        [&](const StructRulesCategory& row) { return row.category == category && row.rule == rule; }, entry);
    if (result == 1)
        runName = entry.runName;
    return result;
}

int StructRulesCategoryMarshal::getJointName(const KorString& runName, KorString& jointName)
{
    return textWithName<StructRulesCategory, &StructRulesCategory::jointName>(runName, jointName);
}

constinit const Family records::ruleRecords = family<StructRules, StructRulesCategory, StructRuleNameMapping>;
