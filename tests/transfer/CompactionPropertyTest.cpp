#include "bench/DetailGenerator.h"
#include "edit/KorOdbcMan.h"
#include "repository/DetailDatabase.h"
#include "support/PairwiseCompaction.h"
#include "support/RepositoryFixture.h"
#include "transfer/KorOdbcCompactDetailsTables.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using pairwise::Contents;
using Rows = std::set<std::string>;

struct Case {
    const char* name;
    bench::DetailShape shape;
};

bench::DetailShape shape(std::uint64_t seed, long rows, double duplicates, double near)
{
    bench::DetailShape s;
    s.seed = seed;
    s.rows = rows;
    s.duplicates = duplicates;
    s.nearDuplicates = near;
    return s;
}

std::vector<Case> cases()
{
    std::vector<Case> all = {
        {"Plain", shape(1, 500, 0.4, 0)},         {"Mixed", shape(2, 1000, 0.3, 0.3)},
        {"AllEqual", shape(3, 300, 1, 0)},        {"NoneEqual", shape(4, 500, 0, 0)},
        {"Damaged", shape(8, 800, 0.3, 0.3)},     {"OddReals", shape(6, 1000, 0.3, 0.5)},
        {"NearlyAll", shape(5, 1500, 0.1, 0.85)}, {"NothingShared", shape(7, 2500, 0, 0.5)},
    };
    for (Case& each : all) {
        const std::string name = each.name;
        if (name == "Plain" || name == "AllEqual")
            continue;
        each.shape.keyGap = 3;
        each.shape.missing = name == "NoneEqual" ? 0 : 0.05;
        each.shape.oddReals = name == "OddReals" ? 0.4 : 0.02;
        each.shape.shared = name == "NothingShared" ? 0 : 0.6;
        each.shape.damaged = name == "Damaged";
    }
    return all;
}

class CompactionPropertyTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        m_folder = std::filesystem::temp_directory_path() / ("korodbc-compaction-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override
    {
        KorOdbcMan::InitializeStatics::release();
        RepositoryTest::TearDown();
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    /// A generated database behind a data source; the name of its file.
    std::string attach(eDSN dsn, const bench::DetailShape& shape)
    {
        const std::string empty = (m_folder / "empty.db").string();
        std::string error;
        if (!std::filesystem::exists(empty)) {
            EXPECT_TRUE(korodbc::host::createDetailDatabase(empty, error)) << error;
        }
        const std::string file = (m_folder / (std::to_string(++m_files) + ".db")).string();
        std::filesystem::copy_file(empty, file);
        bench::generateDetails(file, shape);
        EXPECT_EQ(KorDatabaseAccess::setConnection(dsn, KorString::fromUtf8(file)), 1);
        KorOdbcMan::InitializeStatics::release();
        KorOdbcMan::InitializeStatics::build();
        EXPECT_EQ(KorOdbcMan::initializeTables(), 1);
        return file;
    }
    static eIndex indexOf(eDSN dsn)
    {
        return dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase;
    }
    /// The contents of the file without the copies that the edit manager keeps, which have to be as before.
    static Contents readWithoutCopies(const std::string& file, const Contents& before)
    {
        Contents contents = pairwise::readFile(file);
        std::erase_if(contents, [&](const auto& table) {
            const std::size_t name = table.first.find("_VELCopy");
            if (name == std::string::npos)
                return false;
            const auto original = before.find(table.first.substr(0, name));
            EXPECT_TRUE(original != before.end() && original->second.rows == table.second.rows) << table.first;
            return true;
        });
        return contents;
    }
    static pairwise::Tables read(eDSN dsn)
    {
        const KorDSNRequest request(dsn, indexOf(dsn));
        pairwise::Tables tables;
        EXPECT_TRUE(pairwise::readTables(tables));
        return tables;
    }
    /// The references that point at no row, by table, key and column.
    static Rows dangling(eDSN dsn);

private:
    std::filesystem::path m_folder;
    int m_files = 0;
};

template <class R, class... Part>
void collect(const KorArray<R>& records, Rows& found, Part...)
{
    const RecordDescription& type = descriptionOf<R>();
    const auto look = [&](std::span<const ColumnDescription> columns, const void* record, int key, long item) {
        for (const ColumnDescription& column : columns) {
            if (column.link != LinkKind::Reference)
                continue;
            std::unique_ptr<void, void (*)(void*)> target(column.target().operations->create(),
                                                          column.target().operations->destroy);
            if (RecordAccess::readByKey(column.target(), column.integer(record), target.get()) != 1)
                found.insert(std::string(type.table) + " " + std::to_string(key) + " " + std::string(column.name) +
                             " of item " + std::to_string(item));
        }
    };
    for (const R& record : records) {
        look(type.columns, &record, type.keyOf(&record), -1);
        if (const MemberList* items = type.itemList())
            for (long i = 0; i < items->length(&record); ++i)
                look(type.numbered.exists() ? type.numbered.columns : type.items.item().columns,
                     items->at(&record, i), type.keyOf(&record), i);
    }
}

Rows CompactionPropertyTest::dangling(eDSN dsn)
{
    Rows found;
    const pairwise::Tables t = read(dsn);
    const KorDSNRequest request(dsn, indexOf(dsn));
    collect(t.dimStrategies, found);
    collect(t.styles, found);
    collect(t.annotations, found);
    collect(t.qualifierSets, found);
    collect(t.maps, found);
    collect(t.points, found);
    collect(t.linears, found);
    collect(t.requests, found);
    collect(t.categories, found);
    collect(t.processes, found);
    collect(t.steps, found);
    collect(t.styleMaps, found);
    return found;
}

// The reference itself: each of its rules makes a difference to the generated databases.
TEST_F(CompactionPropertyTest, EveryBrokenRuleIsNoticed)
{
    using Compaction = pairwise::Compaction;
    const std::function<void(Compaction&)> runs[] = {
        [](Compaction& c) { c.run(pairwise::kAll, true); },
        [](Compaction& c) { c.run(pairwise::kStyles, true); },
        [](Compaction& c) { c.run(pairwise::kProcesses, true); },
        [](Compaction& c) { c.runQualifierSets(pairwise::kStyles, true); },
    };
    std::set<pairwise::Rule> unnoticed, noticed;
    for (const Case& each : cases()) {
        const std::string file = attach(KorDSNDefinitions::kAddin, each.shape);
        const Compaction start(read(KorDSNDefinitions::kAddin), pairwise::readFile(file));
        for (const auto& run : runs) {
            Compaction whole(start);
            run(whole);
            for (const pairwise::Rule& rule : whole.rules) {
                if (noticed.contains(rule))
                    continue;
                Compaction broken(start);
                broken.broken = rule;
                run(broken);
                if (pairwise::difference(whole.contents, broken.contents).empty()) {
                    unnoticed.insert(rule);
                } else {
                    unnoticed.erase(rule);
                    noticed.insert(rule);
                }
            }
        }
    }
    std::string names;
    for (const pairwise::Rule& rule : unnoticed)
        names += rule.text() + "\n";
    EXPECT_EQ(names, "");
    EXPECT_GT(noticed.size(), 150u);
}

TEST_F(CompactionPropertyTest, AShapeAlwaysMakesTheSameDatabase)
{
    bench::DetailShape some = shape(21, 400, 0.3, 0.3);
    some.missing = some.oddReals = 0.1;
    some.keyGap = 4;
    const Contents first = pairwise::readFile(attach(details, some));
    EXPECT_EQ(pairwise::difference(first, pairwise::readFile(attach(details, some))), "");
    some.seed = 22;
    EXPECT_NE(pairwise::difference(first, pairwise::readFile(attach(details, some))), "");
}

using Compact = KorOdbcCompactDetailsTables;

constexpr Compact::eCompactType types[] = {Compact::kCompactDetailStyles, Compact::kCompactDetailProcesses,
                                           Compact::kCompactAll};

class GeneratedCompactionTest : public CompactionPropertyTest, public testing::WithParamInterface<Case> {
protected:
    static bool is(const char* name) { return GetParam().name == std::string(name); }
};

void PrintTo(const Case& which, std::ostream* out) { *out << which.name; }

/// Number of statements that begin with the word.
long count(const Texts& statements, const std::string& word)
{
    return std::count_if(statements.begin(), statements.end(),
                         [&](const std::string& statement) { return statement.starts_with(word); });
}

TEST_P(GeneratedCompactionTest, LeavesWhatComparingAllPairsLeaves)
{
    const eDSN sources[] = {details, KorDSNDefinitions::kAddin};
    for (const Compact::eCompactType type : types) {
        for (const int deletes : {0, 1}) {
            const eDSN dsn = sources[type == deletes ? 0 : 1], otherSource = sources[type == deletes ? 1 : 0];
            SCOPED_TRACE("type " + std::to_string(type) + ", delete flag " + std::to_string(deletes));
            const std::string other = attach(otherSource, GetParam().shape);
            const std::string file = attach(dsn, GetParam().shape);
            const Contents before = pairwise::readFile(file);
            const Rows danglingBefore = dangling(dsn);
            pairwise::Compaction expected(read(dsn), before);
            expected.run(static_cast<pairwise::Type>(type), deletes != 0);

            StatementRecorder recorder;
            EXPECT_EQ(Compact::startCompactProcess(dsn, deletes, type), 1);
            const Texts statements = recorder.take();
            const Contents after = readWithoutCopies(file, before);
            EXPECT_EQ(pairwise::difference(expected.contents, after), "");
            EXPECT_EQ(pairwise::difference(before, readWithoutCopies(other, before)), "") << "the other source";
            EXPECT_EQ(count(statements, "UPDATE"), expected.statements);
            if (deletes == 0 || is("NoneEqual")) {
                EXPECT_EQ(count(statements, "DELETE"), 0);
            }
            if (is("NoneEqual")) {
                EXPECT_EQ(pairwise::difference(before, after), "");
            }

            for (const std::string& reference : dangling(dsn)) {
                // processes alone take qualifier sets away without looking at who else uses them
                if (type == Compact::kCompactDetailProcesses &&
                    (reference.starts_with("DetObjReprMapsNew") ||
                     reference.starts_with("DetViewDimPointSelection")))
                    continue;
                EXPECT_TRUE(danglingBefore.contains(reference)) << reference;
            }

            if (GetParam().shape.damaged)
                continue; // a statement for one of two items with the same order writes both
            EXPECT_EQ(Compact::startCompactProcess(dsn, deletes, type), 1);
            const Texts again = recorder.take();
            EXPECT_EQ(count(again, "UPDATE"), 0);
            EXPECT_EQ(pairwise::difference(after, readWithoutCopies(file, before)), "");
            if (deletes == 0 || type == Compact::kCompactAll) {
                EXPECT_EQ(again, Texts());
            }
        }
    }
}

TEST_P(GeneratedCompactionTest, QualifierSetsAlone)
{
    for (const Compact::eCompactType type : types) {
        for (const int deletes : {0, 1}) {
            const eDSN dsn = type == deletes ? details : KorDSNDefinitions::kAddin;
            SCOPED_TRACE("type " + std::to_string(type) + ", delete flag " + std::to_string(deletes));
            const std::string file = attach(dsn, GetParam().shape);
            const Contents before = pairwise::readFile(file);
            pairwise::Compaction expected(read(dsn), before);
            expected.runQualifierSets(static_cast<pairwise::Type>(type), deletes != 0);
            StatementRecorder recorder;
            EXPECT_EQ(Compact::compactQualifierSets(dsn, deletes, type), 1);
            EXPECT_EQ(pairwise::difference(expected.contents, readWithoutCopies(file, before)), "");
            EXPECT_EQ(count(recorder.take(), "UPDATE"), expected.statements);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shape, GeneratedCompactionTest, testing::ValuesIn(cases()),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(CompactionPropertyTest, OneRowOfEachKindIsLeftWhenAllAreEqual)
{
    const std::string file = attach(KorDSNDefinitions::kAddin, shape(11, 300, 1, 0));
    EXPECT_EQ(Compact::startCompactProcess(KorDSNDefinitions::kAddin, 1, Compact::kCompactAll), 1);
    Contents left = pairwise::readFile(file);
    std::string rows;
    for (const char* table :
         {"DetViewSystemAndBox", "DetViewLengthClip", "DetViewDimStrategyNew", "DetViewArrangeStrategy",
          "DetArrangerControl", "DetArrangerStrategy", "DetAnnotationType", "DetObjAnnotationStrategy",
          "DetObjQualifierSet", "DetObjReprMapsNew", "DetViewDimPointSelection", "DetViewDimRequestLinear",
          "DetViewRequest", "DetViewRequestCategories", "DetailProcessStep", "DetailFilenameSelector",
          "DetailProcessMain2CutScale", "DetailProcessScales", "DetailStyleMapNew"})
        if (left[table].rows.size() != 1)
            rows += std::string(table) + " " + std::to_string(left[table].rows.size()) + "\n";
    EXPECT_EQ(rows, "");
    EXPECT_GT(left["DetailStyle"].rows.size(), 1u); // styles stay
    EXPECT_GT(left["DetailProcessDefinition"].rows.size(), 1u);
}

} // namespace
