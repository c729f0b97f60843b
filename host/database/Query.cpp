#include "database/Query.h"

#include "database/StatementReader.h"

namespace korodbc::host {

namespace {

bool isName(const KorString& text)
{
    std::string name;
    std::vector<Value> none;
    return StatementReader(text.view(), name, none).readName();
}

} // namespace

Query::Query(Database& database, const KorString& text) : m_database(database) { compile(text.toUtf8()); }

Query::Query(Database& database, const std::string& select, const KorString& condition, const KorString& order,
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
        m_error = database.failure();
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
    m_own = m_database.engine().prepare(text, false);
    if (m_own == nullptr) {
        m_database.noteFailure();
        m_error = m_database.failure();
    } else if (!m_own->effects().onlyReads || m_own->columns() == 0) {
        m_error = {FailureKind::Refused, "the text is no query"};
    } else if (m_own->parameters() > 0) {
        m_error = {FailureKind::Refused, "the query has a parameter without a value"};
    } else {
        m_statement = m_own.get();
    }
    m_database.report(text, m_statement != nullptr, true, StatementEvent::Origin::Host);
}

} // namespace korodbc::host
