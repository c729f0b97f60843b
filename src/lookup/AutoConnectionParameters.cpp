#include "foundation/ResolvedTable.h"

#include <korodbc/lookup/KorOdbcAutoConnection.h>
#include <korodbc/lookup/UserTableRows.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <array>

namespace {

enum Column { kKey, kSituation, kIntValue1, kName, kIntValue2, kTextValue, kIntValue3, kColumns };

int keyOfName(const KorArray<AutoConnParamSetSituationStruct>& rows, const KorString& name)
{
    for (const AutoConnParamSetSituationStruct& row : rows)
        if (row.name == name)
            return row.key;
    return -1;
}

int appendRow(const KorString& table, int& key)
{
    int kind = korodbc::kIntKey;
    KorString text;
    const int result = korodbc::appendUserTableRow(table, kind, text, key, false);
    if (kind == korodbc::kTextKey)
        key = static_cast<int>(text.toInteger());
    return result;
}

void writeCell(const KorString& logical, int key, Column column, const KorCellData& value)
{
    const korodbc::ResolvedTable table = korodbc::resolveTable(logical);
    KorDatabaseAccess::setTableColumnValue(table.dsn, table.name, L"Key", KorString::format(L"%d", key), column,
                                           value);
}

} // namespace

int kor_odbc_getAutoConnSituationParams(int situation, KorString table,
                                        KorArray<AutoConnParamSetSituationStruct>& params)
{
    const korodbc::ResolvedTable resolved = korodbc::resolveTable(table);
    std::array<KorArray<KorCellData>, kColumns> columns;
    for (int i = 0; i < kColumns; ++i)
        if (KorDatabaseAccess::getColumnValues(resolved.dsn, resolved.name, {}, {}, i,
                                               columns[static_cast<std::size_t>(i)]) != 1)
            break;
    int result = 0;
    for (int row = 0; row < columns[kSituation].length(); ++row) {
        if (columns[kSituation][row].getLong() != situation)
            continue;
        // columns that could not be read leave their fields as they are
        const auto cell = [&](Column column) {
            return row < columns[column].length() ? columns[column][row] : KorCellData();
        };
        params.append({cell(kKey).getInt(), situation, cell(kIntValue1).getInt(), cell(kName).getStringW(),
                       cell(kIntValue2).getInt(), cell(kTextValue).getStringW(), cell(kIntValue3).getInt()});
        result = 1;
    }
    return result;
}

int kor_odbc_setAutoConnSituationParams(int situation, KorString table,
                                        const KorArray<AutoConnParamSetSituationStruct>& params)
{
    KorDatabaseBatch batch;
    KorArray<AutoConnParamSetSituationStruct> existing;
    int result = kor_odbc_getAutoConnSituationParams(situation, table, existing);
    if (result != 1) // a situation is only ever updated, never started
        return batch.end(result);
    for (const AutoConnParamSetSituationStruct& param : params) {
        int key = keyOfName(existing, param.name);
        if (key == -1) {
            result = appendRow(table, key);
            if (result != 1)
                continue;
        }
        writeCell(table, key, kSituation, KorCellData(param.situation));
        writeCell(table, key, kIntValue1, KorCellData(param.intValue1));
        writeCell(table, key, kName, KorCellData(param.name));
        writeCell(table, key, kIntValue2, KorCellData(param.intValue2));
        writeCell(table, key, kTextValue, KorCellData(param.textValue));
        writeCell(table, key, kIntValue3, KorCellData(param.intValue3));
    }
    return batch.end(result);
}
