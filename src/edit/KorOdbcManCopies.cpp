#include "addins/AddInManagerInterface.h"
#include "DetailTables.h"
#include "edit/KorOdbcMan.h"
#include "maintenance/KorOdbcGUI.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/KorDSNManager.h"
#include "repository/KRRepositoryProxyMan.h"
#include "roots/KorAssert.h"
#include "transfer/KorODBCDetailStyleExports.h"

using namespace korodbc;

KorOdbcMan::StatusRows KorOdbcMan::m_Status, KorOdbcMan::m_SecondStatus, KorOdbcMan::m_ThirdStatus,
    KorOdbcMan::m_FourthStatus;
KorOdbcMan::FlagRows KorOdbcMan::m_BackupAvailable, KorOdbcMan::m_SecondBackupAvailable,
    KorOdbcMan::m_ThirdBackupAvailable, KorOdbcMan::m_FourthBackupAvailable, KorOdbcMan::m_TemporaryBackupedTables;
KorCountryAddInReactor KorOdbcMan::m_countryAddInReactor;

namespace {

using Man = KorOdbcMan;

KorOdbcMan::InitializeStatics atLoad;
int registrations = 0;

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

/// Makes a database the manager's and the service's current one, until the visit ends.
class DatabaseVisit {
public:
    DatabaseVisit(eDSN dsn, eIndex index)
        : m_dsn(Man::m_currentDSN), m_addIn(Man::m_currentAddIn), m_request(dsn, index)
    {
        Man::m_currentDSN = dsn;
        Man::m_currentAddIn = index;
    }
    ~DatabaseVisit()
    {
        Man::m_currentDSN = m_dsn;
        Man::m_currentAddIn = m_addIn;
    }
    DatabaseVisit(const DatabaseVisit&) = delete;
    DatabaseVisit& operator=(const DatabaseVisit&) = delete;

private:
    eDSN m_dsn;
    eIndex m_addIn;
    KorDSNRequest m_request;
};

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
        const DatabaseVisit visit(database.dsn, database.index);
        act(slot++);
    }
    const KorArray<KorAddInId> ids = installedCountryAddIns();
    for (int position = 0; position < ids.length(); ++position) {
        if (AddInManagerInterface::getInstance()->getAddIn(ids.data()[position]) == nullptr)
            KorAssert::korAssert("pAddIn != NULL", "KorOdbcMan", __LINE__);
        const DatabaseVisit visit(KorDSNDefinitions::kCountryAddin, KorDSNManager::getAddInIdx(position));
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

/// Closes a table at a depth in every database where `concerns` says so. `finish` does what the transition is
/// about.
template <class Concerns, class Finish>
int closeEverywhere(Man::eTableType type, int depth, Concerns concerns, Finish finish)
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
        Man::resetTable(type);
    });
    return batch.end(result);
}

bool openAt(int slot, int type, int depth)
{
    return modifiedAtAnyDepth(slot, type) || (isDepth(depth) && backup(slot, type, depth));
}

KorString copyName(const KorString& table, int depth)
{
    return isDepth(depth) ? table + KorString(Man::ccKorVELCopyString[depth]) : table;
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
    if (KorODBCDetailStyleExports::isTableBackupProcessCanceled() != 0)
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
    if (isDepth(depth) && isTableType(type) && backup(slot, type, depth))
        return 1;
    KorString name;
    if (getTableName(type, name) != 1)
        return -2;
    if (!isDepth(depth)) {
        KorAssert::korAssert("copyDepth<4", "KorOdbcMan", __LINE__);
        return 0;
    }
    KorDatabaseBatch batch;
    const int copied = KorDatabaseAccess::copyTable(m_currentDSN, KorDatabaseAccess::getTableName(name),
                                                    KorDatabaseAccess::getTableName(copyName(name, depth)), false);
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
    KorString name;
    if (getTableName(type, name) != 1)
        return -2;
    if (!isDepth(depth)) {
        KorAssert::korAssert("copyDepth >=0 && copyDepth < kCopies", "KorOdbcMan", __LINE__);
        return -1;
    }
    KorDatabaseBatch batch;
    int result = -1;
    try {
        const KorString copy = copyName(name, depth);
        if (KorOdbcGUI::restoreTableStructure(name, copy, m_currentDSN) == 1) {
            result = KorOdbcGUI::restoreTable(name, copy, m_currentDSN);
            if (result == 1)
                change(backup, slot, type, depth, false);
        }
    } catch (...) {
        result = -1;
    }
    return batch.end(result);
}

int KorOdbcMan::dropCopyOfTable(eTableType type, eCopyDepth depth)
{
    const int slot = getIndex();
    if (isDepth(depth) && isTableType(type) && !backup(slot, type, depth))
        return 1;
    KorString name;
    if (getTableName(type, name) != 1)
        return -2;
    if (!isDepth(depth)) {
        KorAssert::korAssert("copyDepth<kCopies", "KorOdbcMan", __LINE__);
        return 0;
    }
    KorDatabaseBatch batch;
    const KorString copy = KorDatabaseAccess::getTableName(copyName(name, depth));
    const int result =
        KorDatabaseAccess::doSQLStatement(m_currentDSN, KorString::format(L"DROP TABLE [%s]", copy));
    KorDatabaseAccess::resetCachedTable(m_currentDSN, copy);
    change(backup, slot, type, depth, false);
    return batch.end(result);
}

int KorOdbcMan::setStatusOnOK(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(
        type, depth, [=](int slot) { return openAt(slot, type, depth); },
        [=] { return dropCopyOfTable(type, depth); });
}

int KorOdbcMan::setStatusOnCancel(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(
        type, depth, [=](int slot) { return openAt(slot, type, depth); },
        [=] { return restoreCopyOfTable(type, depth); });
}

int KorOdbcMan::setStatusOnUpdate(eTableType type, eCopyDepth depth)
{
    return closeEverywhere(
        type, depth, [=](int slot) { return isDepth(depth) && status(slot, type, depth) == eModified; },
        [=] {
            const int dropped = dropCopyOfTable(type, depth);
            const int copied = backupTable(type, depth);
            return dropped == 1 ? copied : dropped;
        });
}

int KorOdbcMan::initializeTables()
{
    KorDatabaseBatch batch;
    const bool first = m_bInitializeTables;
    if (first) {
        forEachDatabase([](int slot) {
            for (int type = 0; type < kTableTypes; ++type) {
                for (int depth = 0; depth < kCopies; ++depth)
                    status(slot, type, depth) = eNotModified;
                for (int depth = kFourthCopy; depth >= kFirstCopy; --depth)
                    restoreCopyOfTable(static_cast<eTableType>(type), static_cast<eCopyDepth>(depth));
            }
        });
        m_bInitializeTables = false;
    }
    for (FlagRows* rows : backupOfDepth)
        for (int slot = 0; slot < rows->length(); ++slot)
            for (int type = 0; type < kTableTypes; ++type)
                rows->getAt(slot).getAt(type) = false;
    const int result = batch.end(1);
    if (first && result != 1)
        m_bInitializeTables = true; // the copies are still there: the next call tries again
    return result;
}

void KorOdbcMan::restoreDetailTablesCopies()
{
    const eDSN dsn = m_currentDSN;
    const eIndex addIn = m_currentAddIn;
    restoreDetailTablesCopiesFor(KorDSNDefinitions::kDetails);
    restoreDetailTablesCopiesFor(KorDSNDefinitions::kAddin);
    restoreDetailTablesCopiesFor(KorDSNDefinitions::kConfiguration);
    m_currentDSN = dsn;
    m_currentAddIn = addIn;
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
    m_currentDSN = dsn;
    m_currentAddIn = static_cast<eIndex>(slot);
    const KorDSNRequest request(dsn, m_currentAddIn);
    KorDatabaseBatch batch;
    // the fourth copy is left alone
    for (int type = 0; type < kTableTypes; ++type)
        for (int depth = kThirdCopy; depth >= kFirstCopy; --depth)
            restoreCopyOfTable(static_cast<eTableType>(type), static_cast<eCopyDepth>(depth));
    batch.end(1);
}

void KorOdbcMan::registerCountryAddinReactor()
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    if (registrations != 0 || manager == nullptr)
        return;
    manager->registerReactor(m_countryAddInReactor, 1);
    ++registrations;
}

void KorOdbcMan::unregisterCountryAddinReactor()
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    if (registrations != 1 || manager == nullptr)
        return;
    manager->unregisterReactor(m_countryAddInReactor);
    --registrations;
}

void KorCountryAddInReactor::onCountryAddInLoaded(KorAddIn& addIn)
{
    if (!addIn.isCountryAddIn())
        return;
    if (registrations == 0)
        KorAssert::korAssert("FALSE", "KorOdbcMan", __LINE__);
    KorOdbcMan::reloadInfoForAllManagers(1);
    KorOdbcGUI::resetAddIns();
    addIn.completeLoading();
    KorOdbcMan::m_currentDSN = KorDSNDefinitions::kCountryAddin;
    KorOdbcMan::m_currentAddIn = KorDSNManager::getAddInIdx(0);
    {
        const KorDSNRequest request(KorOdbcMan::m_currentDSN, KorOdbcMan::m_currentAddIn);
        KorDatabaseBatch batch;
        for (int type = 0; type < KorOdbcMan::kTableTypes; ++type) {
            const KorString name(detailTable(type).name);
            for (int depth = KorOdbcMan::kFourthCopy; depth >= KorOdbcMan::kFirstCopy; --depth) {
                const KorString copy = copyName(name, depth);
                if (KorOdbcGUI::restoreTableStructure(name, copy, KorDSNDefinitions::kCountryAddin) == 1)
                    KorOdbcGUI::restoreTable(name, copy, KorDSNDefinitions::kCountryAddin);
            }
        }
        batch.end(1);
    }
    KorOdbcGUI::resetAddIns();
}

void KorCountryAddInReactor::onCountryAddInUnloaded(KorAddIn& addIn)
{
    if (!addIn.isCountryAddIn())
        return;
    KorOdbcMan::reloadInfoForAllManagers(1);
    KorOdbcGUI::resetAddIns();
    KorOdbcMan::m_currentDSN = KorDSNDefinitions::kDetails;
    KorOdbcMan::m_currentAddIn = KorDSNDefinitions::kBase;
}
