// The copies of the tables of a compaction, and their resets.

#include "CompactTables.h"
#include "foundation/ManagerDatabase.h"
#include "foundation/ProcessConstants.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

using namespace korodbc;

using Compact = KorOdbcCompactDetailsTables;

namespace {

CompactTables& tables() { return CompactTables::current(); }

/// Copies of the tables of the add-in: `act` gives -1 for failure.
template <class Act>
int forEachCopy(Act act)
{
    int result = 1;
    for (const CompactTable& table : tables().all())
        if (act(KorDatabaseAccess::getTableName(table.name()),
                KorDatabaseAccess::getTableName(table.name() + firstCopySuffix)) == -1)
            result = 0;
    return result;
}

} // namespace

int Compact::backupTables()
{
    return forEachCopy([](const KorString& table, const KorString& copy) {
        return KorDatabaseAccess::copyTable(KorDSNDefinitions::kAddin, table, copy, false);
    });
}

int Compact::dropCopiesOfTables()
{
    return forEachCopy([](const KorString&, const KorString& copy) {
        const int result =
            KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kAddin, L"DROP TABLE [" + copy + L"]");
        KorDatabaseAccess::resetCachedTable(KorDSNDefinitions::kAddin, copy);
        return result;
    });
}

void Compact::updateTablesStatus()
{
    const ManagerDatabase current(tables().database, tables().index);
    const auto modify = [](std::initializer_list<int> types) {
        for (const int number : types) {
            const auto type = static_cast<KorOdbcMan::eTableType>(number);
            const bool opens = !KorOdbcMan::isOpen(type, KorOdbcMan::kFirstCopy);
            KorOdbcMan::setStatus(type, KorOdbcMan::eModified, KorOdbcMan::kFirstCopy);
            if (opens)
                CompactTables::noteOpening(KorOdbcMan::openingOf(type));
            // what cannot be cancelled as a whole is not begun
            KorString name;
            if (KorTransferState::isTableBackupProcessCanceled() == 0 &&
                !KorOdbcMan::canCancel(type, KorOdbcMan::kFirstCopy) && KorOdbcMan::getTableName(type, name) == 1)
                tables().fail(L"the copy of " + name + L" could not be taken");
        }
    };
    if (tables().ofStyles())
        modify({5, 8, 7, 29, 1, 11, 12, 10, 0, 9, 16, 4, 25, 14, 2, 3, 13, 22});
    else if (tables().ofProcesses())
        modify({16});
    if (tables().ofProcesses())
        modify({34, 40, 39, 33, 32, 37, 38});
}

void Compact::resetTablesContent()
{
    const KorDSNRequest request(tables().database, tables().index);
    for (const CompactTable& table : tables().all())
        if (table.isIn(tables().type)) {
            RecordAccess::resetCache(table.type());
            if (table.type().items.exists())
                RecordAccess::resetCache(table.type().items.item());
        }
    if (tables().ofStyles())
        RecordAccess::resetCache(descriptionOf<StructLinetypes>());
}
