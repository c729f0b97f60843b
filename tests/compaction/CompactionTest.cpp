#include "support/DetailFixture.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/host/ProgressSink.h>
#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <memory>
#include <regex>

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
    // by table: the key of the row, the order of the item, and what the column names then; the rows that are
    // deleted
    Texts order;
    std::string last;
    for (const std::string& statement : compact(Compact::kCompactAll)) {
        std::string line = std::regex_replace(
            statement,
            std::regex(R"(UPDATE (\w+) SET (\w+=\d+) WHERE \(?\[Key\]=(\d+)( AND \[Order\]=)?(\d*)\)?;)"),
            "$1 $3$4$5 $2");
        line = std::regex_replace(line, std::regex(R"( AND \[Order\]=)"), ".");
        line = std::regex_replace(line, std::regex(R"(DELETE FROM| WHERE| OR|\[Key\] ?= ?|;)"), "");
        const std::string table = line.substr(0, line.find(' ', 1));
        if (table == last)
            order.back() += "," + line.substr(table.size());
        else
            order.push_back(line);
        last = table;
    }
    EXPECT_EQ(order,
              (Texts{"DetObjAnnotationStrategy 11 AnnotationType=1, 11 ArrangerControl=1, 11 ArrangerStrategy=1",
                     "DetObjReprMapItems 11.0 ObjQualifier=1, 11.0 AnnotationStrategy=1, 11.1 ObjQualifier=2, "
                     "11.1 AnnotationStrategy=1",
                     "DetViewDimPointSelection 11 Objects=1, 12 Objects=2",
                     "DetViewDimRequestLinear 11 Point1=1, 11 Point2=2, 12 Point1=2",
                     "DetViewDimStrategyItems 11.0 RequestLinear=1, 11.1 RequestLinear=2",
                     "DetViewRequest 11 SystemAndBox=1, 11 ObjReprMap=1, 11 DimStrategy=1, 11 LengthClipXY=1, "
                     "12 SystemAndBox=2, 12 ObjReprMap=1, 12 DimStrategy=1, 12 LengthClipXY=1",
                     "DetailStyle 11 Request1=1, 11 Request2=2, 11 ViewArrangeStrategy=1, 12 Request1=1, "
                     "12 ViewArrangeStrategy=1, 20 Request2=1, 20 ViewArrangeStrategy=1",
                     "DetViewRequestCategories 11 DetViewRequest=1, 12 DetViewRequest=1",
                     "DetailStyleMapItems 11.0 ObjQualifierSet=1",
                     "DetailProcessStep 11 FilenameSelector=1, 11 AlternativeScales=1, 11 DependOnMainView=1, "
                     "11 StyleMap=1",
                     "DetailProcessDefinition 1 Step2=1",
                     " DetViewSystemAndBox 11 12",
                     " DetAnnotationType 11",
                     " DetArrangerControl 11",
                     " DetArrangerStrategy 11",
                     " DetViewArrangeStrategy 11",
                     " DetViewLengthClip 11",
                     " DetViewDimStrategyNew 11",
                     " DetViewDimStrategyItems 11",
                     " DetObjQualifierSet 11 12",
                     " DetObjAnnotationStrategy 11",
                     " DetObjReprMapsNew 11",
                     " DetObjReprMapItems 11",
                     " DetViewDimPointSelection 11 12",
                     " DetViewDimRequestLinear 11 12",
                     " DetViewRequest 11 12",
                     " DetailFilenameSelector 11",
                     " DetailProcessMain2CutScale 11",
                     " DetailProcessScales 11",
                     " DetailProcessStep 11",
                     " DetailStyleMapNew 11",
                     " DetailStyleMapItems 11"}));
    KorArray<KorDetailReference> dangling;
    EXPECT_EQ(KorDetailReferences::getDangling(details, KorDSNDefinitions::kBase, dangling), 1);
    for (const KorDetailReference& reference : dangling)
        EXPECT_TRUE(reference.targetKey < 11) << reference.table.toUtf8() << "." << reference.column.toUtf8();
}

/// The items of deleted sets stay for Cancel; a new set of the same key does not get them.
TEST_F(CompactionTest, ItemsOfDeletedQualifierSets)
{
    for (const int key : {1, 2})
        put(details, qualifiers(key, 9));
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

TEST_F(CompactionTest, Progress)
{
    const std::vector<int> ofStyles = {0,  5,  5,  10, 15, 20, 25, 30, 35, 40,  45,
                                       50, 55, 60, 65, 70, 75, 80, 85, 90, 100, -1},
                           ofProcesses = {0, 20, 90, 100, -1};
    for (const auto& [type, percentages] : {std::pair(Compact::kCompactDetailStyles, ofStyles),
                                            {Compact::kCompactDetailProcesses, ofProcesses},
                                            {Compact::kCompactAll, ofStyles}}) {
        TearDown();
        SetUp();
        const auto recorder = std::make_shared<PercentageRecorder>();
        korodbc::host::setProgressSink(recorder);
        EXPECT_EQ(compact(type), Texts{}); // nothing to merge in empty tables
        EXPECT_EQ(recorder->values, percentages);
        EXPECT_EQ(recorder->flags, static_cast<int>(percentages.size()) - 1);
    }
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
