// What every database engine keeps, on every kind of database that it opens: a new engine is one more row at the
// end.

#include "engine/Engine.h"

#include "engine/Names.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace korodbc::host;

namespace {

struct Kind {
    const char* name;
    const EngineKind& (*kind)();
    bool shared; // another program can open the same database
};

/// A row as text: its cells with their types.
std::string rowOf(const Statement& statement)
{
    std::string text;
    for (int i = 0; i < statement.columns(); ++i) {
        constexpr const char* types[] = {"null", "int ", "real ", "text "};
        text += (i == 0 ? "" : "|") + std::string(types[static_cast<int>(statement.cell(i).type)]) +
                std::string(statement.bytes(i));
    }
    return text;
}

class EngineTest : public testing::TestWithParam<Kind> {
protected:
    void SetUp() override
    {
        m_folder = fs::temp_directory_path() / ("engine-test-" + std::to_string(::getpid()));
        fs::create_directories(m_folder);
        m_engine = open(Engine::Access::Create);
    }
    void TearDown() override
    {
        m_engine.reset();
        fs::remove_all(m_folder);
    }
    std::string database() const
    {
        return GetParam().shared ? (m_folder / "it's [one].db").string() : std::string(GetParam().kind().inMemory);
    }
    std::unique_ptr<Engine> open(Engine::Access access) const
    {
        HostError error;
        auto engine = GetParam().kind().open(database(), access, error);
        EXPECT_NE(engine, nullptr) << error.text;
        if (engine != nullptr)
            engine->setPatience(20);
        return engine;
    }
    Engine& engine() { return *m_engine; }

    /// Runs a statement with values; false when it fails.
    static bool run(Engine& engine, const std::string& sql, const std::vector<Value>& values = {})
    {
        const auto statement = engine.prepare(sql, false);
        if (statement == nullptr)
            return false;
        for (std::size_t i = 0; i < values.size(); ++i)
            statement->bind(static_cast<int>(i) + 1, values[i]);
        Step step;
        while ((step = statement->step()) == Step::Row) {
        }
        return step == Step::Done;
    }
    bool run(const std::string& sql, const std::vector<Value>& values = {}) { return run(engine(), sql, values); }
    static std::vector<std::string> rows(Engine& engine, const std::string& sql)
    {
        std::vector<std::string> all;
        const auto statement = engine.prepare(sql, false);
        while (statement != nullptr && statement->step() == Step::Row)
            all.push_back(rowOf(*statement));
        return all;
    }
    std::vector<std::string> rows(const std::string& sql) { return rows(engine(), sql); }
    using Texts = std::vector<std::string>;

    fs::path m_folder;
    std::unique_ptr<Engine> m_engine;
};

TEST_P(EngineTest, Names)
{
    const std::string names[] = {"T", "Detail Style", "a]b", "it's", "say \"so\"", "order", "größe", "Key"};
    for (const std::string& name : names) {
        ASSERT_TRUE(run("CREATE TABLE " + bracketed(name) + " ([Key] INTEGER PRIMARY KEY, " +
                        bracketed(name + "x") + " TEXT)"))
            << name << ": " << engine().failure().text;
        ASSERT_TRUE(run("INSERT INTO " + bracketed(name) + " VALUES (1, ?)", {KorString::fromUtf8(name)}));
        const std::vector<TableColumn> columns = engine().columns(name);
        ASSERT_EQ(columns.size(), 2U) << name;
        EXPECT_EQ(columns[1].name, name + "x");
        EXPECT_EQ(rows("SELECT " + bracketed(name + "x") + " FROM " + bracketed(name)), Texts{"text " + name});
    }
    Texts listed, made(std::begin(names), std::end(names));
    ASSERT_TRUE(engine().tables(listed));
    std::sort(listed.begin(), listed.end());
    std::sort(made.begin(), made.end());
    EXPECT_EQ(listed, made);
    EXPECT_EQ(rows("SELECT KEY, tX FROM t"), Texts{"int 1|text T"}); // ASCII case does not count
    EXPECT_TRUE(engine().columns("nowhere").empty());
    EXPECT_FALSE(run("SELECT * FROM nowhere"));
    EXPECT_EQ(engine().failure().kind, FailureKind::Layout);
    EXPECT_FALSE(run("SELECT \"nowhere\" FROM T")); // a name, never a text
}

TEST_P(EngineTest, ValuesComeBackAsTheyWent)
{
    ASSERT_TRUE(run("CREATE TABLE T (I INTEGER, R REAL, X VARCHAR(5), Y TEXT)"));
    const std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    const KorString texts[] = {KorString(), L"it's", L"ä€\U0001F600", L"longer than five", L"%_\\", L"1e3"};
    for (const KorString& text : texts) {
        for (const std::int64_t number : {std::int64_t{0}, std::int64_t{-1}, largest, -largest - 1}) {
            for (const double real : {0.0, 0.1, -1e300, 5e-324, 1.0 / 3}) {
                ASSERT_TRUE(run("DELETE FROM T"));
                ASSERT_TRUE(run("INSERT INTO T VALUES (?, ?, ?, ?)", {number, real, text, std::monostate()}));
                const auto select = engine().prepare("SELECT * FROM T", true);
                ASSERT_EQ(select->step(), Step::Row);
                EXPECT_EQ(select->integer(0), number);
                EXPECT_EQ(select->real(1), real);
                EXPECT_EQ(select->text(2), text);
                EXPECT_TRUE(select->isNull(3));
                EXPECT_EQ(select->bytes(3), "");
                EXPECT_EQ(select->step(), Step::Done);
            }
        }
    }
    const struct {
        Value value;
        std::int64_t integer;
        double real;
        const char* text;
    } conversions[] = {
        {std::int64_t{7}, 7, 7, "7"},   {2.5, 2, 2.5, "2.5"},         {KorString(L" 12 mm"), 12, 12, " 12 mm"},
        {KorString(L"mm"), 0, 0, "mm"}, {std::monostate(), 0, 0, ""}, {1e300, largest, 1e300, "1.0e+300"}};
    for (const auto& entry : conversions) {
        const auto select = engine().prepare("SELECT ?", false);
        select->bind(1, entry.value);
        ASSERT_EQ(select->step(), Step::Row);
        EXPECT_EQ(select->integer(0), entry.integer) << entry.text;
        EXPECT_EQ(select->real(0), entry.real) << entry.text;
        EXPECT_EQ(select->bytes(0), entry.text);
    }
}

TEST_P(EngineTest, AStatementTellsWhatItDoes)
{
    ASSERT_TRUE(run("CREATE TABLE T ([Key] INTEGER PRIMARY KEY, Name TEXT)"));
    ASSERT_TRUE(run("CREATE TABLE NoIds ([Key] TEXT PRIMARY KEY, Name TEXT) WITHOUT ROWID"));
    using List = std::vector<std::string>;
    const struct {
        const char* sql;
        bool onlyReads, controls;
        List writes, rekeys, defines;
        std::int64_t count;
        bool known;
        std::vector<std::int64_t> ids;
    } cases[] = {
        {"SELECT * FROM T", true, false, {}, {}, {}, 0, true, {}},
        {"INSERT INTO T VALUES (5, 'e'), (3, 'c'), (9, 'i')", false, false, {"T"}, {}, {}, 3, true, {5, 3, 9}},
        {"UPDATE T SET Name = 'x' WHERE [Key] > 4", false, false, {"T"}, {}, {}, 2, true, {5, 9}},
        {"UPDATE T SET [Key] = 8 WHERE [Key] = 9", false, false, {"T"}, {"T"}, {}, 1, true, {8}},
        {"DELETE FROM T WHERE [Key] = 3", false, false, {"T"}, {}, {}, 1, true, {3}},
        {"DELETE FROM T WHERE [Key] = 3", false, false, {"T"}, {}, {}, 0, true, {}},
        {"REPLACE INTO T VALUES (5, 'y')", false, false, {"T"}, {}, {}, 1, false, {5}},
        {"DELETE FROM T", false, false, {"T"}, {}, {}, 2, false, {}},
        {"INSERT INTO NoIds VALUES ('a', 'b')", false, false, {"NoIds"}, {}, {}, 1, false, {}},
        {"ALTER TABLE T ADD COLUMN More INT", false, false, {}, {}, {"T"}, 0, true, {}},
        {"SAVEPOINT s", true, true, {}, {}, {}, 0, true, {}},
    };
    for (const auto& entry : cases) {
        const auto statement = engine().prepare(entry.sql, true);
        ASSERT_NE(statement, nullptr) << entry.sql << ": " << engine().failure().text;
        EXPECT_EQ(statement->sql(), entry.sql);
        const Effects& effects = statement->effects();
        EXPECT_EQ(effects.onlyReads, entry.onlyReads) << entry.sql;
        EXPECT_EQ(effects.controlsTransaction, entry.controls) << entry.sql;
        EXPECT_EQ(effects.rekeyedTables, entry.rekeys) << entry.sql;
        EXPECT_EQ(effects.definedTables, entry.defines) << entry.sql;
        if (effects.onlyReads)
            continue;
        Step step;
        while ((step = statement->step()) == Step::Row) {
        }
        ASSERT_EQ(step, Step::Done) << entry.sql << ": " << engine().failure().text;
        if (!entry.defines.empty())
            continue;
        EXPECT_EQ(effects.writtenTables, entry.writes) << entry.sql;
        const Touched& touched = statement->touched();
        EXPECT_EQ(touched.count, entry.count) << entry.sql;
        EXPECT_EQ(touched.known, entry.known) << entry.sql;
        std::vector<std::int64_t> ids;
        for (const Touched::Rows& rows : touched.rows)
            ids.insert(ids.end(), rows.ids.begin(), rows.ids.end());
        EXPECT_EQ(ids, entry.ids) << entry.sql;
    }
    for (const char* none : {"", " ;", "SELECT 1; SELECT 2", "SELEC", "ATTACH 'x' AS y"})
        EXPECT_EQ(engine().prepare(none, false), nullptr) << none;
}

TEST_P(EngineTest, RowsAndTheirNumbers)
{
    const struct {
        const char* columns;
        bool hasIds;
        const char* order; // of the rows read by number, or as they lie
    } cases[] = {{"[Key] INTEGER PRIMARY KEY, N INT", true, "1 2 3"},
                 {"[Key] INT, N INT", true, "3 1 2"},
                 {"[Key] INT, rowid INT, _rowid_ TEXT", true, "3 1 2"},
                 {"rowid INT, _rowid_ INT, oid INT", false, ""},
                 {"[Key] INT PRIMARY KEY, N INT) WITHOUT ROWID --", false, ""}};
    for (const auto& entry : cases) {
        run("DROP TABLE T");
        std::string columns = entry.columns;
        if (const auto comment = columns.find(") WITHOUT"); comment == std::string::npos)
            columns += ")";
        else
            columns = columns.substr(0, columns.find(" --"));
        ASSERT_TRUE(run("CREATE TABLE T (" + columns)) << engine().failure().text;
        const std::string id = engine().rowIdName("T");
        EXPECT_EQ(!id.empty(), entry.hasIds) << entry.columns;
        for (const int key : {3, 1, 2})
            ASSERT_TRUE(run("INSERT INTO T (" + bracketed(engine().columns("T")[0].name) + ") VALUES (?)",
                            {std::int64_t{key}}));
        std::string order;
        for (const std::string& row : rows("SELECT * FROM T" + (id.empty() ? "" : " ORDER BY " + id)))
            order += (order.empty() ? "" : " ") + row.substr(4, 1);
        if (entry.hasIds) {
            EXPECT_EQ(order, entry.order) << entry.columns;
        }
    }
    // new columns are there in statements that were prepared before
    ASSERT_TRUE(run("DROP TABLE T") && run("CREATE TABLE T (A INT)") && run("INSERT INTO T VALUES (1)"));
    const auto select = engine().prepare("SELECT * FROM T", true);
    ASSERT_EQ(select->step(), Step::Row);
    select->reset();
    ASSERT_TRUE(run("ALTER TABLE T ADD COLUMN B TEXT DEFAULT 'b'"));
    ASSERT_EQ(select->step(), Step::Row);
    EXPECT_EQ(rowOf(*select), "int 1|text b");
    EXPECT_EQ(select->columnName(1), "B");
}

TEST_P(EngineTest, ColumnsAndRules)
{
    ASSERT_TRUE(run("CREATE TABLE T (B TEXT NOT NULL, A INTEGER, C REAL DEFAULT 1.5, D AS (A + 1), E DATETIME, "
                    "PRIMARY KEY (A, B))"));
    const std::vector<TableColumn> columns = engine().columns("T");
    ASSERT_EQ(columns.size(), 5U);
    const struct {
        const char* name;
        int inKey;
        bool required, computed;
        KorItemType::BaseTypes type;
    } expected[] = {{"B", 2, true, false, KorItemType::kString},
                    {"A", 1, false, false, KorItemType::kInt},
                    {"C", 0, false, false, KorItemType::kDouble},
                    {"D", 0, false, true, KorItemType::kString},
                    {"E", 0, false, false, KorItemType::kTime}};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        EXPECT_EQ(columns[i].name, expected[i].name);
        EXPECT_EQ(columns[i].inPrimaryKey, expected[i].inKey) << expected[i].name;
        EXPECT_EQ(columns[i].required(), expected[i].required) << expected[i].name;
        EXPECT_EQ(columns[i].computed, expected[i].computed) << expected[i].name;
        EXPECT_EQ(columns[i].type, expected[i].type) << expected[i].name;
    }
    const struct {
        const char* sql;
        bool refuses, replaces;
    } rules[] = {{"CREATE TABLE R ([Key] INTEGER PRIMARY KEY, N TEXT)", false, false},
                 {"CREATE TABLE R (N TEXT UNIQUE)", true, false},
                 {"CREATE TABLE R (N INT CHECK (N > 0))", true, false},
                 {"CREATE TABLE R (N TEXT UNIQUE ON CONFLICT REPLACE)", true, true}};
    for (const auto& entry : rules) {
        run("DROP TABLE R");
        ASSERT_TRUE(run(entry.sql));
        EXPECT_EQ(engine().rules("R").mayRefuse, entry.refuses) << entry.sql;
        EXPECT_EQ(engine().rules("R").replacesRows, entry.replaces) << entry.sql;
    }
}

TEST_P(EngineTest, AFailedStatementUndoesItselfAndNothingElse)
{
    ASSERT_TRUE(run("CREATE TABLE T ([Key] INTEGER PRIMARY KEY, N INT CHECK (N < 10))"));
    ASSERT_TRUE(engine().begin(true));
    ASSERT_TRUE(run("INSERT INTO T VALUES (1, 1)"));
    EXPECT_FALSE(run("INSERT INTO T VALUES (2, 2), (3, 99)"));
    EXPECT_EQ(engine().failure().kind, FailureKind::Refused);
    EXPECT_FALSE(run("DROP TABLE Nowhere"));
    EXPECT_TRUE(engine().isInTransaction());
    ASSERT_TRUE(run("INSERT INTO T VALUES (4, 4)"));
    ASSERT_TRUE(engine().commit());
    EXPECT_FALSE(engine().isInTransaction());
    EXPECT_EQ(rows("SELECT [Key] FROM T"), (Texts{"int 1", "int 4"}));
}

TEST_P(EngineTest, MarksNest)
{
    ASSERT_TRUE(run("CREATE TABLE T (N INT)"));
    const auto insert = [&](int n) { return run("INSERT INTO T VALUES (?)", {std::int64_t{n}}); };
    const auto all = [&] { return rows("SELECT N FROM T").size(); };
    ASSERT_TRUE(engine().begin(true) && insert(1) && engine().setMark(1) && insert(2) && engine().setMark(2));
    ASSERT_TRUE(insert(3) && run("CREATE TABLE Inner (A INT)") && engine().undoToMark(2));
    EXPECT_EQ(all(), 2U);
    EXPECT_TRUE(engine().columns("Inner").empty());
    ASSERT_TRUE(insert(4) && engine().releaseMark(2));
    EXPECT_EQ(all(), 3U);
    ASSERT_TRUE(engine().undoToMark(1) && engine().releaseMark(1));
    EXPECT_EQ(all(), 1U);
    ASSERT_TRUE(engine().rollback());
    EXPECT_EQ(all(), 0U);
    EXPECT_FALSE(engine().commit()); // there is none
}

TEST_P(EngineTest, OneWriterAndWhatOthersSee)
{
    if (!GetParam().shared)
        GTEST_SKIP() << "nobody else can open it";
    ASSERT_TRUE(run("CREATE TABLE T (N INT)"));
    const auto other = open(Engine::Access::Write);
    const std::int64_t before = other->versionOfOthers();
    ASSERT_TRUE(engine().begin(true) && run("INSERT INTO T VALUES (1)"));
    EXPECT_TRUE(rows(*other, "SELECT N FROM T").empty());
    EXPECT_EQ(other->versionOfOthers(), before);
    EXPECT_FALSE(other->begin(true));
    EXPECT_EQ(other->failure().kind, FailureKind::Busy);
    ASSERT_TRUE(other->begin(false)); // one state from here on
    ASSERT_TRUE(engine().commit());
    EXPECT_TRUE(rows(*other, "SELECT N FROM T").empty());
    ASSERT_TRUE(other->commit());
    EXPECT_NE(other->versionOfOthers(), before);
    EXPECT_EQ(rows(*other, "SELECT N FROM T"), Texts{"int 1"});
    const std::int64_t own = engine().versionOfOthers(), written = engine().written();
    ASSERT_TRUE(run("INSERT INTO T VALUES (2)"));
    EXPECT_EQ(engine().versionOfOthers(), own); // one's own changes are nobody else's
    EXPECT_EQ(engine().written(), written + 1);
    // what was never committed is gone with the one who wrote it
    ASSERT_TRUE(engine().begin(true) && run("DELETE FROM T"));
    m_engine.reset();
    EXPECT_EQ(rows(*other, "SELECT N FROM T").size(), 2U);
    EXPECT_TRUE(other->begin(true) && other->rollback());
}

TEST_P(EngineTest, Claims)
{
    if (!GetParam().shared)
        GTEST_SKIP() << "nobody else can open it";
    ASSERT_TRUE(run("CREATE TABLE T (N INT)"));
    auto other = open(Engine::Access::Write);
    HostError reason;
    ASSERT_TRUE(engine().claims().take("T", reason)) << reason.text;
    EXPECT_TRUE(engine().claims().take("t", reason)) << "one's own claim";
    EXPECT_FALSE(other->claims().take("T_VELCopy", reason)); // a copy stands for its table
    EXPECT_EQ(reason.kind, FailureKind::Edited);
    EXPECT_TRUE(other->claims().take("U", reason)) << reason.text;
    ASSERT_EQ(other->claims().ofOthers().size(), 1U);
    EXPECT_EQ(other->claims().ofOthers()[0].table, "T");
    engine().claims().giveBack("T");
    EXPECT_TRUE(other->claims().take("T", reason)) << reason.text;
    EXPECT_EQ(engine().claims().ofOthers().size(), 2U);
    other.reset(); // a claim ends with its holder
    EXPECT_TRUE(engine().claims().ofOthers().empty());
    EXPECT_TRUE(engine().claims().take("T", reason)) << reason.text;
}

TEST_P(EngineTest, LookingChangesNothing)
{
    ASSERT_TRUE(run("CREATE TABLE T (N INT)"));
    if (!GetParam().shared)
        GTEST_SKIP() << "nobody else can open it";
    ASSERT_TRUE(run("INSERT INTO T VALUES (1)") && engine().settle() && engine().fold());
    m_engine.reset();
    const auto looking = open(Engine::Access::Look);
    EXPECT_EQ(looking->refusal().kind, FailureKind::ReadOnly);
    EXPECT_EQ(rows(*looking, "SELECT N FROM T"), Texts{"int 1"});
    EXPECT_FALSE(run(*looking, "INSERT INTO T VALUES (2)"));
    EXPECT_EQ(looking->check(), "");
    EXPECT_GT(looking->size(), 0);
}

const Kind kinds[] = {{"InAFile", fileEngine, true}, {"InMemory", fileEngine, false}};
INSTANTIATE_TEST_SUITE_P(Kinds, EngineTest, testing::ValuesIn(kinds),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
