#include <korodbc/lookup/KorOdbcSteelSections.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int calculationValues = 18; // of a section

/// Splits an internal name; false unless both parts hold something.
bool split(const KorString& internalName, KorString& classKey, KorString& sectionName)
{
    return KorDatabaseProfileAccess::decomposeInternalName(internalName, classKey, sectionName) == 1 &&
           !classKey.isEmpty() && !sectionName.isEmpty();
}

enum class Found { NoTable, NoSection, Section };

/// Looks for a section of a class by its name, whatever its case; the first one in the table counts.
Found findSection(const KorString& classKey, const KorString& name, StructSection& section)
{
    StructProfileClass profileClass;
    if (StructProfileClassMarshal::getStructByKey(classKey, profileClass) != 1)
        return Found::NoTable;
    Found found = Found::NoSection;
    const int result = KorDatabaseProfileAccess::visitSections(profileClass, [&](const StructSection& candidate) {
        if (candidate.sectionName.compareNoCase(name) != 0)
            return true;
        section = candidate;
        found = Found::Section;
        return false;
    });
    return result == 1 ? found : Found::NoTable;
}

/// Replaces `names` by the run names of the sections of a class, sorted whatever their case.
int listSections(const StructProfileClass& profileClass, KorArray<KorString>& names)
{
    KorArray<KorString> found;
    const int result = KorDatabaseProfileAccess::visitSections(profileClass, [&](const StructSection& section) {
        if (section.sectionName != L"zzzzzzzzzExtern") // marks the end of a table
            found.append(section.sectionName);
        return true;
    });
    if (result != 1)
        return result;
    const auto before = [](const KorString& a, const KorString& b) { return a.compareNoCase(b) < 0; };
    if (!std::is_sorted(found.begin(), found.end(), before))
        std::stable_sort(found.begin(), found.end(), before);
    names = std::move(found);
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
    StructProfileClass wanted;
    bool found = false;
    KorArray<KorString> classes;
    const int read = RecordAccess::visit(descriptionOf<StructProfileClass>(), [&](const void* record) {
        const auto& profileClass = *static_cast<const StructProfileClass*>(record);
        found = classes.length() == classIndex;
        if (found)
            wanted = profileClass;
        classes.append(profileClass.runName);
        return !found;
    });
    if (found)
        listSections(wanted, names);
    else if (read == 1)
        names = std::move(classes);
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
    StructSection section;
    Found found = Found::NoTable;
    {
        const KorDSNRequest request(KorDSNDefinitions::kProfiles, KorDSNSetDwgSource::GeteIndexForDwg());
        found = findSection(classKey, sectionName, section);
    }
    if (found == Found::NoTable)
        found = findSection(classKey, sectionName, section);
    if (found != Found::Section)
        return 0;
    alpha = section.alpha;
    return 1;
}

int kor_odbc_getSectionCalculationParams(KorArray<double>& params, const KorString& internalName)
{
    params.setLogicalLength(0);
    if (params.physicalLength() < calculationValues)
        params.setPhysicalLength(calculationValues);
    KorString classKey, sectionName;
    StructSection section;
    if (!split(internalName, classKey, sectionName) ||
        findSection(classKey, sectionName, section) != Found::Section)
        return 0;
    for (const ColumnDescription& column : descriptionOf<StructSection>().columns)
        if (column.kind == FieldKind::Real)
            params.append(column.real(&section));
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
