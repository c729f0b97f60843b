#include "database/Database.h"

#include "database/StatementReader.h"
#include "database/Table.h"

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

bool Database::observed() const { return static_cast<bool>(observer); }

void Database::report(std::string_view sql, bool ok, bool prepared, StatementEvent::Origin origin)
{
    if (observer)
        observer({m_dsn, m_index, origin, KorString::fromUtf8(sql), ok ? 1 : 0, prepared,
                  ok ? KorString() : KorString::fromUtf8(lastError())});
}

void Database::reportLibrary(const KorString& sql, bool ok, bool prepared)
{
    if (observer)
        observer({m_dsn, m_index, StatementEvent::Origin::Library, sql, ok ? 1 : 0, prepared,
                  ok ? KorString() : KorString::fromUtf8(lastError())});
}

std::unique_ptr<Database> Database::open(const std::string& name, Access access, HostError& error,
                                         const EngineKind& kind)
{
    auto engine = kind.open(name, access, error);
    return engine == nullptr ? nullptr : std::unique_ptr<Database>(new Database(name, std::move(engine)));
}

Database::Database(const std::string& name, std::unique_ptr<Engine> engine)
    : m_path(name), m_engine(std::move(engine))
{
}

Database::~Database()
{
    m_pending.reset();
    m_patterns.clear();
    m_statements.clear();
    m_tables.clear();
    std::erase(writing, this);
}

void Database::noteFailure()
{
    m_failure = m_engine->failure();
    // Some failures (disk full, input or output errors) undo the whole transaction.
    if (!m_marks.empty() && !m_engine->isInTransaction()) {
        m_marks.clear();
        lose();
        dropCaches();
    }
}

Statement* Database::compile(std::string_view sql)
{
    const auto known = m_statements.find(sql);
    if (known != m_statements.end())
        return known->second.get();
    auto statement = m_engine->prepare(sql, true);
    if (statement == nullptr) {
        noteFailure();
        return nullptr;
    }
    return m_statements.emplace(std::string(sql), std::move(statement)).first->second.get();
}

Statement* Database::prepare(std::string_view sql)
{
    Statement* statement = compile(sql);
    if (statement == nullptr) {
        report(sql, false, true, StatementEvent::Origin::Host);
    } else if (statement->effects().onlyReads) { // a write is reported when it ran
        const bool prepared = std::exchange(statement->fresh, false);
        report(sql, true, prepared, StatementEvent::Origin::Host);
    }
    return statement;
}

bool Database::finish(Statement& statement, bool reported)
{
    const Effects& effects = statement.effects();
    Step step = Step::Failed;
    if (fault && !(effects.writtenTables.empty() && effects.definedTables.empty()) && fault(statement.sql())) {
        setError("the statement was made to fail");
    } else {
        while ((step = statement.step()) == Step::Row) {
        }
        if (step == Step::Failed)
            noteFailure();
        tellTables(statement);
    }
    const bool prepared = std::exchange(statement.fresh, false);
    if (observer && reported)
        report(statement.expanded(), step == Step::Done, prepared, StatementEvent::Origin::Host);
    statement.reset();
    return step == Step::Done;
}

void Database::tellTables(const Statement& statement)
{
    const Effects& effects = statement.effects();
    if (effects.onlyReads)
        return;
    const Touched& touched = statement.touched();
    for (const Touched::Rows& rows : touched.rows) {
        const auto found =
            rows.ids.empty() || m_ownWrites > 0 ? m_tables.end() : m_tables.find(lowerCase(rows.table));
        for (std::size_t i = 0; found != m_tables.end() && i < rows.ids.size(); ++i)
            found->second->rowChanged(rows.ids[i]);
    }
    if (!touched.known)
        rowsChanged(effects.writtenTables);
    // a row whose key changed is named by its new key only
    rowsChanged(effects.rekeyedTables);
}

void Database::rowsChanged(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        const auto found = m_tables.find(lowerCase(name));
        if (found != m_tables.end())
            found->second->allChanged();
    }
}

bool Database::run(std::string_view sql)
{
    Statement* statement = compile(sql);
    const bool prepared = statement == nullptr || statement->fresh;
    const bool ok = statement != nullptr && finish(*statement, false);
    report(sql, ok, prepared, StatementEvent::Origin::Host);
    return ok;
}

void Database::limitStatements()
{
    if (m_statements.size() <= mostStatements)
        return;
    for (auto& [name, table] : m_tables)
        table->forgetStatements();
    m_patterns.clear();
    m_lastPattern = nullptr;
    m_statements.clear();
}

int Database::execute(const KorString& sql)
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
        if (ok && statement->parameters() > static_cast<int>(split ? m_values.size() : 0)) {
            setError("the statement has a parameter without a value");
            ok = false;
        }
        if (ok) {
            for (std::size_t i = 0; split && i < m_values.size(); ++i)
                statement->bind(static_cast<int>(i) + 1, m_values[i]);
            prepared = statement->fresh;
            ok = finish(*statement, false);
            if (!statement->effects().definedTables.empty())
                tablesChanged(statement->effects().definedTables);
            // kept are those that differ in their values only
            if ((prepared && !split) || !statement->effects().definedTables.empty())
                m_statements.erase(m_statements.find(m_pattern));
        }
    }
    reportLibrary(sql, ok, prepared);
    return ok ? 1 : 0;
}

const Database::KnownPattern* Database::pattern(std::wstring_view text)
{
    if (m_lastPattern != nullptr && m_lastPattern->text == text)
        return m_lastPattern;
    const auto known = m_patterns.find(text);
    if (known != m_patterns.end())
        return m_lastPattern = known->second.get();
    auto read = std::make_unique<KnownPattern>();
    if (!readPattern(text, read->pattern) || (read->statement = compile(read->pattern.sql)) == nullptr ||
        !read->statement->effects().definedTables.empty())
        return nullptr;
    read->text = text;
    m_lastPattern = read.get();
    m_patterns.emplace(std::wstring_view(read->text), std::move(read));
    return m_lastPattern;
}

int Database::execute(std::wstring_view text, std::span<const KorFormatArgument> arguments)
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
        ok = finish(*known->statement, false);
    }
    if (observer)
        reportLibrary(patternText(text, arguments), ok, prepared);
    return ok ? 1 : 0;
}

void Database::loadTableNames()
{
    if (m_namesLoaded)
        return;
    std::vector<std::string> listed;
    if (!m_engine->tables(listed)) {
        noteFailure();
        return;
    }
    std::map<std::string, std::string> names; // lower-case, as stored
    for (std::string& name : listed)
        names.emplace(lowerCase(name), std::move(name));
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

Table* Database::table(const KorString& name)
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

bool Database::canListTables()
{
    loadTableNames();
    return m_namesLoaded;
}

std::vector<std::string> Database::tableNames()
{
    loadTableNames();
    std::vector<std::string> names;
    for (const auto& [lower, table] : m_tables)
        names.push_back(table->name());
    return names;
}

bool Database::noteDataVersion()
{
    const std::int64_t version = m_engine->versionOfOthers();
    reported("PRAGMA data_version", version >= 0);
    return version >= 0 && std::exchange(m_dataVersion, version) != version;
}

void Database::validate()
{
    if (!m_unchecked || inTransaction() || m_reading)
        return;
    m_unchecked = false;
    if (noteDataVersion())
        dropCaches();
}

QueryResults::State Database::state() { return {m_engine->written(), m_engine->versionOfOthers(), m_dropped}; }

bool Database::reported(std::string_view sql, bool done)
{
    if (!done)
        noteFailure();
    report(sql, done, false, StatementEvent::Origin::Host);
    return done;
}

void Database::tablesChanged(const std::vector<std::string>& names)
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

void Database::dropCaches()
{
    ++m_dropped;
    m_namesLoaded = false;
    for (auto& [name, table] : m_tables)
        table->schemaChanged();
}

} // namespace korodbc::host
