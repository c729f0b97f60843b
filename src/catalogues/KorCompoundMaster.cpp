#include <korodbc/catalogues/KorCompoundMaster.h>
#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>

namespace {

bool isSame(const KorString& left, const KorString& right) { return left.compareNoCase(right) == 0; }

/// The columns of a compound class's table as they are in the database now; none when it cannot be read.
KorArray<KorColumnData> sectionsOf(const StructCompoundMaster& master)
{
    kor_odbc_resetListcontrolTable(master.compoundTable);
    KorArray<KorColumnData> data;
    KorArray<KorColumn> columns;
    if (kor_odbc_loadUserTable(KorDSNDefinitions::kUserSections, master.compoundTable, data, columns) != 1)
        data.removeAll();
    return data;
}

/// The first row that has `text` in `column`; -1 without one.
long rowOf(const KorColumnData& column, const KorString& text)
{
    KorString cell;
    for (long row = 0; row < column.length(); ++row)
        if (column.getAt(row, cell) == 1 && isSame(cell, text))
            return row;
    return -1;
}

constexpr int runNameColumn = 1, sectionNameColumn = 2;

} // namespace

int KorCompoundMaster::getCompoundMasterStruct(const KorString& name, StructCompoundMaster& record)
{
    return KorDatabaseProfileAccess::getCompoundMasterStruct(name, record);
}

int KorCompoundMaster::getCompoundSectionRunNames(KorString compoundClass, KorArray<KorString>& names)
{
    KorArray<StructCompoundMaster> masters;
    int result = getCompoundMasterTable(masters);
    if (result != 1)
        return result;
    for (const StructCompoundMaster& master : masters) {
        if (!isSame(master.compoundClass, compoundClass))
            continue;
        names.removeAll();
        const KorArray<KorColumnData> sections = sectionsOf(master);
        if (sections.length() <= runNameColumn)
            continue;
        const KorColumnData& runNames = sections[runNameColumn];
        for (long row = 0; row < runNames.length(); ++row) {
            KorString runName;
            runNames.getAt(row, runName);
            names.append(runName);
        }
        result = 1;
    }
    return result;
}

int KorCompoundMaster::getCompoundClassAndSectionName(const KorString& compoundClass,
                                                      const KorString& sectionRunName, KorString& className,
                                                      KorString& sectionName)
{
    KorArray<StructCompoundMaster> masters;
    if (const int result = getCompoundMasterTable(masters); result != 1)
        return result;
    for (const StructCompoundMaster& master : masters) {
        if (!isSame(master.compoundClass, compoundClass))
            continue;
        className = master.compoundClassName;
        const KorArray<KorColumnData> sections = sectionsOf(master);
        if (sections.length() <= sectionNameColumn)
            continue;
        const long row = rowOf(sections[runNameColumn], sectionRunName);
        if (row >= 0)
            return sections[sectionNameColumn].getAt(row, sectionName);
    }
    return 0;
}

int KorCompoundMaster::getCompoundSectionRunName(const KorString& className, const KorString& sectionName,
                                                 KorString& sectionRunName)
{
    KorArray<StructCompoundMaster> masters;
    if (const int result = getCompoundMasterTable(masters); result != 1)
        return result;
    for (const StructCompoundMaster& master : masters) {
        if (!isSame(master.compoundClassName, className))
            continue;
        const KorArray<KorColumnData> sections = sectionsOf(master);
        if (sections.length() <= sectionNameColumn)
            continue;
        const long row = rowOf(sections[sectionNameColumn], sectionName);
        if (row >= 0)
            return sections[runNameColumn].getAt(row, sectionRunName);
    }
    return 0;
}
