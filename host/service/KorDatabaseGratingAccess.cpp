#include "service/NamedTables.h"

#include <korodbc/repository/KorDatabaseGratingAccess.h>

using namespace korodbc::host;

namespace {

template <class T>
int wholeTable(const KorString& table, KorArray<T>& items)
{
    RecordCache* records = recordsOfTable(descriptionOf<T>(), table);
    if (records == nullptr)
        return 0;
    items = *static_cast<const KorArray<T>*>(records->list());
    return 1;
}

template <class T>
int subTable(const KorString& query, KorArray<T>& rows)
{
    KorArray<T> read;
    if (readQuery(descriptionOf<T>(), query, &read) != 1)
        return 0;
    rows = read;
    return 1;
}

} // namespace

int KorDatabaseGratingAccess::getGratingStandardItemsTable(const KorString& table,
                                                           KorArray<StructGratingStandardItem>& items)
{
    return wholeTable(table, items);
}

int KorDatabaseGratingAccess::getGratingVariableItemsTable(const KorString& table,
                                                           KorArray<StructGratingVariableItem>& items)
{
    return wholeTable(table, items);
}

int KorDatabaseGratingAccess::getGratingItemsNameListByKeys(const KorString& table, const KorArray<long>& keys,
                                                            KorArray<KorString>& names)
{
    return namesOfKeys(recordsOfTable(descriptionOf<StructGratingStandardItem>(), table), keys, names);
}

int KorDatabaseGratingAccess::getBearingBarSpacingSubTable(const KorString& query,
                                                           KorArray<StructBearingBarSpacing>& rows)
{
    return subTable(query, rows);
}

int KorDatabaseGratingAccess::getCrossBarSpacingSubTable(const KorString& query,
                                                         KorArray<StructCrossBarSpacing>& rows)
{
    return subTable(query, rows);
}

int KorDatabaseGratingAccess::getBearingBarThicknessSubTable(const KorString& query,
                                                             KorArray<StructBearingBarThickness>& rows)
{
    return subTable(query, rows);
}

int KorDatabaseGratingAccess::getBearingBarWidthSubTable(const KorString& query,
                                                         KorArray<StructBearingBarWidth>& rows)
{
    return subTable(query, rows);
}

int KorDatabaseGratingAccess::getCrossBarSubTable(const KorString& query, KorArray<StructCrossBar>& rows)
{
    return subTable(query, rows);
}
