#include "exchange/SectionRules.h"

#include <korodbc/exchange/SectionConversions.h>

using namespace korodbc;

namespace {

constexpr int thisApplication = 1;
constexpr int straightMembers = 1; // object type

using Native = StructQXT_Profile_ConversionMarshal;
using Exports = StructProfile_Exports_ConversionMarshal;

/// Asks the rules of a table in its present state.
template <class Marshal>
int mapped(const SectionQuestion& question, KorString& outClass, KorString& outSection,
           KorExchangeRule* rule = nullptr)
{
    const auto rules = Marshal::template derived<SectionRules>();
    return rules == nullptr ? 0 : rules->map(question, outClass, outSection, rule);
}

template <class Marshal>
int faulty(KorArray<KorExchangeRule>& out)
{
    const auto rules = Marshal::template derived<SectionRules>();
    if (rules == nullptr)
        return 0;
    out = rules->faulty();
    return 1;
}

} // namespace

int KorODBCQXT_Profile_Conversion::getQXTProfiles(KorString profileClass, KorString section, int objectType,
                                                  int application, KorString& qxtClass, KorString& qxtSection)
{
    return mapped<Native>({profileClass, section, application, objectType}, qxtClass, qxtSection);
}

int KorODBCQXT_Profile_Conversion::getQXTProfiles(KorString profileClass, KorString section, int objectType,
                                                  int application, KorString& qxtClass, KorString& qxtSection,
                                                  KorExchangeRule& rule)
{
    return mapped<Native>({profileClass, section, application, objectType}, qxtClass, qxtSection, &rule);
}

int KorODBCQXT_Profile_Conversion::getQXTProfileForHalden(const KorString& profileClass, const KorString& section,
                                                          int objectType, int application, int family, int source,
                                                          KorString& outClass, KorString& outSection)
{
    const int result = mapped<Native>({profileClass, section, application, objectType, std::pair(family, source)},
                                      outClass, outSection);
    return result == 1 ? result
                       : getQXTProfiles(profileClass, section, objectType, application, outClass, outSection);
}

int KorODBCQXT_Profile_Conversion::getFaultyRules(KorArray<KorExchangeRule>& rules)
{
    return faulty<Native>(rules);
}

int KorODBCProfile_Exports_Conversion::getExportProfiles(KorString qxtClass, KorString qxtSection, int application,
                                                         int objectType, KorString& exportClass,
                                                         KorString& exportSection)
{
    return mapped<Exports>({qxtClass, qxtSection, application, objectType}, exportClass, exportSection);
}

int KorODBCProfile_Exports_Conversion::getExportProfiles(KorString qxtClass, KorString qxtSection, int application,
                                                         int objectType, KorString& exportClass,
                                                         KorString& exportSection, KorExchangeRule& rule)
{
    return mapped<Exports>({qxtClass, qxtSection, application, objectType}, exportClass, exportSection, &rule);
}

int KorODBCProfile_Exports_Conversion::getExportProfileForHalden(const KorString& qxtClass,
                                                                 const KorString& qxtSection, int objectType,
                                                                 int application, int family, int source,
                                                                 KorString& outClass, KorString& outSection)
{
    const int result = mapped<Exports>({qxtClass, qxtSection, application, objectType, std::pair(family, source)},
                                       outClass, outSection);
    return result == 1 ? result
                       : getExportProfiles(qxtClass, qxtSection, application, objectType, outClass, outSection);
}

int KorODBCProfile_Exports_Conversion::getMappedSection(const KorString& profileClass, const KorString& section,
                                                        const int& application, bool toNative, KorString& outClass,
                                                        KorString& outSection)
{
    KorArray<KorExchangeRule> rules;
    return getMappedSection(profileClass, section, application, toNative, outClass, outSection, rules);
}

int KorODBCProfile_Exports_Conversion::getMappedSection(const KorString& profileClass, const KorString& section,
                                                        const int& application, bool toNative, KorString& outClass,
                                                        KorString& outSection, KorArray<KorExchangeRule>& rules)
{
    rules.removeAll();
    const int from = toNative ? application : thisApplication, to = toNative ? thisApplication : application;
    KorString qxtClass, qxtSection;
    KorExchangeRule rule;
    int result = KorODBCQXT_Profile_Conversion::getQXTProfiles(profileClass, section, straightMembers, from,
                                                               qxtClass, qxtSection, rule);
    if (result != 1)
        return result;
    rules.append(rule);
    result = getExportProfiles(qxtClass, qxtSection, to, straightMembers, outClass, outSection, rule);
    if (result == 1)
        rules.append(rule);
    return result;
}

int KorODBCProfile_Exports_Conversion::getFaultyRules(KorArray<KorExchangeRule>& rules)
{
    return faulty<Exports>(rules);
}
