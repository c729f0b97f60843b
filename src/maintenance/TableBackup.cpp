#include "foundation/ManagerDatabase.h"
#include "foundation/ResolvedTable.h"
#include "maintenance/TableStatements.h"

#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDatabaseAccess.h>

using namespace korodbc;

namespace {

/// Drops the columns that `table` has beyond those of `copy` with `drop`, the last one first.
template <class Drop>
int dropSurplusColumns(eDSN dsn, const KorString& table, const KorString& copy, Drop drop)
{
    if (KorDatabaseAccess::doesTableExists(dsn, copy) != 1)
        return 0;
    KorArray<KorColumn> columns;
    int result = KorDatabaseAccess::getTableStructure(dsn, table, columns);
    if (result != 1)
        return result;
    KorArray<KorColumn> copied;
    result = KorDatabaseAccess::getTableStructure(dsn, copy, copied);
    if (result != 1)
        return result;
    KorDatabaseBatch batch;
    for (long i = columns.length() - 1; i >= copied.length(); --i)
        drop(columns[i].getName());
    return batch.end(result);
}

int insertFrom(eDSN dsn, const KorString& table, const KorString& copy)
{
    return KorDatabaseAccess::doSQLStatement(
        dsn, KorString::format(L"INSERT INTO [%s] SELECT * FROM  [%s]", table, copy));
}

} // namespace

int KorOdbcGUI::backupTable(const KorString& table, const KorString& copy)
{
    const ResolvedTable from = resolveTable(table);
    return KorDatabaseAccess::copyTable(from.dsn, from.name, resolveTable(copy).name, false);
}

int KorOdbcGUI::backupTable(const KorString& table, const KorString& copy, eDSN dsn)
{
    const CountrySlot slot(dsn);
    return KorDatabaseAccess::copyTable(dsn, KorDatabaseAccess::getTableName(table),
                                        KorDatabaseAccess::getTableName(copy), false);
}

int KorOdbcGUI::restoreTable(const KorString& table, const KorString& copy)
{
    const ResolvedTable to = resolveTable(table);
    const ResolvedTable from = resolveTable(copy);
    KorDatabaseBatch batch;
    const int deleted = deleteTableInformation(table);
    int result = insertFrom(to.dsn, to.name, from.name);
    if (result == 0 || deleted == 0)
        return batch.undo(0); // the rows stay
    if (dropTable(copy) == 1)
        result = 1;
    return batch.end(result);
}

int KorOdbcGUI::restoreTable(const KorString& table, const KorString& copy, eDSN dsn)
{
    const CountrySlot slot(dsn);
    const KorString to = KorDatabaseAccess::getTableName(table);
    const KorString from = KorDatabaseAccess::getTableName(copy);
    KorArray<KorColumn> columns;
    KorArray<KorColumn> copied;
    KorDatabaseAccess::getTableStructure(dsn, to, columns);
    KorDatabaseAccess::getTableStructure(dsn, from, copied);
    if (columns.length() != copied.length())
        return -1;
    KorDatabaseBatch batch;
    const int deleted = deleteRows(dsn, to);
    int result = insertFrom(dsn, to, from);
    if (result == 0 || deleted == 0)
        return batch.undo(0); // the rows stay
    if (dropTable(copy, dsn) == 1)
        result = 1;
    return batch.end(result);
}

int KorOdbcGUI::restoreTableStructure(const KorString& table, const KorString& copy)
{
    const ResolvedTable resolved = resolveTable(table);
    if (resolved.dsn == KorDSNDefinitions::kUnresolved)
        return 0;
    return dropSurplusColumns(resolved.dsn, resolved.name, resolveTable(copy).name,
                              [&](const KorString& column) { dropColumn(table, column); });
}

int KorOdbcGUI::restoreTableStructure(const KorString& table, const KorString& copy, eDSN dsn)
{
    const CountrySlot slot(dsn);
    return dropSurplusColumns(dsn, KorDatabaseAccess::getTableName(table), KorDatabaseAccess::getTableName(copy),
                              [&](const KorString& column) { dropColumn(table, column, dsn); });
}
