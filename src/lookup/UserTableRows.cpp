#include "foundation/ResolvedTable.h"

#include <korodbc/lookup/UserTableRows.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>

namespace {

int unknownKind(int& kind)
{
    KorAssert::korAssert("false", "korUserConnectionsAndCombinations", 954);
    kind = korodbc::kNoKey;
    return 0;
}

} // namespace

int korodbc::appendUserTableRow(const KorString& table, int& kind, KorString& textKey, int& intKey, bool keepKey)
{
    if (kind != kTextKey && kind != kIntKey)
        return unknownKind(kind);
    const ResolvedTable resolved = resolveTable(table);
    KorCellData key = kind == kTextKey ? KorCellData(textKey) : KorCellData(intKey);
    const int result = KorDatabaseAccess::appendNewLine(resolved.dsn, resolved.name, key, true, keepKey);
    if (result != 1)
        return result;
    switch (key.getType()) {
    case KorItemType::kString:
        kind = kTextKey;
        textKey = key.getStringW();
        return result;
    case KorItemType::kInt:
        kind = kIntKey;
        intKey = key.getInt();
        return result;
    default:
        return unknownKind(kind);
    }
}

int korodbc::setUserTableCell(const KorString& table, const KorString& key, int column, const KorCellData& value)
{
    const ResolvedTable resolved = resolveTable(table);
    KorArray<KorColumn> columns;
    KorDatabaseAccess::getTableStructure(resolved.dsn, resolved.name, columns);
    if (columns.isEmpty())
        return 0;
    return KorDatabaseAccess::setTableColumnValue(resolved.dsn, resolved.name, columns[0].getName(), key, column,
                                                  value);
}
