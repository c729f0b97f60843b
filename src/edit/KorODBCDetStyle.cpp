#include "foundation/ManagerDatabase.h"

#include <korodbc/edit/KorODBCDetStyle.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>

#include <string_view>

namespace {

using Man = KorOdbcMan;

enum PartMode { kNoParts = 0, kSingleParts = 1, kMainParts = 2, kMainPartsWithConnectedParts = 3 };

PartMode partMode(std::wstring_view text)
{
    if (text.starts_with(L"MAINPARTSWITHCONNPARTS"))
        return kMainPartsWithConnectedParts;
    if (text.starts_with(L"MAINPARTS"))
        return kMainParts;
    return text.starts_with(L"SINGLEPARTS") ? kSingleParts : kNoParts;
}

int selectMode(std::wstring_view text)
{
    // behind each of these words any one character stands for the separator
    constexpr std::wstring_view all = L"ALL", selectionSet = L"SELECTIONSET";
    const auto partsBehind = [&](std::wstring_view word) {
        return text.size() > word.size() ? partMode(text.substr(word.size() + 1)) : kNoParts;
    };
    if (text == all)
        return 1;
    if (text.starts_with(selectionSet)) {
        const PartMode parts = partsBehind(selectionSet);
        return parts == kNoParts ? 8 : 4 + parts;
    }
    const PartMode parts = text.starts_with(all) ? partsBehind(all) : partMode(text);
    return parts == kNoParts ? 0 : 1 + parts;
}

/// Appends the row of a new category entry and gives the entry its key; false when a write failed.
bool appendCategory(const KorString& table, const StructDetViewRequest& request,
                    StructDetViewRequestCategory& entry)
{
    KorCellData key;
    int nRet = KorDatabaseAccess::appendNewLine(Man::getCurrentDSN(), table, key, true, false);
    if (!(0 < nRet)) {
        KorAssert::korAssert("0 < nRet", "KorODBCDetStyle", __LINE__);
        return false;
    }
    entry.key = key.getInt();
    const KorString row = KorString::format(L"%d", entry.key);
    const int values[] = {entry.baseCategory, request.key};
    bool all = true;
    for (int column = 1; column <= 2; ++column) {
        nRet = KorDatabaseAccess::setTableColumnValue(Man::getCurrentDSN(), table, L"Key", row, column,
                                                      KorCellData(values[column - 1]));
        if (!(0 < nRet)) {
            KorAssert::korAssert("0 < nRet", "KorODBCDetStyle", __LINE__);
            all = false;
        }
    }
    return all;
}

} // namespace

long KorODBCDetStyle::getSystemAndBoxColumnType(int column)
{
    const DetailReading database;
    KorArray<KorColumn> columns;
    if (KorDatabaseAccess::getTableStructure(KorDSNManager::getInstance().getCurrentDSN(),
                                             KorDatabaseAccess::getTableName(L"DetViewSystemAndBox"),
                                             columns) != 1 ||
        column < 0 || column >= columns.length())
        return KorItemType::kInt;
    return columns[column].getType();
}

int KorODBCDetStyle::getDetBaseCategoryByDetViewRequestKey(long requestKey, KorString& name)
{
    const DetailReading database;
    KorArray<StructDetViewRequestCategory> entries;
    StructDetBaseCategory category;
    if (StructDetViewRequestCategoryMarshal::getByDetViewRequest(requestKey, entries) != 1 ||
        byKey(KorOdbcKey(entries[0].baseCategory), category) != 1)
        return 0;
    name = category.runName;
    return 1;
}

int KorODBCDetStyle::setDetViewRequestCategories(StructDetViewRequest& request)
{
    const korodbc::ManagerDatabase database;
    StructDetViewRequestMarshal::resetTableCache(0);
    StructDetViewRequestCategoryMarshal::resetTableCache(0);
    const auto isWritable = [](const RecordDescription& type) {
        return KorDatabaseAccess::checkTable(Man::getCurrentDSN(), type, true) == 1;
    };
    KorDatabaseBatch batch;
    StructDetViewRequest stored;
    if (KorDatabaseBatch::lock(Man::getCurrentDSN()) != 1 || !isWritable(descriptionOf<StructDetViewRequest>()) ||
        !isWritable(descriptionOf<StructDetViewRequestCategory>()) || byKey(KorOdbcKey(request.key), stored) != 1)
        return batch.end(0);
    const KorArray<StructDetViewRequestCategory> before = request.categories;
    Man::setStatus(Man::kDetViewRequest, Man::eModified, Man::kFirstCopy);
    Man::setStatus(Man::kDetViewRequestCategories, Man::eModified, Man::kFirstCopy);
    const KorString table = KorDatabaseAccess::getTableName(L"DetViewRequestCategories");
    bool all = true;
    for (long i = request.categories.length() - 1; i >= 0; --i) {
        StructDetViewRequestCategory& entry = request.categories[i];
        StructDetBaseCategory category;
        if (entry.deleted != 0) {
            if (entry.key < 0)
                continue;
            KorDatabaseAccess::deleteLine(table, KorCellData(entry.key));
            StructDetViewRequestCategory stays; // one that was gone before is gone, too
            all = byKey(KorOdbcKey(entry.key), stays) != 1 && all;
            request.categories.deleteAt(i);
        } else if (entry.key < 0 && byKey(KorOdbcKey(entry.baseCategory), category) == 1)
            all = appendCategory(table, request, entry) && all;
    }
    const int result = all ? batch.end(1) : batch.undo(0);
    if (result != 1)
        request.categories = before;
    return result;
}

int KorODBCDetStyle::composeDetailStyleKey(long subCategory, long baseCategory, long& styleKey)
{
    const DetailReading database;
    StructDetailMaster master;
    const int result =
        StructDetailMasterMarshal::getByBaseCategoryAndSubCategory(baseCategory, subCategory, master);
    if (result > 0)
        styleKey = master.detailStyle;
    return result;
}

int KorODBCDetStyle::getDetailStyleMap(const KorString& name, StructDetailStyleMap& record)
{
    const DetailReading database;
    long key = 0;
    keyOf<StructDetailStyleMap>(name, key);
    StructDetailStyleMapMarshal::loadItems(key);
    return byRunName(name, record);
}

int KorODBCDetStyle::getProcessSelectMode(long definitionKey)
{
    const DetailReading database;
    StructDetailProcessDefinition definition;
    StructDetailProcessStep step;
    StructDetailProcessSelection selection;
    if (byKey(KorOdbcKey(definitionKey), definition) != 1 || definition.steps.isEmpty() ||
        byKey(KorOdbcKey(definition.steps[0]), step) != 1 || byKey(KorOdbcKey(step.selection), selection) != 1)
        return 0;
    return selectMode(selection.selection.view());
}
