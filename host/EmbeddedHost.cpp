#include "service/RepositorySwitch.h"
#include "service/Service.h"
#include "service/TableFit.h"

#include <korodbc/host/AddInManager.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/host/PromptSource.h>
#include <korodbc/host/SettingsStore.h>
#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <set>
#include <utility>

namespace korodbc::host {

namespace {

/// Prompts of the open repository.
bool promptOf(std::wstring_view module, unsigned number, KorString& text)
{
    const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
    KorArray<StructPrompt> prompts;
    if (StructPromptMarshal::getTable(prompts) != 1)
        return false;
    for (const StructPrompt& prompt : prompts) {
        if (prompt.module.view() == module && prompt.number == static_cast<int>(number)) {
            text = prompt.text;
            return true;
        }
    }
    return false;
}

/// Settings kept in the open repository.
class RepositorySettings final : public SettingsStore {
public:
    bool get(const KorString& key, KorString& value) override
    {
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        StructSetting setting;
        if (StructSettingMarshal::getStructByKey(key, setting) != 1)
            return false;
        value = setting.value;
        return true;
    }
    bool set(const KorString& key, const KorString& value) override
    {
        const KorString table(L"Settings");
        KorString known;
        KorCellData cell(key);
        KorDatabaseBatch batch;
        int result = get(key, known) ? 1
                                     : KorDatabaseAccess::appendNewLine(KorDSNDefinitions::kConfiguration, table,
                                                                        cell, true, true);
        if (result == 1)
            result = KorDatabaseAccess::setTableColumnValue(KorDSNDefinitions::kConfiguration, table, L"Key", key,
                                                            1, KorCellData(value));
        return batch.end(result) == 1;
    }
};

bool opened(bool ok)
{
    if (!ok)
        return false;
    openAddInManager();
    repositorySwitched();
    setPromptSource(promptOf);
    setSettingsStore(std::make_shared<RepositorySettings>());
    return true;
}

} // namespace

bool openRepository(const std::filesystem::path& folder, std::string& error, Access access)
{
    closeRepository();
    return opened(
        service().open(folder, access == Access::Look ? Database::Access::Look : Database::Access::Write, error));
}

bool openRepositoryInMemory(const std::vector<CountryAddIn>& countryAddIns, std::string& error)
{
    closeRepository();
    return opened(service().openInMemory(countryAddIns, error));
}

void closeRepository()
{
    closeAddInManager();
    setPromptSource({});
    setSettingsStore(nullptr);
    service().close();
    KorDSNManager::getInstance().setCurrent(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
    repositorySwitched();
}

std::string lastError() { return service().lastError().text; }

const HostError& lastFailure() { return service().lastError(); }

bool isReservedName(const std::string& table) { return fileEngine().isReserved(table); }

std::string connectionTo(const std::string& file, bool onlyRead)
{
    return std::string(onlyRead ? fileEngine().readOnlyScheme : fileEngine().scheme) + file;
}

std::vector<std::string> takeReadGaps()
{
    const std::set<std::string> gaps = std::exchange(Database::readGaps, {});
    return {gaps.begin(), gaps.end()};
}

std::vector<SourceState> sources()
{
    std::vector<SourceState> states;
    const auto add = [&](eDSN dsn, eIndex index, std::string name, std::string connection) {
        SourceState state{dsn, index, std::move(name), std::move(connection), false, {}, {}, 0};
        Database* database = service().database(dsn, index);
        if (database != nullptr && database->canListTables()) {
            state.usable = true;
            state.tables = static_cast<int>(database->tableNames().size());
        } else if (database != nullptr) {
            state.trouble = database->failure().kind;
            state.error = "data source " + state.name + ": " + database->path() + ": " + database->lastError();
        } else {
            state.trouble = service().lastError().kind;
            state.error = service().lastError().text;
        }
        states.push_back(std::move(state));
    };
    const Manifest& manifest = service().manifest();
    for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
        if (!manifest.connections[dsn].empty() && dsn != KorDSNDefinitions::kCountryAddin)
            add(static_cast<eDSN>(dsn), service().slot(static_cast<eDSN>(dsn)),
                KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8(), manifest.connections[dsn]);
    for (std::size_t i = 0; i < manifest.countryAddIns.size(); ++i)
        add(KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(i + 1),
            "CountryAddin " + manifest.countryAddIns[i].name, manifest.countryAddIns[i].connection);
    return states;
}

std::vector<ClaimedTable> claimedByOthers(eDSN dsn, eIndex index)
{
    std::vector<ClaimedTable> tables;
    if (Database* database = service().database(dsn, index))
        for (const Claims::Claim& claim : database->claims().ofOthers())
            tables.push_back({dsn, index, claim.table, claim.holder});
    return tables;
}

std::string tableDifferences(eDSN dsn, eIndex index)
{
    std::string report;
    Database* database = service().database(dsn, index);
    if (database == nullptr)
        return report;
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (database->table(service().physicalName(type)) == nullptr) {
            if (records::isDetailTable(type) && type.homes.contains(dsn) &&
                dsn != KorDSNDefinitions::kConfiguration)
                report += "there is no table " + std::string(type.table) + "\n";
            continue;
        }
        const std::string misfit = misfitOf(*database, describe(), Use::Report);
        if (!misfit.empty())
            report += misfit + "\n";
    }
    return report;
}

} // namespace korodbc::host
