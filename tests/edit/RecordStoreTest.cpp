#include "../src/edit/DetailTables.h"
#include "support/DetailFixture.h"

#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/records/AnyRecord.h>

#include <set>
#include <sstream>

using namespace details;

namespace {

class RecordStoreTest : public DetailTest {};

using korodbc::detailTable;

using Event = korodbc::host::StatementEvent;

/// Executions of statements that start so.
int executed(const StatementRecorder& statements, const std::string& start)
{
    int count = 0;
    for (const Event& event : statements.events())
        count += event.sql.toUtf8().starts_with(start) ? 1 : 0;
    return count;
}

/// Another value in each column of a record and of its three items.
void fill(const RecordDescription& description, void* record)
{
    if (const MemberList* items = description.itemList()) {
        items->resize(record, 0);
        items->resize(record, 3);
    }
    int value = 0;
    korodbc::forEachColumn(description, record, [&](const ColumnDescription& column, const void* of, long) {
        void* const into = const_cast<void*>(of);
        if (column.role != ColumnRole::Value)
            return true;
        ++value;
        if (column.kind == FieldKind::Integer)
            column.integer(into) = value;
        else if (column.kind == FieldKind::Real)
            column.real(into) = value + 0.5;
        else
            column.text(into) = text(awkward + std::to_string(value));
        return true;
    });
}

/// A record of every type with another value in each column: one INSERT and, stored again, one UPDATE; its items
/// besides. Nothing is prepared twice, and it comes back as it was stored.
TEST_F(RecordStoreTest, EveryRecordIsStoredInFewStatementsAndComesBack)
{
    current(addin, firstAddin);
    for (int t = 0; t < Man::kTableTypes; ++t) {
        void* const record = detailTable(t).currentRecord();
        if (record == nullptr)
            continue;
        const RecordDescription& description = detailTable(t).description();
        const std::string row = "[" + std::string(description.table) + "]";
        SCOPED_TRACE(row);
        const int items = description.items.exists() ? 3 : 0;
        const std::string itemTable = items > 0 ? std::string(description.items.item().table) : "none";
        const bool textKey = t == Man::kDetObjQualifierFilter;
        int first = 0;
        for (int warm = 0; warm < 2; ++warm) {
            fill(description, record);
            first = Man::appendNewRecord(type(t), 0, depth(0));
            ASSERT_GT(first, 0);
            EXPECT_EQ(Man::storeCurrentRecord(type(t), depth(0)), 1);
        }
        fill(description, record);
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
        const AnyRecord again(description);
        const KorDSNRequest request(addin, firstAddin);
        ASSERT_EQ(textKey ? RecordAccess::readByKey(description, Man::getRecordStringKey(type(t)), again.get())
                          : RecordAccess::readByKey(description, description.keyOf(record), again.get()),
                  1);
        EXPECT_EQ(shown(description, again.get()), shown(description, record));
        if (!description.numbered.exists())
            continue;
        // the columns that an edit counts are those of the table
        const Texts all = columns(addin, std::string(description.table));
        const std::string numbered =
            KorString::format(text(std::string(description.numbered.columns[0].name)).c_str(), 1).toUtf8();
        EXPECT_EQ(Man::m_numberOfColumns[t][0], std::find(all.begin(), all.end(), numbered) - all.begin());
        EXPECT_EQ(Man::m_numberOfColumns[t][1], static_cast<int>(description.numbered.columns.size()));
    }
}

/// The statements with which items are stored in tables of their own.
TEST_F(RecordStoreTest, ItemStatements)
{
    const std::string name = awkward, quoted = "'O''Träger [x] 100%d \"梁\" 🏗)'";
    put(details, StructDetProcessScales{1, L"scales", L"", 0, KorArray<StructDetProcessScalesItem>()});
    Man::m_structDetObjReprMap = {
        1, L"m", L"o", 0,
        list<StructDetObjReprMapItem>(
            {{9, 9, 501, text(name), 1, 2, 3, 4, 5, -1, 1.5, 1}, {9, 9, 0, L"", 2, -1, -1, 4, 5, 6, -0.25, 0}})};
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
    stored(Man::kDetObjQualifierSet, "DetObjQualifierSetItem", "IdDetObjQualifierSet", "", {});
    stored(Man::kDetailProcessScales, "DetailProcessScalesItem", "DetProcScaleId", "", {});
    EXPECT_TRUE(exists(details, "DetObjReprMapItems_VELCopy")); // at the first depth, whatever that of their map
    // without the table of its items a record is not written at all
    sql(details, {"DROP TABLE DetObjReprMapItems"});
    StatementRecorder statements;
    EXPECT_NE(Man::storeCurrentRecord(Man::kDetObjReprMap, depth(1)), 1);
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
        const std::string table = korodbc::tableName(t).toUtf8();
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

TEST_F(RecordStoreTest, TypesThatAreUnknownOrWithoutRecordAreRefused)
{
    AssertionRecorder assertions;
    for (const int t : {25, 29, 38, 43, 46, 47}) {
        Man::appendNewRecord(type(t), 0, depth(0));
        EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: AppendNewrecord==-1"}) << t;
    }
    const KorOdbcKey key(1);
    KorString name;
    for (const int t : {-1, 48}) {
        EXPECT_EQ(Man::getTableName(type(t), name), -1);
        EXPECT_EQ(Man::getRecordKey(type(t)), -1);
        assertions.take();
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
                    detailTable(t).description().ownerColumn()->text(detailTable(t).currentRecord()) = text(owner);
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
