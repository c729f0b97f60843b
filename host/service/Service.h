#pragma once

#include "database/Database.h"
#include "database/Table.h"
#include "repository/Manifest.h"

#include <korodbc/records/RecordDescription.h>
#include <korodbc/repository/KorDSNManager.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace korodbc::host {

/// The open repository behind the table access service: which database stands behind each data source and slot.
class Service {
public:
    static Service& instance();

    /// Opens the repository in that folder; the one that was open is closed. On failure returns false, `error` one
    /// line.
    bool open(const std::filesystem::path& folder, Database::Access access, std::string& error);
    /// Opens a repository without files: every data source in memory, with its tables, empty.
    bool openInMemory(const std::vector<CountryAddIn>& countryAddIns, std::string& error);
    void close();
    bool isOpen() const { return m_open; }

    const std::filesystem::path& folder() const { return m_folder; }
    const Manifest& manifest() const { return m_manifest; }
    void setCountryAddIns(std::vector<CountryAddIn> addIns);

    /// The database of a data source and slot, opened at the first call; nullptr when there is none.
    Database* database(eDSN dsn, eIndex index);
    /// The database of a data source: in the current slot when the source is current, else in its first.
    Database* database(eDSN dsn) { return database(dsn, slot(dsn)); }
    eIndex slot(eDSN dsn) const;

    std::string connectionString(eDSN dsn) const;
    bool setConnectionString(eDSN dsn, const std::string& connection);
    /// Lets go of a database file: everything in that one file, no side files. False when it is in use or not
    /// open.
    bool detach(const std::string& file);

    /// The table that a record read of this type goes to; nullptr when no data source has it.
    Table* tableOf(const RecordDescription& type);
    /// Notes that a read found no table of the type, where there should be one.
    void noteMissing(const RecordDescription& type);
    /// The tables of a type in every source: add-in, country add-ins, then the base.
    std::vector<Table*> tablesOfAllSources(const KorString& name, eDSN base);
    /// Physical name of a described table.
    const KorString& physicalName(const RecordDescription& type);
    /// Target of an alias; false when the name is none.
    bool alias(const KorString& name, KorString& target);
    /// Data source that holds a table: the current one, else the first that does; kUnresolved without one.
    eDSN dataSourceOf(const KorString& physical);

    void beginBatch();
    /// Ends the innermost batch and keeps what was written in it, or takes it back. True when it is kept; of the
    /// outermost batch, when everything written was stored.
    bool endBatch(bool keep);
    bool inBatch() const { return Database::batchDepth > 0; }
    /// True in a batch that has written: what it reads waits for its end to look for others' changes.
    bool isWriting() const { return inBatch() && !Database::writing.empty(); }
    /// Holds the database in one state for reads while the result lives; nullptr when that fails.
    std::shared_ptr<void> beginReading(Database* database);
    /// Called, last first, when what the open batch wrote to that database is undone or cannot be stored.
    void whenUndone(const Database* database, std::function<void()> act);
    /// Called when what the open batch wrote to that database is stored; at once outside a batch.
    void whenStored(const Database* database, std::function<void()> act);

    /// The next reads look for changes of other processes. Inside a batch this waits for its end: an operation
    /// sees the databases as they were when it began.
    void checkAll();
    void check(eIndex index);

    const HostError& lastError() const { return m_error; }
    void setError(HostError error) { m_error = std::move(error); }
    void setError(std::string text, FailureKind kind = FailureKind::Refused) { m_error = {kind, std::move(text)}; }

private:
    using Place = std::pair<eDSN, eIndex>;
    const std::string* connectionOf(Place place) const;

    bool m_open = false;
    std::filesystem::path m_folder;
    Manifest m_manifest;
    std::map<std::string, std::unique_ptr<Database>> m_databases; // by file
    std::map<Place, Database*> m_places;                          // opened so far
    std::unordered_map<const RecordDescription*, KorString> m_physicalNames;
    struct Action {
        const Database* database; // nullptr: of none
        int depth;                // of the batch that it belongs to
        bool whenStored;          // otherwise when undone
        std::function<void()> act;
    };
    bool endOutermost(bool keep);
    void undoActions(int depth);
    Database::Access m_access = Database::Access::Write;
    std::vector<Action> m_actions;
    std::vector<std::string> m_detachAtEnd;
    bool m_checkAtEnd = false;
    HostError m_error;
};

inline Service& service() { return Service::instance(); }

} // namespace korodbc::host
