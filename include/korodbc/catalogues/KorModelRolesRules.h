#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ClassificationRecords.h>

namespace ModelRolesRulesNS {

/// What may be done with objects of a model role. The rules are read when an object of this class is made, from
/// the add-in, and from the main configuration when the add-in has none.
class KorModelRolesRules : public CatalogueReader<StructModelRolesRules> {
public:
    KorModelRolesRules();

    /// Replaces `records` by all rules of the source that counts. The array is empty when there are none.
    static int getAllRecords(KorArray<StructModelRolesRules>& records);
    /// Whether an action is allowed: what the last rule for the model role and action says, and without any the
    /// default.
    bool IsActionValidForModelRole(const KorString& modelRole, StructModelRolesRules::eAction action,
                                   bool byDefault) const;

private:
    KorArray<StructModelRolesRules> m_rules;
};

} // namespace ModelRolesRulesNS
