#include "lookup/KorOdbcSteelSections.h"
#include "repository/KorDatabaseProfileAccess.h"
#include "repository/KorDSNManager.h"

#include <algorithm>

namespace {

using Sections = KorArray<StructSection>;

constexpr int wholeRecords = 3;       // mode of reading sections
constexpr int calculationValues = 18; // of a section

/// Splits an internal name; false unless both parts hold something.
bool split(const KorString& internalName, KorString& classKey, KorString& sectionName)
{
    return KorDatabaseProfileAccess::decomposeInternalName(internalName, classKey, sectionName) == 1 &&
           !classKey.isEmpty() && !sectionName.isEmpty();
}

bool readSections(const KorString& classKey, Sections& sections)
{
    StructProfileClass profileClass;
    return StructProfileClassMarshal::getStructByKey(classKey, profileClass) == 1 &&
           KorDatabaseProfileAccess::getProfileTable(profileClass, sections, wholeRecords) == 1;
}

/// Finds a section by halving, since sections come sorted by name, and where that fails one by one.
const StructSection* findSection(const Sections& sections, const KorString& name)
{
    const auto before = [](const StructSection& section, const KorString& wanted) {
        return section.sectionName.compareNoCase(wanted) < 0;
    };
    const auto isWanted = [&](const StructSection& section) {
        return section.sectionName.compareNoCase(name) == 0;
    };
    const StructSection* found = std::lower_bound(sections.begin(), sections.end(), name, before);
    if (found == sections.end() || !isWanted(*found))
        found = std::find_if(sections.begin(), sections.end(), isWanted);
    return found == sections.end() ? nullptr : found;
}

/// Replaces `names` by the run names of the sections of a class.
int listSections(const StructProfileClass& profileClass, KorArray<KorString>& names)
{
    Sections sections;
    const int result = KorDatabaseProfileAccess::getProfileTable(profileClass, sections, wholeRecords);
    if (result != 1)
        return result;
    names.setLogicalLength(0);
    for (const StructSection& section : sections)
        if (section.sectionName != L"zzzzzzzzzExtern") // marks the end of a table
            names.append(section.sectionName);
    return result;
}

} // namespace

int kor_odbc_get_ClassTypeName(KorString runName, KorString& typeName)
{
    StructProfileClass profileClass;
    const int result = StructProfileClassMarshal::getStructByRunNameAllSources(runName, profileClass);
    if (result == 1)
        typeName = profileClass.typeName;
    return result;
}

int kor_odbc_get_ClassRunName(KorString typeName, KorString& runName)
{
    StructProfileClass profileClass;
    const int result = StructProfileClassMarshal::getStructByKeyAllSources(typeName, profileClass);
    if (result == 1)
        runName = profileClass.runName;
    return result;
}

int kor_odbc_get_sec_subtype_name(const KorString& internalName, KorString& subtypeName)
{
    KorString classKey, sectionName;
    StructProfileClass profileClass;
    if (!split(internalName, classKey, sectionName))
        return 0;
    const int result = StructProfileClassMarshal::getStructByKey(classKey, profileClass);
    if (result == 1)
        subtypeName = profileClass.subtypeName;
    return result;
}

int kor_odbc_getMaterialForSectionClass(const KorString& internalName, KorString& material)
{
    KorString classKey, sectionName;
    StructProfileClass profileClass;
    if (KorDatabaseProfileAccess::decomposeInternalName(internalName, classKey, sectionName) != 1)
        return -1;
    const int result = StructProfileClassMarshal::getStructByKey(classKey, profileClass);
    if (result == 1)
        material = profileClass.material;
    return result;
}

long kor_odbc_get_menu_list(long classIndex, KorArray<KorString>& names)
{
    KorArray<StructProfileClass> classes;
    StructProfileClassMarshal::getTable(classes);
    if (classIndex >= 0 && classIndex < classes.length()) {
        listSections(classes[classIndex], names);
        return names.length();
    }
    names.setLogicalLength(0);
    for (const StructProfileClass& profileClass : classes)
        names.append(profileClass.runName);
    return names.length();
}

long kor_odbc_get_menu_list(const KorString& classRunName, KorArray<KorString>& names)
{
    kor_odbc_get_menu_sublist(classRunName, names);
    return names.length();
}

int kor_odbc_get_menu_sublist(const KorString& classRunName, KorArray<KorString>& names)
{
    StructProfileClass profileClass;
    const int result = StructProfileClassMarshal::getStructByRunName(classRunName, profileClass);
    return result == 1 ? listSections(profileClass, names) : result;
}

int kor_odbc_getSectionAlpha(double& alpha, const KorString& internalName)
{
    KorString classKey, sectionName;
    if (!split(internalName, classKey, sectionName))
        return 0;
    Sections sections;
    bool read = false;
    {
        const KorDSNRequest request(KorDSNDefinitions::kProfiles, KorDSNSetDwgSource::GeteIndexForDwg());
        read = readSections(classKey, sections);
    }
    if (!read && !readSections(classKey, sections))
        return 0;
    const StructSection* section = findSection(sections, sectionName);
    if (section == nullptr)
        return 0;
    alpha = section->alpha;
    return 1;
}

int kor_odbc_getSectionCalculationParams(KorArray<double>& params, const KorString& internalName)
{
    params.setLogicalLength(0);
    if (params.physicalLength() < calculationValues)
        params.setPhysicalLength(calculationValues);
    KorString classKey, sectionName;
    Sections sections;
    if (!split(internalName, classKey, sectionName) || !readSections(classKey, sections))
        return 0;
    const StructSection* section = findSection(sections, sectionName);
    if (section == nullptr)
        return 0;
    for (const ColumnDescription& column : descriptionOf<StructSection>().columns)
        if (column.kind == FieldKind::Real)
            params.append(column.real(section));
    return 1;
}

int kor_odbc_getSectionBehaviourKey(const KorString& profileClass, long& behaviour)
{
    return StructSectionBehaviourAssignmentMarshal::getBehaviourKey(profileClass, behaviour);
}

int kor_odbc_getSectionUnwind(int& unwind, long behaviour)
{
    StructSectionBehaviour record;
    const int result = StructSectionBehaviourMarshal::getStructByKey(behaviour, record);
    if (result == 1)
        unwind = record.unwind;
    return result;
}
