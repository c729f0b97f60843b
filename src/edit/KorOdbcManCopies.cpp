#include "DetailTables.h"
#include "foundation/ManagerDatabase.h"
#include "TableCopies.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorTransferState.h>
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

constexpr std::pair<eDSN, eIndex> fixedDatabases[] = {
    {KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase},
    {KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin},
    {KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase},
};

/// Calls `act` with each detail database current: base details, add-in, main configuration, country add-ins.
template <class Act>
void forEachDatabase(Act act)
{
    int slot = 0;
    for (const auto& [dsn, index] : fixedDatabases) {
        const ManagerDatabase visit(dsn, index);
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

bool modifiedAt(int slot, int type, int depth) { return status(slot, type, depth) == Man::eModified; }

/// True when `is` says so of any depth.
template <class Is>
bool atAnyDepth(int slot, int type, Is is)
{
    for (int depth = 0; depth < Man::kCopies; ++depth)
        if (is(slot, type, depth))
            return true;
    return false;
}

/// Gives the claim back when no copy of the table is in use any more.
void releaseIfClosed(int slot, int type, const TableCopies& table)
{
    if (!atAnyDepth(slot, type, backup))
        table.release();
}

/// Closes copies that are this program's although their flags were cleared while they were in use: left, they
/// would come back over later work.
void closeForgotten(int slot, int type, bool bringsBack)
{
    const TableCopies table(type);
    if (!table.isClaimed() || atAnyDepth(slot, type, modifiedAt) || atAnyDepth(slot, type, backup))
        return;
    for (int depth = Man::kFourthCopy; depth >= Man::kFirstCopy; --depth)
        if (table.has(depth)) {
            if (bringsBack)
                table.restore(depth);
            else
                table.drop(depth);
        }
    table.release();
}

bool openAt(int slot, int type, int depth)
{
    return atAnyDepth(slot, type, modifiedAt) || (isDepth(depth) && backup(slot, type, depth));
}

/// Closes a table at a depth in every database where `concerns` says so. `finish` does what the transition is
/// about.
template <class Concerns, class Finish>
int closeEverywhere(Man::eTableType type, Man::eCopyDepth depth, bool bringsBack, Concerns concerns, Finish finish)
{
    if (!isTableType(type))
        return -2;
    KorDatabaseBatch batch;
    int result = 1;
    forEachDatabase([&](int slot) {
        if (!concerns(slot, type, depth))
            return;
        const int done = finish(type, depth);
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
        const TableCopies table(type);
        if ((ownToo || !table.isClaimed()) && table.hasAny() && table.claim() == 1)
            left.push_back(type);
    }
    if (left.empty())
        return batch.end(1);
    // what is there is looked at again under the lock: another program may have brought it back just now
    if (KorDatabaseBatch::lock(Man::m_currentDSN) != 1)
        return batch.undo(-1);
    bool all = true;
    for (const int type : left) {
        const TableCopies table(type);
        all = table.bringBack() && all;
        Man::resetTable(static_cast<Man::eTableType>(type));
        table.release();
    }
    return batch.end(all ? 1 : 0);
}

bool isOpenIn(int slot, int type, int depth)
{
    return isTableType(type) && isDepth(depth) && slot >= 0 && slot < Man::m_Status.length() &&
           (modifiedAt(slot, type, depth) || backup(slot, type, depth));
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
    const TableCopies table(type);
    if (backup(slot, type, depth) && table.isClaimed())
        return 1;
    KorDatabaseBatch batch;
    int copied = 0;
    if (table.claimForEdit())
        copied = table.take(depth);
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
    const TableCopies table(type);
    KorDatabaseBatch batch;
    // without the claim what is there is another program's; at start-up it may be nobody's
    const bool held = table.isClaimed();
    if (!held && (!m_bInitializeTables || !table.has(depth) || table.claim() != 1))
        return batch.end(-1);
    const int result = table.restore(depth);
    if (result == 1)
        change(backup, slot, type, depth, false);
    if (result == 1 || !held)
        releaseIfClosed(slot, type, table);
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
    const TableCopies table(type);
    KorDatabaseBatch batch;
    int result = 0;
    if (table.isClaimed()) // otherwise what is there is another program's
        result = table.drop(depth);
    // a copy that stays is still in use: without its mark it would come back over confirmed work
    if (result == 1 || !table.isClaimed() || !table.has(depth)) {
        change(backup, slot, type, depth, false);
        releaseIfClosed(slot, type, table);
    }
    return batch.end(result);
}

int KorOdbcMan::putCopyAside(eTableType type, eCopyDepth depth, KorString& aside)
{
    if (!isTableType(type) || !isDepth(depth))
        return 0;
    const ManagerDatabase database;
    const TableCopies table(type);
    KorDatabaseBatch batch;
    if (table.isClaimed() || KorDatabaseBatch::lock(m_currentDSN) != 1 || !table.has(depth) || table.claim() != 1)
        return batch.undo(0);
    const int result = table.putAside(depth, aside);
    table.release();
    return result == 1 ? batch.end(1) : batch.undo(0);
}

bool KorOdbcMan::canCancel(eTableType type, eCopyDepth depth)
{
    const ManagerDatabase database;
    if (!isOpen(type, depth))
        return false;
    const TableCopies table(type);
    return table.isClaimed() && table.has(depth);
}

bool KorOdbcMan::isOpen(eTableType type, eCopyDepth depth) { return isOpenIn(getIndex(), type, depth); }

bool KorOdbcMan::isOpenAnywhere(eTableType type, eCopyDepth depth)
{
    for (int slot = 0; slot < m_Status.length(); ++slot)
        if (isOpenIn(slot, type, depth))
            return true;
    return false;
}

int KorOdbcMan::openingOf(eTableType type) { return isOpen(type, kFirstCopy) ? openings[{getIndex(), type}] : 0; }

int KorOdbcMan::setStatusOnOK(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(type, depth, false, openAt, dropCopyOfTable);
}

int KorOdbcMan::setStatusOnCancel(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(type, depth, true, openAt, restoreCopyOfTable);
}

int KorOdbcMan::setStatusOnUpdate(eTableType type, eCopyDepth depth)
{
    const auto modified = [](int slot, int of, int at) { return isDepth(at) && modifiedAt(slot, of, at); };
    return closeEverywhere(type, depth, false, modified, [](eTableType of, eCopyDepth at) {
        KorDatabaseBatch batch;
        const int dropped = dropCopyOfTable(of, at);
        const int copied = backupTable(of, at);
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
    for (const auto& fixed : fixedDatabases)
        restoreDetailTablesCopiesFor(fixed.first);
}

void KorOdbcMan::restoreDetailTablesCopiesFor(eDSN dsn)
{
    // the number of the fixed database, whatever its index
    int slot = dsn == KorDSNDefinitions::kCountryAddin ? 3 + KorDSNManager::getAddInIdx(m_currentAddIn) : -1;
    for (const auto& fixed : fixedDatabases)
        if (fixed.first == dsn)
            slot = static_cast<int>(&fixed - fixedDatabases);
    const ManagerDatabase database(dsn, static_cast<eIndex>(slot));
    KorDatabaseBatch batch;
    // the fourth copy is left alone
    for (int type = 0; type < kTableTypes; ++type)
        for (int depth = kThirdCopy; depth >= kFirstCopy; --depth)
            restoreCopyOfTable(static_cast<eTableType>(type), static_cast<eCopyDepth>(depth));
    batch.end(1);
}
