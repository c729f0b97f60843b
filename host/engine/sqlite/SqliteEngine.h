#pragma once

#include "engine/Engine.h"
#include "engine/sqlite/FileClaims.h"

#include <map>
#include <sqlite3.h>

namespace korodbc::host {

class SqliteEngine final : public Engine {
public:
    static std::unique_ptr<Engine> open(const std::string& path, Access access, HostError& error);
    ~SqliteEngine() override;

    const HostError& failure() const override { return m_failure; }
    const HostError& refusal() const override { return m_refusal; }
    void setPatience(int milliseconds) override { sqlite3_busy_timeout(m_db, milliseconds); }
    std::unique_ptr<Statement> prepare(std::string_view sql, bool kept) override;

    bool tables(std::vector<std::string>& names) override;
    std::vector<TableColumn> columns(const std::string& table) override;
    std::string rowIdName(const std::string& table) override;
    TableRules rules(const std::string& table) override;
    std::int64_t size() override;

    bool begin(bool forWriting) override;
    bool commit() override { return run("COMMIT"); }
    bool rollback() override { return run("ROLLBACK"); }
    bool setMark(int mark) override { return run("SAVEPOINT mark" + std::to_string(mark)); }
    bool undoToMark(int mark) override { return run("ROLLBACK TO mark" + std::to_string(mark)); }
    bool releaseMark(int mark) override { return run("RELEASE mark" + std::to_string(mark)); }
    bool isInTransaction() const override { return sqlite3_get_autocommit(m_db) == 0; }

    std::int64_t written() const override { return sqlite3_total_changes64(m_db); }
    std::int64_t versionOfOthers() override { return value("PRAGMA data_version", -1); }
    Claims& claims() override { return m_claims; }

    std::string check() override;
    bool settle() override { return run("PRAGMA wal_checkpoint(TRUNCATE)"); }
    bool fold() override { return run("PRAGMA journal_mode = DELETE"); }

    // For its statements and for whole files

    sqlite3* handle() const { return m_db; }
    /// Keeps the reason of a failed step.
    void noteFailure(int code);
    void beginRun();
    void endRun(const Effects& effects, bool done);
    const Touched& touched() const { return m_touched; }

    static HostError errorOf(int code, std::string text);

private:
    explicit SqliteEngine(const std::string& path) : m_path(path), m_claims(path) {}
    bool openFile(Access access);
    bool openForLooking();
    bool openElsewhere(bool isLogged);
    bool connect(const std::string& name, int flags);
    bool run(std::string_view sql);
    std::int64_t value(std::string_view sql, std::int64_t otherwise);
    Statement* kept(std::string_view sql);
    void logAhead();
    static int authorize(void* self, int action, const char* a, const char* b, const char* c, const char* d);
    static void rowChanged(void* self, int operation, const char* database, const char* table, sqlite3_int64 row);

    const std::string m_path;
    sqlite3* m_db = nullptr;
    HostError m_failure, m_refusal;
    bool m_logsAhead = false; // turned on once, before the first write
    std::string m_temporary;  // folder of a copy that is looked at in place of the file
    FileClaims m_claims;
    std::map<std::string, std::unique_ptr<Statement>, std::less<>> m_kept; // of its own

    struct Compiled {
        std::vector<std::string> written, defined;
        std::vector<std::pair<std::string, std::string>> assigned; // table and column
        bool controlsTransaction = false;
    };
    Compiled m_compiled; // what the statement that is being prepared does
    Touched m_touched;
    std::int64_t m_noted = 0;
};

} // namespace korodbc::host
