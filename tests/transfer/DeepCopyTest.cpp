#include "roots/ProgressSink.h"
#include "support/DetailFixture.h"

#include <memory>

using namespace details;

namespace {

using D = KorDetailTableDependencies;
using M = KorOdbcMan;

class DeepCopyTest : public DetailTest {
protected:
    void TearDown() override
    {
        D::pInitProgressBar = nullptr;
        D::pUpdateProgressBar = nullptr;
        D::pGetNameForRowFn = nullptr;
        D::m_bKernelNewerThan42 = 1;
        D::m_RunningFromCommand = 0;
        D::detQualifierSetGroup = D::detDimStrategyGroup = D::detAnnotationGroup = D::detBaseCategory = -1;
        korodbc::host::setProgressSink(nullptr);
        DetailTest::TearDown();
    }
    /// Collects the style 1 of the base and saves it to the base, as the host's copy command does.
    static long copyInPlace()
    {
        D::ResetDeepCopyInfo();
        StructDetailMaster master;
        if (D::GetDependenciesFromCommand(master, 1) == -1)
            return -1;
        D::SetRowNr();
        Exports::CancelBackupTables(1);
        master = D::m_DetMasterCopy[0];
        const long key = D::Save(master, 0);
        Exports::CancelBackupTables(0);
        return key;
    }
    static std::string lengths()
    {
        std::string text;
        for (const long length : {D::m_DetStyleCopy.length(),
                                  D::m_DetViewArrangeStrategyCopy.length(),
                                  D::m_DetViewRequest.length(),
                                  D::m_DetViewRequestCategory.length(),
                                  D::m_DetObjReprMap.length(),
                                  D::m_DetViewSystemAndBox.length(),
                                  D::m_DetObjAppearance.length(),
                                  D::m_DetViewDimStrategy.length(),
                                  D::m_DetViewLengthClip.length(),
                                  D::m_DetObjAnnotationStrategy.length(),
                                  D::m_DetAnnotationType.length(),
                                  D::m_DetArrangerControl.length(),
                                  D::m_DetArrangerStrategy.length(),
                                  D::m_DetViewDimRequestLinear.length(),
                                  D::m_DetViewDimPointSelection.length(),
                                  D::m_DetMasterCopy.length(),
                                  D::m_DetObjQualifierSet.length(),
                                  D::m_LineType.length(),
                                  D::m_DetBaseCategory.length(),
                                  D::m_DetObjAnnotationGroup.length(),
                                  D::m_DetViewDimRequestLinearGroup.length(),
                                  D::m_DetObjQualifierSetGroup.length(),
                                  D::m_DetHatchSettings.length()})
            text += std::to_string(length) + " ";
        return text;
    }
};

std::vector<std::pair<int, std::string>> named; // by the naming callback
std::vector<std::pair<int, std::string>> steps; // of the host's progress bar
int refused = -1;

TEST_F(DeepCopyTest, EveryRowIsCollectedOnce)
{
    EXPECT_EQ(D::GetDependenciesByDetailKey(1), 0);
    EXPECT_EQ(lengths(), "1 1 2 2 1 2 2 1 1 1 1 1 1 2 2 1 2 1 2 1 1 1 1 ");
    EXPECT_EQ(D::SetRowNr(), 31);
    EXPECT_EQ(D::m_CurrRowsToWrite, 0);
    // references are positions; what is referred to is collected first
    EXPECT_EQ(D::m_DetStyleCopy[0].requests[0], 0);
    EXPECT_EQ(D::m_DetStyleCopy[0].requests[1], 1);
    EXPECT_EQ(D::m_DetViewRequest[0].objReprMap, 0);
    EXPECT_EQ(D::m_DetViewRequest[1].objReprMap, 0);
    EXPECT_EQ(D::m_DetViewRequest[1].systemAndBox, 1);
    EXPECT_EQ(D::m_DetObjReprMap[0].items[0].lineType, 0);
    EXPECT_EQ(D::m_DetObjReprMap[0].items[1].lineType, -1);
    EXPECT_EQ(D::m_DetObjReprMap[0].items[1].objQualifier, 1);
    EXPECT_EQ(D::m_DetViewDimRequestLinear[0].points[1], 1);
    EXPECT_EQ(D::m_DetMasterCopy[0].detailStyle, 0);
    EXPECT_EQ(D::m_DetBaseCategory[0].key, 2); // of the first request, before the master's
    EXPECT_EQ(D::m_DetMasterCopy[0].baseCategory, 1);
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
    EXPECT_EQ(lengths(), "1 1 2 2 1 2 2 1 1 1 1 1 1 2 2 1 2 1 2 0 0 0 1 ");
    EXPECT_EQ(D::m_DetObjQualifierSet[0].group, 1); // as it stands
}

TEST_F(DeepCopyTest, WhatIsMissingEndsTheCollection)
{
    const struct {
        const char* statement;
        const char* lengths; // of styles, arrangements, requests, categories, maps, boxes
    } cases[] = {
        {"DELETE FROM DetailMasterTable", "0 0 0 0 0 0 "},
        {"DELETE FROM DetailStyle", "0 0 0 0 0 0 "},
        {"DELETE FROM DetViewArrangeStrategy", "0 0 0 0 0 0 "},
        {"DELETE FROM DetViewRequest WHERE [Key] = 2", "0 1 1 2 1 1 "},
        {"DELETE FROM Linetypes", "0 1 0 0 0 1 "},
        {"UPDATE DetViewRequest SET LengthClipXY = -1", "0 1 0 0 1 1 "},
        {"DELETE FROM DetObjAnnotationGroup", "0 1 0 0 0 1 "},
        {"DELETE FROM DetViewDimPointSelection WHERE [Key] = 2", "0 1 0 0 1 1 "},
        {"DELETE FROM DetBaseCategories WHERE [Key] = 2", "0 1 0 0 1 1 "},
    };
    for (const auto& [statement, expected] : cases) {
        D::ResetDeepCopyInfo();
        sql(details, {statement});
        EXPECT_EQ(D::GetDependenciesByDetailKey(1), -1) << statement;
        EXPECT_EQ(lengths().substr(0, 12), expected) << statement;
        TearDown();
        SetUp();
    }
    EXPECT_EQ(D::GetDependenciesByDetailKey(2), -1); // a style without master
    EXPECT_EQ(D::GetDependenciesByDetailKey(99), -1);
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
        {22, {"Copy (9)  A"}, "Copy (9)  A", "Copy (10) A"},
        {22, {"Copy (x) A"}, "Copy (x) A", "Copy (1) A"},
        {22, {"A) b", "Copy of A) b"}, "A) b", "Copy (1) A) b"},
        {22, {""}, "", "Copy of "},
        {22, {"it's", "Copy of it's"}, "it's", "Copy (1) it's"},
        {22, {"[100%d]"}, "[100%d]", "Copy of [100%d]"},
        {22, {"Träger", "Copy of Träger"}, "Träger", "Copy (1) Träger"},
        {22, {"梁 %s 🏗"}, "梁 %s 🏗", "Copy of 梁 %s 🏗"},
        {26, {"A"}, "A", "Copy of A"},
        {23, {"A"}, "A", "Copy of A"},
        {0, {"A"}, "A", "Copy of A"},
        {18, {"A"}, "A", nullptr}, // types without a list of names
        {24, {"A"}, "A", nullptr},
        {15, {"A"}, "A", nullptr},
    };
    for (const auto& [t, existing, name, unique] : cases) {
        KorString table;
        M::getTableName(type(t), table);
        sql(details, {"DELETE FROM Linetypes"});
        int key = 1000;
        for (const std::string& row : t == 18 ? Texts() : existing) {
            std::string quoted;
            for (const char c : row)
                quoted.append(c == '\'' ? 2 : 1, c);
            sql(details, {"INSERT OR REPLACE INTO " + table.toUtf8() + " ([Key], RunName) VALUES (" +
                          std::to_string(++key) + ", '" + quoted + "')"});
        }
        KorString found = text(name);
        EXPECT_EQ(D::GetDefaultNameForRow(type(t), found), unique == nullptr ? 0 : 1) << name;
        EXPECT_EQ(found.toUtf8(), unique == nullptr ? name : unique) << "of " << name;
        found = text(name);
        EXPECT_EQ(D::GetNameForRow(type(t), found), 1);
        EXPECT_EQ(found.toUtf8(), unique == nullptr ? name : unique);
    }
}

/// A copy inside one database: new rows under new names, groups and categories reused, the owner is the user.
TEST_F(DeepCopyTest, CopyInPlace)
{
    const std::string before = styleTree(details, base, 1);
    EXPECT_EQ(copyInPlace(), 2);
    EXPECT_EQ(D::getRunningFromCommand(), 1);
    EXPECT_EQ(styleTree(details, base, 1), before);
    StructDetailMaster master;
    ASSERT_EQ(StructDetailMasterMarshal::getStructByKey(2, master), 1);
    const std::string style = std::string("style ") + awkward;
    EXPECT_EQ(master.runName.toUtf8(), "Copy of " + style); // the style's new name
    EXPECT_EQ(master.subCategory, 2);                       // the first free one
    EXPECT_EQ(master.baseCategory, 1);
    EXPECT_EQ(master.ownerText.toUtf8(), "OFFICE");
    EXPECT_EQ(cell(details, "DetailStyle", 3, 14), "OFFICE");
    EXPECT_EQ(cell(details, "DetHatchSettings", 2, 7), "OFFICE");
    const struct {
        const char* table;
        std::size_t rows;
    } cases[] = {{"DetailStyle", 3},
                 {"DetViewArrangeStrategy", 2},
                 {"DetViewRequest", 4},
                 {"DetViewRequestCategories", 4},
                 {"DetObjReprMapsNew", 2},
                 {"DetObjReprMapItems", 4},
                 {"DetViewDimStrategyItems", 4},
                 {"DetObjQualifierSet", 4},
                 {"DetObjQualifierSetItem", 8},
                 {"DetViewDimRequestLinear", 4},
                 {"DetObjAnnotationStrategy", 2},
                 {"DetHatchSettings", 2},
                 {"Linetypes", 2},
                 {"DetBaseCategories", 2},
                 {"DetObjAnnotationGroup", 1},
                 {"DetViewDimRequestLinearGroup", 1},
                 {"DetObjQualifierSetGroup", 1},
                 {"DetailMasterTable", 2}};
    for (const auto& [table, count] : cases)
        EXPECT_EQ(rows(details, table).size(), count) << table;
    // what was newly written, and not what was reused
    ASSERT_EQ(D::m_QualifierSetsResultedFromDeepCopy.length(), 2);
    EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy[0].key, 3);
    EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy[0].ownerText.toUtf8(), "OFFICE");
    EXPECT_EQ(D::m_BaseCategoriesResultedFromDeepCopy.length(), 0);
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy.length(), 2);
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy[1].points[0], 4);
    EXPECT_EQ(D::m_AnnotationStrategiesResultedFromDeepCopy.length(), 1);
    // saving again in the same copy writes nothing
    master = D::m_DetMasterCopy[0];
    EXPECT_EQ(D::Save(master, 0), 2);
    long key = -1;
    EXPECT_TRUE(D::m_writeTransferKeyMap.lookup({L"StructDetailStyle", 0, 1}, key));
    EXPECT_EQ(key, 3);
    EXPECT_EQ(copyInPlace(), 3);
    ASSERT_EQ(StructDetailMasterMarshal::getStructByKey(3, master), 1);
    EXPECT_EQ(master.runName.toUtf8(), "Copy (1) " + style);
    EXPECT_EQ(master.subCategory, 3);
}

TEST_F(DeepCopyTest, GroupsOfTheHostsChoice)
{
    put(details, StructDetObjQualifierSetGroup{7, L"chosen", 0});
    D::detQualifierSetGroup = 7;
    D::detDimStrategyGroup = 8;
    D::detAnnotationGroup = 9;
    D::detBaseCategory = 2;
    ASSERT_EQ(copyInPlace(), 2);
    EXPECT_EQ(cell(details, "DetObjQualifierSet", 3, 2), "7"); // the next written row only
    EXPECT_EQ(cell(details, "DetObjQualifierSet", 4, 2), "1");
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy[0].group, 8);
    EXPECT_EQ(D::m_LinearDimRequestsResultedFromDeepCopy[1].group, 1);
    EXPECT_EQ(D::m_AnnotationStrategiesResultedFromDeepCopy[0].group, 9);
    EXPECT_EQ(cell(details, "DetailMasterTable", 2, 3), "2");
    EXPECT_EQ(cell(details, "DetailMasterTable", 2, 4), "1"); // free in that category
    EXPECT_EQ(D::detQualifierSetGroup + D::detDimStrategyGroup + D::detAnnotationGroup + D::detBaseCategory, -4);
}

TEST_F(DeepCopyTest, NamingCallback)
{
    named.clear();
    D::pGetNameForRowFn = [](M::eTableType t, M::eTableType root, KorString& name) {
        EXPECT_EQ(root, M::kDetailStyle);
        named.emplace_back(t, name.toUtf8());
        name = L"N'" + name;
        return t == refused ? -1 : 1;
    };
    refused = M::kDetViewLengthClip;
    const Texts styles = rows(details, "DetailStyle");
    EXPECT_EQ(copyInPlace(), -1);
    EXPECT_EQ(named.back().first, refused);
    EXPECT_EQ(rows(details, "DetailStyle"), styles);
    EXPECT_EQ(rows(details, "DetViewLengthClip").size(), 1u);
    EXPECT_EQ(rows(details, "DetViewDimStrategyNew").size(), 2u); // written before, stays
    refused = -1;
    named.clear();
    EXPECT_GT(copyInPlace(), 0);
    std::string order;
    for (const auto& [t, name] : named)
        order += std::to_string(t) + " ";
    // no groups, categories, line types or masters; maps after their items
    EXPECT_EQ(order, "0 1 2 5 16 6 30 9 10 11 12 16 6 4 7 13 14 14 13 8 2 5 ");
    EXPECT_EQ(cell(details, "DetailStyle", 3, 1), std::string("N'style ") + awkward);
}

TEST_F(DeepCopyTest, Progress)
{
    struct Sink : korodbc::host::ProgressSink {
        Texts seen;
        void title(const KorString& t) override { seen.push_back(t.toUtf8()); }
        void percentage(int p, int flag) override
        {
            seen.push_back(std::to_string(p) + "/" + std::to_string(flag));
        }
        void reset() override { seen.push_back("reset"); }
    };
    const auto sink = std::make_shared<Sink>();
    korodbc::host::setProgressSink(sink);
    const auto label = [](std::string text) { return text.append(text.size() < 40 ? 40 - text.size() : 0, ' '); };
    D::ResetDeepCopyInfo();
    StructLinetypes line;
    D::GetDependencies(line, 1);
    EXPECT_EQ(sink->seen, (Texts{label("Reading DetObjQualifierSet"), "0/1", "1/0"})); // not under their own type
    sink->seen.clear();
    D::m_NrRowsToWrite = 3;
    D::m_CurrRowsToWrite = 2;
    D::ProgressBar(M::kLinetypes, 1);
    EXPECT_EQ(sink->seen, (Texts{label("Writing Linetypes"), "65/1", "66/0"}));
    EXPECT_EQ(D::m_CurrRowsToWrite, 3);
    sink->seen.clear();
    ASSERT_GT(copyInPlace(), 0);
    EXPECT_EQ(sink->seen.back(), "77/0"); // 24 of 31 rows before the last one: reused rows are not reported
    // the host's own bar sees the writing only
    sink->seen.clear();
    steps.clear();
    D::pInitProgressBar = [](int start, int total) { steps.emplace_back(start, std::to_string(total)); };
    D::pUpdateProgressBar = [](int row, KorString what) { steps.emplace_back(row, what.toUtf8()); };
    ASSERT_GT(copyInPlace(), 0);
    EXPECT_TRUE(sink->seen.empty());
    EXPECT_EQ(steps.at(0), std::make_pair(0, std::string("31")));
    EXPECT_EQ(steps.at(1), std::make_pair(1, label("Writing DetViewArrangeStrategy")));
    EXPECT_EQ(steps.back(),
              std::make_pair(static_cast<int>(steps.size()) - 1, label("Writing DetailMasterTable")));
}

} // namespace
