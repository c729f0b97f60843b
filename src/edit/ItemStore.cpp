#include "ItemStore.h"

#include "DetailTables.h"

#include <korodbc/repository/KorColumn.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace korodbc {

namespace {

struct ItemRows {
    int ownerType;
    int itemType;
    bool copiedAtFirstDepth; // the items' copy is taken at the first depth, whatever the owner's
    const wchar_t* columns;  // of the INSERT statement; nullptr: rows are appended with keys of their own
    const wchar_t* values;
};

const ItemRows itemRows[] = {
    {KorOdbcMan::kDetObjReprMap, KorOdbcMan::kDetObjReprMapItems, true,
     L" ([Key], [Order], [Description], [OwnerText], [ObjQualifier], [GeometricRestrictions], [DepthPosition], "
     L"[Appearance], [AnnotationStrategy], [LineType], [SimplifiedGap], [CompassMark]) ",
     // the description is the number of a prompt
     L" ( %ld, %ld, %ld, '%s', %ld, %ld, %ld, %ld, %ld, %ld, %lf, %ld) "},
    {KorOdbcMan::kDetViewDimStrategy, KorOdbcMan::kDetViewDimStrategyItems, false,
     L" ([Key], [Order], [Description], [OwnerText], [Type], [RequestLinear], [GroupEqualDistances], "
     L"[BrokenRunningDimension], [RunningDimensionTextAlignment], [HideDimensionPoint]) ",
     L" ( %ld, %ld, '%s', '%s', %ld, %ld, %ld, %ld, %ld, %ld) "},
    {KorOdbcMan::kDetailStyleMap, KorOdbcMan::kDetailStyleMapItems, false,
     L" ([Key], [Order], [Script], [ObjQualifierSet], [DetailStyle], [DetailStyleOverrides]) ",
     L" ( %ld, %ld, '%s', %ld, %ld, %ld) "},
    {KorOdbcMan::kDetProcessesSuiteDefinition, KorOdbcMan::kDetProcessesSuiteItems, true,
     L" ([Key], [Order], [Process], [ObjectSelection], [OwnerText]) ", L" ( %ld, %ld, %ld, %ld, '%s') "},
    {KorOdbcMan::kDetObjQualifierSet, KorOdbcMan::kDetObjQualifierSetItem, false, nullptr, nullptr},
    {KorOdbcMan::kDetailProcessScales, KorOdbcMan::kDetailProcessScalesItem, false, nullptr, nullptr},
};

const ItemRows* itemRowsOf(int ownerType)
{
    for (const ItemRows& rows : itemRows)
        if (rows.ownerType == ownerType)
            return &rows;
    return nullptr;
}

constexpr std::size_t mostItemColumns = 16;

/// The values of an item in the order of its columns.
std::size_t valuesOf(const RecordDescription& type, const void* item, KorFormatArgument* out)
{
    std::size_t count = 0;
    for (const ColumnDescription& column : type.columns) {
        switch (column.kind) {
        case FieldKind::Integer:
            out[count] = KorFormatArgument(static_cast<long>(column.integer(item)));
            break;
        case FieldKind::Real:
            out[count] = KorFormatArgument(column.real(item));
            break;
        case FieldKind::Text:
            out[count] = KorFormatArgument(column.text(item));
            break;
        }
        if (++count == mostItemColumns)
            break;
    }
    return count;
}

int insertItem(const KorString& statement, const RecordDescription& type, const void* item)
{
    KorFormatArgument values[mostItemColumns] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const std::size_t count = valuesOf(type, item, values);
    return KorDatabaseAccess::doSQLStatement(KorOdbcMan::m_currentDSN, statement, {values, count});
}

int appendItem(const KorString& table, const RecordDescription& type, void* item)
{
    KorCellData key;
    const int appended = KorDatabaseAccess::appendNewLine(KorOdbcMan::m_currentDSN, table, key, true, false);
    if (appended != 1)
        return appended;
    type.keyColumn().integer(item) = key.getInt();
    return KorDatabaseAccess::setRecord(KorOdbcMan::m_currentDSN, table, type, key, item);
}

} // namespace

int itemTableType(int ownerType)
{
    const ItemRows* rows = itemRowsOf(ownerType);
    return rows == nullptr ? -1 : rows->itemType;
}

bool itemsAreCopiedAtFirstDepth(int ownerType)
{
    const ItemRows* rows = itemRowsOf(ownerType);
    return rows != nullptr && rows->copiedAtFirstDepth;
}

int deleteWhere(const KorString& table, const KorString& column, long key)
{
    return KorDatabaseAccess::doSQLStatement(KorOdbcMan::m_currentDSN,
                                             KorString::format(L"DELETE FROM [%s] ", table) +
                                                 KorString::format(L" WHERE [%s].%s=%i", table, column, key));
}

int storeItems(KorOdbcMan::eTableType ownerType, long ownerKey, KorOdbcMan::eCopyDepth depth)
{
    const ItemRows* rows = itemRowsOf(ownerType);
    if (rows == nullptr)
        return 1;
    const DetailTable& owner = detailTable(ownerType);
    const MemberList& list = owner.description().items.list;
    const RecordDescription& type = detailTable(rows->itemType).description();
    const KorString table = KorDatabaseAccess::getTableName(detailTable(rows->itemType).name);
    const ColumnDescription& ownerColumn = *type.at(type.itemOwner);
    const ColumnDescription* order = type.at(type.itemOrder);
    KorString insert;
    int deleted = 1;
    if (rows->columns != nullptr) {
        insert = KorString(L"INSERT INTO ") + table + rows->columns + L" VALUES " + rows->values;
        deleted =
            KorOdbcMan::deleteRecord(static_cast<KorOdbcMan::eTableType>(rows->itemType), KorOdbcKey(ownerKey),
                                     rows->copiedAtFirstDepth ? KorOdbcMan::kFirstCopy : depth);
    } else {
        deleted = deleteWhere(table, KorString::fromUtf8(ownerColumn.name), ownerKey);
    }
    int result = 1;
    for (long position = 0; result == 1 && position < list.length(owner.currentRecord); ++position) {
        void* item = list.at(owner.currentRecord, position);
        ownerColumn.integer(item) = static_cast<int>(ownerKey);
        if (order != nullptr)
            order->integer(item) = static_cast<int>(position);
        result = rows->columns != nullptr ? insertItem(insert, type, item) : appendItem(table, type, item);
    }
    return result == 1 ? deleted : result;
}

} // namespace korodbc
