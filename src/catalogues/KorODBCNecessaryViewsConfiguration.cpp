#include "foundation/ManagerDatabase.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/catalogues/KorODBCNecessaryViewsConfiguration.h>
#include <korodbc/foundation/KorCountryAddIns.h>
#include <korodbc/roots/KorAssert.h>
#include <korodbc/roots/KRSettings.h>

namespace {

constexpr auto currentCountryAddIn = static_cast<eIndex>(3);

const wchar_t* const section = L"Settings\\NecessaryViewsConfig";
const wchar_t* const defaultDataSource = L"DefaultDataSource";

/// The two parts of the setting: an add-in, a kind of data source.
struct Choice {
    KorString addIn, kind;

    Choice()
    {
        KorString text;
        KRSettings::getValue(KorODBCNecessaryViewsConfiguration::settingKey(), text);
        const std::wstring_view all = text.view();
        const std::size_t slash = all.find(L'/');
        addIn = all.substr(0, slash);
        if (slash != std::wstring_view::npos)
            kind = all.substr(slash + 1);
    }
};

/// Position of the installed country add-in that the setting names; -1 when there is none. `id` is its id then.
int positionOf(const KorString& wanted, KorAddInId& id)
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    KorArray<KorAddInId> ids;
    if (manager != nullptr)
        manager->getInstalledCountryAddInIds(ids);
    for (int position = 0; position < ids.length(); ++position) {
        const KorAddIn* addIn = manager->getAddIn(ids[position]);
        if (addIn != nullptr &&
            KorString::format(L"%s_%d", addIn->getName(), position).compareNoCase(wanted) == 0) {
            id = ids[position];
            return position;
        }
    }
    return -1;
}

template <class Read>
int readChosen(Read read)
{
    using Reader = KorODBCNecessaryViewsConfiguration;
    eDSN dsn{}, savedDsn{};
    eIndex index{}, savedIndex{};
    if (Reader::getODBCDSNValue(dsn, index, savedIndex, savedDsn) != 1)
        return 0;
    const bool ofCountry = dsn == KorDSNDefinitions::kCountryAddin;
    int result = 0;
    {
        const KorDSNRequest request(dsn, ofCountry ? savedIndex : index);
        result = read();
    }
    if (ofCountry)
        Reader::restoreODBCDBSValue(savedDsn, savedIndex);
    return result;
}

} // namespace

KorString KorODBCNecessaryViewsConfiguration::settingKey()
{
    return KorString::format(L"%s\\%s", section, defaultDataSource);
}

int KorODBCNecessaryViewsConfiguration::getODBCDSNValue(eDSN& dsn, eIndex& index, eIndex& savedIndex,
                                                        eDSN& savedDsn)
{
    dsn = KorCurrentDatabase::m_currentDSN;
    index = KorDSNManager::getInstance().getCurrentIndex();
    savedIndex = KorCurrentDatabase::m_currentAddIn;
    savedDsn = dsn;
    const Choice choice;
    if (choice.kind == L"kAddin") {
        dsn = KorDSNDefinitions::kAddin;
        index = KorDSNDefinitions::kFirstAddin;
        return 1;
    }
    if (choice.kind != L"kDetailsCurrent") {
        dsn = KorDSNDefinitions::kDetails;
        index = KorDSNDefinitions::kBase;
        return 1;
    }
    KorAddInId id;
    const int position = positionOf(choice.addIn, id);
    if (position < 0) {
        KorAssert::korAssert("pAddIn != NULL", "KorODBCNecessaryViewsConfiguration", __LINE__);
        return 0;
    }
    dsn = KorDSNDefinitions::kCountryAddin;
    index = currentCountryAddIn;
    KorCountryAddIns::switchKorvaDetailsCurrent(id);
    savedIndex = KorDSNManager::getAddInIdx(position);
    return 1;
}

void KorODBCNecessaryViewsConfiguration::restoreODBCDBSValue(eDSN dsn, eIndex index)
{
    korodbc::setManagerDatabase(dsn, index);
}

int KorODBCNecessaryViewsConfiguration::getNecessaryViewsConfiguration(long key,
                                                                       StructNecessaryViewsConfiguration& record)
{
    return readChosen([&] { return byKey(KorOdbcKey(key), record); });
}

int KorODBCNecessaryViewsConfiguration::getAllRecords(KorArray<StructNecessaryViewsConfiguration>& records)
{
    return readChosen([&] { return table(records); });
}

bool KorODBCNecessaryViewsConfiguration::isApplicable(const StructNecessaryViewsConfiguration& record,
                                                      long viewType, long beamType)
{
    return compareFieldOk(record.viewType, viewType, 0) &&
           compareFieldOk(record.beamType, beamType, record.notBeamType);
}

int KorODBCNecessaryViewsConfiguration::getApplicableRules(long viewType, long beamType,
                                                           KorArray<StructResultRules>& rules)
{
    rules.removeAll();
    KorArray<StructNecessaryViewsConfiguration> records;
    const int result = getAllRecords(records);
    for (const StructNecessaryViewsConfiguration& record : records)
        if (isApplicable(record, viewType, beamType))
            rules.append({record.rule, record.detObjQualifierSet, record.notDetObjQualifierSet == 1});
    return result;
}
