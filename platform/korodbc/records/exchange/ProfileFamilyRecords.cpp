#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/exchange/ProfileFamilyRecords.h>

using namespace records;

template <std::same_as<StructProfileFamily> R>
constexpr Entry listOf<R>[] = {
    table("ProfileFamily", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
};

template <std::same_as<StructProfileFamilyTable> R>
constexpr Entry listOf<R>[] = {
    table("ProfileFamilyTables", inConfiguration),
    key(&R::key, "Key"),
    names<StructProfileFamily>(&R::family, "Family"),
    column(&R::tableName, "TableName"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

int StructProfileFamilyTableMarshal::getTablesOfFamily(const KorString& family, KorArray<KorString>& tables)
{
    const int familyKey = keyOf<StructProfileFamily>(family);
    KorArray<StructProfileFamilyTable> rows;
    recordsThat([&](const StructProfileFamilyTable& row) { return row.family == familyKey; }, rows);
    std::stable_sort(
        rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.sortOrder < b.sortOrder; });
    KorArray<KorString> found;
    for (const StructProfileFamilyTable& row : rows)
        found.append(row.tableName);
    return foundAny(found, tables);
}

int StructProfileFamilyTableMarshal::getFamiliesOfTables(const KorArray<KorString>& tables,
                                                         KorArray<KorString>& families)
{
    KorArray<KorString> found;
    addNamesReferredTo<&StructProfileFamilyTable::family, StructProfileFamily>(
        [&](const StructProfileFamilyTable& row) {
            return std::find(tables.begin(), tables.end(), row.tableName) != tables.end();
        },
        found);
    return foundAny(found, families);
}

constinit const Family records::profileFamilyRecords = family<StructProfileFamily, StructProfileFamilyTable>;
