#include "Database.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace bench {

void require(bool ok, const std::string& what)
{
    if (ok)
        return;
    std::fprintf(stderr, "benchmark failed: %s\n", what.c_str());
    std::exit(1);
}

Query::Query(sqlite3* db, const std::string& sql)
{
    require(sqlite3_prepare_v3(db, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &m_handle, nullptr) == SQLITE_OK,
            sql + ": " + sqlite3_errmsg(db));
}

Query& Query::operator=(Query&& other) noexcept
{
    std::swap(m_handle, other.m_handle);
    return *this;
}

Query& Query::bind(int position, std::int64_t value)
{
    sqlite3_bind_int64(m_handle, position, value);
    return *this;
}

Query& Query::bind(int position, double value)
{
    sqlite3_bind_double(m_handle, position, value);
    return *this;
}

Query& Query::bind(int position, std::string_view text)
{
    sqlite3_bind_text(m_handle, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
    return *this;
}

bool Query::step()
{
    const int code = sqlite3_step(m_handle);
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        require(false, std::string(sqlite3_sql(m_handle)) + ": " + sqlite3_errmsg(sqlite3_db_handle(m_handle)));
    return code == SQLITE_ROW;
}

void Query::run()
{
    while (step()) {
    }
    reset();
}

std::string_view Query::text(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, column));
    return text == nullptr
               ? std::string_view{}
               : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column)));
}

Database::Database(const std::string& file)
{
    require(sqlite3_open_v2(file.c_str(), &m_db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) ==
                SQLITE_OK,
            "cannot open " + file);
}

void Database::useHostPragmas()
{
    run("PRAGMA journal_mode = WAL");
    run("PRAGMA synchronous = FULL");
}

void Database::run(const std::string& sql) { prepare(sql).run(); }

std::int64_t Database::value(const std::string& sql)
{
    Query query = prepare(sql);
    return query.step() ? query.integer(0) : 0;
}

} // namespace bench
