#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorString.h>

const KorString KorDSNDefinitions::m_DataSourceNames[kNumberOfDataSources] = {
    L"Definitions", L"Details",        L"Configuration", L"UserSections", L"Toolbars", L"DetailsCurrent",
    L"Units",       L"ProjectAdvance", L"Project",       L"Addin",        L"Texts",    L"Numbering",
    L"Reports",     L"Wizards",        L"Rules",         L"CountryAddin", L"Profiles"};
