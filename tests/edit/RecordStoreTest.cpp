#include "../src/edit/DetailTables.h"
#include "project/KorODBCUserProfile.h"
#include "support/DetailFixture.h"

#include <set>
#include <sstream>

using namespace details;

namespace {

class RecordStoreTest : public DetailTest {};

using korodbc::detailTable;

using Event = korodbc::host::StatementEvent;

TEST_F(RecordStoreTest, NamesKeysAndColumnsOfEveryType)
{
    // tables in the order of their types, with their fixed columns and those per item
    std::istringstream expected(
        "DetailStyle 16 1  DetViewArrangeStrategy 0 0  DetViewRequest 0 0  DetViewRequestCategories 0 0  "
        "DetObjReprMapsNew 4 5  DetViewSystemAndBox 0 0  DetObjAppearance 0 0  "
        "DetViewDimStrategyNew 5 2  DetViewLengthClip 0 0  DetObjAnnotationStrategy 0 0  "
        "DetAnnotationType 4 1  DetArrangerControl 9 3  DetArrangerStrategy 7 4  "
        "DetViewDimRequestLinear 14 1  DetViewDimPointSelection 0 0  DetailMasterTable 0 0  "
        "DetObjQualifierSet 5 3  DetObjQualifierFilter 0 0  NumberingPrefix 8 0  ExplodeSettings 7 0  "
        "ObjectStructure 3 0  ExplodeProfile 3 0  Linetypes 3 0  DetBaseCategories 1 0  "
        "DetManualAnnotationType 5 1  DetObjReprMapItems 0 0  DetObjAnnotationGroup 1 0  "
        "DetViewDimRequestLinearGroup 1 0  DetObjQualifierSetGroup 3 0  DetViewDimStrategyItems 0 0  "
        "DetHatchSettings 0 0  DetGridReferenceSettings 0 0  DetailProcessDefinition 8 1  "
        "DetailProcessStep 0 0  DetailFilenameSelector 0 0  DetailProcessSelection 0 0  "
        "DetailProcessSort 0 0  DetailStyleMapNew 0 0  DetailStyleMapItems 0 0  DetailProcessScales 4 1  "
        "DetailProcessMain2CutScale 4 2  DetailProcessCategories 0 0  DetProcessesSuiteDefinition 0 0  "
        "DetProcessesSuiteItems 0 0  NumberingPrefixProfile 3 0  ProfileShapeRunName 3 0  "
        "DetObjQualifierSetItem 0 0  DetailProcessScalesItem 0 0  ");
    const std::set<int> withoutKey = {3, 6, 17, 25, 29, 30, 31, 38, 43, 46, 47};
    current(addin, firstAddin);
    for (int t = 0; t < Man::kTableTypes; ++t) {
        SCOPED_TRACE(t);
        std::string table;
        int fixed = -1, perItem = -1;
        expected >> table >> fixed >> perItem;
        KorString name;
        EXPECT_EQ(Man::getTableName(type(t), name), 1);
        EXPECT_EQ(name.toUtf8(), table);
        EXPECT_EQ(Man::m_numberOfColumns[t][0], fixed);
        EXPECT_EQ(Man::m_numberOfColumns[t][1], perItem);
        int count = -1;
        EXPECT_EQ(Man::getNumberOfColumns(type(t), count), 1);
        EXPECT_EQ(count, static_cast<int>(columns(addin, table).size()));
        void* record = detailTable(t).currentRecord;
        EXPECT_TRUE(record == nullptr || detailTable(t).description().table == table);
        if (record != nullptr && !detailTable(t).description().hasTextKey())
            detailTable(t).description().keyColumn().integer(record) = 4711 + t;
        EXPECT_EQ(Man::getRecordKey(type(t)), withoutKey.contains(t) ? -1 : 4711 + t);
        Man::m_structDetObjQualifierFilter.key = L"F'1";
        EXPECT_EQ(Man::getRecordStringKey(type(t)).toUtf8(), t == 17 ? "F'1" : "");
    }
    AssertionRecorder assertions;
    KorString name(L"unchanged");
    int count = -1;
    for (const int t : {-1, 48}) {
        EXPECT_EQ(Man::getTableName(type(t), name), -1);
        EXPECT_EQ(assertions.take().size(), 1u);
        EXPECT_EQ(Man::getRecordKey(type(t)), -1);
        EXPECT_EQ(Man::getNumberOfColumns(type(t), count), -2);
        EXPECT_EQ(assertions.take().at(0).substr(0, 11), "KorOdbcMan:");
    }
    EXPECT_EQ(name, KorString(L"unchanged"));
    current(configuration, base); // has no detail styles
    EXPECT_EQ(Man::getNumberOfColumns(Man::kDetailStyle, count), 0);
    EXPECT_EQ(count, -1);
    Man::reloadInfoForAllManagers(7);
    EXPECT_EQ(Man::m_DSMReloadInfo + Man::m_DSMNewReloadInfo + Man::m_DPMReloadInfo +
                  Man::m_AnnotationManagerReloadInfo + Man::m_ProcessesSuiteReloadInfo +
                  Man::m_QuickDocManagerReloadInfo + Man::m_DSMResetDetViewRequestCache,
              7 * 7);
}

/// Executions of statements that start so.
int executed(const StatementRecorder& statements, const std::string& start)
{
    int count = 0;
    for (const Event& event : statements.events())
        count += event.sql.toUtf8().starts_with(start) ? 1 : 0;
    return count;
}

/// A record of every type: one INSERT and, stored again, one UPDATE; its items besides. Nothing is prepared twice.
TEST_F(RecordStoreTest, StatementsPerRecord)
{
    current(addin, firstAddin);
    for (int t = 0; t < Man::kTableTypes; ++t) {
        void* const record = detailTable(t).currentRecord;
        if (record == nullptr)
            continue;
        const RecordDescription& description = detailTable(t).description();
        const std::string row = "[" + std::string(description.table) + "]";
        SCOPED_TRACE(row);
        const auto fill = [&] {
            if (const MemberList* items = description.itemList()) {
                items->resize(record, 0);
                items->resize(record, 3);
            }
        };
        const int items = description.items.exists() ? 3 : 0;
        const std::string itemTable = items > 0 ? std::string(description.items.item().table) : "none";
        const bool textKey = t == Man::kDetObjQualifierFilter;
        int first = 0;
        for (int warm = 0; warm < 2; ++warm) {
            fill();
            first = Man::appendNewRecord(type(t), 0, depth(0));
            ASSERT_GT(first, 0);
            EXPECT_EQ(Man::storeCurrentRecord(type(t), depth(0)), 1);
        }
        fill();
        StatementRecorder statements(true);
        EXPECT_EQ(Man::appendNewRecord(type(t), 0, depth(0)), textKey ? 1 : first + 1);
        EXPECT_EQ(executed(statements, "INSERT INTO " + row), 1);
        EXPECT_EQ(executed(statements, "UPDATE"), 0);
        EXPECT_EQ(executed(statements, "INSERT INTO " + itemTable) +
                      executed(statements, "INSERT INTO [" + itemTable),
                  items);
        EXPECT_EQ(executed(statements, "DELETE FROM [" + itemTable + "] "), items > 0 ? 1 : 0);
        EXPECT_EQ(executed(statements, "COMMIT"), 1);
        EXPECT_EQ(Man::storeCurrentRecord(type(t), depth(0)), 1);
        EXPECT_EQ(executed(statements, "UPDATE " + row), 1);
        EXPECT_EQ(executed(statements, "INSERT INTO " + row), 1);
        EXPECT_EQ(executed(statements, "COMMIT"), 2);
        for (const Event& event : statements.events())
            EXPECT_FALSE(event.prepared) << event.sql.toUtf8();
    }
}

TEST_F(RecordStoreTest, ColumnsInTheOrderOfWriting)
{
    StructDetailStyleMarshal::getStructByKey(1, Man::m_structDetailStyle);
    StructDetArrangerStrategyMarshal::getStructByKey(1, Man::m_structDetArrangerStrategy);
    StatementRecorder statements(true);
    Man::appendNewRecord(Man::kDetailStyle, 0, depth(0));
    Man::appendNewRecord(Man::kDetArrangerStrategy, 0, depth(0));
    Texts inserts;
    for (const std::string& sql : statements.take())
        if (sql.starts_with("INSERT INTO [") && sql.find("] ([Key]") != std::string::npos)
            inserts.push_back(sql.substr(0, sql.find(')')));
    EXPECT_EQ(
        inserts,
        (Texts{"INSERT INTO [DetailStyle] ([Key], [RunName], [ViewArrangeStrategy], [DetailOrientation], "
               "[ObjectSelectionStrategy], [TitleFormat], [TitlePosition], [CutViewTitleFormat], "
               "[CutViewTitlePosition], [ScaleFormat], [DateFormat], [FrameAppearance], [NumberRequests], "
               "[ObjectPosition], [AutomaticClipping], [OwnerText], [Request1], [Request2]",
               "INSERT INTO [DetArrangerStrategy] ([Key], [RunName], [TerminateOnFirstFit], [ArrangeGlobally], "
               "[ArrangeInCenter], [LengthItems], [OwnerText], [SearchArea1], [SearchDirection1], [MinDistance1], "
               "[MaxDistance1], [SearchArea2], [SearchDirection2], [MinDistance2], [MaxDistance2]"}));
}

/// The statements with which items are stored in tables of their own.
TEST_F(RecordStoreTest, ItemStatements)
{
    const std::string name = awkward, quoted = "'O''Träger [x] 100%d \"梁\" 🏗)'";
    put(details, StructDetailStyleMap{1, L"map", L"", 0, KorArray<StructDetailStyleMapItem>()});
    put(details,
        StructDetProcessesSuiteDefinition{1, L"suite", L"", L"", 0, KorArray<StructDetProcessesSuiteItem>()});
    put(details, StructDetProcessScales{1, L"scales", L"", 0, KorArray<StructDetProcessScalesItem>()});
    Man::m_structDetObjReprMap = {
        1, L"m", L"o", 0,
        list<StructDetObjReprMapItem>(
            {{9, 9, 501, text(name), 1, 2, 3, 4, 5, -1, 1.5, 1}, {9, 9, 0, L"", 2, -1, -1, 4, 5, 6, -0.25, 0}})};
    Man::m_structDetViewDimStrategy = {
        1, L"d", 0, L"o", 0, list<StructDetViewDimStrategyItem>({{9, 9, text(name), L"it's", 1, 2, 3, 4, 5, 6}})};
    Man::m_structDetailStyleMap = {1, L"s", L"o", 0,
                                   list<StructDetailStyleMapItem>({{9, 9, text(name), 1, 2, 3}})};
    Man::m_structDetProcessesSuiteDefinition = {
        1, L"p", L"", L"o", 0, list<StructDetProcessesSuiteItem>({{9, 9, 1, 2, text(name)}})};
    StructDetObjQualifierSetMarshal::getStructByKey(1, Man::m_structDetObjQualifierSet);
    Man::m_structDetProcessScales = {1, L"c", L"o", 0, KorArray<StructDetProcessScalesItem>()};
    const auto stored = [](Man::eTableType t, const std::string& table, const std::string& owner,
                           const std::string& columns, const Texts& items) {
        Texts expected{"DELETE FROM [" + table + "]  WHERE [" + table + "]." + owner + "=1"};
        for (const std::string& item : items)
            expected.push_back("INSERT INTO " + table + " ([Key], [Order], " + columns + ")  VALUES  ( 1, " +
                               item + ") ");
        StatementRecorder statements;
        EXPECT_EQ(Man::storeCurrentRecord(t, depth(1)), 1);
        EXPECT_EQ(statements.take(), expected);
    };
    stored(
        Man::kDetObjReprMap, "DetObjReprMapItems", "[Key]",
        "[Description], [OwnerText], [ObjQualifier], [GeometricRestrictions], [DepthPosition], [Appearance], "
        "[AnnotationStrategy], [LineType], [SimplifiedGap], [CompassMark]",
        {"0, 501, " + quoted + ", 1, 2, 3, 4, 5, -1, 1.500000, 1", "1, 0, '', 2, -1, -1, 4, 5, 6, -0.250000, 0"});
    stored(Man::kDetViewDimStrategy, "DetViewDimStrategyItems", "[Key]",
           "[Description], [OwnerText], [Type], [RequestLinear], [GroupEqualDistances], [BrokenRunningDimension], "
           "[RunningDimensionTextAlignment], [HideDimensionPoint]",
           {"0, " + quoted + ", 'it''s', 1, 2, 3, 4, 5, 6"});
    stored(Man::kDetailStyleMap, "DetailStyleMapItems", "[Key]",
           "[Script], [ObjQualifierSet], [DetailStyle], [DetailStyleOverrides]", {"0, " + quoted + ", 1, 2, 3"});
    stored(Man::kDetProcessesSuiteDefinition, "DetProcessesSuiteItems", "[Key]",
           "[Process], [ObjectSelection], [OwnerText]", {"0, 1, 2, " + quoted});
    stored(Man::kDetObjQualifierSet, "DetObjQualifierSetItem", "IdDetObjQualifierSet", "", {});
    stored(Man::kDetailProcessScales, "DetailProcessScalesItem", "DetProcScaleId", "", {});
    // two of the item tables are copied at the first depth, whatever the owner's depth
    EXPECT_TRUE(exists(details, "DetObjReprMapItems_VELCopy"));
    EXPECT_TRUE(exists(details, "DetProcessesSuiteItems_VELCopy"));
    EXPECT_TRUE(exists(details, "DetViewDimStrategyItems_VELSecondCopy"));
    EXPECT_TRUE(exists(details, "DetailStyleMapItems_VELSecondCopy"));
    EXPECT_FALSE(exists(details, "DetViewDimStrategyItems_VELCopy"));
    StructDetObjReprMap map;
    EXPECT_EQ(StructDetObjReprMapMarshal::getStructByKey(1, map), 1);
    EXPECT_EQ(map.items.getAt(0).ownerText.toUtf8(), name);
    // without the table of its items a record is not written at all
    sql(details, {"DROP TABLE DetailStyleMapItems"});
    Man::m_structDetailStyleMap.items.append(Man::m_structDetailStyleMap.items.getAt(0));
    StatementRecorder statements;
    EXPECT_NE(Man::storeCurrentRecord(Man::kDetailStyleMap, depth(1)), 1);
    EXPECT_EQ(statements.take().size(), 0u);
}

TEST_F(RecordStoreTest, ItemColumns)
{
    // one item more than there are columns
    StructDetailStyleMarshal::getStructByKey(1, Man::m_structDetailStyle);
    Man::m_structDetailStyle.requests = list<int>({1, 2, 1, 2, 1, 2, 1, 2, 1});
    EXPECT_EQ(Man::storeCurrentRecord(Man::kDetailStyle, depth(0)), 1);
    EXPECT_EQ(cell(details, "DetailStyle", 1, 16 + 8), "1");
    const auto altered = [](const std::string& table, const Texts& added) {
        Texts statements;
        for (const std::string& column : added)
            statements.push_back("ALTER TABLE " + table + " ADD " + column);
        return statements;
    };
    /// Room for so many items in a table with so many columns: the columns that are added.
    const auto check = [&](Man::eTableType t, int count, int items, const Texts& added) {
        const std::string table = KorString(detailTable(t).name).toUtf8();
        const Texts all = columns(details, table);
        for (std::size_t i = all.size(); i > static_cast<std::size_t>(count); --i)
            sql(details, {"ALTER TABLE [" + table + "] DROP COLUMN [" + all[i - 1] + "]"});
        StatementRecorder statements;
        EXPECT_EQ(Man::setColumnsForNewItems(t, items), 1) << t;
        EXPECT_EQ(statements.take(), altered(table, added));
    };
    check(Man::kDetailStyle, 16 + 3, 5, {"Request4 INT", "Request5 INT"});
    check(Man::kDetailStyle, 16 + 3, 3, {});
    check(Man::kDetailStyle, 16 + 3, 0, {});
    check(Man::kDetArrangerControl, 9 + 3, 2, {"Angle2 FLOAT", "PreferredDistance2 FLOAT", "MaxDistance2 FLOAT"});
    // eight columns count as two items though an item adds three
    check(Man::kDetArrangerStrategy, 7 + 8, 2, {});
    check(Man::kDetArrangerStrategy, 7 + 8, 3, {"SearchArea3 INT", "MinDistance3 FLOAT", "MaxDistance3 FLOAT"});
    check(Man::kDetViewDimRequestLinear, 14 + 1, 2, {"Point2 INT"});
    check(Man::kDetObjQualifierSet, 5, 1,
          {"ObjectQualifier1 INT", "ModelRole1 VARCHAR(255)", "Filter1 VARCHAR(64)"});
    check(Man::kDetObjReprMap, 4, 1,
          {"ObjQualifier1 INT", "Appearance1 INT", "AnnotationStrategy1 INT", "LineType1 INT",
           "SimplifiedGap1 FLOAT"});
    check(Man::kDetManualAnnotationType, 5, 9, {}); // declares a column and names none
    check(Man::kDetHatchSettings, 8, 9, {});        // names a column and declares none
    StatementRecorder statements;
    EXPECT_EQ(Man::AddItemColumns(Man::kDetObjReprMap, 7, 2, details), 1);
    EXPECT_EQ(statements.take(), altered("DetObjReprMapsNew", {"LineType7 INT", "SimplifiedGap7 FLOAT"}));
    EXPECT_EQ(Man::AddItemColumns(Man::kDetManualAnnotationType, 1), -1);
    EXPECT_EQ(Man::AddItemColumns(Man::kDetObjReprMap, 7, 1, details), 0); // is there already
    current(configuration, base);
    EXPECT_EQ(Man::setColumnsForNewItems(Man::kDetailStyle, 5), 0);
}

TEST_F(RecordStoreTest, KeysAndOwnersOfNewRecords)
{
    const struct {
        eDSN dsn;
        eIndex index;
        int exporting, keepKey, wanted, key;
        const char* owner;
    } cases[] = {
        {details, base, 0, 1, 40, 3, "OFFICE"},  // the base chooses its keys itself
        {details, base, 1, 1, 40, 40, "theirs"}, // except in a transfer
        {details, base, 1, 1, 1, 41, "theirs"},  // where the key is taken, too
        {details, base, 0, 0, 7, 42, "OFFICE"},        {addin, firstAddin, 0, 1, 40, 40, "OFFICE"},
        {addin, firstAddin, 0, 1, 101, 103, "OFFICE"}, {addin, firstAddin, 0, 0, 50, 104, "OFFICE"},
        {addin, firstAddin, 0, 2, 50, 105, "OFFICE"},
    };
    for (const auto& [dsn, index, exporting, keepKey, wanted, key, owner] : cases) {
        current(dsn, index);
        Exports::setExportInProgress(exporting);
        Man::m_structLinetypes = {wanted, text(awkward), L"theirs"};
        EXPECT_EQ(Man::appendNewRecord(Man::kLinetypes, keepKey, depth(0)), key);
        EXPECT_EQ(Man::m_structLinetypes.key, key);
        EXPECT_EQ(cell(dsn, "Linetypes", key, 2), owner);
        EXPECT_EQ(cell(dsn, "Linetypes", key, 1), awkward);
        EXPECT_FALSE(Man::m_bAppending);
    }
    Exports::setExportInProgress(0);
    Man::m_structDetObjQualifierFilter = {L"F'ü", L"n", L"s", L"o"};
    EXPECT_EQ(Man::appendNewRecord(Man::kDetObjQualifierFilter, 1, depth(0)), 1);
    StructDetObjQualifierFilter filter;
    const KorDSNRequest request(addin, firstAddin);
    EXPECT_EQ(StructDetObjQualifierFilterMarshal::getStructByKey(KorString(L"F'ü"), filter), 1);
}

TEST_F(RecordStoreTest, AttributesOfEveryKind)
{
    KorItemType kind(KorItemType::kString);
    KorString word = text(awkward);
    void* raw = &word;
    const KorOdbcKey key(1);
    const auto style = [](int column) { return cell(details, "DetailStyle", 1, column); };
    StatementRecorder statements;
    EXPECT_EQ(Man::setAttribute(Man::kDetailStyle, key, 6, 12L, depth(2)), 1);
    EXPECT_EQ(Man::setAttribute(Man::kDetailStyle, key, 5, text(awkward), 1, depth(2)), 1);
    EXPECT_EQ(Man::setAttribute(Man::kDetailStyle, key, 7, raw, kind, 0, depth(2)), 1);
    EXPECT_EQ(Man::setAttribute(Man::kDetViewArrangeStrategy, key, 3, 2.5, depth(2)), 1);
    EXPECT_EQ(Texts({style(6), style(5), style(7), cell(details, "DetViewArrangeStrategy", 1, 3)}),
              Texts({"12", awkward, awkward, "2.5"}));
    EXPECT_TRUE(exists(details, "DetailStyle_VELThirdCopy"));
    EXPECT_EQ(Man::getStatus(Man::kDetailStyle, depth(2)), Man::eModified);
    EXPECT_EQ(Man::getStatus(Man::kDetailStyle, depth(0)), Man::eNotModified);
    // text keys, in the base and elsewhere
    for (const eDSN dsn : {details, addin}) {
        current(dsn, dsn == details ? base : firstAddin);
        put(dsn, StructDetObjQualifierFilter{L"it's", L"n", L"s", L"o"});
        EXPECT_EQ(
            Man::setAttribute(Man::kDetObjQualifierFilter, KorString(L"it's"), 2, text(awkward), 1, depth(0)), 1);
        KorCellData value;
        KorDatabaseAccess::getTableColumnValue(dsn, L"DetObjQualifierFilter", L"Key", KorCellData(L"it's"), 2,
                                               value);
        EXPECT_EQ(value.getStringW().toUtf8(), awkward);
    }
    current(details, base);
    // failures: the table stays marked, the copy stays
    EXPECT_EQ(Man::setAttribute(Man::kLinetypes, KorOdbcKey(99), 1, L"x", 1, depth(0)), 0);
    EXPECT_EQ(Man::setAttribute(Man::kLinetypes, key, 77, 1L, depth(0)), 0);
    EXPECT_EQ(Man::getStatus(Man::kLinetypes, depth(0)), Man::eModified);
    EXPECT_TRUE(exists(details, "Linetypes_VELCopy"));
    // the stored state shows in the current records of styles and annotation strategies
    StructDetailStyleMarshal::getStructByKey(1, Man::m_structDetailStyle);
    Man::setAttribute(Man::kDetailStyle, key, 6, 13L, depth(0));
    EXPECT_EQ(Man::m_structDetailStyle.titlePosition, 13);
    Man::m_structDetailStyle.titlePosition = 99;
    void* number = &Man::m_structDetailStyle.key;
    KorItemType integer(KorItemType::kInt);
    Man::setAttribute(Man::kDetailStyle, key, 8, number, integer, 0, depth(0));
    EXPECT_EQ(Man::m_structDetailStyle.titlePosition, 99); // values behind pointers leave the caches alone
}

TEST_F(RecordStoreTest, DeletedRecords)
{
    const Texts before = rows(details, "Linetypes");
    StatementRecorder statements;
    EXPECT_EQ(Man::deleteRecord(Man::kLinetypes, KorOdbcKey(2), depth(0)), 1);
    EXPECT_EQ(statements.take(), Texts{"DELETE FROM [Linetypes]  WHERE [Linetypes].[Key]=2"});
    EXPECT_EQ(rows(details, "Linetypes"), Texts{before[0]});
    EXPECT_EQ(rows(details, "Linetypes_VELCopy"), before);
}

TEST_F(RecordStoreTest, TypesThatAreUnknownOrWithoutRecordAreRefused)
{
    AssertionRecorder assertions;
    for (const int t : {25, 29, 38, 43, 46, 47}) {
        Man::appendNewRecord(type(t), 0, depth(0));
        EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: AppendNewrecord==-1"}) << t;
    }
    const KorOdbcKey key(1);
    for (const int t : {-1, 48}) {
        const int results[] = {Man::setTableColumnValue(type(t), key, 1, KorCellData(1), 1),
                               Man::setTableColumnValue(type(t), KorString(L"1"), 1, KorCellData(1), 1),
                               Man::setAttribute(type(t), key, 1, 1L, depth(0)),
                               Man::setAttribute(type(t), key, 1, 1.0, depth(0)),
                               Man::setAttribute(type(t), key, 1, L"", 1, depth(0)),
                               Man::setAttribute(type(t), KorString(L"1"), 1, 1L, depth(0)),
                               Man::appendNewRecord(type(t), 0, depth(0)),
                               Man::storeCurrentRecord(type(t), depth(0)),
                               Man::deleteRecord(type(t), key, depth(0)),
                               Man::setColumnsForNewItems(type(t), 1),
                               Man::AddItemColumns(type(t), 1)};
        for (const int result : results)
            EXPECT_EQ(result, -2);
        EXPECT_EQ(assertions.take().size(), std::size(results));
        Man::resetTable(type(t));
        EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: error==-1"});
    }
}

TEST_F(RecordStoreTest, ItemsThatReferToNothing)
{
    StructDetailStyleMarshal::getStructByKey(1, Man::m_structDetailStyle);
    Man::m_structDetailStyle.requests = list<int>({9, 1, -1, 2, 9});
    Man::checkItems(Man::kDetailStyle);
    ASSERT_EQ(Man::m_structDetailStyle.requests.length(), 2);
    EXPECT_EQ(Man::m_structDetailStyle.requests[0], 1);
    EXPECT_EQ(Man::m_structDetailStyle.requests[1], 2);
    EXPECT_EQ(Man::m_structDetailStyle.numberRequests, 2);
    EXPECT_EQ(Man::m_structDetViewRequest.key, 1); // looked up last

    Man::m_structDetViewDimRequestLinear.points = list<int>({3, 2, 3});
    Man::checkItems(Man::kDetViewDimRequestLinear);
    ASSERT_EQ(Man::m_structDetViewDimRequestLinear.points.length(), 1);

    const StructDetObjReprMapItem good{1, 0, 0, L"", 1, 0, 0, 1, 1, 1, 0, 0};
    Man::m_structDetObjReprMap.items = list<StructDetObjReprMapItem>({good, good, good, good, good, good});
    Man::m_structDetObjReprMap.items[0].objQualifier = 9;
    Man::m_structDetObjReprMap.items[1].appearance = 9;
    Man::m_structDetObjReprMap.items[2].annotationStrategy = 9;
    Man::m_structDetObjReprMap.items[3].lineType = 9;
    Man::m_structDetObjReprMap.items[4].geometricRestrictions = 9; // not looked up
    Man::checkItems(Man::kDetObjReprMap);
    ASSERT_EQ(Man::m_structDetObjReprMap.items.length(), 2);
    EXPECT_EQ(Man::m_structDetObjReprMap.items[0].geometricRestrictions, 9);

    put(details, StructDetRequestType{1, L"chain"});
    const auto request = [](int kind, int linear) {
        return StructDetViewDimStrategyItem{1, 0, L"", L"", kind, linear, 0, 0, 0, 0};
    };
    Man::m_structDetViewDimStrategy.items =
        list<StructDetViewDimStrategyItem>({request(1, 1), request(2, 1), request(1, 9), request(1, 2)});
    Man::checkItems(Man::kDetViewDimStrategy);
    ASSERT_EQ(Man::m_structDetViewDimStrategy.items.length(), 2);
    EXPECT_EQ(Man::m_structDetViewDimStrategy.items[1].requestLinear, 2);

    Man::m_structDetObjQualifierSet.items = list<StructDetObjQualifierSetItem>({{1, 1, 0, 999, L"", L"none"}});
    Man::checkItems(Man::kDetObjQualifierSet);
    EXPECT_EQ(Man::m_structDetObjQualifierSet.items.length(), 1);
}

TEST_F(RecordStoreTest, Ownership)
{
    const std::set<int> withOwner = {0, 1, 2, 4, 5, 7, 8, 9, 10, 11, 12, 13, 14, 18, 42};
    for (const char* user : {"OFFICE", "VEL", "PC-VEL", "vel"}) {
        sql(configuration,
            {"UPDATE Default_STR SET Value = '" + std::string(user) + "' WHERE [Key] = 'ODBC_OwnerKey'"});
        const bool isSystem = std::string(user) == "VEL" || std::string(user) == "PC-VEL";
        EXPECT_EQ(Man::isCurrentOwnerVEL(), isSystem) << user;
        EXPECT_EQ(KorODBCUserProfile::m_charOwnerText.toUtf8(), user);
        EXPECT_EQ(Man::getEditableStatus(), isSystem) << user;
        current(addin, firstAddin);
        EXPECT_TRUE(Man::getEditableStatus());
        current(details, base);
        for (int t = 0; t < Man::kTableTypes; ++t) {
            AssertionRecorder assertions;
            const bool byOwner = withOwner.contains(t);
            for (const char* owner : {"VEL", "PC-VEL", "OFFICE"}) {
                if (byOwner)
                    detailTable(t).description().ownerColumn()->text(detailTable(t).currentRecord) = text(owner);
                const bool ownedBySystem = std::string(owner) != "OFFICE";
                EXPECT_EQ(Man::getAttributeStatus(type(t)), byOwner ? !ownedBySystem || isSystem : t == 24)
                    << t << owner;
            }
            EXPECT_EQ(assertions.take().size(), byOwner || t == 24 ? 0u : 3u) << t;
        }
        Exports::setImportInProgress(1);
        EXPECT_FALSE(Man::isCurrentOwnerVEL());
        Exports::setImportInProgress(0);
    }
    AssertionRecorder assertions;
    Man::getAttributeStatus(Man::kLinetypes);
    EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: getAttributeStatus_notYetImplemented==-1"});
}

} // namespace
