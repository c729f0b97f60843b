#pragma once

#include "database/QueryResults.h"
#include "database/StatementPattern.h"
#include "engine/Engine.h"

#include <korodbc/host/Observer.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korodbc::host {

class Table;

/// One open database: its kept statements, its tables, its transaction, its claims. What it consists of is the
/// engine's matter.
class Database {
public:
    using Access = Engine::Access;
    /// Opens the database of that name, a file or ":memory:" with the engine for files. On failure returns nullptr
    /// and says why in `error`.
    static std::unique_ptr<Database> open(const std::string& name, Access access, HostError& error,
                                          const EngineKind& kind = fileEngine());
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& path() const { return m_path; }
    Engine& engine() { return *m_engine; }
    /// Why the last operation failed.
    const HostError& failure() const { return m_failure; }
    const std::string& lastError() const { return m_failure.text; }
    Claims& claims() { return m_engine->claims(); }
    /// The data source and slot under which the connection is used, for the observer.
    void setLabel(eDSN dsn, eIndex index)
    {
        m_dsn = dsn;
        m_index = index;
    }

    // Statements

    /// Runs one statement of the library's. Returns 1, or 0 with lastError set.
    int execute(const KorString& sql);
    /// The same for a statement given as a pattern and its values.
    int execute(std::wstring_view pattern, std::span<const KorFormatArgument> arguments);
    /// Runs one statement of the host's own.
    bool run(std::string_view sql);
    /// A kept statement of the host's own, ready to bind; nullptr with lastError set when it does not compile.
    Statement* prepare(std::string_view sql);
    /// Steps a statement that returns no rows; false with lastError set on failure.
    bool finish(Statement& statement, bool reported = true);
    void report(std::string_view sql, bool ok, bool prepared, StatementEvent::Origin origin);
    bool observed() const;
    /// The engine's reason becomes that of the database; called after a step that failed.
    void noteFailure();
    /// Keeps another reason.
    void setError(std::string reason, FailureKind kind = FailureKind::Refused)
    {
        m_failure = {kind, std::move(reason)};
    }
    /// What reads of any database lacked, until somebody asks.
    static inline std::set<std::string> readGaps;
    static void noteReadGap(const std::string& line)
    {
        if (readGaps.size() < 100)
            readGaps.insert(line);
    }

    // Tables

    /// The table of that name, compared without regard to ASCII case; nullptr when there is none.
    Table* table(const KorString& name);
    std::vector<std::string> tableNames();
    /// False, with lastError set, when the list of tables cannot be read.
    bool canListTables();

    // Transactions. Every write runs in one. Batches are numbered by depth, the outermost 1; the service says how
    // deep they are nested and ends them.

    /// Depth of the innermost batch, over all connections; 0 outside batches.
    static inline int batchDepth = 0;
    /// Connections that have written, or tried to, since the outermost batch began.
    static inline std::vector<Database*> writing;

    /// Starts the write transaction unless it runs already, so that the innermost batch can be undone; false when
    /// the database cannot be written now. A batch whose first write is refused cannot write at all.
    bool beginWrite();
    /// Stores what waits and commits; false when the writes are lost, which are undone then.
    bool commit();
    /// Undoes all writes since the outermost batch began.
    void rollback();
    /// The batch of that depth ended: its writes belong to the one around it.
    void keepBatch(int depth);
    /// Takes back what was written since the batch of that depth began.
    void undoBatch(int depth);
    bool inTransaction() const { return !m_marks.empty(); }

    /// From now on reads see one state, until as many calls of endReading, or a write. False when that fails.
    bool beginReading();
    void endReading();

    /// True, with lastError set, when another program has claimed the table or, for a copy, what it is a copy of.
    bool isRefused(std::string_view table);

    /// A row whose cell writes wait in memory for one INSERT or UPDATE.
    struct PendingRow {
        Table* table;
        Value key;
        bool isNew;
        std::map<int, Value> cells; // by column index
        int depth = 0;              // of the batch that wrote it
    };
    std::optional<PendingRow>& pending() { return m_pending; }
    /// Stores the waiting row; false when that failed.
    bool flush();

    // Caches

    /// The next read looks whether another process changed the database.
    void checkBeforeNextRead() { m_unchecked = true; }
    /// Drops cached tables when another process changed the database; called before reads.
    void validate();
    /// Takes the list of tables anew, after one was made, dropped or changed.
    void tablesChanged(const std::vector<std::string>& names);
    void dropCaches();
    /// What queries on tables gave, and the state of the database that tells whether it still holds.
    QueryResults& queryResults() { return m_queryResults; }
    QueryResults::State state();
    /// Suspends the noting of changed rows while the host itself keeps a cache up to date.
    class OwnWrite {
    public:
        explicit OwnWrite(Database& connection) : m_database(connection) { ++connection.m_ownWrites; }
        ~OwnWrite() { --m_database.m_ownWrites; }
        OwnWrite(const OwnWrite&) = delete;
        OwnWrite& operator=(const OwnWrite&) = delete;

    private:
        Database& m_database;
    };

private:
    Database(const std::string& name, std::unique_ptr<Engine> engine);
    Statement* compile(std::string_view sql);
    /// Reports an operation of the engine on the transaction, which is told as that text.
    bool reported(std::string_view sql, bool done);
    void limitStatements(); // lets kept statements go when there are too many
    bool isRefused(const Statement& statement);
    /// Rows of these tables changed, which ones is not known.
    void rowsChanged(const std::vector<std::string>& names);
    void reportLibrary(const KorString& sql, bool ok, bool prepared);
    void loadTableNames();
    bool noteDataVersion();                      // true when it changed
    void tellTables(const Statement& statement); // what a run changed

    std::string m_path;
    std::unique_ptr<Engine> m_engine;
    HostError m_failure;
    eDSN m_dsn = KorDSNDefinitions::kUnresolved;
    eIndex m_index = KorDSNDefinitions::kBase;

    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    };
    std::unordered_map<std::string, std::unique_ptr<Statement>, TextHash, std::equal_to<>> m_statements;
    struct KnownPattern {
        std::wstring text;
        StatementPattern pattern;
        Statement* statement = nullptr;
    };
    const KnownPattern* pattern(std::wstring_view text);
    std::unordered_map<std::wstring_view, std::unique_ptr<KnownPattern>> m_patterns; // by its own text
    const KnownPattern* m_lastPattern = nullptr;
    std::string m_pattern;       // scratch of execute
    std::vector<Value> m_values; // scratch of execute

    std::unordered_map<KorString, Table*> m_tablesByName;   // as asked for
    std::pair<KorString, Table*> m_lastTable;               // of them
    std::map<std::string, std::unique_ptr<Table>> m_tables; // by lower-case name; null: known, not opened yet
    bool m_namesLoaded = false;

    bool beginTransaction();
    void forgetUndone(); // what is known of writes that are undone
    void lose();         // nothing more is written until the outermost batch ends, which undoes everything
    int mark() const { return static_cast<int>(m_marks.size()); }
    std::string markName() const { return "batch" + std::to_string(mark()); }

    // Depth of the innermost batch that had begun when the transaction started, and at each savepoint since: going
    // back there undoes all batches that are deeper than the mark before.
    std::vector<int> m_marks;
    HostError m_lost;    // why the transaction cannot be stored; of no kind: it can
    int m_lostDepth = 0; // of the batch in which it did not even begin
    std::optional<PendingRow> m_pending;
    int m_readings = 0;
    bool m_reading = false;                       // a read transaction is open
    std::vector<Claims::Claim> m_claimedByOthers; // when the transaction began
    // Tables, by Claims::nameOf, with copies that nobody made here: unless the table is claimed here, a program
    // that has ended left them, and they would come back over what is written.
    std::set<std::string> m_copiedElsewhere;
    std::set<std::string> m_copiesMadeHere; // by lower-case name

    bool m_unchecked = true;
    std::int64_t m_dataVersion = -1;
    QueryResults m_queryResults;
    std::int64_t m_dropped = 0; // times that what is known of tables was taken anew
    int m_ownWrites = 0;
};

} // namespace korodbc::host
