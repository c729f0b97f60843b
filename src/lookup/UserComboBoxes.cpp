#include "foundation/ResolvedTable.h"

#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/lookup/UserTableRows.h>
#include <korodbc/records/configuration/CombinationRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace {

korodbc::UserKeyKind kindOf(const KorCellData& key)
{
    return key.isInt()                             ? korodbc::kIntKey
           : key.getType() == KorItemType::kString ? korodbc::kTextKey
                                                   : korodbc::kNoKey;
}

korodbc::UserKeyKind kindOf(KorItemType::BaseTypes type)
{
    return type == KorItemType::kString ? korodbc::kTextKey
           : type == KorItemType::kInt  ? korodbc::kIntKey
                                        : korodbc::kNoKey;
}

int readColumn(const korodbc::ResolvedTable& table, const KorString& where, int column,
               KorArray<KorCellData>& values)
{
    return KorDatabaseAccess::getColumnValues(table.dsn, table.name, where, {}, column, values);
}

} // namespace

int kor_odbc_getUserComboBoxKey(const KorString& runName, const KorString& table, int& key)
{
    KorCellData cell;
    const int result = KorDatabaseAccess::getKeyAtRunname(korodbc::resolveTable(table).name, runName, cell);
    if (result != 1)
        return result;
    if (!cell.isInt())
        return 0;
    key = cell.getInt();
    return 1;
}

int kor_odbc_getUserComboBoxKey(const KorString& runName, const KorString& table, KorString& textKey, int& intKey,
                                int& kind)
{
    KorCellData cell;
    if (KorDatabaseAccess::getKeyAtRunname(korodbc::resolveTable(table).name, runName, cell) != 1) {
        KorArray<KorColumn> columns;
        if (kor_odbc_getTableStructure(table, columns) != 1)
            return -2;
        kind = kindOf(columns[0].getType());
        return 0;
    }
    kind = kindOf(cell);
    if (kind == korodbc::kTextKey)
        textKey = cell.getStringW();
    else if (kind == korodbc::kIntKey)
        intKey = cell.getInt();
    return kind == korodbc::kNoKey ? 0 : 1;
}

int kor_odbc_getUserComboBoxList(const KorString& table, KorArray<long>& keys, KorArray<KorString>& names)
{
    keys.setLogicalLength(0);
    const korodbc::ResolvedTable resolved = korodbc::resolveTable(table);
    KorArray<KorCellData> values;
    if (readColumn(resolved, {}, 1, values) != 1)
        return 0;
    KorDatabaseAccess::cellDataArr2StringArr(values, names);
    if (readColumn(resolved, {}, 2, values) == 1)
        KorDatabaseAccess::cellDataArr2LongArr(values, keys);
    return names.isEmpty() ? 0 : 1;
}

void kor_odbc_getUserCSComboBoxList(const KorString& table, const KorString& where, KorArray<KorString>& names)
{
    KorArray<KorCellData> values;
    if (readColumn(korodbc::resolveTable(table), where, 1, values) == 1)
        KorDatabaseAccess::cellDataArr2StringArr(values, names);
}

int kor_odbc_getUserComboBoxRunname(const KorString& key, const KorString& table, KorString& runName)
{
    return KorDatabaseAccess::getRunnameAtKey(korodbc::resolveTable(table).name, KorCellData(key), runName);
}

int kor_odbc_getUserComboBoxRunname(int key, const KorString& table, KorString& runName)
{
    return KorDatabaseAccess::getRunnameAtKey(korodbc::resolveTable(table).name, KorCellData(key), runName);
}

int kor_odbc_getCombinationKey(int& key, const KorString& standard, const KorString& strengthClass,
                               const KorString& boltSet, const KorString& diameter, const KorString& coating,
                               const KorString& assemblyLocation)
{
    return StructValidCombinationsMarshal::getKey(standard, strengthClass, boltSet, diameter, coating,
                                                  assemblyLocation, key);
}
