#include "sqlite/Query.h"

#include "sqlite/StatementReader.h"

namespace korodbc::host {

namespace {

bool isName(const KorString& text)
{
    std::string name;
    std::vector<Value> none;
    return StatementReader(text.view(), name, none).readName();
}

} // namespace

Query::Query(Connection& database, const KorString& text) : m_database(database) { compile(text.toUtf8()); }

Query::Query(Connection& database, const std::string& select, const KorString& condition, const KorString& order,
             const std::string& tableOrder)
    : m_database(database)
{
    const std::string ordered = order.isEmpty() ? tableOrder : " ORDER BY " + order.toUtf8();
    std::string pattern;
    std::vector<Value> values;
    const bool split = condition.isEmpty() || splitCondition(condition.view(), pattern, values);
    if (!split || (!order.isEmpty() && !isName(order))) {
        compile(select + (condition.isEmpty() ? std::string() : " WHERE " + condition.toUtf8()) + ordered);
        return;
    }
    m_statement = database.prepare(select + (condition.isEmpty() ? std::string() : " WHERE " + pattern) + ordered);
    if (m_statement == nullptr)
        m_error = database.lastError();
    for (std::size_t i = 0; m_statement != nullptr && i < values.size(); ++i)
        m_statement->bind(static_cast<int>(i) + 1, values[i]);
}

Query::~Query()
{
    if (m_statement != nullptr)
        m_statement->reset();
}

void Query::compile(const std::string& text)
{
    sqlite3_stmt* handle = nullptr;
    const char* tail = nullptr;
    const int code =
        sqlite3_prepare_v2(m_database.handle(), text.data(), static_cast<int>(text.size()), &handle, &tail);
    m_own = std::make_unique<Statement>(handle);
    if (code != SQLITE_OK) {
        m_database.noteFailure(code);
        m_error = m_database.lastError();
    } else if (text.find_first_not_of(" \t\r\n;", static_cast<std::size_t>(tail - text.data())) !=
               std::string::npos) {
        m_error = "only one query can be run at a time";
    } else if (handle == nullptr || sqlite3_stmt_readonly(handle) == 0 || sqlite3_column_count(handle) == 0) {
        m_error = "the text is no query";
    } else if (sqlite3_bind_parameter_count(handle) > 0) {
        m_error = "the query has a parameter without a value";
    } else {
        m_statement = m_own.get();
    }
    m_database.report(text, m_statement != nullptr, true, StatementEvent::Origin::Host);
}

} // namespace korodbc::host
