#include "repository/DetailDatabase.h"
#include "repository/Manifest.h"
#include "support/CrashCycle.h"
#include "support/OtherProgram.h"
#include "support/TableModel.h"

#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

#include <random>
#include <sstream>

using namespace crash;

namespace {

constexpr std::pair<eDSN, eIndex> places[] = {{KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase},
                                              {KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin},
                                              {KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(1)},
                                              {KorDSNDefinitions::kCountryAddin, static_cast<eIndex>(2)}};
constexpr const char* files[] = {"details.db", "addin.db", "norway.db", "france.db"};

/// The tables; all have a key and, behind it, a name.
const struct {
    Man::eTableType type;
    const RecordDescription& (*description)();
    void* current;
} tables[] = {
    {Man::kLinetypes, descriptionOf<StructLinetypes>, &Man::m_structLinetypes},
    {Man::kDetViewLengthClip, descriptionOf<StructDetViewLengthClip>, &Man::m_structDetViewLengthClip},
    {Man::kDetailProcessSelection, descriptionOf<StructDetailProcessSelection>,
     &Man::m_structDetailProcessSelection},
};
constexpr std::initializer_list<Man::eTableType> allTypes = {Man::kLinetypes, Man::kDetViewLengthClip,
                                                             Man::kDetailProcessSelection};

/// One thing that a program does.
struct Step {
    char what = 'e'; // see perform
    int program = 0, database = 0, type = 0, depth = 0;
    int row = 0;     // the how manieth
    int request = 0; // a data source that is requested meanwhile, counted from 1
    std::string name = {};

    std::string text(int key) const
    {
        std::ostringstream out;
        out << what << ' ' << database << ' ' << type << ' ' << depth << ' ' << key << ' ' << request << ' '
            << name;
        return out.str();
    }
};

/// Batches that are open in this program.
std::vector<std::unique_ptr<KorDatabaseBatch>> batches;

std::string marksOf(int type)
{
    std::string out;
    for (const auto& [dsn, index] : places) {
        Man::setCurrentDSN(dsn);
        Man::setCurrentAddIn(index);
        for (int depth = 0; depth < Man::kCopies; ++depth) {
            const auto at = static_cast<Man::eCopyDepth>(depth);
            out += static_cast<char>('0' + (Man::getStatus(tables[type].type, at) == Man::eModified) +
                                     2 * Man::isOpen(tables[type].type, at));
        }
    }
    return out;
}

/// Does a step in this program: the result, and the marks of the type.
std::string perform(const fs::path& folder, const std::string& order)
{
    std::istringstream in(order);
    char what = 0;
    int database = 0, type = 0, depthNumber = 0, key = 0, request = 0;
    std::string name = {};
    in >> what >> database >> type >> depthNumber >> key >> request >> name;
    const auto& table = tables[type];
    const auto depth = static_cast<Man::eCopyDepth>(depthNumber);
    const eDSN dsn = places[database].first;
    const eIndex index = places[database].second;
    if (what == 'S') { // starts, on a repository that it leaves as it is when it has one
        korodbc::host::closeRepository();
        start(folder);
        return "1 " + marksOf(type);
    }
    std::optional<KorDSNRequest> held;
    if (request > 0)
        held.emplace(places[request - 1].first, places[request - 1].second);
    Man::setCurrentDSN(dsn);
    Man::setCurrentAddIn(index);
    const auto read = [&] {
        const KorDSNRequest here(dsn, index);
        return RecordAccess::readByKey(table.description(), key, table.current);
    };
    const auto named = [&] { table.description().runNameColumn()->text(table.current) = details::text(name); };
    KorTableEdit dialog(allTypes, depth);
    std::string rows;
    const std::map<char, std::function<int()>> acts = {
        {'e', [&] { return Man::setAttribute(table.type, KorOdbcKey(key), 1, details::text(name), 1, depth); }},
        {'s',
         [&] {
             const int found = read();
             named();
             return found == 1 ? Man::storeCurrentRecord(table.type, depth) : found;
         }},
        {'a',
         [&] {
             named();
             return Man::appendNewRecord(table.type, 0, depth);
         }},
        {'x', [&] { return Man::deleteRecord(table.type, KorOdbcKey(key), depth); }},
        {'o', [&] { return Man::setStatusOnOK(table.type, depth); }},
        {'c', [&] { return Man::setStatusOnCancel(table.type, depth); }},
        {'u', [&] { return Man::setStatusOnUpdate(table.type, depth); }},
        {'D', [&] { return dialog.begin(); }},
        {'O', [&] { return dialog.ok(); }},
        {'C', [&] { return dialog.cancel(); }},
        {'U', [&] { return dialog.update(); }},
        {'B',
         [] {
             batches.push_back(std::make_unique<KorDatabaseBatch>());
             return 1;
         }},
        {'k', [] { return batches.back()->end(1); }},
        {'z', [] { return batches.back()->undo(1); }},
        {'r',
         [&] {
             const KorDSNRequest here(dsn, index);
             RecordAccess::resetCache(table.description());
             TableModel::Rows found;
             RecordAccess::visit(table.description(), [&](const void* record) {
                 found[table.description().keyOf(record)] =
                     table.description().runNameColumn()->text(record).toUtf8();
                 return true;
             });
             rows = TableModel::text(found);
             return 1;
         }},
    };
    const int result = acts.at(what)();
    if (what == 'k' || what == 'z')
        batches.pop_back();
    return std::to_string(result) + " " + marksOf(type) + rows;
}

/// Reads tables past the library.
class Onlooker {
public:
    explicit Onlooker(const fs::path& folder)
    {
        for (const char* file : files)
            sqlite3_open((folder / file).c_str(), &m_databases.emplace_back());
    }
    ~Onlooker()
    {
        for (sqlite3* database : m_databases)
            sqlite3_close(database);
    }
    /// As the model's text.
    std::string text(int type) const
    {
        std::string out;
        for (sqlite3* database : m_databases) {
            const std::string table(tables[type].description().table);
            out += rows(database, table);
            for (int depth = 0; depth < Man::kCopies; ++depth) {
                const std::string copy = table + KorString(Man::ccKorVELCopyString[depth]).toUtf8();
                if (!query(database, "SELECT 1, 1 FROM sqlite_master WHERE name = '" + copy + "'").empty())
                    out += " copy " + std::to_string(depth) + ":" + rows(database, copy);
            }
            out += "\n";
        }
        return out;
    }

private:
    static std::string query(sqlite3* database, const std::string& sql)
    {
        std::string out;
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            return sqlite3_errmsg(database);
        while (sqlite3_step(statement) == SQLITE_ROW)
            out += " " + std::to_string(sqlite3_column_int(statement, 0)) + "=" +
                   reinterpret_cast<const char*>(sqlite3_column_text(statement, 1));
        sqlite3_finalize(statement);
        return out;
    }
    static std::string rows(sqlite3* database, const std::string& table)
    {
        return query(database, "SELECT * FROM [" + table + "] ORDER BY [Key]");
    }

    std::vector<sqlite3*> m_databases;
};

fs::path pristine() { return scratch() / "pristine"; }

/// A course of steps, in this process or by programs in their own.
class Course {
public:
    Course(int programs, int number) : m_folder(scratch() / ("course" + std::to_string(number)))
    {
        copyFolder(pristine(), m_folder);
        for (int database = 0; database < TableModel::databases; ++database)
            for (int type = 0; type < TableModel::types; ++type)
                for (int key = 1; key <= 3; ++key)
                    m_model.tables[database][type].rows[key] = "row" + std::to_string(key);
        if (programs == 1) {
            m_onlooker.emplace(m_folder);
            perform(m_folder, "S 0 0 0 0 0");
        } else {
            m_reader = std::make_unique<OtherProgram>([this](const std::string& type) {
                if (!m_onlooker)
                    m_onlooker.emplace(m_folder);
                return m_onlooker->text(std::stoi(type));
            });
            for (int program = 0; program < programs; ++program)
                begin(program);
        }
    }
    ~Course()
    {
        batches.clear();
        if (m_programs.empty())
            korodbc::host::closeRepository();
        m_onlooker.reset();
        m_reader.reset();
        m_programs.clear();
        fs::remove_all(m_folder);
    }
    Course(const Course&) = delete;
    Course& operator=(const Course&) = delete;

    /// Empty, or what differs from the model after the step.
    std::string take(const Step& step)
    {
        if (!m_undo.empty() && (step.program != m_inBatch || step.what == 'S' || step.what == 'K'))
            return {};
        if ((step.what == 'k' || step.what == 'z') && m_undo.empty())
            return {};
        int key = 0;
        const TableModel::Rows& rows = m_model.tables[step.database][step.type].rows;
        if (std::strchr("esx", step.what) != nullptr) {
            if (rows.empty())
                return {};
            key = std::next(rows.begin(), step.row % static_cast<long>(rows.size()))->first;
        }
        if (step.what == 'K' && !m_programs.empty()) { // as it stands
            begin(step.program);
        }
        const std::string order = step.what == 'K' ? Step{.what = 'S', .type = step.type}.text(0) : step.text(key);
        std::string found = tell(step.program, order);
        const std::string expected = account(step, key, found);
        if (found != expected)
            return "answers " + found + " and not " + expected;
        return m_undo.empty() ? compare(step.type) : std::string();
    }
    /// Of all tables.
    std::string compareAll() const
    {
        std::string all;
        for (int type = 0; type < TableModel::types && m_undo.empty(); ++type)
            all += compare(type);
        return all;
    }

private:
    void begin(int program)
    {
        m_programs.resize(std::max(m_programs.size(), static_cast<std::size_t>(program) + 1));
        auto& made = m_programs[static_cast<std::size_t>(program)];
        made =
            std::make_unique<OtherProgram>([this](const std::string& order) { return perform(m_folder, order); });
        made->ask("S 0 0 0 0 0");
    }
    std::string tell(int program, const std::string& order) const
    {
        return m_programs.empty() ? perform(m_folder, order)
                                  : m_programs[static_cast<std::size_t>(program)]->ask(order);
    }
    std::string compare(int type) const
    {
        const std::string found = m_reader ? m_reader->ask(std::to_string(type)) : m_onlooker->text(type);
        const std::string expected = m_model.text(type);
        return found == expected ? ""
                                 : "type " + std::to_string(type) + " holds\n" + found + "and not\n" + expected;
    }
    /// Brings the model along; the answer that belongs to the step. The key of a new row is the service's choice.
    std::string account(const Step& step, int key, const std::string& found)
    {
        using enum TableModel::Closing;
        const int program = step.program, type = step.type, depth = step.depth;
        TableModel::Rows& rows = m_model.tables[step.database][type].rows;
        int result = 1;
        std::string read;
        switch (step.what) {
        case 'e':
        case 's':
        case 'x':
            if (!m_model.mark(program, step.database, type, depth))
                result = 0;
            else if (step.what != 'x')
                rows[key] = step.name;
            else
                rows.erase(key);
            break;
        case 'a':
            result = -1;
            if (m_model.mark(program, step.database, type, depth)) {
                result = std::atoi(found.c_str());
                if (result <= 0 || rows.contains(result))
                    return "a free key";
                rows[result] = step.name;
            }
            break;
        case 'o':
        case 'c':
        case 'u':
            m_model.close(program, type, depth, step.what == 'o' ? Ok : step.what == 'c' ? Cancel : Update);
            break;
        case 'D':
            for (int of = 0; of < TableModel::types; ++of)
                result = result == 1 && m_model.tables[step.database][of].holder >= 0 &&
                                 m_model.tables[step.database][of].holder != program
                             ? 0
                             : result;
            for (int of = 0; of < TableModel::types && result == 1; ++of)
                m_model.mark(program, step.database, of, depth);
            break;
        case 'O':
        case 'C':
        case 'U':
            for (int of = 0; of < TableModel::types; ++of) {
                for (int deeper = TableModel::depths - 1; deeper > depth; --deeper)
                    if (m_model.isOpenAnywhere(program, of, deeper))
                        m_model.close(program, of, deeper, step.what == 'C' ? Cancel : Ok);
                m_model.close(program, of, depth, step.what == 'O' ? Ok : step.what == 'C' ? Cancel : Update);
            }
            break;
        case 'B':
            m_undo.push_back(m_model);
            m_inBatch = program;
            break;
        case 'z':
            m_model = m_undo.back();
            m_undo.pop_back();
            break;
        case 'k':
            m_undo.pop_back();
            break;
        case 'r':
            read = TableModel::text(rows);
            break;
        default: // 'S', 'K'
            m_model.end(program);
            m_model.start();
        }
        return std::to_string(result) + " " + m_model.marksText(program, type) + read;
    }

    const fs::path m_folder;
    TableModel m_model;
    std::vector<TableModel> m_undo; // at the start of each open batch
    int m_inBatch = 0;
    std::vector<std::unique_ptr<OtherProgram>> m_programs; // none: this process is the program
    std::unique_ptr<OtherProgram> m_reader;
    std::optional<Onlooker> m_onlooker;
};

std::vector<Step> randomSteps(unsigned seed, int programs, int count)
{
    std::mt19937 random(seed);
    const auto pick = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    static const std::string kinds = "eeeeeeesssaaaxxoooooccccccuuuDOCUBkkzzrrrrSK";
    std::vector<Step> steps;
    for (int i = 0; i < count; ++i) {
        Step step;
        step.what = kinds[static_cast<std::size_t>(pick(static_cast<int>(kinds.size())))];
        step.program = pick(programs);
        // in a batch the same program mostly goes on
        if (!steps.empty() && pick(4) != 0)
            step.program = steps.back().program;
        step.database = pick(TableModel::databases);
        step.type = pick(3) == 0 ? pick(TableModel::types) : 0;
        step.depth = pick(TableModel::depths);
        step.row = pick(5);
        step.request = std::max(0, pick(8) - 3);
        step.name = "n" + std::to_string(i);
        steps.push_back(step);
    }
    return steps;
}

/// The first difference of a course; `last` becomes the number of steps up to it.
std::string run(const std::vector<Step>& steps, int programs, std::size_t* last = nullptr)
{
    static int number = 0;
    Course course(programs, ++number);
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::string wrong = course.take(steps[i]);
        if (wrong.empty() && (i % 50 == 49 || i + 1 == steps.size()))
            wrong = course.compareAll();
        if (!wrong.empty()) {
            if (last != nullptr)
                *last = i + 1;
            return wrong;
        }
    }
    return {};
}

/// The fewest of the steps that still differ.
std::vector<Step> shrunk(std::vector<Step> steps, int programs)
{
    for (std::size_t size = std::max<std::size_t>(steps.size() / 2, 1);; size /= 2) {
        for (std::size_t at = 0; at + size <= steps.size();) {
            std::vector<Step> fewer = steps;
            fewer.erase(fewer.begin() + static_cast<long>(at), fewer.begin() + static_cast<long>(at + size));
            std::size_t last = 0;
            if (!fewer.empty() && !run(fewer, programs, &last).empty())
                steps.assign(fewer.begin(), fewer.begin() + static_cast<long>(last));
            else
                at += size;
        }
        if (size <= 1)
            return steps;
    }
}

class RandomEditsTest : public testing::TestWithParam<int> {
protected:
    static void SetUpTestSuite()
    {
        using korodbc::host::Database;
        fs::remove_all(scratch());
        fs::create_directories(pristine());
        korodbc::host::Manifest manifest;
        manifest.connections[KorDSNDefinitions::kDetails] = "sqlite:details.db";
        manifest.connections[KorDSNDefinitions::kAddin] = "sqlite:addin.db";
        manifest.connections[KorDSNDefinitions::kConfiguration] = "sqlite:configuration.db";
        manifest.countryAddIns = {{"no", "Norway", "sqlite:norway.db"}, {"fr", "France", "sqlite:france.db"}};
        std::string error;
        ASSERT_TRUE(manifest.save(pristine(), error)) << error;
        const auto make = [&](const char* file, eDSN dsn) {
            korodbc::host::HostError reason;
            const auto database = Database::open((pristine() / file).string(), Database::Access::Create, reason);
            ASSERT_TRUE(database != nullptr && korodbc::host::createTables(*database, dsn, reason)) << reason.text;
            std::set<std::string> kept = {"Authors", "Default_STR"};
            for (const auto& table : tables) {
                const RecordDescription& type = table.description();
                const std::string name(type.table),
                    columns = "([Key], [" + std::string(type.columns[1].name) + "])";
                for (int key = 1; key <= 3 && dsn != KorDSNDefinitions::kConfiguration; ++key)
                    ASSERT_TRUE(database->run("INSERT INTO [" + name + "] " + columns + " VALUES (" +
                                              std::to_string(key) + ", 'row" + std::to_string(key) + "')"));
                kept.insert(name);
            }
            for (const std::string& table : database->tableNames())
                if (!kept.contains(table)) {
                    ASSERT_TRUE(database->run("DROP TABLE [" + table + "]"));
                }
        };
        for (int i = 0; i < TableModel::databases; ++i)
            make(files[i], places[i].first);
        make("configuration.db", KorDSNDefinitions::kConfiguration);
    }
    static void TearDownTestSuite() { fs::remove_all(scratch()); }
};

/// The parameter is the number of programs.
TEST_P(RandomEditsTest, EndsAsThePlainTablesDo)
{
    const int programs = GetParam();
    const char* const asked = std::getenv("KORODBC_RANDOM_STEPS");
    const int share = programs == 1 ? 4 : 1; // of five: processes take longer to answer
    const int all = (asked != nullptr ? std::atoi(asked) : ends == 3 ? 5000 : 100000) * share / 5;
    constexpr int each = 400;
    for (int done = 0; done < all; done += each) {
        const auto seed = static_cast<unsigned>(1000 * programs + done / each);
        const std::vector<Step> steps = randomSteps(seed, programs, each);
        std::size_t last = 0;
        const std::string wrong = run(steps, programs, &last);
        if (wrong.empty())
            continue;
        const auto few = shrunk({steps.begin(), steps.begin() + static_cast<long>(last)}, programs);
        std::string listed;
        for (const Step& step : few)
            listed += "\n  program " + std::to_string(step.program) + ": " + step.text(step.row);
        FAIL() << "seed " << seed << ", step " << last << ": " << wrong << "\nfewest steps:" << listed << "\n"
               << run(few, programs);
    }
}

INSTANTIATE_TEST_SUITE_P(Programs, RandomEditsTest, testing::Values(1, 2, 3));

} // namespace
