#include "foundation/ManagerDatabase.h"

#include <korodbc/catalogues/DetailGroups.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>

namespace {

template <class Group>
KorString tableOf()
{
    return KorDatabaseAccess::getTableName(KorString::fromUtf8(descriptionOf<Group>().table));
}

template <class Group>
bool hasRow(const Group& group)
{
    KorCellData cell;
    return KorDatabaseAccess::getTableColumnValue(KorCurrentDatabase::getCurrentDSN(), tableOf<Group>(), L"Key",
                                                  KorCellData(group.getKey()), 0, cell) == 1;
}

template <class Group>
bool hasRunName(const Group& group)
{
    KorString runName;
    return RecordMarshal<Group>::getRunNameByKey(static_cast<long>(group.getKey()), runName) == 1;
}

/// Saves a group in the manager's database. With a class name, each failed write raises that class's assertion.
template <class Group>
int save(Group& group, int isNew, bool (*exists)(const Group&), const char* asserting = nullptr)
{
    const eDSN dsn = KorCurrentDatabase::getCurrentDSN();
    const korodbc::ManagerDatabase database;
    RecordMarshal<Group>::resetTableCache(0);
    const KorString table = tableOf<Group>();
    const int key = group.getKey();
    KorDatabaseBatch batch;
    if (KorDatabaseBatch::lock(dsn) != 1 || KorDatabaseAccess::checkTable(dsn, descriptionOf<Group>(), true) != 1)
        return batch.end(0);
    if (isNew != 0 || !exists(group)) {
        KorCellData newKey;
        if (const int nOk = KorDatabaseAccess::appendNewLine(dsn, table, newKey, true, false); nOk != 1)
            return batch.end(nOk);
        group.setKey(newKey.getInt());
    }
    const KorString row = KorString::format(L"%d", group.getKey());
    const KorCellData values[] = {group.getRunBezeichnung(), group.getBitmapId()};
    int column = 0, nOk = 0;
    bool all = true;
    for (const KorCellData& value : values) {
        nOk = KorDatabaseAccess::setTableColumnValue(dsn, table, L"Key", row, ++column, value);
        all = all && nOk == 1;
        if (1 != nOk && asserting != nullptr)
            KorAssert::korAssert("1 == nOk", asserting, __LINE__);
    }
    RecordMarshal<Group>::resetTableCache(0);
    const int result = all ? batch.end(nOk) : batch.undo(0);
    if (result != 1)
        group.setKey(key);
    return result;
}

} // namespace

int KorODBCDetObjAnnotationGroup::saveDetObjAnnotationGroup(StructDetObjAnnotationGroup& group, int isNew)
{
    return save(group, isNew, hasRow, "KorODBCDetObjAnnotationGroup");
}

int KorODBCDetObjQualifierSetGroup::saveDetObjQualifierSetGroup(StructDetObjQualifierSetGroup& group, int isNew)
{
    return save(group, isNew, hasRow, "KorODBCDetObjQualifierSetGroup");
}

int KorODBCDetViewDimRequestLinearGroup::saveDetViewDimRequestLinearGroup(
    StructDetViewDimRequestLinearGroup& group, int isNew)
{
    return save(group, isNew, hasRunName);
}
