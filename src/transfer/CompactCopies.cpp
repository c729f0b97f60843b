// The edit copies and the caches of the tables of a compaction.

#include "CompactTables.h"
#include "edit/KorOdbcMan.h"
#include "foundation/ProcessConstants.h"
#include "records/detail/DetailObjectRecords.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/KorDSNManager.h"
#include "repository/RecordAccess.h"
#include "transfer/KorOdbcCompactDetailsTables.h"

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

/// Makes a database that of the edit manager and of the service.
class ManagersDatabase {
public:
    ManagersDatabase(eDSN database, eIndex index)
        : m_dsn(KorOdbcMan::m_currentDSN), m_addIn(KorOdbcMan::m_currentAddIn), m_request(database, index)
    {
        KorOdbcMan::m_currentDSN = database;
        KorOdbcMan::m_currentAddIn = index;
    }
    ~ManagersDatabase()
    {
        KorOdbcMan::m_currentDSN = m_dsn;
        KorOdbcMan::m_currentAddIn = m_addIn;
    }
    ManagersDatabase(const ManagersDatabase&) = delete;
    ManagersDatabase& operator=(const ManagersDatabase&) = delete;

private:
    const eDSN m_dsn;
    const eIndex m_addIn;
    const KorDSNRequest m_request;
};

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
    const ManagersDatabase current(tables().database, tables().index);
    const auto modify = [](std::initializer_list<int> types) {
        for (const int type : types)
            KorOdbcMan::setStatus(static_cast<KorOdbcMan::eTableType>(type), KorOdbcMan::eModified,
                                  KorOdbcMan::kFirstCopy);
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
