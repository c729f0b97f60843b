#include "TableCopies.h"

#include "DetailTables.h"

#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace korodbc {

using Man = KorOdbcMan;
using Access = KorDatabaseAccess;

TableCopies::TableCopies(int type) : m_logical(tableName(type)), m_table(Access::getTableName(m_logical)) {}

KorString TableCopies::logicalCopy(int depth) const
{
    return m_logical + KorString(Man::ccKorVELCopyString[depth]);
}

KorString TableCopies::copy(int depth) const { return Access::getTableName(logicalCopy(depth)); }

bool TableCopies::has(int depth) const { return Access::doesTableExists(Man::m_currentDSN, copy(depth)) == 1; }

bool TableCopies::hasAny() const { return has(3) || has(2) || has(1) || has(0); }

int TableCopies::take(int depth) const
{
    return Access::copyTable(Man::m_currentDSN, m_table, copy(depth), false);
}

int TableCopies::drop(int depth) const
{
    const KorString name = copy(depth);
    const int result = Access::doSQLStatement(Man::m_currentDSN, KorString::format(L"DROP TABLE [%s]", name));
    Access::resetCachedTable(Man::m_currentDSN, name);
    return result;
}

/// True when the copy has the first columns of the table: Cancel drops those that were added behind.
bool TableCopies::fits(int depth) const
{
    KorArray<KorColumn> columns, copied;
    if (Access::getTableStructure(Man::m_currentDSN, m_table, columns) != 1 ||
        Access::getTableStructure(Man::m_currentDSN, copy(depth), copied) != 1 ||
        copied.length() > columns.length())
        return false;
    for (long i = 0; i < copied.length(); ++i)
        if (columns[i].getName().compareNoCase(copied[i].getName()) != 0)
            return false;
    return true;
}

int TableCopies::restore(int depth) const
{
    if (!has(depth) || !fits(depth))
        return -1;
    KorDatabaseBatch batch;
    int result = -1;
    try {
        if (KorOdbcGUI::restoreTableStructure(m_logical, logicalCopy(depth), Man::m_currentDSN) == 1)
            result = KorOdbcGUI::restoreTable(m_logical, logicalCopy(depth), Man::m_currentDSN);
    } catch (...) {
        result = -1;
    }
    if (result == 1 && has(depth))
        result = 0; // a copy that stays would come back over later work
    return result == 1 ? batch.end(1) : batch.undo(result);
}

int TableCopies::putAside(int depth, KorString& aside) const
{
    KorString free;
    for (int number = 1; free.isEmpty() || Access::doesTableExists(Man::m_currentDSN, free) == 1; ++number)
        free = m_table + KorString::format(L"_LeftCopy%d", number);
    const int result = Access::doSQLStatement(
        Man::m_currentDSN, KorString::format(L"ALTER TABLE [%s] RENAME TO [%s]", copy(depth), free));
    if (result == 1)
        aside = free;
    return result;
}

bool TableCopies::bringBack() const
{
    bool all = true;
    for (int depth = Man::kFourthCopy; depth >= Man::kFirstCopy; --depth)
        all = (!has(depth) || restore(depth) == 1) && all;
    return all;
}

bool TableCopies::isClaimed() const { return Access::isTableClaimed(Man::m_currentDSN, m_table) == 1; }

int TableCopies::claim() const { return Access::claimTable(Man::m_currentDSN, m_table); }

void TableCopies::release() const { Access::releaseTable(Man::m_currentDSN, m_table); }

bool TableCopies::claimForEdit() const
{
    const bool held = isClaimed();
    if (claim() != 1)
        return false;
    if (held)
        return true;
    if (KorDatabaseBatch::lock(Man::m_currentDSN) != 1)
        return false;
    KorString aside;
    if (hasAny() && !bringBack())
        for (int depth = 0; depth < Man::kCopies; ++depth)
            if (has(depth) && putAside(depth, aside) != 1)
                return false;
    return true;
}

} // namespace korodbc
