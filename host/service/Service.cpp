#include "service/Service.h"

#include "database/RecordCache.h"
#include "repository/DetailDatabase.h"

#include <korodbc/records/configuration/DefaultRecords.h>

#include <algorithm>
#include <utility>

namespace korodbc::host {

namespace fs = std::filesystem;

Service& Service::instance()
{
    static Service service;
    return service;
}

bool Service::open(const fs::path& folder, Database::Access access, std::string& error)
{
    Manifest manifest;
    if (!Manifest::load(folder, manifest, error))
        return false;
    close();
    m_folder = folder;
    m_manifest = std::move(manifest);
    m_access = access;
    m_open = true;
    return true;
}

bool Service::openInMemory(const std::vector<CountryAddIn>& countryAddIns, std::string& error)
{
    close();
    m_manifest = Manifest();
    m_manifest.connections.fill(std::string(fileEngine().scheme) + std::string(fileEngine().inMemory));
    m_manifest.countryAddIns = countryAddIns;
    m_access = Database::Access::Write;
    m_open = true;
    for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn) {
        const bool country = dsn == KorDSNDefinitions::kCountryAddin;
        const std::size_t slots = country ? countryAddIns.size() : 1;
        for (std::size_t i = 0; i < slots; ++i) {
            const eDSN source = static_cast<eDSN>(dsn);
            const eIndex index = country ? static_cast<eIndex>(i + 1) : slot(source);
            Database* database = this->database(source, index);
            HostError reason;
            if (database == nullptr || !createTables(*database, source, reason)) {
                error = reason.text;
                return false;
            }
        }
    }
    return true;
}

void Service::close()
{
    m_places.clear();
    m_databases.clear();
    m_physicalNames.clear();
    m_open = false;
    Database::batchDepth = 0;
    m_actions.clear();
    m_detachAtEnd.clear();
    m_checkAtEnd = false;
    m_error = {};
}

void Service::setCountryAddIns(std::vector<CountryAddIn> addIns)
{
    m_manifest.countryAddIns = std::move(addIns);
    std::erase_if(m_places,
                  [](const auto& entry) { return entry.first.first == KorDSNDefinitions::kCountryAddin; });
}

eIndex Service::slot(eDSN dsn) const
{
    const KorDSNManager& manager = KorDSNManager::getInstance();
    if (manager.getCurrentDSN() == dsn)
        return manager.getCurrentIndex();
    return dsn == KorDSNDefinitions::kAddin || dsn == KorDSNDefinitions::kCountryAddin
               ? KorDSNDefinitions::kFirstAddin
               : KorDSNDefinitions::kBase;
}

const std::string* Service::connectionOf(Place place) const
{
    const auto [dsn, index] = place;
    if (!m_open || dsn >= KorDSNDefinitions::kNumberOfDataSources)
        return nullptr;
    if (dsn == KorDSNDefinitions::kCountryAddin) {
        const std::size_t position = static_cast<std::size_t>(index) - 1; // slots are counted from 1
        return position < m_manifest.countryAddIns.size() ? &m_manifest.countryAddIns[position].connection
                                                          : nullptr;
    }
    // every other source has one database, whatever slot it is asked for in
    const std::string& connection = m_manifest.connections[dsn];
    return connection.empty() ? nullptr : &connection;
}

Database* Service::database(eDSN dsn, eIndex index)
{
    const Place place{dsn, index};
    const auto known = m_places.find(place);
    if (known != m_places.end()) {
        known->second->setLabel(dsn, index);
        return known->second;
    }
    const std::string* connection = connectionOf(place);
    std::string why;
    ConnectionTarget target;
    if (connection == nullptr || !targetOfConnection(*connection, m_folder, target, why)) {
        m_error = {FailureKind::Missing, connection == nullptr ? "there is no such data source" : why};
        return nullptr;
    }
    const std::string& file = target.file;
    const bool inMemory = target.inMemory();
    const eIndex shared = dsn == KorDSNDefinitions::kCountryAddin ? index : KorDSNDefinitions::kBase;
    const std::string pool = inMemory          ? file + std::to_string(dsn) + "/" + std::to_string(shared)
                             : target.readOnly ? std::string(fileEngine().readOnlyScheme) + file
                                               : file;
    auto& pooled = m_databases[pool];
    if (!pooled) {
        std::error_code code;
        HostError error{FailureKind::Missing, "the file is missing"};
        if (inMemory || fs::is_regular_file(file, code))
            pooled = Database::open(file,
                                    inMemory          ? Database::Access::Create
                                    : target.readOnly ? Database::Access::Look
                                                      : m_access,
                                    error);
        if (!pooled) {
            m_databases.erase(pool);
            m_error = {error.kind, "data source " + KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8() + ": " +
                                       file + ": " + error.text};
            return nullptr;
        }
        pooled->engine().setPatience(m_manifest.busyMilliseconds);
    }
    m_places[place] = pooled.get();
    pooled->setLabel(dsn, index);
    return pooled.get();
}

std::string Service::connectionString(eDSN dsn) const
{
    const std::string* connection = connectionOf({dsn, slot(dsn)});
    return connection == nullptr ? std::string() : *connection;
}

bool Service::setConnectionString(eDSN dsn, const std::string& connection)
{
    ConnectionTarget target;
    if (!m_open || dsn >= KorDSNDefinitions::kNumberOfDataSources || dsn == KorDSNDefinitions::kCountryAddin ||
        !targetOfConnection(connection, m_folder, target, m_error.text))
        return false;
    for (auto& [name, database] : m_databases)
        database->flush();
    m_manifest.connections[dsn] = connection;
    std::erase_if(m_places, [dsn](const auto& entry) { return entry.first.first == dsn; });
    m_physicalNames.clear();
    return true;
}

bool Service::detach(const std::string& file)
{
    std::string error;
    ConnectionTarget target;
    if (!targetOfConnection(std::string(fileEngine().scheme) + file, m_folder, target, error))
        return false;
    const auto onlyRead = m_databases.find(std::string(fileEngine().readOnlyScheme) + target.file);
    const auto found = onlyRead == m_databases.end() ? m_databases.find(target.file) : onlyRead;
    if (found == m_databases.end())
        return false;
    Database* database = found->second.get();
    for (const auto& [place, used] : m_places)
        if (used == database)
            return false;
    if (inBatch()) {
        m_detachAtEnd.push_back(file);
        return true;
    }
    if (found != onlyRead)
        database->engine().fold();
    m_databases.erase(found);
    return true;
}

const KorString& Service::physicalName(const RecordDescription& type)
{
    const auto known = m_physicalNames.find(&type);
    if (known != m_physicalNames.end())
        return known->second;
    const KorString logical = KorString::fromUtf8(type.table);
    KorString physical = logical;
    // the alias table itself is never an alias
    if (&type != &descriptionOf<StructTableAlias>())
        for (int depth = 0; depth < 8 && alias(physical, physical); ++depth) {
        }
    return m_physicalNames.emplace(&type, physical).first->second;
}

bool Service::alias(const KorString& name, KorString& target)
{
    Database* database = this->database(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
    if (database == nullptr)
        return false;
    database->validate();
    const RecordDescription& type = descriptionOf<StructTableAlias>();
    Table* table = database->table(physicalName(type));
    RecordCache* aliases = table == nullptr || !database->flush() ? nullptr : table->records(type);
    const long position = aliases == nullptr ? -1 : aliases->findRunName(name);
    if (position < 0)
        return false;
    target = static_cast<const StructTableAlias*>(aliases->at(position))->tableName;
    return true;
}

eDSN Service::dataSourceOf(const KorString& physical)
{
    const KorDSNManager& manager = KorDSNManager::getInstance();
    const auto holds = [&](eDSN dsn, eIndex index) {
        if (connectionOf({dsn, index}) == nullptr)
            return false;
        Database* database = this->database(dsn, index);
        if (database != nullptr)
            database->validate();
        return database != nullptr && database->table(physical) != nullptr;
    };
    if (holds(manager.getCurrentDSN(), manager.getCurrentIndex()))
        return manager.getCurrentDSN();
    for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
        if (holds(static_cast<eDSN>(dsn), slot(static_cast<eDSN>(dsn))))
            return static_cast<eDSN>(dsn);
    return KorDSNDefinitions::kUnresolved;
}

Table* Service::tableOf(const RecordDescription& type)
{
    const KorDSNManager& manager = KorDSNManager::getInstance();
    const KorString& name = physicalName(type);
    Database* database = this->database(manager.getCurrentDSN(), manager.getCurrentIndex());
    Table* table = nullptr;
    if (database != nullptr) {
        database->validate();
        table = database->table(name);
    }
    for (unsigned dsn = 0;
         table == nullptr && !manager.isRequested() && dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn) {
        const eDSN home = static_cast<eDSN>(dsn);
        if (!type.homes.contains(home) || (database = this->database(home)) == nullptr)
            continue;
        database->validate();
        table = database->table(name);
    }
    if (table == nullptr && database != nullptr)
        noteMissing(type);
    return table != nullptr && table->database().flush() ? table : nullptr;
}

void Service::noteMissing(const RecordDescription& type)
{
    const KorDSNManager& manager = KorDSNManager::getInstance();
    if (type.homes.contains(manager.getCurrentDSN()) || !manager.isRequested())
        Database::noteReadGap("there is no table " + shown(physicalName(type).toUtf8()));
}

std::vector<Table*> Service::tablesOfAllSources(const KorString& name, eDSN base)
{
    std::vector<Table*> tables;
    const auto take = [&](eDSN dsn, eIndex index) {
        Database* database = connectionOf({dsn, index}) == nullptr ? nullptr : this->database(dsn, index);
        if (database == nullptr || !database->flush())
            return;
        database->validate();
        Table* table = database->table(name);
        if (table != nullptr && std::find(tables.begin(), tables.end(), table) == tables.end())
            tables.push_back(table);
    };
    take(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    for (std::size_t i = 0; i < m_manifest.countryAddIns.size(); ++i)
        take(KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(i + 1));
    take(base, slot(base));
    return tables;
}

void Service::beginBatch()
{
    if (++Database::batchDepth == 1)
        m_error = {};
}

void Service::undoActions(int depth)
{
    std::vector<Action> undone;
    while (!m_actions.empty() && m_actions.back().depth >= depth) {
        undone.push_back(std::move(m_actions.back()));
        m_actions.pop_back();
    }
    for (const Action& action : undone)
        if (!action.whenStored)
            action.act();
}

bool Service::endBatch(bool keep)
{
    const int depth = Database::batchDepth;
    if (depth == 0) // the repository was closed meanwhile
        return false;
    if (depth == 1)
        return endOutermost(keep);
    for (Database* database : Database::writing) {
        if (keep && !database->flush()) {
            m_error = database->failure();
            keep = false;
        }
    }
    for (Database* database : Database::writing)
        keep ? database->keepBatch(depth) : database->undoBatch(depth);
    --Database::batchDepth;
    if (keep) {
        for (auto action = m_actions.rbegin(); action != m_actions.rend() && action->depth == depth; ++action)
            action->depth = depth - 1;
    } else {
        undoActions(depth);
    }
    return keep;
}

bool Service::endOutermost(bool keep)
{
    const std::vector<Database*> writing = std::exchange(Database::writing, {});
    std::vector<const Database*> lost;
    for (Database* database : writing) {
        if (!keep) {
            database->rollback();
        } else if (!database->commit()) {
            lost.push_back(database);
            m_error = database->failure();
        }
    }
    Database::batchDepth = 0;
    const std::vector<Action> actions = std::exchange(m_actions, {});
    const auto isStored = [&](const Action& action) {
        return keep && std::find(lost.begin(), lost.end(), action.database) == lost.end();
    };
    for (auto action = actions.rbegin(); action != actions.rend(); ++action)
        if (!action->whenStored && !isStored(*action))
            action->act();
    for (const Action& action : actions)
        if (action.whenStored && isStored(action))
            action.act();
    for (const std::string& file : std::exchange(m_detachAtEnd, {}))
        detach(file);
    if (std::exchange(m_checkAtEnd, false))
        checkAll();
    return keep && lost.empty();
}

std::shared_ptr<void> Service::beginReading(Database* database)
{
    if (database == nullptr || !database->beginReading())
        return nullptr;
    return {database, [this](void* reading) {
                for (const auto& [file, open] : m_databases) // it may have been closed meanwhile
                    if (open.get() == reading)
                        open->endReading();
            }};
}

void Service::whenUndone(const Database* database, std::function<void()> act)
{
    if (inBatch())
        m_actions.push_back({database, Database::batchDepth, false, std::move(act)});
}

void Service::whenStored(const Database* database, std::function<void()> act)
{
    if (inBatch())
        m_actions.push_back({database, Database::batchDepth, true, std::move(act)});
    else
        act();
}

void Service::checkAll()
{
    m_checkAtEnd = m_checkAtEnd || inBatch();
    if (isWriting())
        return;
    if (!inBatch())
        m_physicalNames.clear();
    for (auto& [file, database] : m_databases)
        database->checkBeforeNextRead();
}

void Service::check(eIndex index)
{
    m_checkAtEnd = m_checkAtEnd || inBatch();
    if (isWriting())
        return;
    for (auto& [place, database] : m_places)
        if (place.second == index)
            database->checkBeforeNextRead();
}

} // namespace korodbc::host
