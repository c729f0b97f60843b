#pragma once

#include "engine/Statement.h"

#include <sqlite3.h>

namespace korodbc::host {

class SqliteEngine;

class SqliteStatement final : public Statement {
public:
    SqliteStatement(SqliteEngine& engine, sqlite3_stmt* handle, std::string sql, Effects effects);
    ~SqliteStatement() override { sqlite3_finalize(m_handle); }

    std::string_view columnName(int column) const override { return sqlite3_column_name(m_handle, column); }
    std::string expanded() const override;
    const Touched& touched() const override;

private:
    Step next(bool first) override;
    void end() override { sqlite3_reset(m_handle); }
    std::string_view rendered(int column) const override;
    bool start(); // false when a value cannot be handed over
    void takeRow();

    SqliteEngine& m_engine;
    sqlite3_stmt* m_handle;
};

} // namespace korodbc::host
