// A list of sections goes out under the names of another application and comes back: a bill of sections on its way
// into an exchange file, and what is read from such a file.

#include <korodbc/exchange/ExchangeApplications.h>
#include <korodbc/exchange/SectionConversions.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <iostream>
#include <iterator>

namespace {

struct Section {
    KorString profileClass, name;
};

const Section sections[] = {{L"HEA", L"HEA200"}, {L"IPE", L"IPE300"},         {L"L", L"L100x50x6"},
                            {L"UPN", L"UPN120"}, {L"RHS", L"RHS80x40x4"},     {L"CHS", L"CHS114.3x5"},
                            {L"W", L"W14x30"},   {L"T", L"a section of ours"}};

/// Maps the list out and back; the number of sections that came back as they were.
int outAndBack(int application)
{
    int returned = 0;
    for (const Section& section : sections) {
        Section out, back;
        KorArray<KorExchangeRule> rules;
        if (KorODBCProfile_Exports_Conversion::getMappedSection(section.profileClass, section.name, application,
                                                                false, out.profileClass, out.name, rules) != 1) {
            std::cout << section.name.toUtf8() << " has no name there\n";
            continue;
        }
        const KorExchangeRule& rule = rules[rules.length() - 1];
        std::cout << section.name.toUtf8() << " -> " << out.name.toUtf8() << " (" << out.profileClass.toUtf8()
                  << "), row " << rule.key << " of " << rule.table.toUtf8() << "\n";
        KorODBCProfile_Exports_Conversion::getMappedSection(out.profileClass, out.name, application, true,
                                                            back.profileClass, back.name);
        returned += back.profileClass == section.profileClass && back.name == section.name;
    }
    return returned;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: exchange NEW-FOLDER\n";
        return 2;
    }
    std::string error;
    if (!korodbc::host::buildRepository(argv[1], CATALOGUE, {}, {}, error) ||
        !korodbc::host::openRepository(argv[1], error)) {
        std::cerr << "exchange: " << error << "\n";
        return 1;
    }
    KorOdbcDSNDefinitions::initOEDbConnections();
    long application = 0;
    int returned = 0;
    if (KorODBCQXT_Application::getApplicationKey(L"IFC", application) == 1)
        returned = outAndBack(static_cast<int>(application));
    std::cout << returned << " of " << std::size(sections) << " sections came back\n";
    korodbc::host::closeRepository();
    return returned == static_cast<int>(std::size(sections)) - 1 ? 0 : 1; // all but the last
}
