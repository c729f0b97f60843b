#include <korodbc/catalogues/KorModelRolesRules.h>

namespace ModelRolesRulesNS {

KorModelRolesRules::KorModelRolesRules() : m_rules(8) { getAllRecords(m_rules); }

int KorModelRolesRules::getAllRecords(KorArray<StructModelRolesRules>& records)
{
    records.setLogicalLength(0);
    const auto read = [&] { return table(records); };
    const int ofAddIn = within(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, read);
    return !records.isEmpty() ? ofAddIn
                              : within(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase, read);
}

bool KorModelRolesRules::IsActionValidForModelRole(const KorString& modelRole,
                                                   StructModelRolesRules::eAction action, bool byDefault) const
{
    bool valid = byDefault;
    for (const StructModelRolesRules& rule : m_rules)
        if (rule.modelRole == modelRole && rule.action == action)
            valid = rule.forbidden == 0;
    return valid;
}

} // namespace ModelRolesRulesNS
