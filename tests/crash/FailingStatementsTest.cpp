#include "service/Service.h"
#include "support/CrashCycle.h"
#include "support/DetailFixture.h"
#include "support/EngineHandle.h"

#include <korodbc/catalogues/DetailGroups.h>
#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/edit/KorODBCDetStyle.h>
#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/host/Observer.h>
#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/project/KorODBCProjectUser.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>

#include <sstream>

namespace {

using Man = KorOdbcMan;
using Exports = KorODBCDetailStyleExports;
using Compact = KorOdbcCompactDetailsTables;
constexpr eDSN inDetails = KorDSNDefinitions::kDetails;
constexpr eDSN inAddin = KorDSNDefinitions::kAddin;
constexpr eDSN inToolbars = KorDSNDefinitions::kToolbars;

/// What a failed operation leaves, and what it says.
enum class Leaves {
    Nothing,  // the state before, and another result than that of success
    Copies,   // the same, but the tables stay marked, with their copies; one that could not be copied is edited
    Either,   // the same in each database, or the state after
    Rows,     // the rows that were written stay
    Tables,   // each table as before or after; the next try does the rest
    Answered, // it may say that it succeeded; the state before or after
};

struct Operation {
    const char* name;
    Leaves leaves;
    std::function<void()> prepare; // without failures; may be empty
    std::function<bool()> act;
};

void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

KorTableEdit dialog(Man::eCopyDepth depth = Man::kFirstCopy)
{
    return KorTableEdit({Man::kDetailStyle, Man::kDetViewArrangeStrategy, Man::kDetObjReprMap}, depth);
}

bool title(Man::eCopyDepth depth = Man::kFirstCopy)
{
    return Man::setAttribute(Man::kDetailStyle, KorOdbcKey(1), 5, L"edited", 1, depth) == 1;
}

void editBoth()
{
    for (const auto& [dsn, index, key] : {std::tuple(inDetails, KorDSNDefinitions::kBase, 1),
                                          std::tuple(inAddin, KorDSNDefinitions::kFirstAddin, 101)}) {
        Man::setCurrentDSN(dsn);
        Man::setCurrentAddIn(index);
        EXPECT_EQ(Man::setAttribute(Man::kDetailStyle, KorOdbcKey(key), 5, L"edited", 1, Man::kFirstCopy), 1);
    }
    Man::setCurrentDSN(inDetails);
    Man::setCurrentAddIn(KorDSNDefinitions::kBase);
}

void editDialog()
{
    EXPECT_EQ(dialog().begin(), 1);
    title();
    StructDetObjReprMapMarshal::getStructByKey(1, Man::m_structDetObjReprMap);
    Man::m_structDetObjReprMap.items.deleteAt(0);
    EXPECT_EQ(Man::storeCurrentRecord(Man::kDetObjReprMap, Man::kFirstCopy), 1);
}

void copyOfStyles()
{
    EXPECT_EQ(KorOdbcGUI::backupTable(L"DetailStyle", L"Saved", inDetails), 1);
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(inDetails, L"UPDATE DetailStyle SET TitleFormat = 'changed'"), 1);
}

void leftCopies()
{
    for (const wchar_t* table : {L"Linetypes", L"DetailStyle"})
        EXPECT_EQ(KorDatabaseAccess::doSQLStatement(
                      inDetails, KorString::format(L"CREATE TABLE %s_VELCopy AS SELECT * FROM %s WHERE [Key] = 2",
                                                   KorString(table), KorString(table))),
                  1);
    Man::m_bInitializeTables = true;
}

using User = KorODBCProjectUser;

/// A report template with its document, under the keys 1.
void projectTemplate()
{
    StructProjXMLData xml;
    StructProjTemplate made;
    EXPECT_EQ(User::putXMLData(xml), 1);
    made.xmlData = xml.key;
    EXPECT_EQ(User::save(made), 1);
}

bool transfer(Exports::eType type)
{
    KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = 1;
    return Exports::importDetail(type, KorOdbcKey(101), inAddin, KorDSNDefinitions::kFirstAddin, inDetails,
                                 KorDSNDefinitions::kBase) == 1;
}

const Operation operations[] = {
    // edits
    {"attribute", Leaves::Copies, nullptr, [] { return title(); }},
    {"attribute in an open dialog", Leaves::Copies, [] { title(); }, [] { return title(Man::kSecondCopy); }},
    {"new style with more requests than columns", Leaves::Copies,
     [] {
         StructDetailStyleMarshal::getStructByKey(1, Man::m_structDetailStyle);
         Man::m_structDetailStyle.requests = details::list<int>({1, 2, 1, 2, 1, 2, 1, 2, 1, 2});
     },
     [] { return Man::appendNewRecord(Man::kDetailStyle, 0, Man::kFirstCopy) > 0; }},
    {"new map", Leaves::Copies, [] { StructDetObjReprMapMarshal::getStructByKey(1, Man::m_structDetObjReprMap); },
     [] { return Man::appendNewRecord(Man::kDetObjReprMap, 0, Man::kFirstCopy) > 0; }},
    {"stored map", Leaves::Copies,
     [] {
         StructDetObjReprMapMarshal::getStructByKey(1, Man::m_structDetObjReprMap);
         Man::m_structDetObjReprMap.runName = L"renamed";
     },
     [] { return Man::storeCurrentRecord(Man::kDetObjReprMap, Man::kSecondCopy) == 1; }},
    {"stored qualifier set", Leaves::Copies,
     [] {
         StructDetObjQualifierSetMarshal::getStructByKey(1, Man::m_structDetObjQualifierSet);
         Man::m_structDetObjQualifierSet.items.deleteAt(0);
     },
     [] { return Man::storeCurrentRecord(Man::kDetObjQualifierSet, Man::kFirstCopy) == 1; }},
    {"deletion", Leaves::Copies, nullptr,
     [] { return Man::deleteRecord(Man::kDetViewRequest, KorOdbcKey(2), Man::kFirstCopy) == 1; }},
    {"item columns", Leaves::Nothing, nullptr,
     [] { return Man::AddItemColumns(Man::kDetArrangerControl, 9) == 1; }},
    {"request categories", Leaves::Answered, [] { Man::m_structDetViewRequest.key = -1; },
     [] {
         StructDetViewRequest request;
         StructDetViewRequestMarshal::getStructByKey(1, request);
         request.categories =
             details::list<StructDetViewRequestCategory>({{1, 2, 1, 1}, {-1, 1, 1, 0}, {-1, 2, 1, 0}});
         return KorODBCDetStyle::setDetViewRequestCategories(request) == 1;
     }},
    // closings
    {"OK", Leaves::Nothing, [] { title(); },
     [] { return Man::setStatusOnOK(Man::kDetailStyle, Man::kFirstCopy) == 1; }},
    {"Cancel", Leaves::Nothing, [] { title(); },
     [] { return Man::setStatusOnCancel(Man::kDetailStyle, Man::kFirstCopy) == 1; }},
    {"Update", Leaves::Nothing, [] { title(); },
     [] { return Man::setStatusOnUpdate(Man::kDetailStyle, Man::kFirstCopy) == 1; }},
    {"OK in two databases", Leaves::Either, editBoth,
     [] { return Man::setStatusOnOK(Man::kDetailStyle, Man::kFirstCopy) == 1; }},
    {"Cancel in two databases", Leaves::Either, editBoth,
     [] { return Man::setStatusOnCancel(Man::kDetailStyle, Man::kFirstCopy) == 1; }},
    {"Cancel of a style with new columns", Leaves::Nothing,
     [] {
         StructDetailStyleMarshal::getStructByKey(1, Man::m_structDetailStyle);
         Man::m_structDetailStyle.requests = details::list<int>({1, 2, 1, 2, 1, 2, 1, 2, 1, 2});
         Man::appendNewRecord(Man::kDetailStyle, 0, Man::kFirstCopy);
     },
     [] { return Man::setStatusOnCancel(Man::kDetailStyle, Man::kFirstCopy) == 1; }},
    {"start of a dialog", Leaves::Copies, nullptr, [] { return dialog().begin() == 1; }},
    {"OK of a dialog", Leaves::Nothing, editDialog, [] { return dialog().ok() == 1; }},
    {"Cancel of a dialog", Leaves::Nothing, editDialog, [] { return dialog().cancel() == 1; }},
    {"Update of a dialog", Leaves::Nothing, editDialog, [] { return dialog().update() == 1; }},
    {"recovery", Leaves::Tables, leftCopies,
     [] {
         Man::m_bInitializeTables = true;
         return Man::initializeTables() == 1;
     }},
    // project records
    {"new project record", Leaves::Nothing, nullptr,
     [] {
         StructProjModelSelection selection;
         const bool saved = User::save(selection) == 1;
         EXPECT_EQ(selection.key > 0, saved);
         return saved;
     }},
    {"changed project record", Leaves::Nothing, projectTemplate,
     [] {
         StructProjTemplate made;
         User::getTemplate(1, made, 0);
         made.description = L"changed";
         return User::save(made) == 1;
     }},
    {"document", Leaves::Nothing, nullptr,
     [] {
         StructProjXMLData xml;
         const bool stored = User::putXMLData(xml) == 1;
         EXPECT_EQ(xml.key > 0, stored);
         return stored;
     }},
    {"deleted template", Leaves::Nothing, projectTemplate,
     [] {
         StructProjTemplate made;
         made.key = 1;
         return User::deleteTemplate(made) == 1;
     }},
    // maintenance
    {"backup", Leaves::Nothing, nullptr,
     [] { return KorOdbcGUI::backupTable(L"DetailStyle", L"Saved", inDetails) == 1; }},
    {"restored table", Leaves::Answered, copyOfStyles,
     [] { return KorOdbcGUI::restoreTable(L"DetailStyle", L"Saved", inDetails) == 1; }},
    {"restored table, wherever it is", Leaves::Answered, copyOfStyles,
     [] { return KorOdbcGUI::restoreTable(L"DetailStyle", L"Saved") == 1; }},
    {"new columns", Leaves::Nothing, nullptr,
     [] {
         return KorOdbcGUI::setNewColumns(
                    L"DetailStyle", korTexts({"Width INT", "Height INT", "Name2 VARCHAR(9)"}), inDetails) == 1;
     }},
    {"menu", Leaves::Nothing, nullptr, [] { return KorOdbcGUI::reopenMenu() == 1; }},
    {"toolbar", Leaves::Nothing, nullptr,
     [] {
         return KorOdbcGUI::putToolbarInformation({1, L"changed", L"tip", 2, 3, 1, 4}) == 1;
     }},
    {"group of annotations", Leaves::Nothing, nullptr,
     [] {
         StructDetObjAnnotationGroup group{-1, L"new group", 99};
         return KorODBCDetObjAnnotationGroup::saveDetObjAnnotationGroup(group, 1) == 1;
     }},
    {"group of chains", Leaves::Nothing, nullptr,
     [] {
         StructDetViewDimRequestLinearGroup group{1, L"renamed", 99};
         return KorODBCDetViewDimRequestLinearGroup::saveDetViewDimRequestLinearGroup(group, 0) == 1;
     }},
    // transfers
    {"import", Leaves::Rows, nullptr, [] { return transfer(Exports::kDetailStyle); }},
    {"import of a process", Leaves::Rows, nullptr, [] { return transfer(Exports::kDetailProcess); }},
    // compactions
    {"compaction of styles", Leaves::Rows, nullptr,
     [] { return Compact::startCompactProcess(inDetails, 1, Compact::kCompactDetailStyles) == 1; }},
    {"compaction of all", Leaves::Rows, nullptr,
     [] { return Compact::startCompactProcess(inDetails, 1, Compact::kCompactAll) == 1; }},
    {"compaction of qualifier sets", Leaves::Rows, nullptr,
     [] { return Compact::compactQualifierSets(inDetails, 1, Compact::kCompactDetailStyles) == 1; }},
    {"numbering of qualifier sets", Leaves::Rows, nullptr,
     [] { return Compact::compactQualifierSets(inDetails, 0, Compact::kCompactDetailProcesses) == 1; }},
};

constexpr std::pair<eDSN, eIndex> places[] = {{inDetails, KorDSNDefinitions::kBase},
                                              {inAddin, KorDSNDefinitions::kFirstAddin},
                                              {inToolbars, KorDSNDefinitions::kBase}};
using Dumps = std::array<std::string, std::size(places)>;

korodbc::host::Database& connection(std::size_t place)
{
    return *korodbc::host::service().database(places[place].first, places[place].second);
}

Dumps dumps()
{
    Dumps all;
    for (std::size_t i = 0; i < all.size(); ++i) {
        connection(i).flush();
        all[i] = crash::dump(handleOf(connection(i)));
    }
    return all;
}

/// Marks and flags of every type and depth, in the first two databases.
std::string marks()
{
    std::string out;
    for (std::size_t place = 0; place < 2; ++place) {
        Man::setCurrentDSN(places[place].first);
        Man::setCurrentAddIn(places[place].second);
        for (int type = 0; type < Man::kTableTypes; ++type)
            for (int depth = 0; depth < Man::kCopies; ++depth) {
                const auto of = static_cast<Man::eTableType>(type);
                const auto at = static_cast<Man::eCopyDepth>(depth);
                if (Man::getStatus(of, at) == Man::eModified || Man::isOpen(of, at))
                    out += std::to_string(place) + ":" + std::to_string(type) + "/" + std::to_string(depth) +
                           (Man::getStatus(of, at) == Man::eModified ? " modified" : " open") + "\n";
            }
    }
    Man::setCurrentDSN(inDetails);
    Man::setCurrentAddIn(KorDSNDefinitions::kBase);
    return out;
}

/// The same without regard to what is modified: a closing that fails leaves a copy that counts as clean.
std::string open(std::string marks)
{
    for (std::size_t at; (at = marks.find("modified")) != std::string::npos;)
        marks.replace(at, std::strlen("modified"), "open");
    return marks;
}

/// The sections of a dump: its tables by name, or the copies under which they are edited.
std::map<std::string, std::string> sections(const std::string& whole, bool copies)
{
    std::map<std::string, std::string> tables;
    const std::string dump = whole + "[";
    for (std::size_t from = dump.find("\n["); from != std::string::npos;) {
        const std::size_t end = dump.find("\n[", from + 1);
        if (end == std::string::npos)
            break;
        const std::string section = dump.substr(from + 1, end - from - 1);
        const std::string name = section.substr(1, section.find(']') - 1);
        if ((name.find("_VEL") != std::string::npos || name == "Saved") == copies)
            tables[name] = section.substr(section.find('\n'));
        from = end;
    }
    return tables;
}

/// A dump without the first cell of its lines.
std::string withoutKeys(const std::string& dump)
{
    std::string out, line;
    for (std::istringstream in(dump); std::getline(in, line); out += "\n")
        out += line.starts_with("[") ? line : line.substr(std::min(line.find('|'), line.size()));
    return out;
}

/// A repository in memory that is as before for every try.
class FailingStatementsTest : public DetailTest, public testing::WithParamInterface<Operation> {
protected:
    void SetUp() override
    {
        DetailTest::SetUp();
        details::fillProcess(inDetails, details::awkward);
        details::fillProcess(inAddin, "add-in", 100);
        details::put(inDetails, StructDetailProcessSelection{101, L"all", L"ALL", L""});
        details::put(inDetails, StructDetailProcessSort{101, L"none", L"", L""});
        if (std::string(GetParam().name).find("compaction") != std::string::npos ||
            std::string(GetParam().name).find("numbering") != std::string::npos)
            crash::fillTwins(inDetails);
        for (const char* table : {"Toolbars", "ToolbarsDefault"})
            for (const int key : {1, 2, 3})
                sql(inToolbars, {"INSERT INTO " + std::string(table) + " VALUES (" + std::to_string(key) + ", '" +
                                 table + "', '', -1, 0, 0, 0)"});
        for (std::size_t i = 0; i < std::size(places); ++i) {
            connection(i).flush();
            sqlite3_open(":memory:", &m_saved[i]);
            copy(handleOf(connection(i)), m_saved[i]);
        }
    }
    void TearDown() override
    {
        korodbc::host::setStatementFault({});
        for (sqlite3* saved : m_saved)
            sqlite3_close(saved);
        DetailTest::TearDown();
    }
    static void copy(sqlite3* from, sqlite3* to)
    {
        sqlite3_backup* backup = sqlite3_backup_init(to, "main", from, "main");
        ASSERT_NE(backup, nullptr) << sqlite3_errmsg(to);
        EXPECT_EQ(sqlite3_backup_step(backup, -1), SQLITE_DONE);
        sqlite3_backup_finish(backup);
    }
    /// As it was, with the operation prepared.
    void again()
    {
        for (std::size_t i = 0; i < std::size(places); ++i) {
            korodbc::host::Claims& claims = connection(i).claims();
            for (int type = 0; type < Man::kTableTypes; ++type) {
                KorString name;
                Man::getTableName(DetailTest::type(type), name);
                claims.giveBack(name.toUtf8());
            }
            connection(i).dropCaches();
            copy(m_saved[i], handleOf(connection(i)));
            connection(i).rollback(); // of nothing: what is known of keys goes, too
        }
        sql(country, {"DELETE FROM Linetypes"});
        Copy::ResetDeepCopyInfo();
        Man::InitializeStatics::release();
        Man::InitializeStatics::build();
        ASSERT_EQ(Man::initializeTables(), 1);
        if (GetParam().prepare)
            GetParam().prepare();
    }
    /// The operation, with the n-th statement that writes failing; 0: none. Whether it says that it succeeded.
    bool act(long failing)
    {
        m_statements = 0;
        korodbc::host::setStatementFault([this, failing](std::string_view sql) {
            if (++m_statements == failing)
                m_failed = sql;
            return m_statements == failing;
        });
        const bool done = GetParam().act();
        korodbc::host::setStatementFault({});
        return done;
    }
    /// Tables without their copies; of the copies that they are what was there before.
    static void expectTables(const std::string& found, const std::string& expected, const std::string& before)
    {
        const auto tables = sections(before, false);
        EXPECT_TRUE(sections(found, false) == sections(expected, false)) << crash::difference(expected, found);
        for (const auto& [name, content] : sections(found, true)) {
            const std::string original = name.substr(0, name.find("_VEL"));
            if (sections(before, true).contains(name)) {
                EXPECT_EQ(content, sections(before, true).at(name)) << name;
            } else if (tables.contains(original)) {
                EXPECT_EQ(content, tables.at(original)) << name;
            }
        }
    }
    /// What an operation leaves in the details that said `done` although, or because, a statement failed.
    void expectLeft(bool done, const std::string& found, const std::string& inAddin)
    {
        const std::string &before = m_before[0], &after = m_after[0];
        const auto either = [&](std::size_t place, const std::string& left) {
            const std::string prefix = std::to_string(place) + ":";
            const auto here = [&](const std::string& all) {
                std::string lines, line;
                for (std::istringstream in(all); std::getline(in, line);)
                    lines += line.starts_with(prefix) ? line + "\n" : "";
                return lines;
            };
            EXPECT_TRUE(left == m_before[place] || left == m_after[place])
                << crash::difference(m_before[place], left);
            EXPECT_EQ(open(here(marks())), open(here(left == m_before[place] ? m_marksBefore : m_marksAfter)))
                << place;
        };
        switch (GetParam().leaves) {
        case Leaves::Nothing:
            EXPECT_FALSE(done);
            EXPECT_TRUE(found == before) << crash::difference(before, found);
            EXPECT_TRUE(inAddin == m_before[1]) << crash::difference(m_before[1], inAddin);
            EXPECT_EQ(open(marks()), open(m_marksBefore));
            break;
        case Leaves::Either:
            EXPECT_FALSE(done);
            either(0, found);
            either(1, inAddin);
            break;
        case Leaves::Copies:
            expectTables(found, done ? after : before, before);
            break;
        case Leaves::Tables:
            for (const auto& [name, content] : sections(found, false))
                EXPECT_TRUE(content == sections(before, false).at(name) ||
                            content == sections(after, false).at(name))
                    << name;
            break;
        case Leaves::Answered:
            if (done && found != before)
                expectTables(found, sections(found, false) == sections(before, false) ? before : after, before);
            else
                EXPECT_TRUE(found == before) << crash::difference(before, found);
            break;
        case Leaves::Rows: // a row whose key could not be kept got another
            if (done)
                expectTables(withoutKeys(found), withoutKeys(after), withoutKeys(before));
            break;
        }
        EXPECT_TRUE(found.starts_with("ok|\n"));
        for (const std::string& reference : dangling())
            EXPECT_TRUE(m_dangling.contains(reference)) << reference << " leads nowhere";
    }
    static std::set<std::string> dangling()
    {
        KorArray<KorDetailReference> found;
        KorDetailReferences::getDangling(inDetails, KorDSNDefinitions::kBase, found);
        std::set<std::string> texts;
        for (const KorDetailReference& one : found)
            texts.insert(one.table.toUtf8() + "." + one.column.toUtf8() + " " + std::to_string(one.targetKey));
        return texts;
    }

    std::array<sqlite3*, std::size(places)> m_saved{};
    Dumps m_before, m_after;
    std::string m_marksBefore, m_marksAfter, m_failed;
    std::set<std::string> m_dangling;
    long m_statements = 0;
};

/// How the operation is embedded.
enum Around { Bare, InBatch, KeptBatches, UndoneInner, UndoneOuter, Arounds };

TEST_P(FailingStatementsTest, LeavesWhatIsStated)
{
    again();
    m_before = dumps();
    m_marksBefore = marks();
    m_dangling = dangling(); // before, and after a run without failures
    EXPECT_TRUE(act(0));
    m_after = dumps();
    m_dangling.merge(dangling());
    m_marksAfter = marks();
    const long statements = m_statements;
    ASSERT_GT(statements, 0);
    ASSERT_TRUE(m_after != m_before);

    for (const long n : crash::sampled(statements, 3 * crash::ends / 2, crash::ends / 2)) {
        for (int around = Bare; around < Arounds; ++around) {
            SCOPED_TRACE(std::to_string(n) + " of " + std::to_string(statements) + ", around " +
                         std::to_string(around));
            again();
            bool done = false, kept = true;
            if (around == Bare) {
                done = act(n);
            } else if (around == InBatch) {
                KorDatabaseBatch batch;
                done = batch.end(act(n) ? 1 : 0) == 1;
            } else {
                KorDatabaseBatch outer;
                sql(country, {"INSERT INTO Linetypes VALUES (9, 'by the host', '')"});
                {
                    KorDatabaseBatch inner;
                    done = act(n);
                    done = (around == UndoneInner ? inner.undo(done) : inner.end(done)) == 1;
                }
                kept = around == KeptBatches;
                done = (around == UndoneOuter ? outer.undo(done) : outer.end(done)) == 1;
            }
            SCOPED_TRACE(m_failed);
            const Dumps found = dumps();
            if (around >= KeptBatches) {
                EXPECT_EQ(rows(country, "Linetypes"), around == UndoneOuter ? Texts{} : Texts{"9|by the host|"});
            }
            if (kept) {
                expectLeft(done, found[0], found[1]);
            } else {
                EXPECT_TRUE(found[0] == m_before[0]) << crash::difference(m_before[0], found[0]);
                EXPECT_TRUE(found[1] == m_before[1]) << crash::difference(m_before[1], found[1]);
                EXPECT_EQ(marks(), m_marksBefore);
            }
            if (!kept || (GetParam().leaves == Leaves::Nothing && !done)) {
                EXPECT_TRUE(found[2] == m_before[2]) << crash::difference(m_before[2], found[2]);
            }
            // and once more, without a failure
            if (HasFailure())
                return;
            const bool whole =
                !kept || GetParam().leaves == Leaves::Nothing || GetParam().leaves == Leaves::Tables;
            if (done && !(kept && GetParam().leaves == Leaves::Tables))
                continue;
            if (kept && marks() != m_marksBefore && GetParam().leaves == Leaves::Nothing)
                GetParam().prepare(); // marked again
            EXPECT_TRUE(act(0));
            if (whole) {
                const Dumps last = dumps();
                for (std::size_t i = 0; i < last.size(); ++i)
                    EXPECT_TRUE(last[i] == m_after[i]) << crash::difference(m_after[i], last[i]);
                EXPECT_EQ(marks(), m_marksAfter);
            }
            if (HasFailure())
                return;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, FailingStatementsTest, testing::ValuesIn(operations),
                         [](const auto& operation) {
                             std::string name;
                             for (const char c : std::string(operation.param.name))
                                 if (std::isalnum(static_cast<unsigned char>(c)))
                                     name += c;
                             return name;
                         });

} // namespace
