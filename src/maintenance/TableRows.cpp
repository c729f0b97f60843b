#include "foundation/ManagerDatabase.h"
#include "foundation/ResolvedTable.h"
#include "maintenance/TableStatements.h"

#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDatabaseAccess.h>

using namespace korodbc;

int korodbc::deleteRows(eDSN dsn, const KorString& table, const KorString& condition)
{
    return KorDatabaseAccess::doSQLStatement(dsn, KorString::format(L"DELETE FROM [%s] ", table) + condition);
}

int KorOdbcGUI::deleteTableInformation(const KorString& table)
{
    return deleteTableInformation(table, KorString());
}

int KorOdbcGUI::deleteTableInformation(const KorString& table, eDSN dsn)
{
    const CountrySlot slot(dsn);
    return deleteTableInformation(table, KorString(), dsn);
}

int KorOdbcGUI::deleteTableInformation(const KorString& table, const KorString& condition)
{
    const ResolvedTable resolved = resolveTable(table);
    return deleteRows(resolved.dsn, resolved.name, condition);
}

int KorOdbcGUI::deleteTableInformation(const KorString& table, const KorString& condition, eDSN dsn)
{
    const CountrySlot slot(dsn);
    return deleteRows(dsn, KorDatabaseAccess::getTableName(table), condition);
}

int KorOdbcGUI::updateTableInformation(const KorString& table, const KorString& assignments,
                                       const KorString& condition)
{
    const ResolvedTable resolved = resolveTable(table);
    return KorDatabaseAccess::doSQLStatement(
        resolved.dsn, KorString::format(L"UPDATE [%s] SET %s WHERE %s", resolved.name, assignments, condition));
}
