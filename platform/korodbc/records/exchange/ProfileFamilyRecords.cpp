#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/exchange/ProfileFamilyRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructProfileFamily>()
{
    using R = StructProfileFamily;
    return described([] {
        return describe<R>("StructProfileFamily",
                           "ProfileFamily",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"));
    });
}

template <>
const RecordDescription& descriptionOf<StructProfileFamilyTable>()
{
    using R = StructProfileFamilyTable;
    return described([] {
        return describe<R>("StructProfileFamilyTable",
                           "ProfileFamilyTables",
                           inConfiguration,
                           key<&R::key>("Key"),
                           column<&R::family>("Family").names<StructProfileFamily>(),
                           column<&R::tableName>("TableName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

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

std::span<const DescriptionFunction> records::profileFamilyRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructProfileFamily>,
                                                   descriptionOf<StructProfileFamilyTable>};
    return list;
}
