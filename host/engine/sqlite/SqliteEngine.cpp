#include "engine/sqlite/SqliteEngine.h"

#include "engine/Names.h"
#include "engine/sqlite/SqliteStatement.h"

#include <utility>

namespace korodbc::host {

namespace {

/// Beyond this many rows of one run, which they are is of no use to anybody.
constexpr std::size_t mostNoted = 1000;

FailureKind kindOf(int code, std::string_view text)
{
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return FailureKind::Busy;
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return FailureKind::ReadOnly;
    case SQLITE_FULL:
        return FailureKind::Full;
    case SQLITE_IOERR:
        return FailureKind::Disk;
    case SQLITE_CANTOPEN:
        return FailureKind::Unreachable;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return FailureKind::Damaged;
    default:
        return text.starts_with("no such table") || text.starts_with("no such column") ? FailureKind::Layout
                                                                                       : FailureKind::Refused;
    }
}

} // namespace

HostError SqliteEngine::errorOf(int code, std::string text) { return {kindOf(code, text), std::move(text)}; }

void SqliteEngine::noteFailure(int code)
{
    const bool generic = (code & 0xff) == SQLITE_OK || sqlite3_errcode(m_db) == SQLITE_OK;
    m_failure = errorOf(code, generic ? sqlite3_errstr(code) : sqlite3_errmsg(m_db));
}

int SqliteEngine::authorize(void* self, int action, const char* a, const char* b, const char*, const char*)
{
    Compiled& compiled = static_cast<SqliteEngine*>(self)->m_compiled;
    const auto text = [](const char* name) { return name == nullptr ? "" : name; };
    switch (action) {
    case SQLITE_ATTACH:
        return SQLITE_DENY; // files are reached through data sources only
    case SQLITE_UPDATE:
        compiled.assigned.emplace_back(text(a), text(b));
        [[fallthrough]];
    case SQLITE_INSERT:
    case SQLITE_DELETE:
        compiled.written.emplace_back(text(a));
        break;
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
        compiled.controlsTransaction = true;
        break;
    case SQLITE_CREATE_TABLE:
    case SQLITE_DROP_TABLE:
        compiled.defined.emplace_back(text(a));
        break;
    case SQLITE_ALTER_TABLE:
    case SQLITE_CREATE_INDEX:
    case SQLITE_DROP_INDEX:
        compiled.defined.emplace_back(text(b));
        break;
    default:
        break;
    }
    return SQLITE_OK;
}

std::unique_ptr<Statement> SqliteEngine::prepare(std::string_view sql, bool kept)
{
    m_compiled = {};
    sqlite3_stmt* handle = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(m_db, sql.data(), static_cast<int>(sql.size()),
                                        kept ? SQLITE_PREPARE_PERSISTENT : 0, &handle, &tail);
    if (code != SQLITE_OK) {
        noteFailure(code);
        return nullptr;
    }
    const std::string_view rest(tail, static_cast<std::size_t>(sql.data() + sql.size() - tail));
    if (handle == nullptr || rest.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
        sqlite3_finalize(handle);
        m_failure = {FailureKind::Refused, handle == nullptr ? "the statement is empty"
                                                             : "only one statement can be executed at a time"};
        return nullptr;
    }
    Effects effects;
    effects.onlyReads = sqlite3_stmt_readonly(handle) != 0;
    effects.writtenTables = std::move(m_compiled.written);
    effects.replacesRows = !effects.writtenTables.empty() && lowerCase(sql).find("replace") != std::string::npos;
    for (const auto& [table, column] : m_compiled.assigned) {
        int isKey = 0;
        sqlite3_table_column_metadata(m_db, nullptr, table.c_str(), column.c_str(), nullptr, nullptr, nullptr,
                                      &isKey, nullptr);
        if (isKey != 0 || column == "ROWID")
            effects.rekeyedTables.push_back(table);
    }
    effects.definedTables = std::move(m_compiled.defined);
    effects.controlsTransaction = m_compiled.controlsTransaction;
    return std::make_unique<SqliteStatement>(*this, handle, std::string(sql), std::move(effects));
}

void SqliteEngine::rowChanged(void* self, int, const char*, const char* table, sqlite3_int64 row)
{
    auto& engine = *static_cast<SqliteEngine*>(self);
    ++engine.m_noted;
    Touched& touched = engine.m_touched;
    if (touched.rows.empty() || (!touched.rows.back().ids.empty() && touched.rows.back().table != table))
        touched.rows.push_back({table, {}});
    else if (touched.rows.back().table != table)
        touched.rows.back().table = table;
    std::vector<std::int64_t>& rows = touched.rows.back().ids;
    if (rows.size() < mostNoted)
        rows.push_back(row);
    else
        touched.known = false;
}

void SqliteEngine::beginRun()
{
    m_touched.count = 0;
    m_touched.known = true;
    if (!m_touched.rows.empty()) { // the next run will likely change the same table
        m_touched.rows.resize(1);
        m_touched.rows.front().ids.clear();
    }
    m_noted = 0;
}

void SqliteEngine::endRun(const Effects& effects, bool done)
{
    m_touched.count = done && !effects.writtenTables.empty() ? sqlite3_changes64(m_db) : 0;
    // it clears a table, or replaces rows, without naming them
    if (effects.definedTables.empty() && done && (effects.replacesRows || m_touched.count != m_noted))
        m_touched.known = false;
}

Statement* SqliteEngine::kept(std::string_view sql)
{
    const auto known = m_kept.find(sql);
    if (known != m_kept.end())
        return known->second.get();
    auto statement = prepare(sql, true);
    return statement == nullptr ? nullptr : m_kept.emplace(sql, std::move(statement)).first->second.get();
}

bool SqliteEngine::run(std::string_view sql)
{
    Statement* statement = kept(sql);
    if (statement == nullptr)
        return false;
    const StatementRun run(*statement);
    Step step;
    while ((step = statement->step()) == Step::Row) {
    }
    return step == Step::Done;
}

std::int64_t SqliteEngine::value(std::string_view sql, std::int64_t otherwise)
{
    Statement* statement = kept(sql);
    if (statement == nullptr)
        return otherwise;
    const StatementRun run(*statement);
    return statement->step() == Step::Row ? statement->integer(0) : otherwise;
}

bool SqliteEngine::tables(std::vector<std::string>& names)
{
    names.clear();
    Statement* select =
        kept("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~'");
    if (select == nullptr)
        return false;
    const StatementRun run(*select);
    Step step;
    while ((step = select->step()) == Step::Row)
        names.emplace_back(select->bytes(0));
    return step == Step::Done;
}

std::vector<TableColumn> SqliteEngine::columns(const std::string& table)
{
    enum { Name = 1, Type, NotNull, Default, PrimaryKey, Hidden };
    std::vector<TableColumn> columns;
    const auto info = prepare("PRAGMA main.table_xinfo(" + bracketed(table) + ")", false);
    while (info != nullptr && info->step() == Step::Row) {
        const std::int64_t hidden = info->integer(Hidden);
        if (hidden == 1)
            continue;
        std::string declaration(info->bytes(Type));
        const KorItemType::BaseTypes type = typeOfDeclaration(declaration);
        columns.push_back({std::string(info->bytes(Name)), std::move(declaration), type,
                           static_cast<int>(info->integer(PrimaryKey)), info->integer(NotNull) != 0,
                           !info->isNull(Default), hidden != 0});
    }
    return columns;
}

std::string SqliteEngine::rowIdName(const std::string& table)
{
    for (const char* name : {"_rowid_", "rowid", "oid"}) {
        const char* type = nullptr;
        int isKey = 0;
        // a column of that name hides the row's id, unless it is the id
        if (sqlite3_table_column_metadata(m_db, nullptr, table.c_str(), name, &type, nullptr, nullptr, &isKey,
                                          nullptr) == SQLITE_OK &&
            isKey != 0 && type != nullptr && sameName(type, "INTEGER"))
            return name;
    }
    return {};
}

/// Looks for words in the statements that made the table and its indexes.
TableRules SqliteEngine::rules(const std::string& table)
{
    TableRules rules;
    Statement* select = kept("SELECT sql FROM sqlite_master WHERE tbl_name = ?");
    if (select == nullptr)
        return rules;
    const StatementRun run(*select);
    select->bind(1, KorString::fromUtf8(table));
    while (select->step() == Step::Row) {
        std::string word;
        for (const char c : lowerCase(select->bytes(0)) + " ") {
            if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_') {
                word += c;
                continue;
            }
            rules.replacesRows = rules.replacesRows || word == "replace";
            for (const char* rule : {"unique", "check", "strict", "references", "replace", "ignore"})
                rules.mayRefuse = rules.mayRefuse || word == rule;
            word.clear();
        }
    }
    return rules;
}

std::int64_t SqliteEngine::size() { return value("PRAGMA page_count", 0) * value("PRAGMA page_size", 0); }

void SqliteEngine::logAhead()
{
    if (!std::exchange(m_logsAhead, true))
        run("PRAGMA journal_mode = WAL");
}

bool SqliteEngine::begin(bool forWriting)
{
    if (forWriting) {
        logAhead();
        return run("BEGIN IMMEDIATE");
    }
    // the first read is what fixes the state
    return run("BEGIN") && value("SELECT count(*) FROM sqlite_master", -1) >= 0;
}

std::string SqliteEngine::check()
{
    const auto check = prepare("PRAGMA quick_check(1)", false);
    if (check == nullptr || check->step() != Step::Row)
        return m_failure.text;
    if (check->bytes(0) == "ok")
        return {};
    m_failure = errorOf(SQLITE_CORRUPT,
                        std::string(sqlite3_errstr(SQLITE_CORRUPT)) + " (" + std::string(check->bytes(0)) + ")");
    return m_failure.text;
}

} // namespace korodbc::host
