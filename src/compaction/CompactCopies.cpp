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
    using Man = KorOdbcMan;
    using enum Man::eTableType;
    const auto modify = [](std::initializer_list<Man::eTableType> types) {
        for (const Man::eTableType type : types) {
            const bool opens = !Man::isOpen(type, Man::kFirstCopy);
            Man::setStatus(type, Man::eModified, Man::kFirstCopy);
            if (opens)
                CompactTables::noteOpening(Man::openingOf(type));
            // what cannot be cancelled as a whole is not begun
            KorString name;
            if (KorTransferState::isTableBackupProcessCanceled() == 0 && !Man::canCancel(type, Man::kFirstCopy) &&
                Man::getTableName(type, name) == 1)
                tables().fail(L"the copy of " + name + L" could not be taken");
        }
    };
    if (tables().ofStyles())
        modify({kDetViewSystemAndBox, kDetViewLengthClip, kDetViewDimStrategy, kDetViewDimStrategyItems,
                kDetViewArrangeStrategy, kDetArrangerControl, kDetArrangerStrategy, kDetAnnotationType,
                kDetailStyle, kDetObjAnnotationStrategy, kDetObjQualifierSet, kDetObjReprMap, kDetObjReprMapItems,
                kDetViewDimPointSelection, kDetViewRequest, kDetViewRequestCategories, kDetViewDimRequestLinear,
                kLinetypes});
    else if (tables().ofProcesses())
        modify({kDetObjQualifierSet});
    if (tables().ofProcesses())
        modify({kDetailFilenameSelector, kDetailProcessMain2CutScale, kDetailProcessScales, kDetailProcessStep,
                kDetailProcessDefinition, kDetailStyleMap, kDetailStyleMapItems});
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
