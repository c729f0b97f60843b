#include "foundation/ResolvedTable.h"

#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace {

/// Reads all columns. Returns the result of reading the structure, `lastColumn` that of the last column.
int readTable(const KorString& name, const KorString& order, KorArray<KorColumnData>& data,
              KorArray<KorColumn>& columns, int& lastColumn)
{
    data = KorArray<KorColumnData>();
    columns.setLogicalLength(0);
    const korodbc::ResolvedTable table = korodbc::resolveTable(name);
    const int structure = KorDatabaseAccess::getTableStructure(table.dsn, table.name, columns);
    lastColumn = structure;
    if (structure <= 0)
        return structure;
    data.setLogicalLength(columns.length());
    for (int i = 0; i < columns.length(); ++i) {
        KorArray<KorCellData> values;
        lastColumn = KorDatabaseAccess::getColumnValues(table.dsn, table.name, {}, order, i, values);
        KorDatabaseAccess::cellDataArr2ColumnData(values, data[i]);
    }
    return structure;
}

/// Key cell of a row; `hasRow` is false for a row beyond the table.
int readKey(int row, const KorString& name, KorCellData& key, bool& hasRow)
{
    const korodbc::ResolvedTable table = korodbc::resolveTable(name);
    KorArray<KorCellData> values;
    const int result = KorDatabaseAccess::getColumnValues(table.dsn, table.name, {}, {}, 0, values);
    hasRow = row >= 0 && row < values.length();
    if (hasRow)
        key = values[row];
    return result;
}

} // namespace

int kor_odbc_getListcontrolTable(const KorString& table, KorArray<KorColumnData>& data,
                                 KorArray<KorColumn>& columns)
{
    int lastColumn = 0;
    return readTable(table, {}, data, columns, lastColumn);
}

int kor_odbc_getListcontrolTableSortedByKey(const KorString& table, KorArray<KorColumnData>& data,
                                            KorArray<KorColumn>& columns)
{
    int lastColumn = 0;
    readTable(table, L"[Key]", data, columns, lastColumn);
    return lastColumn;
}

int kor_odbc_getUserListcontrolKey(int row, const KorString& table, KorString& key)
{
    KorCellData cell;
    bool hasRow = false;
    const int result = readKey(row, table, cell, hasRow);
    if (hasRow)
        key = cell.getStringW();
    return result;
}

int kor_odbc_getUserListcontrolKey(int row, const KorString& table, int& key)
{
    KorCellData cell;
    bool hasRow = false;
    readKey(row, table, cell, hasRow);
    if (!hasRow || (cell.getType() == KorItemType::kInt && !cell.isInt()))
        return 0;
    key = cell.getInt();
    return 1;
}
