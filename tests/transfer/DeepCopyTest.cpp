#include "TransferFixture.h"

#include <memory>

using namespace details;

namespace {

class DeepCopyTest : public TransferTest {
protected:
    static std::string styleLengths()
    {
        return lengths(D::m_DetStyleCopy, D::m_DetViewArrangeStrategyCopy, D::m_DetViewRequest,
                       D::m_DetViewRequestCategory, D::m_DetObjReprMap, D::m_DetViewSystemAndBox,
                       D::m_DetObjAppearance, D::m_DetViewDimStrategy, D::m_DetViewLengthClip,
                       D::m_DetObjAnnotationStrategy, D::m_DetAnnotationType, D::m_DetArrangerControl,
                       D::m_DetArrangerStrategy, D::m_DetViewDimRequestLinear, D::m_DetViewDimPointSelection,
                       D::m_DetMasterCopy, D::m_DetObjQualifierSet, D::m_LineType, D::m_DetBaseCategory,
                       D::m_DetObjAnnotationGroup, D::m_DetViewDimRequestLinearGroup, D::m_DetObjQualifierSetGroup,
                       D::m_DetHatchSettings);
    }
    /// A text as wide as the progress shows it.
    static std::string label(std::string text)
    {
        return text.append(text.size() < 40 ? 40 - text.size() : 0, ' ');
    }
};

std::vector<std::pair<int, std::string>> steps; // of the host's progress bar

TEST_F(DeepCopyTest, EveryRowOfAStyleIsCollectedOnce)
{
    EXPECT_EQ(D::GetDependenciesByDetailKey(1), 0);
    EXPECT_EQ(styleLengths(), "1 1 2 2 1 2 2 1 1 1 1 1 1 2 2 1 2 1 2 1 1 1 1 ");
    EXPECT_EQ(D::SetRowNr(), 31);
    EXPECT_EQ(D::m_CurrRowsToWrite, 0);
    // again: nothing new, and the collected row comes back
    StructDetObjReprMap map;
    EXPECT_EQ(D::GetDependencies(map, 1), 0);
    EXPECT_EQ(map.items[0].appearance, 0);
    StructDetailMaster master;
    EXPECT_EQ(D::GetDependenciesByMasterKey(master, 1), 0);
    EXPECT_EQ(D::getRunningFromCommand(), 0);
    EXPECT_EQ(D::SetRowNr(), 31);
    // without the group tables
    D::ResetDeepCopyInfo();
    EXPECT_EQ(D::SetRowNr(), 0);
    D::m_bKernelNewerThan42 = 0;
    EXPECT_EQ(D::GetDependenciesByDetailKey(1), 0);
    EXPECT_EQ(styleLengths(), "1 1 2 2 1 2 2 1 1 1 1 1 1 2 2 1 2 1 2 0 0 0 1 ");
    EXPECT_EQ(D::m_DetObjQualifierSet[0].group, 1); // as it stands
}

TEST_F(DeepCopyTest, EveryRowOfAProcessIsCollectedOnce)
{
    for (const auto& [withStyles, reached] : {std::pair(0, 3), {1, 32}}) { // rows of the styles' lists
        SCOPED_TRACE(withStyles);
        P::m_bDeepCopyWithDetailStyles = withStyles;
        ASSERT_EQ(collectProcess(), 0);
        EXPECT_EQ(processLengths(), "1 2 1 1 1 1 2 ");
        P::SetRowNr();
        EXPECT_EQ(P::m_NrRowsToWrite, 9);
        EXPECT_EQ(D::m_NrRowsToWrite, 9 + reached);
        EXPECT_EQ(D::m_DetMasterCopy.length(), withStyles); // the other style has none
    }
}

TEST_F(DeepCopyTest, WhatIsMissingEndsTheCollection)
{
    const int style = -1; // otherwise a process, without or with its styles
    const struct {
        const char* statement;
        int what;
        const char* lengths; // how the lists begin; nullptr: does not matter to the copy
    } cases[] = {
        {"DELETE FROM DetailMasterTable", style, "0 0 0 0 0 0 "},
        {"DELETE FROM DetViewRequest WHERE [Key] = 2", style, "0 1 1 2 1 1 "},
        {"DELETE FROM Linetypes", style, "0 1 0 0 0 1 "},
        {"UPDATE DetViewRequest SET LengthClipXY = -1", style, "0 1 0 0 1 1 "},
        {"DELETE FROM DetViewDimPointSelection WHERE [Key] = 2", style, "0 1 0 0 1 1 "},
        {"DELETE FROM DetBaseCategories WHERE [Key] = 2", style, "0 1 0 0 1 1 "},
        {"DELETE FROM DetailProcessDefinition", 0, "0 0 0 0 0 0 0 "},
        {"DELETE FROM DetailProcessCategories WHERE [Key] = 2", 0, "0 1 1 1 1 1 1 "},
        {"UPDATE DetailProcessStep SET DependOnMainView = -1", 0, "0 0 1 0 1 0 1 "},
        {"DELETE FROM DetObjQualifierSetGroup", 0, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetailStyle WHERE [Key] = 2", 0, nullptr},
        {"DELETE FROM DetailStyle WHERE [Key] = 2", 1, "0 0 1 0 1 1 1 "},
        {"DELETE FROM DetailStyleMapItems", 1, nullptr}, // a map without items
    };
    for (const auto& [statement, what, expected] : cases) {
        SCOPED_TRACE(statement);
        P::m_bDeepCopyWithDetailStyles = what == 1 ? 1 : 0;
        sql(details, {statement});
        EXPECT_EQ(what == style ? D::GetDependenciesByDetailKey(1) : collectProcess(),
                  expected == nullptr ? 0 : -1);
        if (expected != nullptr) {
            EXPECT_TRUE((what == style ? styleLengths() : processLengths()).starts_with(expected));
        }
        again();
    }
    EXPECT_EQ(D::GetDependenciesByDetailKey(2), -1); // a style without master
    EXPECT_EQ(D::GetDependenciesByDetailKey(99), -1);
    EXPECT_EQ(collectProcess(99), -1);
}

TEST_F(DeepCopyTest, DefaultNames)
{
    const struct {
        int type;
        Texts existing;
        const char* name;
        const char* unique; // nullptr: as it is
    } cases[] = {
        {22, {"A"}, "B", nullptr},
        {22, {"A"}, "a", nullptr}, // case counts
        {22, {"A"}, "A", "Copy of A"},
        {22, {"A", "Copy of A"}, "A", "Copy (1) A"},
        {22, {"A", "Copy of A", "Copy (1) A", "Copy (2) A"}, "A", "Copy (3) A"},
        {22, {"Copy of A"}, "Copy of A", "Copy (1) A"},
        {22, {"Copy (9) A"}, "Copy (9) A", "Copy (10) A"},
        {22, {"Copy (-5) A"}, "Copy (-5) A", "Copy (-4) A"},
        {22, {"Copy (2147483646) A"}, "Copy (2147483646) A", "Copy (2147483647) A"},
        {22, {"Copy (2147483647) A", "Copy (1) A"}, "Copy (2147483647) A", "Copy (2) A"}, // after the last number
        {22, {"Copy (99999999999999999999) A"}, "Copy (99999999999999999999) A", "Copy (1) A"},
        {22, {""}, "", "Copy of "},
        {22, {"it's", "Copy of it's"}, "it's", "Copy (1) it's"},
        {22, {"[100%d] 梁 %s 🏗"}, "[100%d] 梁 %s 🏗", "Copy of [100%d] 梁 %s 🏗"},
        {0, {"A"}, "A", "Copy of A"},
        {18, {"A"}, "A", nullptr}, // types without a list of names
    };
    for (const auto& [t, existing, name, unique] : cases) {
        KorString table;
        M::getTableName(type(t), table);
        sql(details, {"DELETE FROM Linetypes"});
        int key = 1000;
        for (const std::string& row : t == 18 ? Texts() : existing)
            sql(details, {"INSERT OR REPLACE INTO " + table.toUtf8() + " ([Key], RunName) VALUES (" +
                          std::to_string(++key) + ", '" + text(row).replace(L"'", L"''").toUtf8() + "')"});
        for (const auto nameFor : {D::GetDefaultNameForRow, D::GetNameForRow}) {
            KorString found = text(name);
            EXPECT_EQ(nameFor(type(t), found), unique == nullptr && nameFor == D::GetDefaultNameForRow ? 0 : 1);
            EXPECT_EQ(found.toUtf8(), unique == nullptr ? name : unique) << "of " << name;
        }
    }
}

/// A copy inside one database: new rows under new names, groups and categories reused, the owner is the user.
TEST_F(DeepCopyTest, StyleInPlace)
{
    const std::string before = tree(E::kDetailStyle, details, 1);
    EXPECT_EQ(copyInPlace(E::kDetailStyle), 2);
    EXPECT_EQ(D::getRunningFromCommand(), 1);
    EXPECT_EQ(tree(E::kDetailStyle, details, 1), before);
    const std::string style = std::string("style ") + awkward;
    // the style's new name, the first free sub-category
    EXPECT_EQ(rows(details, "DetailMasterTable")[1], "2|Copy of " + style + "|3|1|2|OFFICE");
    EXPECT_EQ(cell(details, "DetailStyle", 3, 14), "OFFICE");
    EXPECT_EQ(cell(details, "DetHatchSettings", 2, 7), "OFFICE");
    EXPECT_EQ(counts(details), "1 2 2 1 1 2 1 1 2 4 1 3 2 4 4 2 2 ");
    // what was newly written, and not what was reused
    EXPECT_EQ(lengths(D::m_QualifierSetsResultedFromDeepCopy, D::m_BaseCategoriesResultedFromDeepCopy,
                      D::m_LinearDimRequestsResultedFromDeepCopy, D::m_AnnotationStrategiesResultedFromDeepCopy),
              "2 0 2 1 ");
    EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy[0].key, 3);
    EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy[0].ownerText.toUtf8(), "OFFICE");
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy[1].points[0], 4);
    EXPECT_EQ(D::m_RowsWritten, 25);
    EXPECT_EQ(D::m_RowsReused, 6); // the groups, line type and categories, each once
    // saving again in the same copy writes nothing
    StructDetailMaster master = D::m_DetMasterCopy[0];
    EXPECT_EQ(D::Save(master, 0), 2);
    EXPECT_EQ(D::m_RowsWritten + D::m_RowsReused, 31);
    long key = -1;
    EXPECT_TRUE(D::m_writeTransferKeyMap.lookup({L"StructDetailStyle", 0, 1}, key));
    EXPECT_EQ(key, 3);
    EXPECT_EQ(copyInPlace(E::kDetailStyle), 3);
    EXPECT_EQ(rows(details, "DetailMasterTable")[2], "3|Copy (1) " + style + "|4|1|3|OFFICE");
}

TEST_F(DeepCopyTest, ProcessInPlace)
{
    const std::string before = tree(E::kDetailProcess, details, 1);
    P::m_bDeepCopyWithDetailStyles = 1;
    ASSERT_EQ(copyInPlace(E::kDetailProcess), 2);
    EXPECT_EQ(tree(E::kDetailProcess, details, 1), before);
    const struct {
        const char* table;
        int key;
        const char* name; // without suffix
        int owner;        // column
    } cases[] = {
        {"DetailProcessDefinition", 2, "process", 6}, {"DetailProcessStep", 4, "erection", 15},
        {"DetailFilenameSelector", 2, "files", 6},    {"DetailProcessScales", 2, "scales", 2},
        {"DetailProcessMain2CutScale", 2, "cuts", 2}, {"DetailStyleMapNew", 2, "style map", 2},
        {"DetObjQualifierSet", 3, "beams", 3},        {"DetailMasterTable", 2, "style", 5},
    };
    for (const auto& [table, key, name, owner] : cases) {
        EXPECT_EQ(cell(details, table, key, 1), std::string("Copy of ") + name + " " + awkward) << table;
        EXPECT_EQ(cell(details, table, key, owner), "OFFICE") << table;
    }
    EXPECT_EQ(counts(details), "2 4 2 2 2 4 2 2 4 4 1 4 2 4 4 2 2 ");
    EXPECT_EQ(cell(details, "DetailProcessDefinition", 2, 2), "1");
    EXPECT_EQ(stylesOfMap(details, 2), std::vector<int>({3, 4}));
}

TEST_F(DeepCopyTest, GroupsAndCategoriesOfTheHostsChoice)
{
    put(details, StructDetObjQualifierSetGroup{7, L"chosen", 0});
    D::detQualifierSetGroup = 7;
    D::detDimStrategyGroup = 8;
    D::detAnnotationGroup = 9;
    D::detBaseCategory = 2;
    ASSERT_EQ(copyInPlace(E::kDetailStyle), 2);
    EXPECT_EQ(cell(details, "DetObjQualifierSet", 3, 2), "7"); // the next written row only
    EXPECT_EQ(cell(details, "DetObjQualifierSet", 4, 2), "1");
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy[0].group, 8);
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy[1].group, 1);
    EXPECT_EQ(D::m_AnnotationStrategiesResultedFromDeepCopy[0].group, 9);
    EXPECT_EQ(cell(details, "DetailMasterTable", 2, 3), "2");
    EXPECT_EQ(cell(details, "DetailMasterTable", 2, 4), "1"); // free in that category
    EXPECT_EQ(D::detQualifierSetGroup + D::detDimStrategyGroup + D::detAnnotationGroup + D::detBaseCategory, -4);
    // the definition comes first, then the first step; the others keep theirs
    P::detProcessCategory = 7;
    ASSERT_EQ(copyInPlace(E::kDetailProcess), 2);
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
}

TEST_F(DeepCopyTest, MastersWithoutOrInAnotherCategory)
{
    const struct {
        const char* statement;
        long chosen;
        int category; // of the new master
    } cases[] = {{"DELETE FROM DetBaseCategories WHERE [Key] = 101", -1, -1}, {nullptr, 2, 2}, {nullptr, -1, 101}};
    for (const auto& [statement, chosen, category] : cases) {
        SCOPED_TRACE(category);
        sql(addin, {"DELETE FROM DetViewRequestCategories WHERE BaseCategory = 101"});
        if (statement != nullptr)
            sql(addin, {statement});
        D::detBaseCategory = chosen;
        ASSERT_EQ(importDetail(E::kDetailStyle), 1);
        EXPECT_EQ(cell(details, "DetailMasterTable", 2, 3), std::to_string(category));
        EXPECT_EQ(cell(details, "DetailMasterTable", 2, 4), "1");
        EXPECT_EQ(cell(details, "DetBaseCategories", 101, 0), category == 101 ? "101" : "(none)");
        again();
    }
}

TEST_F(DeepCopyTest, FirstFreeSubCategory)
{
    const struct {
        std::vector<int> taken; // the first one is copied
        int free;
    } cases[] = {{{0}, 1},
                 {{3, 4, 6}, 5},
                 {{-2, -1, 0, 1}, 2},
                 {{-7, 1, 2}, -6},
                 {{2147483647}, 1},
                 {{2147483646, 2147483647, 1, 2}, 3},
                 {{5, 5, 5, 6}, 7},
                 {{-2147483647 - 1, 1}, -2147483647}};
    for (const auto& [taken, free] : cases) {
        sql(details, {"DELETE FROM DetailMasterTable"});
        for (std::size_t i = 0; i < taken.size(); ++i)
            put(details, StructDetailMaster{static_cast<int>(i) + 1, L"master", i == 0 ? 1 : 2, 1, taken[i], L""});
        put(details, StructDetailMaster{50, L"of another category", 2, 2, free, L""});
        ASSERT_EQ(copyInPlace(E::kDetailStyle), 51);
        EXPECT_EQ(cell(details, "DetailMasterTable", 51, 4), std::to_string(free));
        again();
    }
}

/// The host finds the row among the current records when it names it and when it is told of the progress.
TEST_F(DeepCopyTest, CallbacksSeeTheRow)
{
    static Texts seen;
    seen.clear();
    static const auto see = [](M::eTableType type) {
        if (type == M::kDetailStyle)
            seen.push_back(M::m_structDetailStyle.runName.toUtf8() + M::m_structDetailStyle.ownerText.toUtf8());
        else if (type == M::kDetailMaster)
            seen.push_back(M::m_structDetailMaster.runName.toUtf8());
    };
    D::pGetNameForRowFn = [](M::eTableType type, M::eTableType, KorString& name) {
        see(type);
        name = L"new";
        return 1;
    };
    D::pInitProgressBar = [](int, int) { see(M::kDetailMaster); };
    D::pUpdateProgressBar = [](int, KorString label) {
        see(label.startsWith(L"Writing DetailStyle ")         ? M::kDetailStyle
            : label.startsWith(L"Writing DetailMasterTable ") ? M::kDetailMaster
                                                              : M::kLinetypes);
    };
    ASSERT_EQ(copyInPlace(E::kDetailStyle), 2);
    const std::string style = std::string("style ") + awkward, owner = std::string("owner ") + awkward;
    EXPECT_EQ(seen, (Texts{style, style + owner, "newOFFICE", "new"}));
}

/// Without a request, a copy takes place in the edit manager's database: the second country add-in.
TEST_F(DeepCopyTest, InTheManagersDatabase)
{
    useSecondCountryAddIn();
    within(country, secondAddin, [] { fillProcess(country, "second", 200); });
    const auto others = [] { return counts(details) + counts(addin) + counts(country); };
    const std::string before = others();
    for (const bool process : {false, true}) {
        P::ResetDeepCopyInfo();
        ASSERT_EQ(process ? collectProcess(201) : D::GetDependenciesByDetailKey(201), 0);
        StructDetailMaster master = process ? StructDetailMaster() : D::m_DetMasterCopy[0];
        StructDetailProcessDefinition definition;
        if (process)
            definition = P::m_DetailProcessDefinition[0];
        Exports::CancelBackupTables(1);
        EXPECT_EQ(process ? P::Save(definition, 0) : D::Save(master, 0), 202);
        Exports::CancelBackupTables(0);
    }
    EXPECT_EQ(within(country, secondAddin, [] { return counts(country); }), "2 4 2 2 2 4 2 2 4 6 1 3 2 4 4 2 2 ");
    KorString name(L"style second");
    EXPECT_EQ(D::GetDefaultNameForRow(M::kDetailStyle, name), 1);
    EXPECT_EQ(name, L"Copy (1) style second");
    // a request says where to collect, not where to save
    P::ResetDeepCopyInfo();
    within(addin, firstAddin, [] {
        StructLinetypes line;
        ASSERT_EQ(D::GetDependencies(line, 101), 0);
        EXPECT_EQ(D::Save(line, 0), 203);
    });
    EXPECT_EQ(others(), before);
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
}

TEST_F(DeepCopyTest, NamingCallback)
{
    // no groups, categories, line types or masters; maps after their items; of processes definitions and steps
    const std::string ofStyle = "0 1 2 5 16 6 30 9 10 11 12 16 6 4 7 13 14 14 13 8 2 5 ",
                      ofProcess = "32 33 16 16 33 ";
    const struct {
        E::eType what;
        int type, answer;
        bool written;
        std::string order;  // of the types asked about
        const char* counts; // how they begin afterwards: what was written before stays
    } cases[] = {
        {E::kDetailStyle, -1, 1, true, ofStyle, "1 2 2 1 1 2 1 1 2 4 1 3 2 4 "},
        {E::kDetailStyle, 8, -1, false, "0 1 2 5 16 6 30 9 10 11 12 16 6 4 7 13 14 14 13 8 ",
         "1 2 2 1 1 2 1 1 2 4 1 2 1 2 4 "},
        {E::kDetailProcess, -1, 1, true, ofProcess, "2 4 2 2 2 4 2 2 "},
        {E::kDetailProcess, 32, 0, false, "32 ", "1 2 2 1 1 2 1 1 "},
        {E::kDetailProcess, 32, -1, false, "32 ", "1 2 2 1 1 2 1 1 "},
        {E::kDetailProcess, 33, 2, false, "32 33 ", "1 2 2 1 1 2 1 1 "},
        {E::kDetailProcess, 16, 0, true, ofProcess, "2 4 2 2 2 4 2 2 "},
        {E::kDetailProcess, 16, 2, true, ofProcess, "2 4 2 2 2 4 2 2 "},
        {E::kDetailProcess, 16, -1, false, "32 33 16 ", "1 2 2 2 2 4 2 1 "},
    };
    for (const auto& [what, forType, result, written, order, expected] : cases) {
        SCOPED_TRACE(std::to_string(forType) + " answered " + std::to_string(result));
        answerFor = forType;
        answer = result;
        D::pGetNameForRowFn = nameRow;
        const bool style = what == E::kDetailStyle;
        EXPECT_EQ(copyInPlace(what), written ? 2 : -1);
        EXPECT_EQ(askedTypes(), order);
        for (const Named& row : named)
            EXPECT_EQ(row.root, style ? M::kDetailStyle : M::kDetailProcessDefinition);
        EXPECT_EQ(named.front().name, std::string(style ? "style " : "process ") + awkward);
        EXPECT_TRUE(counts(details).starts_with(expected)) << counts(details);
        if (written && style) {
            EXPECT_EQ(cell(details, "DetailStyle", 3, 1), std::string("N'style ") + awkward);
        } else if (written) {
            EXPECT_EQ(cell(details, "DetailProcessStep", 4, 1), std::string("N'erection ") + awkward);
            EXPECT_EQ(cell(details, "DetailStyleMapNew", 2, 1), std::string("Copy of style map ") + awkward);
        }
        again();
    }
    // styles are asked about as ever, under the process
    P::m_bDeepCopyWithDetailStyles = 1;
    answerFor = M::kDetailStyle;
    answer = 0;
    D::pGetNameForRowFn = nameRow;
    EXPECT_EQ(copyInPlace(E::kDetailProcess), 2);
    EXPECT_EQ(std::ranges::count(named, static_cast<int>(M::kDetailStyle), &Named::type), 2);
    EXPECT_EQ(std::ranges::count(named, static_cast<int>(M::kDetailProcessDefinition), &Named::root),
              static_cast<long>(named.size()));
    EXPECT_EQ(stylesOfMap(details, 2), std::vector<int>({3, 4}));
    // transfers say what they move; categories that are new there are not asked about either
    for (const bool exported : {true, false}) {
        again();
        D::pGetNameForRowFn = nameRow;
        EXPECT_EQ(exported ? exportDetail(E::kDetailProcess) : importDetail(E::kDetailProcess), 1);
        EXPECT_EQ(askedTypes(), ofProcess);
        EXPECT_EQ(named.front().root, M::kDetailProcessDefinition);
    }
}

TEST_F(DeepCopyTest, Progress)
{
    const auto sink = std::make_shared<ProgressRecorder>();
    korodbc::host::setProgressSink(sink);
    StructLinetypes line;
    D::GetDependencies(line, 1);
    EXPECT_EQ(sink->seen, (Texts{label("Reading DetObjQualifierSet"), "0/1", "1/0"})); // not under their own type
    sink->seen.clear();
    D::m_NrRowsToWrite = 3;
    D::m_CurrRowsToWrite = 2;
    D::ProgressBar(M::kLinetypes, 1);
    EXPECT_EQ(sink->seen, (Texts{label("Writing Linetypes"), "65/1", "66/0"}));
    EXPECT_EQ(D::m_CurrRowsToWrite, 3);
    ASSERT_GT(copyInPlace(E::kDetailStyle), 0);
    EXPECT_EQ(sink->seen.back(), "77/0"); // 24 of 31 rows before the last one: reused rows are not reported
    sink->seen.clear();
    EXPECT_EQ(importDetail(E::kDetailProcess, 99), 0);
    EXPECT_EQ(sink->seen, (Texts{label("Reading DetailProcessDefinition"), "0/1", "1/0", "reset"}));

    // the host's own bar sees the writing only; every row of a new file counts
    const struct {
        E::eType what;
        int withStyles, masters, rows;
        const char *first, *last;
    } cases[] = {
        {E::kDetailStyle, 0, 1, 31, "Writing DetViewArrangeStrategy", "Writing DetailMasterTable"},
        {E::kDetailProcess, 0, 0, 12, "Writing DetailProcessCategories", "Writing DetailProcessDefinition"},
        {E::kDetailProcess, 1, 1, 41, "Writing DetailProcessCategories", "Writing DetailProcessDefinition"}};
    sink->seen.clear();
    D::pInitProgressBar = [](int start, int total) { steps.emplace_back(start, std::to_string(total)); };
    D::pUpdateProgressBar = [](int row, KorString what) { steps.emplace_back(row, what.toUtf8()); };
    for (const auto& [what, withStyles, masters, count, first, last] : cases) {
        P::m_bDeepCopyWithDetailStyles = withStyles;
        steps.clear();
        ASSERT_EQ(exportDetail(what), 1);
        std::filesystem::remove(file().toUtf8());
        EXPECT_TRUE(sink->seen.empty());
        EXPECT_EQ(D::m_NrRowsToWrite, count);
        // every master starts it
        EXPECT_EQ(std::erase(steps, std::make_pair(0, std::to_string(count))), static_cast<std::size_t>(masters));
        ASSERT_EQ(steps.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(steps[0], std::make_pair(1, label(first)));
        EXPECT_EQ(steps.back(), std::make_pair(count, label(last)));
    }
}

} // namespace
