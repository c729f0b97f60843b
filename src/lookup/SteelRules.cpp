#include <korodbc/lookup/KorOdbcSteelRules.h>

int kor_odbc_getRuleObject(const KorString& runName, StructRules& rule)
{
    return StructRulesMarshal::getStructByRunName(runName, rule);
}

int kor_odbc_getRuleString(const KorString& runName, StructRules::eContents content, KorString& text)
{
    StructRules rule;
    const int result = StructRulesMarshal::getStructByRunName(runName, rule);
    const KorString* found = result == 1 ? StructRulesMarshal::textOf(rule, content) : nullptr;
    if (found != nullptr)
        text = content == StructRules::kParameters ? found->trimmed() : *found;
    return result;
}

int kor_odbc_getRuleIntention(const KorString& runName, KorString& intention)
{
    return StructRulesMarshal::getIntention(runName, intention);
}

int kor_odbc_getRuleInternalName(const KorString& runName, KorString& internalName)
{
    return StructRulesMarshal::getInternalName(runName, internalName);
}

int kor_odbc_getRuleSublistString(const KorString& runName, KorString& sublist)
{
    return kor_odbc_getRuleString(runName, StructRules::kSublist, sublist);
}

int kor_odbc_getRuleVersion(const KorString& runName, long& version)
{
    StructRules rule;
    const int result = StructRulesMarshal::getStructByRunName(runName, rule);
    if (result == 1)
        version = rule.version;
    return result;
}

int kor_odbc_mapRuleName(const KorString& runName, KorString& mappedName)
{
    StructRuleNameMapping mapping;
    const int result = StructRuleNameMappingMarshal::getStructByRunName(runName, mapping);
    if (result == 1)
        mappedName = mapping.mappedName;
    return result;
}

int kor_odbc_getRuleSublist(const KorString& category, KorArray<KorString>& runNames)
{
    return StructRulesCategoryMarshal::getRuleSublistUse2nd(category, runNames);
}

int kor_odbc_getRuleSublistUse2nd(const KorString& category, KorArray<KorString>& runNames)
{
    return StructRulesCategoryMarshal::getRuleSublistUse2nd(category, runNames);
}

int kor_odbc_getRules2ndJointName(const KorString& runName, KorString& jointName)
{
    return StructRulesCategoryMarshal::getJointName(runName, jointName);
}

void kor_odbc_getRuleKeyUse2nd(const KorString& category, int position, KorString& internalName)
{
    const KorString wanted = category; // may be the text that is emptied
    internalName = KorString();
    StructRulesCategoryMarshal::getRuleKeyUse2nd(wanted, position, internalName);
}

void kor_odbc_getRuleRunbezeichnungUse2nd(const KorString& category, const KorString& internalName,
                                          KorString& runName)
{
    const KorString wantedCategory = category, wantedRule = internalName;
    runName = KorString();
    StructRulesCategoryMarshal::getRunNameUse2nd(wantedCategory, wantedRule, runName);
}
