// Any text as a statement, a condition or a pattern: where its values are taken out of it, it does the same as the
// text itself.

#include "database/StatementPattern.h"
#include "database/StatementReader.h"
#include "engine/Engine.h"
#include "Fuzz.h"

#include <cmath>
#include <memory>
#include <sstream>

using namespace korodbc::host;

namespace {

constexpr const char* schema =
    "CREATE TABLE T ([Key] INTEGER PRIMARY KEY, Name TEXT COLLATE NOCASE, Size REAL, Any, Number NUMERIC CHECK "
    "(Number < 99),"
    " [a b] BLOB, \"q\"\"c\" VARCHAR(10) DEFAULT 'd', Twice AS (Size * 2));"
    "CREATE UNIQUE INDEX ByName ON T (Name); CREATE INDEX Upper ON T (upper(Name)) WHERE Size > 1;"
    "INSERT INTO T ([Key], Name, Size, Any, Number, [a b]) VALUES"
    " (1, 'one', 1, 1, 1, 1), (2, '2', 2.5, '2', 2, '2'), (3, 'it''s', NULL, 3.0, '3', x'33'),"
    " (-4, '', -0.0, NULL, 1.5, 5), (5, '5.0', 5, 5.0, 5.0, 'five');"
    "CREATE TABLE S (I INT, R REAL, X TEXT, A ANY) STRICT; INSERT INTO S VALUES (1, 1, '1', 1), (2, 2.5, 'b', "
    "'B');";

/// What a statement did: how it ended, and everything that is in the database afterwards.
struct Outcome {
    FailureKind failure = FailureKind::None;
    std::vector<Value> values;
};

class Ground {
public:
    Ground()
    {
        HostError error;
        m_engine = fileEngine().open(std::string(fileEngine().inMemory), Engine::Access::Create, error);
        require(m_engine != nullptr, error.text);
        std::istringstream statements(schema);
        for (std::string sql; std::getline(statements, sql, ';');) {
            const auto statement = m_engine->prepare(sql, false);
            require(statement != nullptr && statement->step() == Step::Done, m_engine->failure().text);
        }
    }

    /// Runs a text with values bound, and takes back what it did.
    template <class Bind>
    Outcome run(const std::string& sql, Bind bind)
    {
        require(m_engine->begin(true), "no transaction");
        Outcome outcome;
        auto statement = m_engine->prepare(sql, false);
        if (statement != nullptr) {
            bind(*statement);
            read(*statement, outcome);
            outcome.values.emplace_back(statement->effects().onlyReads ? 0 : statement->touched().count);
        } else {
            outcome.failure = m_engine->failure().kind;
        }
        for (const char* table : {"SELECT * FROM T ORDER BY rowid", "SELECT rowid, * FROM S ORDER BY rowid"}) {
            const auto select = m_engine->prepare(table, false);
            Outcome rows;
            if (select != nullptr)
                read(*select, rows);
            outcome.values.insert(outcome.values.end(), rows.values.begin(), rows.values.end());
        }
        statement.reset();
        if (m_engine->isInTransaction())
            m_engine->rollback();
        return outcome;
    }

private:
    void read(Statement& statement, Outcome& outcome)
    {
        Step step;
        while ((step = statement.step()) == Step::Row)
            for (int i = 0; i < statement.columns(); ++i) {
                const Statement::CellType type = statement.cell(i).type;
                outcome.values.emplace_back(static_cast<std::int64_t>(type));
                if (type == Statement::CellType::Integer)
                    outcome.values.emplace_back(statement.integer(i));
                else if (type == Statement::CellType::Real)
                    outcome.values.emplace_back(statement.real(i));
                else
                    outcome.values.emplace_back(statement.text(i));
            }
        if (step == Step::Failed)
            outcome.failure = m_engine->failure().kind;
    }

    std::unique_ptr<Engine> m_engine;
};

/// Reals may differ in their last place: the engine does not always choose the nearest double.
bool same(const Value& one, const Value& other)
{
    const double *a = std::get_if<double>(&one), *b = std::get_if<double>(&other);
    if (a == nullptr || b == nullptr)
        return one == other;
    return *a == *b || std::abs(*a - *b) <= 1e-14 * std::abs(*a);
}

Ground& database()
{
    static Ground database;
    return database;
}

template <class Bind>
void compare(const std::string& sql, const std::string& pattern, Bind bind)
{
    const Outcome text = database().run(sql, [](Statement&) {});
    const Outcome bound = database().run(pattern, bind);
    const auto shown = [&] { return sql + "\n  and " + pattern; };
    require(text.failure == bound.failure, "another result: " + shown());
    require(std::equal(text.values.begin(), text.values.end(), bound.values.begin(), bound.values.end(), same),
            "other contents: " + shown());
}

void comparePattern(const KorString& text)
{
    StatementPattern pattern;
    if (!readPattern(text.view(), pattern))
        return;
    const KorString quote(L"it's 5%d");
    std::vector<KorFormatArgument> arguments;
    for (const StatementPattern::Kind kind : pattern.parameters) {
        const long number = static_cast<long>(arguments.size()) * 4 - 4;
        if (kind == StatementPattern::Kind::Integer)
            arguments.emplace_back(number);
        else if (kind == StatementPattern::Kind::Real)
            arguments.emplace_back(static_cast<double>(number) / 8);
        else
            arguments.emplace_back(quote);
    }
    require(fitsPattern(pattern, arguments), "the values do not fit");
    compare(patternText(text.view(), arguments).toUtf8(), pattern.sql,
            [&](Statement& statement) { bindPattern(pattern, arguments, statement); });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const KorString text = KorString::fromUtf8(textOf(data, size));
    std::string pattern;
    std::vector<Value> values;
    const auto bind = [&](Statement& statement) {
        for (std::size_t i = 0; i < values.size(); ++i)
            statement.bind(static_cast<int>(i) + 1, values[i]);
    };
    if (splitLiterals(text.view(), pattern, values))
        compare(text.toUtf8(), pattern, bind);
    const std::string select = "SELECT * FROM T WHERE ", order = " ORDER BY rowid";
    if (splitCondition(text.view(), pattern, values))
        compare(select + text.toUtf8() + order, select + pattern + order, bind);
    comparePattern(text);
    return 0;
}
