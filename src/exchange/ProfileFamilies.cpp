#include <korodbc/exchange/SectionConversions.h>
#include <korodbc/records/exchange/ProfileFamilyRecords.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>

#include <algorithm>

namespace {

bool holds(const KorString& table, const KorString& section)
{
    StructProfileMasterTable profileClass;
    profileClass.tableName = table;
    bool found = false;
    KorDatabaseProfileAccess::visitSections(profileClass, [&](const StructSection& candidate) {
        found = candidate.sectionName.compareNoCase(section) == 0;
        return !found;
    });
    return found;
}

} // namespace

int KorODBCQXT_Profile_Conversion::getKRProfileForHalden(const KorString& family, const KorString& section,
                                                         KorString& outClass, KorString& outSection)
{
    KorArray<KorString> tables;
    StructProfileFamilyTableMarshal::getTablesOfFamily(family, tables);
    const KorString* table =
        std::find_if(tables.begin(), tables.end(), [&](const KorString& one) { return holds(one, section); });
    StructProfileMasterTable profileClass;
    if (table == tables.end() || StructProfileMasterTableMarshal::getStructByTableName(*table, profileClass) != 1)
        return 0;
    const KorString name = section; // the outputs may be the inputs
    outClass = profileClass.key;
    outSection = name;
    return 1;
}

int KorODBCQXT_Profile_Conversion::getHaldenFamilyNamesForKRProfile(const KorString& section,
                                                                    KorArray<KorString>& families)
{
    KorArray<StructProfileFamilyTable> rows;
    StructProfileFamilyTableMarshal::getTable(rows);
    KorArray<KorString> tables;
    for (const StructProfileFamilyTable& row : rows)
        if (holds(row.tableName, section))
            tables.append(row.tableName);
    return StructProfileFamilyTableMarshal::getFamiliesOfTables(tables, families);
}
