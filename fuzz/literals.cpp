// Any text as a statement, a condition or a pattern: where its values are taken out of it, it does the same as the
// text itself.

#include "Fuzz.h"
#include "sqlite/Statement.h"
#include "sqlite/StatementPattern.h"

#include <cmath>

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

/// What a statement did: its result, and everything that is in the database afterwards.
struct Outcome {
    int code;
    std::vector<Value> values;
};

class Database {
public:
    Database()
    {
        sqlite3_open(":memory:", &m_db);
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
        require(sqlite3_exec(m_db, schema, nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(m_db));
    }

    /// Runs a text with values bound, and takes back what it did.
    template <class Bind>
    Outcome run(const std::string& sql, Bind bind)
    {
        execute("BEGIN");
        Outcome outcome{SQLITE_OK, {}};
        sqlite3_stmt* handle = nullptr;
        const char* tail = nullptr;
        outcome.code = sqlite3_prepare_v2(m_db, sql.data(), static_cast<int>(sql.size()), &handle, &tail);
        const bool whole =
            outcome.code == SQLITE_OK && handle != nullptr &&
            sql.find_first_not_of(" \t\r\n;", static_cast<std::size_t>(tail - sql.data())) == std::string::npos;
        Statement statement(handle);
        if (whole) {
            bind(statement);
            read(statement, outcome);
            outcome.values.emplace_back(std::int64_t{sqlite3_changes(m_db)});
        } else if (outcome.code == SQLITE_OK) {
            outcome.code = SQLITE_ERROR;
        }
        for (const char* table : {"SELECT * FROM T ORDER BY rowid", "SELECT rowid, * FROM S ORDER BY rowid"}) {
            sqlite3_prepare_v2(m_db, table, -1, &handle, nullptr);
            Statement select(handle);
            Outcome rows{};
            read(select, rows);
            outcome.values.insert(outcome.values.end(), rows.values.begin(), rows.values.end());
        }
        statement.reset();
        execute("ROLLBACK");
        return outcome;
    }

private:
    static void read(Statement& statement, Outcome& outcome)
    {
        while ((outcome.code = statement.step()) == SQLITE_ROW)
            for (int i = 0; i < sqlite3_column_count(statement.handle()); ++i) {
                const int type = sqlite3_column_type(statement.handle(), i);
                outcome.values.emplace_back(std::int64_t{type});
                if (type == SQLITE_INTEGER)
                    outcome.values.emplace_back(statement.integer(i));
                else if (type == SQLITE_FLOAT)
                    outcome.values.emplace_back(statement.real(i));
                else
                    outcome.values.emplace_back(statement.text(i));
            }
    }
    void execute(const char* sql) { sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr); }

    sqlite3* m_db = nullptr;
};

/// Reals may differ in their last place: the engine does not always choose the nearest double.
bool same(const Value& one, const Value& other)
{
    const double *a = std::get_if<double>(&one), *b = std::get_if<double>(&other);
    if (a == nullptr || b == nullptr)
        return one == other;
    return *a == *b || std::abs(*a - *b) <= 1e-14 * std::abs(*a);
}

Database& database()
{
    static Database database;
    return database;
}

template <class Bind>
void compare(const std::string& sql, const std::string& pattern, Bind bind)
{
    const Outcome text = database().run(sql, [](Statement&) {});
    const Outcome bound = database().run(pattern, bind);
    const auto shown = [&] { return sql + "\n  and " + pattern; };
    require(text.code == bound.code, "another result: " + shown());
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
