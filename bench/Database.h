#pragma once

#include <cstdint>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace bench {

/// A prepared statement of the plain C API.
class Query {
public:
    Query() = default;
    Query(sqlite3* db, const std::string& sql);
    ~Query() { sqlite3_finalize(m_handle); }
    Query(Query&& other) noexcept : m_handle(other.m_handle) { other.m_handle = nullptr; }
    Query& operator=(Query&& other) noexcept;

    Query& bind(int position, std::int64_t value);
    Query& bind(int position, double value);
    Query& bind(int position, std::string_view text); // the text has to live until the statement ran
    /// True while there is a row.
    bool step();
    void reset() { sqlite3_reset(m_handle); }
    /// Runs a statement that returns no rows.
    void run();

    std::int64_t integer(int column) const { return sqlite3_column_int64(m_handle, column); }
    double real(int column) const { return sqlite3_column_double(m_handle, column); }
    std::string_view text(int column) const;
    sqlite3_stmt* handle() const { return m_handle; }

private:
    sqlite3_stmt* m_handle = nullptr;
};

/// A database opened with the plain C API. Failures end the program: a benchmark that lost a row measures
/// nothing.
class Database {
public:
    explicit Database(const std::string& file);
    ~Database() { sqlite3_close(m_db); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    /// Write-ahead logging, synchronous, as the host opens its databases.
    void useHostPragmas();
    void run(const std::string& sql);
    std::int64_t value(const std::string& sql);
    Query prepare(const std::string& sql) { return Query(m_db, sql); }
    sqlite3* handle() const { return m_db; }

private:
    sqlite3* m_db = nullptr;
};

/// Ends the program with a message unless `ok`.
void require(bool ok, const std::string& what);

} // namespace bench
