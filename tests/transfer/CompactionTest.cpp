#include "edit/KorTableEdit.h"
#include "records/configuration/ExchangeRecords.h"
#include "roots/ProgressSink.h"
#include "support/DetailFixture.h"
#include "transfer/KorOdbcCompactDetailsTables.h"
#include "transfer/KorODBCDetailStyleExports.h"

#include <cstdio>
#include <memory>

using namespace details;

namespace {

using Compact = KorOdbcCompactDetailsTables;
using M = KorOdbcMan;

class PercentageRecorder : public korodbc::host::ProgressSink {
public:
    void title(const KorString&) override {}
    void percentage(int value, int flag) override
    {
        values.push_back(value);
        flags += flag;
    }
    void reset() override { values.push_back(-1); }
    std::vector<int> values;
    int flags = 0;
};

StructDetViewLengthClip clip(int key, double length = 100, const char* name = "clip")
{
    return {key, text(name + std::to_string(key)), 1, 0, 1, length, 8, L"owner"};
}
StructDetViewRequest request(int key, int lengthClip)
{
    return {key,      text("request " + std::to_string(key)),  1, 1, 1, lengthClip, 0, 1, L"%N", 0.5, 0,
            L"owner", KorArray<StructDetViewRequestCategory>()};
}
StructDetailStyle style(int key, std::initializer_list<int> requests, int arrange = 1)
{
    return {key,
            text("style " + std::to_string(key)),
            arrange,
            1,
            2,
            L"T",
            1,
            L"C",
            2,
            L"S",
            L"D",
            1,
            3,
            1,
            L"owner",
            0,
            list<int>(requests)};
}
StructDetObjQualifierSet qualifiers(int key, int qualifier, int group = 1)
{
    return {key,   text("set " + std::to_string(key)),
            group, L"owner",
            0,     list<StructDetObjQualifierSetItem>({{-1, -1, 0, qualifier, L"role", L"filter"}})};
}
StructDetailStyleMap styleMap(int key, std::initializer_list<StructDetailStyleMapItem> items)
{
    return {key, text("map " + std::to_string(key)), L"owner", 0, list<StructDetailStyleMapItem>(items)};
}

/// An empty detail database, but for what a test puts there.
class CompactionTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        M::InitializeStatics::release();
        M::InitializeStatics::build();
        ASSERT_EQ(M::initializeTables(), 1);
        M::setCurrentDSN(details);
        M::setCurrentAddIn(KorDSNDefinitions::kBase);
    }
    void TearDown() override
    {
        korodbc::host::setProgressSink(nullptr);
        M::InitializeStatics::release();
        RepositoryTest::TearDown();
    }
    /// Runs a compaction; returns its statements, those that take edit copies left out.
    Texts compact(Compact::eCompactType type, int deleteFlag = 1, int expected = 1)
    {
        StatementRecorder statements;
        EXPECT_EQ(Compact::startCompactProcess(details, deleteFlag, type), expected);
        return statements.take();
    }
    /// Stores records; reals of one column with all their digits.
    template <class T>
    void putReals(const std::string& column, double T::*field, std::initializer_list<T> records)
    {
        for (const T& record : records) {
            put(details, record);
            char value[40];
            std::snprintf(value, sizeof value, "%.17g", record.*field);
            sql(details, {"UPDATE " + std::string(descriptionOf<T>().table) + " SET " + column + " = " + value +
                          " WHERE [Key] = " + std::to_string(record.key)});
        }
    }
    static std::vector<int> keys(const char* table)
    {
        std::vector<int> result;
        for (const std::string& row : rows(details, table))
            result.push_back(std::stoi(row));
        return result;
    }
};

using Keys = std::vector<int>;

TEST_F(CompactionTest, ReferencesAreRedirectedAndDuplicatesDeletedTenAtATime)
{
    for (const int key : {4, 7, 9})
        put(details, clip(key));
    put(details, clip(5, 200));
    put(details, request(1, 9));
    put(details, request(2, 7));
    put(details, request(3, 5));
    put(details, style(1, {3, 2, 1, 77}));
    put(details, style(2, {3, 1, 1, 77}));
    put(details, StructDetViewRequestCategory{1, 6, 2, 0});
    put(details, StructDetViewRequestCategory{2, 6, 1, 0});
    EXPECT_EQ(compact(Compact::kCompactDetailStyles),
              (Texts{"UPDATE DetViewRequest SET LengthClipXY=4 WHERE [Key]=1;",
                     "UPDATE DetViewRequest SET LengthClipXY=4 WHERE [Key]=2;",
                     "UPDATE DetailStyle SET Request2=1 WHERE [Key]=1;",
                     "UPDATE DetViewRequestCategories SET DetViewRequest=1 WHERE [Key]=1;",
                     "DELETE FROM DetViewLengthClip WHERE [Key] = 7 OR [Key] = 9;",
                     "DELETE FROM DetViewRequest WHERE [Key] = 2;",
                     "DELETE FROM DetViewRequestCategories WHERE [Key] = 2;"}));
    EXPECT_EQ(keys("DetViewLengthClip"), (Keys{4, 5}));
    EXPECT_EQ(keys("DetViewRequest"), (Keys{1, 3}));
    EXPECT_EQ(keys("DetailStyle"), (Keys{1, 2})); // equal now, and kept
    EXPECT_EQ(compact(Compact::kCompactAll), Texts{});

    for (int key = 101; key <= 113; ++key)
        put(details,
            StructDetailFilenameSelector{key, text("files " + std::to_string(key)), L"a", L"b", 1, 3, L"o"});
    EXPECT_EQ(
        compact(Compact::kCompactAll),
        (Texts{"DELETE FROM DetailFilenameSelector WHERE [Key] = 102 OR [Key] = 103 OR [Key] = 104 OR [Key] = "
               "105 OR [Key] = 106 OR [Key] = 107 OR [Key] = 108 OR [Key] = 109 OR [Key] = 110 OR [Key] = 111;",
               "DELETE FROM DetailFilenameSelector WHERE [Key] = 112 OR [Key] = 113;"}));
}

TEST_F(CompactionTest, EveryReferenceHasItsStatementInItsPlace)
{
    fillStyle(details, "style");
    fillStyle(details, "twin", 10);
    put(details, style(20, {1, 11}, 11));
    for (const int key : {1, 11}) {
        put(details, StructDetailFilenameSelector{key, L"f", L"a", L"b", 1, 3, L"o"});
        put(details,
            StructDetProcessScales{key, L"s", L"o", 0, list<StructDetProcessScalesItem>({{-1, -1, 0, 1, 9}})});
        put(details, StructDetailProcessMain2CutScale{key, L"m", L"o", 0,
                                                      list<StructDetailProcessMain2CutScaleItem>({{0.5, 0.25}})});
        put(details, styleMap(key, {{-1, 0, L"long", key, 20, 0}}));
        put(details, StructDetailProcessStep{key, L"p", 1, key, key, key, key, 1, 1, 1, 1, 1, 10, 10, 5, L"o"});
    }
    put(details, StructDetailProcessDefinition{1, L"d", 1, L"t", 1, 1, L"o", 0, list<int>({1, 11})});
    // what the fixture makes different on purpose
    sql(details,
        {"UPDATE DetObjQualifierSetItem SET ModelRole = 'same'", "UPDATE DetObjReprMapItems SET LineType = -1",
         "UPDATE DetObjReprMapItems SET Appearance = 1", "UPDATE DetObjAnnotationStrategy SET [Group] = 1",
         "UPDATE DetViewDimStrategyItems SET Description = 'same'"});
    const Texts statements = compact(Compact::kCompactAll);
    const Texts expected = {
        "UPDATE DetObjAnnotationStrategy SET AnnotationType=1 WHERE [Key]=11;",
        "UPDATE DetObjAnnotationStrategy SET ArrangerControl=1 WHERE [Key]=11;",
        "UPDATE DetObjAnnotationStrategy SET ArrangerStrategy=1 WHERE [Key]=11;",
        "UPDATE DetObjReprMapItems SET ObjQualifier=1 WHERE ([Key]=11 AND [Order]=0);",
        "UPDATE DetObjReprMapItems SET AnnotationStrategy=1 WHERE ([Key]=11 AND [Order]=0);",
        "UPDATE DetObjReprMapItems SET ObjQualifier=2 WHERE ([Key]=11 AND [Order]=1);",
        "UPDATE DetObjReprMapItems SET AnnotationStrategy=1 WHERE ([Key]=11 AND [Order]=1);",
        "UPDATE DetViewDimPointSelection SET Objects=1 WHERE [Key]=11;",
        "UPDATE DetViewDimPointSelection SET Objects=2 WHERE [Key]=12;",
        "UPDATE DetViewDimRequestLinear SET Point1=1 WHERE [Key]=11;",
        "UPDATE DetViewDimRequestLinear SET Point2=2 WHERE [Key]=11;",
        "UPDATE DetViewDimRequestLinear SET Point1=2 WHERE [Key]=12;",
        "UPDATE DetViewDimStrategyItems SET RequestLinear=1 WHERE ([Key]=11 AND [Order]=0);",
        "UPDATE DetViewDimStrategyItems SET RequestLinear=2 WHERE ([Key]=11 AND [Order]=1);",
        "UPDATE DetViewRequest SET SystemAndBox=1 WHERE [Key]=11;",
        "UPDATE DetViewRequest SET ObjReprMap=1 WHERE [Key]=11;",
        "UPDATE DetViewRequest SET DimStrategy=1 WHERE [Key]=11;",
        "UPDATE DetViewRequest SET LengthClipXY=1 WHERE [Key]=11;",
        "UPDATE DetViewRequest SET SystemAndBox=2 WHERE [Key]=12;",
        "UPDATE DetViewRequest SET ObjReprMap=1 WHERE [Key]=12;",
        "UPDATE DetViewRequest SET DimStrategy=1 WHERE [Key]=12;",
        "UPDATE DetViewRequest SET LengthClipXY=1 WHERE [Key]=12;",
        "UPDATE DetailStyle SET Request1=1 WHERE [Key]=11;",
        "UPDATE DetailStyle SET Request2=2 WHERE [Key]=11;",
        "UPDATE DetailStyle SET ViewArrangeStrategy=1 WHERE [Key]=11;",
        "UPDATE DetailStyle SET Request1=1 WHERE [Key]=12;",
        "UPDATE DetailStyle SET ViewArrangeStrategy=1 WHERE [Key]=12;",
        "UPDATE DetailStyle SET Request2=1 WHERE [Key]=20;",
        "UPDATE DetailStyle SET ViewArrangeStrategy=1 WHERE [Key]=20;",
        "UPDATE DetViewRequestCategories SET DetViewRequest=1 WHERE [Key]=11;",
        "UPDATE DetViewRequestCategories SET DetViewRequest=1 WHERE [Key]=12;",
        "UPDATE DetailStyleMapItems SET ObjQualifierSet=1 WHERE ([Key]=11 AND [Order]=0);",
        "UPDATE DetailProcessStep SET FilenameSelector=1 WHERE [Key]=11;",
        "UPDATE DetailProcessStep SET AlternativeScales=1 WHERE [Key]=11;",
        "UPDATE DetailProcessStep SET DependOnMainView=1 WHERE [Key]=11;",
        "UPDATE DetailProcessStep SET StyleMap=1 WHERE [Key]=11;",
        "UPDATE DetailProcessDefinition SET Step2=1 WHERE [Key]=1;",
        "DELETE FROM DetViewSystemAndBox WHERE [Key] = 11 OR [Key] = 12;",
        "DELETE FROM DetAnnotationType WHERE [Key] = 11;",
        "DELETE FROM DetArrangerControl WHERE [Key] = 11;",
        "DELETE FROM DetArrangerStrategy WHERE [Key] = 11;",
        "DELETE FROM DetViewArrangeStrategy WHERE [Key] = 11;",
        "DELETE FROM DetViewLengthClip WHERE [Key] = 11;",
        "DELETE FROM DetViewDimStrategyNew WHERE [Key] = 11;",
        "DELETE FROM DetViewDimStrategyItems WHERE [Key]=11;",
        "DELETE FROM DetObjQualifierSet WHERE [Key] = 11 OR [Key] = 12;",
        "DELETE FROM DetObjAnnotationStrategy WHERE [Key] = 11;",
        "DELETE FROM DetObjReprMapsNew WHERE [Key] = 11;",
        "DELETE FROM DetObjReprMapItems WHERE [Key]=11;",
        "DELETE FROM DetViewDimPointSelection WHERE [Key] = 11 OR [Key] = 12;",
        "DELETE FROM DetViewDimRequestLinear WHERE [Key] = 11 OR [Key] = 12;",
        "DELETE FROM DetViewRequest WHERE [Key] = 11 OR [Key] = 12;",
        "DELETE FROM DetailFilenameSelector WHERE [Key] = 11;",
        "DELETE FROM DetailProcessMain2CutScale WHERE [Key] = 11;",
        "DELETE FROM DetailProcessScales WHERE [Key] = 11;",
        "DELETE FROM DetailProcessStep WHERE [Key] = 11;",
        "DELETE FROM DetailStyleMapNew WHERE [Key] = 11;",
        "DELETE FROM DetailStyleMapItems WHERE [Key]=11;",
    };
    ASSERT_EQ(statements.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(statements[i], expected[i]) << i;
    KorArray<KorDetailReference> dangling;
    EXPECT_EQ(KorDetailReferences::getDangling(details, KorDSNDefinitions::kBase, dangling), 1);
    for (const KorDetailReference& reference : dangling)
        EXPECT_TRUE(reference.targetKey < 11) << reference.table.toUtf8() << "." << reference.column.toUtf8();
}

TEST_F(CompactionTest, WhatMakesRowsEqual)
{
    const auto empty = [] {
        for (const char* table : {"DetViewLengthClip", "DetViewSystemAndBox", "DetailStyleMapNew",
                                  "DetailStyleMapItems", "DetObjQualifierSet", "DetObjQualifierSetItem"})
            sql(details, {"DELETE FROM " + std::string(table)});
    };
    const auto keep = [&](auto... records) {
        empty();
        (put(details, records), ...);
        compact(Compact::kCompactAll);
    };
    const auto box = [](int key, double rotation) {
        return StructDetViewSystemAndBox{key, L"b", 1, 2, 3, 1, rotation, 90, 10, 20, L"o"};
    };
    const auto map = [](int key, std::initializer_list<const wchar_t*> scripts, int overrides = 0) {
        StructDetailStyleMap made = styleMap(key, {});
        for (const wchar_t* script : scripts)
            made.items.append(StructDetailStyleMapItem{-1, 0, script, 5, 6, overrides});
        return made;
    };
    // tolerance, which is not transitive: the first row that matches claims
    putReals("MinimumLength", &StructDetViewLengthClip::minimumLength,
             {clip(1, 1), clip(2, 1 + 1e-11), clip(3, 1 + 1e-9), clip(4, 1 + 1e-9 - 0.9e-10), clip(5, 1 + 1.9e-10),
              clip(6, 1 + 0.9e-10), clip(11, 1e6), clip(12, 1e6 + 1), clip(13, -5e-11), clip(14, 5e-11 - 1e-12),
              clip(15, 1.4e-10), clip(16, 2e-10 - 1e-11), clip(17, 1e300), clip(18, 1e300)});
    compact(Compact::kCompactDetailStyles);
    EXPECT_EQ(keys("DetViewLengthClip"), (Keys{1, 3, 5, 11, 12, 13, 15, 17}));
    empty();
    putReals("RotationX", &StructDetViewSystemAndBox::rotationX,
             {box(1, 30), box(2, 30 + 1e-11), box(3, -0.0), box(4, 0), box(5, 30)});
    compact(Compact::kCompactDetailStyles);
    EXPECT_EQ(keys("DetViewSystemAndBox"), (Keys{1, 2, 3}));
    // texts of two characters or less equal any other
    keep(map(1, {L"ab"}), map(2, {L"xyz"}), map(3, {L"abc"}), map(4, {L"abc"}, 1), map(5, {L"xyz"}, 1));
    EXPECT_EQ(keys("DetailStyleMapNew"), (Keys{1, 4, 5}));
    keep(map(1, {L"abc", L"def"}), map(2, {L"abc", L"d"}), map(3, {L"ghi", L""}), map(4, {L"", L"def"}),
         map(5, {L"ghi", L"def"}), map(6, {L"xyz", L"uvw"}), map(7, {L"abc"}), map(8, {}), map(9, {}));
    EXPECT_EQ(keys("DetailStyleMapNew"), (Keys{1, 3, 6, 7, 8}));
    // groups and names do not count, items do
    StructDetObjQualifierSet two = qualifiers(4, 9);
    two.items.append(two.items[0]);
    keep(qualifiers(1, 9), qualifiers(2, 9, 7), qualifiers(3, 8), two);
    EXPECT_EQ(keys("DetObjQualifierSet"), (Keys{1, 3, 4}));
    // the difference of two infinities is no number
    for (const int key : {1, 2})
        put(details, clip(key));
    sql(details, {"UPDATE DetViewLengthClip SET Gap = 9e999"});
    compact(Compact::kCompactDetailStyles);
    EXPECT_EQ(keys("DetViewLengthClip"), (Keys{1, 2}));
}

TEST_F(CompactionTest, WithoutDeletingDuplicatesStay)
{
    for (const int key : {1, 2})
        put(details, clip(key));
    put(details, request(1, 2));
    EXPECT_EQ(compact(Compact::kCompactDetailStyles, 0),
              Texts{"UPDATE DetViewRequest SET LengthClipXY=1 WHERE [Key]=1;"});
    EXPECT_EQ(keys("DetViewLengthClip"), (Keys{1, 2}));
}

TEST_F(CompactionTest, ProcessesAlone)
{
    put(details, qualifiers(1, 9));
    put(details, qualifiers(2, 9));
    put(details, clip(1));
    put(details, clip(2));
    put(details, styleMap(1, {{-1, 0, L"long", 2, 6, 0}}));
    put(details, StructDetViewDimPointSelection{1, L"it's", 1, 2, 1, 0, L"o"});
    KorArray<KorCompactedTable> tables;
    KorArray<KorDetailReference> stranded;
    {
        StatementRecorder statements(true);
        ASSERT_EQ(Compact::previewCompactProcess(details, Compact::kCompactDetailProcesses, tables, stranded), 1);
        for (const std::string& statement : statements.take())
            EXPECT_TRUE(statement.starts_with("SELECT") || statement.starts_with("PRAGMA") ||
                        statement == "BEGIN" || statement == "END") // of one state that is read
                << statement;
    }
    ASSERT_EQ(stranded.length(), 1);
    EXPECT_EQ(stranded[0].table, KorString(L"DetViewDimPointSelection"));
    EXPECT_EQ(stranded[0].name, KorString(L"it's"));
    EXPECT_EQ(stranded[0].targetKey, 2);
    ASSERT_EQ(tables.length(), 7);
    EXPECT_EQ(tables[0].duplicates + tables[0].deleted, 2);
    ASSERT_EQ(Compact::previewCompactProcess(details, Compact::kCompactAll, tables, stranded), 1);
    EXPECT_EQ(stranded.length(), 1); // nothing is stranded when everything is redirected

    EXPECT_EQ(compact(Compact::kCompactDetailProcesses),
              (Texts{"UPDATE DetailStyleMapItems SET ObjQualifierSet=1 WHERE ([Key]=1 AND [Order]=0);",
                     "DELETE FROM DetObjQualifierSet WHERE [Key] = 2;"}));
    EXPECT_EQ(keys("DetViewLengthClip"), (Keys{1, 2}));
    Compact::getCompactedTables(tables);
    EXPECT_EQ(tables[0].table, KorString(L"DetObjQualifierSet"));
    EXPECT_EQ(tables[0].rows * 10 + tables[0].deleted, 21);
}

/// The items of deleted sets stay for Cancel; a new set of the same key does not get them.
TEST_F(CompactionTest, ItemsOfDeletedQualifierSets)
{
    for (const int key : {1, 2})
        put(details, qualifiers(key, 9));
    const Texts before = rows(details, "DetObjQualifierSet"), items = rows(details, "DetObjQualifierSetItem");
    compact(Compact::kCompactAll);
    EXPECT_EQ(keys("DetObjQualifierSet"), Keys{1});
    EXPECT_EQ(M::setStatusOnCancel(M::kDetObjQualifierSet, M::kFirstCopy), 1);
    EXPECT_EQ(rows(details, "DetObjQualifierSet"), before);
    EXPECT_EQ(rows(details, "DetObjQualifierSetItem"), items);

    compact(Compact::kCompactAll);
    M::m_structDetObjQualifierSet = qualifiers(2, 8);
    KorODBCDetailStyleExports::setImportInProgress(1); // may keep its key
    EXPECT_EQ(M::appendNewRecord(M::kDetObjQualifierSet, 1, M::kFirstCopy), 2);
    KorODBCDetailStyleExports::setImportInProgress(0);
    StructDetObjQualifierSet added;
    ASSERT_EQ(StructDetObjQualifierSetMarshal::getStructByKey(2, added), 1);
    ASSERT_EQ(added.items.length(), 1);
    EXPECT_EQ(added.items[0].objectQualifier, 8);
}

TEST_F(CompactionTest, QualifierSetsAreNumberedWithTheirItems)
{
    put(details, qualifiers(1, 9));
    put(details, qualifiers(3, 8));
    put(details, qualifiers(8, 7));
    put(details, qualifiers(9, 9));
    put(details, styleMap(1, {{-1, 0, L"long", 9, 6, 0}, {-1, 1, L"long", 8, 6, 0}}));
    put(details, StructDetViewDimPointSelection{1, L"p", 1, 3, 1, 0, L"o"});
    sql(details, {"INSERT INTO DetObjQualifierSetItem ([Key], IdDetObjQualifierSet, [Order], ObjectQualifier) "
                  "VALUES (5000, 2, 0, 4711)"}); // of a set that is long gone
    StatementRecorder statements;
    EXPECT_EQ(Compact::compactQualifierSets(details, 1, Compact::kCompactDetailStyles), 1);
    EXPECT_EQ(statements.take(),
              (Texts{"UPDATE DetailStyleMapItems SET ObjQualifierSet=1 WHERE ([Key]=1 AND [Order]=0);",
                     "DELETE FROM DetObjQualifierSet WHERE [Key] = 9;",
                     "UPDATE DetObjReprMapItems SET ObjQualifier=2 WHERE ObjQualifier=3",
                     "UPDATE DetViewDimPointSelection SET Objects=2 WHERE Objects=3",
                     "UPDATE DetailStyleMapItems SET ObjQualifierSet=2 WHERE ObjQualifierSet=3",
                     "UPDATE DetObjQualifierSet SET [Key]=2 WHERE [Key]=3",
                     "UPDATE DetObjReprMapItems SET ObjQualifier=3 WHERE ObjQualifier=8",
                     "UPDATE DetViewDimPointSelection SET Objects=3 WHERE Objects=8",
                     "UPDATE DetailStyleMapItems SET ObjQualifierSet=3 WHERE ObjQualifierSet=8",
                     "UPDATE DetObjQualifierSet SET [Key]=3 WHERE [Key]=8"}));
    KorArray<StructDetObjQualifierSet> sets;
    ASSERT_EQ(StructDetObjQualifierSetMarshal::getTable(sets), 1);
    ASSERT_EQ(sets.length(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(sets[i].key, i + 1);
        ASSERT_EQ(sets[i].items.length(), 1) << i;
        EXPECT_EQ(sets[i].items[0].objectQualifier, 9 - i);
    }
    EXPECT_EQ(rows(details, "DetObjQualifierSetItem").size(), 4u); // that of the deleted set stays
    EXPECT_EQ(M::getStatus(M::kDetObjQualifierSet, M::kFirstCopy), M::eNotModified);
    // duplicates stay without the flag, and with any other type
    put(details, qualifiers(4, 9));
    for (const auto& [flag, type] :
         {std::pair(0, Compact::kCompactDetailStyles), std::pair(1, Compact::kCompactAll),
          std::pair(1, Compact::kCompactDetailProcesses)})
        EXPECT_EQ(Compact::compactQualifierSets(details, flag, type), 1);
    EXPECT_EQ(keys("DetObjQualifierSet"), (Keys{1, 2, 3, 4}));
}

/// Keys of 0 and less make numbers rise; nothing may be in their way.
TEST_F(CompactionTest, QualifierSetsOfAnyKeysKeepTheirItemsAndReferences)
{
    const int keys[] = {-7, 0, 1, 2, 3, 9};
    KorArray<StructDetObjReprMapItem> items;
    for (const int key : keys) {
        put(details, qualifiers(key, 100 + key));
        StructDetObjReprMapItem item;
        item.order = static_cast<int>(items.length());
        item.objQualifier = key;
        items.append(item);
        put(details, StructNecessaryViewsConfiguration{key + 20, L"rule", 1, 1, 0, key, 0, 1, L"o"});
    }
    put(details, StructNecessaryViewsConfiguration{50, L"any", 1, 1, 0, -1, 0, 1, L"o"});
    put(details, StructDetObjReprMap{1, L"map", L"o", 0, items});
    ASSERT_EQ(Compact::compactQualifierSets(details, 1, Compact::kCompactDetailStyles), 1)
        << Compact::getFailure().toUtf8();
    StructDetObjReprMap map;
    ASSERT_EQ(StructDetObjReprMapMarshal::getStructByKey(1, map), 1);
    for (int i = 0; i < 6; ++i) {
        StructDetObjQualifierSet set;
        ASSERT_EQ(StructDetObjQualifierSetMarshal::getStructByKey(i + 1, set), 1);
        EXPECT_EQ(map.items[i].objQualifier, i + 1);
        ASSERT_EQ(set.items.length(), 1);
        EXPECT_EQ(set.items[0].objectQualifier, 100 + keys[i]);
        StructNecessaryViewsConfiguration rule;
        ASSERT_EQ(StructNecessaryViewsConfigurationMarshal::getStructByKey(keys[i] + 20, rule), 1);
        EXPECT_EQ(rule.detObjQualifierSet, i + 1);
    }
    EXPECT_NE(rows(details, "NecessaryViewsConfiguration").back().find("|-1|0|1|o"), std::string::npos);
    // Cancel would bring the old numbers of the sets back, but not those in the rules
    put(details, qualifiers(10, 5));
    put(details, StructNecessaryViewsConfiguration{60, L"rule", 1, 1, 0, 10, 0, 1, L"o"});
    ASSERT_EQ(Compact::startCompactProcess(details, 1, Compact::kCompactAll), 1); // opens its tables
    EXPECT_EQ(Compact::compactQualifierSets(details, 1, Compact::kCompactDetailStyles), 0);
    EXPECT_EQ(
        Compact::getFailure().toUtf8(),
        "NecessaryViewsConfiguration 60 names qualifier set 10, and would name another if the open dialog of "
        "the qualifier sets were cancelled; close it first");
    EXPECT_EQ(rows(details, "DetObjQualifierSet").back().substr(0, 3), "10|");
}

/// Tables that no compaction merges follow it: rules of necessary views, overrides of styles.
TEST_F(CompactionTest, ReferencesOfOtherTablesAreRedirected)
{
    for (const auto type :
         {Compact::kCompactDetailStyles, Compact::kCompactDetailProcesses, Compact::kCompactAll}) {
        TearDown();
        SetUp();
        for (const int key : {1, 2}) {
            put(details, qualifiers(key, 9));
            put(details, StructDetViewArrangeStrategy{key, L"a", 1, 10, 12.5, 1, L"o"});
            put(details, StructNecessaryViewsConfiguration{key, L"rule", 1, 1, 0, key, 0, 1, L"o"});
            put(details, StructDetailStyleOverrides{key, L"x", key, 1, L"", 0, L"o"});
        }
        KorArray<KorCompactedTable> tables;
        KorArray<KorDetailReference> stranded;
        ASSERT_EQ(Compact::previewCompactProcess(details, type, tables, stranded), 1);
        EXPECT_EQ(stranded.length(), 0);
        const bool ofStyles = type != Compact::kCompactDetailProcesses;
        EXPECT_EQ(tables[tables.length() - 1].table, KorString(L"NecessaryViewsConfiguration"));
        EXPECT_EQ(tables[tables.length() - 1].redirected, 1);
        compact(type);
        KorArray<KorDetailReference> dangling;
        EXPECT_EQ(KorDetailReferences::getReferrers(details, KorDSNDefinitions::kBase, L"DetObjQualifierSet", 1,
                                                    dangling),
                  1);
        EXPECT_EQ(KorDetailReferences::getReferrers(details, KorDSNDefinitions::kBase, L"DetViewArrangeStrategy",
                                                    1, dangling),
                  1);
        EXPECT_EQ(dangling.length(), ofStyles ? 4 : 3);
    }
}

TEST_F(CompactionTest, TheNumberOfItemsThatIsStoredCountsForArrangers)
{
    for (const int key : {1, 2, 3})
        put(details,
            StructDetArrangerControl{key, L"c", 1, 0, 1, 0, 1, L"o", 0, KorArray<StructDetArrangerControlItem>()});
    sql(details, {"UPDATE DetArrangerControl SET LengthItems = -1 WHERE [Key] = 2"}); // reads as none
    compact(Compact::kCompactDetailStyles);
    EXPECT_EQ(keys("DetArrangerControl"), (Keys{1, 2}));
}

/// What the run would lose by a statement that misses its row, or that hits another, undoes it.
TEST_F(CompactionTest, ARunThatWouldLoseAReferenceIsUndone)
{
    const struct {
        const char* spoil;
        const char* failure;
    } cases[] = {
        {"UPDATE DetailStyleMapItems SET [Order] = NULL",
         "DetailStyleMapItems 1 ObjQualifierSet would name DetObjQualifierSet 2, which would be gone"},
        {"INSERT INTO DetailStyleMapItems ([Key], [Order], Script, ObjQualifierSet) VALUES (1, 0, 'other', 3)",
         "two items of DetailStyleMapNew 1 have the order 0, so that a reference of one cannot be changed alone; "
         "store that row again"},
    };
    for (const auto& [spoil, failure] : cases) {
        TearDown();
        SetUp();
        for (const int key : {1, 2})
            put(details, qualifiers(key, 9));
        put(details, qualifiers(3, 8));
        put(details, styleMap(1, {{-1, 0, L"long", 2, 6, 0}}));
        sql(details, {spoil});
        const Texts sets = rows(details, "DetObjQualifierSet"), items = rows(details, "DetailStyleMapItems");
        for (const auto type : {Compact::kCompactAll, Compact::kCompactDetailProcesses}) {
            EXPECT_EQ(Compact::startCompactProcess(details, 1, type), 0);
            EXPECT_EQ(Compact::getFailure().toUtf8(), failure);
            EXPECT_EQ(rows(details, "DetObjQualifierSet"), sets);
            EXPECT_EQ(rows(details, "DetailStyleMapItems"), items);
            EXPECT_EQ(M::getStatus(M::kDetObjQualifierSet, M::kFirstCopy), M::eNotModified);
            EXPECT_FALSE(exists(details, "DetObjQualifierSet_VELCopy"));
        }
        // nothing of it is left for the next run, in another database
        put(KorDSNDefinitions::kAddin, qualifiers(2, 9));
        put(KorDSNDefinitions::kAddin, styleMap(1, {{-1, 0, L"long", 2, 6, 0}}));
        EXPECT_EQ(Compact::startCompactProcess(KorDSNDefinitions::kAddin, 1, Compact::kCompactAll), 1);
        EXPECT_EQ(rows(KorDSNDefinitions::kAddin, "DetailStyleMapItems"), (Texts{"1|0|long|2|6|0"}));
    }
}

/// The manager and the service may be anywhere: a run keeps to its database, and so does its Cancel.
TEST_F(CompactionTest, EachDatabaseIsCompactedAndCancelledByItself)
{
    const eDSN addin = KorDSNDefinitions::kAddin, country = KorDSNDefinitions::kCountryAddin;
    const struct {
        eDSN database, managers;
        eIndex slot, managersSlot;
    } cases[] = {
        {addin, details, KorDSNDefinitions::kFirstAddin, KorDSNDefinitions::kBase},
        {details, addin, KorDSNDefinitions::kBase, KorDSNDefinitions::kFirstAddin},
        {country, country, KorDSNManager::getAddInIdx(1), KorDSNManager::getAddInIdx(1)},
    };
    for (const auto& [database, managers, slot, managersSlot] : cases) {
        TearDown();
        SetUp();
        for (const eIndex each : {KorDSNManager::getAddInIdx(0), KorDSNManager::getAddInIdx(1)}) {
            const KorDSNRequest request(database == country ? country : details,
                                        database == country ? each : KorDSNDefinitions::kBase);
            for (const int key : {1, 2})
                put(database, qualifiers(database == country ? key : key + 2 * static_cast<int>(each), 9));
        }
        const auto stored = [](eDSN dsn, eIndex index) {
            const KorDSNRequest request(dsn, index);
            return rows(dsn, "DetObjQualifierSet");
        };
        const Texts before = stored(database, slot);
        M::setCurrentDSN(managers);
        M::setCurrentAddIn(managersSlot);
        EXPECT_EQ(Compact::startCompactProcess(database, 1, Compact::kCompactAll), 1);
        EXPECT_EQ(stored(database, slot).size(), 1u);
        if (database == country) {
            EXPECT_EQ(stored(country, KorDSNManager::getAddInIdx(0)), before);
        }
        EXPECT_EQ(M::m_currentDSN, managers);
        EXPECT_EQ(M::setStatusOnCancel(M::kDetObjQualifierSet, M::kFirstCopy), 1);
        EXPECT_EQ(stored(database, slot), before);
    }
}

/// The Cancel of a dialog that does not hold all of the tables would bring back references to rows that are gone.
/// The dialog of the compaction itself may run again.
TEST_F(CompactionTest, TablesOfOtherDialogsAreLeftAlone)
{
    put(details, clip(1));
    put(details, clip(2));
    put(details, request(1, 2));
    for (const auto& [depth, name] :
         {std::pair(M::kSecondCopy, "an inner dialog"),
          std::pair(M::kFirstCopy, "a dialog that does not hold all tables of the run")}) {
        M::setStatus(M::kDetViewRequest, M::eModified, depth);
        EXPECT_EQ(compact(Compact::kCompactAll, 1, 0), Texts());
        EXPECT_EQ(Compact::compactQualifierSets(details, 1, Compact::kCompactDetailStyles), 0);
        EXPECT_EQ(Compact::getFailure().toUtf8(),
                  std::string("DetViewRequest is open in ") + name + "; close it first");
        EXPECT_EQ(M::setStatusOnCancel(M::kDetViewRequest, depth), 1);
    }
    EXPECT_EQ(compact(Compact::kCompactDetailStyles).size(), 2u);
    EXPECT_EQ(Compact::startCompactProcess(details, 1, Compact::kCompactAll), 1) << "within the same edit";
    EXPECT_EQ(Compact::compactQualifierSets(details, 1, Compact::kCompactDetailStyles), 1);
    ASSERT_EQ(M::setStatusOnOK(M::kDetViewRequest, M::kFirstCopy), 1);
    M::setStatus(M::kDetViewRequest, M::eModified, M::kFirstCopy);
    EXPECT_EQ(Compact::startCompactProcess(details, 1, Compact::kCompactAll), 1) << "all are open";
    ASSERT_EQ(M::setStatusOnOK(M::kDetailStyle, M::kFirstCopy), 1);
    EXPECT_EQ(Compact::startCompactProcess(details, 1, Compact::kCompactAll), 0) << "by another dialog since";
}

TEST_F(CompactionTest, ProgressAndStatus)
{
    const std::vector<int> styles = {5, 8, 7, 29, 1, 11, 12, 10, 0, 9, 16, 4, 25, 14, 2, 3, 13, 22};
    const std::vector<int> processes = {34, 40, 39, 33, 32, 37, 38};
    const struct {
        Compact::eCompactType type;
        std::vector<int> percentages;
        bool ofStyles, ofProcesses;
    } cases[] = {
        {Compact::kCompactDetailStyles,
         {0, 5, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 100, -1},
         true,
         false},
        {Compact::kCompactDetailProcesses, {0, 20, 90, 100, -1}, false, true},
        {Compact::kCompactAll,
         {0, 5, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 100, -1},
         true,
         true},
    };
    for (const auto& [type, percentages, ofStyles, ofProcesses] : cases) {
        SCOPED_TRACE(type);
        TearDown();
        SetUp();
        const auto recorder = std::make_shared<PercentageRecorder>();
        korodbc::host::setProgressSink(recorder);
        EXPECT_EQ(compact(type), Texts{}); // nothing to merge in empty tables
        EXPECT_EQ(recorder->values, percentages);
        EXPECT_EQ(recorder->flags, static_cast<int>(percentages.size()) - 1);
        for (int t = 0; t < M::kTableTypes; ++t) {
            const auto in = [t](const std::vector<int>& list) {
                return std::count(list.begin(), list.end(), t) > 0;
            };
            const bool touched = (ofStyles && in(styles)) || (ofProcesses && (in(processes) || t == 16));
            EXPECT_EQ(M::getStatus(static_cast<M::eTableType>(t), M::kFirstCopy),
                      touched ? M::eModified : M::eNotModified)
                << t;
        }
    }
}

TEST_F(CompactionTest, TablesThatCannotBeRead)
{
    put(details, clip(1));
    put(details, clip(2));
    put(details, request(1, 2));
    sql(details, {"DROP TABLE DetArrangerControl"});
    const auto recorder = std::make_shared<PercentageRecorder>();
    korodbc::host::setProgressSink(recorder);
    EXPECT_EQ(compact(Compact::kCompactDetailStyles, 1, 0), Texts{});
    EXPECT_EQ(recorder->values, (std::vector<int>{0, 5, 5, 10, 15})); // left where it stands
    EXPECT_EQ(keys("DetViewLengthClip"), (Keys{1, 2}));
    KorArray<KorCompactedTable> tables;
    KorArray<KorDetailReference> stranded;
    EXPECT_EQ(Compact::previewCompactProcess(details, Compact::kCompactAll, tables, stranded), 0);
    EXPECT_EQ(compact(Compact::kCompactDetailProcesses), Texts{}); // does not need that table
}

TEST_F(CompactionTest, CopiesOfTheAddInsTables)
{
    const eDSN addin = KorDSNDefinitions::kAddin;
    put(addin, clip(1));
    ASSERT_EQ(Compact::startCompactProcess(details, 1, Compact::kCompactDetailStyles), 1);
    EXPECT_EQ(Compact::backupTables(), 1);
    EXPECT_EQ(rows(addin, "DetViewLengthClip_VELCopy"), rows(addin, "DetViewLengthClip"));
    EXPECT_TRUE(exists(addin, "DetailStyleMapNew_VELCopy"));
    StatementRecorder statements;
    EXPECT_EQ(Compact::dropCopiesOfTables(), 1);
    const Texts dropped = statements.take();
    ASSERT_EQ(dropped.size(), 21u);
    EXPECT_EQ(dropped.front(), "DROP TABLE [DetViewSystemAndBox_VELCopy]");
    EXPECT_EQ(dropped.back(), "DROP TABLE [DetailStyleMapNew_VELCopy]");
    EXPECT_FALSE(exists(addin, "DetViewLengthClip_VELCopy"));
}

} // namespace
