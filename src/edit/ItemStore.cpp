#include "ItemStore.h"

#include "DetailTables.h"

#include <korodbc/repository/KorDatabaseAccess.h>

#include <map>
#include <vector>

namespace korodbc {

namespace {

/// What follows the name of the table in the statement that inserts an item.
const KorString& insertedValues(const RecordDescription& type)
{
    static std::map<const RecordDescription*, KorString> known;
    KorString& text = known[&type];
    if (!text.isEmpty())
        return text;
    KorString columns, values;
    for (const ColumnDescription& column : type.columns) {
        const KorString separator = columns.isEmpty() ? L"" : L", ";
        columns += separator + L"[" + KorString::fromUtf8(column.name) + L"]";
        values += separator + (column.kind == FieldKind::Integer ? L"%ld"
                               : column.kind == FieldKind::Real  ? L"%lf"
                                                                 : L"'%s'");
    }
    return text = L" (" + columns + L")  VALUES  ( " + values + L") ";
}

int insertItem(const KorString& statement, const RecordDescription& type, const void* item)
{
    std::vector<KorFormatArgument> values;
    values.reserve(type.columns.size());
    for (const ColumnDescription& column : type.columns)
        values.push_back(column.kind == FieldKind::Integer ? KorFormatArgument(long{column.integer(item)})
                         : column.kind == FieldKind::Real  ? KorFormatArgument(column.real(item))
                                                           : KorFormatArgument(column.text(item)));
    return KorDatabaseAccess::doSQLStatement(KorOdbcMan::m_currentDSN, statement, values);
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

int deleteWhere(const KorString& table, const KorString& column, long key)
{
    return KorDatabaseAccess::doSQLStatement(KorOdbcMan::m_currentDSN,
                                             KorString::format(L"DELETE FROM [%s] ", table) +
                                                 KorString::format(L" WHERE [%s].%s=%i", table, column, key));
}

int storeItems(KorOdbcMan::eTableType ownerType, long ownerKey, KorOdbcMan::eCopyDepth depth)
{
    const DetailTable& owner = detailTable(ownerType);
    const int itemType = itemTableType(ownerType);
    if (itemType < 0)
        return 1;
    const MemberList& list = owner.description().items.list;
    const RecordDescription& type = detailTable(itemType).description();
    const KorString table = KorDatabaseAccess::getTableName(tableName(itemType));
    const ColumnDescription& ownerColumn = *type.at(type.itemOwner);
    const ColumnDescription* order = type.at(type.itemOrder);
    const bool haveKeys = type.key >= 0;
    const KorString insert = haveKeys ? KorString() : L"INSERT INTO " + table + insertedValues(type);
    const int deleted =
        haveKeys ? deleteWhere(table, KorString::fromUtf8(ownerColumn.name), ownerKey)
                 : KorOdbcMan::deleteRecord(static_cast<KorOdbcMan::eTableType>(itemType), KorOdbcKey(ownerKey),
                                            owner.itemsAtFirstDepth ? KorOdbcMan::kFirstCopy : depth);
    int result = 1;
    for (long position = 0; result == 1 && position < list.length(owner.currentRecord()); ++position) {
        void* item = list.at(owner.currentRecord(), position);
        ownerColumn.integer(item) = static_cast<int>(ownerKey);
        if (order != nullptr)
            order->integer(item) = static_cast<int>(position);
        result = haveKeys ? appendItem(table, type, item) : insertItem(insert, type, item);
    }
    return result == 1 ? deleted : result;
}

} // namespace korodbc
