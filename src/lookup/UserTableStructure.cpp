#include "foundation/ResolvedTable.h"

#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace {

eDSN dataSource(unsigned long number)
{
    return number < KorDSNDefinitions::kNumberOfDataSources ? static_cast<eDSN>(number)
                                                            : KorDSNDefinitions::kUnresolved;
}

} // namespace

int kor_odbc_getTableStructure(const KorString& table, KorArray<KorColumn>& columns)
{
    const korodbc::ResolvedTable resolved = korodbc::resolveTable(table);
    return KorDatabaseAccess::getTableStructure(resolved.dsn, resolved.name, columns);
}

int kor_odbc_getTableStructure(eDSN dsn, const KorString& table, KorArray<KorColumn>& columns)
{
    if (dsn == KorDSNDefinitions::kUnresolved)
        dsn = korodbc::resolveTable(table).dsn; // the name is passed on as given
    return KorDatabaseAccess::getTableStructure(dsn, table, columns);
}

bool kor_odbc_existsUserTable(unsigned long dsn, const KorString& table)
{
    return KorDatabaseAccess::doesTableExists(dataSource(dsn), table) != 0;
}

int kor_odbc_getTables(unsigned long dsn, KorArray<KorString>& names)
{
    return KorDatabaseAccess::getTablesNames(dataSource(dsn), names);
}

int kor_odbc_columnExist(unsigned long dsn, KorString table, KorString column)
{
    return KorDatabaseAccess::doesColumnExists(dataSource(dsn), table, column);
}

int kor_odbc_loadUserTable(eDSN dsn, const KorString& table, KorArray<KorColumnData>& data,
                           KorArray<KorColumn>& columns)
{
    data.setLogicalLength(0);
    columns.setLogicalLength(0);
    KorPartialTable loaded;
    const int result = KorDatabaseAccess::getTableAllSources(dsn, table, loaded);
    if (result < 1)
        return result;
    columns = std::move(loaded.getColumns());
    data = std::move(loaded.getData());
    return result;
}

void kor_odbc_resetListcontrolTable(const KorString& table)
{
    const korodbc::ResolvedTable resolved = korodbc::resolveTable(table);
    KorDatabaseAccess::resetCachedTable(resolved.dsn, resolved.name);
}
