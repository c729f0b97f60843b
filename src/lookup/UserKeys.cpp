#include "foundation/ResolvedTable.h"

#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>

namespace {

/// Takes over a key value; any type but int and text raises the assertion of that line.
void setKey(KorColumn& key, const KorCellData& value, int line)
{
    switch (value.getType()) {
    case KorItemType::kInt:
        key.setlValue(value.getLong());
        break;
    case KorItemType::kString:
        key.setsValue(value.getStringW());
        break;
    default:
        KorAssert::korAssert("false", "korUserConnectionsAndCombinations", line);
    }
}

/// The rows that meet every condition.
KorString whereAll(const KorArray<KorColumn>& conditions)
{
    KorString where(L"(");
    for (const KorColumn& condition : conditions) {
        KorString expression;
        condition.getExpression(expression);
        where += expression;
        where += L") AND (";
    }
    where += L" 1 = 1)";
    return where;
}

struct FirstKey {
    int result;                // of the last read
    bool found = false;        // there is a row
    bool hasStructure = false; // the columns could be read
};

FirstKey firstKey(const korodbc::ResolvedTable& table, const KorArray<KorColumn>& conditions, KorColumn& key)
{
    KorString where;
    KorColumn::getWherePartOfStatement(conditions, where);
    KorArray<KorCellData> values;
    FirstKey first{KorDatabaseAccess::getColumnValues(table.dsn, table.name, where, {}, 0, values)};
    first.found = !values.isEmpty();
    if (first.found)
        setKey(key, values[0], 231);
    return first;
}

/// First key of a section. Without a column for sections nothing is searched.
FirstKey firstKeyOfSection(const KorString& section, const KorString& table, bool joined, KorColumn& key)
{
    KorArray<KorColumn> columns;
    FirstKey first{kor_odbc_getTableStructure(table, columns)};
    first.hasStructure = first.result == 1;
    for (KorColumn& column : columns) {
        if (column.getName() != L"Section")
            continue;
        column.setsValue(section);
        column.setRelationalOperator(KorColumn::kEqual);
        if (joined)
            column.setLogicalOperator(KorColumn::kAnd);
        key.setName(L"Section");
        first = firstKey(korodbc::resolveTable(table), columns, key);
        first.hasStructure = true;
        break;
    }
    return first;
}

} // namespace

int korOdbcGetUserKeys(const KorArray<KorColumn>& conditions, const KorString& table, KorArray<KorColumn>& keys)
{
    KorArray<KorCellData> values;
    const int result = KorDatabaseAccess::getColumnValues(KorDatabaseAccess::getTableName(table),
                                                          whereAll(conditions), {}, 0, values);
    for (const KorCellData& value : values) {
        KorColumn key;
        setKey(key, value, 183);
        keys.append(key);
    }
    return result;
}

int kor_odbc_getUserFirstKey(const KorArray<KorColumn>& conditions, const KorString& table, KorColumn& key)
{
    return firstKey(korodbc::resolveTable(table), conditions, key).result;
}

int kor_odbc_getUserFirstKey(eDSN dsn, const KorArray<KorColumn>& conditions, const KorString& table,
                             KorColumn& key)
{
    return firstKey({korodbc::resolveTable(table).name, dsn}, conditions, key).result;
}

int kor_odbc_getUserFirstKey(const KorString& section, const KorString& table, KorString& key)
{
    KorColumn found;
    const FirstKey first = firstKeyOfSection(section, table, true, found);
    if (!first.found || found.getType() != KorItemType::kString)
        return first.result;
    key = found.getsValue();
    return 1;
}

int kor_odbc_getUserFirstKey(const KorString& section, const KorString& table, KorString& textKey, int& intKey,
                             int& kind)
{
    KorColumn found;
    const FirstKey first = firstKeyOfSection(section, table, false, found);
    if (!first.hasStructure)
        return -2;
    if (!first.found)
        return first.result;
    if (found.getValue().isInt()) {
        intKey = static_cast<int>(found.getlValue());
        kind = 1;
        return 1;
    }
    if (found.getType() == KorItemType::kString) {
        textKey = found.getsValue();
        kind = 0;
        return 1;
    }
    kind = -1;
    return -2;
}
