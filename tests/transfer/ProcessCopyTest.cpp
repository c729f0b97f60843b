#include "roots/ProgressSink.h"
#include "support/DetailFixture.h"
#include "transfer/KorDetailProcessTableDependencies.h"

#include <filesystem>
#include <memory>
#include <unistd.h>

using namespace details;

namespace {

using D = KorDetailTableDependencies;
using P = KorDetailProcessTableDependencies;
using E = KorODBCDetailStyleExports;
using M = KorOdbcMan;

/// Beside each style of the fixture a process over it, with the same keys.
class ProcessCopyTest : public DetailTest {
protected:
    void SetUp() override
    {
        DetailTest::SetUp();
        fillProcess(details, awkward);
        fillProcess(addin, "add-in", 100);
        m_folder = std::filesystem::temp_directory_path() / ("korodbc-Prozeß-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override
    {
        D::pInitProgressBar = nullptr;
        D::pUpdateProgressBar = nullptr;
        D::pGetNameForRowFn = nullptr;
        D::mainType = M::kDetailStyle;
        D::m_RunningFromCommand = 0;
        P::detProcessCategory = -1;
        P::m_bDeepCopyWithDetailStyles = 0;
        P::ResetDeepCopyInfo();
        korodbc::host::setProgressSink(nullptr);
        DetailTest::TearDown();
        std::filesystem::remove_all(m_folder);
    }
    void again()
    {
        TearDown();
        SetUp();
    }

    KorString file() const { return text((m_folder / "it's [a] 100% 梁.db").string()); }
    int exportProcess(long key = 1, eDSN source = details) const
    {
        return E::exportDetail(E::kDetailProcess, KorOdbcKey(key), source, source == addin ? firstAddin : base,
                               file());
    }
    static int importProcess(long key = 101)
    {
        return E::importDetail(E::kDetailProcess, KorOdbcKey(key), addin, firstAddin, details, base);
    }
    static long collect(long key = 1)
    {
        P::ResetDeepCopyInfo();
        StructDetailProcessDefinition process;
        return P::GetDependencies(process, key);
    }
    /// Collects the process 1 of the base and saves it to the base, as the host's copy command does.
    static long copyInPlace()
    {
        if (collect() == -1)
            return -1;
        P::SetRowNr();
        D::mainType = M::kDetailProcessDefinition;
        Exports::CancelBackupTables(1);
        StructDetailProcessDefinition process = P::m_DetailProcessDefinition[0];
        const long key = P::Save(process, 0);
        Exports::CancelBackupTables(0);
        return key;
    }
    /// English and localised message.
    static Texts messages()
    {
        KorString english, localised;
        E::GetErrorMessage(english, 1);
        E::GetErrorMessage(localised, 0);
        return {english.toUtf8(), localised.toUtf8()};
    }
    /// Looks into the exported file through the add-in's data source.
    template <class Look>
    void inFile(Look look)
    {
        KorString connection;
        ASSERT_EQ(KorDatabaseAccess::getConnectionString(addin, connection), 1);
        ASSERT_EQ(KorDatabaseAccess::setConnection(addin, file()), 1);
        look();
        ASSERT_EQ(KorDatabaseAccess::setConnectionString(addin, connection), 1);
        EXPECT_EQ(KorDatabaseAccess::detachDatabase(file()), 1);
    }
    /// Lengths of the lists of the processes, in the order of their types.
    static std::string lengths()
    {
        std::string text;
        for (const long length : {P::m_DetailProcessDefinition.length(), P::m_DetailProcessStep.length(),
                                  P::m_DetailProcessFileNameSelector.length(), P::m_DetailProcessStyleMap.length(),
                                  P::m_DetailProcessScales.length(), P::m_DetailProcessMain2CutScales.length(),
                                  P::m_DetailProcessCategory.length()})
            text += std::to_string(length) + " ";
        return text;
    }
    /// How many rows some tables have.
    static std::string counts(eDSN dsn)
    {
        std::string text;
        for (const char* table :
             {"DetailProcessDefinition", "DetailProcessStep", "DetailProcessCategories", "DetailFilenameSelector",
              "DetailProcessScales", "DetailProcessScalesItem", "DetailProcessMain2CutScale", "DetailStyleMapNew",
              "DetailStyleMapItems", "DetObjQualifierSet", "DetObjQualifierSetGroup", "DetailStyle",
              "DetailMasterTable", "DetViewRequest", "DetObjReprMapItems"})
            text += std::to_string(rows(dsn, table).size()) + " ";
        return text;
    }
    /// The styles that the items of a style map name.
    static std::vector<int> stylesOfMap(eDSN dsn, long key)
    {
        const KorDSNRequest request(dsn, dsn == addin ? firstAddin : base);
        StructDetailStyleMap map;
        EXPECT_EQ(StructDetailStyleMapMarshal::getStructByKey(key, map), 1);
        std::vector<int> styles;
        for (const StructDetailStyleMapItem& item : map.items)
            styles.push_back(item.detailStyle);
        return styles;
    }

    std::filesystem::path m_folder;
};

struct Named {
    int type, root;
    std::string name;
};
std::vector<Named> named;                       // by the naming callback
std::vector<std::pair<int, std::string>> steps; // of the host's progress bar
int answerFor, answer;                          // of the naming callback, for rows of that type

int nameRow(M::eTableType type, M::eTableType root, KorString& name)
{
    named.push_back({type, root, name.toUtf8()});
    name = L"N'" + name;
    return type == answerFor ? answer : 1;
}

TEST_F(ProcessCopyTest, EveryRowIsCollectedOnce)
{
    const struct {
        int withStyles, reached;      // rows of the styles' lists
        std::vector<int> styleOfItem; // key, or position when the styles are collected
    } cases[] = {{0, 3, {1, 2}}, {1, 32, {0, 1}}};
    for (const auto& [withStyles, reached, styleOfItem] : cases) {
        SCOPED_TRACE(withStyles);
        P::m_bDeepCopyWithDetailStyles = withStyles;
        ASSERT_EQ(collect(), 0);
        EXPECT_EQ(lengths(), "1 2 1 1 1 1 2 ");
        P::SetRowNr();
        EXPECT_EQ(P::m_NrRowsToWrite, 9);
        EXPECT_EQ(D::m_NrRowsToWrite, 9 + reached);
        EXPECT_EQ(D::m_CurrRowsToWrite, 0);
        EXPECT_EQ(D::m_DetStyleCopy.length(), withStyles * 2);
        EXPECT_EQ(D::m_DetMasterCopy.length(), withStyles); // the other style has none
        // references are positions
        const StructDetailProcessDefinition& process = P::m_DetailProcessDefinition[0];
        EXPECT_EQ(process.category, 0);
        EXPECT_EQ(process.steps[0], 0);
        EXPECT_EQ(process.steps[1], 1);
        for (const StructDetailProcessStep& step : P::m_DetailProcessStep) {
            EXPECT_EQ(step.category, step.key - 1);
            EXPECT_EQ(step.filenameSelector + step.alternativeScales + step.dependOnMainView + step.styleMap, 0);
            EXPECT_EQ(step.selection, 1); // no reference to follow
        }
        const StructDetailStyleMap& map = P::m_DetailProcessStyleMap[0];
        ASSERT_EQ(map.items.length(), 2);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(map.items[i].objQualifierSet, i);
            EXPECT_EQ(map.items[i].detailStyle, styleOfItem[static_cast<std::size_t>(i)]);
        }
        // again: nothing new, and the collected row comes back
        StructDetailStyleMap collected;
        EXPECT_EQ(P::GetDependencies(collected, 1), 0);
        EXPECT_EQ(collected.items[1].objQualifierSet, 1);
        EXPECT_EQ(lengths(), "1 2 1 1 1 1 2 ");
    }
}

TEST_F(ProcessCopyTest, ResetEmptiesBothGraphs)
{
    P::m_bDeepCopyWithDetailStyles = 1;
    ASSERT_EQ(copyInPlace(), 2);
    P::m_bDeepCopyCanceledByUser = D::m_bDeepCopyCanceledByUser = true;
    long key = -1;
    ASSERT_TRUE(P::m_writeTransferKeyMap.lookup({L"StructDetailStyleMap", 0, 1}, key));
    EXPECT_EQ(key, 2);
    ASSERT_TRUE(D::m_writeTransferKeyMap.lookup({L"StructDetailStyle", 0, 1}, key));
    P::ResetDeepCopyInfo();
    EXPECT_FALSE(P::m_writeTransferKeyMap.lookup({L"StructDetailStyleMap", 0, 1}, key));
    EXPECT_FALSE(D::m_writeTransferKeyMap.lookup({L"StructDetailStyle", 0, 1}, key));
    EXPECT_FALSE(P::m_bDeepCopyCanceledByUser || D::m_bDeepCopyCanceledByUser);
    EXPECT_EQ(lengths(), "0 0 0 0 0 0 0 ");
    EXPECT_EQ(D::SetRowNr(), 0);
    EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy.length() +
                  P::m_DetailStyleMapsResultedFromDeepCopy.length() +
                  D::m_QualifierSetsResultedFromDeepCopy.length(),
              0);
    EXPECT_EQ(P::m_bDeepCopyWithDetailStyles, 1); // is the host's
}

TEST_F(ProcessCopyTest, WhatIsMissingEndsTheCollection)
{
    const struct {
        const char* statement;
        int withStyles;
        const char* lengths; // nullptr: does not matter to the copy
    } cases[] = {
        {"DELETE FROM DetailProcessDefinition", 0, "0 0 0 0 0 0 0 "},
        {"DELETE FROM DetailProcessCategories WHERE [Key] = 1", 0, "0 0 0 0 0 0 0 "},
        {"DELETE FROM DetailProcessCategories WHERE [Key] = 2", 0, "0 1 1 1 1 1 1 "},
        {"DELETE FROM DetailProcessStep WHERE [Key] = 2", 0, "0 1 1 1 1 1 1 "},
        {"DELETE FROM DetailFilenameSelector", 0, "0 0 0 0 0 0 1 "},
        {"DELETE FROM DetailProcessScales", 0, "0 0 1 0 0 0 1 "},
        {"DELETE FROM DetailProcessMain2CutScale", 0, "0 0 1 0 1 0 1 "},
        {"UPDATE DetailProcessStep SET DependOnMainView = -1", 0, "0 0 1 0 1 0 1 "},
        {"DELETE FROM DetailStyleMapNew", 0, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetObjQualifierSet WHERE [Key] = 2", 0, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetObjQualifierSetGroup", 0, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetailStyle WHERE [Key] = 2", 0, nullptr},
        {"DELETE FROM DetailStyle WHERE [Key] = 2", 1, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetHatchSettings", 1, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetailProcessSelection", 0, nullptr},
        {"DELETE FROM DetailStyleMapItems", 1, nullptr}, // a map without items
        {"UPDATE DetailProcessDefinition SET NumberSteps = 0", 1, nullptr},
    };
    for (const auto& [statement, withStyles, expected] : cases) {
        SCOPED_TRACE(statement);
        P::m_bDeepCopyWithDetailStyles = withStyles;
        sql(details, {statement});
        EXPECT_EQ(collect(), expected == nullptr ? 0 : -1);
        if (expected != nullptr) {
            EXPECT_EQ(lengths(), expected);
        }
        again();
    }
    EXPECT_EQ(collect(99), -1);
}

/// What arrives is what was sent, styles under their own keys or as new rows.
TEST_F(ProcessCopyTest, ExportedTreeIsTheSame)
{
    const struct {
        eDSN source;
        int key, withStyles;
        std::vector<int> styles;
        const char *once, *twice; // rows in the file
    } cases[] = {
        {details, 1, 0, {1, 2}, "1 2 2 1 1 2 1 1 2 2 1 0 0 0 0 ", "2 4 2 2 2 4 2 2 4 4 1 0 0 0 0 "},
        {details, 1, 1, {1, 2}, "1 2 2 1 1 2 1 1 2 2 1 2 1 2 2 ", "2 4 2 2 2 4 2 2 4 4 1 4 2 4 4 "},
        {addin, 101, 0, {101, 102}, "1 2 2 1 1 2 1 1 2 2 1 0 0 0 0 ", "2 4 2 2 2 4 2 2 4 4 1 0 0 0 0 "},
        {addin, 101, 1, {1, 2}, "1 2 2 1 1 2 1 1 2 2 1 2 1 2 2 ", "2 4 2 2 2 4 2 2 4 4 1 4 2 4 4 "},
    };
    for (const auto& [source, key, withStyles, styles, once, twice] : cases) {
        SCOPED_TRACE(std::to_string(source) + (withStyles != 0 ? " with styles" : " without styles"));
        P::m_bDeepCopyWithDetailStyles = withStyles;
        const eIndex index = source == addin ? firstAddin : base;
        const std::string tree = processTree(source, index, key, withStyles != 0);
        ASSERT_EQ(tree.find("missing"), std::string::npos);
        const std::string master = styleTree(source, index, key);
        const std::string own = counts(details), inAddin = counts(addin);
        ASSERT_EQ(exportProcess(key, source), 1) << messages()[0];
        EXPECT_EQ(messages(), (Texts{"", ""}));
        EXPECT_EQ(E::isExportInProgress() + E::isTableBackupProcessCanceled(), 0);
        inFile([&] {
            EXPECT_EQ(processTree(addin, firstAddin, 1, withStyles != 0), tree);
            EXPECT_EQ(stylesOfMap(addin, 1), styles);
            EXPECT_EQ(counts(addin), once);
            if (withStyles != 0) {
                EXPECT_EQ(styleTree(addin, firstAddin, 1), master);
            }
        });
        // once more: appended under other names, what is shared is taken again
        ASSERT_EQ(exportProcess(key, source), 1);
        inFile([&] {
            EXPECT_EQ(processTree(addin, firstAddin, 1, withStyles != 0), tree);
            EXPECT_EQ(counts(addin), twice);
            EXPECT_EQ(cell(addin, "DetailProcessDefinition", 2, 1).find("Copy of process"), 0u);
            EXPECT_EQ(cell(addin, "DetailProcessStep", 4, 1).find("Copy of erection"), 0u);
            EXPECT_EQ(cell(addin, "DetailProcessStep", 3, 2), cell(addin, "DetailProcessStep", 1, 2));
            EXPECT_EQ(stylesOfMap(addin, 2), withStyles != 0 ? std::vector<int>({3, 4}) : styles);
        });
        EXPECT_EQ(processTree(source, index, key, withStyles != 0), tree);
        EXPECT_EQ(counts(details), own);
        EXPECT_EQ(counts(addin), inAddin);
        for (int t = 0; t < M::kTableTypes; ++t)
            EXPECT_EQ(M::getStatus(type(t), depth(0)), M::eNotModified);
        again();
    }
}

TEST_F(ProcessCopyTest, ImportedTreeIsTheSame)
{
    for (const int withStyles : {0, 1}) {
        SCOPED_TRACE(withStyles);
        P::m_bDeepCopyWithDetailStyles = withStyles;
        const std::string source = processTree(addin, firstAddin, 101, withStyles != 0),
                          own = processTree(details, base, 1, true);
        ASSERT_EQ(importProcess(), 1) << messages()[0];
        EXPECT_EQ(E::isImportInProgress() + E::isTableBackupProcessCanceled(), 0);
        EXPECT_EQ(processTree(details, base, 2, withStyles != 0), source); // owners kept
        EXPECT_EQ(stylesOfMap(details, 2),
                  withStyles != 0 ? std::vector<int>({3, 4}) : std::vector<int>({101, 102}));
        EXPECT_EQ(styleTree(details, base, 3),
                  withStyles != 0 ? styleTree(addin, firstAddin, 101) : "(no master)");
        EXPECT_EQ(processTree(details, base, 1, true), own);
        EXPECT_EQ(processTree(addin, firstAddin, 101, withStyles != 0), source);
        EXPECT_EQ(counts(details),
                  withStyles != 0 ? "2 4 4 2 2 4 2 2 4 4 2 4 2 4 4 " : "2 4 4 2 2 4 2 2 4 4 2 2 1 2 2 ");
        EXPECT_EQ(cell(details, "DetailProcessCategories", 101, 1), "workshop add-in"); // keeps its key

        // what was newly written, as it stands in the target
        ASSERT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy.length(), 2);
        EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[1].key, 4);
        EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[1].category, 102);
        ASSERT_EQ(P::m_DetailStyleMapsResultedFromDeepCopy.length(), 1);
        EXPECT_EQ(P::m_DetailStyleMapsResultedFromDeepCopy[0].key, 2);
        EXPECT_EQ(P::m_DetailStyleMapsResultedFromDeepCopy[0].items[1].objQualifierSet, 4);
        EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy.length(), 2);
        // once more: categories and equal qualifier sets are taken again
        ASSERT_EQ(importProcess(), 1);
        EXPECT_EQ(counts(details).substr(0, 22), "3 6 4 3 3 6 3 3 6 4 2 ");
        EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy.length(), 2);
        EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[0].key, 5);
        EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[0].category, 101);
        EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy.length(), 0);
        // a second Save in one copy writes nothing
        StructDetailProcessDefinition process = P::m_DetailProcessDefinition[0];
        current(details, base);
        EXPECT_EQ(P::Save(process, 0), 3);
        EXPECT_EQ(rows(details, "DetailProcessDefinition").size(), 3u);
        again();
    }
}

/// A category of the same name stands for the collected one, whatever else it holds.
TEST_F(ProcessCopyTest, CategoriesAreTakenByName)
{
    sql(details, {"INSERT INTO DetailProcessCategories ([Key], RunName, SortOrder, OwnerText) "
                  "VALUES (7, 'site add-in', 99, 'other')"});
    const std::string before = cell(details, "DetailProcessCategories", 7, 2);
    ASSERT_EQ(importProcess(), 1);
    EXPECT_EQ(rows(details, "DetailProcessCategories").size(), 4u);
    EXPECT_EQ(cell(details, "DetailProcessStep", 3, 2), "101");
    EXPECT_EQ(cell(details, "DetailProcessStep", 4, 2), "7");
    EXPECT_EQ(cell(details, "DetailProcessCategories", 7, 2), before);
    EXPECT_EQ(cell(details, "DetailProcessCategories", 101, 2), "1");
}

TEST_F(ProcessCopyTest, CategoryOfTheHostsChoice)
{
    // the definition comes first, then the first step; the others keep theirs
    P::detProcessCategory = 7;
    ASSERT_EQ(copyInPlace(), 2);
    EXPECT_EQ(P::detProcessCategory, -1);
    EXPECT_EQ(cell(details, "DetailProcessDefinition", 2, 2), "7");
    EXPECT_EQ(cell(details, "DetailProcessStep", 3, 2), "1");
    EXPECT_EQ(cell(details, "DetailProcessStep", 4, 2), "2");
    P::ResetDeepCopyInfo();
    StructDetailProcessStep step;
    ASSERT_EQ(P::GetDependencies(step, 2), 0);
    P::detProcessCategory = 8;
    step = P::m_DetailProcessStep[0];
    ASSERT_EQ(P::Save(step, 0), 5);
    EXPECT_EQ(cell(details, "DetailProcessStep", 5, 2), "8");
    EXPECT_EQ(P::detProcessCategory, -1);
}

/// Inside one database: default names everywhere, and the owner is the user.
TEST_F(ProcessCopyTest, CopyInPlace)
{
    const std::string before = processTree(details, base, 1, true);
    P::m_bDeepCopyWithDetailStyles = 1;
    ASSERT_EQ(copyInPlace(), 2);
    EXPECT_EQ(processTree(details, base, 1, true), before);
    const struct {
        const char* table;
        int key;
        const char* name; // without suffix
        int owner;        // column, 0: none to look at
    } cases[] = {
        {"DetailProcessDefinition", 2, "process", 6},
        {"DetailProcessStep", 3, "fabrication", 15},
        {"DetailProcessStep", 4, "erection", 15},
        {"DetailFilenameSelector", 2, "files", 6},
        {"DetailProcessScales", 2, "scales", 2},
        {"DetailProcessMain2CutScale", 2, "cuts", 2},
        {"DetailStyleMapNew", 2, "style map", 2},
        {"DetObjQualifierSet", 3, "beams", 3},
        {"DetailStyle", 3, "style", 14},
        {"DetailMasterTable", 2, "style", 5},
    };
    for (const auto& [table, key, name, owner] : cases) {
        EXPECT_EQ(cell(details, table, key, 1), std::string("Copy of ") + name + " " + awkward) << table;
        EXPECT_EQ(cell(details, table, key, owner), "OFFICE") << table;
    }
    EXPECT_EQ(rows(details, "DetailProcessCategories").size(), 2u);
    EXPECT_EQ(cell(details, "DetailProcessDefinition", 2, 2), "1");
    EXPECT_EQ(stylesOfMap(details, 2), std::vector<int>({3, 4}));
}

TEST_F(ProcessCopyTest, NamingCallback)
{
    const struct {
        int type, answer;
        bool written;
        const char* order;  // of the types asked about
        const char* counts; // of the process tables afterwards
    } cases[] = {
        {-1, 1, true, "32 33 16 16 33 ", "2 4 2 2 2 4 2 2 "}, {32, 0, false, "32 ", "1 2 2 1 1 2 1 1 "},
        {32, -1, false, "32 ", "1 2 2 1 1 2 1 1 "},           {32, 2, false, "32 ", "1 2 2 1 1 2 1 1 "},
        {33, 0, false, "32 33 ", "1 2 2 1 1 2 1 1 "},         {33, -1, false, "32 33 ", "1 2 2 1 1 2 1 1 "},
        {16, 0, true, "32 33 16 16 33 ", "2 4 2 2 2 4 2 2 "}, {16, 2, true, "32 33 16 16 33 ", "2 4 2 2 2 4 2 2 "},
        {16, -1, false, "32 33 16 ", "1 2 2 2 2 4 2 1 "}, // what was written before stays
    };
    for (const auto& [forType, result, written, order, expected] : cases) {
        SCOPED_TRACE(std::to_string(forType) + " answered " + std::to_string(result));
        named.clear();
        answerFor = forType;
        answer = result;
        D::pGetNameForRowFn = nameRow;
        EXPECT_EQ(copyInPlace(), written ? 2 : -1);
        std::string asked;
        for (const Named& row : named) {
            asked += std::to_string(row.type) + " ";
            EXPECT_EQ(row.root, M::kDetailProcessDefinition);
        }
        EXPECT_EQ(asked, order);
        EXPECT_EQ(named.front().name, std::string("process ") + awkward);
        EXPECT_EQ(counts(details).substr(0, 16), expected);
        if (written) {
            EXPECT_EQ(cell(details, "DetailProcessStep", 4, 1), std::string("N'erection ") + awkward);
            EXPECT_EQ(cell(details, "DetailStyleMapNew", 2, 1), std::string("Copy of style map ") + awkward);
        }
        again();
    }
    // styles are asked about as ever, under the process
    P::m_bDeepCopyWithDetailStyles = 1;
    named.clear();
    answerFor = M::kDetailStyle;
    answer = 0;
    D::pGetNameForRowFn = nameRow;
    EXPECT_EQ(copyInPlace(), 2);
    int styles = 0;
    for (const Named& row : named) {
        styles += row.type == M::kDetailStyle ? 1 : 0;
        EXPECT_EQ(row.root, M::kDetailProcessDefinition);
    }
    EXPECT_EQ(styles, 2);
    EXPECT_EQ(stylesOfMap(details, 2), std::vector<int>({3, 4}));
    // transfers say what they move; categories that are new there are not asked about either
    for (const bool exported : {true, false}) {
        again();
        named.clear();
        answerFor = -1;
        D::pGetNameForRowFn = nameRow;
        EXPECT_EQ(exported ? exportProcess() : importProcess(), 1);
        std::string asked;
        for (const Named& row : named)
            asked += std::to_string(row.type) + " of " + std::to_string(row.root) + " ";
        EXPECT_EQ(asked, "32 of 32 33 of 32 16 of 32 16 of 32 33 of 32 ");
    }
}

TEST_F(ProcessCopyTest, Progress)
{
    struct Sink : korodbc::host::ProgressSink {
        Texts titles;
        void title(const KorString& t) override
        {
            std::string text = t.toUtf8();
            titles.push_back(text.substr(0, text.find_last_not_of(' ') + 1));
        }
        void percentage(int, int) override {}
        void reset() override { titles.emplace_back("reset"); }
    };
    const auto sink = std::make_shared<Sink>();
    korodbc::host::setProgressSink(sink);
    ASSERT_EQ(collect(), 0);
    const Texts shared = {"Reading DetailFilenameSelector", "Reading DetailProcessScales",
                          "Reading DetailProcessMain2CutScale", "Reading DetailStyleMapNew"};
    Texts expected = {"Reading DetailProcessDefinition", "Reading DetailProcessCategories",
                      "Reading DetailProcessStep", "Reading DetailProcessCategories"};
    expected.insert(expected.end(), shared.begin(), shared.end());
    for (int set = 0; set < 2; ++set)
        for (const char* table : {"DetObjQualifierSet", "DetObjQualifierSetGroup"})
            expected.push_back(std::string("Reading ") + table);
    expected.insert(expected.end(), {"Reading DetailProcessStep", "Reading DetailProcessCategories"});
    expected.insert(expected.end(), shared.begin(), shared.end()); // also of rows that are there already
    EXPECT_EQ(sink->titles, expected);

    sink->titles.clear();
    ASSERT_EQ(collect(99), -1);
    EXPECT_EQ(importProcess(99), 0);
    EXPECT_EQ(sink->titles,
              (Texts{"Reading DetailProcessDefinition", "Reading DetailProcessDefinition", "reset"}));

    // the host's own bar sees the writing only; every row of a new file counts
    for (const int withStyles : {0, 1}) {
        P::m_bDeepCopyWithDetailStyles = withStyles;
        sink->titles.clear();
        steps.clear();
        D::pUpdateProgressBar = [](int row, KorString what) {
            EXPECT_EQ(what.length(), 40);
            steps.emplace_back(row, what.toUtf8());
        };
        ASSERT_EQ(exportProcess(), 1);
        std::filesystem::remove(file().toUtf8());
        EXPECT_TRUE(sink->titles.empty());
        EXPECT_EQ(D::m_NrRowsToWrite, withStyles != 0 ? 41 : 12);
        EXPECT_EQ(steps.size(), withStyles != 0 ? 41u : 12u);
        for (std::size_t i = 0; i < steps.size(); ++i)
            EXPECT_EQ(steps[i].first, static_cast<int>(i) + 1);
        EXPECT_EQ(steps.front().second.find("Writing DetailProcessCategories "), 0u);
        EXPECT_EQ(steps.at(1).second.find("Writing DetailFilenameSelector "), 0u);
        EXPECT_EQ(steps.back().second.find("Writing DetailProcessDefinition "), 0u);
    }
}

TEST_F(ProcessCopyTest, Failures)
{
    // collecting
    const Texts none = {"", ""};
    ASSERT_EQ(E::exportDetail(E::kDetailStyle, KorOdbcKey(99), details, base, file()), 0);
    const Texts ofExport = messages();
    EXPECT_EQ(exportProcess(99), 0);
    EXPECT_EQ(messages(), ofExport); // the same texts as for styles
    EXPECT_EQ(messages()[0], "Failed to load dependencies for detail style with key 99!");
    ASSERT_EQ(E::importDetail(E::kDetailStyle, KorOdbcKey(99), addin, firstAddin, details, base), 0);
    const Texts ofStyleImport = messages();
    EXPECT_EQ(importProcess(99), 0);
    EXPECT_EQ(messages()[0], "Failed to load dependencies for detail style with key 99");
    EXPECT_NE(messages()[1], ofStyleImport[1]); // a prompt of its own
    EXPECT_NE(messages()[1].find("99"), std::string::npos);
    EXPECT_EQ(E::isExportInProgress() + E::isImportInProgress() + E::isTableBackupProcessCanceled(), 0);

    // writing; a cancel is told by the processes' flag when exporting, by the styles' when importing
    const struct {
        bool exported, ofProcesses, ofStyles, silent;
    } cases[] = {{true, false, false, false}, {true, true, false, true},    {true, false, true, false},
                 {true, true, true, true},    {false, false, false, false}, {false, true, false, false},
                 {false, false, true, true},  {false, true, true, true}};
    static bool cancelProcesses, cancelStyles;
    D::pGetNameForRowFn = [](M::eTableType t, M::eTableType, KorString&) {
        P::m_bDeepCopyCanceledByUser = cancelProcesses;
        D::m_bDeepCopyCanceledByUser = cancelStyles;
        return t == M::kDetailProcessStep ? 0 : 1;
    };
    const std::string before = processTree(details, base, 1, true);
    for (const auto& [exported, ofProcesses, ofStyles, silent] : cases) {
        SCOPED_TRACE(std::string(exported ? "export " : "import ") + (ofProcesses ? "process " : "") +
                     (ofStyles ? "style" : ""));
        cancelProcesses = ofProcesses;
        cancelStyles = ofStyles;
        EXPECT_EQ(exported ? exportProcess() : importProcess(), 0);
        EXPECT_EQ(messages()[0], silent ? "" : "Unable to write info to target database!");
        EXPECT_EQ(messages()[1].empty(), silent);
        EXPECT_EQ(E::isExportInProgress() + E::isImportInProgress() + E::isTableBackupProcessCanceled(), 0);
    }
    EXPECT_EQ(processTree(details, base, 1, true), before);
    EXPECT_NE(processTree(addin, firstAddin, 101, true).find("process add-in"), std::string::npos);
    D::pGetNameForRowFn = nullptr;
    EXPECT_EQ(exportProcess(), 1); // messages do not outlive the next transfer
    EXPECT_EQ(messages(), none);
}

TEST_F(ProcessCopyTest, OlderDatabases)
{
    for (const char* table : {"DetObjAnnotationGroup", "DetObjQualifierSetGroup", "DetViewDimRequestLinearGroup",
                              "DetViewDimStrategyNew", "DetViewDimStrategyItems"}) {
        SCOPED_TRACE(table);
        const std::string hide = std::string("ALTER TABLE ") + table + " RENAME TO Hidden",
                          show = std::string("ALTER TABLE Hidden RENAME TO ") + table;
        const std::string before = counts(details).substr(0, 16);
        ASSERT_EQ(E::CreateDbFile(file()), 1);
        inFile([&] { sql(addin, {hide}); });
        EXPECT_EQ(exportProcess(), 0);
        EXPECT_EQ(messages()[0], "Target database is older than version 5.1!");
        EXPECT_EQ(KorDatabaseAccess::detachDatabase(file()), 1);
        std::filesystem::remove(file().toUtf8());
        const struct {
            eDSN hidden;
            const char* exported; // nullptr: works
            const char* imported;
        } cases[] = {
            {details, "Source database is older than version 5.1!", "Target database is older than version 5.1!"},
            {addin, nullptr, "Source database is older than version 5.1!"}};
        for (const auto& [hidden, exported, imported] : cases) {
            sql(hidden, {hide});
            EXPECT_EQ(exportProcess(), exported == nullptr ? 1 : 0);
            EXPECT_EQ(messages()[0], exported == nullptr ? "" : exported);
            EXPECT_EQ(E::FileExists(file()), exported == nullptr ? 1 : 0);
            EXPECT_EQ(importProcess(), 0);
            EXPECT_EQ(messages()[0], imported);
            EXPECT_FALSE(messages()[1].empty());
            EXPECT_EQ(counts(details).substr(0, 16), before);
            sql(hidden, {show});
        }
        std::filesystem::remove(file().toUtf8());
        E::setExportInProgress(0);
        E::setImportInProgress(0);
    }
}

} // namespace
