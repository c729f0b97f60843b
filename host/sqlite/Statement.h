#pragma once

#include <korodbc/roots/KorString.h>

#include <cstdint>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace korodbc::host {

/// A value to bind.
using Value = std::variant<std::monostate, std::int64_t, double, KorString>;

/// A prepared statement that is kept for repeated use.
class Statement {
public:
    explicit Statement(sqlite3_stmt* handle) : m_handle(handle) {}
    ~Statement() { sqlite3_finalize(m_handle); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    void bind(int position, std::int64_t value) { sqlite3_bind_int64(m_handle, position, value); }
    void bind(int position, double value) { sqlite3_bind_double(m_handle, position, value); }
    void bind(int position, const KorString& text);
    void bind(int position, const Value& value);
    void bindNull(int position) { sqlite3_bind_null(m_handle, position); }

    int step() { return sqlite3_step(m_handle); }
    void reset() { sqlite3_reset(m_handle); }
    sqlite3_stmt* handle() const { return m_handle; }

    std::int64_t integer(int column) const { return sqlite3_column_int64(m_handle, column); }
    double real(int column) const { return sqlite3_column_double(m_handle, column); }
    bool isNull(int column) const { return sqlite3_column_type(m_handle, column) == SQLITE_NULL; }
    std::string_view bytes(int column) const;
    KorString text(int column) const { return KorString::fromUtf8(bytes(column)); }

    /// Tables that the statement writes, found when it was prepared.
    std::vector<std::string> writtenTables;
    /// Those of them whose keys it assigns.
    std::vector<std::string> rekeyedTables;
    /// It may remove rows that are in the way of others.
    bool replacesRows = false;
    /// Compiled and not run since; told to the observer with the next run.
    bool fresh = true;
    /// Tables that it makes, drops or changes the columns of.
    std::vector<std::string> definedTables;
    /// Begins, ends or marks a transaction.
    bool controlsTransaction = false;

private:
    sqlite3_stmt* m_handle;
    std::vector<std::string> m_texts; // UTF-8 of the bound texts, by position; reused by the next run
};

/// Resets a statement when the work with it ends.
class StatementRun {
public:
    explicit StatementRun(Statement& statement) : m_statement(statement) {}
    ~StatementRun() { m_statement.reset(); }
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;

private:
    Statement& m_statement;
};

/// Splits the literals off an INSERT, UPDATE or DELETE, so that statements that differ in their values only are
/// prepared once. Returns false when the text has to run as it is: unless it is one of the shapes that
/// StatementReader knows, where a literal is nothing but its value (a real the nearest double).
bool splitLiterals(std::wstring_view sql, std::string& pattern, std::vector<Value>& values);
/// The same for the condition of a look-up, without the word WHERE.
bool splitCondition(std::wstring_view condition, std::string& pattern, std::vector<Value>& values);

} // namespace korodbc::host
