#include "catalogues/PreferredSizes.h"

#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/roots/KorAssert.h>

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

namespace korodbc {

namespace {

/// The values of a column of the add-in's table, for the rows that meet a condition; false when it cannot be read.
bool readColumn(const KorString& table, const KorString& column, const KorString& condition,
                KorArray<KorCellData>& values)
{
    const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    const KorString name = KorDatabaseAccess::getTableName(table);
    KorArray<KorColumn> columns;
    if (KorDatabaseAccess::getTableStructure(KorDSNDefinitions::kAddin, name, columns) != 1)
        return false;
    for (int i = 0; i < columns.length(); ++i)
        if (columns[i].getName().compareNoCase(column) == 0)
            return KorDatabaseAccess::getColumnValues(KorDSNDefinitions::kAddin, name, condition, {}, i, values) ==
                   1;
    return false;
}

/// True when the list is for that kind and every key is there.
bool fits(const PreferredList& list, int kind, std::span<const KorString> keys)
{
    const bool kindFits = list.kinds == 0 || (kind >= 0 && kind < 32 && (list.kinds >> kind & 1u) != 0);
    return kindFits && std::none_of(keys.begin(), keys.end(), [](const KorString& key) { return key.isEmpty(); });
}

/// Names of the rows that one data source has; 0 without any.
int namesOf(const PreferredList& list, const KorArray<int>& profiles, int kind, int table, eDSN dsn, eIndex index,
            std::span<const KorString> chosenBefore, KorArray<KorString>& names, long option)
{
    const KorString master = list.masterTable == 0 ? KorString() : chosenBefore.front();
    KorArray<KorString> keys;
    if (preferredKeys(profiles, list.category == 0 ? kind : list.category, list.type, table, list.masterTable,
                      master, keys) == 0)
        return 0;
    const KorDSNRequest request(dsn, index);
    if (list.classes == nullptr || !master.isEmpty())
        return list.name({keys, chosenBefore, option}, names);
    // a key means a row of its class only: class by class
    KorArray<KorString> classes, all, ofClass;
    list.classes(classes);
    for (const KorString& one : classes)
        if (!one.isEmpty() && namesOf(list, profiles, kind, table, dsn, index, {&one, 1}, ofClass, option) == 1)
            for (const KorString& name : ofClass)
                all.append(name);
    names = std::move(all);
    return names.isEmpty() ? 0 : 1;
}

} // namespace

int preferredKeys(const KorArray<int>& profiles, int category, int type, int table, int masterTable,
                  const KorString& masterKey, KorArray<KorString>& keys)
{
    keys.removeAll();
    if (profiles.isEmpty())
        return 0;
    KorString statement =
        KorString::format(L"SELECT [KeyValue] FROM [PreferredSizesItems] WHERE [TypeID] = %d AND "
                          L"[CategoryID] = %d AND [TableID] = %d",
                          type, category, table);
    statement += L" AND (";
    for (int i = 0; i < profiles.length(); ++i) {
        if (i > 0)
            statement += L" OR ";
        statement += KorString::format(L"[ProfileID]=%d", profiles[i]);
    }
    statement += L")";
    if (!masterKey.isEmpty() && masterTable != 0) {
        statement += L" AND ";
        statement +=
            KorString::format(L"[MasterTableID]=%d AND [MasterKeyValue]='%s'", masterTable, quoted(masterKey));
    }
    const std::wstring_view where = L"WHERE ";
    const KorString condition = statement.mid(statement.find(where) + static_cast<int>(where.size()));
    KorArray<KorCellData> values;
    if (!readColumn(L"PreferredSizesItems", L"KeyValue", condition, values))
        return 0;
    KorDatabaseAccess::cellDataArr2StringArr(values, keys);
    return keys.length();
}

void mergeSorted(const KorArray<KorString>& more, KorArray<KorString>& names)
{
    std::vector<const KorString*> merged;
    std::unordered_set<KorString> known;
    for (const KorString& name : names) {
        merged.push_back(&name);
        known.insert(name);
    }
    for (const KorString& name : more) {
        if (!known.insert(name).second)
            continue;
        // the list stands in the order of its catalogue: where the search ends depends on its course
        std::size_t first = 0, end = merged.size();
        while (first < end) {
            const std::size_t middle = first + (end - first) / 2;
            if (name < *merged[middle])
                end = middle;
            else
                first = middle + 1;
        }
        merged.insert(merged.begin() + static_cast<std::ptrdiff_t>(first), &name);
    }
    KorArray<KorString> result;
    result.reserve(static_cast<long>(merged.size()));
    for (const KorString* name : merged)
        result.append(*name);
    names = std::move(result);
}

int fillPreferredList(const PreferredList& list, const KorArray<int>& profiles, int kind,
                      std::initializer_list<KorString> chosenBefore, KorArray<KorString>& names, long option)
{
    const std::span<const KorString> keys(chosenBefore.begin(), chosenBefore.size());
    if (list.condition != nullptr && !fits(list, kind, keys))
        KorAssert::korAssert(list.condition, "KorOdbcGrouping", __LINE__);
    KorArray<KorString> found, more;
    int result =
        namesOf(list, profiles, kind, list.table, list.dsn, KorDSNDefinitions::kBase, keys, found, option);
    if (list.addInTable != 0 && namesOf(list, profiles, kind, list.addInTable, KorDSNDefinitions::kAddin,
                                        KorDSNDefinitions::kFirstAddin, keys, more, option) == 1) {
        mergeSorted(more, found);
        result = 1;
    }
    names = std::move(found);
    return result;
}

} // namespace korodbc
