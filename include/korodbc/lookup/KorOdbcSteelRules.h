#pragma once

#include <korodbc/records/configuration/RuleRecords.h>

// Rules that make joints, and the categories that list them. Results: 1 found or read, 0 not; outputs are
// unchanged on failure. Threads: one. Needs: an open repository.

/// The rule with this run name.
int kor_odbc_getRuleObject(const KorString& runName, StructRules& rule);
/// One text of a rule. The parameters (text 9) come without blanks at their ends. A rule without a text of that
/// number leaves `text` unchanged and still counts as found.
int kor_odbc_getRuleString(const KorString& runName, StructRules::eContents content, KorString& text);
int kor_odbc_getRuleIntention(const KorString& runName, KorString& intention);
int kor_odbc_getRuleInternalName(const KorString& runName, KorString& internalName);
/// The rule's own sub-list, as text.
int kor_odbc_getRuleSublistString(const KorString& runName, KorString& sublist);
int kor_odbc_getRuleVersion(const KorString& runName, long& version);
/// The present run name of a rule under its former one.
int kor_odbc_mapRuleName(const KorString& runName, KorString& mappedName);

/// Run names that a category lists. Both operations are one.
int kor_odbc_getRuleSublist(const KorString& category, KorArray<KorString>& runNames);
int kor_odbc_getRuleSublistUse2nd(const KorString& category, KorArray<KorString>& runNames);
/// Name of the joint that an entry of a category makes.
int kor_odbc_getRules2ndJointName(const KorString& runName, KorString& jointName);
/// Internal name of the rule at a position in a category's list, counted from 0; empty without one.
void kor_odbc_getRuleKeyUse2nd(const KorString& category, int position, KorString& internalName);
/// Run name in a category of the rule with this internal name; empty without one.
void kor_odbc_getRuleRunbezeichnungUse2nd(const KorString& category, const KorString& internalName,
                                          KorString& runName);
