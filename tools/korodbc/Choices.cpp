#include "Choices.h"

#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>

Named chosen(std::span<const Named> all, const std::string& wanted, const std::string& thing,
             const std::string& remedy)
{
    std::vector<std::string> names;
    for (const Named& one : all) {
        if (sameName(one.name, wanted) || std::to_string(one.key) == wanted)
            return one;
        names.push_back(one.name);
    }
    throw Failure{kNotFound,
                  "there is no " + thing + " " + quote(wanted) + nearest(wanted, names) + "; " + remedy};
}

std::string sourceName(eDSN dsn, eIndex index)
{
    for (const Source& source : allSources())
        if (source.dsn == dsn && (dsn != KorDSNDefinitions::kCountryAddin || source.index == index))
            return source.name;
    return {};
}

void requireSound(const RecordDescription& type, eDSN dsn, eIndex index)
{
    const std::string name = sourceName(dsn, index);
    if (name.empty())
        return;
    sourceNamed(name); // its database can be used
    const KorDSNRequest request(dsn, index);
    const KorString table = KorDatabaseAccess::getTableName(KorString::fromUtf8(type.table));
    if (KorDatabaseAccess::doesTableExists(dsn, table) == 1)
        requireReadable(type);
}

bool storeSelected(const RecordDescription& type, const std::map<int, bool>& selected)
{
    constexpr eDSN addIn = KorDSNDefinitions::kAddin;
    const KorString table = KorDatabaseAccess::getTableName(KorString::fromUtf8(type.table));
    KorArray<KorColumn> columns;
    KorDatabaseAccess::getTableStructure(addIn, table, columns);
    int column = 0;
    while (column < columns.length() && columns[column].getName().compareNoCase(L"Selected") != 0)
        ++column;
    if (column == columns.length())
        throw Failure{kFailed, "table " + std::string(type.table) +
                                   " has no column Selected, so no choice can be stored; see: korodbc status"};
    return std::ranges::all_of(selected, [&](const auto& row) {
        return KorDatabaseAccess::setTableColumnValue(addIn, table, L"Key", KorString::format(L"%d", row.first),
                                                      column, KorCellData(row.second ? 1 : 0)) == 1;
    });
}
