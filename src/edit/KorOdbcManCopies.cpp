#include "DetailTables.h"
#include "foundation/ManagerDatabase.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KorAssert.h>

#include <map>
#include <vector>

using namespace korodbc;

KorOdbcMan::StatusRows KorOdbcMan::m_Status, KorOdbcMan::m_SecondStatus, KorOdbcMan::m_ThirdStatus,
    KorOdbcMan::m_FourthStatus;
KorOdbcMan::FlagRows KorOdbcMan::m_BackupAvailable, KorOdbcMan::m_SecondBackupAvailable,
    KorOdbcMan::m_ThirdBackupAvailable, KorOdbcMan::m_FourthBackupAvailable, KorOdbcMan::m_TemporaryBackupedTables;

namespace {

using Man = KorOdbcMan;

KorOdbcMan::InitializeStatics atLoad;
std::map<std::pair<int, int>, int> openings; // slot and type to the number of the last edit at the first depth
int lastOpening = 0;

/// Nothing is known of the databases of another repository.
void forgetRepository()
{
    Man::InitializeStatics::release();
    Man::InitializeStatics::build();
    setManagerDatabase(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
}
const bool told = (KRRepositoryProxyMan::whenSwitched(forgetRepository), true);

Man::StatusRows* const statusOfDepth[] = {&Man::m_Status, &Man::m_SecondStatus, &Man::m_ThirdStatus,
                                          &Man::m_FourthStatus};
Man::FlagRows* const backupOfDepth[] = {&Man::m_BackupAvailable, &Man::m_SecondBackupAvailable,
                                        &Man::m_ThirdBackupAvailable, &Man::m_FourthBackupAvailable};

bool isDepth(int depth) { return depth >= 0 && depth < Man::kCopies; }

Man::eStatus& status(int slot, int type, int depth) { return statusOfDepth[depth]->getAt(slot).getAt(type); }
bool& backup(int slot, int type, int depth) { return backupOfDepth[depth]->getAt(slot).getAt(type); }

/// Changes a status or flag; the change is taken back with the writes that it stands for.
template <class Cell, class T>
void change(Cell cell, int slot, int type, int depth, T value)
{
    const T before = cell(slot, type, depth);
    if (before == value)
        return;
    cell(slot, type, depth) = value;
    KorDatabaseBatch::whenUndone(Man::m_currentDSN, [=] { cell(slot, type, depth) = before; });
}

KorArray<KorAddInId> installedCountryAddIns()
{
    KorArray<KorAddInId> ids;
    if (AddInManagerInterface* manager = AddInManagerInterface::getInstance())
        manager->getInstalledCountryAddInIds(ids);
    return ids;
}

/// Calls `act` with each detail database current: base details, add-in, main configuration, country add-ins.
template <class Act>
void forEachDatabase(Act act)
{
    const struct {
        eDSN dsn;
        eIndex index;
    } fixed[] = {{KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase},
                 {KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin},
                 {KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase}};
    int slot = 0;
    for (const auto& database : fixed) {
        const ManagerDatabase visit(database.dsn, database.index);
        act(slot++);
    }
    const KorArray<KorAddInId> ids = installedCountryAddIns();
    for (int position = 0; position < ids.length(); ++position) {
        if (AddInManagerInterface::getInstance()->getAddIn(ids.data()[position]) == nullptr)
            KorAssert::korAssert("pAddIn != NULL", "KorOdbcMan", __LINE__);
        const ManagerDatabase visit(KorDSNDefinitions::kCountryAddin, KorDSNManager::getAddInIdx(position));
        act(slot++);
    }
}

bool modifiedAtAnyDepth(int slot, int type)
{
    for (int depth = 0; depth < Man::kCopies; ++depth)
        if (status(slot, type, depth) == Man::eModified)
            return true;
    return false;
}

bool openAt(int slot, int type, int depth)
{
    return modifiedAtAnyDepth(slot, type) || (isDepth(depth) && backup(slot, type, depth));
}

KorString copyName(const KorString& table, int depth)
{
    return isDepth(depth) ? table + KorString(Man::ccKorVELCopyString[depth]) : table;
}

/// The names by which the service knows a type's table and its copies.
struct TableNames {
    explicit TableNames(int type) : logical(tableName(type)), table(KorDatabaseAccess::getTableName(logical)) {}
    KorString copy(int depth) const { return KorDatabaseAccess::getTableName(copyName(logical, depth)); }
    bool hasCopy(int depth) const
    {
        return KorDatabaseAccess::doesTableExists(Man::m_currentDSN, copy(depth)) == 1;
    }
    bool hasAnyCopy() const { return hasCopy(3) || hasCopy(2) || hasCopy(1) || hasCopy(0); }
    bool isClaimed() const { return KorDatabaseAccess::isTableClaimed(Man::m_currentDSN, table) == 1; }

    const KorString logical, table;
};

/// True when the copy has the first columns of the table: Cancel drops those that were added behind.
bool fits(const TableNames& names, int depth)
{
    KorArray<KorColumn> columns, copied;
    if (KorDatabaseAccess::getTableStructure(Man::m_currentDSN, names.table, columns) != 1 ||
        KorDatabaseAccess::getTableStructure(Man::m_currentDSN, names.copy(depth), copied) != 1 ||
        copied.length() > columns.length())
        return false;
    for (long i = 0; i < copied.length(); ++i)
        if (columns[i].getName().compareNoCase(copied[i].getName()) != 0)
            return false;
    return true;
}

/// Writes a copy back into its table, as a whole or not at all. 1; other values leave both as they are.
int restore(const TableNames& names, int depth)
{
    if (!names.hasCopy(depth) || !fits(names, depth))
        return -1;
    KorDatabaseBatch batch;
    const KorString copy = copyName(names.logical, depth);
    int result = -1;
    try {
        if (KorOdbcGUI::restoreTableStructure(names.logical, copy, Man::m_currentDSN) == 1)
            result = KorOdbcGUI::restoreTable(names.logical, copy, Man::m_currentDSN);
    } catch (...) {
        result = -1;
    }
    if (result == 1 && names.hasCopy(depth))
        result = 0; // a copy that stays would come back over later work
    return result == 1 ? batch.end(1) : batch.undo(result);
}

int putAside(const TableNames& names, int depth, KorString& aside)
{
    KorString free;
    for (int number = 1; free.isEmpty() || KorDatabaseAccess::doesTableExists(Man::m_currentDSN, free) == 1;
         ++number)
        free = names.table + KorString::format(L"_LeftCopy%d", number);
    const int result = KorDatabaseAccess::doSQLStatement(
        Man::m_currentDSN, KorString::format(L"ALTER TABLE [%s] RENAME TO [%s]", names.copy(depth), free));
    if (result == 1)
        aside = free;
    return result;
}

/// Brings back what a program that has ended left of an edit of the table, the deepest copy first. The table is
/// claimed, and edited by nobody. False when a copy stays.
bool bringBack(const TableNames& names)
{
    bool all = true;
    for (int depth = Man::kFourthCopy; depth >= Man::kFirstCopy; --depth)
        all = (!names.hasCopy(depth) || restore(names, depth) == 1) && all;
    return all;
}

/// Claims the table for an edit under copies. What another program left of one comes back first; what cannot come
/// back is put aside, since its name is wanted.
bool claimForEdit(const TableNames& names)
{
    const bool held = names.isClaimed();
    if (KorDatabaseAccess::claimTable(Man::m_currentDSN, names.table) != 1)
        return false;
    if (held)
        return true;
    if (KorDatabaseBatch::lock(Man::m_currentDSN) != 1)
        return false;
    KorString aside;
    if (names.hasAnyCopy() && !bringBack(names))
        for (int depth = 0; depth < Man::kCopies; ++depth)
            if (names.hasCopy(depth) && putAside(names, depth, aside) != 1)
                return false;
    return true;
}

/// Gives the claim back when no copy of the table is in use any more.
void releaseIfClosed(int slot, int type, const TableNames& names)
{
    for (int depth = 0; depth < Man::kCopies; ++depth)
        if (backup(slot, type, depth))
            return;
    KorDatabaseAccess::releaseTable(Man::m_currentDSN, names.table);
}

/// Closes copies that are this program's although their flags were cleared while they were in use: left, they
/// would come back over later work.
void closeForgotten(int slot, int type, bool bringsBack)
{
    const TableNames names(type);
    if (!names.isClaimed() || modifiedAtAnyDepth(slot, type))
        return;
    for (int depth = 0; depth < Man::kCopies; ++depth)
        if (backup(slot, type, depth))
            return;
    for (int depth = Man::kFourthCopy; depth >= Man::kFirstCopy; --depth) {
        if (!names.hasCopy(depth))
            continue;
        if (bringsBack)
            restore(names, depth);
        else
            KorDatabaseAccess::doSQLStatement(Man::m_currentDSN,
                                              KorString::format(L"DROP TABLE [%s]", names.copy(depth)));
    }
    KorDatabaseAccess::releaseTable(Man::m_currentDSN, names.table);
}

/// Closes a table at a depth in every database where `concerns` says so. `finish` does what the transition is
/// about.
template <class Concerns, class Finish>
int closeEverywhere(Man::eTableType type, int depth, bool bringsBack, Concerns concerns, Finish finish)
{
    if (!isTableType(type))
        return -2;
    KorDatabaseBatch batch;
    int result = 1;
    forEachDatabase([&](int slot) {
        if (!concerns(slot))
            return;
        const int done = finish();
        if (result == 1)
            result = done;
        if (isDepth(depth))
            change(status, slot, type, depth, Man::eNotModified);
        closeForgotten(slot, type, bringsBack);
        Man::resetTable(type);
    });
    return batch.end(result);
}

/// Brings back the copies in the manager's database that no other program has in use; `ownToo`: nor this one,
/// which has only just started. 1, 0 when a copy stays, -1 when the database cannot be written now.
int bringBackCopies(bool ownToo)
{
    const ManagerDatabase database;
    KorDatabaseBatch batch;
    // what other programs edit is left alone without waiting for the lock
    std::vector<int> left;
    for (int type = 0; type < Man::kTableTypes; ++type) {
        const TableNames names(type);
        if ((ownToo || !names.isClaimed()) && names.hasAnyCopy() &&
            KorDatabaseAccess::claimTable(Man::m_currentDSN, names.table) == 1)
            left.push_back(type);
    }
    if (left.empty())
        return batch.end(1);
    // what is there is looked at again under the lock: another program may have brought it back just now
    if (KorDatabaseBatch::lock(Man::m_currentDSN) != 1)
        return batch.undo(-1);
    bool all = true;
    for (const int type : left) {
        const TableNames names(type);
        all = bringBack(names) && all;
        Man::resetTable(static_cast<Man::eTableType>(type));
        KorDatabaseAccess::releaseTable(Man::m_currentDSN, names.table);
    }
    return batch.end(all ? 1 : 0);
}

/// The first step of an operation on the copy of a type at a depth: its result when it ends there, otherwise 1.
int copyOf(Man::eTableType type, Man::eCopyDepth depth, const char* depthAssertion, int otherwise)
{
    KorString name;
    if (Man::getTableName(type, name) != 1)
        return -2;
    if (isDepth(depth))
        return 1;
    KorAssert::korAssert(depthAssertion, "KorOdbcMan", __LINE__);
    return otherwise;
}

} // namespace

void KorOdbcMan::InitializeStatics::build()
{
    if (m_BackupAvailable.length() > 0 || AddInManagerInterface::getInstance() == nullptr)
        return;
    KorArray<bool> flags;
    KorArray<eStatus> statuses;
    for (int type = 0; type < kTableTypes; ++type) {
        flags.append(false);
        statuses.append(eNotModified);
    }
    const int slots = 3 + static_cast<int>(installedCountryAddIns().length());
    for (int slot = 0; slot < slots; ++slot) {
        for (FlagRows* rows : backupOfDepth)
            rows->append(flags);
        for (StatusRows* rows : statusOfDepth)
            rows->append(statuses);
        m_TemporaryBackupedTables.append(flags);
    }
}

void KorOdbcMan::InitializeStatics::release()
{
    for (FlagRows* rows : backupOfDepth)
        rows->setPhysicalLength(0);
    for (StatusRows* rows : statusOfDepth)
        rows->setPhysicalLength(0);
    m_TemporaryBackupedTables.setPhysicalLength(0);
    m_bInitializeTables = true;
    m_bAppending = false;
}

KorOdbcMan::eStatus KorOdbcMan::getStatus(eTableType type, eCopyDepth depth)
{
    if (!isDepth(depth)) {
        KorAssert::korAssert("copyDepth<4", "KorOdbcMan", __LINE__);
        return eNotModified;
    }
    return status(getIndex(), type, depth);
}

void KorOdbcMan::setStatus(eTableType type, eStatus newStatus, eCopyDepth depth)
{
    if (KorTransferState::isTableBackupProcessCanceled() != 0)
        return;
    const int slot = getIndex();
    if (!isDepth(depth)) {
        if (newStatus == eModified)
            backupTable(type, depth);
        return;
    }
    // a modified table stays modified until it is closed
    if (status(slot, type, depth) == eModified)
        return;
    KorDatabaseBatch batch;
    if (newStatus == eModified)
        backupTable(type, depth);
    change(status, slot, type, depth, newStatus);
    batch.end(1);
}

int KorOdbcMan::backupTable(eTableType type, eCopyDepth depth)
{
    const int slot = getIndex();
    if (const int found = copyOf(type, depth, "copyDepth<4", 0); found != 1)
        return found;
    const ManagerDatabase database;
    const TableNames names(type);
    if (backup(slot, type, depth) && names.isClaimed())
        return 1;
    KorDatabaseBatch batch;
    int copied = 0;
    if (claimForEdit(names))
        copied = KorDatabaseAccess::copyTable(m_currentDSN, names.table, names.copy(depth), false);
    if (depth == kFirstCopy && !isOpen(type, depth))
        openings[{slot, type}] = ++lastOpening;
    // the copy counts as taken also when copying failed: OK then drops what is there, Cancel restores what it
    // finds
    change(backup, slot, type, depth, true);
    return batch.end(copied);
}

int KorOdbcMan::restoreCopyOfTable(eTableType type, eCopyDepth depth)
{
    const int slot = getIndex();
    if (!m_bInitializeTables && isDepth(depth) && isTableType(type) && !backup(slot, type, depth))
        return 1;
    if (const int found = copyOf(type, depth, "copyDepth >=0 && copyDepth < kCopies", -1); found != 1)
        return found;
    const ManagerDatabase database;
    const TableNames names(type);
    KorDatabaseBatch batch;
    // without the claim what is there is another program's; at start-up it may be nobody's
    const bool held = names.isClaimed();
    if (!held && (!m_bInitializeTables || !names.hasCopy(depth) ||
                  KorDatabaseAccess::claimTable(m_currentDSN, names.table) != 1))
        return batch.end(-1);
    const int result = restore(names, depth);
    if (result == 1)
        change(backup, slot, type, depth, false);
    if (result == 1 || !held)
        releaseIfClosed(slot, type, names);
    return batch.end(result);
}

int KorOdbcMan::dropCopyOfTable(eTableType type, eCopyDepth depth)
{
    const int slot = getIndex();
    if (isDepth(depth) && isTableType(type) && !backup(slot, type, depth))
        return 1;
    if (const int found = copyOf(type, depth, "copyDepth<kCopies", 0); found != 1)
        return found;
    const ManagerDatabase database;
    const TableNames names(type);
    const KorString copy = names.copy(depth);
    KorDatabaseBatch batch;
    int result = 0;
    if (names.isClaimed()) { // otherwise what is there is another program's
        result = KorDatabaseAccess::doSQLStatement(m_currentDSN, KorString::format(L"DROP TABLE [%s]", copy));
        KorDatabaseAccess::resetCachedTable(m_currentDSN, copy);
    }
    // a copy that stays is still in use: without its mark it would come back over confirmed work
    if (result == 1 || !names.isClaimed() || !names.hasCopy(depth)) {
        change(backup, slot, type, depth, false);
        releaseIfClosed(slot, type, names);
    }
    return batch.end(result);
}

int KorOdbcMan::putCopyAside(eTableType type, eCopyDepth depth, KorString& aside)
{
    if (!isTableType(type) || !isDepth(depth))
        return 0;
    const ManagerDatabase database;
    const TableNames names(type);
    KorDatabaseBatch batch;
    if (names.isClaimed() || KorDatabaseBatch::lock(m_currentDSN) != 1 || !names.hasCopy(depth) ||
        KorDatabaseAccess::claimTable(m_currentDSN, names.table) != 1)
        return batch.undo(0);
    const int result = putAside(names, depth, aside);
    KorDatabaseAccess::releaseTable(m_currentDSN, names.table);
    return result == 1 ? batch.end(1) : batch.undo(0);
}

bool KorOdbcMan::canCancel(eTableType type, eCopyDepth depth)
{
    const ManagerDatabase database;
    if (!isOpen(type, depth))
        return false;
    const TableNames names(type);
    return names.isClaimed() && names.hasCopy(depth);
}

bool KorOdbcMan::isOpen(eTableType type, eCopyDepth depth)
{
    const int slot = getIndex();
    return isTableType(type) && isDepth(depth) && slot >= 0 && slot < m_Status.length() &&
           (status(slot, type, depth) == eModified || backup(slot, type, depth));
}

bool KorOdbcMan::isOpenAnywhere(eTableType type, eCopyDepth depth)
{
    for (int slot = 0; isTableType(type) && isDepth(depth) && slot < m_Status.length(); ++slot)
        if (status(slot, type, depth) == eModified || backup(slot, type, depth))
            return true;
    return false;
}

int KorOdbcMan::openingOf(eTableType type) { return isOpen(type, kFirstCopy) ? openings[{getIndex(), type}] : 0; }

int KorOdbcMan::setStatusOnOK(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(
        type, depth, false, [=](int slot) { return openAt(slot, type, depth); },
        [=] { return dropCopyOfTable(type, depth); });
}

int KorOdbcMan::setStatusOnCancel(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(
        type, depth, true, [=](int slot) { return openAt(slot, type, depth); },
        [=] { return restoreCopyOfTable(type, depth); });
}

int KorOdbcMan::setStatusOnUpdate(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(
        type, depth, false, [=](int slot) { return isDepth(depth) && status(slot, type, depth) == eModified; },
        [=] {
            KorDatabaseBatch batch;
            const int dropped = dropCopyOfTable(type, depth);
            const int copied = backupTable(type, depth);
            if (copied != 1)
                return batch.undo(copied); // the copy that there was stays
            return batch.end(dropped);
        });
}

int KorOdbcMan::initializeTables()
{
    InitializeStatics::build();
    if (m_BackupAvailable.length() == 0)
        return 0;
    KorDatabaseBatch batch;
    const bool first = m_bInitializeTables;
    bool written = true;
    if (first) {
        forEachDatabase([&](int slot) {
            for (int type = 0; type < kTableTypes; ++type)
                for (int depth = 0; depth < kCopies; ++depth)
                    status(slot, type, depth) = eNotModified;
            written = bringBackCopies(true) != -1 && written;
        });
        m_bInitializeTables = false;
    }
    for (FlagRows* rows : backupOfDepth)
        for (int slot = 0; slot < rows->length(); ++slot)
            for (int type = 0; type < kTableTypes; ++type)
                rows->getAt(slot).getAt(type) = false;
    const int result = batch.end(1) == 1 && written ? 1 : 0;
    if (first && result != 1)
        m_bInitializeTables = true; // the copies are still there: the next call tries again
    return result;
}

int KorOdbcMan::bringBackLeftCopies() { return bringBackCopies(false) == 1 ? 1 : 0; }

void KorOdbcMan::restoreDetailTablesCopies()
{
    restoreDetailTablesCopiesFor(KorDSNDefinitions::kDetails);
    restoreDetailTablesCopiesFor(KorDSNDefinitions::kAddin);
    restoreDetailTablesCopiesFor(KorDSNDefinitions::kConfiguration);
}

void KorOdbcMan::restoreDetailTablesCopiesFor(eDSN dsn)
{
    int slot = -1;
    if (dsn == KorDSNDefinitions::kDetails)
        slot = 0;
    else if (dsn == KorDSNDefinitions::kAddin)
        slot = 1;
    else if (dsn == KorDSNDefinitions::kConfiguration)
        slot = 2;
    else if (dsn == KorDSNDefinitions::kCountryAddin)
        slot = 3 + KorDSNManager::getAddInIdx(m_currentAddIn);
    const ManagerDatabase database(dsn, static_cast<eIndex>(slot));
    KorDatabaseBatch batch;
    // the fourth copy is left alone
    for (int type = 0; type < kTableTypes; ++type)
        for (int depth = kThirdCopy; depth >= kFirstCopy; --depth)
            restoreCopyOfTable(static_cast<eTableType>(type), static_cast<eCopyDepth>(depth));
    batch.end(1);
}
