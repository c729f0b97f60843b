#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A rule that makes a joint. Table "RulesNew".
struct StructRules {
    /// The texts of a rule, in stored order.
    enum eContents {
        kInternalName = 0,
        kModule = 1,
        kFunction = 2,
        kDialog = 3,
        kIntention = 4,
        kJointName = 5,
        kSymbol = 6,
        kHelpTag = 7,
        kToolTip = 8,
        kParameters = 9,
        kSublist = 10,
        kDescription = 11,
        kNumberOfContents = 12
    };

    int key = -1;
    KorString runName;
    KorString internalName;
    KorString module;
    KorString function;
    KorString dialog;
    KorString intention;
    KorString jointName;
    KorString symbol;
    KorString helpTag;
    KorString toolTip;
    KorString parameters;
    KorString sublist;
    KorString description;
    int version = 0;
    int sortOrder = 0;
};
struct StructRulesMarshal : RecordMarshal<StructRules> {
    /// Text of a rule by its number; nullptr when there is no text of that number.
    static const KorString* textOf(const StructRules& rule, int content);
    /// The texts of the rule with this run name.
    static int getIntention(const KorString& runName, KorString& intention);
    static int getInternalName(const KorString& runName, KorString& internalName);
};

/// A rule in a category, under the name that the category's list shows. Table "Rules2nd".
struct StructRulesCategory {
    int key = -1;
    KorString runName;
    KorString category;
    KorString rule; // internal name
    KorString jointName;
    int sortOrder = 0;
};
struct StructRulesCategoryMarshal : RecordMarshal<StructRulesCategory> {
    /// Run names of a category's entries, in their sort order.
    static int getRuleSublistUse2nd(const KorString& category, KorArray<KorString>& runNames);
    /// Internal name of the rule at a position in that list, counted from 0.
    static int getRuleKeyUse2nd(const KorString& category, int position, KorString& rule);
    /// Run name in a category of the rule with this internal name.
    static int getRunNameUse2nd(const KorString& category, const KorString& rule, KorString& runName);
    /// Name of the joint that the entry with this run name makes.
    static int getJointName(const KorString& runName, KorString& jointName);

private:
    static int entriesOf(const KorString& category, KorArray<StructRulesCategory>& entries);
};

/// The present name of a rule under its former name. Table "RuleNameMapping".
struct StructRuleNameMapping {
    int key = -1;
    KorString runName;
    KorString mappedName;
};
struct StructRuleNameMappingMarshal : RecordMarshal<StructRuleNameMapping> {};
