#include "CompactTables.h"
#include "records/detail/DetailObjectRecords.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/KorDSNManager.h"

#include <algorithm>
#include <map>

using namespace korodbc;

namespace {

/// Keys of the items by the qualifier set that they belong to.
std::map<int, std::vector<int>> itemsOfSets()
{
    KorArray<StructDetObjQualifierSetItem> items;
    StructDetObjQualifierSetItemMarshal::getTable(items);
    std::map<int, std::vector<int>> keys;
    for (const StructDetObjQualifierSetItem& item : items)
        keys[item.qualifierSet].push_back(item.key);
    return keys;
}

} // namespace

void KorOdbcCompactDetailsTables::rearrangeQualifierSets()
{
    const CompactTables& run = CompactTables::ofLastRun();
    const KorDSNRequest request(run.database, run.index());
    KorDatabaseBatch batch;
    KorArray<StructDetObjQualifierSet> sets;
    StructDetObjQualifierSetMarshal::getTable(sets);
    std::stable_sort(sets.begin(), sets.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
    const KorString itemTable(L"DetObjQualifierSetItem");
    const int ownerColumn = descriptionOf<StructDetObjQualifierSetItem>().itemOwner;
    std::map<int, std::vector<int>> items = itemsOfSets();
    int number = 0;
    for (const StructDetObjQualifierSet& set : sets) {
        if (set.key == ++number)
            continue;
        for (const wchar_t* statement :
             {L"UPDATE DetObjReprMapItems SET ObjQualifier=%d WHERE ObjQualifier=%d",
              L"UPDATE DetViewDimPointSelection SET Objects=%d WHERE Objects=%d",
              L"UPDATE DetailStyleMapItems SET ObjQualifierSet=%d WHERE ObjQualifierSet=%d",
              L"UPDATE DetObjQualifierSet SET [Key]=%d WHERE [Key]=%d"})
            run.execute(statement, {number, set.key});
        // the items go with their set; what an earlier set of that number left behind must not join them
        for (const int left : items[number])
            KorDatabaseAccess::deleteLine(itemTable, KorCellData(left));
        for (const int item : items[number] = items[set.key])
            KorDatabaseAccess::setTableColumnValue(run.database, itemTable, L"Key", KorString::format(L"%d", item),
                                                   ownerColumn, KorCellData(number));
        items.erase(set.key);
    }
    batch.end(1);
}
