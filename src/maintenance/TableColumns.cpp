#include "foundation/ManagerDatabase.h"
#include "foundation/ResolvedTable.h"

#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDatabaseAccess.h>

using namespace korodbc;

// The statements that change columns name their table without brackets.

namespace {

int drop(eDSN dsn, const KorString& table)
{
    return KorDatabaseAccess::doSQLStatement(dsn, KorString::format(L"DROP TABLE [%s]", table));
}

int dropColumnOf(eDSN dsn, const KorString& table, const KorString& column)
{
    const int result = KorDatabaseAccess::doSQLStatement(dsn, L"ALTER TABLE " + table + L" DROP COLUMN " + column);
    KorDatabaseAccess::resetCachedTable(dsn, table);
    return result;
}

int addColumns(eDSN dsn, const KorString& table, const KorArray<KorString>& definitions)
{
    const KorString prefix = L"ALTER TABLE " + table + L" ADD ";
    KorDatabaseBatch batch;
    int result = -1;
    for (const KorString& definition : definitions) {
        result = KorDatabaseAccess::doSQLStatement(dsn, prefix + definition);
        if (result == 0)
            return batch.undo(0);
    }
    return batch.end(result);
}

} // namespace

int KorOdbcGUI::dropTable(const KorString& table)
{
    const ResolvedTable resolved = resolveTable(table);
    return drop(resolved.dsn, resolved.name);
}

int KorOdbcGUI::dropTable(const KorString& table, eDSN dsn)
{
    const CountrySlot slot(dsn);
    const KorString name = KorDatabaseAccess::getTableName(table);
    const int result = drop(dsn, name);
    KorDatabaseAccess::resetCachedTable(dsn, name);
    return result;
}

int KorOdbcGUI::dropColumn(const KorString& table, const KorString& column)
{
    const ResolvedTable resolved = resolveTable(table);
    return dropColumnOf(resolved.dsn, resolved.name, column);
}

int KorOdbcGUI::dropColumn(const KorString& table, const KorString& column, eDSN dsn)
{
    const CountrySlot slot(dsn);
    return dropColumnOf(dsn, KorDatabaseAccess::getTableName(table), column);
}

int KorOdbcGUI::setNewColumns(const KorString& table, const KorArray<KorString>& definitions)
{
    const ResolvedTable resolved = resolveTable(table);
    return addColumns(resolved.dsn, resolved.name, definitions);
}

int KorOdbcGUI::setNewColumns(const KorString& table, const KorArray<KorString>& definitions, eDSN dsn)
{
    const CountrySlot slot(dsn);
    return addColumns(dsn, KorDatabaseAccess::getTableName(table), definitions);
}
