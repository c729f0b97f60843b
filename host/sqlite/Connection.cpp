#include "sqlite/Connection.h"

#include "tables/Table.h"

#include <utility>

namespace korodbc::host {

namespace {

StatementObserver observer;
StatementFault fault;
// Kept statements beyond this number are let go before the next one of the library's runs.
constexpr std::size_t mostStatements = 1000;

} // namespace

void setStatementObserver(StatementObserver newObserver) { observer = std::move(newObserver); }
void setStatementFault(StatementFault newFault) { fault = std::move(newFault); }

bool Connection::observed() const { return static_cast<bool>(observer); }

void Connection::report(std::string_view sql, bool ok, bool prepared, StatementEvent::Origin origin)
{
    if (observer)
        observer({m_dsn, m_index, origin, KorString::fromUtf8(sql), ok ? 1 : 0, prepared,
                  ok ? KorString() : KorString::fromUtf8(m_error)});
}

void Connection::reportLibrary(const KorString& sql, bool ok, bool prepared)
{
    if (observer)
        observer({m_dsn, m_index, StatementEvent::Origin::Library, sql, ok ? 1 : 0, prepared,
                  ok ? KorString() : KorString::fromUtf8(m_error)});
}

int Connection::authorize(void* self, int action, const char* a, const char* b, const char*, const char*)
{
    auto& connection = *static_cast<Connection*>(self);
    switch (action) {
    case SQLITE_ATTACH:
        return SQLITE_DENY; // files are reached through data sources only
    case SQLITE_UPDATE:
        connection.m_assignedByCompile.emplace_back(a == nullptr ? "" : a, b == nullptr ? "" : b);
        [[fallthrough]];
    case SQLITE_INSERT:
    case SQLITE_DELETE:
        connection.m_writtenByCompile.emplace_back(a == nullptr ? "" : a);
        break;
    case SQLITE_TRANSACTION:
    case SQLITE_SAVEPOINT:
        connection.m_controlsTransaction = true;
        break;
    case SQLITE_CREATE_TABLE:
    case SQLITE_DROP_TABLE:
        connection.m_definedByCompile.emplace_back(a == nullptr ? "" : a);
        break;
    case SQLITE_ALTER_TABLE:
    case SQLITE_CREATE_INDEX:
    case SQLITE_DROP_INDEX:
        connection.m_definedByCompile.emplace_back(b == nullptr ? "" : b);
        break;
    default:
        break;
    }
    return SQLITE_OK;
}

void Connection::rowChanged(void* self, int, const char*, const char* table, sqlite3_int64 row)
{
    auto& connection = *static_cast<Connection*>(self);
    ++connection.m_rowsNoted;
    if (connection.m_ownWrites > 0)
        return;
    const auto found = connection.m_tables.find(lowerCase(table));
    if (found != connection.m_tables.end() && found->second)
        found->second->rowChanged(row);
}

void Connection::noteFailure(int code)
{
    const bool generic = (code & 0xff) == SQLITE_OK || sqlite3_errcode(m_db) == SQLITE_OK;
    m_error = generic ? sqlite3_errstr(code) : sqlite3_errmsg(m_db);
    // Some failures (disk full, input or output errors) undo the whole transaction.
    if (!m_marks.empty() && sqlite3_get_autocommit(m_db) != 0) {
        m_marks.clear();
        lose();
        dropCaches();
    }
}

Statement* Connection::compile(std::string_view sql)
{
    const auto known = m_statements.find(sql);
    if (known != m_statements.end())
        return known->second.get();
    m_writtenByCompile.clear();
    m_assignedByCompile.clear();
    m_definedByCompile.clear();
    m_controlsTransaction = false;
    sqlite3_stmt* handle = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v3(m_db, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                        &handle, &tail);
    if (code != SQLITE_OK) {
        noteFailure(code);
        return nullptr;
    }
    auto statement = std::make_unique<Statement>(handle);
    const std::string_view rest(tail, static_cast<std::size_t>(sql.data() + sql.size() - tail));
    if (handle == nullptr || rest.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
        m_error = handle == nullptr ? "the statement is empty" : "only one statement can be executed at a time";
        return nullptr;
    }
    statement->writtenTables = std::exchange(m_writtenByCompile, {});
    statement->replacesRows =
        !statement->writtenTables.empty() && lowerCase(sql).find("replace") != std::string::npos;
    for (const auto& [table, column] : m_assignedByCompile) {
        int isKey = 0;
        sqlite3_table_column_metadata(m_db, nullptr, table.c_str(), column.c_str(), nullptr, nullptr, nullptr,
                                      &isKey, nullptr);
        if (isKey != 0 || column == "ROWID")
            statement->rekeyedTables.push_back(table);
    }
    statement->definedTables = std::exchange(m_definedByCompile, {});
    statement->controlsTransaction = m_controlsTransaction;
    return m_statements.emplace(std::string(sql), std::move(statement)).first->second.get();
}

Statement* Connection::prepare(std::string_view sql)
{
    Statement* statement = compile(sql);
    if (statement == nullptr) {
        report(sql, false, true, StatementEvent::Origin::Host);
    } else if (sqlite3_stmt_readonly(statement->handle()) != 0) { // a write is reported when it ran
        const bool prepared = std::exchange(statement->fresh, false);
        report(sql, true, prepared, StatementEvent::Origin::Host);
    }
    return statement;
}

bool Connection::finish(Statement& statement, bool reported)
{
    int code = SQLITE_DONE;
    if (fault && !(statement.writtenTables.empty() && statement.definedTables.empty()) &&
        fault(sqlite3_sql(statement.handle()))) {
        code = SQLITE_ERROR;
        m_error = "the statement was made to fail";
    } else {
        while ((code = statement.step()) == SQLITE_ROW) {
        }
        if (code != SQLITE_DONE)
            noteFailure(code);
    }
    const bool prepared = std::exchange(statement.fresh, false);
    if (observer && reported) {
        char* text = sqlite3_expanded_sql(statement.handle());
        report(text == nullptr ? "" : text, code == SQLITE_DONE, prepared, StatementEvent::Origin::Host);
        sqlite3_free(text);
    }
    statement.reset();
    // the engine names a row whose key changed by its new key only
    rowsChanged(statement.rekeyedTables);
    return code == SQLITE_DONE;
}

void Connection::rowsChanged(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        const auto found = m_tables.find(lowerCase(name));
        if (found != m_tables.end() && found->second)
            found->second->allChanged();
    }
}

bool Connection::run(std::string_view sql)
{
    Statement* statement = compile(sql);
    const bool prepared = statement == nullptr || statement->fresh;
    const bool ok = statement != nullptr && finish(*statement, false);
    report(sql, ok, prepared, StatementEvent::Origin::Host);
    return ok;
}

void Connection::limitStatements()
{
    if (m_statements.size() <= mostStatements)
        return;
    for (auto& [name, table] : m_tables)
        if (table)
            table->forgetStatements();
    m_patterns.clear();
    m_lastPattern = nullptr;
    m_statements.clear();
}

bool Connection::finishWrite(Statement& statement)
{
    const std::int64_t notedBefore = m_rowsNoted;
    const bool ok = finish(statement, false);
    if (!statement.definedTables.empty()) {
        tablesChanged(statement.definedTables);
    } else if (ok && (statement.replacesRows || sqlite3_changes64(m_db) != m_rowsNoted - notedBefore)) {
        // the engine cleared the table, or replaced rows, without naming them
        rowsChanged(statement.writtenTables);
    }
    return ok;
}

int Connection::execute(const KorString& sql)
{
    limitStatements();
    bool ok = flush() && beginWrite();
    bool prepared = false;
    if (ok) {
        const bool split = splitLiterals(sql.view(), m_pattern, m_values);
        if (!split)
            m_pattern = sql.toUtf8();
        Statement* statement = compile(m_pattern);
        ok = statement != nullptr && !isRefused(*statement);
        if (ok &&
            sqlite3_bind_parameter_count(statement->handle()) > static_cast<int>(split ? m_values.size() : 0)) {
            m_error = "the statement has a parameter without a value";
            ok = false;
        }
        if (ok) {
            for (std::size_t i = 0; split && i < m_values.size(); ++i)
                statement->bind(static_cast<int>(i) + 1, m_values[i]);
            prepared = statement->fresh;
            ok = finishWrite(*statement);
            // kept are those that differ in their values only
            if ((prepared && !split) || !statement->definedTables.empty())
                m_statements.erase(m_statements.find(m_pattern));
        }
    }
    reportLibrary(sql, ok, prepared);
    return ok ? 1 : 0;
}

const Connection::KnownPattern* Connection::pattern(std::wstring_view text)
{
    if (m_lastPattern != nullptr && m_lastPattern->text == text)
        return m_lastPattern;
    const auto known = m_patterns.find(text);
    if (known != m_patterns.end())
        return m_lastPattern = known->second.get();
    auto read = std::make_unique<KnownPattern>();
    if (!readPattern(text, read->pattern) || (read->statement = compile(read->pattern.sql)) == nullptr ||
        !read->statement->definedTables.empty())
        return nullptr;
    read->text = text;
    m_lastPattern = read.get();
    m_patterns.emplace(std::wstring_view(read->text), std::move(read));
    return m_lastPattern;
}

int Connection::execute(std::wstring_view text, std::span<const KorFormatArgument> arguments)
{
    limitStatements();
    bool ok = flush() && beginWrite();
    const KnownPattern* known = ok ? pattern(text) : nullptr;
    if (known == nullptr || !fitsPattern(known->pattern, arguments))
        return execute(patternText(text, arguments));
    const bool prepared = known->statement->fresh;
    ok = !isRefused(*known->statement);
    if (ok) {
        bindPattern(known->pattern, arguments, *known->statement);
        ok = finishWrite(*known->statement);
    }
    if (observer)
        reportLibrary(patternText(text, arguments), ok, prepared);
    return ok ? 1 : 0;
}

void Connection::loadTableNames()
{
    if (m_namesLoaded)
        return;
    Statement* select =
        prepare("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~'");
    if (select == nullptr)
        return;
    const StatementRun run(*select);
    std::map<std::string, std::string> names; // lower-case, as stored
    int code;
    while ((code = select->step()) == SQLITE_ROW)
        names.emplace(lowerCase(select->bytes(0)), select->bytes(0));
    if (code != SQLITE_DONE) {
        noteFailure(code);
        return;
    }
    m_tablesByName.clear();
    m_lastTable = {};
    m_copiedElsewhere.clear();
    for (const auto& [lower, name] : names)
        if (const std::string copied = Claims::nameOf(lower); copied != lower && !m_copiesMadeHere.contains(lower))
            m_copiedElsewhere.insert(copied);
    std::erase_if(m_copiesMadeHere, [&](const std::string& copy) { return !names.contains(copy); });
    for (auto table = m_tables.begin(); table != m_tables.end();) {
        const auto still = names.find(table->first);
        if (still == names.end() || still->second != table->second->name())
            table = m_tables.erase(table);
        else
            ++table;
    }
    for (const auto& [lower, name] : names)
        if (!m_tables.contains(lower))
            m_tables.emplace(lower, std::make_unique<Table>(*this, name));
    m_namesLoaded = true;
}

Table* Connection::table(const KorString& name)
{
    loadTableNames();
    if (m_lastTable.second != nullptr && m_lastTable.first.view().data() == name.view().data())
        return m_lastTable.second;
    auto known = m_tablesByName.find(name);
    if (known == m_tablesByName.end()) {
        if (m_tablesByName.size() >= 10000)
            m_tablesByName.clear();
        const auto found = m_tables.find(lowerCase(name.toUtf8()));
        known = m_tablesByName.emplace(name, found == m_tables.end() ? nullptr : found->second.get()).first;
    }
    m_lastTable = {name, known->second};
    return known->second;
}

bool Connection::canListTables()
{
    loadTableNames();
    return m_namesLoaded;
}

std::vector<std::string> Connection::tableNames()
{
    loadTableNames();
    std::vector<std::string> names;
    for (const auto& [lower, table] : m_tables)
        names.push_back(table->name());
    return names;
}

bool Connection::noteDataVersion()
{
    Statement* version = prepare("PRAGMA data_version");
    if (version == nullptr)
        return false;
    const StatementRun run(*version);
    if (version->step() != SQLITE_ROW)
        return false;
    return std::exchange(m_dataVersion, version->integer(0)) != version->integer(0);
}

void Connection::validate()
{
    if (!m_unchecked || inTransaction() || m_reading)
        return;
    m_unchecked = false;
    if (noteDataVersion())
        dropCaches();
}

QueryResults::State Connection::state()
{
    QueryResults::State state{sqlite3_total_changes64(m_db), -1, m_dropped};
    // not reported: this stands for the query that it may spare
    Statement* version = compile("PRAGMA data_version");
    if (version == nullptr)
        return state;
    const StatementRun run(*version);
    if (version->step() == SQLITE_ROW)
        state.version = version->integer(0);
    return state;
}

void Connection::tablesChanged(const std::vector<std::string>& names)
{
    ++m_dropped;
    m_namesLoaded = false;
    for (const std::string& name : names)
        if (lowerCase(name) != Claims::nameOf(name))
            m_copiesMadeHere.insert(lowerCase(name));
    for (const std::string& name : names)
        if (const auto found = m_tables.find(lowerCase(name)); found != m_tables.end())
            found->second->schemaChanged();
}

void Connection::dropCaches()
{
    ++m_dropped;
    m_namesLoaded = false;
    for (auto& [name, table] : m_tables)
        table->schemaChanged();
}

} // namespace korodbc::host
